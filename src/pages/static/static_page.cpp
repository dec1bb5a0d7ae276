#include "pages/static/static_page.h"

#include <cstdlib>

#include "pages/static/ephemeris_compare.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/saturating.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kBoardTexts{"Kestrix",   "Novatel",  "Trimble",   "NEMA",
                                           "GGA",       "BMI055",   "ADIS16470", "ADIS16488",
                                           "ADIS16465", "EPSON354", "EPSON365"};
const std::vector<std::string> kProcessTexts{"Acuracy", "Ephema", "CompareEphema", "ARTK", "EVENT"};

constexpr std::string_view kGenerateGroup = "GenerateRealValue";
constexpr std::string_view kChooseFileFirstLower = "Please choose ascii file firstly!";
constexpr std::string_view kChooseSourceFirst =
    "Please choose checkbox, MatchedPos PSRPos RTKFlag BESTFlag!";
constexpr std::string_view kTwoFilesNeeded = "Please make sure you have choose 2 files!";
constexpr std::string_view kKestrixNeeded = "Please make sure the board type is kestrix!";
constexpr std::size_t kSlotsClearedByGenerate = 17;
constexpr int kLastSatelliteCompared = 196;

std::string BoardText(int board) {
  if (board < 0 || board >= static_cast<int>(kBoardTexts.size())) return kBoardTexts[0];
  return kBoardTexts[board];
}

// The TYPE column shows the first board's text for the last three boards
// until the list's selection changes.
std::string BoardTextOnAdd(int board) {
  return board >= kBoardAdis16465 ? kBoardTexts[0] : BoardText(board);
}

}  // namespace

llherroRTKStatic::llherroRTKStatic(PageParent& parent, PageHost& host)
    : Page(parent, host, "llherroRTKStatic"),
      boardType(*this, "BoardType", kBoardTexts),
      processType(*this, "Process Type", kProcessTexts),
      savePath(*this, "Set Save Path"),
      setSavePath(*this, "Set Save Path", [this] { ChooseSaveFolder(); }),
      changePath(*this, "ChangePath"),
      copyAsciiFiles(*this, "Copy ASCII Files", false),
      crc(*this, "CRC", true),
      nemaCrc(*this, "NEMACRC", true),
      generateReport(*this, "GenerateReport", false),
      ppp(*this, "PPP", false),
      delTxtFiles(*this, "Del TXT Files", false),
      delFigFiles(*this, "Del FIG Files", false),
      dayOfWeek(*this, "DayOfWeek", "0"),
      files(*this, "Files", {"ID", "NAME", "TYPE", "FILEPATH"}),
      openAsciiFile(*this, "Open ASCII File",
                    [this] {
                      for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
                        AddFile(path);
                    }),
      deleteOne(*this, "Delete One Item", [this] { DeleteOneItem(); }),
      deleteAll(*this, "Delete All Item", [this] { DeleteAllItem(); }),
      process(*this, "Process", [this] { Process(); }),
      meanSources{{CheckField(*this, "PSRPOS", false, kGenerateGroup),
                   CheckField(*this, "RTKPOS", false, kGenerateGroup),
                   CheckField(*this, "MATCH", false, kGenerateGroup),
                   CheckField(*this, "BESTPOS", false, kGenerateGroup),
                   CheckField(*this, "PPPPOS", false, kGenerateGroup),
                   CheckField(*this, "GGA", false, kGenerateGroup),
                   CheckField(*this, "MATCH-H", false, kGenerateGroup)}},
      generate(*this, "Generate", [this] { Generate(); }),
      transfer(*this, "Transfer", [this] { Transfer(); }),
      realValueType(*this, "RealValueType"),
      realValueCoordinates(*this, "Real Value"),
      master(*this, "Master"),
      masterCoordinates(*this, "Master"),
      slave(*this, "Slave"),
      slaveCoordinates(*this, "Slave"),
      addRealValueType(*this, "Add RealValueType"),
      addAction(*this, "Add",
                [this] {
                  RealValueEditor editor = Editor();
                  AddRealValue(editor);
                }),
      modifyAction(*this, "Modify",
                   [this] {
                     RealValueEditor editor = Editor();
                     ModifyRealValue(editor);
                   }),
      deleteAction(*this, "Delete", [this] {
        RealValueEditor editor = Editor();
        DeleteRealValue(editor);
      }) {
  const auto apply = [this] {
    RealValueEditor editor = Editor();
    ApplyRealValueSelection(editor);
  };
  realValueType.onChanged = apply;
  master.onChanged = apply;
  slave.onChanged = apply;
  boardType.onChanged = [this] { OnBoardChanged(); };
  processType.onChanged = [this] { OnProcessChanged(); };
}

