// The chain rows of the velocity, DOP and time tables. A row's origin (its
// param) is the extractor's mode.
#include <array>

#include "extract/normalise.h"
#include "extract/targets.h"
#include "extract/velocity/velocity_extractors.h"

namespace tarnlog {
namespace {

struct VelocityTable {
  TableId table;
  VelocityLog log;
};
constexpr std::array<VelocityTable, 10> kVelocityTables{{
    {TableId::kBestVel, VelocityLog::kBestVel},
    {TableId::kBestVel1, VelocityLog::kBestVel1},
    {TableId::kBestVel2, VelocityLog::kBestVel2},
    {TableId::kPsrVel, VelocityLog::kPsrVel},
    {TableId::kPsrVel2, VelocityLog::kPsrVel2},
    {TableId::kPsrVelBase2, VelocityLog::kPsrVelBase2},
    {TableId::kRtkVel, VelocityLog::kRtkVel},
    {TableId::kRtkVel2, VelocityLog::kRtkVel2},
    {TableId::kRtkVelBase2, VelocityLog::kRtkVelBase2},
    {TableId::kRtkDopplerVel, VelocityLog::kRtkDopplerVel},
}};

struct DopTable {
  TableId table;
  DopLog log;
};
constexpr std::array<DopTable, 13> kDopTables{{
    {TableId::kPsrDop, DopLog::kPsrDop},
    {TableId::kSppDop, DopLog::kSppDop},
    {TableId::kDopHd2, DopLog::kDopHd2},
    {TableId::kPsrDop2, DopLog::kPsrDop2},
    {TableId::kSppDopH, DopLog::kSppDopH},
    {TableId::kPsrDopBase2, DopLog::kPsrDopBase2},
    {TableId::kRtkDop, DopLog::kRtkDop},
    {TableId::kAdrDop, DopLog::kAdrDop},
    {TableId::kRtkDop2, DopLog::kRtkDop2},
    {TableId::kAdrDopH, DopLog::kAdrDopH},
    {TableId::kRtkDopBase2, DopLog::kRtkDopBase2},
    {TableId::kPppDop, DopLog::kPppDop},
    {TableId::kMPppDop, DopLog::kMPppDop},
}};

void RunVelocity(const DispatchContext& c) {
  for (const VelocityTable& entry : kVelocityTables) {
    if (entry.table == c.row.tables[0]) {
      ExtractVelocity(entry.log, c.sentence, c.Table(0), c.row.param);
      return;
    }
  }
}

void RunDop(const DispatchContext& c) {
  for (const DopTable& entry : kDopTables) {
    if (entry.table == c.row.tables[0]) {
      ExtractDop(entry.log, c.sentence, c.Table(0), c.row.param);
      return;
    }
  }
}

void RunTime(const DispatchContext& c) {
  ExtractTime(c.sentence, c.Table(0), c.row.param);
}

// RECTIMEA: its body behind a rebuilt TIMEA header.
void RunReceiverTime(const DispatchContext& c) {
  NormalisedSentence time;
  if (!NormaliseSingle(c.sentence, "TIMEA", &time)) return;
  ExtractTime(time.text, c.Table(0), c.row.param);
}

constexpr std::array<TargetBinding, kVelocityTables.size() + kDopTables.size() + 2> MakeBindings() {
  std::array<TargetBinding, kVelocityTables.size() + kDopTables.size() + 2> bindings{};
  std::size_t n = 0;
  for (const VelocityTable& entry : kVelocityTables)
    bindings[n++] = {entry.table, RunVelocity};
  for (const DopTable& entry : kDopTables)
    bindings[n++] = {entry.table, RunDop};
  bindings[n++] = {TableId::kTime, RunTime};
  bindings[n++] = {TableId::kNTime, RunReceiverTime};
  return bindings;
}

constexpr auto kBindings = MakeBindings();

}  // namespace

std::span<const TargetBinding> VelocityDopTargets() {
  return kBindings;
}

void ExtractCombinedVelocity(const char* velocityName, const NormalisedSentence& velocity,
                             OutFile* table, ExtractionState&) {
  VelocityLog log;
  if (CombinedVelocityLog(velocityName, &log)) ExtractVelocity(log, velocity.text, table, 1);
}

}  // namespace tarnlog
