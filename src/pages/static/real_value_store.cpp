#include "pages/static/real_value_store.h"

#include <unistd.h>

#include <cstdlib>

#include "platform/files.h"

namespace tarnlog {
namespace {

void Show(RealValueSet& set) {
  set.fields.Show(set.values);
}

void TakeRow(RealValueSet& set, const RealValueTable& table) {
  if (const std::optional<Coordinates> values = SelectedCoordinates(set.list, table))
    set.values = *values;
}

// Add and Modify show a refused field check as its box.
bool ReadForEdit(RealValueEditor& editor) {
  const std::optional<std::string> refusal = ReadRealValueSets(editor);
  if (refusal) editor.host.ShowMessage(*refusal);
  return !refusal;
}

// Removing an entry moves a later selection up with its entry and clears
// the selection of the entry itself, as a list box does.
void RemoveEntry(ChoiceField& list, int index) {
  if (index < 0 || index >= static_cast<int>(list.entries.size())) return;
  list.entries.erase(list.entries.begin() + index);
  if (list.selected == index) {
    list.selected = -1;
  } else if (list.selected > index) {
    --list.selected;
  }
}

}  // namespace

bool StartRealValueEditor(RealValueEditor& editor) {
  if (access(editor.filePath.c_str(), R_OK | W_OK) != 0) {
    editor.host.ShowMessage(editor.filePath + std::string(kRealValueMissing));
    return false;
  }
  FillRealValueLists(editor.table, editor.realValue.list, editor.master.list, editor.slave.list);
  editor.realValue.list.Select(0);
  editor.master.list.Select(0);
  editor.slave.list.Select(0);
  ApplyRealValueSelection(editor);
  return true;
}

void FillRealValueLists(const RealValueTable& table, ChoiceField& realValueType,
                        ChoiceField& master, ChoiceField& slave) {
  for (const RealValueRow& row : table.rows) {
    if (row.IsFree()) continue;
    realValueType.entries.emplace_back(row.Name());
    master.entries.emplace_back(row.Name());
    slave.entries.emplace_back(row.Name());
  }
}

void ApplyRealValueSelection(RealValueEditor& editor) {
  TakeRow(editor.realValue, editor.table);
  TakeRow(editor.master, editor.table);
  TakeRow(editor.slave, editor.table);
  Show(editor.realValue);
  Show(editor.master);
  Show(editor.slave);
}

std::optional<std::string> ReadRealValueSets(RealValueEditor& editor) {
  // Read into copies first so that a bad field leaves every set as it was.
  Coordinates realValue;
  Coordinates master;
  Coordinates slave;
  std::optional<std::string> refusal = editor.realValue.fields.Read(realValue);
  if (!refusal) refusal = editor.master.fields.Read(master);
  if (!refusal) refusal = editor.slave.fields.Read(slave);
  if (refusal) return refusal;
  editor.realValue.values = realValue;
  editor.master.values = master;
  editor.slave.values = slave;
  return std::nullopt;
}

void AddRealValue(RealValueEditor& editor) {
  if (!ReadForEdit(editor)) return;
  const std::string name = editor.addName.text.substr(0, kRealValueNameLength);
  if (name.empty()) {
    editor.host.ShowMessage(kRealValueNameEmpty, kAddRealValueErrorTitle);
    return;
  }
  if (editor.table.Find(name) >= 0) {
    editor.host.ShowMessage(kRealValueNameTaken, kAddRealValueErrorTitle);
    return;
  }
  const int free = editor.table.LowestFreeRow();
  if (free < 0) {
    editor.host.ShowMessage(kRealValueTableFull, kAddRealValueErrorTitle);
    return;
  }
  RealValueRow& row = editor.table.rows[free];
  row.SetName(name);
  row.latitude = editor.realValue.values.latitude;
  row.longitude = editor.realValue.values.longitude;
  row.height = editor.realValue.values.height;

  // The new name goes to the end of the lists even when it took a row in
  // the middle; only "RealValueType" moves to it and no set is re-read.
  editor.realValue.list.entries.push_back(name);
  editor.master.list.entries.push_back(name);
  editor.slave.list.entries.push_back(name);
  editor.realValue.list.Select(static_cast<int>(editor.realValue.list.entries.size()) - 1);
  SaveRealValues(editor.table, editor.filePath, RealValueDecimals::kAfterAdd);
}

void ModifyRealValue(RealValueEditor& editor) {
  if (!ReadForEdit(editor)) return;
  const int found = editor.table.Find(editor.realValue.list.SelectedText());
  if (found >= 0) {
    RealValueRow& row = editor.table.rows[found];
    row.latitude = editor.realValue.values.latitude;
    row.longitude = editor.realValue.values.longitude;
    row.height = editor.realValue.values.height;
  }
  // Saved also when no row matched.
  SaveRealValues(editor.table, editor.filePath, RealValueDecimals::kAfterModifyOrDelete);
}

void DeleteRealValue(RealValueEditor& editor) {
  if (editor.host.ShowMessage(kDeleteRealValueQuestion, kDeleteRealValueTitle,
                              MessageButtons::kOkCancel) != MessageAnswer::kOk) {
    return;
  }
  const int index = editor.realValue.list.selected;
  const std::string name = editor.realValue.list.SelectedText();
  // The three lists hold the same names in the same order.
  RemoveEntry(editor.realValue.list, index);
  RemoveEntry(editor.master.list, index);
  RemoveEntry(editor.slave.list, index);
  if (!editor.realValue.list.entries.empty()) {
    editor.realValue.list.Select(0);
    ApplyRealValueSelection(editor);
  }
  const int found = editor.table.Find(name);
  if (found >= 0) editor.table.rows[found] = RealValueRow{};
  SaveRealValues(editor.table, editor.filePath, RealValueDecimals::kAfterModifyOrDelete);
}

void SaveRealValues(const RealValueTable& table, const std::string& path,
                    RealValueDecimals decimals) {
  OutFile file;
  if (!file.Open(path, FileMode::kBinary)) return;
  for (const RealValueRow& row : table.rows) {
    if (row.IsFree()) continue;
    if (decimals == RealValueDecimals::kAfterAdd) {
      file.Printf("%s,%.11lf,%.11lf,%.6lf\n", row.name, row.latitude, row.longitude, row.height);
    } else {
      file.Printf("%s,%.9lf,%.9lf,%.6lf\n", row.name, row.latitude, row.longitude, row.height);
    }
  }
}

}  // namespace tarnlog
