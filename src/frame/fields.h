// A page's controls, declared once as members of the page model: caption,
// kind, default and list entries. The batch run and the tests find them by
// caption; the window lays out its controls from the same declarations.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

class Page;

enum class FieldKind {
  kText,    // an edit box (numbers too: pages read them as they need)
  kCheck,   // a tick box
  kChoice,  // a drop-down list, a list box or a group of radio buttons
  kTable,   // a list view of rows under column captions
  kAction,  // a button
};

// How the window shows a choice; the model treats them alike.
enum class ChoiceStyle { kDropDown, kRadio };

class Field {
 public:
  Field(Page& page, std::string_view caption, FieldKind kind, std::string_view group);
  virtual ~Field() = default;
  Field(const Field&) = delete;
  Field& operator=(const Field&) = delete;

  const std::string& Caption() const { return caption_; }
  // The frame or row a caption stands in ("Base" for the Base "Latitude"),
  // empty where the caption alone is unique.
  const std::string& Group() const { return group_; }
  FieldKind Kind() const { return kind_; }

  // Back to the declared default.
  virtual void Reset() = 0;

  bool enabled = true;
  // A page that shows different controls by a choice (the heading page's
  // "Type") hides the others; the model keeps their values.
  bool visible = true;

 private:
  std::string caption_;
  std::string group_;
  FieldKind kind_;
};

class TextField : public Field {
 public:
  TextField(Page& page, std::string_view caption, std::string_view defaultText = {},
            std::string_view group = {});
  void Reset() override { text = defaultText; }

  // The user's typing: the text changes, then the page's changed action
  // runs. Setting `text` directly runs nothing.
  void Edit(std::string newText);

  std::string text;
  const std::string defaultText;
  std::function<void()> onChanged;
};

class CheckField : public Field {
 public:
  CheckField(Page& page, std::string_view caption, bool defaultChecked = false,
             std::string_view group = {});
  void Reset() override { checked = defaultChecked; }

  // The user's click: the tick flips, then the page's clicked action runs.
  // Setting `checked` directly runs nothing.
  void Click();

  bool checked;
  const bool defaultChecked;
  std::function<void()> onClicked;
};

class ChoiceField : public Field {
 public:
  // `onChanged` is the page's changed-selection action, run when the user
  // picks an entry (Choose), never by Select.
  ChoiceField(Page& page, std::string_view caption, std::vector<std::string> entries = {},
              int defaultIndex = 0, std::string_view group = {},
              ChoiceStyle style = ChoiceStyle::kDropDown);
  void Reset() override;

  // Replaces the entries; the selection is cleared.
  void Fill(std::vector<std::string> newEntries);
  // Moves the selection without running the changed action; -1 clears it.
  void Select(int index);
  // The user's pick: select, then run the changed action.
  void Choose(int index);
  // The selected entry's text, or "" when nothing is selected.
  const std::string& SelectedText() const;

  std::vector<std::string> entries;
  int selected = -1;
  const std::vector<std::string> defaultEntries;
  const int defaultIndex;
  const ChoiceStyle style;
  std::function<void()> onChanged;
};

class TableField : public Field {
 public:
  TableField(Page& page, std::string_view caption, std::vector<std::string> columns,
             std::string_view group = {});
  void Reset() override;

  // The selected rows in list order: in a list of several selections those
  // of `selectedRows`, or else the one of `selected`.
  std::vector<int> SelectedRows() const;

  const std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
  int selected = -1;
  bool multipleSelection = false;
  std::vector<int> selectedRows;  // with `multipleSelection`, in any order
  // The page's action on a double-click of the list.
  std::function<void()> onActivated;
};

class ActionField : public Field {
 public:
  ActionField(Page& page, std::string_view caption, std::function<void()> action,
              std::string_view group = {});
  void Reset() override {}

  // Runs the action, as a press of the button does.
  void Press();

 private:
  std::function<void()> action_;
};

}  // namespace tarnlog
