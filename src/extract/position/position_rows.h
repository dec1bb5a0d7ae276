// The row formats of the position tables and the side effects that belong
// to single logs, one family per file.
#pragma once

#include "extract/extraction_state.h"
#include "extract/position/position_walk.h"
#include "platform/files.h"

namespace tarnlog {

// best_pos.cpp
void WriteBestPosRow(OutFile* out, const PositionRecord& r);
void WriteBestGnssPosRow(OutFile* out, const PositionRecord& r);
void StoreLastBestPos(const PositionRecord& r, LastBestPosition& store);
// "%.3f, %.3f, %.3f\n": seconds, easting, northing (BstPosXY.txt, RtkPosXY.txt).
void WriteGridRow(OutFile* out, const PositionRecord& r);

// rtk_pos.cpp. `extendedColumns` adds the reserved field and the extended
// status again as columns 20 and 21 (RTKPOSA).
void WriteRtkPosRow(OutFile* out, const PositionRecord& r, bool extendedColumns);
// RTKPOSA's run statistics, for every sentence the walk got a header from.
void NoteRtkEpoch(WalkEnd end, const PositionRecord& r, int lastTtffCode,
                  RtkRunStatistics& statistics);
// ttff.txt: a row and a new last code whenever the code changes and the
// stream is open.
void NoteTtff(OutFile* ttff, const PositionRecord& r, int& lastTtffCode);

// matched_pos.cpp
void WriteMatchedPosRow(OutFile* out, const PositionRecord& r, double currentEpochSeconds);
// Seconds since the current epoch, folded into +-half a week.
double MatchedAge(double seconds, double currentEpochSeconds);

// psr_pos.cpp
void WritePsrPosRow(OutFile* out, const PositionRecord& r, int origin);
void WritePppPosRow(OutFile* out, const PositionRecord& r, int origin);

}  // namespace tarnlog
