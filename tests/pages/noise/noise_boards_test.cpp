#include "pages/noise/noise_boards.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {
namespace {

bool PassesKM360(int index) {
  return index == 0 || index == 2 || index == 4 || index >= 24;
}

TEST(NoiseBoardsTest, SuffixesAndPlotterWordsKeepTheirAsymmetries) {
  for (int index = 0; index < static_cast<int>(kNoiseBoards.size()); ++index) {
    const NoiseBoard& board = kNoiseBoards[static_cast<std::size_t>(index)];
    const std::string suffix = index == 4    ? "-KB560"
                               : index <= 18 ? "-" + std::string(board.text)
                                             : "";
    EXPECT_EQ(board.suffix, suffix) << index;
    EXPECT_EQ(board.plotterWord, PassesKM360(index) ? "KM360" : board.text) << index;
  }
  EXPECT_EQ(kNoiseBoards[4].text, "KB570");
  EXPECT_EQ(kNoiseBoards[23].text, "KB5C0m-Custom");
  EXPECT_EQ(kNoiseBoards[32].text, "KMD782");
}

TEST(NoiseBoardsTest, ProductionBoardOfAnIndex) {
  const struct {
    int index;
    int resolved;
    std::string_view word;
  } cases[] = {
      {0, 0, "KB560"},   {1, 1, "KB530"},           {2, 0, "KB560"},    {4, 0, "KB560"},
      {17, 17, "KB520"}, {23, 23, "KB5C0m-Custom"}, {24, 24, "KM760L"}, {25, 25, "KM780"},
      {26, 26, "KM782"}, {27, 27, "KT702"},         {28, 28, "KM760"},  {29, 29, "KM760_RAW"},
      {30, 30, "KM781"}, {31, 31, "KM780H"},        {32, 32, "KMD782"}, {33, 33, "KMD760"},
      {34, 0, "KB560"},  {-1, 0, "KB560"},
  };
  for (const auto& c : cases) {
    const MfgBoard board = ResolveMfgBoard(c.index);
    EXPECT_EQ(board.index, c.resolved) << c.index;
    EXPECT_EQ(board.word, c.word) << c.index;
  }
}

TEST(NoiseBoardsTest, ProductionBoardOfAWord) {
  const struct {
    std::string_view word;
    int index;
  } cases[] = {{"KB520", 0}, {"KMD760", 33}, {"KB530", 1}, {"KM760_RAW", 29}, {"KM360", 0},
               {"KB570", 0}, {"kb530", 0},   {"", 0},      {"XYZ", 0}};
  for (const auto& c : cases) {
    const MfgBoard board = MfgBoardOfWord(c.word);
    EXPECT_EQ(board.index, c.index) << c.word;
    EXPECT_EQ(board.word, c.index == 0 ? "KB560" : c.word) << c.word;
  }
}

TEST(NoiseBoardsTest, ProductionPlotterWordAndBoardKinds) {
  EXPECT_EQ(MfgPlotterWord(ResolveMfgBoard(26), true), "KM782V");
  EXPECT_EQ(MfgPlotterWord(ResolveMfgBoard(32), true), "KMD782V");
  EXPECT_EQ(MfgPlotterWord(ResolveMfgBoard(26), false), "KM782");
  EXPECT_EQ(MfgPlotterWord(ResolveMfgBoard(25), true), "KM780");

  const std::vector<int> dual{8, 11, 15, 16, 18, 21, 22, 26, 32};
  const std::vector<int> extra{25, 26, 30, 31, 32, 33};
  for (int index = -1; index <= 34; ++index) {
    const bool isDual = std::find(dual.begin(), dual.end(), index) != dual.end();
    EXPECT_EQ(IsDualBoard(index, false), isDual) << index;
    EXPECT_EQ(IsDualBoard(index, true), isDual || index == 20) << index;
    EXPECT_EQ(HasExtraData(index), std::find(extra.begin(), extra.end(), index) != extra.end())
        << index;
  }
}

std::string Folders(const std::vector<SystemFolder>& folders) {
  std::string text;
  for (const SystemFolder& folder : folders)
    text.append(folder.name).append(":").push_back(folder.systemMode);
  return text;
}

TEST(NoiseBoardsTest, SystemFoldersPerBoard) {
  const struct {
    int board;
    const char* noise;
    const char* mfg;
  } cases[] = {
      {0, "GPSGAL:4BD2GLO:5", "GPSGAL:4BD2GLO:5"},
      {1, "GPSBD2:3", "GPSBD2:3"},
      {6, "GPSGLO:1", "GPSGAL:4BD2GLO:5"},
      {26, "GPSGAL:4BD2GLO:5", "GPSGAL:4BD2GLO:5"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Folders(NoiseSystemFolders(c.board)), c.noise) << c.board;
    EXPECT_EQ(Folders(MfgSystemFolders(c.board)), c.mfg) << c.board;
  }
}

TEST(NoiseBoardsTest, ProcessorsPlotterAndClockDrift) {
  const struct {
    int noiseType;
    bool sbas;
    std::string_view name;
  } cases[] = {
      {0, false, "OfflineProcessor.exe"},    {0, true, "OfflineProcessor_IRNSS_SBAS.exe"},
      {1, true, "OfflineProcessor_L2C.exe"}, {2, false, "OfflineProcessor_L2P.exe"},
      {3, true, "OfflineProcessor_L5.exe"},  {4, false, "OfflineProcessor_KB530.exe"},
      {5, false, "OfflineProcessor.exe"},    {-1, false, "OfflineProcessor.exe"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(OfflineProcessorName(c.noiseType, c.sbas), c.name) << c.noiseType << c.sbas;
  EXPECT_EQ(MfgOfflineProcessorName(0), "OfflineProcessor.exe");
  EXPECT_EQ(MfgOfflineProcessorName(3), "OfflineProcessor_L5.exe");
  EXPECT_EQ(NoisePlotterName(false), "NoisePlot.exe");
  EXPECT_EQ(NoisePlotterName(true), "NoisePlot_IRNSS_SBAS.exe");
  for (int index = 0; index <= 32; ++index)
    EXPECT_EQ(ClockDriftOfBoard(index), index == 14 || index == 16 || index == 18 ? "3" : "1")
        << index;
}

}  // namespace
}  // namespace tarnlog
