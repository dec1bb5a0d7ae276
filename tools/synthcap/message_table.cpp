#include "synthcap/message_table.h"

namespace tarnlog::synth {
namespace {

using enum SentenceForm;
using enum Cadence;

constexpr MessageKind kKinds[] = {
    {"RANGEA", kLongLog, kEveryEpoch, WriteRange},
    {"BESTPOSA", kLongLog, kEveryEpoch, WriteBestPos},
    {"RTKPOSA", kLongLog, kEveryEpoch, WriteRtkPos},
    {"MATCHEDPOSA", kLongLog, kEveryEpoch, WriteMatchedPos},
    {"BESTVELA", kLongLog, kEveryEpoch, WriteBestVel},
    {"RTKVELA", kLongLog, kEveryEpoch, WriteRtkVel},
    {"GGA", kNmea, kEveryEpoch, WriteGga},
    {"BESTNAVA", kCompactLog, kEveryEpoch, WriteBestNav},
    {"ADRNAVA", kCompactLog, kEveryEpoch, WriteAdrNav},
    {"CANGLEA", kBriefLog, kEveryEpoch, WriteCarAngle},
    {"ANGVELA", kBriefLog, kEveryEpoch, WriteAngularVelocity},
    {"FANGLEA", kBriefLog, kEveryEpoch, WriteFilteredAngle},
    {"PSRPOSA", kLongLog, kEverySecond, WritePsrPos},
    {"PPPPOSA", kLongLog, kEverySecond, WritePppPos},
    {"PSRVELA", kLongLog, kEverySecond, WritePsrVel},
    {"PSRDOPA", kLongLog, kEverySecond, WritePsrDop},
    {"RTKDOPA", kLongLog, kEverySecond, WriteRtkDop},
    {"BESTXYZA", kLongLog, kEverySecond, WriteBestXyz},
    {"TIMEA", kLongLog, kEverySecond, WriteTime},
    {"RMC", kNmea, kEverySecond, WriteRmc},
    {"VTG", kNmea, kEverySecond, WriteVtg},
    {"GST", kNmea, kEverySecond, WriteGst},
    {"SPPNAVA", kCompactLog, kEverySecond, WriteSppNav},
    {"PPPNAVA", kCompactLog, kEverySecond, WritePppNav},
    {"BESTPOSB", kBinary, kEverySecond, WriteBestPosBinary},
    {"RANGECMPB", kBinary, kEverySecond, WriteRangeCompressedBinary},
};

struct NamedMix {
  std::string_view name;
  bool all;
  SentenceForm form;
};

constexpr NamedMix kMixes[] = {
    {"full", true, kLongLog},        {"long", false, kLongLog},   {"nmea", false, kNmea},
    {"compact", false, kCompactLog}, {"brief", false, kBriefLog}, {"binary", false, kBinary},
};

std::optional<std::size_t> KindIndex(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kKinds); ++i) {
    if (kKinds[i].name == name) return i;
  }
  return std::nullopt;
}

}  // namespace

std::span<const MessageKind> MessageKinds() {
  return kKinds;
}

std::optional<std::vector<std::size_t>> SelectMix(std::string_view mix) {
  std::vector<std::size_t> selected;
  for (const NamedMix& named : kMixes) {
    if (named.name != mix) continue;
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
      if (named.all || kKinds[i].form == named.form) selected.push_back(i);
    }
    return selected;
  }
  // A list of names; the table's order decides the order within an epoch.
  std::vector<bool> wanted(std::size(kKinds), false);
  std::size_t begin = 0;
  while (begin <= mix.size()) {
    const std::size_t comma = std::min(mix.find(',', begin), mix.size());
    const std::optional<std::size_t> index = KindIndex(mix.substr(begin, comma - begin));
    if (!index) return std::nullopt;
    wanted[*index] = true;
    begin = comma + 1;
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (wanted[i]) selected.push_back(i);
  }
  return selected;
}

std::string MixHelp() {
  std::string help = "mixes:";
  for (const NamedMix& named : kMixes) {
    help += ' ';
    help += named.name;
  }
  help += "\nor a comma-separated list of:";
  for (const MessageKind& kind : kKinds) {
    help += ' ';
    help += kind.name;
  }
  help += '\n';
  return help;
}

}  // namespace tarnlog::synth
