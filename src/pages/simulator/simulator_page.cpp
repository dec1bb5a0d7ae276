#include "pages/simulator/simulator_page.h"

#include <cstdlib>

#include "frame/coordinate_fields.h"
#include "pages/simulator/simulator_scripts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kSimulatorTypes{"三院模拟器", "四院模拟器", "司博伦模拟器"};

// The receiver's GPS time runs this many seconds ahead of UTC.
constexpr double kLeapSeconds = 18.0;

constexpr const char* kExtractorTool = "ExtractAndProcessData.exe";
constexpr const char* kComparisonTool = "SimulatorDataProcess.exe";

double NumberOf(const TextField& field) {
  return std::atof(field.text.c_str());
}

}  // namespace

SimulatorProDlg::SimulatorProDlg(PageParent& parent, PageHost& host)
    : Page(parent, host, "SimulatorProDlg"),
      smltType(*this, "SmltType", kSimulatorTypes),
      smltFile(*this, "OpenSmltFile"),
      openSmltFile(
          *this, "OpenSmltFile",
          [this] {
            if (const std::optional<std::string> path = Host().ChooseFile(filters::kAllFilesFirst))
              smltFile.text = *path;
          }),
      asciiFile(*this, "OpenASCⅡ"),
      openAscii(*this, "OpenASCⅡ",
                [this] {
                  for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
                    AddSourceFile(path);
                }),
      gpstDiff(*this, "GPST_Diff(ST-RT)", "0"),
      utcDiff(*this, "UTC_Diff(ST-RT)", "16"),
      startTime(*this, "StartTime", "0"),
      generateReport(*this, "GenerateReport", false),
      sourceFiles(*this, "ASCII FILE LIST", {"ID", "NAME", "TYPE", "FILEPATH"}),
      deleteOne(*this, "Delete One Item", [this] { DeleteOneItem(); }),
      deleteAll(*this, "Delete All Item", [this] { DeleteAllItem(); }),
      startProcess(*this, "StartProcess", [this] { Process(); }) {
  smltType.onChanged = [this] { OnTypeChanged(); };
  gpstDiff.onChanged = [this] { OnGpstDiffChanged(); };
}

void SimulatorProDlg::Start() {
  Page::Start();
  sources_.clear();
  OnTypeChanged();
}

void SimulatorProDlg::OnTypeChanged() {
  startTime.visible = smltType.selected == kSpirentSimulator;
}

// The UTC difference follows the GPS one while it is typed; a field being
// emptied or a sign begun leaves it alone.
void SimulatorProDlg::OnGpstDiffChanged() {
  if (gpstDiff.text.empty() || gpstDiff.text == "-") return;
  utcDiff.text = DialogNumberText(NumberOf(gpstDiff) + kLeapSeconds);
}

void SimulatorProDlg::AddSourceFile(const std::string& path) {
  SimulatorSource source;
  static_cast<FileSlotPaths&>(source) = FileSlotPathsOf(path, &source.extension);
  for (const SimulatorSource& listed : sources_) {
    if (listed.path == source.path) {
      Message(kSimulatorOpenAnotherFile);
      return;
    }
  }
  if (sources_.size() >= kSimulatorSourceSlots) return;
  source.drive = SplitPath(source.path).drive;
  asciiFile.text = source.path;
  sources_.push_back(std::move(source));
  sourceFiles.rows.push_back({std::to_string(sources_.size()), sources_.back().nameWithExtension,
                              "ASCII", sources_.back().path});
}

void SimulatorProDlg::DeleteOneItem() {
  if (sources_.empty()) {
    Message(kSimulatorListEmpty);
    return;
  }
  const int selected = sourceFiles.selected;
  if (selected < 0 || selected >= static_cast<int>(sources_.size())) {
    Message(kSimulatorNoItemSelected);
    return;
  }
  sources_.erase(sources_.begin() + selected);
  sourceFiles.rows.erase(sourceFiles.rows.begin() + selected);
  for (std::size_t i = 0; i < sourceFiles.rows.size(); ++i)
    sourceFiles.rows[i][0] = std::to_string(i + 1);
  sourceFiles.selected = -1;
}

