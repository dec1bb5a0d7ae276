// Generate: the mean of one log's solutions as a true coordinate, with the
// report MeanValue.txt beside the log; and Transfer, the toggle of the
// latitude and longitude texts between decimal degrees and degree, minute,
// second notation.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "extract/extraction_state.h"
#include "pages/static/real_value_store.h"

namespace tarnlog {

// One source of the "GenerateRealValue" group. Which records enter its sums
// is decided by the extractors as they write the table.
struct MeanSource {
  std::string_view caption;
  std::string_view option;
  std::string_view table;
  SumSource sums;
  std::string_view heading;
  const char* format;
};

// In report order (also the order of the page's flags).
inline constexpr std::size_t kMeanSourceCount = 7;
extern const std::array<MeanSource, kMeanSourceCount> kMeanSources;
// Indices into kMeanSources in the order of extraction.
extern const std::array<std::size_t, kMeanSourceCount> kMeanExtractionOrder;

inline constexpr std::string_view kMeanValueFile = "MeanValue.txt";

// One ExtractMain run in real-value mode per set flag, then MeanValue.txt in
// `folder` (with its trailing separator). Returns whether any mean was
// written and the mean of the last source in report order; a source with
// no qualifying record gives not-a-number.
struct MeanResult {
  bool any = false;
  Coordinates last;
};
MeanResult GenerateMeanValues(const std::string& folder, const std::string& logPath,
                              const std::array<bool, kMeanSourceCount>& flags,
                              ExtractSettings settings, ExtractionState& state);

// The tables a Generate run leaves behind and deletes: "match.txt",
// "rtkpos.txt" with "ttff.txt", "psrpos.txt", "bestpos.txt", "gngga.txt",
// "matchh.txt", each only for its set flag. "ppppos.txt" stays.
void DeleteMeanTables(const std::string& folder, const std::array<bool, kMeanSourceCount>& flags);

// Transfer's first press: "31*12#3.456000&". No absolute value is taken, so
// a negative value carries its sign on every part that isn't zero.
std::string DegreesToMarkedText(double degrees);
// The second press, from the last "*", "#" and "&", as "%.9f".
std::string MarkedTextToDegrees(std::string_view text);
// Whether a latitude text still holds the marks of the first press.
bool HoldsDegreeMarks(std::string_view text);

}  // namespace tarnlog
