// The INS position, velocity and attitude logs: INSPVAA, INSPVAXA and the
// dead-reckoning DRPVAA.
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "extract/ins/ins_extractors.h"
#include "extract/log_fields.h"
#include "extract/solution_code.h"
#include "extract/status/log_scan.h"

namespace tarnlog {
namespace {

struct InsState {
  const char* word;
  std::size_t shortLength;  // what INSPVAA compares
};

// In the order of their numbers.
constexpr InsState kInsStates[] = {
    {"INS_INACTIVE", 12},           {"INS_ALIGNING", 12},          {"INS_HIGH_VARIANCE", 12},
    {"INS_SOLUTION_GOOD", 7},       {"INS_SOLUTION_FREE", 8},      {"INS_ALIGNMENT_COMPLETE", 6},
    {"DETERMINING_ORIENTATION", 6}, {"GSP_WAITING_INITIALPOS", 4},
};

// DRPVAA behind the solution status and the position type: nineteen values
// that the row takes in their order.
constexpr int kDrValues = 19;
constexpr int kDrFields = 2 + kDrValues;

}  // namespace

int InsStatusNumber(const char* text, std::size_t length, bool shortened) {
  const TextSpan span{text, length};
  for (int n = 0; n < static_cast<int>(std::size(kInsStates)); ++n) {
    const InsState& state = kInsStates[n];
    if (span.MatchesOver(state.word, shortened ? state.shortLength : std::strlen(state.word))) {
      return n;
    }
  }
  return -1;
}

void ExtractInsPva(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  // Week, seconds, latitude, longitude, height, north, east and up
  // velocity, roll, pitch, azimuth, and the status up to the star.
  int week = 0;
  double v[10] = {};
  TextSpan status;
  FieldCursor r(body);
  r.Decimal(week);
  for (double& value : v)
    r.Comma().Double(value);
  Span(r.Comma(), '*', status);
  if (!r.ok) return;
  out->Printf("%i,%.3lf,%i,%.3lf,%i,%.11lf,%.11lf,%.4lf,%.4lf,%.4lf,%.4lf,%.6lf,%.6lf,%.6lf\n",
              header.week, header.seconds, week, v[0],
              InsStatusNumber(status.begin, status.length, true), v[1], v[2], v[3], v[4], v[5],
              v[6], v[7], v[8], v[9]);
}

void ExtractInsPvax(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  // INS status, position type, latitude, longitude, height, undulation,
  // three velocities, three angles, three position deviations, seven fields
  // passed over, and the seconds since the last update.
  TextSpan status;
  TextSpan type;
  double v[10] = {};
  float sigmas[3] = {};
  int sinceUpdate = 0;
  FieldCursor r(body);
  Span(r, ',', status).Comma();
  Span(r, ',', type);
  for (double& value : v)
    r.Comma().Double(value);
  for (float& sigma : sigmas)
    Float(r.Comma(), sigma);
  SkipFields(r.Comma(), 7).Decimal(sinceUpdate);
  if (!r.ok) return;
  const int code = MatchPositionType(PositionFamily::kBestPos, type.begin).code;
  out->Printf(
      "%i,%.3lf,%i,%i,%.11lf,%.11lf,%.4lf,%.4lf,%.4lf,%.4lf,%.6lf,%.6lf,%.6lf,%d,%.4f,%.4f,%.4f\n",
      header.week, header.seconds, InsStatusNumber(status.begin, status.length, false), code, v[0],
      v[1], v[2] + v[3], v[4], v[5], v[6], v[7], v[8], v[9], sinceUpdate,
      static_cast<double>(sigmas[0]), static_cast<double>(sigmas[1]),
      static_cast<double>(sigmas[2]));
}

// Split at commas; each value is taken as atof and atoi take it, so an
// unreadable one is 0, but a sentence with too few fields leaves no row.
void ExtractDrPva(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  const char* fields[kDrFields];
  int count = 0;
  for (const char* at = body; count < kDrFields;) {
    fields[count++] = at;
    at = std::strchr(at, ',');
    if (at == nullptr) break;
    ++at;
  }
  if (count < kDrFields) return;
  const bool computed = std::strncmp(fields[0], "SOL_COMPUTED", 12) == 0;
  const int code =
      MatchPositionType(PositionFamily::kBestPos, fields[1]).code + (computed ? 0 : 100);
  double v[kDrValues];
  for (int n = 0; n < kDrValues; ++n)
    v[n] = std::atof(fields[2 + n]);
  out->Printf(
      "%i,%.3f,%i,%.11f,%.11f,%.4f,%.6f,%.6f,%.11f,%.11f,%.11f,%.11f,%.11f,%.11f,%.4f,%.4f,%.4f,%i,"
      "%."
      "2f,%.7f,%.7f,%.7f\n",
      header.week, header.seconds, code, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9],
      v[10], v[11], v[12], v[13], std::atoi(fields[2 + 14]), v[15], v[16], v[17], v[18]);
}

}  // namespace tarnlog
