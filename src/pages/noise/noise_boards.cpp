#include "pages/noise/noise_boards.h"

#include <algorithm>

namespace tarnlog {

const std::array<NoiseBoard, 33> kNoiseBoards{{
    {"KB560", "-KB560", "KM360"},     {"KB530", "-KB530", "KB530"},
    {"Novatel", "-Novatel", "KM360"}, {"KB541", "-KB541", "KB541"},
    {"KB570", "-KB560", "KM360"},     {"KB542", "-KB542", "KB542"},
    {"KB532", "-KB532", "KB532"},     {"INS", "-INS", "INS"},
    {"KB582", "-KB582", "KB582"},     {"KM6C0", "-KM6C0", "KM6C0"},
    {"KM640", "-KM640", "KM640"},     {"KM642", "-KM642", "KM642"},
    {"KB5C0", "-KB5C0", "KB5C0"},     {"KT6C0", "-KT6C0", "KT6C0"},
    {"KM680", "-KM680", "KM680"},     {"KM682", "-KM682", "KM682"},
    {"KB552", "-KB552", "KB552"},     {"KB520", "-KB520", "KB520"},
    {"KM682D", "-KM682D", "KM682D"},  {"KB5C0M", "", "KB5C0M"},
    {"KLAP-B", "", "KLAP-B"},         {"KZ7220", "", "KZ7220"},
    {"KP70701", "", "KP70701"},       {"KB5C0m-Custom", "", "KB5C0m-Custom"},
    {"KM760L", "", "KM360"},          {"KM780", "", "KM360"},
    {"KM782", "", "KM360"},           {"KT702", "", "KM360"},
    {"KM760", "", "KM360"},           {"KM760L_RAWDATA", "", "KM360"},
    {"KM781", "", "KM360"},           {"KM780H", "", "KM360"},
    {"KMD782", "", "KM360"},
}};

namespace {

constexpr std::array<std::string_view, 5> kProcessors{
    "OfflineProcessor.exe", "OfflineProcessor_L2C.exe", "OfflineProcessor_L2P.exe",
    "OfflineProcessor_L5.exe", "OfflineProcessor_KB530.exe"};

// Production words past the list's own rows.
constexpr std::array<std::string_view, 10> kMfgExtraWords{"KM760L", "KM780",     "KM782", "KT702",
                                                          "KM760",  "KM760_RAW", "KM781", "KM780H",
                                                          "KMD782", "KMD760"};
constexpr int kFirstMfgExtra = 24;
constexpr int kLastMfgBoard = 33;

// Indices that keep the list's word in a production run; 0, 2 and 4 fall to
// KB560.
bool KeepsListWord(int index) {
  return index == 1 || index == 3 || (index >= 5 && index <= 23);
}

}  // namespace

std::string_view OfflineProcessorName(int noiseType, bool sbasIrnss) {
  if (noiseType == 0 && sbasIrnss) return "OfflineProcessor_IRNSS_SBAS.exe";
  if (noiseType < 0 || noiseType >= static_cast<int>(kProcessors.size())) return kProcessors[0];
  return kProcessors[static_cast<std::size_t>(noiseType)];
}

std::string_view MfgOfflineProcessorName(int noiseType) {
  return OfflineProcessorName(noiseType, false);
}

std::string_view NoisePlotterName(bool sbasIrnss) {
  return sbasIrnss ? "NoisePlot_IRNSS_SBAS.exe" : "NoisePlot.exe";
}

std::string_view ClockDriftOfBoard(int board) {
  return board == board::kKM680 || board == board::kKB552 || board == board::kKM682D ? "3" : "1";
}

std::vector<SystemFolder> NoiseSystemFolders(int board) {
  if (board == board::kKB530) return {{"GPSBD2", '3'}};
  if (board == board::kKB532) return {{"GPSGLO", '1'}};
  return {{"GPSGAL", '4'}, {"BD2GLO", '5'}};
}

std::vector<SystemFolder> MfgSystemFolders(int board) {
  if (board == board::kKB530) return {{"GPSBD2", '3'}};
  return {{"GPSGAL", '4'}, {"BD2GLO", '5'}};
}

MfgBoard ResolveMfgBoard(int index) {
  if (KeepsListWord(index)) return {index, kNoiseBoards[static_cast<std::size_t>(index)].text};
  if (index >= kFirstMfgExtra && index <= kLastMfgBoard)
    return {index, kMfgExtraWords[static_cast<std::size_t>(index - kFirstMfgExtra)]};
  return {0, "KB560"};
}

MfgBoard MfgBoardOfWord(std::string_view word) {
  for (int index = 1; index <= kLastMfgBoard; ++index) {
    if (index == 17) continue;  // known by its index only
    const MfgBoard candidate = ResolveMfgBoard(index);
    if (candidate.index == index && candidate.word == word) return candidate;
  }
  return {0, "KB560"};
}

std::string_view MfgPlotterWord(const MfgBoard& board, bool onlyRangeH) {
  if (onlyRangeH && board.index == board::kKM782) return "KM782V";
  if (onlyRangeH && board.index == board::kKMD782) return "KMD782V";
  return board.word;
}

bool IsDualBoard(int index, bool withGolden) {
  static constexpr int kDual[] = {8, 11, 15, 16, 18, 21, 22, 26, 32};
  if (withGolden && index == 20) return true;
  return std::find(std::begin(kDual), std::end(kDual), index) != std::end(kDual);
}

bool HasExtraData(int index) {
  return index == 25 || index == 26 || (index >= 30 && index <= 33);
}

}  // namespace tarnlog
