// The DOP logs as data. A native log carries five values (GDOP, PDOP, HDOP,
// HTDOP, TDOP) behind the ';' and its satellite list six fields on; the
// compact form skips one field, carries seven values, and its list stands
// ten fields on. The list is counted by satellite system.
#include <array>
#include <climits>
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/log_fields.h"
#include "extract/velocity/velocity_extractors.h"

namespace tarnlog {
namespace {

enum class DopForm {
  kNative,             // long header, five values, satellite counts
  kCombined,           // compact header, seven values, satellite counts
  kNativeCompactTime,  // compact header, five values, satellite counts
  kPppNative,          // long header, five values, no counts; needs "COM"
  kPppCompact,         // compact header, seven values, no counts
};

struct DopMember {
  DopLog log;
  DopForm native;    // mode 0
  DopForm combined;  // mode 1
  bool needsFine;    // the sentence must contain "FINE" anywhere
  bool flushEachRow;
};

using L = DopLog;
using F = DopForm;

// In the order of DopLog.
// clang-format off
constexpr std::array<DopMember, 13> kMembers{{
  // log              native                  combined                fine   flush
  {L::kPsrDop,        F::kNative,             F::kCombined,           true,  false},
  {L::kSppDop,        F::kNative,             F::kCombined,           false, false},
  {L::kDopHd2,        F::kNativeCompactTime,  F::kNativeCompactTime,  true,  false},
  {L::kPsrDop2,       F::kNative,             F::kCombined,           false, false},
  {L::kSppDopH,       F::kNative,             F::kCombined,           false, false},
  {L::kPsrDopBase2,   F::kNative,             F::kCombined,           true,  true},
  {L::kRtkDop,        F::kNative,             F::kCombined,           true,  false},
  {L::kAdrDop,        F::kNative,             F::kCombined,           false, false},
  {L::kRtkDop2,       F::kNative,             F::kCombined,           false, false},
  {L::kAdrDopH,       F::kNative,             F::kCombined,           false, true},
  {L::kRtkDopBase2,   F::kNative,             F::kCombined,           true,  true},
  {L::kPppDop,        F::kPppNative,          F::kPppCompact,         false, false},
  {L::kMPppDop,       F::kPppNative,          F::kPppCompact,         false, false},
}};
// clang-format on

constexpr bool MembersInLogOrder() {
  for (std::size_t i = 0; i < kMembers.size(); ++i) {
    if (static_cast<std::size_t>(kMembers[i].log) != i) return false;
  }
  return true;
}
static_assert(MembersInLogOrder(), "kMembers must follow the order of DopLog");

bool HasLongHeader(DopForm form) {
  return form == DopForm::kNative || form == DopForm::kPppNative;
}
int ValueCount(DopForm form) {
  return form == DopForm::kCombined || form == DopForm::kPppCompact ? 7 : 5;
}
bool CountsSatellites(DopForm form) {
  return form != DopForm::kPppNative && form != DopForm::kPppCompact;
}

// Satellites by system; a number falls in the first class that holds it,
// and 67 to 74, 111 to 160 and from 224 on fall in none.
struct SatelliteCounts {
  int gps = 0;
  int glonass = 0;
  int galileo = 0;
  int bds = 0;
  int sbas = 0;

