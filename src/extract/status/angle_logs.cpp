// %CANGLEA, %FANGLEA and %ANGVELA: four 16-bit values, each sent as two
// hexadecimal bytes, low byte first, behind the brief header.
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {

void ExtractCarAngle(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  int week = 0, milliseconds = 0;
  int bytes[8] = {};
  FieldCursor r(c.sentence);
  r.SkipField().Comma().Decimal(week).Comma().Decimal(milliseconds).Char(';');
  for (int value = 0; value < 4; ++value) {
    if (value > 0) r.Comma();
    HexWidth(HexWidth(r, 2, bytes[2 * value]), 2, bytes[2 * value + 1]);
  }
  if (!r.ok) return;
  int values[4];
  for (int value = 0; value < 4; ++value) {
    const unsigned low = static_cast<unsigned>(bytes[2 * value]);
    const unsigned high = static_cast<unsigned>(bytes[2 * value + 1]);
    values[value] = static_cast<int>(high << 8 | low);
  }
  out->Printf("%d,%.3lf,%d,%d,%d,%d\r\n", week, milliseconds / 1000.0, values[0], values[1],
              values[2], values[3]);
  // This one stream is flushed after every row.
  if (c.row.tables[0] == TableId::kAngVel) out->Flush();
}

}  // namespace tarnlog
