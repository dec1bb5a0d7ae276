#include "pages/timing/initial_texts.h"

#include <cstdarg>
#include <cstdio>

#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

std::string Formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

std::string Formatted(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const int size = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  if (size > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  return text;
}

// The scripts open with the drive of a path, which the system takes as its
// first two characters; a Linux path has none, so the line stays empty.
std::string DriveLine(std::string_view path) {
  return PathPart(path, 1) + "\n";
}

std::string EnterLine(std::string_view folder) {
  return "cd \"" + std::string(folder) + "\"\n";
}

std::string PositionLine(const char* label, const Coordinates& at) {
  return Formatted("%s %.9lf %.9lf %lf\n", label, at.latitude, at.longitude, at.height);
}

}  // namespace

std::string ControlText(const TestSet& set, std::string_view parameterText) {
  const int seconds = SaturatingInt(static_cast<double>(set.time));
  const bool connected = set.connect == 1;
  std::string text = "TestType: " + set.processType + "\n";
  text += "LogType: " + set.logType + "\n";
  text += "ChipType: " + set.chipType + "\n";
  text += Formatted("TestTimes: %d\n", set.testTimes);
  text += Formatted("OnTime: %d\n", connected ? seconds : 0);
  text += Formatted("OffTime: %d\n", connected ? 0 : seconds);
  if (IsHeadingLogType(set.logType)) {
    text += PositionLine("Base:", set.real);
    text += PositionLine("Rover:", set.rover);
  } else {
    text += PositionLine("RealPos:", set.real);
  }
  text += parameterText;
  text += "\n";
  return text;
}

std::string InitialCommandText(const TestSet& set, int number) {
  return DriveLine(set.scriptPath) + EnterLine(set.outputFolder) + "Reacq_TTFF_DataProcess.exe \"" +
         set.FilePath() + "\" \"" + JoinPath(set.outputFolder, kControlFileName) + "\"  " +
         std::to_string(number) + "\nexit";
}

std::string PpsScriptText(const std::vector<PpsScriptRow>& rows, int method) {
  std::string text;
  for (const PpsScriptRow& row : rows) {
    text += DriveLine(row.folder) + EnterLine(row.folder);
    text += "PPS.exe \"" + row.folder + "\" \"" + row.csvPath + "\" \"" + row.stem + "\" " +
            std::to_string(method) + "\n\n";
  }
  return text + "exit\n";
}

std::string PpsCleanScriptText(const std::vector<PpsScriptRow>& rows) {
  std::string text;
  for (const PpsScriptRow& row : rows)
    text += DriveLine(row.folder) + EnterLine(row.folder) + "Del PPS.exe\n";
  return text + "exit\n";
}

}  // namespace tarnlog
