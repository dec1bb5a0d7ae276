// The NMEA extractors: one row per usable sentence, with the seconds column
// running on across midnight by the day cells in NmeaState.
#pragma once

#include "extract/extraction_state.h"
#include "platform/files.h"

namespace tarnlog {

// The sentences that share the GGA layout and row.
enum class GgaKind {
  kGga,       // $--GGA: its own day cells, the GGA tallies and sums, VTG's seconds
  kGgaH,      // $--GGAH
  kGgaBase2,  // $--GGABASE2
};

// `sentence` is NUL-terminated; a null table takes nothing but the state
// still moves.
void ExtractGga(GgaKind kind, const char* sentence, OutFile* table, ExtractionState& state);
void ExtractGns(const char* sentence, OutFile* table, NmeaState& state);
void ExtractRmc(const char* sentence, OutFile* table, NmeaState& state);
void ExtractVtg(const char* sentence, OutFile* table, const NmeaState& state);
void ExtractGst(const char* sentence, OutFile* table, NmeaState& state);
void ExtractGbs(const char* sentence, OutFile* table, NmeaState& state);
void ExtractNtr(const char* sentence, OutFile* table, NmeaState& state);
void ExtractRtk(const char* sentence, OutFile* table, NmeaState& state);

}  // namespace tarnlog
