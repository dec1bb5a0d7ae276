#include "pages/static/ephemeris_compare.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include "platform/files.h"
#include "platform/paths.h"

namespace tarnlog {
namespace {

constexpr std::size_t kKeplerTerms = 19;
constexpr std::size_t kGlonassTerms = 11;
constexpr std::size_t kLeadingColumns = 2;  // week, reference time

using Row = std::vector<double>;

// Rows of blank-separated numbers; a row too short for its system is left out.
std::vector<Row> ReadRows(const std::string& path, std::size_t columns, bool& opened) {
  std::string bytes;
  opened = ReadWholeFile(path, bytes);
  std::vector<Row> rows;
  Row row;
  std::string word;
  auto endWord = [&] {
    if (word.empty()) return;
    row.push_back(std::strtod(word.c_str(), nullptr));
    word.clear();
  };
  auto endRow = [&] {
    endWord();
    if (row.size() >= columns) {
      row.resize(columns);
      rows.push_back(row);
    }
    row.clear();
  };
  for (char c : bytes) {
    if (c == '\n') {
      endRow();
    } else if (c == ' ' || c == '\t' || c == '\r') {
      endWord();
    } else {
      word += c;
    }
  }
  endRow();
  return rows;
}

// Rounded in doubles: a time too large for an integer then pairs only with
// itself, and not-a-number with nothing.
bool SameEphemeris(const Row& a, const Row& b) {
  return a[0] == b[0] && std::round(a[1] * 1000.0) == std::round(b[1] * 1000.0);
}

}  // namespace

EphemerisSystem SystemOfSatellite(int number) {
  if (number >= 1 && number <= 32) return EphemerisSystem::kGps;
  if (number >= 38 && number <= 61) return EphemerisSystem::kGlonass;
  if (number >= 161 && number <= 197) return EphemerisSystem::kBds;
  return EphemerisSystem::kNone;
}

bool CompareSatelliteEphemerides(int number, const std::string& folderA, const std::string& folderB,
                                 const std::string& resultPath) {
  const EphemerisSystem system = SystemOfSatellite(number);
  if (system == EphemerisSystem::kNone) return false;
  const std::size_t columns =
      kLeadingColumns + (system == EphemerisSystem::kGlonass ? kGlonassTerms : kKeplerTerms);
  const std::string name = "Sat_" + std::to_string(number) + ".txt";
  bool openedA = false;
  bool openedB = false;
  const std::vector<Row> rowsA = ReadRows(JoinPath(folderA, name), columns, openedA);
  const std::vector<Row> rowsB = ReadRows(JoinPath(folderB, name), columns, openedB);
  if (!openedA || !openedB) return false;

  OutFile out;
  if (!out.Open(resultPath, FileMode::kText, true)) return true;
  for (const Row& a : rowsA) {
    for (const Row& b : rowsB) {
      if (!SameEphemeris(a, b)) continue;
      out.Printf("%i,%10.3f", number, a[1]);
      for (std::size_t column = kLeadingColumns; column < columns; ++column)
        out.Printf(",%.6e", b[column] - a[column]);
      out.Printf("\n");
      break;
    }
  }
  return true;
}

}  // namespace tarnlog
