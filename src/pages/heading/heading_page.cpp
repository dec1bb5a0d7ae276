#include "pages/heading/heading_page.h"

#include <algorithm>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kTypeTexts{"Static", "Dynamic"};
const std::vector<std::string> kHeadingKinds{"heading", "heading2"};
const std::vector<std::string> kFileColumns{"ID", "NAME", "FILEPATH"};
const std::vector<std::string> kPairColumns{"ID", "NAME"};

const PairingTexts kHeadingPairingTexts{
    "You should select log item this time!",
    "You should select Reffer item this time!",
    "Please Choose Source File Firstly!",
    "Please Choose Ref File Firstly!",
};

}  // namespace

Heading::Heading(PageParent& parent, PageHost& host)
    : Page(parent, host, "Heading"),
      type(*this, "Type", kTypeTexts),
      resultFolder(*this, "SaveAs"),
      saveAs(*this, "SaveAs", [this] { ChooseResultFolder(); }),
      base(*this, "Base"),
      baseCoordinates(*this, "Base"),
      ant1(*this, "ANT1"),
      ant1Coordinates(*this, "ANT1"),
      ant2(*this, "ANT2"),
      ant2Coordinates(*this, "ANT2"),
      trueHeading(*this, "True Heading(/°)"),
      generateReport(*this, "GenerateReport", false),
      sourceKind(*this, "Source", kHeadingKinds),
      referenceKind(*this, "Ref", kHeadingKinds),
      sourceFiles(*this, kHeadingSourceList, kFileColumns),
      openSource(
          *this, "Open", [this] { OpenFiles(sources_, sourceFiles); }, kHeadingSourceList),
      deleteOneSource(
          *this, "Delete One Item",
          [this] { DeleteOneOf(sources_, sourceFiles, kHeadingPairingTexts.sourceListEmpty); },
          kHeadingSourceList),
      deleteAllSources(
          *this, "Delete All Item", [this] { DeleteAllFiles(sources_, sourceFiles); },
          kHeadingSourceList),
      referenceFiles(*this, kHeadingRefList, kFileColumns),
      openReference(
          *this, "Open", [this] { OpenFiles(references_, referenceFiles); }, kHeadingRefList),
      deleteOneReference(
          *this, "Delete One Item",
          [this] {
            DeleteOneOf(references_, referenceFiles, kHeadingPairingTexts.referenceListEmpty);
          },
          kHeadingRefList),
      deleteAllReferences(
          *this, "Delete All Item", [this] { DeleteAllFiles(references_, referenceFiles); },
          kHeadingRefList),
      pairList(*this, kHeadingPairList, kPairColumns),
      deleteOnePair(
          *this, "Delete One Item", [this] { Refuse(DeleteOnePair(pairs_, pairList)); },
          kHeadingPairList),
      deleteAllPairs(
          *this, "Delete All Item", [this] { DeleteAllPairs(pairs_, pairList); }, kHeadingPairList),
      clearAll(*this, "ClearAll", [this] { ClearAll(); }),
      process(*this, "Process", [this] { Process(); }) {
  base.onChanged = [this] { OnBaseChanged(); };
  type.onChanged = [this] { OnTypeChanged(); };
  sourceFiles.multipleSelection = true;
  referenceFiles.multipleSelection = true;
  sourceFiles.onActivated = [this] {
    Refuse(
        PickSources(pairs_, sources_, sourceFiles.SelectedRows(), pairList, kHeadingPairingTexts));
  };
  referenceFiles.onActivated = [this] {
    Refuse(PickReferences(pairs_, references_, referenceFiles.SelectedRows(), pairList,
                          kHeadingPairingTexts));
  };
}

void Heading::Start() {
  Page::Start();
  sources_.Clear();
  references_.Clear();
  pairs_.Clear();
  currentFileType_ = kHeadingStatic;
  stamp_ = TimeStamp();
  RefillRealValueList(ant2);
  ant2.Select(0);
  RefreshOnTabChoice();
  ShowFlowControls();
}

void Heading::RefreshOnTabChoice() {
  RefillRealValueList(base);
  RefillRealValueList(ant1);
  base.Select(0);
  ant1.Select(0);
  OnBaseChanged();
}

