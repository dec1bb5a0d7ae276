// The message kinds the synthesizer can write, by name, and the mixes that
// select among them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "synthcap/message_writers.h"

namespace tarnlog::synth {

// Position and attitude logs come at the epoch rate, the common logs once a
// second, and the logs a receiver is seldom set to write once every
// Mix::rareSeconds.
enum class Cadence { kEveryEpoch, kEverySecond, kRare };

struct MessageKind {
  // "BESTPOSA", "GGA", "BESTPOSB", ...; a log written in a second header
  // form carries a suffix from ':' that the sentence leaves out
  // ("PPPDOPA:compact" is a "#PPPDOPA" with the compact header).
  std::string_view name;
  SentenceForm form;
  Cadence cadence;
  MessageWriter write;
  // Left out of the named mixes ("full", "binary", ...), so that they keep
  // their bytes; such a kind comes only when its name is listed.
  bool byNameOnly = false;
};

// The name a kind's sentences carry.
std::string_view LogName(const MessageKind& kind);

// In the order a receiver emits them within an epoch.
std::span<const MessageKind> MessageKinds();

struct Mix {
  std::vector<std::size_t> kinds;  // indexes into MessageKinds()
  int rareSeconds = 1;
};

// The kinds a mix selects. A mix is one of "full" (everything, the rare
// kinds every ten seconds), "every" (everything, the rare kinds every
// second), "long", "compact", "brief", "nmea" and "binary" (the kinds of one
// form, as in "full"), or a comma-separated list of kind names such as
// "BESTPOSA,GGA" (the rare ones every second). Nothing for an unknown name.
// The binary observation and IMU frames that the production test reads
// (RANGEB, RAWIMUB, RAWIMUXB, and RAWIMUB:zero and RAWIMUXB:zero with a body
// of zeros) come by name only.
std::optional<Mix> SelectMix(std::string_view mix);

// The named mixes and the kind names, for the usage text.
std::string MixHelp();

}  // namespace tarnlog::synth
