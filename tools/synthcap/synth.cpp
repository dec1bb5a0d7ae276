#include "synthcap/synth.h"

#include <optional>
#include <span>
#include <vector>

#include "synthcap/faults.h"
#include "synthcap/message_table.h"
#include "synthcap/receiver_model.h"

namespace tarnlog {
namespace {

constexpr std::size_t kBlockBytes = 4 << 20;
// Independent streams for the motion, the measurement noise and the faults,
// so that switching faults on leaves the clean sentences as they were.
constexpr std::uint64_t kNoiseStream = 0x6E6F697365ull;
constexpr std::uint64_t kFaultStream = 0x6661756C74ull;

// Whether a kind writes a sentence in this epoch.
bool Due(synth::Cadence cadence, const synth::ReceiverEpoch& epoch, int rareSeconds) {
  switch (cadence) {
    case synth::Cadence::kEveryEpoch:
      return true;
    case synth::Cadence::kEverySecond:
      return epoch.secondStart;
    case synth::Cadence::kRare:
      return epoch.secondStart &&
             static_cast<std::uint64_t>(epoch.secondsSinceStart) % rareSeconds == 0;
  }
  return false;
}

}  // namespace

std::string CheckSynthOptions(const SynthOptions& options) {
  if (options.rateHz < 1 || options.rateHz > 20) return "the rate must be 1 to 20 Hz";
  if (options.faultFraction < 0.0 || options.faultFraction > 1.0) {
    return "the fault fraction must be 0 to 1";
  }
  if (!synth::SelectMix(options.mix)) return "unknown mix \"" + options.mix + "\"";
  return "";
}

bool StreamCapture(const SynthOptions& options,
                   const std::function<bool(std::string_view block)>& sink) {
  if (!CheckSynthOptions(options).empty()) return false;
  const synth::Mix mix = *synth::SelectMix(options.mix);
  const std::span<const synth::MessageKind> kinds = synth::MessageKinds();
  synth::ReceiverModel model(options.seed, options.rateHz);
  synth::Rng noise(options.seed ^ kNoiseStream);
  std::optional<synth::FaultInjector> faults;
  if (options.faults) faults.emplace(options.seed ^ kFaultStream, options.faultFraction);

  std::string block;
  block.reserve(kBlockBytes + (256 << 10));
  std::uint64_t handedOver = 0;
  bool full = options.size == 0;
  while (!full) {
    const synth::ReceiverEpoch& epoch = model.Advance();
    for (const std::size_t index : mix.kinds) {
      const synth::MessageKind& kind = kinds[index];
      if (!Due(kind.cadence, epoch, mix.rareSeconds)) continue;
      const std::size_t start = block.size();
      synth::WriterContext context{epoch, noise, block, synth::LogName(kind), kind.form};
      kind.write(context);
      if (faults) faults->AfterSentence(block, start, kind.form, epoch);
      full = handedOver + block.size() >= options.size;
      if (full) break;
    }
    if (block.size() >= kBlockBytes || (full && !block.empty())) {
      if (!sink(block)) return false;
      handedOver += block.size();
      block.clear();
    }
  }
  return true;
}

std::string SynthesizeCapture(const SynthOptions& options) {
  std::string capture;
  capture.reserve(options.size + (64 << 10));
  StreamCapture(options, [&](std::string_view block) {
    capture += block;
    return true;
  });
  return capture;
}

}  // namespace tarnlog
