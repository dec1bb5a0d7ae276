// BESTXYZA: the position block and the velocity block, each with its own
// status and type, in earth-centred coordinates.
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/position/position_extractors.h"
#include "extract/position/position_walk.h"

namespace tarnlog {
namespace {

// X, Y, Z and their three deviations stand between the position type and
// the velocity block's status.
constexpr int kPositionBlockFields = 6;

// Status and type at `status`: the block's code, and the index of the first
// number behind the type. False when the type or its numbers can't be found.
bool ReadBlockCode(const char* s, int status, bool velocity, int* code, int* numbers,
                   FindTextTable& table) {
  int type = 0;
  int statusCode = 0;
  if (!LocateType(s, status, &type, &statusCode, table)) return false;
  const PositionTypeMatch match = velocity ? MatchVelocityType(s + type)
                                           : MatchPositionType(PositionFamily::kBestXyz, s + type);
  if (!HasChars(s, type, match.skip)) return false;
  *code = statusCode + match.code;
  *numbers = type + match.skip;
  return true;
}

bool ReadTriple(const char* at, double (&values)[3]) {
  FieldCursor cursor(at);
  cursor.Double(values[0]).Comma().Double(values[1]).Comma().Double(values[2]);
  return cursor.ok;
}

}  // namespace

void ExtractBestXyz(const char* s, std::size_t length, OutFile* table, int mode) {
  if (s == nullptr || length == 0 || !HasLogName(s, "BESTXYZA")) return;
  FindTextTable find;
  find.Clear();
  if (HeadHasUnknown(s, length, find)) return;
  LongHeader header;
  if (!ReadLongHeader(s, &header)) return;
  const int body = FindText(s, ";", 0, find);
  if (body == 0) return;

  int positionCode = 0;
  int position = 0;
  double xyz[3] = {0.0, 0.0, 0.0};
  if (!ReadBlockCode(s, body, false, &positionCode, &position, find)) return;
  if (!ReadTriple(s + position, xyz) || positionCode == 0) return;

  const int velocityStatus = SkipCommas(s, position, kPositionBlockFields, find);
  int velocityCode = 0;
  int velocity = 0;
  double speeds[3] = {0.0, 0.0, 0.0};
  if (velocityStatus < 0 ||
      !ReadBlockCode(s, velocityStatus, true, &velocityCode, &velocity, find)) {
    return;
  }
  if (!ReadTriple(s + velocity, speeds)) return;

  if (table == nullptr) return;
  table->Printf("%i,%.3f,%i,%.4lf,%.4lf,%.4lf,%i,%.4lf,%.4lf,%.4lf,%d\n", header.week,
                header.seconds, positionCode, xyz[0], xyz[1], xyz[2], velocityCode, speeds[0],
                speeds[1], speeds[2], mode);
}

}  // namespace tarnlog