void SimulatorProDlg::DeleteAllItem() {
  sources_.clear();
  sourceFiles.rows.clear();
  sourceFiles.selected = -1;
}

void SimulatorProDlg::EnableAll(bool enabled) {
  for (Field* field : Fields())
    field->enabled = enabled;
}

SimulatorRun SimulatorProDlg::RunFromFields() const {
  SimulatorRun run;
  run.startFolder = StartFolder();
  run.simulatorPath = smltFile.text;
  run.type = smltType.selected;
  run.gpstDifference = NumberOf(gpstDiff);
  run.utcDifference = NumberOf(utcDiff);
  run.startTime = NumberOf(startTime);
  run.generateReport = generateReport.checked;
  run.sources = sources_;
  return run;
}

void SimulatorProDlg::Process() {
  SimulatorRun run = RunFromFields();
  StartWorker([this, run = std::move(run)]() mutable { Worker(std::move(run)); });
}

void SimulatorProDlg::Worker(SimulatorRun run) {
  if (run.simulatorPath.empty()) return FailCheck(kSimulatorChooseSimulatorFirst);
  if (run.sources.empty()) return FailCheck(kSimulatorChooseSourceFirst);
  if (run.type == kSpirentSimulator && run.startTime < 0)
    return FailCheck(kSimulatorEnterStartTime);
  SetStatus("Status: Processing...");
  EnableAll(false);

  // The first log's folder keeps its trailing separator, which puts the
  // root inside it.
  const std::string root = run.sources[0].folder + "Simulator" + FullStamp();
  MakeFolder(root);
  const std::string exe = JoinPath(run.startFolder, "EXE");
  if (run.generateReport) {
    CopyFileReplacing(JoinPath(run.startFolder, "Config/Simulator_report.xlsx"),
                      JoinPath(root, "Simulator_report.xlsx"));
  }

  SimulatorPreprocess preprocess;
  preprocess.extractorPath = JoinPath(exe, kExtractorTool);
  preprocess.simulatorPath = run.simulatorPath;
  preprocess.middleFile = JoinPath(root, "SmltMiddleFile.txt");
  preprocess.type = run.type;
  preprocess.startTime = run.startTime;
  const std::string preprocessScript = JoinPath(root, "SmltPreprocess.bat");
  WriteWholeFile(preprocessScript, SmltPreprocessText(preprocess), FileMode::kText);
  RunScriptAndWait(preprocessScript);
  RemoveFile(preprocessScript);

  std::vector<ChildProcess> runs;
  for (std::size_t i = 0; i < run.sources.size(); ++i) {
    SimulatorSource& source = run.sources[i];
    source.outputFolder = JoinPath(root, source.name);
    MakeFolder(source.outputFolder);
    for (const char* tool : {kExtractorTool, kComparisonTool})
      CopyFileNoOverwrite(JoinPath(exe, tool), JoinPath(source.outputFolder, tool));
    SimulatorLogScript script;
    script.drive = source.drive;
    script.outputFolder = source.outputFolder;
    script.logPath = source.path;
    script.middleFile = preprocess.middleFile;
    script.gpstDifference = run.gpstDifference;
    script.utcDifference = run.utcDifference;
    script.index = static_cast<int>(i) + 1;
    source.scriptPath = JoinPath(source.outputFolder, "ProcessFile.bat");
    WriteWholeFile(source.scriptPath, ProcessFileText(script), FileMode::kText);
    runs.push_back(LaunchScript(source.scriptPath));
    // All logs fill the same workbook, so with the report they run one
    // after the other; without it all at once.
    if (run.generateReport) WaitChild(runs.back());
  }
  for (ChildProcess& child : runs)
    WaitChild(child);
  Host().PostFinished([this] { OnFinished(); });
}

// The run's reset puts the UTC difference at 16, not at the GPS value plus
// 18 that typing gives.
void SimulatorProDlg::OnFinished() {
  SetStatus("Status: Finished!");
  DeleteAllItem();
  gpstDiff.text = "0";
  utcDiff.text = "16";
  startTime.text = "0";
  smltType.Select(kThirdAcademySimulator);
  OnTypeChanged();
  smltFile.text.clear();
  asciiFile.text.clear();
  generateReport.checked = false;
  EnableAll(true);
}

}  // namespace tarnlog
