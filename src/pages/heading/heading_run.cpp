// The heading page's Process. Both flows run on the calling thread, which
// stays blocked through the run, and each script is awaited before the next
// one starts.
#include "frame/command_line.h"
#include "pages/heading/heading_page.h"
#include "pages/heading/heading_scripts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"

namespace tarnlog {
namespace {

constexpr const char* kHeadingTools[] = {"HeadingErrorPro.exe", "ExtractAndProcessData.exe"};
constexpr std::string_view kReportTool = "GenerateReport.exe";
constexpr std::string_view kDirlistName = "DirlistFile.txt";
constexpr std::string_view kReportScriptName = "GenerateReport.bat";

// The three coordinate fields as plain text-to-double conversions, with no
// range check: the tool gets what was typed.
Coordinates ReadCoordinates(const CoordinateFields& fields) {
  return {ArgToDouble(fields.latitude.text), ArgToDouble(fields.longitude.text),
          ArgToDouble(fields.height.text)};
}

}  // namespace

void Heading::Process() {
  // The first file's type chooses; with no file the Static flow says so.
  if (sources_.slots[0].type == kHeadingDynamic) {
    DynamicFlow();
  } else {
    StaticFlow();
  }
  generateReport.checked = false;
  if (batchFlag != 0) SelfTerminate();
}

void Heading::StaticFlow() {
  if (sources_.count == 0) {
    FailCheck(kHeadingChooseAsciiFirst);
    return;
  }
  process.enabled = false;
  SetStatus("Status: Processing");
  const std::string heading = trueHeading.text;
  const std::string result = TakeResultFolder();
  // Every static run gets the template; "GenerateReport" plays no part here.
  CopyFileReplacing(ConfigPath("Heading_report.xlsx"), JoinPath(result, "Heading_report.xlsx"));
  const std::string control =
      HeadingControlText(ReadCoordinates(baseCoordinates), ReadCoordinates(ant1Coordinates),
                         ReadCoordinates(ant2Coordinates));

  for (int i = 0; i < sources_.count; ++i) {
    const PairedFileSlot& slot = sources_.slots[static_cast<std::size_t>(i)];
    const std::string folder = JoinPath(result, slot.name);
    MakeRunFolder(folder, Host());
    CopyTools(folder);
    WriteWholeFile(JoinPath(folder, kHeadingControlName), control, FileMode::kText);
    StaticHeadingScript script;
    script.drive = PathPart(folder, 1);
    script.folder = folder;
    script.logPath = slot.path;
    script.trueHeading = heading;
    script.fileNumber = i + 1;
    const std::string path = JoinPath(folder, "Plot" + stamp_ + ".bat");
    WriteWholeFile(path, StaticHeadingScriptText(script), FileMode::kText);
    RunScriptAndWait(path);
  }
  FinishRun();
}

void Heading::DynamicFlow() {
  if (sources_.count == 0) {
    FailCheck(kHeadingChooseAsciiFirst);
    return;
  }
  if (references_.count == 0) {
    FailCheck(kHeadingChooseRefFirst);
    return;
  }
  if (pairs_.pairCount == 0) {
    FailCheck(kHeadingSetPairsFirst);
    return;
  }
  process.enabled = false;
  SetStatus("Status: Processing");
  const std::string result = TakeResultFolder();

  bool report = generateReport.checked;
  const std::string dirlistPath = JoinPath(result, kDirlistName);
  OutFile dirlist;
  if (report) {
    CopyFileReplacing(ConfigPath("HeadingReport.xlsx"), JoinPath(result, "HeadingReport.xlsx"));
    CopyFileReplacing(ExePath(kReportTool), JoinPath(result, kReportTool));
    if (!dirlist.Open(dirlistPath, FileMode::kText)) {
      Message(kHeadingReportOpenFailed);
      report = false;
    }
  }
  // The paths are looked up now, by the slot numbers the pairs keep.
  ResolvePairs(pairs_, sources_, references_, result);
  const int pairCount = pairs_.CompletePairs();
  for (int i = 0; i < pairCount; ++i) {
    const SourceReferencePair& pair = pairs_.pairs[static_cast<std::size_t>(i)];
    MakeRunFolder(pair.folder, Host());
    CopyTools(pair.folder);
    if (report) dirlist.Printf("%s\n", pair.folder.c_str());
  }
  dirlist.Close();

  // The Dynamic flow writes no HeadingControl.txt: its script names none.
  const std::string sourceKindText = sourceKind.SelectedText();
  const std::string referenceKindText = referenceKind.SelectedText();
  for (int i = 0; i < pairCount; ++i) {
    const SourceReferencePair& pair = pairs_.pairs[static_cast<std::size_t>(i)];
    DynamicHeadingScript script;
    script.drive = PathPart(pair.folder, 1);
    script.pairFolder = pair.folder;
    script.sourcePath = pair.sourcePath;
    script.referencePath = pair.referencePath;
    script.sourceKind = sourceKindText;
    script.referenceKind = referenceKindText;
    const std::string path = JoinPath(pair.folder, "Plot" + stamp_ + ".bat");
    WriteWholeFile(path, DynamicHeadingScriptText(script), FileMode::kText);
    RunScriptAndWait(path);
  }

  if (report) {
    HeadingReportScript script;
    script.drive = PathPart(result, 1);
    script.resultFolder = result;
    script.reportPath = JoinPath(result, "HeadingReport.xlsx");
    script.dirlistPath = dirlistPath;
    const std::string path = JoinPath(result, kReportScriptName);
    WriteWholeFile(path, HeadingReportScriptText(script), FileMode::kText);
    RunScriptAndWait(path);
    RemoveFile(dirlistPath);
    RemoveFile(path);
    RemoveFile(JoinPath(result, kReportTool));
  }
  FinishRun();
}

std::string Heading::TakeResultFolder() {
  if (resultFolder.text.empty()) {
    // Named after the folder of the source added last.
    resultFolder.text = JoinPath(FolderOf(sources_.lastPath), "Heading" + stamp_);
    MakeFolder(resultFolder.text);
  }
  return resultFolder.text;
}

void Heading::CopyTools(const std::string& folder) const {
  for (const char* tool : kHeadingTools)
    CopyFileNoOverwrite(ExePath(tool), JoinPath(folder, tool));
}

void Heading::FinishRun() {
  SetStatus("Status: Finished");
  ClearAll();
  process.enabled = true;
}

}  // namespace tarnlog
