// The chain rows of the NMEA tables.
#include "extract/nmea/nmea_extractors.h"
#include "extract/targets.h"

namespace tarnlog {
namespace {

void RunGga(const DispatchContext& c) {
  ExtractGga(GgaKind::kGga, c.sentence, c.Table(0), c.state);
}
void RunGgaH(const DispatchContext& c) {
  ExtractGga(GgaKind::kGgaH, c.sentence, c.Table(0), c.state);
}
void RunGgaBase2(const DispatchContext& c) {
  ExtractGga(GgaKind::kGgaBase2, c.sentence, c.Table(0), c.state);
}
void RunGns(const DispatchContext& c) {
  ExtractGns(c.sentence, c.Table(0), c.state.nmea);
}
void RunGst(const DispatchContext& c) {
  ExtractGst(c.sentence, c.Table(0), c.state.nmea);
}
void RunGbs(const DispatchContext& c) {
  ExtractGbs(c.sentence, c.Table(0), c.state.nmea);
}
void RunRmc(const DispatchContext& c) {
  ExtractRmc(c.sentence, c.Table(0), c.state.nmea);
}
void RunVtg(const DispatchContext& c) {
  ExtractVtg(c.sentence, c.Table(0), c.state.nmea);
}
void RunNtr(const DispatchContext& c) {
  ExtractNtr(c.sentence, c.Table(0), c.state.nmea);
}
void RunRtk(const DispatchContext& c) {
  ExtractRtk(c.sentence, c.Table(0), c.state.nmea);
}

constexpr TargetBinding kBindings[] = {
    {TableId::kGga, RunGga}, {TableId::kGngGah, RunGgaH}, {TableId::kGgaBase2, RunGgaBase2},
    {TableId::kGns, RunGns}, {TableId::kGst, RunGst},     {TableId::kGbs, RunGbs},
    {TableId::kRmc, RunRmc}, {TableId::kVtg, RunVtg},     {TableId::kNtr, RunNtr},
    {TableId::kRtk, RunRtk},
};

}  // namespace

std::span<const TargetBinding> NmeaTargets() {
  return kBindings;
}

}  // namespace tarnlog
