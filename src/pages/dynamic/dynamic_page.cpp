#include "pages/dynamic/dynamic_page.h"

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kSourceTypes{"Kestrix", "Novatel", "Trimble", "Else"};
const std::vector<std::string> kReferenceTypes{"Novatel", "Trimble", "SiNan", "Else"};
const std::vector<std::string> kFileColumns{"ID", "NAME", "TYPE", "FILEPATH"};

constexpr std::string_view kSourceGroup = "SrcFile";
constexpr std::string_view kReferenceGroup = "RefFile";
constexpr std::string_view kPairGroup = "DD File";
constexpr int kReferenceElse = 3;

constexpr PairingTexts kDynamicPairingTexts{
    "You should select Kestrix item this time!", "You should select Novatel item this time!",
    "Please Choose ASCII File Firstly!", "Please Choose Novatel TXT File Firstly!"};

const std::string& TypeText(const std::vector<std::string>& types, int value) {
  return value >= 0 && value < static_cast<int>(types.size()) ? types[value] : types[0];
}

void AddRow(TableField& list, const PairedFileList& files, const std::vector<std::string>& types) {
  const PairedFileSlot& slot = files.slots[static_cast<std::size_t>(files.count - 1)];
  list.rows.push_back(
      {std::to_string(files.count), slot.name, TypeText(types, slot.type), slot.folder});
}

}  // namespace

llherroRTKDynamic::llherroRTKDynamic(PageParent& parent, PageHost& host)
    : Page(parent, host, "llherroRTKDynamic"),
      srcFileType(*this, "SrcFileType", kSourceTypes),
      refFileType(*this, "RefFileType", kReferenceTypes),
      resultPath(*this, "Result Path"),
      saveAs(*this, "SaveAs", [this] { ChooseResultFolder(); }),
      refPosType(*this, "RefPOSType", kDynamicPosEntries),
      refVelType(*this, "RefVELType", kDynamicVelEntries),
      refAttType(*this, "RefATTType", kDynamicAttEntries),
      fromWeek(*this, "Week", "0", "From"),
      fromSeconds(*this, "Seconds", "", "From"),
      toWeek(*this, "Week", "", "to"),
      toSeconds(*this, "Seconds", "", "to"),
      generateReport(*this, "GenerateReport", false),
      sourceFile(*this, "File Path", "", kSourceGroup),
      openSourceFile(*this, "Open SrcFile",
                     [this] {
                       for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
                         AddSourceFile(path);
                     }),
      sourceFiles(*this, "Source Files", kFileColumns, kSourceGroup),
      deleteOneSource(
          *this, "Delete One Item",
          [this] {
            Refuse(DeleteOneFile(sources_, sourceFiles, kDynamicPairingTexts.sourceListEmpty));
          },
          kSourceGroup),
      deleteAllSource(
          *this, "Delete All Item", [this] { DeleteAllFiles(sources_, sourceFiles); },
          kSourceGroup),
      referenceFile(*this, "File Path", "", kReferenceGroup),
      openReferenceFile(*this, "Open RefFile",
                        [this] {
                          for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
                            AddReferenceFile(path);
                        }),
      referenceFiles(*this, "Reference Files", kFileColumns, kReferenceGroup),
      deleteOneReference(
          *this, "Delete One Item",
          [this] {
            Refuse(DeleteOneFile(references_, referenceFiles,
                                 kDynamicPairingTexts.referenceListEmpty));
          },
          kReferenceGroup),
      deleteAllReference(
          *this, "Delete All Item", [this] { DeleteAllFiles(references_, referenceFiles); },
          kReferenceGroup),
      pairFiles(*this, "Pair Files", {"ID", "NAME"}, kPairGroup),
      deleteOnePair(
          *this, "Delete One Item", [this] { Refuse(DeleteOnePair(pairs_, pairFiles)); },
          kPairGroup),
      deleteAllPair(
          *this, "Delete All Item", [this] { DeleteAllPairs(pairs_, pairFiles); }, kPairGroup),
      clearAll(*this, "Clear All", [this] { ClearAll(); }),
      process(*this, "Process", [this] { Process(); }) {
  sourceFiles.multipleSelection = true;
  referenceFiles.multipleSelection = true;
  sourceFiles.onActivated = [this] { OnSourceDoubleClick(); };
  referenceFiles.onActivated = [this] { OnReferenceDoubleClick(); };
  srcFileType.onChanged = [this] { OnSrcFileTypeChanged(); };
  refFileType.onChanged = [this] { OnRefFileTypeChanged(); };
  // A change of a kind list is written into every pair's entry at once, so
  // pairs formed earlier take it too.
  const auto writeAll = [](std::array<int, kMaxSourceReferencePairs>& kinds,
                           const ChoiceField& list) {
    kinds.fill(list.selected < 0 ? 0 : list.selected);
  };
  refPosType.onChanged = [this, writeAll] { writeAll(posKinds_, refPosType); };
  refVelType.onChanged = [this, writeAll] { writeAll(velKinds_, refVelType); };
  refAttType.onChanged = [this, writeAll] { writeAll(attKinds_, refAttType); };
}

void llherroRTKDynamic::Start() {
  Page::Start();
  sources_.Clear();
  references_.Clear();
  pairs_.Clear();
  stamp_ = TimeStamp();
  for (ChoiceField* list : {&srcFileType, &refFileType, &refPosType, &refVelType, &refAttType})
    list->Select(0);
}

void llherroRTKDynamic::AddSourceFile(const std::string& path) {
  sourceFile.text = path;
  if (sources_.Add(path, nextSourceType_)) AddRow(sourceFiles, sources_, kSourceTypes);
}

