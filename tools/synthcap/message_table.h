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

enum class SentenceForm { kLongLog, kCompactLog, kBriefLog, kNmea, kBinary };
// Position and attitude logs come at the epoch rate; the rest once a second.
enum class Cadence { kEveryEpoch, kEverySecond };

struct MessageKind {
  std::string_view name;  // "BESTPOSA", "GGA", "BESTPOSB", ...
  SentenceForm form;
  Cadence cadence;
  MessageWriter write;
};

// In the order a receiver emits them within an epoch.
std::span<const MessageKind> MessageKinds();

// The kinds a mix selects, as indexes into MessageKinds(). A mix is one of
// "full" (everything), "long", "nmea", "compact", "brief" and "binary", or a
// comma-separated list of message names such as "BESTPOSA,GGA". Nothing for
// an unknown name.
std::optional<std::vector<std::size_t>> SelectMix(std::string_view mix);

// The named mixes and the message names, for the usage text.
std::string MixHelp();

}  // namespace tarnlog::synth
