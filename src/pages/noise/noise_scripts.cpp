#include "pages/noise/noise_scripts.h"

#include "frame/frame_texts.h"
#include "platform/fast_format.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

// A production run always copies the processor under this name.
constexpr const char* kMfgProcessorName = "OfflineProcessor.exe";

// The production script goes back to the pair folder with "%s \"%s\"" over
// "\r\ncd " and the folder, so two blanks stand between cd and the folder.
constexpr const char* kMfgReturnToPair = "\r\ncd ";

// ExtraData.exe takes the pair folder with the separator doubled after it;
// the Windows program writes two backslashes there, Linux the native one.
constexpr char kExtraDataFolderEnd[] = {kPathSeparator, kPathSeparator, '\0'};

// The version the production plotter records in the result file: the
// program's own, as its title shows it.
constexpr std::string_view kMfgPlotterVersion = kDialogTitle;

// The line that opens a clean-up step: the drive, then a cd without quotes.
std::string EnterFolder(const CleanupScript& script, const std::string& folder) {
  return script.drive + "\ncd " + folder + "\n";
}

// SBAS/IRNSS runs leave their converted captures in the pair folder.
std::string SbasIrnssCleanup(const CleanupScript& script) {
  if (!script.sbasIrnss) return {};
  return EnterFolder(script, script.pairFolder) + "del *" + script.lastExtension + "\n";
}

// The form with both flags off. It names both system folders whatever the
// board made, and deletes the figures in JPG.
std::string BothFlagsOffCleanup(const CleanupScript& script) {
  return EnterFolder(script, script.pairFolder) +
         "cd GPSGAL\n"
         "del OfflineProcessor.exe\n"
         "cd..\n"
         "cd BD2GLO\n"
         "del OfflineProcessor.exe\n"
         "cd..\n"
         "\ncd JPG\n"
         "del *.fig\n"
         "exit\n";
}

// "Del TXT": the plotter's tables that are there now are moved into JPG,
// every table of the pair folder goes, and the kept ones come back.
std::string DelTxtCleanup(const CleanupScript& script) {
  const std::string& pair = script.pairFolder;
  const std::string jpg = JoinPath(pair, "JPG");
  std::vector<std::string> kept;
  for (const char* name : kKeptTables) {
    if (PathExists(JoinPath(pair, name))) kept.emplace_back(name);
  }
  std::string text = EnterFolder(script, pair);
  for (const std::string& name : kept)
    text += "copy " + JoinPath(pair, name) + " " + JoinPath(jpg, name) + "\n";
  text += "del *.txt\n";
  text += "del OfflineProcessor.exe\n";
  for (const std::string& name : kept) {
    text += "copy " + JoinPath(jpg, name) + " " + JoinPath(pair, name) + "\n";
    text += "del " + JoinPath(jpg, name) + "\n";
  }
  return text;
}

}  // namespace

std::string ProcessorScriptText(const ProcessorScript& script) {
  const std::string name = script.production ? kMfgProcessorName : script.processorName;
  std::string text = script.drive;
  for (const SystemFolder& folder : script.systemFolders) {
    text += "\r\ncd " + Quoted(JoinPath(script.pairFolder, folder.name)) + "\r\n";
    if (script.selfNoise) {
      text += name + " -c control.txt -r " + Quoted(script.roverPath) + "\r\n";
    } else {
      text += name + " -c control.txt -b " + Quoted(script.basePath) + " -r " +
              Quoted(script.roverPath) + "\r\n";
    }
    text += "move ADR*.txt ..\r\n";
    text += "move PSR*.txt ..\r\n";
    text += "move pvt.txt ..\r\n";
  }
  if (script.production) {
    text += std::string(kMfgReturnToPair) + " " + Quoted(script.pairFolder) + "\r\n";
    if (script.extraData) {
      text += "ExtraData.exe  " + Quoted(script.pairFolder + kExtraDataFolderEnd) + " " +
              Quoted(script.roverPath) + "\r\n";
    }
  }
  text += "exit\r\n";
  return text;
}

std::string PlotterScriptText(const PlotterScript& script) {
  std::string text = script.drive;
  text += "\ncd " + Quoted(script.pairFolder) + "\n";
  text += script.plotterName + " " + Quoted(script.pairFolder) + "  " + Quoted(script.boardWord) +
          " " + script.elevation + " 1 " + script.lockTime + " " + script.cn0;
  char number[32];
  FormatText(number, sizeof number, "    %d \n", script.pairNumber);
  text += number;
  text += "exit\n";
  return text;
}

std::string MfgPlotterScriptText(const MfgPlotterScript& script) {
  std::string text = script.drive;
  text += "\ncd " + Quoted(script.pairFolder) + "\n";
  if (script.imuTools) {
    text += "IMUdataGet.exe -r " + script.roverPath + " -c config.txt\r\n";
    text += "GyoaccNoiseProcessFCT.exe\r\n";
  }
  // The plotter's arguments in its order. One blank parts each from the
  // next; three stand before the version text, which ends the line.
  const std::string arguments[] = {
      Quoted(script.pairFolder),
      Quoted(script.boardWord),
      script.elevation,
      "0",
      script.lockTime,
      script.cn0,
      script.baseSize,
      script.roverSize,
      script.subSatNum,
      script.subObsNum,
      script.subMaxCno,
      script.subTotalCno,
      script.clockDrift,
      script.imuState,
      "0",
      Quoted(script.resultPath),
  };
  text += "NoisePlot.exe";
  for (const std::string& argument : arguments)
    text += " " + argument;
  text += "   " + Quoted(kMfgPlotterVersion) + "\n";
  text += "exit\n";
  return text;
}

std::string CaptureSizeText(unsigned long long bytes) {
  const unsigned long long kilobytes = bytes / 1024;
  char text[64];
  FormatText(text, sizeof text, "%.5f", static_cast<double>(kilobytes) / 1024.0);
  return text;
}

std::string NoiseCleanupText(const CleanupScript& script) {
  std::string text = SbasIrnssCleanup(script);
  if (!script.delTxt && !script.delFig) return text + BothFlagsOffCleanup(script);
  if (script.delTxt) text += DelTxtCleanup(script);
  if (script.delFig) {
    text += "del NoisePlot.exe\n";
    text += EnterFolder(script, JoinPath(script.pairFolder, "JPG"));
    text += "del *.fig\n";
  }
  text += "exit\n";
  return text;
}

std::string MfgCleanupText(const CleanupScript& script) {
  // The script runs from the program's start folder, so it goes into the
  // pair folder before it reaches for the system folders below it. The
  // switches after the processor's name are part of the text as written.
  std::string text = EnterFolder(script, script.pairFolder);
  text +=
      "cd BD2GLO\n"
      "del OfflineProcessor.exe \\s \\q\n"
      "cd ..\n"
      "cd GPSGAL\n"
      "del OfflineProcessor.exe \\s \\q\n"
      "cd ..\n";
  text += SbasIrnssCleanup(script);
  if (!script.delTxt && !script.delFig) return text + BothFlagsOffCleanup(script);
  if (script.delTxt) text += DelTxtCleanup(script);
  if (script.delFig) {
    // The production plotter keeps its figures one folder further down.
    text += "del NoisePlot.exe\n";
    text += EnterFolder(script, script.pairFolder);
    text += "cd JPG\\FIG\n";
    text += "del *.fig\n";
  }
  text += "exit\n";
  return text;
}

}  // namespace tarnlog
