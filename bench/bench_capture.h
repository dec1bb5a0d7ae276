// What the benchmarks share: a scratch folder, synthesized captures written
// into it, the capture size asked for, and the throughput counters.
#pragma once

#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "synthcap/synth.h"

namespace tarnlog::bench {

inline std::uint64_t FileSize(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

// TARNLOG_BENCH_BYTES, or `fallback` when it isn't set.
inline std::uint64_t CaptureBytesWanted(std::uint64_t fallback) {
  const char* text = std::getenv("TARNLOG_BENCH_BYTES");
  if (text == nullptr || *text == '\0') return fallback;
  return std::strtoull(text, nullptr, 10);
}

// A new folder "<name>-XXXXXX" under TMPDIR (or /tmp); empty on failure.
inline std::string MakeScratchFolder(const char* name) {
  const char* base = std::getenv("TMPDIR");
  std::string pattern = std::string(base && *base ? base : "/tmp") + "/" + name + "-XXXXXX";
  return ::mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
}

inline bool WriteCapture(const std::string& path, const SynthOptions& options) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  std::setvbuf(file, nullptr, _IONBF, 0);
  const bool written = StreamCapture(options, [file](std::string_view block) {
    return std::fwrite(block.data(), 1, block.size(), file) == block.size();
  });
  return std::fclose(file) == 0 && written;
}

// Bytes per second, and the same as an "MB" rate.
inline void ReportBytes(benchmark::State& state, std::uint64_t bytesPerIteration) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytesPerIteration));
  state.counters["MB"] =
      benchmark::Counter(static_cast<double>(state.iterations() * bytesPerIteration) / 1e6,
                         benchmark::Counter::kIsRate);
}

}  // namespace tarnlog::bench
