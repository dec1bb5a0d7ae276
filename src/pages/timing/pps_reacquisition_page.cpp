#include "pages/timing/pps_reacquisition_page.h"

#include <cstdlib>
#include <limits>

#include "pages/timing/initial_command_line.h"
#include "pages/timing/initial_runs.h"
#include "pages/timing/parameter_text.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/saturating.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kMethodTexts{"频率计外接参考时钟", "使用参考PPS"};
const std::vector<std::string> kLogTypeTexts{"gga",      "psrposa",   "rtkposa", "bestposa",
                                             "headinga", "heading2a", "pppposa", "bestpos2a",
                                             "rtkpos2a", "pppnava",   "drpva"};
const std::vector<std::string> kProcessTypeTexts{"TTFF", "REACQ"};
const std::vector<std::string> kChipTypeTexts{"N2", "N1"};
const std::vector<std::string> kSignalTexts{"ConnectSignal", "DisconnectSignal"};
constexpr int kDisconnectSignal = 1;
constexpr int kTtffProcess = 0;
constexpr int kReacqProcess = 1;

// The limits the messages name are not the list's: it holds 100 sets.
constexpr std::string_view kChooseReacquisitionFiles =
    "You should choose reacquisition files! This is pps files set!";
constexpr std::string_view kChoosePpsFiles =
    "You should choose pps csv files! This is reacquisition files set!";
constexpr std::string_view kTooManyCsvFiles =
    "Two Many files be selected! The Max File Number is 16!";
constexpr std::string_view kTooManyLogs = "Too Many Files to Process! The Max file number is 16!";
constexpr std::string_view kCsvFormatError = "File format error! You should use *.csv or *.CSV";
constexpr std::string_view kCsvAlreadySelected = "File Already be Selected!";
constexpr std::string_view kSameProcessSet = "Already Exists a same Process Set!";
constexpr std::string_view kChooseAsciiFirst = "Please Choose ASCII File Firstly!";
constexpr std::string_view kChooseFileFirst = "Please choose file firstly";
constexpr std::string_view kNoItemSelected = "No item was selected!";
constexpr std::string_view kProcessWithoutFiles = "Please choose file firstly!";
constexpr std::string_view kChooseCsvFirst = "Please choose *csv file first!";
constexpr std::string_view kChooseAsciiAndSet =
    "Please Choose ASCII File and Set Control Parameter!";

// A typed time beyond float's range is held as an infinity, which the
// control file's whole seconds then hold at int's ends.
float ToFloat(double value) {
  constexpr double kMax = std::numeric_limits<float>::max();
  if (value > kMax) return std::numeric_limits<float>::infinity();
  if (value < -kMax) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

}  // namespace

PPSReacquisition::PPSReacquisition(PageParent& parent, PageHost& host)
    : Page(parent, host, "PPSReacquisition"),
      method(*this, "Method", kMethodTexts),
      openPpsCsvFile(*this, "Open PPS CSVFile", [this] { OpenPpsCsvFile(); }),
      logType(*this, "LogType", kLogTypeTexts),
      processType(*this, "ProcessType", kProcessTypeTexts),
      chipType(*this, "ChipType", kChipTypeTexts),
      signal(*this, "Signal", kSignalTexts, 0, {}, ChoiceStyle::kRadio),
      onTime(*this, "OnTime", "120"),
      offTime(*this, "OffTime", "10"),
      testTimes(*this, "TestTimes", "1000"),
      realValue(*this, "RealValue"),
      realCoordinates(*this, "RealValue"),
      roverPos(*this, "RoverPos"),
      roverCoordinates(*this, "RoverPos"),
      filePath(*this, "Open File"),
      openFile(*this, "Open File", [this] { OpenFile(); }),
      add(*this, "Add", [this] { Add(); }),
      savePath(*this, "Set Save Path"),
      setSavePath(*this, "Set Save Path", [this] { SetSavePath(); }),
      copyDataFiles(*this, "Copy Data Files", false),
      generateReport(*this, "GenerateReport", false),
      files(*this, "Files", {"ID", "NAME", "LOG TYPE", "PROCESS TYPE", "CHIP TYPE", "FILEPATH"}),
      deleteOne(*this, "Delete One Item", [this] { DeleteOneItem(); }),
      deleteAll(*this, "Delete All Item", [this] { DeleteAllItem(); }),
      process(*this, "Process", [this] { Process(); }) {
  realValue.onChanged = [this] { OnRealValueChanged(); };
  roverPos.onChanged = [this] { OnRoverPosChanged(); };
  signal.onChanged = [this] { OnSignalChanged(); };
  logType.onChanged = [this] { OnLogTypeChanged(); };
}

void PPSReacquisition::Start() {
  Page::Start();
  sets_.Clear();
  kind_ = InitialSetKind::kNone;
  if (!ReadParameterText(JoinPath(StartFolder(), kParameterFile), parameterText_)) {
    Message(kParameterMissing);
    Message(kCheckParameter);
    return;
  }
  OnSignalChanged();
  OnLogTypeChanged();
  RefreshOnTabChoice();
}