void llherroRTKStatic::Start() {
  Page::Start();
  stamp_ = TimeStamp();
  RealValueEditor editor = Editor();
  if (!StartRealValueEditor(editor)) return;
  const std::optional<AutoTestConfig> test =
      TakeAutomaticTest(kStaticSwitch, &AutoTestConfig::runStatic);
  if (!test) return;
  for (int i = 0; i < test->fileCount; ++i)
    AddFile(test->filePaths[i]);
  process.Press();
}

RealValueEditor llherroRTKStatic::Editor() {
  return RealValueEditor{Parent().RealValueStore(),
                         {realValueType, realValueCoordinates, realValue},
                         {master, masterCoordinates, masterValue},
                         {slave, slaveCoordinates, slaveValue},
                         addRealValueType,
                         Host(),
                         StartFolder() + std::string(kRealValueFile)};
}

void llherroRTKStatic::AddFile(const std::string& path) {
  if (count_ >= static_cast<int>(kStaticSlotCount)) {
    Message(kStaticListFull);
    return;
  }
  StaticFileSlot& slot = slots_[count_];
  static_cast<FileSlotPaths&>(slot) = FileSlotPathsOf(path, &extension_);
  if (boardType.selected >= 0) slot.board = boardType.selected;
  files.rows.push_back(
      {std::to_string(count_ + 1), slot.name, BoardTextOnAdd(slot.board), slot.path});
  ++count_;
  lastFilePath_ = slot.path;
}

void llherroRTKStatic::OnBoardChanged() {
  const int board = boardType.selected < 0 ? 0 : boardType.selected;
  if (count_ < static_cast<int>(kStaticSlotCount)) slots_[count_].board = board;
  if (files.selected >= 0 && files.selected < count_) {
    slots_[files.selected].board = board;
    files.rows[files.selected][2] = BoardText(board);
  }
}

void llherroRTKStatic::OnProcessChanged() {
  const int value = processType.selected < 0 ? 0 : processType.selected;
  for (int i = 0; i < count_; ++i)
    slots_[i].process = value;
  if (files.selected >= 0 && files.selected < count_) slots_[files.selected].process = value;
}

void llherroRTKStatic::ChooseSaveFolder() {
  const std::optional<std::string> chosen = Host().ChooseFolder(kStaticSelectFolderTitle);
  if (!chosen) return;
  savePath.text = *chosen;
  heldRoot_ += *chosen;
}

void llherroRTKStatic::DeleteOneItem() {
  if (count_ == 0) {
    Message(kChooseFileFirst);
    return;
  }
  const int selected = files.selected;
  if (selected < 0 || selected >= count_) {
    Message(kNoItemSelected);
    return;
  }
  // The paths move up; board and process values stay with the slot numbers.
  for (int i = selected; i + 1 < count_; ++i)
    static_cast<FileSlotPaths&>(slots_[i]) = slots_[i + 1];
  static_cast<FileSlotPaths&>(slots_[count_ - 1]) = {};
  files.rows.erase(files.rows.begin() + selected);
  files.selected = -1;
  --count_;
}

void llherroRTKStatic::ClearList(std::size_t slotsCleared) {
  files.rows.clear();
  files.selected = -1;
  for (std::size_t i = 0; i < slotsCleared && i < slots_.size(); ++i)
    static_cast<FileSlotPaths&>(slots_[i]) = {};
  lastFilePath_.clear();
  heldRoot_.clear();
  count_ = 0;
  stamp_ = TimeStamp();
}

void llherroRTKStatic::DeleteAllItem() {
  ClearList(kStaticSlotCount);
  boardType.Select(0);
  processType.Select(0);
}

void llherroRTKStatic::EnableAll(bool enabled) {
  for (Field* field : Fields())
    field->enabled = enabled;
}

ExtractSettings llherroRTKStatic::ExtractionSettings() {
  ExtractSettings settings;
  settings.asciiCrc = crc.checked;
  settings.nmeaCrc = nemaCrc.checked;
  settings.imuType = boardType.selected < 0 ? 0 : boardType.selected;
  settings.perfstatHeaderPending = &perfstatHeaderPending_;
  settings.realValueMode = realValueMode_;
  return settings;
}

