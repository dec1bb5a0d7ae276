#include "pages/static/static_run.h"

#include "extract/extract_main.h"
#include "pages/static/nmea_conversion.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

const std::string kSeparator(1, kPathSeparator);

// The board and process values are one digit each in the analyser's
// arguments; board value 10 is written as the two digits it has.
std::string Digits(int value) {
  return std::to_string(value);
}

bool Readable(const std::string& path) {
  InFile probe;
  return probe.Open(path, FileMode::kBinary);
}

void ConvertOrExtract(const StaticRun& run, const StaticFileSlot& file, ExtractionState& state) {
  if (file.board == kBoardTrimble || file.board == kBoardNema) {
    ConvertNmeaWithZdaLog(file.copyPath, run.extraction.nmeaCrc);
    return;
  }
  if (file.board == kBoardGga) {
    ConvertGgaLog(file.copyPath, run.extraction.nmeaCrc, run.dayOfWeek);
    return;
  }
  ExtractFile(run, file, file.process, state);
}

}  // namespace

std::string ResultFolder(const ResultFolderChoice& choice) {
  const std::string stamped =
      choice.word + choice.stamp + (choice.ppp ? std::string("_PPP") : std::string());
  if (choice.heldRoot.empty() && choice.savePathText.empty()) {
    if (choice.changePathText.empty()) return choice.firstFolder + kSeparator + stamped;
    return choice.firstFolder + kSeparator + "Static_" + choice.changePathText;
  }
  if (!choice.heldRoot.empty()) return choice.heldRoot + kSeparator + stamped;
  // A typed save path: "RTKStatic" follows it without a separator, the
  // other words with one.
  if (choice.word == "RTKStatic") return choice.savePathText + stamped;
  return choice.savePathText + kSeparator + stamped;
}

std::string PlotScriptPath(const StaticRun& run, const StaticFileSlot& file) {
  return file.outputFolder + kSeparator + "RTKSPlot" + run.stamp + ".bat";
}

std::string CleanupScriptPath(const StaticRun& run, const StaticFileSlot& file) {
  return file.outputFolder + kSeparator + "Del" + run.stamp + ".bat";
}

std::string PlotScriptText(const StaticRun& run, const StaticFileSlot& file, int reportIndex) {
  std::string text = DriveLine(file.outputFolder);
  text += "cd \"" + file.outputFolder + "\"\n";
  if (file.process == kProcessEphemeris) {
    text += run.analyserPath + "  \"" + file.outputFolder + "\" JPG  realvalue.txt 5\n";
  } else {
    text += "\"" + run.analyserPath + "\"  \"" + file.outputFolder + "\" JPG  realvalue.txt " +
            Digits(file.board) + " " + Digits(file.process) + " " + std::to_string(reportIndex) +
            "\n";
  }
  text += "exit\n";
  return text;
}

std::string ComparisonPlotScriptText(const StaticFileSlot& file) {
  return DriveLine(file.outputFolder) + "cd \"" + file.outputFolder + "\"\nllherroRTK_M.exe \"" +
         file.outputFolder + "\" JPG realvalue.txt 5\nexit\n";
}

std::string CleanupScriptText(const StaticRun& run, const StaticFileSlot& file) {
  const std::string enterFolder = DriveLine(file.outputFolder) + "cd " + file.outputFolder + "\n";
  // The cd into FIG is relative, and written with the system's backslash.
  const std::string figures = "del llherroRTK_M.exe\n\ncd " + file.name + "\\FIG\ndel *.fig\n";
  std::string text;
  if (run.copyFiles) text += enterFolder + "del *" + run.extension + "\n";
  if (!run.deleteTables && !run.deleteFigures) return text + enterFolder + figures + "exit\n";
  if (run.deleteTables) text += enterFolder + "del *.txt\n";
  if (run.deleteFigures) text += figures;
  return text + "exit\n";
}

