// Damage as real captures carry it: serial overruns, cables pulled
// mid-sentence, ports switched between line-end conventions, pass-through
// wrappers, and runaway lines. Applied to a seeded fraction of sentences.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "synthcap/message_table.h"
#include "synthcap/prng.h"
#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

enum class FaultKind {
  kBadChecksum,        // one checksum digit (or a frame's CRC byte) changed
  kTruncatedLine,      // cut mid-sentence, then a line end
  kLfOnly,             // LF instead of CR LF
  kCutByNextSentence,  // cut mid-sentence with no line end: the next start cuts it
  kGarbage,            // a binary run after the sentence, with stray sync bytes
  kPassCom,            // the sentence wrapped in #PASSCOM1A
  kOverlongField,      // a field of thousands of characters, checksum still right
  kOverlongLine,       // over 23,552 bytes without a line end after the sentence
  kCount
};

class FaultInjector {
 public:
  FaultInjector(std::uint64_t seed, double fraction);

  // Called with the sentence just written at [start, out.size()); may change
  // it or append after it.
  void AfterSentence(std::string& out, std::size_t start, SentenceForm form,
                     const ReceiverEpoch& epoch);

 private:
  void Refill();

  Rng rng_;
  double fraction_;
  // The kinds are dealt from a shuffled bag, so that every kind shows up
  // within a few dozen damaged sentences.
  std::array<FaultKind, static_cast<std::size_t>(FaultKind::kCount)> bag_;
  std::size_t next_ = 0;
};

// The single fault, applied unconditionally (for the tests of each kind).
void ApplyFault(FaultKind kind, std::string& out, std::size_t start, SentenceForm form,
                const ReceiverEpoch& epoch, Rng& rng);
bool FaultApplies(FaultKind kind, SentenceForm form);

}  // namespace tarnlog::synth
