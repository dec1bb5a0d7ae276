#include "frame/fields.h"

#include <algorithm>
#include <utility>

#include "frame/page.h"

namespace tarnlog {

Field::Field(Page& page, std::string_view caption, FieldKind kind, std::string_view group)
    : caption_(caption), group_(group), kind_(kind) {
  page.Register(*this);
}

TextField::TextField(Page& page, std::string_view caption, std::string_view defaultText,
                     std::string_view group)
    : Field(page, caption, FieldKind::kText, group), text(defaultText), defaultText(defaultText) {}

void TextField::Edit(std::string newText) {
  text = std::move(newText);
  if (onChanged) onChanged();
}

CheckField::CheckField(Page& page, std::string_view caption, bool defaultChecked,
                       std::string_view group)
    : Field(page, caption, FieldKind::kCheck, group),
      checked(defaultChecked),
      defaultChecked(defaultChecked) {}

void CheckField::Click() {
  checked = !checked;
  if (onClicked) onClicked();
}

ChoiceField::ChoiceField(Page& page, std::string_view caption, std::vector<std::string> entries,
                         int defaultIndex, std::string_view group, ChoiceStyle style)
    : Field(page, caption, FieldKind::kChoice, group),
      entries(entries),
      defaultEntries(std::move(entries)),
      defaultIndex(defaultIndex),
      style(style) {
  Reset();
}

void ChoiceField::Reset() {
  entries = defaultEntries;
  Select(defaultIndex);
}

void ChoiceField::Fill(std::vector<std::string> newEntries) {
  entries = std::move(newEntries);
  selected = -1;
}

void ChoiceField::Select(int index) {
  selected = (index >= 0 && index < static_cast<int>(entries.size())) ? index : -1;
}

void ChoiceField::Choose(int index) {
  Select(index);
  if (onChanged) onChanged();
}

const std::string& ChoiceField::SelectedText() const {
  static const std::string none;
  return selected >= 0 ? entries[selected] : none;
}

TableField::TableField(Page& page, std::string_view caption, std::vector<std::string> columns,
                       std::string_view group)
    : Field(page, caption, FieldKind::kTable, group), columns(std::move(columns)) {}

void TableField::Reset() {
  rows.clear();
  selected = -1;
  selectedRows.clear();
}

std::vector<int> TableField::SelectedRows() const {
  std::vector<int> chosen;
  const int count = static_cast<int>(rows.size());
  if (!multipleSelection || selectedRows.empty()) {
    if (selected >= 0 && selected < count) chosen.push_back(selected);
    return chosen;
  }
  for (int row : selectedRows) {
    if (row >= 0 && row < count) chosen.push_back(row);
  }
  std::sort(chosen.begin(), chosen.end());
  chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
  return chosen;
}

ActionField::ActionField(Page& page, std::string_view caption, std::function<void()> action,
                         std::string_view group)
    : Field(page, caption, FieldKind::kAction, group), action_(std::move(action)) {}

void ActionField::Press() {
  if (enabled && action_) action_();
}

}  // namespace tarnlog
