#include "extract/record_time/log_types.h"

#include <array>

namespace tarnlog::record_time {
namespace {

constexpr Gate A(std::uint32_t bit) {
  return {MaskWord::kA, bit};
}
constexpr Gate B(std::uint32_t bit) {
  return {MaskWord::kB, bit};
}
constexpr Gate kAlways{};

// Shorthands of the rows below.
constexpr Reading kWords = Reading::kHeaderWords;
constexpr Reading kSolution = Reading::kSolution;
constexpr Form kPair = Form::kHeaderPair;

// Bits of the second word that the SBAS logs take, one each in this order.
constexpr std::uint32_t kFirstSbasBit = 0x200;

constexpr LogType kLogTypes[] = {
    // logMaskA
    {"#RANGEA", A(0x1), "RangeTime.txt", kWords, kPair},
    {"#BASERANGEA", A(0x2), "BaseRangeTime.txt", kWords, kPair},
    {"#BESTPOSA", A(0x4), "BestPosTime.txt", kSolution, kPair},
    {"#BESTVELA", A(0x8), "BestVelTime.txt", kSolution, kPair},
    {"#PSRPOSA", A(0x10), "PsrPosTime.txt", kSolution, kPair},
    {"#PSRVELA", A(0x20), "PsrVelTime.txt", kSolution, kPair},
    {"#RTKPOSA", A(0x40), "RTKPosTime.txt", kSolution, kPair},
    {"#RTKVELA", A(0x80), "RTKVelTime.txt", kSolution, kPair},
    {"#MATCHEDPOSA", A(0x100), "MatchPosTime.txt", kSolution, kPair},
    {"", A(0x200), "GPGGATime.txt", Reading::kGga, Form::kTimeOfDay, true},
    {"#HEADINGA", A(0x400), "HeadingTime.txt", Reading::kHeading, Form::kHeading},
    {"", A(0x800), "AHGHTime.txt", Reading::kAhgh, kPair},
    {"#BD2EPHEMA", A(0x1000), "Bd2EphemTime.txt", kWords, kPair},
    {"#GPSEPHEMA", A(0x2000), "GpsEphemTime.txt", kWords, kPair},
    {"#GLOEPHEMERISA", A(0x4000), "GloEphemTime.txt", kWords, kPair},
    {"#PSRDOPA", A(0x8000), "PsrDopTime.txt", kWords, kPair},
    {"#RAWEPHEMA", A(0x10000), "RawEphemtime.txt", kWords, kPair},
    {"#RTKDOPA", A(0x20000), "RTKDopTime.txt", kWords, kPair},
    {"#RANGEHA", A(0x40000), "RangehTime.txt", kWords, kPair},
    {"#MATCHEDPOSHA", A(0x80000), "MatchPoshTime.txt", kSolution, kPair},
    {"#RTKDATAA", A(0x100000), "RTKDataTime.txt", kWords, kPair},
    {"#RTKDATAHA", A(0x200000), "RTKDatahTime.txt", kWords, kPair},
    {"#TIMEA", A(0x400000), "TimeTime.txt", kWords, kPair},
    {"#VERSIONA", A(0x800000), "VersionTime.txt", kWords, kPair},
    {"#RANGECMPA", A(0x1000000), "RangecmpTime.txt", kWords, kPair},
    {"#IONUTCA", A(0x2000000), "IonutcTime.txt", kWords, kPair},
    {"#SATVISA", A(0x4000000), "SatvisTime.txt", kWords, kPair},
    // The second base's GGA has no week either; it counts its own days.
    {"", A(0x8000000), "ggabase2.txt", Reading::kGga, Form::kTimeOfDay, true},
    {"", A(0x10000000), "GPGGATime.txt", Reading::kGga, Form::kTimeOfDay, true, Satellites::kNone,
     "OnlyGNGGATime.txt"},
    {"", A(0x20000000), "GPGGATime.txt", Reading::kGga, Form::kTimeOfDay, true, Satellites::kNone,
     "OnlyGPGGATime.txt"},
    {"", A(0x40000000), "GPGGATime.txt", Reading::kGga, Form::kTimeOfDay, true, Satellites::kNone,
     "OnlyBDGGATime.txt"},
    {"#REFSTATIONA", A(0x80000000), "RefStationTime.txt", kWords, kPair},
    // logMaskB
    {"#DRPVAA", B(0x1), "Drpva.txt", kWords, kPair, true},
    {"#GALEPHEMERISA", B(0x2), "GalEphemTime.txt", kWords, kPair},
    {"#GYOACCA", B(0x4), "GyoaccTime.txt", kWords, kPair},
    // RMC carries no week: like GGA it is written whatever the week.
    {"", B(0x8), "GNRMCTime.txt", Reading::kRmc, Form::kTimeOfDay, true},
    {"#HEADING2A", B(0x10), "Heading2Time.txt", kSolution, kPair},
    {"#RAWGPSSUBFRAMEA", B(0x20), "RAWGPSSUBFRAMEATime.txt", Reading::kGpsSubframe, kPair, false,
     Satellites::kGps},
    {"#GLORAWSTRINGA", B(0x40), "GLORAWSTRINGATime.txt", Reading::kGloString, kPair, false,
     Satellites::kGlonass},
    {"#BDSRAWNAVSUBFRAMEA", B(0x80), "BDSRAWNAVSUBFRAMEATime.txt", Reading::kBdsSubframe, kPair,
     false, Satellites::kBeiDou},
    {"#SBAS1A", B(kFirstSbasBit << 0), "Sbas.txt", kWords, kPair},
    {"#SBAS2A", B(kFirstSbasBit << 1), "Sbas.txt", kWords, kPair},
    {"#SBAS3A", B(kFirstSbasBit << 2), "Sbas.txt", kWords, kPair},
    {"#SBAS4A", B(kFirstSbasBit << 3), "Sbas.txt", kWords, kPair},
    {"#SBAS5A", B(kFirstSbasBit << 4), "Sbas.txt", kWords, kPair},
    {"#SBAS6A", B(kFirstSbasBit << 5), "Sbas.txt", kWords, kPair},
    {"#SBAS7A", B(kFirstSbasBit << 6), "Sbas.txt", kWords, kPair},
    {"#SBAS9A", B(kFirstSbasBit << 7), "Sbas.txt", kWords, kPair},
    {"#SBAS10A", B(kFirstSbasBit << 8), "Sbas.txt", kWords, kPair},
    {"#SBAS12A", B(kFirstSbasBit << 9), "Sbas.txt", kWords, kPair},
    {"#SBAS17A", B(kFirstSbasBit << 10), "Sbas.txt", kWords, kPair},
    {"#SBAS18A", B(kFirstSbasBit << 11), "Sbas.txt", kWords, kPair},
    {"#SBAS24A", B(kFirstSbasBit << 12), "Sbas.txt", kWords, kPair},
    {"#SBAS25A", B(kFirstSbasBit << 13), "Sbas.txt", kWords, kPair},
    {"#SBAS26A", B(kFirstSbasBit << 14), "Sbas.txt", kWords, kPair},
    {"#TDIFPOSA", B(0x1000000), "TdifPosTime.txt", kSolution, kPair},
    {"#PDPPOSA", B(0x1000000), "TdifPosTime.txt", kSolution, kPair},
    {"#TDIFVELA", B(0x2000000), "TdifVelTime.txt", kSolution, kPair},
    {"#PDPVELA", B(0x2000000), "TdifVelTime.txt", kSolution, kPair},
    {"#PPPPOSA", B(0x4000000), "PppPosTime.txt", kSolution, kPair},
    {kPppDopText, B(0x8000000), "PppDopTime.txt", kWords, kPair},
    {"#EVENTMARKA", B(0x10000000), "EventMark.txt", Reading::kEvent, Form::kEvent},
    {"#EVENTALLA", B(0x20000000), "EventAll.txt", Reading::kEvent, Form::kEvent},
    {"#RAWIMUXA", B(0x40000000), "RawImux.txt", kWords, kPair, true},
    {"#RAWIMUA", B(0x80000000), "RawImu.txt", kWords, kPair, true},
    // Subtypes. Those whose text is a filter entry of a tick follow that
    // tick; the others always pass.
    {"#BESTPOS1A", kAlways, "BestPos1Time.txt", kSolution, kPair},
    {"#BESTPOS2A", kAlways, "BestPos2Time.txt", kSolution, kPair},
    {"#BESTVEL1A", kAlways, "BestVel1Time.txt", kSolution, kPair},
    {"#BESTVEL2A", kAlways, "BestVel2Time.txt", kSolution, kPair},
    {"#PSRPOS2A", kAlways, "PsrPos2Time.txt", kSolution, kPair},
    // The filter passes "#PSRVEL2A" and the classifier looks for this
    // spelling: that log passes and is dropped.
    {"#PSRPVEL2A",
     kAlways,
     "PsrVel2Time.txt",
     kSolution,
     kPair,
     false,
     Satellites::kNone,
     {},
     "#PSRVEL2A"},
    {"#PSRDOP2A", kAlways, "PsrDop2Time.txt", kWords, kPair},
    {"#BDSEPHEMERISA", A(0x1000), "BdsEphemTime.txt", kWords, kPair},
    {"#AGRICA", kAlways, "Agric.txt", Reading::kCompactTime, Form::kTimeOnly},
    {"#INSPVAX", kAlways, "Inspvax.txt", kWords, kPair, true},
    {"#MATCHEDPOS2A", kAlways, "MatchPos2Time.txt", kSolution, kPair},
    {"#SSR1CLOCKA", kAlways, "SSR1CLOCK.txt", Reading::kSsr, Form::kSsr},
    {"#SSR1CBIASA", kAlways, "SSR1CBIAS.txt", Reading::kSsr, Form::kSsr},
    {"#SSR1ORBITA", kAlways, "SSR1ORBIT.txt", Reading::kSsr, Form::kSsr},
    {"#BD2IONUTCA", kAlways, "BD2IONUTC.txt", kWords, kPair},
    {"#RANGECMP2A", kAlways, "Rangecmp2Time.txt", Reading::kLongTime, Form::kTimeOnly},
    {"#RANGECMPHA", kAlways, "RangecmphTime.txt", Reading::kLongTime, Form::kTimeOnly},
    {"#RANGECMP2HA", kAlways, "Rangecmp2hTime.txt", Reading::kLongTime, Form::kTimeOnly},
    {"#GALFNAVRAWPAGEA", kAlways, "GALFNAVRAWPAGEATime.txt", Reading::kLongTime, Form::kOneValue},
    {"#GALINAVRAWWORDA", kAlways, "GALINAVRAWWORDATime.txt", Reading::kGalileoSignal,
     Form::kOneValue},
    {"#RAWBD3SUBFRAMEA", kAlways, "RAWBD3SUBFRAMEATime.txt", Reading::kBd3Signal, Form::kOneValue},
    {"#RAWCNAVFRAMEA", kAlways, "RAWCNAVFRAMEATime.txt", Reading::kLongTime, Form::kOneValue},
    {"#RAWSBASFRAMEA", kAlways, "RAWSBASFRAMEATime.txt", Reading::kLongTime, Form::kOneValue},
    {"#CORRIMUDATAA", kAlways, "CORRIMUDATAATime.txt", kWords, kPair},
    {"#TIMEDWHEELDATAA", kAlways, "TIMEDWHEELDATA.txt", kWords, kPair},
    {"#BASESATSA", kAlways, "BASESATSA.txt", kWords, kPair},
    // The RawImux tick's two further texts.
    {"#RAWIMUXCA", B(0x40000000), "RawImuxC.txt", kWords, kPair, true},
    {"#RAWIMUXPA", B(0x40000000), "RawImuxP.txt", kWords, kPair, true},
    {"#BDSEPHEMA,", kAlways, "BDSEPHEM.txt", Reading::kCompactTime, Form::kOneValue},
};

constexpr DirectForm kTime = DirectForm::kTime;
constexpr DirectForm kBlock = DirectForm::kBlock;
constexpr DirectForm kBase2 = DirectForm::kSecondBase;

constexpr DirectType kDirectTypes[] = {
    {"#EVENTFLAG", "eventflag.txt", DirectForm::kEvent},
    {"#EVENTSLNA", "eventsln.txt", DirectForm::kEvent},
    {"#ADRNAVA", "adrnav.txt", kTime},
    {"#ADRDOPA", "adrdop.txt", kTime},
    {"#ADRDOPHA", "adrdoph.txt", kTime},
    {"#PPPB2BINFO1A", "b2binfo1.txt", kTime},
    {"#PPPB2BINFO2A", "b2binfo2.txt", kTime},
    {"#PPPB2BINFO3A", "b2binfo3.txt", kTime},
    {"#PPPB2BINFO4A", "b2binfo4.txt", kTime},
    {"#BESTNAVA", "bestnav.txt", kTime},
    {"#BESTNAVHA", "bestnavh.txt", kTime},
    {"#MPPPPOS", "mppppos.txt", kTime},
    {"#SPPNAVA", "sppnav.txt", kTime},
    {"#SPPNAVHA", "sppnavh.txt", kTime},
    {"#SPPDOPA", "sppdop.txt", kTime},
    {"#SPPDOPHA", "sppdoph.txt", kTime},
    {"#RECTIMEA", "rectime.txt", kTime},
    {"#PPPNAVA", "pppnav.txt", kTime},
    {"#SATINFOA", "satinfo.txt", kTime},
    {"#KESHEADINGA", "uheading.txt", kTime},
    {"#KESHEADING2A", "uheading2.txt", kTime},
    {"#OBSVMA", "obsvm.txt", kTime},
    {"#OBSVHA", "obsvmh.txt", kTime},
    {"#OBSVBASEA", "obsvbase.txt", kTime},
    {"#BASEINFOA", "baseinfo.txt", kTime},
    {"#IMUATTA,", "imuatt.txt", kTime},
    {"#INSHOTINFOR0A,", "inshotinfo.txt", kTime},
    {"#E6MASKBLOCKA,", "maskblk.txt", kBlock},
    {"#E6ORBITBLOCKA,", "orbitblk.txt", kBlock},
    {"#E6CLOCKFULLBLOCKA,", "clkfull.txt", kBlock},
    {"#E6CLOCKSUBBLOCKA,", "clksub.txt", kBlock},
    {"#E6CBIASBLOCKA,", "cbias.txt", kBlock},
    {"#E6PBIASBLOCKA,", "pbias.txt", kBlock},
    {"#RTKPOS2A", "rtkpos2.txt", kBase2},
    {"#RAWMAGXA", "rawmagx.txt", kBase2},
    {"#BASERANGE2A", "base2range.txt", kBase2},
    {"#RTKPOSBASE2", "rtkposbase2.txt", kBase2},
    {"#RTKDOPBASE2", "rtkdopbase2.txt", kBase2},
    {"#RTKDATABASE2", "rtkdatabase2.txt", kBase2},
    {"#MATCHEDPOSBASE2", "matchedposbase2.txt", kBase2},
    {"#PSRPOSBASE2", "psrposbase2.txt", kBase2},
    {"#PSRDOPBASE2", "psrdopbase2.txt", kBase2},
    {"#PSRVELBASE2", "psrvelbase2.txt", kBase2},
    {"#REFSTATION2", "ref2station.txt", kBase2},
    {"#BESTPOSBASE2A", "bestposbase2.txt", kBase2},
    {"#OBSSTATUS", "obsstatus.txt", kTime},
    {"#DOPHD2A", "dophd2.txt", kTime},
    {"#INSATTCOV", "insattcov.txt", kTime},
};

constexpr std::string_view kNotRoverTexts[] = {
    "BASE",     "SBAS",       "#EVENT", "#MATCHED",   "#REFSTATIONA",
    "#RTKDATA", "#RTCSTATUS", "MPPP",   "PPPB2BINFO",
};

struct Numbered {
  std::string_view word;
  int number;
};

// The receiver's enumerations of solution status and of position or
// velocity type, as its logs print them.
constexpr Numbered kSolutionStatuses[] = {
    {"SOL_COMPUTED", 0}, {"INSUFFICIENT_OBS", 1}, {"NO_CONVERGENCE", 2},     {"SINGULARITY", 3},
    {"COV_TRACE", 4},    {"TEST_DIST", 5},        {"COLD_START", 6},         {"V_H_LIMIT", 7},
    {"VARIANCE", 8},     {"RESIDUALS", 9},        {"INTEGRITY_WARNING", 13}, {"PENDING", 18},
    {"INVALID_FIX", 19}, {"UNAUTHORIZED", 20},    {"INVALID_RATE", 22},
};
constexpr Numbered kPositionTypes[] = {
    {"NONE", 0},
    {"FIXEDPOS", 1},
    {"FIXEDHEIGHT", 2},
    {"DOPPLER_VELOCITY", 8},
    {"SINGLE", 16},
    {"PSRDIFF", 17},
    {"WAAS", 18},
    {"PROPAGATED", 19},
    {"L1_FLOAT", 32},
    {"IONOFREE_FLOAT", 33},
    {"NARROW_FLOAT", 34},
    {"L1_INT", 48},
    {"WIDE_INT", 49},
    {"NARROW_INT", 50},
    {"RTK_DIRECT_INS", 51},
    {"INS_SBAS", 52},
    {"INS_PSRSP", 53},
    {"INS_PSRDIFF", 54},
    {"INS_RTKFLOAT", 55},
    {"INS_RTKFIXED", 56},
    {"PPP_CONVERGING", 68},
    {"PPP", 69},
    {"OPERATIONAL", 70},
    {"WARNING", 71},
    {"OUT_OF_BOUNDS", 72},
    {"INS_PPP_CONVERGING", 73},
    {"INS_PPP", 74},
    {"PPP_BASIC_CONVERGING", 77},
    {"PPP_BASIC", 78},
    {"INS_PPP_BASIC_CONVERGING", 79},
    {"INS_PPP_BASIC", 80},
};

template <std::size_t N>
int NumberOf(const Numbered (&table)[N], std::string_view word) {
  for (const Numbered& entry : table) {
    if (entry.word == word) return entry.number;
  }
  return -1;
}

constexpr Numbered kBeiDouSignals[] = {{"B1D1", 1}, {"B1D2", 1}, {"B2D1", 2},
                                       {"B2D2", 2}, {"B3D1", 3}, {"B3D2", 3}};
constexpr Numbered kBd3Signals[] = {{"B1D1", 1}, {"B2D1", 2}};
constexpr Numbered kGalileoSignals[] = {{"GALE1", 1}, {"GALE5B", 2}};

NmeaTypes FindNmeaTypes() {
  NmeaTypes found;
  for (std::size_t k = 0; k < std::size(kLogTypes); ++k) {
    const LogType& type = kLogTypes[k];
    if (!type.text.empty()) continue;
    const int index = static_cast<int>(k);
    if (type.reading == Reading::kRmc) found.rmc = index;
    if (type.reading == Reading::kAhgh) found.ahgh = index;
    if (type.reading != Reading::kGga) continue;
    if (type.file == "ggabase2.txt") found.ggaBase2 = index;
    if (type.talkerFile.empty() && type.file == "GPGGATime.txt") found.anyGga = index;
    if (type.talkerFile == "OnlyGNGGATime.txt") found.gnGga = index;
    if (type.talkerFile == "OnlyGPGGATime.txt") found.gpGga = index;
    if (type.talkerFile == "OnlyBDGGATime.txt") found.bdGga = index;
  }
  return found;
}

}  // namespace

std::span<const LogType> LogTypes() {
  return kLogTypes;
}

const NmeaTypes& NmeaTypeIndexes() {
  static const NmeaTypes indexes = FindNmeaTypes();
  return indexes;
}

std::span<const DirectType> DirectTypes() {
  return kDirectTypes;
}

std::span<const std::string_view> NotRoverTexts() {
  return kNotRoverTexts;
}

int SolutionStatusNumber(std::string_view word) {
  return NumberOf(kSolutionStatuses, word);
}

int PositionTypeNumber(std::string_view word) {
  return NumberOf(kPositionTypes, word);
}

int SystemNumber(char letter) {
  switch (letter) {
    case 'G':
      return 1;
    case 'R':
      return 2;
    case 'C':
      return 3;
    case 'E':
      return 4;
    default:
      return 0;
  }
}

int BeiDouSignalNumber(std::string_view word) {
  const int number = NumberOf(kBeiDouSignals, word);
  return number < 0 ? 0 : number;
}

int Bd3SignalNumber(std::string_view word) {
  const int number = NumberOf(kBd3Signals, word);
  return number < 0 ? 0 : number;
}

int GalileoSignalNumber(std::string_view word) {
  const int number = NumberOf(kGalileoSignals, word);
  return number < 0 ? 0 : number;
}

}  // namespace tarnlog::record_time
