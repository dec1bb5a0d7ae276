#include "extract/dispatch.h"

#include <cstdlib>
#include <cstring>

#include "extract/normalise.h"
#include "extract/position/position_extractors.h"
#include "extract/read_number.h"
#include "extract/targets.h"
#include "extract/text_search.h"

namespace tarnlog {

OutFile* DispatchContext::Table(int k) const {
  const TableId id = row.tables[k];
  return id == kNoTable ? nullptr : &tables[id];
}

namespace {

using T = TableId;
constexpr T kNo = kNoTable;
constexpr unsigned kFine = kNeedFine;
constexpr unsigned kNoLocal = kNeedNoLocal;

int Log(PositionLog log) {
  return static_cast<int>(log);
}

void RunPosition(const DispatchContext& c) {
  const PositionTables tables{c.Table(0), c.Table(1), c.Table(2)};
  ExtractPosition(static_cast<PositionLog>(c.row.log), c.sentence, c.length, tables, c.state,
                  c.row.param);
}

void RunBestXyz(const DispatchContext& c) {
  ExtractBestXyz(c.sentence, c.length, c.Table(0), c.row.param);
}

// BESTNAVXYZA and BESTNAVXYZHA: the whole body as one BESTXYZA.
void RunBestNavXyz(const DispatchContext& c) {
  NormalisedSentence xyz;
  if (!NormaliseSingle(c.sentence, "BESTXYZA", &xyz)) return;
  ExtractBestXyz(xyz.text, xyz.length, c.Table(0), c.row.param);
}

bool Contains(const NormalisedSentence& s, const char* text) {
  return std::strstr(s.text, text) != nullptr;
}

struct CombinedLog {
  const char* positionName;
  const char* velocityName;
  PositionLog positionLog;
  // BESTNAVA and BESTNAVHA give each half only when -BP (-BV) was set and
  // the half lacks "LOCAL".
  bool guardedByBestOptions;
};

// One row per combined log that is split; indexed by the row's `log`.
constexpr CombinedLog kCombinedLogs[] = {
    {"BESTPOSA", "BESTVELA", PositionLog::kBestPos, true},
    {"BESTPOS2A", "BESTVEL2A", PositionLog::kBestPos2, true},
    {"PSRPOSA", "PSRVELA", PositionLog::kPsrPos, false},
    {"PSRPOS2A", "PSRVEL2A", PositionLog::kPsrPos2, false},
    {"RTKPOSA", "RTKVELA", PositionLog::kRtkPos, false},
    {"RTKPOS2A", "RTKVEL2A", PositionLog::kRtkPos2, false},
    {"PPPPOSA", nullptr, PositionLog::kPppPos, false},
};
enum CombinedIndex { kBestNav, kBestNavH, kSppNav, kSppNavH, kAdrNav, kAdrNavH, kPppNav };

void RecordFirstFix(const DispatchContext& c, const CompactHeader& header) {
  ExtractionState& s = c.state;
  if (std::strstr(c.sentence, "SOL_COMPUTED") && s.firstFixWeek == 0 && s.firstFixSeconds == 0.0 &&
      !s.firstFixLatched) {
    s.firstFixWeek = header.week;
    s.firstFixSeconds = header.Seconds();
  }
}

void RunCombined(const DispatchContext& c) {
  const CombinedLog& log = kCombinedLogs[c.row.log];
  CompactHeader header;
  NormalisedSentence position;
  NormalisedSentence velocity;
  if (!SplitCombined(c.sentence, log.positionName, log.velocityName ? log.velocityName : "",
                     &header, &position, log.velocityName ? &velocity : nullptr)) {
    return;
  }
  if (c.row.log == kBestNav) RecordFirstFix(c, header);
  const bool givePosition = !log.guardedByBestOptions ||
                            (c.options.Wants(TableId::kBestPos) && !Contains(position, "LOCAL"));
  if (givePosition) {
    const PositionTables tables{c.Table(0), c.Table(1), c.Table(2)};
    ExtractPosition(log.positionLog, position.text, position.length, tables, c.state, 1);
  }
  if (log.velocityName) {
    const bool giveVelocity = !log.guardedByBestOptions ||
                              (c.options.Wants(TableId::kBestVel) && !Contains(velocity, "LOCAL"));
    if (giveVelocity) ExtractCombinedVelocity(log.velocityName, velocity, c.Table(3), c.state);
  }
}

DispatchRow Prefix(const char* text, unsigned needs, std::array<TableId, 4> tables,
                   DispatchHandler handler = nullptr, int log = 0, int param = 1) {
  return {1, TestKind::kPrefix, text, 0, needs, kNo, tables, log, param, handler};
}
DispatchRow Contains1(const char* text, unsigned needs, std::array<TableId, 4> tables,
                      DispatchHandler handler = nullptr, int log = 0, int param = 0) {
  return {1, TestKind::kContains, text, 0, needs, kNo, tables, log, param, handler};
}
DispatchRow Position2(const char* text, unsigned needs, TableId option,
                      std::array<TableId, 4> tables, PositionLog log) {
  return {2, TestKind::kContains, text, 0, needs, option, tables, Log(log), 0, RunPosition};
}
DispatchRow Contains3(const char* text, unsigned needs, std::array<TableId, 4> tables,
                      DispatchHandler handler = nullptr, int log = 0, int param = 0) {
  return {3, TestKind::kContains, text, 0, needs, kNo, tables, log, param, handler};
}
DispatchRow At(int stage, const char* text, int position, unsigned needs, TableId option,
               std::array<TableId, 4> tables) {
  return {stage, TestKind::kAtCharacter, text, position, needs, option, tables, 0, 0, nullptr};
}

std::vector<DispatchRow> MakeRows() {
  std::vector<DispatchRow> rows = {
      // Stage 1: combined and maker's logs into the default set.
      Prefix("#DOPHD2A", kFine, {T::kDopHd2, kNo, kNo, kNo}),
      Prefix("#BESTNAVA", kFine, {T::kBestNavPos, kNo, kNo, T::kBestNavVel}, RunCombined, kBestNav),
      Prefix("#BESTNAVH", kFine, {T::kBestNavHPos, kNo, kNo, T::kBestNavHVel}, RunCombined,
             kBestNavH),
      Prefix("#CLKDTA", kFine | kNeedNoCom, {T::kClkDt, kNo, kNo, kNo}),
      Prefix("#BESTNAVXYZA", kFine, {T::kBestXyzPos, kNo, kNo, kNo}, RunBestNavXyz, 0, 1),
      Prefix("#BESTNAVXYZH", kFine, {T::kBestXyzHPos, kNo, kNo, kNo}, RunBestNavXyz, 0, 2),
      Prefix("#SPPNAVA", kFine, {T::kSppNavPos, kNo, kNo, T::kSppNavVel}, RunCombined, kSppNav),
      Prefix("#SPPNAVHA", kFine, {T::kSppNavHPos, kNo, kNo, T::kSppNavHVel}, RunCombined, kSppNavH),
      Prefix("#RECTIMEA", kFine, {T::kNTime, kNo, kNo, kNo}),
      Prefix("#ADRNAVA,", kFine, {T::kAdrNavPos, T::kRtkPosXY, T::kTtff, T::kAdrNavVel},
             RunCombined, kAdrNav),
      Prefix("#ADRNAVHA", kFine, {T::kAdrNavHPos, kNo, kNo, T::kAdrNavHVel}, RunCombined, kAdrNavH),
      Prefix("#SPPDOPA", kFine, {T::kSppDop, kNo, kNo, kNo}),
      Prefix("#SPPDOPHA", kFine, {T::kSppDopH, kNo, kNo, kNo}),
      Prefix("#PPPNAVA,", kFine, {T::kPppNavPos, kNo, kNo, kNo}, RunCombined, kPppNav),
      Prefix("#PPPDOPA,", kFine | kNeedNoCom, {T::kPppDop, kNo, kNo, kNo}),
      Prefix("#MPPPDOPA,", kFine | kNeedNoCom, {T::kMPppDop, kNo, kNo, kNo}),
      Prefix("#MPPPPOSA,", kFine | kNeedCom, {T::kMPppPos, kNo, kNo, kNo}, RunPosition,
             Log(PositionLog::kMPppPos), 1),
      Prefix("#ADRDOPA,", kFine, {T::kAdrDop, kNo, kNo, kNo}),
      Prefix("#ADRDOPH", kFine, {T::kAdrDopH, kNo, kNo, kNo}),
      Prefix("#OBSVMA,", kFine, {T::kObsvm, T::kFreqList, kNo, kNo}),
      Prefix("#OBSVMHA,", kFine, {T::kObsvmh, T::kFreqhList, kNo, kNo}),
      Prefix("#SLANTAPA", kFine, {T::kSlantAp, kNo, kNo, kNo}),
      Prefix("$GNGGAH,", 0, {T::kGngGah, kNo, kNo, kNo}),
      Prefix("#BASEINFOA,", 0, {T::kBaseInfo, kNo, kNo, kNo}),
      Prefix("#SLANTSTATUSA,", 0, {T::kSlantStatus, kNo, kNo, kNo}),
      Prefix("#RXSTATUSA,", 0, {T::kRxStatus, kNo, kNo, kNo}),
      Prefix("#HWSTATUSA,", 0, {T::kHwStatus, kNo, kNo, kNo}),
      Prefix("#FREQJAMSTATUSA", 0, {T::kFreqJamStatus, kNo, kNo, kNo}),
      Prefix("#MOWSTATUSA", 0, {T::kMowStatus, kNo, kNo, kNo}),
      Prefix("#BESTPOSBASE2A", 0, {T::kBestPosBase2, kNo, kNo, kNo}, RunPosition,
             Log(PositionLog::kBestPosBase2), 0),
      Contains1("$GNGGABASE2", 0, {T::kGgaBase2, kNo, kNo, kNo}),
      Contains1("#TROPINFOA", kNeedCommaFine, {T::kTropInfo, kNo, kNo, kNo}),
      // Anywhere, also inside other sentences: this is why it stands so late.
      Contains1("GST", 0, {T::kGst, kNo, kNo, kNo}),
      Contains1("GBS,", 0, {T::kGbs, kNo, kNo, kNo}),
      Contains1("#IMUATTA", 0, {T::kImuAtt, kNo, kNo, kNo}),
      Contains1("#PPSSTATUSA", 0, {T::kPpsStatus, kNo, kNo, kNo}),
      Contains1("%GYRATTSA,", 0, {T::kGyrAtts, kNo, kNo, kNo}),
      Contains1("%RAWGYR2A,", 0, {T::kRawGyr2, kNo, kNo, kNo}),
      Contains1("%INSATTCOVSA,", 0, {T::kInsAttCov, kNo, kNo, kNo}),
      Contains1("#SPPNAVENUA,", 0, {T::kSppNavEnu, kNo, kNo, kNo}),
      Contains1("#RTKPOSBASE2A,", 0, {T::kRtkPosBase2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kRtkPosBase2)),
      Contains1("#PSRPOSBASE2A,", 0, {T::kPsrPosBase2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kPsrPosBase2)),
      Contains1("#MATCHEDPOSBASE2A,", 0, {T::kMatchBase2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kMatchedPosBase2)),
      Contains1("#PSRVELBASE2A,", 0, {T::kPsrVelBase2, kNo, kNo, kNo}),
      Contains1("#RTKVELBASE2A,", 0, {T::kRtkVelBase2, kNo, kNo, kNo}),
      Contains1("#PSRDOPBASE2A,", 0, {T::kPsrDopBase2, kNo, kNo, kNo}),
      Contains1("#RTKDOPBASE2A,", 0, {T::kRtkDopBase2, kNo, kNo, kNo}),
      Contains1("#BASE2BIASA,", 0, {T::kMatchBias, kNo, kNo, kNo}),
      Prefix("#ENVINFOA,", 0, {T::kEnvInfo, kNo, kNo, kNo}),

      // Stage 2: the position set, guarded by the options.
      Position2("#RTKPOSA,", kNoLocal, T::kRtkPos, {T::kRtkPos, T::kRtkPosXY, T::kTtff, kNo},
                PositionLog::kRtkPos),
      Position2("#MATCHEDPOSA", kNoLocal, T::kMatch, {T::kMatch, kNo, kNo, kNo},
                PositionLog::kMatchedPos),
      At(2, "GGA,", 3, 0, T::kGga, {T::kGga, kNo, kNo, kNo}),
      Position2("#PPPPOSA", kFine, T::kPppPos, {T::kPppPos, kNo, kNo, kNo}, PositionLog::kPppPos),
      Position2("#MATCHEDPOSHA", 0, T::kMatchH, {T::kMatchH, kNo, kNo, kNo},
                PositionLog::kMatchedPosH),
      Position2("#BESTPOSA,", kNoLocal, T::kBestPos, {T::kBestPos, T::kBstPosXY, kNo, kNo},
                PositionLog::kBestPos),
      Position2("#PSRPOSA,", kNoLocal, T::kPsrPos, {T::kPsrPos, kNo, kNo, kNo},
                PositionLog::kPsrPos),

      // Stage 3: the other tables; only the position set above is guarded by
      // its options.
      Contains3("#RANGEA", kNoLocal, {T::kRange, T::kFreqList, kNo, kNo}),
      Contains3("#BASERANGEA,", kNoLocal, {T::kBaseRange, T::kFreqbList, kNo, kNo}),
      Contains3("#RTKVELA,", kNoLocal, {T::kRtkVel, kNo, kNo, kNo}),
      Contains3("#PSRVELA,", kNoLocal, {T::kPsrVel, kNo, kNo, kNo}),
      Contains3("#PSRDOPA,", kNoLocal, {T::kPsrDop, kNo, kNo, kNo}),
      Contains3("#RTKDOPA,", kNoLocal, {T::kRtkDop, kNo, kNo, kNo}),
      Contains3("#TIMEA,", 0, {T::kTime, kNo, kNo, kNo}),
      At(3, "RMC,", 3, 0, kNo, {T::kRmc, kNo, kNo, kNo}),
      At(3, "VTG,", 3, 0, kNo, {T::kVtg, kNo, kNo, kNo}),
      Contains3("#BESTVELA,", kNoLocal, {T::kBestVel, kNo, kNo, kNo}),
      At(3, "NTR,", 3, 0, kNo, {T::kNtr, kNo, kNo, kNo}),
      Contains3("#DRPVAA,", 0, {T::kDrpva, kNo, kNo, kNo}),
      Contains3("#PVTSOL", 0, {T::kPvtSol, kNo, kNo, kNo}),
      Contains3("#PPPDOP", 0, {T::kPppDop, kNo, kNo, kNo}),
      Contains3("#PERFSTAT", 0, {T::kPerfstat, T::kPerfstatName, kNo, kNo}),
      // "#ALIGNBSLNEUA" (sic): ALIGNBSLNENUA logs are not dispatched at all.
      Contains3("#ALIGNBSLNEUA", 0, {T::kAlignBslnEnu, kNo, kNo, kNo}),
      Contains3("#BSLNENUHD2A", 0, {T::kAlignBslnEnu, kNo, kNo, kNo}),
      Contains3("#ODOMETER", 0, {T::kOdometer, kNo, kNo, kNo}),
      Contains3("#EVENTALL", 0, {T::kEvent, kNo, kNo, kNo}),
      Contains3("#RAWIMUXA,", 0, {T::kRawImux, kNo, kNo, kNo}),
      Contains3("#RTKPOS2A,", 0, {T::kRtkPos2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kRtkPos2)),
      Contains3("#RTKVEL2A,", 0, {T::kRtkVel2, kNo, kNo, kNo}),
      Contains3("#RTKDOP2A,", 0, {T::kRtkDop2, kNo, kNo, kNo}),
      Contains3("#MATCHEDPOS2A,", 0, {T::kMatch2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kMatchedPos2)),
      Contains3("#BESTGNSSPOSA,", 0, {T::kBestGnss, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kBestGnssPos)),
      Contains3("#INSPVAA,", 0, {T::kInspva, kNo, kNo, kNo}),
      Contains3("#RAWMAGXA,", 0, {T::kRawMagx, kNo, kNo, kNo}),
      Contains3("#RAWIMUA,", 0, {T::kRawImu, kNo, kNo, kNo}),
      Contains3("#BESTPOS1A,", 0, {T::kBestPos1, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kBestPos1)),
      Contains3("#BESTPOS2A,", 0, {T::kBestPos2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kBestPos2)),
      Contains3("#BESTVEL1A,", 0, {T::kBestVel1, kNo, kNo, kNo}),
      Contains3("#BESTVEL2A,", 0, {T::kBestVel2, kNo, kNo, kNo}),
      Contains3("#PSRPOS2A,", 0, {T::kPsrPos2, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kPsrPos2)),
      Contains3("#MPSRPOSA,", 0, {T::kMPsrPos, kNo, kNo, kNo}, RunPosition,
                Log(PositionLog::kMPsrPos)),
      Contains3("#PSRVEL2A,", 0, {T::kPsrVel2, kNo, kNo, kNo}),
      Contains3("#PSRDOP2A,", 0, {T::kPsrDop2, kNo, kNo, kNo}),
      Contains3("#BESTXYZA,", 0, {T::kBestXyz, kNo, kNo, kNo}, RunBestXyz, 0, 0),
      Contains3("#RTKDOPPLERVELA", 0, {T::kRtkDopplerVel, kNo, kNo, kNo}),
      Contains3("#INSPVAXA,", 0, {T::kInspvax, kNo, kNo, kNo}),
      Contains3("#RANGEHA", kNoLocal, {T::kRangeH, T::kFreqhList, kNo, kNo}),
      Contains3("#AGRICA,", 0, {T::kAgric, kNo, kNo, kNo}),
      Contains3("%CANGLEA,", 0, {T::kCangle, kNo, kNo, kNo}),
      Contains3("%FANGLEA,", 0, {T::kFangle, kNo, kNo, kNo}),
      Contains3("%ANGVELA,", 0, {T::kAngVel, kNo, kNo, kNo}),
      Contains3("TIMEDWHEELDATAA", kNoLocal, {T::kTimedWheelData, kNo, kNo, kNo}),
      Contains3("BSLNXYZ", kFine, {T::kBslnXyz, kNo, kNo, kNo}),
      Contains3("#TPINFOA", 0, {T::kTpfInfo, kNo, kNo, kNo}),
      Contains3("#VELDATA", 0, {T::kVelData, kNo, kNo, kNo}),
      Contains3("TSVNUM", 0, {T::kTsvNum, kNo, kNo, kNo}),
      At(3, "RTK,", 4, kNoLocal, kNo, {T::kRtk, kNo, kNo, kNo}),
      At(3, "GNS,", 3, 0, kNo, {T::kGns, kNo, kNo, kNo}),
  };
  for (DispatchRow& row : rows) {
    if (row.tables[0] == T::kMatchBase2) row.goesOn = true;
    if (row.handler) continue;
    // Velocity, DOP and range targets write rows and nothing else.
    struct Family {
      std::span<const TargetBinding> (*bindings)();
      bool quiet;
    };
    for (const Family family :
         {Family{VelocityDopTargets, true}, Family{RangeTargets, true}, Family{NmeaTargets, false},
          Family{InsImuTargets, false}, Family{StatusTargets, false}}) {
      for (const TargetBinding& binding : family.bindings()) {
        if (binding.table != row.tables[0]) continue;
        row.handler = binding.handler;
        row.quietWhenClosed = family.quiet;
      }
    }
  }
  return rows;
}

}  // namespace

const std::vector<DispatchRow>& DispatchRows() {
  static const std::vector<DispatchRow> rows = MakeRows();
  return rows;
}

Dispatcher::Dispatcher() {
  const auto& rows = DispatchRows();
  rowPattern_.resize(rows.size(), -1);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].test != TestKind::kAtCharacter) rowPattern_[i] = patterns_.Add(rows[i].text);
  }
  patterns_.Build();
  int stage = 1;
  stageBegin_[0] = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    while (rows[i].stage > stage)
      stageBegin_[stage++] = static_cast<int>(i);
  }
  while (stage <= 3)
    stageBegin_[stage++] = static_cast<int>(rows.size());
  for (auto& byPattern : rowsByPattern_)
    byPattern.resize(patterns_.Count());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const int s = rows[i].stage - 1;
    if (rowPattern_[i] < 0) {
      positionRows_[s].push_back(static_cast<int>(i));
    } else {
      rowsByPattern_[s][rowPattern_[i]].push_back(static_cast<int>(i));
    }
  }
}