void PPSReacquisition::RefreshOnTabChoice() {
  RefillRealValueList(realValue);
  RefillRealValueList(roverPos);
  realValue.Select(0);
  roverPos.Select(0);
  OnRealValueChanged();
}

void PPSReacquisition::OnRealValueChanged() {
  if (realValue.selected < 0) return;
  const RealValueRow& row = Parent().RealValueStore().rows[realValue.selected];
  realCoordinates.Show(row);
  roverCoordinates.Show(row);
  roverPos.Select(realValue.selected);
}

void PPSReacquisition::OnRoverPosChanged() {
  if (roverPos.selected < 0) return;
  roverCoordinates.Show(Parent().RealValueStore().rows[roverPos.selected]);
}

void PPSReacquisition::OnSignalChanged() {
  const bool disconnected = signal.selected == kDisconnectSignal;
  onTime.enabled = !disconnected;
  offTime.enabled = disconnected;
}

void PPSReacquisition::OnLogTypeChanged() {
  const bool heading = IsHeadingLogType(logType.SelectedText());
  roverPos.enabled = heading;
  for (TextField* field :
       {&roverCoordinates.latitude, &roverCoordinates.longitude, &roverCoordinates.height})
    field->enabled = heading;
  realValueLabel_ = heading ? "BasePos" : "RealValue";
}

void PPSReacquisition::ShowRows() {
  files.rows.clear();
  files.selected = -1;
  for (int index : sets_.Occupied()) {
    const TestSet& set = sets_[index];
    files.rows.push_back({std::to_string(index + 1), set.fileName, set.logType, set.processType,
                          set.chipType, set.folder});
  }
}

void PPSReacquisition::OpenPpsCsvFile() {
  if (kind_ == InitialSetKind::kReacquisition) {
    Message(kChooseReacquisitionFiles);
    return;
  }
  if (sets_.OccupiedCount() >= static_cast<int>(kTestSetCount)) {
    Message(kTooManyCsvFiles);
    return;
  }
  const std::optional<std::string> chosen = Host().ChooseFile(filters::kCsvFiles);
  if (!chosen) return;
  const std::string path = AbsolutePath(*chosen);
  const PathParts parts = SplitPath(path);
  if (parts.extension != ".csv" && parts.extension != ".CSV") {
    Message(kCsvFormatError);
    return;
  }
  TestSet set;
  set.fileName = parts.name + parts.extension;
  set.folder = FolderOf(path);
  if (sets_.HoldsFile(set.fileName, set.folder)) {
    Message(kCsvAlreadySelected);
    return;
  }
  filePath.text = path;
  sets_.Add(set);
  kind_ = InitialSetKind::kPps;
  ShowRows();
}

void PPSReacquisition::OpenFile() {
  if (kind_ == InitialSetKind::kPps) {
    Message(kChoosePpsFiles);
    return;
  }
  for (const std::string& path : Host().ChooseFiles(filters::kLogFilesSingle)) {
    if (sets_.OccupiedCount() > static_cast<int>(kTestSetCount) - 1) {
      Message(kTooManyLogs);
      return;
    }
    filePath.text = path;
    Add();
  }
}

void PPSReacquisition::Add() {
  // A PPS list takes CSV files only, through their own action.
  if (kind_ == InitialSetKind::kPps) {
    Message(kChoosePpsFiles);
    return;
  }
  if (filePath.text.empty()) {
    Message(kChooseAsciiFirst);
    return;
  }
  if (sets_.OccupiedCount() >= static_cast<int>(kTestSetCount)) {
    Message(kTooManyLogs);
    return;
  }
  TestSet set;
  const std::string path = AbsolutePath(filePath.text);
  const PathParts parts = SplitPath(path);
  set.fileName = parts.name + parts.extension;
  set.folder = FolderOf(path);
  set.logType = logType.SelectedText();
  set.processType = processType.SelectedText();
  set.chipType = chipType.SelectedText();
  set.connect = signal.selected == kDisconnectSignal ? 0 : 1;
  set.time = ToFloat(std::atof((set.connect == 1 ? onTime : offTime).text.c_str()));
  set.testTimes = TextToInt(testTimes.text);
  if (const std::optional<std::string> refusal = realCoordinates.Read(set.real)) {
    Message(*refusal);
    return;
  }
  if (IsHeadingLogType(set.logType)) {
    if (const std::optional<std::string> refusal = roverCoordinates.Read(set.rover)) {
      Message(*refusal);
      return;
    }
  }
  if (sets_.HoldsSameSet(set)) {
    Message(kSameProcessSet);
    return;
  }
  sets_.Add(set);
  kind_ = InitialSetKind::kReacquisition;
  ShowRows();
}

