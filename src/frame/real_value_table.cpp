#include "frame/real_value_table.h"

#include <cstdio>
#include <cstring>

#include "platform/files.h"
#include "platform/host.h"

namespace tarnlog {

void RealValueRow::SetName(std::string_view text) {
  const std::size_t length = std::min(text.size(), kRealValueNameLength);
  std::memcpy(name, text.data(), length);
  name[length] = '\0';
}

void RealValueTable::Clear() {
  rows.fill(RealValueRow{});
}

int RealValueTable::LowestFreeRow(std::size_t from) const {
  for (std::size_t i = from; i < rows.size(); ++i) {
    if (rows[i].IsFree()) return static_cast<int>(i);
  }
  return -1;
}

int RealValueTable::Find(std::string_view name) const {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].Name() == name) return static_cast<int>(i);
  }
  return -1;
}

RealValueTable& RealValues() {
  static RealValueTable table;
  return table;
}

void LoadRealValues(RealValueTable& table, const std::string& startFolder, PageHost& host) {
  // The folder went into a buffer of 255 characters; past 220 the file names
  // built from it risk the 256-byte limit.
  if (startFolder.size() > 220) host.ShowMessage(kLongStartFolderWarning);

  InFile file;
  if (!file.Open(startFolder + std::string(kRealValueFile), FileMode::kText)) return;

  // Lines of at most 1024 characters; the rest of a longer one is dropped
  // with it rather than read as a point of its own.
  char line[1025];
  // Loading only fills rows, so the search for a free one goes on from the
  // last it found.
  int row = 0;
  while (file.ReadLineSkippingRest(line, sizeof line)) {
    // "%[^,],%lf,%lf,%lf" with the name bounded to the line.
    char name[1025];
    double latitude = 0.0;
    double longitude = 0.0;
    double height = 0.0;
    if (std::sscanf(line, "%1024[^,],%lf,%lf,%lf", name, &latitude, &longitude, &height) != 4) {
      continue;
    }
    row = table.LowestFreeRow(static_cast<std::size_t>(row));
    if (row < 0) break;
    RealValueRow& target = table.rows[row];
    target.SetName(name);
    target.latitude = latitude;
    target.longitude = longitude;
    target.height = height;
    if (row >= static_cast<int>(kRealValueRows) - 1) break;
  }
}

}  // namespace tarnlog
