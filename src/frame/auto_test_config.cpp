#include "frame/auto_test_config.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

// The three files carry their "\r\n" line ends as they stand: they are
// written in binary mode, so every line ends in exactly one CR LF.
constexpr FileMode kConfigWriteMode = FileMode::kBinary;

constexpr std::size_t kFileListLineLimit = 1024;
constexpr std::size_t kModeLineLimit = 128;

constexpr std::string_view kFileList = "filelist.ini";
constexpr std::string_view kRealValues = "realvalue.ini";
constexpr std::string_view kModes = "mode.ini";

std::string ConfigFilePath(const std::string& testFolder, std::string_view file) {
  return JoinPath(AutoTestConfigFolder(testFolder), file);
}

// One line of at most size-1 bytes (the rest of a longer one skipped), with
// its ending "\r\n" or "\n" cut; false at the end of the file.
bool ReadConfigLine(InFile& in, char* line, std::size_t size) {
  std::size_t length = in.ReadLineSkippingRest(line, size);
  if (length == 0) return false;
  if (line[length - 1] == '\n') line[--length] = '\0';
  if (length > 0 && line[length - 1] == '\r') line[--length] = '\0';
  return true;
}

// The last element of a path, its extension whole.
std::string NameWithExtension(const std::string& path) {
  return path.substr(path.find_last_of(kPathSeparator) + 1);
}

// "%d" as the readers' formats take it: blanks, a sign and at least one
// digit; a value beyond int's range is held at its end.
bool ReadInt(const char* text, int& value) {
  while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
    ++text;
  const char* digits = (*text == '-' || *text == '+') ? text + 1 : text;
  if (*digits < '0' || *digits > '9') return false;
  value = TextToInt(text);
  return true;
}

struct ModeFlag {
  std::string_view name;
  unsigned char AutoTestConfig::*flag;
};

// The tab captions, with "Nmea" where the tab reads "Nema".
constexpr ModeFlag kModeFlags[] = {
    {"Static", &AutoTestConfig::runStatic},       {"Dynamic", &AutoTestConfig::runDynamic},
    {"Noise", &AutoTestConfig::runNoise},         {"Initial", &AutoTestConfig::runInitial},
    {"Continue", &AutoTestConfig::runContinue},   {"Nmea", &AutoTestConfig::runNmea},
    {"RangePlot", &AutoTestConfig::runRangePlot},
};

bool WriteFileList(const AutoTestConfig& config) {
  OutFile out;
  if (!out.Open(ConfigFilePath(config.path, kFileList), kConfigWriteMode)) return false;
  const int count = std::clamp(config.fileCount, 0, static_cast<int>(kAutoTestFileCapacity));
  if (count == 0 && config.goldenFile.empty()) return false;  // the file stays empty
  out.Printf("FileList:%d\r\n", count);
  for (int i = 0; i < count; ++i) {
    const std::string& name =
        config.filePaths[i].empty() ? config.fileNames[i] : NameWithExtension(config.filePaths[i]);
    out.Printf("%s\r\n", name.c_str());
  }
  out.Write("\r\n");
  if (!config.goldenFile.empty()) {
    out.Write("GoldenFile:\r\n");
    out.Printf("%s\r\n", NameWithExtension(config.goldenFile).c_str());
  }
  return true;
}

void WriteRealValues(const AutoTestConfig& config) {
  OutFile out;
  if (!out.Open(ConfigFilePath(config.path, kRealValues), kConfigWriteMode)) return;
  for (const auto* value : {&config.realA, &config.realB}) {
    out.Printf("%.10f,%.10f,%.10f\r\n", (*value)[0], (*value)[1], (*value)[2]);
  }
}

void WriteModes(const AutoTestConfig& config) {
  OutFile out;
  if (!out.Open(ConfigFilePath(config.path, kModes), kConfigWriteMode)) return;
  for (const ModeFlag& mode : kModeFlags) {
    out.Printf("%.*s,%d\r\n", static_cast<int>(mode.name.size()), mode.name.data(),
               config.*mode.flag);
  }
}

bool ReadFileList(AutoTestConfig& config) {
  InFile in;
  if (!in.Open(ConfigFilePath(config.path, kFileList), FileMode::kText)) return false;
  char line[kFileListLineLimit + 1];
  config.fileCount = 0;
  while (ReadConfigLine(in, line, sizeof line)) {
    if (std::strncmp(line, "FileList", 8) == 0) {
      const char* colon = std::strchr(line, ':');
      int count = 0;
      if (colon == nullptr || !ReadInt(colon + 1, count)) continue;
      // All `count` lines are names; those past the capacity are passed over.
      for (int i = 0; i < count; ++i) {
        if (!ReadConfigLine(in, line, sizeof line)) return false;  // fewer names than the count
        if (i >= static_cast<int>(kAutoTestFileCapacity)) continue;
        config.fileNames[i] = line;
        config.filePaths[i] = JoinPath(config.path, line);
        config.fileCount = i + 1;
      }
    } else if (std::strncmp(line, "GoldenFile", 10) == 0) {
      if (!ReadConfigLine(in, line, sizeof line)) return false;
      config.goldenFile = line;
    }
  }
  return true;
}

bool ReadModes(AutoTestConfig& config) {
  InFile in;
  if (!in.Open(ConfigFilePath(config.path, kModes), FileMode::kText)) return false;
  char line[kModeLineLimit + 1];
  while (ReadConfigLine(in, line, sizeof line)) {
    // "<name>,<number>": the name runs up to the first comma.
    const char* comma = std::strchr(line, ',');
    int value = 0;
    if (comma == nullptr || comma == line || !ReadInt(comma + 1, value) || value != 1) continue;
    const std::string_view name(line, static_cast<std::size_t>(comma - line));
    for (const ModeFlag& mode : kModeFlags) {
      if (mode.name == name) config.*mode.flag = 1;
    }
  }
  return true;
}

bool ReadRealValues(AutoTestConfig& config) {
  InFile in;
  if (!in.Open(ConfigFilePath(config.path, kRealValues), FileMode::kText)) return false;
  char line[kFileListLineLimit + 1];
  for (auto* value : {&config.realA, &config.realB}) {
    if (!ReadConfigLine(in, line, sizeof line)) return false;
    // Values land in place as they are read: a line cut short keeps the
    // ones before the cut.
    if (std::sscanf(line, "%lf,%lf,%lf", &(*value)[0], &(*value)[1], &(*value)[2]) != 3) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string AutoTestConfigFolder(const std::string& testFolder) {
  return JoinPath(testFolder, "AutoTestConfig");
}

AutoTestConfig::AutoTestConfig(const std::string& folder) {
  if (folder.empty()) return;
  path = folder;
  Load();
}

bool AutoTestConfig::Save() const {
  if (path.empty()) return false;
  MakeFolder(AutoTestConfigFolder(path));
  // With nothing to list the save ends at the empty filelist.ini.
  if (!WriteFileList(*this)) return false;
  WriteRealValues(*this);
  WriteModes(*this);
  return true;
}

bool AutoTestConfig::Load() {
  return ReadFileList(*this) && ReadModes(*this) && ReadRealValues(*this);
}

}  // namespace tarnlog
