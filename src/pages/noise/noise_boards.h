// The boards the noise page knows, and what each board index decides: the
// list suffix, the board word handed to the plotter, the system folders and
// the offline processor. The combo index is what the code tests, so the
// order of the table is part of the design.
#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace tarnlog {

struct NoiseBoard {
  std::string_view text;         // the "BoardType" entry
  std::string_view suffix;       // appended to the display name; empty: none
  std::string_view plotterWord;  // the noise plotter's board argument
};

// Index 4 shows the suffix of index 0, and indices 0, 2, 4 and 24 on pass
// KM360, a board that is not in the list: the plotter knows them by it.
extern const std::array<NoiseBoard, 33> kNoiseBoards;

namespace board {
inline constexpr int kKB560 = 0;
inline constexpr int kKB530 = 1;
inline constexpr int kKB570 = 4;
inline constexpr int kKB532 = 6;
inline constexpr int kINS = 7;
inline constexpr int kKM680 = 14;
inline constexpr int kKB552 = 16;
inline constexpr int kKM682D = 18;
inline constexpr int kKB5C0mCustom = 23;
inline constexpr int kKM782 = 26;
inline constexpr int kKM781 = 30;
inline constexpr int kKMD782 = 32;
// Above this index a board keeps no suffix, stores 0 in its row and leaves
// "NoiseType" alone.
inline constexpr int kLastListed = 18;
}  // namespace board

// "NoiseType" entries, in order.
inline constexpr std::array<std::string_view, 5> kNoiseTypes{"ALL", "L2C", "L2P", "L5", "KB530"};
inline constexpr int kNoiseTypeL5 = 3;

// The offline processor for a "NoiseType" index; "ALL" has an IRNSS/SBAS
// variant. An index out of the list gives the plain processor.
std::string_view OfflineProcessorName(int noiseType, bool sbasIrnss);
// The processor of a production run: "ALL" is always the plain one.
std::string_view MfgOfflineProcessorName(int noiseType);
std::string_view NoisePlotterName(bool sbasIrnss);

// "ClockDrift" after choosing a board: "3" for 14, 16 and 18, else "1".
std::string_view ClockDriftOfBoard(int board);

// A folder below the pair folder in which the processor runs over one set
// of satellite systems, and the `systemMode` of its control file.
struct SystemFolder {
  std::string_view name;
  char systemMode;
};

// The noise pipeline: KB530 "GPSBD2" (3), KB532 "GPSGLO" (1), every other
// board "GPSGAL" (4) then "BD2GLO" (5).
std::vector<SystemFolder> NoiseSystemFolders(int board);
// The production test: KB530 "GPSBD2" (3), every other board "GPSGAL" (4)
// then "BD2GLO" (5); there is no "GPSGLO" there.
std::vector<SystemFolder> MfgSystemFolders(int board);

// The production test's board: an index 0 to 33 and its word.
struct MfgBoard {
  int index = 0;
  std::string_view word;
};

// The word of a production board index: 1, 3, 5, 6, 7 and 8 to 23 keep the
// list's word, 24 to 33 have words of their own, every other index gives
// KB560 and the index 0.
MfgBoard ResolveMfgBoard(int index);
// A preset board word selects the index of the same word; KB520 (17) is
// known by its index only, so its word, like any unknown word, gives 0.
MfgBoard MfgBoardOfWord(std::string_view word);
// The word handed to the plotter in a production run: with "OnlyRH" on,
// 26 gives KM782V and 32 KMD782V.
std::string_view MfgPlotterWord(const MfgBoard& board, bool onlyRangeH);
// Boards with a second antenna or observation set, whose pairs run twice;
// with a golden file 20 joins them.
bool IsDualBoard(int index, bool withGolden);
// Boards whose production pairs run ExtraData.exe after the processor.
bool HasExtraData(int index);

}  // namespace tarnlog
