// The Initial page's test sets: a table of 100 entries, each one file with
// the settings it is analysed with. A PPS run keeps only the file's texts;
// a first-fix or reacquisition run keeps everything, and one log may stand
// in several sets with other settings.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "frame/coordinate_fields.h"

namespace tarnlog {

inline constexpr std::size_t kTestSetCount = 100;

// The fixed text capacities of an entry, terminator included: longer texts
// keep their first capacity-1 bytes.
inline constexpr std::size_t kSetFileNameSize = 256;
inline constexpr std::size_t kSetFolderSize = 256;
inline constexpr std::size_t kSetScriptPathSize = 512;
inline constexpr std::size_t kSetOutputFolderSize = 512;
inline constexpr std::size_t kSetKindSize = 16;

struct TestSet {
  std::string fileName;       // with its extension; empty: the entry is free
  std::string folder;         // without a trailing separator
  std::string scriptPath;     // the set's InitialCommamd.bat
  std::string outputFolder;   //
  unsigned char connect = 1;  // 1 for "ConnectSignal"
  float time = 0.0f;          // "OnTime" when connected, else "OffTime"
  int testTimes = 0;
  std::string logType;
  std::string processType;
  std::string chipType;
  Coordinates real;
  Coordinates rover;  // only for the two heading log types

  bool IsFree() const { return fileName.empty(); }
  // The log or CSV file itself.
  std::string FilePath() const;
};

// Whether a log type carries a base and a rover ("headinga", "heading2a").
bool IsHeadingLogType(std::string_view logType);

// `text` held to a capacity of `size` bytes, terminator included.
std::string HeldTo(std::string_view text, std::size_t size);

class TestSetTable {
 public:
  // Puts `set` into the first free entry, its texts held to their
  // capacities; the entry's index, or -1 when every entry is taken.
  int Add(const TestSet& set);
  // Frees entry `index`; the others stay where they are.
  void Free(int index);
  void Clear();

  int OccupiedCount() const;
  // Indexes of the occupied entries, in table order.
  std::vector<int> Occupied() const;
  // A set of the same file name, folder, log type, process type and chip
  // type is there already; times and positions are not compared.
  bool HoldsSameSet(const TestSet& set) const;
  // A file of this name and folder is there already.
  bool HoldsFile(std::string_view fileName, std::string_view folder) const;

  TestSet& operator[](int index) { return entries_[static_cast<std::size_t>(index)]; }
  const TestSet& operator[](int index) const { return entries_[static_cast<std::size_t>(index)]; }

 private:
  std::array<TestSet, kTestSetCount> entries_{};
};

// The name of a run's root folder below the base: "TTFFInitial" when every
// set is "TTFF", "ReacqInitial" when every set is "REACQ", else "Initial".
std::string ReacquisitionRootName(const TestSetTable& table);

// A set's output folder: the result folder, the file name cut at its last
// "." (empty with no "."), "_" and the log type.
std::string ReacquisitionOutputFolder(std::string_view resultFolder, const TestSet& set);

}  // namespace tarnlog
