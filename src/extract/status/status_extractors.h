// The status and housekeeping extractors, one per log (or per group of logs
// that share a row), as the dispatch chain calls them.
#pragma once

#include "extract/dispatch.h"

namespace tarnlog {

// housekeeping_logs.cpp: one read and one row each.
void ExtractHwStatus(const DispatchContext& c);
void ExtractEnvInfo(const DispatchContext& c);
void ExtractRxStatus(const DispatchContext& c);
void ExtractSlantAp(const DispatchContext& c);
void ExtractFreqJamStatus(const DispatchContext& c);
void ExtractMowStatus(const DispatchContext& c);
void ExtractTropInfo(const DispatchContext& c);
void ExtractBase2Bias(const DispatchContext& c);
void ExtractSppNavEnu(const DispatchContext& c);
void ExtractVelData(const DispatchContext& c);
void ExtractOdometer(const DispatchContext& c);
void ExtractTpInfo(const DispatchContext& c);
void ExtractTsvNum(const DispatchContext& c);
void ExtractBaseInfo(const DispatchContext& c);

// baseline_logs.cpp
void ExtractAlignBaseline(const DispatchContext& c);  // ALIGNBSLNENUA, BSLNENUHD2A
void ExtractBaselineXyz(const DispatchContext& c);    // BSLNXYZA, BSLNXYZHD2A
void ExtractAgric(const DispatchContext& c);

// The logs with logic of their own.
void ExtractPerfstat(const DispatchContext& c);     // perfstat.cpp
void ExtractPpsStatus(const DispatchContext& c);    // pps_status.cpp
void ExtractSlantStatus(const DispatchContext& c);  // slant_status.cpp
void ExtractEventAll(const DispatchContext& c);     // event_all.cpp
void ExtractCarAngle(const DispatchContext& c);     // angle_logs.cpp: CANGLEA, FANGLEA, ANGVELA
void ExtractClockData(const DispatchContext& c);    // clock_data.cpp

}  // namespace tarnlog
