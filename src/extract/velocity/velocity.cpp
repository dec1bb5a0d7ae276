// The velocity logs as data, and the walk they share: the header, the
// solution status with the velocity type behind it, then the five values
// "%lf,%lf,%lf,%lf,%lf" (latency, age, horizontal speed, track over ground,
// vertical speed).
#include <array>
#include <cstdlib>
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/log_fields.h"
#include "extract/position/position_walk.h"
#include "extract/solution_code.h"
#include "extract/text_search.h"
#include "extract/velocity/velocity_extractors.h"

namespace tarnlog {
namespace {

// What a native row prints behind the track over ground.
enum class NativeRow {
  kRestAndMode,  // ",%s,%d": the rest of the body up to the star, and the mode
  kMode,         // ",%d"
  kPlain,        // nothing
};

enum class CodeRule {
  kStatus,   // 0 for "SOL_COMPUTED", otherwise 100
  kRtkType,  // the same plus the type's number in the RTK family
};

struct VelocityMember {
  VelocityLog log;
  const char* name;  // as a combined half is rebuilt; null without a combined form
  NativeRow native;
  CodeRule code;
  bool needsFine;  // the sentence must contain "FINE" anywhere
};

using L = VelocityLog;
using N = NativeRow;
using C = CodeRule;

// In the order of VelocityLog.
// clang-format off
constexpr std::array<VelocityMember, 10> kMembers{{
  // log               combined name  native row        code          fine
  {L::kBestVel,        "BESTVELA",    N::kRestAndMode,  C::kStatus,   false},
  {L::kBestVel1,       nullptr,       N::kPlain,        C::kStatus,   false},
  {L::kBestVel2,       "BESTVEL2A",   N::kMode,         C::kStatus,   false},
  {L::kPsrVel,         "PSRVELA",     N::kRestAndMode,  C::kStatus,   true},
  {L::kPsrVel2,        "PSRVEL2A",    N::kRestAndMode,  C::kStatus,   false},
  {L::kPsrVelBase2,    nullptr,       N::kRestAndMode,  C::kStatus,   true},
  {L::kRtkVel,         "RTKVELA",     N::kMode,         C::kRtkType,  false},
  {L::kRtkVel2,        "RTKVEL2A",    N::kMode,         C::kRtkType,  false},
  {L::kRtkVelBase2,    nullptr,       N::kMode,         C::kStatus,   true},
  {L::kRtkDopplerVel,  nullptr,       N::kPlain,        C::kStatus,   false},
}};
// clang-format on

constexpr bool MembersInLogOrder() {
  for (std::size_t i = 0; i < kMembers.size(); ++i) {
    if (static_cast<std::size_t>(kMembers[i].log) != i) return false;
  }
  return true;
}
static_assert(MembersInLogOrder(), "kMembers must follow the order of VelocityLog");

// "%[^*]" into a bounded buffer: what stands before the star (or the end).
constexpr std::size_t kRestCapacity = 256;

struct VelocityRecord {
  LongHeader header;
  int code = 0;
  double values[5] = {};  // latency, age, horizontal speed, track, vertical speed
  float extra[2] = {};    // the two further values of a combined half, "%f"
  char rest[kRestCapacity] = {};
};

// The RTK family's type numbers, with "DOPPLER_VELOCITY" as in BESTXYZA.
int RtkVelocityType(const char* type) {
  if (std::strncmp(type, "DOPPLER_VELOCITY", 16) == 0) return MatchVelocityType(type).code;
  return MatchPositionType(PositionFamily::kRtk, type).code;
}

// "%f": as sscanf stores it, read straight into a float.
bool ReadFloat(FieldCursor& cursor, float& out) {
  if (!cursor.ok) return false;
  char* end = nullptr;
  const float value = std::strtof(cursor.at, &end);
  if (end == cursor.at) {
    cursor.ok = false;
    return false;
  }
  out = value;
  cursor.at = end;
  return true;
}

void CopyRest(const char* at, char* rest) {
  std::size_t n = 0;
  while (at[n] != '\0' && at[n] != '*' && n + 1 < kRestCapacity) {
    rest[n] = at[n];
    ++n;
  }
  rest[n] = '\0';
}

// False when a field the row needs can't be read.
bool ReadVelocity(const VelocityMember& member, const char* s, int mode, VelocityRecord* r) {
  if (!ReadLongHeader(s, &r->header)) return false;
  FindTextTable table;
  table.Clear();
  const int body = FindText(s, ";", 0, table);
  if (body == 0) return false;
  int type = 0;
  int statusCode = 0;
  if (!LocateType(s, body, &type, &statusCode, table)) return false;
  r->code = statusCode;
  if (member.code == CodeRule::kRtkType) r->code += RtkVelocityType(s + type);

  // The type is stepped over by walking to the comma behind it.
  const int step = FindText(s, ",", type, table);
  if (step == 0) return false;
  FieldCursor cursor(s + type + step);
  cursor.Double(r->values[0]);
  for (int i = 1; i < 5; ++i)
    cursor.Comma().Double(r->values[i]);
  if (!cursor.ok) return false;
  if (mode != 0) {
    // Read as far as they go; a missing one stays 0.
    cursor.Comma();
    ReadFloat(cursor, r->extra[0]);
    cursor.Comma();
    ReadFloat(cursor, r->extra[1]);
    return true;
  }
  if (member.native == NativeRow::kRestAndMode && cursor.Comma().ok) CopyRest(cursor.at, r->rest);
  return true;
}

void WriteRow(const VelocityMember& member, const VelocityRecord& r, OutFile* out, int mode) {
  const double* v = r.values;
  if (mode != 0) {
    // The second further value has no column.
    out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.4f,%.4f,%.4f,%d\n", r.header.week, r.header.seconds,
                r.code, v[0], v[1], v[2], v[3], v[4], static_cast<double>(r.extra[0]), mode);
    return;
  }
  switch (member.native) {
    case NativeRow::kRestAndMode:
      out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.4f,%s,%d\n", r.header.week, r.header.seconds, r.code,
                  v[0], v[1], v[2], v[3], r.rest, mode);
      break;
    case NativeRow::kMode:
      out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.4f,%d\n", r.header.week, r.header.seconds, r.code,
                  v[0], v[1], v[2], v[3], mode);
      break;
    case NativeRow::kPlain:
      out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.4f\n", r.header.week, r.header.seconds, r.code, v[0],
                  v[1], v[2], v[3]);
      break;
  }
}

}  // namespace

void ExtractVelocity(VelocityLog log, const char* sentence, OutFile* table, int mode) {
  const auto index = static_cast<std::size_t>(log);
  if (sentence == nullptr || table == nullptr || index >= kMembers.size()) return;
  const VelocityMember& member = kMembers[index];
  if (mode != 0 && member.name == nullptr) return;
  if (member.needsFine && std::strstr(sentence, "FINE") == nullptr) return;
  VelocityRecord r;
  if (ReadVelocity(member, sentence, mode, &r)) WriteRow(member, r, table, mode);
}

bool CombinedVelocityLog(const char* name, VelocityLog* log) {
  if (name == nullptr) return false;
  for (const VelocityMember& member : kMembers) {
    if (member.name != nullptr && std::strcmp(member.name, name) == 0) {
      *log = member.log;
      return true;
    }
  }
  return false;
}

}  // namespace tarnlog
