// The named true coordinates shared by all pages: one fixed table of 1000
// rows, in file order, which is also the order of every list shown.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tarnlog {

class PageHost;

inline constexpr std::size_t kRealValueRows = 1000;
inline constexpr std::size_t kRealValueNameLength = 63;

struct RealValueRow {
  char name[kRealValueNameLength + 1] = {};  // empty marks the row free
  double latitude = 0.0;                     // degrees
  double longitude = 0.0;                    // degrees
  double height = 0.0;                       // metres

  bool IsFree() const { return name[0] == '\0'; }
  std::string_view Name() const { return name; }
  // Keeps the first 63 characters.
  void SetName(std::string_view text);
};

struct RealValueTable {
  std::array<RealValueRow, kRealValueRows> rows{};

  void Clear();
  // Index of the lowest free row from `from` on, or -1 when all are taken.
  int LowestFreeRow(std::size_t from = 0) const;
  // First row of exactly this name, searched from row 0, or -1.
  int Find(std::string_view name) const;
};

// The process-wide table. Only the Static page writes it; every page reads it.
RealValueTable& RealValues();

inline constexpr std::string_view kRealValueFile = "/Config/AllRealValue.txt";
inline constexpr std::string_view kLongStartFolderWarning =
    "程序所在文件路径过长，文件名称有超过256字节的风险！";

// Loads `<startFolder>/Config/AllRealValue.txt` into `table` (which the
// caller has cleared). A missing file leaves the table as it is; lines that
// don't give a name and three numbers are skipped, and so is whatever of a
// line lies past its first 1024 characters; loading stops once row 999 is
// filled. A start folder over 220 characters only draws a warning.
void LoadRealValues(RealValueTable& table, const std::string& startFolder, PageHost& host);

}  // namespace tarnlog
