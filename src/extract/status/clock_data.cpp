// CLKDTA: clock data. The receiver sends it with the compact header; the
// chain hands it over as it came (origin 1) and the extractor rebuilds the
// long form first. The body is one block of 17 integers and three values,
// or, from 40 fields on, two such blocks; the row has the header time and
// one or two blocks.
#include <cstring>

#include "extract/log_fields.h"
#include "extract/normalise.h"
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr int kIntegersPerBlock = 17;
constexpr int kValuesPerBlock = 3;
constexpr int kTwoBlockFields = 40;

struct ClockBlock {
  int integers[kIntegersPerBlock] = {};
  double values[kValuesPerBlock] = {};
};

// The body's fields up to the star: its commas plus one.
int FieldCount(const char* body) {
  int count = 1;
  for (const char* at = body; *at != '\0' && *at != '*'; ++at) {
    if (*at == ',') ++count;
  }
  return count;
}

FieldCursor& ReadBlock(FieldCursor& r, ClockBlock& block) {
  for (int& integer : block.integers)
    r.Decimal(integer).Comma();
  return r.Double(block.values[0]).Comma().Double(block.values[1]).Comma().Double(block.values[2]);
}

void WriteBlock(OutFile* out, const ClockBlock& b) {
  const int* n = b.integers;
  out->Printf(",%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%.3lf,%.3lf,%.3lf", n[0], n[1],
              n[2], n[3], n[4], n[5], n[6], n[7], n[8], n[9], n[10], n[11], n[12], n[13], n[14],
              n[15], n[16], b.values[0], b.values[1], b.values[2]);
}

}  // namespace

void ExtractClockData(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  NormalisedSentence normalised;
  const char* sentence = c.sentence;
  if (c.row.param == 1) {
    if (!NormaliseSingle(c.sentence, "CLKDTA", &normalised)) return;
    sentence = normalised.text;
  }
  if (!Contains(sentence, "#CLKDTA")) return;
  LongHeader header;
  const char* body = BodyOf(sentence);
  if (!ReadLongHeader(sentence, &header) || body == nullptr) return;

  const bool twoBlocks = FieldCount(body) >= kTwoBlockFields;
  ClockBlock first;
  ClockBlock second;
  FieldCursor r(body);
  ReadBlock(r, first);
  if (twoBlocks) ReadBlock(r.Comma(), second);
  if (!r.ok) return;
  out->Printf("%d,%.3f", header.week, header.seconds);
  WriteBlock(out, first);
  if (twoBlocks) WriteBlock(out, second);
  out->Write(" \r\n");
}

}  // namespace tarnlog