void PPSReacquisition::SetSavePath() {
  if (sets_.OccupiedCount() == 0) {
    Message(kChooseFileFirst);
    return;
  }
  if (const std::optional<std::string> chosen = Host().ChooseFolder(kSelectFolderTitle))
    savePath.text = *chosen;
}

void PPSReacquisition::DeleteOneItem() {
  const std::vector<int> occupied = sets_.Occupied();
  if (files.selected < 0 || files.selected >= static_cast<int>(occupied.size())) {
    Message(kNoItemSelected);
    return;
  }
  sets_.Free(occupied[static_cast<std::size_t>(files.selected)]);
  ShowRows();
}

void PPSReacquisition::DeleteAllItem() {
  sets_.Clear();
  kind_ = InitialSetKind::kNone;
  ShowRows();
}

void PPSReacquisition::Process() {
  switch (kind_) {
    case InitialSetKind::kPps:
      RunPps();
      break;
    case InitialSetKind::kReacquisition:
      RunReacquisition();
      break;
    case InitialSetKind::kNone:
      FailCheck(kProcessWithoutFiles);
      break;
  }
  if (batchFlag != 0) SelfTerminate();
}

void PPSReacquisition::EndRun() {
  filePath.text.clear();
  savePath.text.clear();
  DeleteAllItem();
  process.enabled = true;
}

void PPSReacquisition::RunPps() {
  const std::vector<int> occupied = sets_.Occupied();
  if (occupied.empty()) return FailCheck(kChooseCsvFirst);
  process.enabled = false;

  PpsRun run;
  run.root = savePath.text.empty() ? sets_[occupied[0]].folder : savePath.text;
  run.resultFolder = JoinPath(run.root, "PPS" + TimeStamp());
  run.toolFolder = ExePath("");
  run.method = method.selected + 1;
  run.copyData = copyDataFiles.checked;
  MakeFolder(run.resultFolder);

  SetStatus("Status: Copy All The Files");
  const PpsScripts scripts = PreparePpsRun(sets_, run);
  SetStatus("Status: Processing Files");
  RunScriptAndRemove(scripts.run);
  RunScriptAndRemove(scripts.clean);

  SetStatus("Status: Finished");
  EndRun();
}

void PPSReacquisition::RunReacquisition() {
  const std::vector<int> occupied = sets_.Occupied();
  if (occupied.empty()) return FailCheck(kChooseAsciiAndSet);
  const std::string base = savePath.text.empty() ? sets_[occupied[0]].folder : savePath.text;

  ReacquisitionRun run;
  run.resultFolder = JoinPath(base, ReacquisitionRootName(sets_) + TimeStamp());
  run.toolFolder = ExePath("");
  run.parameterText = parameterText_;
  run.copyData = copyDataFiles.checked;
  MakeFolder(run.resultFolder);
  process.enabled = false;
  SetStatus("Status: Processing");

  if (generateReport.checked) {
    CopyFileReplacing(ConfigPath("Init_report.xlsx"),
                      JoinPath(run.resultFolder, "Init_report.xlsx"));
  }
  PrepareReacquisitionRun(sets_, run);
  RunReacquisitionScripts(sets_);
  // Ticked after every run, whatever it held before.
  generateReport.checked = true;

  SetStatus("Status: Finished");
  EndRun();
}

void PPSReacquisition::AddFilesHolding(const std::vector<std::string>& paths,
                                       std::string_view word) {
  for (const std::string& path : paths) {
    if (!PathHoldsWord(path, word)) continue;
    filePath.text = path;
    add.Press();
  }
}

bool PPSReacquisition::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "test") return false;
  const InitialTestArguments args = ReadInitialTestArguments(commandLine);
  filePath.text = commandLine.Arg(0);
  kind_ = InitialSetKind::kReacquisition;
  batchFlag = 1;

  logType.Select(args.ttffLogType);
  processType.Select(kTtffProcess);
  chipType.Select(args.chipType);
  onTime.text = std::to_string(args.onTime.first);
  offTime.text = std::to_string(args.offTime.first);
  testTimes.text = std::to_string(args.testTimes.first);
  realCoordinates.latitude.text = args.real[0];
  realCoordinates.longitude.text = args.real[1];
  realCoordinates.height.text = args.real[2];
  if (args.hasRover) {
    roverCoordinates.latitude.text = args.rover[0];
    roverCoordinates.longitude.text = args.rover[1];
    roverCoordinates.height.text = args.rover[2];
  }
  AddFilesHolding(args.files, "TTFF");

  logType.Select(args.reacqLogType);
  processType.Select(kReacqProcess);
  onTime.text = std::to_string(args.onTime.second);
  offTime.text = std::to_string(args.offTime.second);
  testTimes.text = std::to_string(args.testTimes.second);
  generateReport.checked = true;
  AddFilesHolding(args.files, "REA");

  process.Press();
  return true;
}

}  // namespace tarnlog
