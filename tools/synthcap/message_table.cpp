#include "synthcap/message_table.h"

#include <algorithm>

namespace tarnlog::synth {
namespace {

using enum SentenceForm;
using enum Cadence;

constexpr int kRareSecondsInFull = 10;

constexpr MessageKind kKinds[] = {
    // What a survey vehicle's capture is made of.
    {"RANGEA", kLongLog, kEveryEpoch, WriteRange},
    {"BESTPOSA", kLongLog, kEveryEpoch, WriteBestPosition},
    {"RTKPOSA", kLongLog, kEveryEpoch, WriteRtkPosition},
    {"MATCHEDPOSA", kLongLog, kEveryEpoch, WriteRtkPosition},
    {"BESTVELA", kLongLog, kEveryEpoch, WriteBestVelocity},
    {"RTKVELA", kLongLog, kEveryEpoch, WriteRtkVelocity},
    {"GGA", kNmea, kEveryEpoch, WriteGga},
    {"BESTNAVA", kCompactLog, kEveryEpoch, WriteBestNav},
    {"ADRNAVA", kCompactLog, kEveryEpoch, WriteAdrNav},
    {"CANGLEA", kBriefLog, kEveryEpoch, WriteCarAngle},
    {"ANGVELA", kBriefLog, kEveryEpoch, WriteAngularVelocity},
    {"FANGLEA", kBriefLog, kEveryEpoch, WriteFilteredAngle},
    {"PSRPOSA", kLongLog, kEverySecond, WritePsrPosition},
    {"PPPPOSA", kLongLog, kEverySecond, WritePppPosition},
    {"PSRVELA", kLongLog, kEverySecond, WritePsrVelocity},
    {"PSRDOPA", kLongLog, kEverySecond, WriteDop},
    {"RTKDOPA", kLongLog, kEverySecond, WriteDop},
    {"BESTXYZA", kLongLog, kEverySecond, WriteXyz},
    {"TIMEA", kLongLog, kEverySecond, WriteTime},
    {"RMC", kNmea, kEverySecond, WriteRmc},
    {"VTG", kNmea, kEverySecond, WriteVtg},
    {"GST", kNmea, kEverySecond, WriteGst},
    {"SPPNAVA", kCompactLog, kEverySecond, WriteSppNav},
    {"PPPNAVA", kCompactLog, kEverySecond, WritePppNav},
    {"BESTPOSB", kBinary, kEverySecond, WriteBestPosBinary},
    {"RANGECMPB", kBinary, kEverySecond, WriteRangeCompressedBinary},

    // The maker's compact logs: heading antenna, DOPs, observations, clock.
    {"BESTNAVHA", kCompactLog, kRare, WriteBestNav},
    {"SPPNAVHA", kCompactLog, kRare, WriteSppNav},
    {"ADRNAVHA", kCompactLog, kRare, WriteAdrNav},
    {"BESTNAVXYZA", kCompactLog, kRare, WriteXyz},
    {"BESTNAVXYZHA", kCompactLog, kRare, WriteXyz},
    {"RECTIMEA", kCompactLog, kRare, WriteTime},
    {"CLKDTA", kCompactLog, kRare, WriteClockData},
    {"DOPHD2A", kCompactLog, kRare, WriteDop},
    {"SPPDOPA", kCompactLog, kRare, WriteSatelliteDop},
    {"SPPDOPHA", kCompactLog, kRare, WriteSatelliteDop},
    {"ADRDOPA", kCompactLog, kRare, WriteSatelliteDop},
    {"ADRDOPHA", kCompactLog, kRare, WriteSatelliteDop},
    {"PPPDOPA:compact", kCompactLog, kRare, WriteSatelliteDop},
    {"MPPPDOPA", kCompactLog, kRare, WriteSatelliteDop},
    {"OBSVMA", kCompactLog, kRare, WriteObservations},
    {"OBSVMHA", kCompactLog, kRare, WriteHeadingObservations},
    {"AGRICA", kCompactLog, kRare, WriteAgric},
    {"SPPNAVENUA", kCompactLog, kRare, WriteSppEnu},
    {"SLANTAPA", kCompactLog, kRare, WriteSlantAntenna},

    // Second base, second antenna and further solutions in the long form.
    {"MPPPPOSA", kLongLog, kRare, WritePppPosition},
    {"MATCHEDPOSHA", kLongLog, kRare, WriteRtkPosition},
    {"BESTPOSBASE2A", kLongLog, kRare, WriteBestPosition},
    {"RTKPOSBASE2A", kLongLog, kRare, WriteRtkPosition},
    {"PSRPOSBASE2A", kLongLog, kRare, WritePsrPosition},
    {"MATCHEDPOSBASE2A", kLongLog, kRare, WriteRtkPosition},
    {"PSRVELBASE2A", kLongLog, kRare, WritePsrVelocity},
    {"RTKVELBASE2A", kLongLog, kRare, WriteRtkVelocity},
    {"PSRDOPBASE2A", kLongLog, kRare, WriteDop},
    {"RTKDOPBASE2A", kLongLog, kRare, WriteDop},
    {"BASE2BIASA", kLongLog, kRare, WriteBase2Bias},
    {"BASERANGEA", kLongLog, kRare, WriteBaseRange},
    {"RANGEHA", kLongLog, kRare, WriteHeadingRange},
    {"RTKPOS2A", kLongLog, kRare, WriteRtkPosition},
    {"RTKVEL2A", kLongLog, kRare, WriteRtkVelocity},
    {"RTKDOP2A", kLongLog, kRare, WriteDop},
    {"MATCHEDPOS2A", kLongLog, kRare, WriteRtkPosition},
    {"BESTGNSSPOSA", kLongLog, kRare, WriteBestPosition},
    {"BESTPOS1A", kLongLog, kRare, WriteBestPosition},
    {"BESTPOS2A", kLongLog, kRare, WriteBestPosition},
    {"BESTVEL1A", kLongLog, kRare, WriteBestVelocity},
    {"BESTVEL2A", kLongLog, kRare, WriteBestVelocity},
    {"PSRPOS2A", kLongLog, kRare, WritePsrPosition},
    {"MPSRPOSA", kLongLog, kRare, WritePsrPosition},
    {"PSRVEL2A", kLongLog, kRare, WritePsrVelocity},
    {"PSRDOP2A", kLongLog, kRare, WriteDop},
    {"RTKDOPPLERVELA", kLongLog, kRare, WritePsrVelocity},
    {"PPPDOPA", kLongLog, kRare, WriteDop},
    {"PVTSOLA", kLongLog, kRare, WritePvtSolution},
    {"BSLNENUHD2A", kLongLog, kRare, WriteEnuBaseline},
    {"BSLNXYZA", kLongLog, kRare, WriteXyzBaseline},

    // Inertial, wheel and event logs.
    {"INSPVAA", kLongLog, kRare, WriteInsPva},
    {"INSPVAXA", kLongLog, kRare, WriteInsPvaExtended},
    {"DRPVAA", kLongLog, kRare, WriteDeadReckoning},
    {"RAWIMUXA", kLongLog, kRare, WriteRawImuExtended},
    {"RAWIMUA", kLongLog, kRare, WriteRawImu},
    {"RAWMAGXA", kLongLog, kRare, WriteRawMagnetometer},
    {"IMUATTA", kCompactLog, kRare, WriteAttitude},
    {"GYRATTSA", kBriefLog, kRare, WriteAttitude},
    {"RAWGYR2A", kBriefLog, kRare, WriteRawGyro},
    {"INSATTCOVSA", kBriefLog, kRare, WriteAttitudeCovariance},
    {"TIMEDWHEELDATAA", kLongLog, kRare, WriteTimedWheelData},
    {"ODOMETERA", kLongLog, kRare, WriteOdometer},
    {"VELDATAA", kLongLog, kRare, WriteVelocityData},
    {"EVENTALLA", kLongLog, kRare, WriteEvent},

    // Housekeeping.
    {"RXSTATUSA", kLongLog, kRare, WriteRxStatus},
    {"HWSTATUSA", kCompactLog, kRare, WriteHwStatus},
    {"ENVINFOA", kCompactLog, kRare, WriteEnvInfo},
    {"FREQJAMSTATUSA", kCompactLog, kRare, WriteJamStatus},
    {"MOWSTATUSA", kCompactLog, kRare, WriteMowerStatus},
    {"TROPINFOA", kCompactLog, kRare, WriteTroposphere},
    {"PPSSTATUSA", kCompactLog, kRare, WritePpsStatus},
    {"BASEINFOA", kCompactLog, kRare, WriteBaseInfo},
    {"SLANTSTATUSA", kCompactLog, kRare, WriteSlantStatus},
    {"PERFSTATA", kCompactLog, kRare, WritePerformance},
    {"TPINFOA", kCompactLog, kRare, WriteTimePulseInfo},
    {"TSVNUMA", kCompactLog, kRare, WriteSatelliteCounts},

    // NMEA beyond the position set.
    {"GGAH", kNmea, kRare, WriteHeadingGga},
    {"GGABASE2", kNmea, kRare, WriteBase2Gga},
    {"GBS", kNmea, kRare, WriteGbs},
    {"GNS", kNmea, kRare, WriteGns},
    {"NTR", kNmea, kRare, WriteNtr},
    {"RTK", kNmea, kRare, WriteRtkSentence},

    // Binary observations and IMU frames, by name only.
    {"RANGEB", kBinary, kEveryEpoch, WriteRangeBinary, true},
    {"RAWIMUB", kBinary, kEveryEpoch, WriteRawImuBinary, true},
    {"RAWIMUB:zero", kBinary, kEveryEpoch, WriteSilentRawImuBinary, true},
    {"RAWIMUXB", kBinary, kEveryEpoch, WriteRawImuExtendedBinary, true},
    {"RAWIMUXB:zero", kBinary, kEveryEpoch, WriteSilentRawImuExtendedBinary, true},
};

struct NamedMix {
  std::string_view name;
  bool all;
  SentenceForm form;
  int rareSeconds;
};

constexpr NamedMix kMixes[] = {
    {"full", true, kLongLog, kRareSecondsInFull},
    {"every", true, kLongLog, 1},
    {"long", false, kLongLog, kRareSecondsInFull},
    {"nmea", false, kNmea, kRareSecondsInFull},
    {"compact", false, kCompactLog, kRareSecondsInFull},
    {"brief", false, kBriefLog, kRareSecondsInFull},
    {"binary", false, kBinary, kRareSecondsInFull},
};

std::optional<std::size_t> KindIndex(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kKinds); ++i) {
    if (kKinds[i].name == name) return i;
  }
  return std::nullopt;
}

}  // namespace

std::string_view LogName(const MessageKind& kind) {
  return kind.name.substr(0, kind.name.find(':'));
}

std::span<const MessageKind> MessageKinds() {
  return kKinds;
}

std::optional<Mix> SelectMix(std::string_view mix) {
  Mix selected;
  for (const NamedMix& named : kMixes) {
    if (named.name != mix) continue;
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
      if (kKinds[i].byNameOnly) continue;
      if (named.all || kKinds[i].form == named.form) selected.kinds.push_back(i);
    }
    selected.rareSeconds = named.rareSeconds;
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
    if (wanted[i]) selected.kinds.push_back(i);
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
  std::size_t column = 80;
  for (const MessageKind& kind : kKinds) {
    if (column + kind.name.size() + 1 > 78) {
      help += "\n ";
      column = 1;
    }
    help += ' ';
    help += kind.name;
    column += kind.name.size() + 1;
  }
  help += '\n';
  return help;
}

}  // namespace tarnlog::synth
