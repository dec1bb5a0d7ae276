#include "pages/static/real_value_generation.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "extract/extract_main.h"
#include "platform/fast_format.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/saturating.h"

namespace tarnlog {

const std::array<MeanSource, kMeanSourceCount> kMeanSources{{
    {"PSRPOS", "-PP", "psrpos.txt", SumSource::kPsrPos, "psrpos mean value\r\n",
     "%13.11f %13.11f %13.11f\r\n"},
    {"RTKPOS", "-RP", "rtkpos.txt", SumSource::kRtkPos, "rtkpos mean value\r\n",
     "%13.11f %13.11f %13.11f\r\n"},
    {"MATCH", "-MP", "match.txt", SumSource::kMatched, "matched mean value\r\n",
     "%13.11f %13.11f %13.11f\r\n"},
    {"BESTPOS", "-BP", "bestpos.txt", SumSource::kBestPos, "bestpos mean value\r\n",
     "%13.11f %13.11f %13.11f\r\n"},
    {"PPPPOS", "-ZA", "ppppos.txt", SumSource::kPppPos, "ppppos mean value\r\n",
     "%13.10f %13.10f %13.10f\r\n"},
    {"GGA", "-GG", "gngga.txt", SumSource::kGga, "ggapos mean value\r\n",
     "%13.10f %13.10f %13.10f\r\n"},
    {"MATCH-H", "-MH", "matchh.txt", SumSource::kMatchedH, "matchposH mean value\r\n",
     "%13.10f %13.10f %13.10f\r\n"},
}};

// MATCH, PSRPOS, RTKPOS, BESTPOS, PPPPOS, GGA, MATCH-H.
const std::array<std::size_t, kMeanSourceCount> kMeanExtractionOrder{2, 0, 1, 3, 4, 5, 6};

MeanResult GenerateMeanValues(const std::string& folder, const std::string& logPath,
                              const std::array<bool, kMeanSourceCount>& flags,
                              ExtractSettings settings, ExtractionState& state) {
  const std::string reportPath = folder + std::string(kMeanValueFile);
  OutFile report;
  if (!report.Open(reportPath, FileMode::kBinary)) {
    std::printf("Cannot open write  file:\n");
    std::printf("***   %.20s\n", reportPath.c_str());
    std::fflush(stdout);
  }

  settings.realValueMode = true;
  for (std::size_t index : kMeanExtractionOrder) {
    if (!flags[index]) continue;
    const MeanSource& source = kMeanSources[index];
    state.Sums(source.sums) = PositionSums{};
    std::vector<std::string> texts{folder, "-i", logPath, std::string(source.option),
                                   std::string(source.table)};
    std::vector<char*> argv = ArgvOf(texts);
    ExtractMain(static_cast<int>(texts.size()), argv.data(), settings, state);
  }

  MeanResult result;
  for (std::size_t index = 0; index < kMeanSourceCount; ++index) {
    if (!flags[index]) continue;
    const MeanSource& source = kMeanSources[index];
    const PositionSums& sums = state.Sums(source.sums);
    // A count of zero divides by zero: the report then shows the runtime's
    // not-a-number text, and so does the Real Value set.
    result.last.latitude = sums.latitude / sums.counts[0];
    result.last.longitude = sums.longitude / sums.counts[1];
    result.last.height = sums.height / sums.counts[2];
    result.any = true;
    report.Write(source.heading);
    report.Printf(source.format, result.last.latitude, result.last.longitude, result.last.height);
  }
  return result;
}

void DeleteMeanTables(const std::string& folder, const std::array<bool, kMeanSourceCount>& flags) {
  auto remove = [&](std::string_view table) { RemoveFile(folder + std::string(table)); };
  if (flags[2]) remove("match.txt");
  if (flags[1]) {
    remove("rtkpos.txt");
    remove("ttff.txt");
  }
  if (flags[0]) remove("psrpos.txt");
  if (flags[3]) remove("bestpos.txt");
  if (flags[5]) remove("gngga.txt");
  if (flags[6]) remove("matchh.txt");
}

std::string DegreesToMarkedText(double degrees) {
  const int whole = SaturatingInt(degrees);
  const double fraction = degrees - whole;
  const int minutes = SaturatingInt(fraction * 60.0);
  const double seconds = (fraction * 60.0 - minutes) * 60.0;
  // "%f" of a double near its largest takes over 300 characters.
  char text[400];
  FormatText(text, sizeof text, "%d*%d#%f&", whole, minutes, seconds);
  return text;
}

std::string MarkedTextToDegrees(std::string_view text) {
  const std::size_t star = text.rfind('*');
  const std::size_t hash = text.rfind('#');
  const std::size_t amp = text.rfind('&');
  // A missing mark ends its piece at the end of the text.
  auto piece = [&](std::size_t from, std::size_t to) {
    if (from == std::string_view::npos || from > text.size()) return std::string();
    if (to == std::string_view::npos || to < from) to = text.size();
    return std::string(text.substr(from, to - from));
  };
  const int degrees = TextToInt(piece(0, star));
  const int minutes = star == std::string_view::npos ? 0 : TextToInt(piece(star + 1, hash));
  const double seconds =
      hash == std::string_view::npos ? 0.0 : std::atof(piece(hash + 1, amp).c_str());
  const double value =
      ((seconds * 100000.0) / 3600.0 + (minutes * 100000.0) / 60.0) * 0.00001 + degrees;
  char out[400];
  FormatText(out, sizeof out, "%.9f", value);
  return out;
}

bool HoldsDegreeMarks(std::string_view text) {
  return text.find_first_of("*&#") != std::string_view::npos;
}

}  // namespace tarnlog