void Heading::OnBaseChanged() {
  const std::string& name = base.SelectedText();
  const int row = Parent().RealValueStore().Find(name);
  if (base.selected < 0 || row < 0) return;
  const RealValueRow& values = Parent().RealValueStore().rows[row];
  baseCoordinates.Show(values);
  const auto inAnt1 = std::find(ant1.entries.begin(), ant1.entries.end(), name);
  if (inAnt1 == ant1.entries.end()) return;
  const int position = static_cast<int>(inAnt1 - ant1.entries.begin());
  ant1.Select(position);
  ant2.Select(position);
  ant1Coordinates.Show(values);
  ant2Coordinates.Show(values);
}

void Heading::OnTypeChanged() {
  // A mixed list is refused here, not at Process. The "current file" of the
  // rule is the file added last, on either list.
  if (type.selected == kHeadingStatic && sources_.count > 0 &&
      sources_.slots[0].type == kHeadingDynamic && currentFileType_ == kHeadingDynamic) {
    Refuse(kHeadingMixedTypes);
    type.Select(kHeadingDynamic);
  }
  ShowFlowControls();
}

void Heading::ShowFlowControls() {
  const bool dynamic = type.selected == kHeadingDynamic;
  Field* staticControls[] = {
      &base,       &baseCoordinates.latitude, &baseCoordinates.longitude, &baseCoordinates.height,
      &ant1,       &ant1Coordinates.latitude, &ant1Coordinates.longitude, &ant1Coordinates.height,
      &ant2,       &ant2Coordinates.latitude, &ant2Coordinates.longitude, &ant2Coordinates.height,
      &trueHeading};
  Field* dynamicControls[] = {&referenceFiles,      &openReference, &deleteOneReference,
                              &deleteAllReferences, &pairList,      &deleteOnePair,
                              &deleteAllPairs,      &sourceKind,    &referenceKind};
  for (Field* field : staticControls)
    field->visible = !dynamic;
  for (Field* field : dynamicControls)
    field->visible = dynamic;
}

void Heading::ChooseResultFolder() {
  const std::optional<std::string> chosen = Host().ChooseFolder(kSelectFolderTitle);
  if (!chosen) return;
  resultFolder.text = JoinPath(*chosen, "Heading" + stamp_);
  // Made now: the folders of the logs and pairs below it are made with a
  // single mkdir each, which needs their parent.
  MakeFolder(resultFolder.text);
}

void Heading::AddSource(const std::string& path) {
  AddFile(sources_, sourceFiles, path);
}

void Heading::AddReference(const std::string& path) {
  AddFile(references_, referenceFiles, path);
}

void Heading::OpenFiles(PairedFileList& files, TableField& list) {
  for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
    AddFile(files, list, path);
}

void Heading::DeleteOneOf(PairedFileList& files, TableField& list, std::string_view emptyText) {
  Refuse(DeleteOneFile(files, list, emptyText));
}

void Heading::AddFile(PairedFileList& files, TableField& list, const std::string& path) {
  const int typeInForce = type.selected == kHeadingDynamic ? kHeadingDynamic : kHeadingStatic;
  // Each list holds 100 files; one more is not taken, without a word.
  if (!files.Add(path, typeInForce)) return;
  const PairedFileSlot& slot = files.slots[static_cast<std::size_t>(files.count - 1)];
  list.rows.push_back({std::to_string(files.count), slot.name, slot.folder});
  currentFileType_ = typeInForce;
}

void Heading::ClearAll() {
  DeleteAllFiles(sources_, sourceFiles);
  DeleteAllFiles(references_, referenceFiles);
  DeleteAllPairs(pairs_, pairList);
  resultFolder.text.clear();
  stamp_ = TimeStamp();
}

bool Heading::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "heading") return false;
  const int argc = commandLine.Argc();
  // Callers keep to sixteen files; the list holds what the positions give.
  for (int i = 1; i <= argc - 11 && i <= 16; ++i)
    AddSource(commandLine.Arg(i));
  // The coordinates go into the fields as they are written.
  CoordinateFields* sets[] = {&baseCoordinates, &ant1Coordinates, &ant2Coordinates};
  int position = argc - 10;
  for (CoordinateFields* set : sets) {
    set->latitude.text = commandLine.Arg(position++);
    set->longitude.text = commandLine.Arg(position++);
    set->height.text = commandLine.Arg(position++);
  }
  batchFlag = 1;
  Process();
  return true;
}

}  // namespace tarnlog