namespace {

// The conditions' texts: searched for when a row first asks, then known.
bool Contains(const PatternHits& hits, const char* sentence, int slot, const char* text) {
  const unsigned bit = 1u << slot;
  if (!(hits.searched & bit)) {
    hits.searched |= bit;
    if (std::strstr(sentence, text)) hits.present |= bit;
  }
  return hits.present & bit;
}

}  // namespace

bool Dispatcher::Holds(const DispatchRow& row, int rowIndex, const char* sentence,
                       std::size_t length, const PatternHits& hits,
                       const ExtractOptions& options) const {
  switch (row.test) {
    case TestKind::kPrefix:
      if (!hits.AtStart(rowPattern_[rowIndex])) return false;
      break;
    case TestKind::kContains:
      if (!hits.Has(rowPattern_[rowIndex])) return false;
      break;
    case TestKind::kAtCharacter: {
      const std::size_t n = std::strlen(row.text);
      if (length < row.position + n || std::memcmp(sentence + row.position, row.text, n) != 0) {
        return false;
      }
      break;
    }
  }
  const unsigned needs = row.needs;
  if ((needs & kNeedFine) && !Contains(hits, sentence, 0, "FINE")) return false;
  if ((needs & kNeedCommaFine) && !Contains(hits, sentence, 1, ",FINE,")) return false;
  if ((needs & kNeedNoCom) && Contains(hits, sentence, 2, ",COM")) return false;
  if ((needs & kNeedCom) && !Contains(hits, sentence, 2, ",COM")) return false;
  if ((needs & kNeedNoLocal) && Contains(hits, sentence, 3, "LOCAL")) return false;
  if (row.option != kNoTable && !options.Wants(row.option)) return false;
  return true;
}

