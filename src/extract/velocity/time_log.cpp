// TIMEA: the receiver clock model and the UTC time of an epoch. The body
// is "clock status,offset,offset deviation,UTC offset,year,month,day,hour,
// minute,milliseconds,UTC status", read one field at a time: a field that
// is missing or can't be read stays 0, and the row is written all the same.
#include <cstdlib>
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/log_fields.h"
#include "extract/velocity/velocity_extractors.h"

namespace tarnlog {
namespace {

// The status words by their number in the receiver's enumerations.
constexpr const char* kClockStatus[] = {"VALID", "CONVERGING", "ITERATING", "INVALID", "ERROR"};
constexpr const char* kUtcStatus[] = {"INVALID", "VALID", "WARNING"};

// The field's word by its position in `words`, or -1 when it is none of them.
template <std::size_t N>
int StatusNumber(const char* field, const char* const (&words)[N]) {
  std::size_t length = 0;
  while (field[length] != '\0' && field[length] != ',' && field[length] != '*' &&
         field[length] != '\r' && field[length] != '\n') {
    ++length;
  }
  for (std::size_t i = 0; i < N; ++i) {
    if (std::strlen(words[i]) == length && std::strncmp(field, words[i], length) == 0) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

// Steps from field to field; null once the commas have run out.
struct FieldWalk {
  const char* at;

  const char* Next() {
    const char* field = at;
    if (at != nullptr) {
      const char* comma = std::strchr(at, ',');
      at = comma == nullptr ? nullptr : comma + 1;
    }
    return field;
  }
  double NextDouble() {
    double value = 0.0;
    if (const char* field = Next()) FieldCursor(field).Double(value);
    return value;
  }
  int NextInt() {
    int value = 0;
    if (const char* field = Next()) FieldCursor(field).Decimal(value);
    return value;
  }
};

}  // namespace

void ExtractTime(const char* sentence, OutFile* table, int origin) {
  if (sentence == nullptr || table == nullptr) return;
  LongHeader header;
  if (!ReadLongHeader(sentence, &header)) return;
  const char* body = std::strchr(sentence, ';');
  if (body == nullptr) return;

  FieldWalk walk{body + 1};
  const char* clockField = walk.Next();
  const int clockStatus = StatusNumber(clockField, kClockStatus);
  const double offset = walk.NextDouble();
  const double offsetDeviation = walk.NextDouble();
  const double utcOffset = walk.NextDouble();
  const int year = walk.NextInt();
  const int month = walk.NextInt();
  const int day = walk.NextInt();
  const int hour = walk.NextInt();
  const int minute = walk.NextInt();
  const int milliseconds = walk.NextInt();
  const char* utcField = walk.Next();
  const int utcStatus = utcField == nullptr ? -1 : StatusNumber(utcField, kUtcStatus);

  table->Printf("%i,%10.3f,%i,%18.9e,%18.9e,%18.9e,%i,%2i,%2i,%2i,%2i,%5i,%i,%d\n", header.week,
                header.seconds, clockStatus, offset, offsetDeviation, utcOffset, year, month, day,
                hour, minute, milliseconds, utcStatus, origin);
  table->Flush();
}

}  // namespace tarnlog