void llherroRTKDynamic::AddReferenceFile(const std::string& path) {
  referenceFile.text = path;
  if (references_.Add(path, nextReferenceType_))
    AddRow(referenceFiles, references_, kReferenceTypes);
}

// The next source file takes the list index, while the selected rows take
// the index plus one: a selected "Kestrix" row holds 1, which reads as
// "Novatel". The values travel with the pairs and nothing reads them, so the
// asymmetry is kept as the system has it; the rows show the chosen entry.
void llherroRTKDynamic::OnSrcFileTypeChanged() {
  const int index = srcFileType.selected < 0 ? 0 : srcFileType.selected;
  nextSourceType_ = index;
  for (int row : sourceFiles.SelectedRows()) {
    if (row < 0 || row >= sources_.count) continue;
    sources_.slots[static_cast<std::size_t>(row)].type = index + 1;
    sourceFiles.rows[static_cast<std::size_t>(row)][2] = srcFileType.SelectedText();
  }
}

// References take the index, except "Else", which stores 0 in the rows.
void llherroRTKDynamic::OnRefFileTypeChanged() {
  const int index = refFileType.selected < 0 ? 0 : refFileType.selected;
  nextReferenceType_ = index;
  for (int row : referenceFiles.SelectedRows()) {
    if (row < 0 || row >= references_.count) continue;
    references_.slots[static_cast<std::size_t>(row)].type = index == kReferenceElse ? 0 : index;
    referenceFiles.rows[static_cast<std::size_t>(row)][2] = refFileType.SelectedText();
  }
}

void llherroRTKDynamic::OnSourceDoubleClick() {
  Refuse(
      PickSources(pairs_, sources_, sourceFiles.SelectedRows(), pairFiles, kDynamicPairingTexts));
}

void llherroRTKDynamic::OnReferenceDoubleClick() {
  Refuse(PickReferences(pairs_, references_, referenceFiles.SelectedRows(), pairFiles,
                        kDynamicPairingTexts));
}

// The chosen folder is appended to what the field holds, as the system
// does, so a second choice without Clear All names a folder below the first.
void llherroRTKDynamic::ChooseResultFolder() {
  const std::optional<std::string> chosen = Host().ChooseFolder(kSelectFolderTitle);
  if (!chosen) return;
  resultPath.text += JoinPath(*chosen, "RTKDynamic" + stamp_);
  MakeFolder(resultPath.text);
}

void llherroRTKDynamic::ClearAll() {
  DeleteAllFiles(sources_, sourceFiles);
  DeleteAllFiles(references_, referenceFiles);
  DeleteAllPairs(pairs_, pairFiles);
  sourceFile.text.clear();
  referenceFile.text.clear();
  resultPath.text.clear();
  stamp_ = TimeStamp();
}

void llherroRTKDynamic::Process() {
  StartWorker([this] { Worker(); });
}

void llherroRTKDynamic::Worker() {
  if (sources_.count == 0) return FailCheck(kDynamicChooseAsciiFirst);
  if (references_.count == 0) return FailCheck(kDynamicChooseRefFirst);
  if (pairs_.pairCount == 0) return FailCheck(kDynamicSetPairsFirst);
  process.enabled = false;

  if (resultPath.text.empty()) {
    resultPath.text = JoinPath(FolderOf(sources_.lastPath), "RTKDynamic" + stamp_);
    MakeFolder(resultPath.text);
  }
  const std::string result = resultPath.text;
  const bool report = generateReport.checked;
  if (report) {
    CopyFileReplacing(ConfigPath("Dynamic_report.xlsx"), JoinPath(result, "Dynamic_report.xlsx"));
  }
  SetStatus("Status: Processing");

  // An odd trailing source has no reference yet and is left out.
  const int pairCount = pairs_.CompletePairs();
  ResolvePairs(pairs_, sources_, references_, result);
  for (int i = 0; i < pairCount; ++i) {
    const std::string& folder = pairs_.pairs[static_cast<std::size_t>(i)].folder;
    MakeRunFolder(folder, Host());
    for (const char* tool : {"DynamicDataProcess.exe", "ExtractAndProcessData.exe"})
      CopyFileNoOverwrite(ExePath(tool), JoinPath(folder, tool));
  }

  const DurationLimits limits{fromWeek.text, fromSeconds.text, toWeek.text, toSeconds.text};
  std::vector<ChildProcess> runs;
  for (int i = 0; i < pairCount; ++i) {
    const SourceReferencePair& pair = pairs_.pairs[static_cast<std::size_t>(i)];
    WriteWholeFile(JoinPath(pair.folder, "duration.txt"), DurationText(limits), FileMode::kBinary);
    DynamicPairScript script;
    script.drive = PathPart(pair.folder, 1);
    script.pairFolder = pair.folder;
    script.referencePath = pair.referencePath;
    script.sourcePath = pair.sourcePath;
    script.posKind = posKinds_[static_cast<std::size_t>(i)];
    script.velKind = velKinds_[static_cast<std::size_t>(i)];
    script.attKind = attKinds_[static_cast<std::size_t>(i)];
    script.pairNumber = i + 1;
    const std::string path = JoinPath(pair.folder, "RTKDPlot" + stamp_ + ".bat");
    WriteWholeFile(path, DynamicPairScriptText(script), FileMode::kText);
    runs.push_back(LaunchScript(path));
    // The report wants the pairs one after the other; without it all pairs
    // run at once.
    if (report) WaitChild(runs.back());
  }
  for (ChildProcess& run : runs)
    WaitChild(run);

  SetStatus("Status: Finished");
  ClearAll();
  process.enabled = true;
  Host().PostFinished({});
}

}  // namespace tarnlog