StaticRun llherroRTKStatic::RunFromFields() {
  StaticRun run;
  run.files.assign(slots_.begin(), slots_.begin() + count_);
  run.extension = extension_;
  run.stamp = stamp_;
  run.startFolder = StartFolder();
  run.analyserPath = ExePath("llherroRTK_M.exe");
  run.reportTemplatePath = ConfigPath("Static_report.xlsx");
  run.copyFiles = copyAsciiFiles.checked;
  run.generateReport = generateReport.checked;
  run.deleteTables = delTxtFiles.checked;
  run.deleteFigures = delFigFiles.checked;
  run.copyReport = generateReport.checked || batchFlag != 0;
  run.dayOfWeek = TextToInt(dayOfWeek.text);
  run.extraction = ExtractionSettings();
  run.onExtractionStart = onExtractionStart;
  run.onExtractionEnd = onExtractionEnd;
  return run;
}

std::string llherroRTKStatic::ChooseResultFolder(std::string_view word) {
  ResultFolderChoice choice;
  choice.heldRoot = heldRoot_;
  choice.savePathText = savePath.text;
  choice.changePathText = changePath.text;
  choice.firstFolder = slots_[0].folder;
  choice.word = word;
  choice.stamp = stamp_;
  choice.ppp = ppp.checked;
  // The folder is built in the held root, so a second run without Delete
  // All Item stands behind the first.
  heldRoot_ = ResultFolder(choice);
  return heldRoot_;
}

void llherroRTKStatic::Process() {
  if (slots_[0].process == kProcessCompareEphemeris) {
    CompareEphemeris();
    return;
  }
  StaticRun run = RunFromFields();
  StartWorker([this, run = std::move(run)]() mutable { Worker(std::move(run)); });
}

void llherroRTKStatic::Worker(StaticRun run) {
  if (HoldsDegreeMarks(realValueCoordinates.latitude.text)) {
    FailCheck(kTransferFirst, CoordinateFieldRange(realValueCoordinates.latitude));
    return;
  }
  if (lastFilePath_.empty()) {
    FailCheck(kChooseFileFirst);
    return;
  }
  RealValueEditor editor = Editor();
  if (const std::optional<std::string> refusal = ReadRealValueSets(editor)) {
    FailCheck(*refusal);
    return;
  }
  run.master = masterValue;
  run.slave = slaveValue;

  SetStatus("Status:Processing");
  EnableAll(false);
  run.resultFolder =
      ChooseResultFolder(slots_[0].process == kProcessEphemeris ? "Ephema" : "RTKStatic");
  MakeFolder(run.resultFolder);
  RunStaticPasses(run, SharedExtractionState());

  SetStatus("Status:Finished");
  DeleteAllItem();
  if (batchFlag != 0) SelfTerminate();
  Host().PostFinished([this] { OnFinished(); });
}

void llherroRTKStatic::OnFinished() {
  SharedExtractionState().nmea.ResetDays();
  if (InAutomaticTest()) SelfTerminate();
  lastFilePath_.clear();
  savePath.text.clear();
  changePath.text.clear();
  EnableAll(true);
}

