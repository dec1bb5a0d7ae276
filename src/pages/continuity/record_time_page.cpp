#include "pages/continuity/record_time_page.h"

#include "pages/continuity/continue_script.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stamps.h"

namespace tarnlog {

const std::array<LogTypeTick, 42> kLogTypeTicks{{
    {"Rangea", 0x1, 0},
    {"BaseRangea", 0x2, 0},
    {"BestPosa", 0x4, 0},
    {"BestVela", 0x8, 0},
    {"PsrPosa", 0x10, 0},
    {"PsrVela", 0x20, 0},
    {"RTKPosa", 0x40, 0},
    {"RTKVela", 0x80, 0},
    {"MatchedPosa", 0x100, 0},
    {"ALL_GGA", 0x200 | 0x10000000 | 0x20000000 | 0x40000000, 0},  // any talker, GN, GP, BD
    {"Headinga", 0x400, 0},
    {"AHGH", 0x800, 0},
    {"BD2Ephema", 0x1000, 0},
    {"GPSEphema", 0x2000, 0},
    {"GLOEphemerisa", 0x4000, 0},
    {"PsrDopa", 0x8000, 0},
    {"RAWEphema", 0x10000, 0},
    {"RTKDopa", 0x20000, 0},
    {"Rangeha", 0x40000, 0},
    {"MatchedPosha", 0x80000, 0},
    {"RTKDataa", 0x100000, 0},
    {"RTKDataha", 0x200000, 0},
    {"Timea", 0x400000, 0},
    {"Versiona", 0x800000, 0},
    {"RangeCmpa", 0x1000000, 0},
    {"IonUtca", 0x2000000, 0},
    {"SatVisa", 0x4000000, 0},
    {"RefStation", 0x80000000, 0},
    {"Drpva", 0, 0x1},
    {"GalEphemerisa", 0, 0x2},
    {"Gyoacc", 0, 0x4},
    {"GNRMC", 0, 0x8},
    {"Heading2a", 0, 0x10},
    {"SubFrame", 0, 0x20 | 0x40 | 0x80 | 0x100},  // GPS, GLONASS, BeiDou and the spare bit
    {"Sbas", 0, 0xFFFE00},                        // the fifteen SBAS messages
    {"Tdif/PdpPos", 0, 0x1000000},
    {"Tdif/PdpVel", 0, 0x2000000},
    {"Pppposa", 0, 0x4000000},
    {"Pppdopa", 0, 0x8000000},
    {"EventMark", 0, 0x10000000},
    {"EventAll", 0, 0x20000000},
    {"RawImux", 0, 0x40000000 | 0x80000000},
}};

namespace {

constexpr std::string_view kLogTypeGroup = "LogType";

// The add-folder helper's search and the suffixes it keeps (the search
// ignores case, the suffix test doesn't).
constexpr std::string_view kFolderLogPattern = "*ap.*";
constexpr std::string_view kFolderLogSuffixes[] = {".log", ".LOG", ".Log", ".ASC"};

}  // namespace

CRecordTimeDlg::CRecordTimeDlg(PageParent& parent, PageHost& host)
    : Page(parent, host, "CRecordTimeDlg"),
      file(*this, "File:"),
      files(*this, "Files", {"ID", "NAME", "TYPE", "FILEPATH"}),
      savePath(*this, "Save Path"),
      timeStamp(*this, "Time Stamp"),
      crcCheck(*this, "CRCCheck", true),
      nemaCrcCheck(*this, "NemaCRCCheck", true),
      otherGga(*this, "Other_GGA", false),
      selectAllLog(*this, "SelectAllLog", false),
      cancelAllLog(*this, "CancelAllLog", false),
      selectAsciiFile(*this, "Select ASCII File",
                      [this] {
                        for (const std::string& path : Host().ChooseFiles(filters::kLogFiles))
                          AddFile(path);
                      }),
      deleteOne(*this, "Delete One Item", [this] { DeleteOneItem(); }),
      deleteAll(*this, "Delete All Item", [this] { DeleteAllItem(); }),
      process(*this, "Process", [this] { Process(); }) {
  for (const LogTypeTick& tick : kLogTypeTicks)
    logTypes.emplace_back(*this, tick.caption, true, kLogTypeGroup);
  selectAllLog.onClicked = [this] { OnSelectAllLog(); };
  cancelAllLog.onClicked = [this] { OnCancelAllLog(); };
}

void CRecordTimeDlg::Start() {
  Page::Start();
  slots_.clear();
  timeStamp.text = TimeStamp();
  allContinuesPath_ = ExePath("All_continues.exe");

  const std::optional<AutoTestConfig> config =
      TakeAutomaticTest(kContinueSwitch, &AutoTestConfig::runContinue);
  if (!config) return;
  for (int i = 0; i < config->fileCount; ++i)
    AddFile(config->filePaths[i]);
  Process();
}

void CRecordTimeDlg::AddFile(const std::string& path) {
  // The row counter is a byte; the list stops at its 100 rows.
  if (slots_.size() >= kContinueSlotCount) {
    Message(kContinueListFull);
    return;
  }
  slots_.push_back(FileSlotPathsOf(path));
  const FileSlotPaths& slot = slots_.back();
  files.rows.push_back({std::to_string(slots_.size()), slot.name, "Kestrix", slot.path});
  file.text = slot.path;
}

void CRecordTimeDlg::AddFolder(std::string folder) {
  if (folder.empty()) return;
  if (folder.back() != kPathSeparator) folder += kPathSeparator;
  for (const std::string& path : ListFilesEndingIn(folder, kFolderLogPattern, kFolderLogSuffixes))
    AddFile(path);
}

void CRecordTimeDlg::DeleteOneItem() {
  if (slots_.empty()) {
    Message(kContinueChooseFileFirst);
    return;
  }
  const int selected = files.selected;
  if (selected < 0 || selected >= static_cast<int>(slots_.size())) {
    Message(kContinueChooseItem);
    return;
  }
  slots_.erase(slots_.begin() + selected);
  files.rows.erase(files.rows.begin() + selected);
  for (std::size_t i = 0; i < files.rows.size(); ++i)
    files.rows[i][0] = std::to_string(i + 1);
  files.selected = -1;
}

void CRecordTimeDlg::DeleteAllItem() {
  slots_.clear();
  files.rows.clear();
  files.selected = -1;
  savePath.text.clear();
  timeStamp.text = TimeStamp();
}

void CRecordTimeDlg::OnSelectAllLog() {
  for (CheckField& tick : logTypes) {
    if (selectAllLog.checked) tick.checked = true;
    tick.enabled = !selectAllLog.checked;
  }
}

void CRecordTimeDlg::OnCancelAllLog() {
  if (!cancelAllLog.checked) return;
  for (CheckField& tick : logTypes)
    tick.checked = false;
}

void CRecordTimeDlg::BuildMask() {
  if (selectAllLog.checked) {
    logMaskA_ = kAllLogTypes;
    logMaskB_ = kAllLogTypes;
    return;
  }
  for (std::size_t i = 0; i < logTypes.size(); ++i) {
    if (!logTypes[i].checked) continue;
    logMaskA_ |= kLogTypeTicks[i].bitsA;
    logMaskB_ |= kLogTypeTicks[i].bitsB;
  }
}

void CRecordTimeDlg::ResetTicks() {
  cancelAllLog.checked = false;
  for (CheckField& tick : logTypes) {
    tick.checked = true;
    tick.enabled = true;
  }
  otherGga.checked = false;
}

void CRecordTimeDlg::Process() {
  StartWorker([this] { Worker(); });
}

void CRecordTimeDlg::Worker() {
  if (file.text.empty()) {
    FailCheck(kContinueChooseFileLower);
    return;
  }
  BuildMask();
  if (logMaskA_ == 0 && logMaskB_ == 0) {
    FailCheck(kContinueChooseLogType);
    return;
  }
  RecordTimeOptions options;
  options.logMaskA = logMaskA_;
  options.logMaskB = logMaskB_;
  options.nmeaCrcCheck = nemaCrcCheck.checked;
  options.otherGga = otherGga.checked;

  SetStatus("Status:Processing...");
  process.enabled = false;
  if (savePath.text.empty() && !slots_.empty()) {
    savePath.text = JoinPath(slots_[0].folder, "Continue" + timeStamp.text);
  }
  MakeFolder(savePath.text);

  // Each row's analyser starts as soon as its time files are there, so a
  // later row's extraction overlaps the earlier rows' analysers.
  std::vector<ChildProcess> analysers;
  for (const FileSlotPaths& slot : slots_) {
    const std::string rowFolder = JoinPath(savePath.text, slot.name);
    MakeFolder(rowFolder);
    // A log that can't be opened stops the whole run here, without a word;
    // the Process button stays off.
    if (!extractor_.OpenTimeFiles(slot.path, rowFolder, options)) return;
    extractor_.Extract();
    extractor_.CloseTimeFiles();
    CopyFileReplacing(allContinuesPath_, JoinPath(rowFolder, "All_continues.exe"));
    const ContinueScriptPaths scripts = ContinueScriptPathsOf(rowFolder, timeStamp.text);
    WriteWholeFile(scripts.first, ContinueScriptText(rowFolder), FileMode::kText);
    analysers.push_back(LaunchScript(scripts.first));
    // The second script is never written, so this launch fails unseen.
    LaunchScript(scripts.second);
  }
  for (ChildProcess& analyser : analysers)
    WaitChild(analyser);

  if (batchFlag != 0) SelfTerminate();
  DeleteAllItem();
  SetStatus("Status:Finished");
  file.text.clear();
  process.enabled = true;
  ResetTicks();
  logMaskA_ = kAllLogTypes;
  logMaskB_ = kAllLogTypes;
  // An automatic-test copy would stay behind idle; it ends here so that the
  // AUTO page goes on to its next test.
  if (InAutomaticTest()) EndProcess(0, "CRecordTimeDlg: the continuity test has finished");
}

bool CRecordTimeDlg::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "continue") return false;
  // Callers keep to sixteen files; the list holds what the positions give.
  for (int i = 1; i <= commandLine.Argc() - 2 && i <= 16; ++i)
    AddFile(commandLine.Arg(i));
  batchFlag = 1;
  timeStamp.text = HourStamp();
  Process();
  return true;
}

}  // namespace tarnlog
