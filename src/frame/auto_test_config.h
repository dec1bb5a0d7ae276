// The automatic test's settings, kept beside the logs in
// <test folder>/AutoTestConfig/ as filelist.ini, realvalue.ini and mode.ini.
// The AUTO page writes them; each copy of the program that it starts reads
// them again. A plain value with no link back to a page.
#pragma once

#include <array>
#include <string>

namespace tarnlog {

inline constexpr std::size_t kAutoTestFileCapacity = 128;

struct AutoTestConfig {
  AutoTestConfig() = default;
  // Empty; when `folder` isn't empty it is kept and the three files are
  // loaded (the result of that load is not kept).
  explicit AutoTestConfig(const std::string& folder);

  // Writes filelist.ini, realvalue.ini and mode.ini (creating the
  // AutoTestConfig folder, result ignored). False when `path` is empty, or
  // when there is neither a file nor a golden file to list: filelist.ini is
  // then left empty and the other two aren't written. A name is written as
  // the last element of its full path, or the name itself without one.
  bool Save() const;
  // Reads filelist.ini, then mode.ini, then realvalue.ini, stopping at the
  // first that fails. A flag is set only by its exact name with the number
  // 1; unknown names and other numbers leave the flags as they are. What was read before a failure
  // stays, and `fileCount` counts the names that really came in.
  bool Load();

  std::string path;
  std::array<double, 3> realA{};  // latitude, longitude, height
  std::array<double, 3> realB{};
  int fileCount = 0;
  std::array<std::string, kAutoTestFileCapacity> fileNames;  // name with extension
  std::array<std::string, kAutoTestFileCapacity> filePaths;  // full paths
  std::string goldenFile;
  unsigned char runStatic = 0;
  unsigned char runDynamic = 0;
  unsigned char runNoise = 0;
  unsigned char runInitial = 0;
  unsigned char runContinue = 0;
  unsigned char runNmea = 0;
  unsigned char runRangePlot = 0;
};

// The folder of the three files: <test folder>/AutoTestConfig
std::string AutoTestConfigFolder(const std::string& testFolder);

}  // namespace tarnlog