void llherroRTKStatic::CompareEphemeris() {
  if (transferToggled_) {
    FailCheck(kTransferFirst, CoordinateFieldRange(realValueCoordinates.latitude));
    return;
  }
  if (lastFilePath_.empty()) {
    FailCheck(kChooseFileFirst);
    return;
  }
  if (count_ < 2) {
    FailCheck(kTwoFilesNeeded);
    return;
  }
  if (slots_[0].board != kBoardKestrix || slots_[1].board != kBoardKestrix) {
    FailCheck(kKestrixNeeded);
    DeleteAllItem();
    return;
  }
  RealValueEditor editor = Editor();
  if (const std::optional<std::string> refusal = ReadRealValueSets(editor)) {
    FailCheck(*refusal);
    return;
  }

  SetStatus("Status:Processing");
  StaticRun run = RunFromFields();
  run.master = masterValue;
  run.slave = slaveValue;
  run.resultFolder = ChooseResultFolder("CompareEphem");
  MakeFolder(run.resultFolder);
  const std::string separator(1, kPathSeparator);
  for (StaticFileSlot& file : run.files) {
    PrepareOutputFolder(run, file, true);
    CopyFileNoOverwrite(run.analyserPath, file.outputFolder + separator + "llherroRTK_M.exe");
  }

  // Both receivers are extracted and their analysers run side by side.
  for (std::size_t slot = 0; slot < 2; ++slot) {
    StaticFileSlot& file = run.files[slot];
    ExtractFile(run, file, kProcessEphemeris, SharedExtractionState());
    const std::string script = PlotScriptPath(run, file);
    WriteWholeFile(script, ComparisonPlotScriptText(file), FileMode::kText);
    file.plot = LaunchScript(script);
  }
  WaitChild(run.files[0].plot);
  WaitChild(run.files[1].plot);

  const std::string resultPath = run.resultFolder + separator + "Result" + run.stamp + ".txt";
  for (int number = 1; number <= kLastSatelliteCompared; ++number) {
    CompareSatelliteEphemerides(number, run.files[0].outputFolder, run.files[1].outputFolder,
                                resultPath);
  }

  SetStatus("Status:Finished");
  lastFilePath_.clear();
  savePath.text.clear();
  changePath.text.clear();
  DeleteAllItem();
}

void llherroRTKStatic::Generate() {
  realValueMode_ = true;
  // A refused Generate clears the mode again, so that a later Process still
  // writes the default tables.
  if (lastFilePath_.empty()) {
    Message(kChooseFileFirstLower);
    realValueMode_ = false;
    return;
  }
  std::array<bool, kMeanSourceCount> flags{};
  bool any = false;
  for (std::size_t i = 0; i < kMeanSourceCount; ++i) {
    flags[i] = meanSources[i].checked;
    any = any || flags[i];
  }
  if (!any) {
    Message(kChooseSourceFirst);
    realValueMode_ = false;
    return;
  }
  SetStatus("Status: Generating realvalue");
  const std::string folder = slots_[0].folder;
  const MeanResult mean = GenerateMeanValues(folder, slots_[0].path, flags, ExtractionSettings(),
                                             SharedExtractionState());
  if (mean.any) {
    realValue = mean.last;
    realValueCoordinates.Show(realValue);
  }
  RemoveFile(JoinPath(StartFolder(), "RTKSPlot" + stamp_ + ".bat"));
  DeleteMeanTables(folder, flags);

  SetStatus("Status: Finished!");
  ClearList(kSlotsClearedByGenerate);
  masterValue = realValue;
  masterCoordinates.Show(masterValue);
  realValueType.Select(-1);
  for (std::size_t i : {std::size_t{0}, std::size_t{1}, std::size_t{2}})
    meanSources[i].checked = false;  // PSRPOS, RTKPOS, MATCH
  lastFilePath_.clear();
  realValueMode_ = false;
  Message("处理完成");
}

void llherroRTKStatic::Transfer() {
  TextField& latitude = realValueCoordinates.latitude;
  TextField& longitude = realValueCoordinates.longitude;
  if (!transferToggled_) {
    latitude.text = DegreesToMarkedText(std::atof(latitude.text.c_str()));
    longitude.text = DegreesToMarkedText(std::atof(longitude.text.c_str()));
  } else {
    latitude.text = MarkedTextToDegrees(latitude.text);
    longitude.text = MarkedTextToDegrees(longitude.text);
  }
  transferToggled_ = !transferToggled_;
}

bool llherroRTKStatic::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "static") return false;
  const int argc = commandLine.Argc();
  auto number = [&](int position) { return ArgToDouble(commandLine.Arg(position)); };
  masterValue = {number(argc - 8), number(argc - 7), number(argc - 6)};
  slaveValue = {number(argc - 5), number(argc - 4), number(argc - 3)};
  masterCoordinates.Show(masterValue);
  slaveCoordinates.Show(slaveValue);
  const int board = SaturatingInt(number(argc - 2));
  boardType.Select(board >= 0 && board < static_cast<int>(kBoardTexts.size()) ? board : -1);
  OnBoardChanged();
  // Callers keep to sixteen files; the list holds what the positions give.
  for (int i = 1; i <= argc - 9 && i <= 16; ++i)
    AddFile(commandLine.Arg(i));
  batchFlag = 1;
  stamp_ = HourStamp();
  generateReport.checked = true;
  Process();
  return true;
}

}  // namespace tarnlog