ExtractionArguments ExtractionArgumentsFor(int process, const std::string& outputFolder,
                                           const std::string& input) {
  ExtractionArguments arguments;
  switch (process) {
    case kProcessEphemeris:
      arguments.texts = {outputFolder,       "-i",  input,           "-EG",
                         "gpsephema.txt",    "-EB", "bd2ephema.txt", "-EL",
                         "gloephemerisa.txt"};
      break;
    case kProcessArtk:
      arguments.texts = {outputFolder,  "-i",  input,        "-M",  "match.txt", "-BP",
                         "bestpos.txt", "-PP", "psrpos.txt", "-RP", "rtkpos.txt"};
      break;
    case kProcessEvent:
      arguments.texts = {outputFolder, "-i",        input, "-BP",      "bestpos.txt",
                         "-GG",        "gngga.txt", "-EV", "event.txt"};
      break;
    default:
      arguments.texts = FullExtractionVector(outputFolder, input);
      arguments.count = static_cast<int>(arguments.texts.size()) - 1;
      return arguments;
  }
  arguments.count = static_cast<int>(arguments.texts.size());
  return arguments;
}

void ExtractFile(const StaticRun& run, const StaticFileSlot& file, int process,
                 ExtractionState& state) {
  const std::string& input = run.copyFiles ? file.copyPath : file.path;
  ExtractionArguments arguments = ExtractionArgumentsFor(process, file.outputFolder, input);
  std::vector<char*> argv = ArgvOf(arguments.texts);
  ExtractMain(arguments.count, argv.data(), run.extraction, state);
}

void WriteRealValueFile(const std::string& folder, const Coordinates& master,
                        const Coordinates& slave, bool ephemerisComparison) {
  OutFile out;
  const char* pattern = ephemerisComparison ? "%.9lf,%.9lf,%.6lf\n" : "%.11lf,%.11lf,%.6lf\n";
  if (!out.Open(folder + kSeparator + "realvalue.txt",
                ephemerisComparison ? FileMode::kBinary : FileMode::kText)) {
    return;
  }
  for (const Coordinates* set : {&master, &slave})
    out.Printf(pattern, set->latitude, set->longitude, set->height);
}

void PrepareOutputFolder(const StaticRun& run, StaticFileSlot& file, bool ephemerisComparison) {
  file.outputFolder = run.resultFolder + kSeparator + file.name;
  MakeFolder(file.outputFolder);
  WriteRealValueFile(file.outputFolder, run.master, run.slave, ephemerisComparison);
  if (run.copyFiles || file.board == kBoardTrimble || file.board == kBoardNema ||
      file.board == kBoardGga) {
    file.copyPath = file.outputFolder + kSeparator + file.name + run.extension;
    CopyFileNoOverwrite(file.path, file.copyPath);
  }
}

void RunStaticPasses(StaticRun& run, ExtractionState& state) {
  if (run.copyReport) {
    CopyFileReplacing(run.reportTemplatePath, run.resultFolder + kSeparator + "Static_report.xlsx");
  }

  for (StaticFileSlot& file : run.files)
    PrepareOutputFolder(run, file, false);

  // One extraction overlaps the analyser of the file before it; waiting on
  // the last started analyser keeps it to one at a time even past a skipped
  // file.
  ChildProcess* previous = nullptr;
  for (std::size_t slot = 0; slot < run.files.size(); ++slot) {
    StaticFileSlot& file = run.files[slot];
    if (!Readable(file.path)) continue;
    if (run.onExtractionStart) run.onExtractionStart(slot);
    ConvertOrExtract(run, file, state);
    if (run.onExtractionEnd) run.onExtractionEnd(slot);
    state.nmea.gga = NmeaDayCells{};
    const int reportIndex = run.generateReport ? static_cast<int>(slot) + 1 : 0;
    WriteWholeFile(PlotScriptPath(run, file), PlotScriptText(run, file, reportIndex),
                   FileMode::kText);
    if (previous) WaitChild(*previous);
    file.plot = LaunchScript(PlotScriptPath(run, file));
    previous = &file.plot;
  }

  for (StaticFileSlot& file : run.files) {
    WaitChild(file.plot);
    const std::string cleanupPath = CleanupScriptPath(run, file);
    WriteWholeFile(cleanupPath, CleanupScriptText(run, file), FileMode::kText);
    if (!run.deleteTables && !run.deleteFigures) continue;
    file.cleanup = LaunchScript(cleanupPath);
    WaitChild(file.cleanup);
    RemoveFile(cleanupPath);
    if (run.deleteFigures) RemoveFile(PlotScriptPath(run, file));
  }
}

}  // namespace tarnlog
