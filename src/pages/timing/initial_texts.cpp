#include "pages/timing/initial_texts.h"

#include "platform/fast_format.h"
#include "platform/paths.h"
#include "platform/saturating.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

std::string PositionLine(const char* label, const Coordinates& at) {
  return FormatString("%s %.9lf %.9lf %lf\n", label, at.latitude, at.longitude, at.height);
}

}  // namespace

std::string ControlText(const TestSet& set, std::string_view parameterText) {
  const int seconds = SaturatingInt(static_cast<double>(set.time));
  const bool connected = set.connect == 1;
  std::string text = "TestType: " + set.processType + "\n";
  text += "LogType: " + set.logType + "\n";
  text += "ChipType: " + set.chipType + "\n";
  text += FormatString("TestTimes: %d\n", set.testTimes);
  text += FormatString("OnTime: %d\n", connected ? seconds : 0);
  text += FormatString("OffTime: %d\n", connected ? 0 : seconds);
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
  return DriveLine(set.scriptPath) + EnterFolderLine(set.outputFolder) +
         "Reacq_TTFF_DataProcess.exe \"" + set.FilePath() + "\" \"" +
         JoinPath(set.outputFolder, kControlFileName) + "\"  " + std::to_string(number) + "\nexit";
}

std::string PpsScriptText(const std::vector<PpsScriptRow>& rows, int method) {
  std::string text;
  for (const PpsScriptRow& row : rows) {
    text += DriveLine(row.folder) + EnterFolderLine(row.folder);
    text += "PPS.exe \"" + row.folder + "\" \"" + row.csvPath + "\" \"" + row.stem + "\" " +
            std::to_string(method) + "\n\n";
  }
  return text + "exit\n";
}

std::string PpsCleanScriptText(const std::vector<PpsScriptRow>& rows) {
  std::string text;
  for (const PpsScriptRow& row : rows)
    text += DriveLine(row.folder) + EnterFolderLine(row.folder) + "Del PPS.exe\n";
  return text + "exit\n";
}

}  // namespace tarnlog