const DispatchRow* Dispatcher::Classify(int stage, const char* sentence, std::size_t length,
                                        const PatternHits& hits,
                                        const ExtractOptions& options) const {
  // The first row in order that holds, looking only at rows whose text the
  // sentence contains and at the fixed-position rows.
  const auto& rows = DispatchRows();
  const auto& byPattern = rowsByPattern_[stage - 1];
  int best = stageBegin_[stage];
  for (std::size_t word = 0; word < hits.found.size(); ++word) {
    for (std::uint64_t bits = hits.found[word]; bits != 0; bits &= bits - 1) {
      const int id = static_cast<int>(word * 64) + __builtin_ctzll(bits);
      for (int row : byPattern[id]) {
        if (row >= best) break;
        if (Holds(rows[row], row, sentence, length, hits, options)) {
          best = row;
          break;
        }
      }
    }
  }
  for (int row : positionRows_[stage - 1]) {
    if (row >= best) break;
    if (Holds(rows[row], row, sentence, length, hits, options)) best = row;
  }
  return best < stageBegin_[stage] ? &rows[best] : nullptr;
}

namespace {

// Stage 2's first step: the newest epoch of RANGEA, PSRPOSA, RTKPOSA and
// BESTPOSA headers, for the matched age.
void UpdateCurrentEpoch(const char* sentence, std::size_t length, ExtractionState& state) {
  if (sentence[0] == '$') return;
  const char* name = sentence + 1;
  if (std::strncmp(name, "RANGEA", 6) != 0 && std::strncmp(name, "PSRPOSA", 7) != 0 &&
      std::strncmp(name, "RTKPOSA", 7) != 0 && std::strncmp(name, "BESTPOSA", 8) != 0) {
    return;
  }
  FindTextTable table;
  if (HeadHasText(sentence, length, "UNKNOWN", table)) return;
  table.Clear();
  if (HeadHasText(sentence, length, "LOCAL", table)) return;
  const char* field = sentence;
  for (int commas = 0; commas < 6; ++commas) {
    field = std::strchr(field, ',');
    if (!field) return;
    ++field;
  }
  double seconds = 0.0;
  if (ReadDouble(field, &seconds) != field) state.currentEpochSeconds = seconds;
}

}  // namespace

void Dispatcher::Dispatch(const char* sentence, std::size_t length, const ExtractOptions& options,
                          ExtractTables& tables, ExtractionState& state,
                          const ExtractSettings& settings) const {
  PatternHits hits;
  patterns_.Match(sentence, length, hits);
  auto run = [&](const DispatchRow& row) {
    if (!row.handler) return;
    if (row.quietWhenClosed) {
      bool anyOpen = false;
      for (TableId id : row.tables)
        anyOpen |= id != kNoTable && tables[id].IsOpen();
      if (!anyOpen) return;
    }
    row.handler({sentence, length, row, options, tables, state, settings});
  };
  if (!settings.realValueMode) {
    if (const DispatchRow* row = Classify(1, sentence, length, hits, options)) {
      run(*row);
      if (!row->goesOn) return;
    }
  }
  UpdateCurrentEpoch(sentence, length, state);
  if (const DispatchRow* row = Classify(2, sentence, length, hits, options)) {
    run(*row);
    return;
  }
  if (settings.realValueMode) return;
  if (const DispatchRow* row = Classify(3, sentence, length, hits, options)) run(*row);
}

}  // namespace tarnlog
