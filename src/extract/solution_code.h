// The numeric position type of a row: the type's number in its family of
// logs, plus 100 when the solution status isn't "SOL_COMPUTED". The numbers
// differ between families and the pipelines select on them.
#pragma once

namespace tarnlog {

enum class PositionFamily {
  kBestPos,      // BESTPOSA, BESTPOS1A, BESTPOS2A, BESTPOSBASE2A
  kBestGnssPos,  // BESTGNSSPOSA
  kBestXyz,      // BESTXYZA
  kRtk,          // RTKPOSA, RTKPOS2A, RTKPOSBASE2A and the MATCHEDPOS logs
  kPsr,          // PSRPOSA, PSRPOS2A, MPSRPOSA, PSRPOSBASE2A
  kPpp,          // PPPPOSA, MPPPPOSA
};

struct PositionTypeMatch {
  int code = 0;  // 0: the family doesn't list the type
  int skip = 5;  // characters to step over: the matched word with its comma,
                 // or 5 ("NONE,") for an unlisted type
};

// Tests the position type at `text` in the family's order.
PositionTypeMatch MatchPositionType(PositionFamily family, const char* text);

// The velocity block of BESTXYZA: "DOPPLER_VELOCITY" is 17, as are the
// other types by the BESTXYZA position table.
PositionTypeMatch MatchVelocityType(const char* text);

}  // namespace tarnlog