  void Add(int prn, int times) {
    int* slot = nullptr;
    if (prn >= 1 && prn <= 32) {
      slot = &gps;
    } else if (prn >= 33 && prn <= 42) {
      slot = &sbas;
    } else if (prn >= 43 && prn <= 66) {
      slot = &glonass;
    } else if (prn >= 75 && prn <= 110) {
      slot = &galileo;
    } else if (prn >= 161 && prn <= 223) {
      slot = &bds;
    }
    if (slot == nullptr) return;
    *slot = times > INT_MAX - *slot ? INT_MAX : *slot + times;
  }
};

// The count at `at`, then that many numbers, each read behind the next
// comma. Where the commas run out the walk stays put: every read left
// reads the same text (or fails and keeps the number before), so the last
// number counts once for each of them.
void CountSatellites(const char* at, SatelliteCounts* counts) {
  int count = 0;
  FieldCursor(at).Decimal(count);
  int prn = 0;
  for (int i = 0; i < count; ++i) {
    const char* comma = std::strchr(at, ',');
    if (comma == nullptr) {
      FieldCursor(at).Decimal(prn);
      counts->Add(prn, count - i);
      return;
    }
    at = comma + 1;
    FieldCursor(at).Decimal(prn);
    counts->Add(prn, 1);
  }
}

struct DopRecord {
  int week = 0;
  double seconds = 0.0;
  double values[7] = {};
  SatelliteCounts counts;
};

bool ReadDop(DopForm form, const char* s, DopRecord* r) {
  if (HasLongHeader(form)) {
    LongHeader header;
    if (!ReadLongHeader(s, &header)) return false;
    r->week = header.week;
    r->seconds = header.seconds;
  } else {
    CompactHeader header;
    if (!ReadCompactHeader(s, &header)) return false;
    r->week = header.week;
    r->seconds = header.Seconds();
  }
  const char* body = std::strchr(s, ';');
  if (body == nullptr) return false;
  ++body;

  const int values = ValueCount(form);
  // The compact forms begin with a field that isn't read.
  const char* first = values == 7 ? BehindComma(body, 1) : body;
  if (first == nullptr) return false;
  FieldCursor cursor(first);
  cursor.Double(r->values[0]);
  for (int i = 1; i < values; ++i)
    cursor.Comma().Double(r->values[i]);
  if (!cursor.ok) return false;

  if (CountsSatellites(form)) {
    const char* list = BehindComma(body, values == 7 ? 10 : 6);
    if (list != nullptr) CountSatellites(list, &r->counts);
  }
  return true;
}

void WriteRow(DopForm form, const DopRecord& r, OutFile* out, int mode) {
  const double* v = r.values;
  const SatelliteCounts& n = r.counts;
  switch (form) {
    case DopForm::kNative:
    case DopForm::kNativeCompactTime:
      out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.6f,%.6f,%d,%d,%d,%d,%d,%d\n", r.week, r.seconds, 0,
                  v[0], v[1], v[2], v[3], v[4], n.gps, n.glonass, n.galileo, n.bds, n.sbas, mode);
      break;
    case DopForm::kCombined:
      out->Printf("%i,%.3f,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%d,%d,%d,%d,%d,%d\n", r.week,
                  r.seconds, v[0], v[1], v[2], v[3], v[4], v[5], v[6], n.gps, n.glonass, n.galileo,
                  n.bds, n.sbas, mode);
      break;
    case DopForm::kPppNative:
      out->Printf("%i,%.3f,%i,%.6f,%.6f,%.6f,%.6f,%.6f,%d\n", r.week, r.seconds, 0, v[0], v[1],
                  v[2], v[3], v[4], mode);
      break;
    case DopForm::kPppCompact:
      out->Printf("%i,%.3f,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%.6f,%d\n", r.week, r.seconds, v[0], v[1],
                  v[2], v[3], v[4], v[5], v[6], mode);
      break;
  }
}

}  // namespace

void ExtractDop(DopLog log, const char* sentence, OutFile* table, int mode) {
  const auto index = static_cast<std::size_t>(log);
  if (sentence == nullptr || table == nullptr || index >= kMembers.size()) return;
  const DopMember& member = kMembers[index];
  const DopForm form = mode == 0 ? member.native : member.combined;
  if (member.needsFine && std::strstr(sentence, "FINE") == nullptr) return;
  if (form == DopForm::kPppNative && std::strstr(sentence, "COM") == nullptr) return;
  DopRecord r;
  if (!ReadDop(form, sentence, &r)) return;
  WriteRow(form, r, table, mode);
  if (member.flushEachRow) table->Flush();
}

}  // namespace tarnlog
