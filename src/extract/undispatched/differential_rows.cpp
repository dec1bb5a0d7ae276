// RTKVELDA, TDIFVELA, TDIFPOSA and PDPPOSA rows.
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/position/position_walk.h"
#include "extract/solution_code.h"
#include "extract/undispatched/long_log.h"
#include "extract/undispatched/undispatched_formats.h"

namespace tarnlog {
namespace {

// The field behind the next comma, or null.
const char* NextField(const char* at) {
  const char* comma = std::strchr(at, ',');
  return comma == nullptr ? nullptr : comma + 1;
}

bool WriteVelocityRow(const char* sentence, const char* name, OutFile& out) {
  LongLog log;
  if (!OpenLongLog(sentence, name, &log)) return false;
  const char* type = NextField(log.body);
  const char* values = type == nullptr ? nullptr : NextField(type);
  if (values == nullptr) return false;
  const int code =
      (std::strncmp(log.body, "SOL_COMPUTED,", 13) == 0 ? 0 : 100) + MatchVelocityType(type).code;
  double latency = 0.0, age = 0.0, speed = 0.0, track = 0.0;
  FieldCursor c(values);
  if (!c.Double(latency).Comma().Double(age).Comma().Double(speed).Comma().Double(track).ok) {
    return false;
  }
  out.Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.4f\n", log.header.week, log.header.seconds, code, latency,
             age, speed, track);
  return true;
}

constexpr WalkRules DifferentialPosWalk(const char* name) {
  return {name,
          PositionFamily::kPsr,
          StatusRule::kSolutionComputed,
          SigmaLead::kNextComma,
          StationRead::kQuotedOrPlain,
          TailRead::kReservedAndExtStatus,
          0,
          false,
          false,
          false};
}

}  // namespace

bool WriteRtkVelDRow(const char* sentence, OutFile& out) {
  return WriteVelocityRow(sentence, "RTKVELDA", out);
}

bool WriteTdifVelRow(const char* sentence, OutFile& out) {
  return WriteVelocityRow(sentence, "TDIFVELA", out);
}

bool WriteTdifPosRow(const char* sentence, OutFile& out) {
  if (sentence == nullptr) return false;
  const std::size_t length = std::strlen(sentence);
  PositionRecord r;
  bool walked = false;
  for (const char* name : {"TDIFPOSA,", "PDPPOSA,"}) {
    if (HasLogName(sentence, name)) {
      walked = WalkPositionSentence(DifferentialPosWalk(name), sentence, length, &r) ==
               WalkEnd::kComplete;
    }
  }
  if (!walked) return false;
  out.Printf("%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i\n",
             r.header.week, r.header.seconds, r.code, r.latitude, r.longitude,
             r.EllipsoidalHeight(), r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0],
             r.satellites[1], r.satellites[2], r.satellites[3], r.differentialAge, r.solutionAge,
             r.tail[1], static_cast<int>(r.hex.last));
  return true;
}

}  // namespace tarnlog
