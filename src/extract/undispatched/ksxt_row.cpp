// The $KSXT heading sentence.
#include <cstdlib>
#include <cstring>

#include "extract/read_number.h"
#include "extract/text_search.h"
#include "extract/undispatched/undispatched_formats.h"

namespace tarnlog {
namespace {

constexpr int kKsxtFields = 19;
constexpr std::size_t kFieldBuffer = 32;

// Fields behind "$KSXT," up to the star or the line end, each copied into
// a short buffer. False when there are fewer than 19, or one is too long
// or not numeric.
bool SplitFields(const char* at, char (&fields)[kKsxtFields][kFieldBuffer]) {
  for (int f = 0; f < kKsxtFields; ++f) {
    std::size_t n = 0;
    while (*at != '\0' && *at != ',' && *at != '*' && *at != '\r' && *at != '\n') {
      if (n + 1 >= kFieldBuffer) return false;
      fields[f][n++] = *at++;
    }
    fields[f][n] = '\0';
    if (IsNumericText(fields[f]) != 0) return false;
    if (f + 1 < kKsxtFields) {
      if (*at != ',') return false;
      ++at;
    }
  }
  return true;
}

double Number(const char* field) {
  double value = 0.0;
  ReadDouble(field, &value);
  return value;
}

int Integer(const char* field) {
  return static_cast<int>(std::strtol(field, nullptr, 10));
}

// "YYYYMMDDhhmmss.ss": seconds of the day; false when shorter than that or
// the hours and minutes aren't digits.
bool SecondsOfDay(const char* time, double* seconds) {
  if (std::strlen(time) < 14) return false;
  for (int i = 8; i < 12; ++i) {
    if (time[i] < '0' || time[i] > '9') return false;
  }
  const int hours = (time[8] - '0') * 10 + (time[9] - '0');
  const int minutes = (time[10] - '0') * 10 + (time[11] - '0');
  *seconds = hours * 3600.0 + minutes * 60.0 + Number(time + 12);
  return true;
}

}  // namespace

bool WriteKsxtRow(const char* sentence, OutFile& out) {
  if (sentence == nullptr || std::strncmp(sentence, "$KSXT,", 6) != 0) return false;
  char f[kKsxtFields][kFieldBuffer];
  double seconds = 0.0;
  if (!SplitFields(sentence + 6, f) || !SecondsOfDay(f[0], &seconds)) return false;
  out.Printf(
      "%.3f,%.11f,%.11f,%.4lf,%.2f,%.2f,%.3lf,%.3lf,%.2f,%d,%d,%d,%d,%.4lf,%.4lf,%.4lf,%.2lf,%."
      "2lf,%.2lf\n",
      seconds, Number(f[2]), Number(f[1]), Number(f[3]), Number(f[4]), Number(f[5]), Number(f[6]),
      Number(f[7]), Number(f[8]), Integer(f[9]), Integer(f[10]), Integer(f[11]), Integer(f[12]),
      Number(f[13]), Number(f[14]), Number(f[15]), Number(f[16]), Number(f[17]), Number(f[18]));
  return true;
}

}  // namespace tarnlog
