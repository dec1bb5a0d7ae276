// Synthetic receiver captures: a seeded, reproducible byte stream of the
// logs a receiver board writes, for benchmarks, the fuzzer's seeds and the
// tests. Same options, same bytes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tarnlog {

struct SynthOptions {
  std::uint64_t size = 0;  // bytes at least; the last sentence is completed
  std::uint64_t seed = 1;
  int rateHz = 10;  // epochs per second, 1 to 20
  bool faults = false;
  double faultFraction = 0.02;  // of the sentences, with `faults`
  std::string mix = "full";     // see synthcap/message_table.h
};

// Empty when the options are usable, otherwise what is wrong with them.
std::string CheckSynthOptions(const SynthOptions& options);

// Hands the capture to `sink` in blocks of a few megabytes, in order.
// Returns false when the options are bad or `sink` returned false.
bool StreamCapture(const SynthOptions& options,
                   const std::function<bool(std::string_view block)>& sink);

// The whole capture in memory (empty when the options are bad).
std::string SynthesizeCapture(const SynthOptions& options);

}  // namespace tarnlog
