// The position logs as data: how each one is walked, which table format it
// writes, and which side effects follow its row.
#include "extract/position/position_extractors.h"

#include <array>
#include <cstring>

#include "extract/position/position_rows.h"
#include "extract/position/position_walk.h"

namespace tarnlog {
namespace {

enum class RowFormat { kBestPos, kBestGnssPos, kRtkPos, kRtkPos2, kMatchedPos, kPsrPos, kPppPos };

// Which codes add a row's position to the member's sums.
enum class SumRule {
  kNone,
  kIntegerOrFixed,  // 50, 48 and 51
  kRtkInteger,      // 48, 49 and 50
  kNarrowInt,       // 50
  kEveryRow,
  kPpp,  // 26
};

struct PositionMember {
  PositionLog log;
  WalkRules walk;
  RowFormat format;
  SumRule sums;
  SumSource sumSource;
  bool needsFine;  // the sentence must contain "FINE" anywhere
  bool needsWeek;  // week 0 leaves no row
  bool flushEachRow;
  bool lastBestPos;  // stores the row for #EVENTALL unless INSUFFICIENT_OBS
  bool rtkRun;       // run statistics and ttff.txt
  bool writesGrid;   // the grid row for a latitude above 0
};

constexpr WalkRules BestPosWalk(const char* name) {
  return {name,
          PositionFamily::kBestPos,
          StatusRule::kSolutionComputed,
          SigmaLead::kNextComma,
          StationRead::kQuotedOrPlain,
          TailRead::kNone,
          0,
          false,
          false,
          true};
}
constexpr WalkRules BestGnssPosWalk(const char* name) {
  return {name,
          PositionFamily::kBestGnssPos,
          StatusRule::kSolutionComputed,
          SigmaLead::kNextComma,
          StationRead::kQuotedOrPlain,
          TailRead::kNone,
          0,
          false,
          true,
          false};
}
constexpr WalkRules RtkPosWalk(const char* name) {
  return {name,
          PositionFamily::kRtk,
          StatusRule::kSolutionComputed,
          SigmaLead::kFiveOn,
          StationRead::kAlwaysQuoted,
          TailRead::kReservedAndExtStatus,
          0,
          false,
          false,
          false};
}
constexpr WalkRules MatchedPosWalk(const char* name) {
  return {name,
          PositionFamily::kRtk,
          StatusRule::kSolutionComputed,
          SigmaLead::kFiveOn,
          StationRead::kAlwaysQuoted,
          TailRead::kThreeIntegers,
          0,
          true,
          false,
          false};
}
constexpr WalkRules PsrPosWalk(const char* name) {
  return {name,
          PositionFamily::kPsr,
          StatusRule::kFixedOffset,
          SigmaLead::kFiveOn,
          StationRead::kQuotedOrPlain,
          TailRead::kReservedAndExtStatus,
          0,
          false,
          false,
          false};
}
constexpr WalkRules PppPosWalk(const char* name) {
  return {name,
          PositionFamily::kPpp,
          StatusRule::kFixedOffset,
          SigmaLead::kFiveOn,
          StationRead::kQuotedOrPlain,
          TailRead::kReservedAndExtStatus,
          -1,
          false,
          false,
          false};
}

using L = PositionLog;
using F = RowFormat;
using S = SumRule;
using Src = SumSource;

// In the order of PositionLog.
// clang-format off
constexpr std::array<PositionMember, 18> kMembers{{
  // log               walk                                   format          sums                 source          fine   week   flush  store  rtk    grid
  {L::kBestPos,        BestPosWalk("BESTPOSA"),               F::kBestPos,     S::kIntegerOrFixed, Src::kBestPos,   false, false, false, true,  false, true},
  {L::kBestPos1,       BestPosWalk("BESTPOS1A"),              F::kBestPos,     S::kNone,           Src::kBestPos,   false, false, false, false, false, false},
  {L::kBestPos2,       BestPosWalk("BESTPOS2A"),              F::kBestPos,     S::kNone,           Src::kBestPos,   false, false, false, false, false, false},
  {L::kBestPosBase2,   BestPosWalk("BESTPOSBASE2A"),          F::kBestPos,     S::kNone,           Src::kBestPos,   false, false, true,  false, false, false},
  {L::kBestGnssPos,    BestGnssPosWalk("BESTGNSSPOSA"),       F::kBestGnssPos, S::kNone,           Src::kBestPos,   false, false, false, false, false, false},
  {L::kRtkPos,         RtkPosWalk("RTKPOSA"),                 F::kRtkPos,      S::kRtkInteger,     Src::kRtkPos,    false, false, false, false, true,  true},
  {L::kRtkPos2,        RtkPosWalk("RTKPOS2A"),                F::kRtkPos2,     S::kRtkInteger,     Src::kRtkPos2,   false, false, false, false, false, false},
  {L::kRtkPosBase2,    RtkPosWalk("RTKPOSBASE2A"),            F::kRtkPos2,     S::kNone,           Src::kRtkPos,    true,  false, false, false, false, false},
  {L::kMatchedPos,     MatchedPosWalk("MATCHEDPOSA"),         F::kMatchedPos,  S::kNarrowInt,      Src::kMatched,   false, false, false, false, false, false},
  {L::kMatchedPos2,    MatchedPosWalk("MATCHEDPOS2A"),        F::kMatchedPos,  S::kNarrowInt,      Src::kMatched2,  false, false, false, false, false, false},
  {L::kMatchedPosH,    MatchedPosWalk("MATCHEDPOSHA"),        F::kMatchedPos,  S::kNarrowInt,      Src::kMatchedH,  false, false, false, false, false, false},
  {L::kMatchedPosBase2, MatchedPosWalk("MATCHEDPOSBASE2A"),   F::kMatchedPos,  S::kNone,           Src::kMatched,   true,  false, false, false, false, false},
  {L::kPsrPos,         PsrPosWalk("PSRPOSA"),                 F::kPsrPos,      S::kEveryRow,       Src::kPsrPos,    false, false, false, false, false, false},
  {L::kPsrPos2,        PsrPosWalk("PSRPOS2A"),                F::kPsrPos,      S::kNone,           Src::kPsrPos,    false, false, false, false, false, false},
  {L::kMPsrPos,        PsrPosWalk("MPSRPOSA"),                F::kPsrPos,      S::kNone,           Src::kPsrPos,    false, false, false, false, false, false},
  {L::kPsrPosBase2,    PsrPosWalk("PSRPOSBASE2A"),            F::kPsrPos,      S::kNone,           Src::kPsrPos,    false, false, false, false, false, false},
  {L::kPppPos,         PppPosWalk("PPPPOSA"),                 F::kPppPos,      S::kPpp,            Src::kPppPos,    false, true,  false, false, false, false},
  {L::kMPppPos,        PppPosWalk("MPPPPOSA"),                F::kPppPos,      S::kPpp,            Src::kPppPos,    false, true,  false, false, false, false},
}};
// clang-format on

constexpr bool MembersInLogOrder() {
  for (std::size_t i = 0; i < kMembers.size(); ++i) {
    if (static_cast<std::size_t>(kMembers[i].log) != i) return false;
  }
  return true;
}
static_assert(MembersInLogOrder(), "kMembers must follow the order of PositionLog");

bool Sums(SumRule rule, int code) {
  switch (rule) {
    case SumRule::kNone:
      return false;
    case SumRule::kIntegerOrFixed:
      return code == 50 || code == 48 || code == 51;
    case SumRule::kRtkInteger:
      return code >= 48 && code <= 50;
    case SumRule::kNarrowInt:
      return code == 50;
    case SumRule::kEveryRow:
      return true;
    case SumRule::kPpp:
      return code == 26;
  }
  return false;
}

void WriteRow(const PositionMember& member, const PositionRecord& r, OutFile* out,
              const ExtractionState& state, int origin) {
  switch (member.format) {
    case RowFormat::kBestPos:
      WriteBestPosRow(out, r);
      break;
    case RowFormat::kBestGnssPos:
      WriteBestGnssPosRow(out, r);
      break;
    case RowFormat::kRtkPos:
      WriteRtkPosRow(out, r, true);
      break;
    case RowFormat::kRtkPos2:
      WriteRtkPosRow(out, r, false);
      break;
    case RowFormat::kMatchedPos:
      WriteMatchedPosRow(out, r, state.currentEpochSeconds);
      break;
    case RowFormat::kPsrPos:
      WritePsrPosRow(out, r, origin);
      break;
    case RowFormat::kPppPos:
      WritePppPosRow(out, r, origin);
      break;
  }
}

}  // namespace

void ExtractPosition(PositionLog log, const char* sentence, std::size_t length,
                     const PositionTables& tables, ExtractionState& state, int origin) {
  const auto index = static_cast<std::size_t>(log);
  if (sentence == nullptr || index >= kMembers.size()) return;
  const PositionMember& member = kMembers[index];
  if (member.needsFine && std::strstr(sentence, "FINE") == nullptr) return;

  PositionRecord r;
  const WalkEnd end = WalkPositionSentence(member.walk, sentence, length, &r);
  if (member.rtkRun) NoteRtkEpoch(end, r, state.lastTtffCode, state.rtkStatistics);
  if (end != WalkEnd::kComplete) return;
  if (member.needsWeek && r.header.week == 0) return;

  WriteRow(member, r, tables.table, state, origin);
  if (member.flushEachRow && tables.table != nullptr) tables.table->Flush();

  if (member.lastBestPos && !r.insufficientObs) StoreLastBestPos(r, state.lastBestPos);
  if (Sums(member.sums, r.code)) {
    state.Sums(member.sumSource).Add(r.latitude, r.longitude, r.EllipsoidalHeight());
  }
  if (member.rtkRun) NoteTtff(tables.ttff, r, state.lastTtffCode);
  if (member.writesGrid && r.latitude > 0.0) WriteGridRow(tables.grid, r);
}

}  // namespace tarnlog
