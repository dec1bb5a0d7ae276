// The velocity, DOP and receiver-time extractors. Each velocity and DOP
// extractor has two branches told apart by its mode: 0 reads the native log
// with its long header, 1 the form a combined log gives (the velocity half
// rebuilt by the driver, or a compact-header DOP log).
#pragma once

#include "platform/files.h"

namespace tarnlog {

enum class VelocityLog {
  kBestVel,        // BESTVELA
  kBestVel1,       // BESTVEL1A
  kBestVel2,       // BESTVEL2A
  kPsrVel,         // PSRVELA
  kPsrVel2,        // PSRVEL2A
  kPsrVelBase2,    // PSRVELBASE2A
  kRtkVel,         // RTKVELA
  kRtkVel2,        // RTKVEL2A
  kRtkVelBase2,    // RTKVELBASE2A
  kRtkDopplerVel,  // RTKDOPPLERVELA
};

// `sentence` is NUL-terminated. A log without a combined form writes nothing
// in mode 1; a null table takes nothing.
void ExtractVelocity(VelocityLog log, const char* sentence, OutFile* table, int mode);

// The log a combined half is rebuilt as ("BESTVELA", "PSRVEL2A", ...);
// false for a name that has no combined form.
bool CombinedVelocityLog(const char* name, VelocityLog* log);

enum class DopLog {
  kPsrDop,       // PSRDOPA
  kSppDop,       // SPPDOPA
  kDopHd2,       // DOPHD2A: native body, compact header
  kPsrDop2,      // PSRDOP2A
  kSppDopH,      // SPPDOPHA
  kPsrDopBase2,  // PSRDOPBASE2A
  kRtkDop,       // RTKDOPA
  kAdrDop,       // ADRDOPA
  kRtkDop2,      // RTKDOP2A
  kAdrDopH,      // ADRDOPHA
  kRtkDopBase2,  // RTKDOPBASE2A
  kPppDop,       // PPPDOPA: no satellite counts
  kMPppDop,      // MPPPDOPA
};

void ExtractDop(DopLog log, const char* sentence, OutFile* table, int mode);

// TIMEA, and RECTIMEA once rebuilt as a TIMEA; `origin` is the last column.
// Flushed after each row.
void ExtractTime(const char* sentence, OutFile* table, int origin);

}  // namespace tarnlog
