// The page contract: construct with the main dialog as parent, start, the
// Process action, and for three pages a refresh when their tab is chosen.
// A page talks to the user only through its host.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/auto_test_config.h"
#include "frame/auto_test_switch.h"
#include "frame/command_line.h"
#include "frame/fields.h"
#include "frame/real_value_table.h"
#include "platform/host.h"

namespace tarnlog {

class Page;

// What a page may see of the main dialog that owns it.
class PageParent {
 public:
  virtual ~PageParent() = default;
  virtual const CommandLine& Arguments() const = 0;
  virtual RealValueTable& RealValueStore() = 0;
  // A page took an automatic-test switch in its start and runs on its own;
  // the headless run then waits for it instead of ending.
  virtual void NoteSwitchRun(const Page& page) = 0;
  // A page saw its switch with the wrong argument count and ignored it.
  virtual void NoteIgnoredSwitch(std::string_view switchText) = 0;
};

class Page {
 public:
  Page(PageParent& parent, PageHost& host, std::string_view className);
  virtual ~Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  const std::string& ClassName() const { return className_; }

  // Sets the defaults and fills the value lists; the start folder is the
  // current directory at this moment.
  virtual void Start();
  // The page's main action.
  virtual void Process() {}
  // Only the "Noise", "Initial" and "Heading" pages do anything here.
  virtual void RefreshOnTabChoice() {}

  // Fills the page from a mode word's positions and presses its action, as a
  // run from the command line. False when this page has no such mode yet.
  bool RunModeWord(const CommandLine& commandLine, std::string_view word);

  // Declared controls, in declaration order.
  const std::vector<Field*>& Fields() const { return fields_; }
  // The first field of this caption (and group, when one is given).
  Field* FindField(std::string_view caption, std::string_view group = {}) const;
  // The first field of this caption and kind: a caption may name both a
  // text box and the button beside it ("Set Save Path").
  template <typename T>
  T* Find(std::string_view caption, std::string_view group = {}) const {
    for (Field* field : fields_) {
      if (field->Caption() != caption || (!group.empty() && field->Group() != group)) continue;
      if (T* typed = dynamic_cast<T*>(field)) return typed;
    }
    return nullptr;
  }

  const std::string& StartFolder() const { return startFolder_; }
  // Where the laboratory's programs and the configuration lie:
  // <start folder>/EXE/<tool> and <start folder>/Config/<file>.
  std::string ExePath(std::string_view tool) const;
  std::string ConfigPath(std::string_view file) const;
  const std::string& StatusText() const { return status_; }
  // How many workers this page has started, for the headless run's ending.
  int WorkersStarted() const { return workersStarted_.load(); }
  bool InCommandLineRun() const { return commandLineRun_; }
  // Started as an automatic-test copy (its switch taken and its test on),
  // kept apart from the batch flag.
  bool InAutomaticTest() const { return automaticTest_; }

  // Set by the dispatcher; looked at once, when the action ends.
  int batchFlag = 0;

 protected:
  PageParent& Parent() const { return parent_; }
  PageHost& Host() const { return host_; }

  void SetStatus(std::string_view text);
  MessageAnswer Message(std::string_view text, std::string_view title = {},
                        MessageButtons buttons = MessageButtons::kOk);

  // A check refused the action. In the window `message` is the check's box.
  // A run from the command line would wait on that box for ever; it ends
  // here instead, with status 1 and one line of the message followed by
  // `field` in brackets when given (the field the check refused, its text
  // and its range).
  void FailCheck(std::string_view message, std::string_view field = {});
  // The answer of a list action: empty when it went through, otherwise its
  // refusal, which counts as a failed check.
  void Refuse(std::string_view refusal) {
    if (!refusal.empty()) FailCheck(refusal);
  }

  // Runs `work` on a worker thread of its own, with no handle kept. When a
  // command-line run's worker returns without ending the process (a check
  // failed on the way), the process ends with status 1.
  void StartWorker(std::function<void()> work);
  // The page's own part of RunModeWord.
  virtual bool TakeModeWord(const CommandLine& commandLine, std::string_view word);
  // The run from the command line begins; the headless ending applies.
  void BeginCommandLineRun() { commandLineRun_ = true; }

  // Looks for this page's automatic-test switch in the start. A taken switch
  // begins a command-line run; an ignored one is reported to the frame.
  AutoTestSwitch TakeAutoTestSwitch(std::string_view switchText);
  // The start of an automatic-test copy of the program: takes the switch
  // and loads the test folder's configuration. A copy whose configuration
  // can't be read, or whose test flag (`flag`) is off, ends at once; nothing
  // comes back when the switch isn't taken.
  std::optional<AutoTestConfig> TakeAutomaticTest(std::string_view switchText,
                                                  unsigned char AutoTestConfig::*flag);

  // Refills a list from the real-value table: names from row 0 up to the
  // first free row.
  void RefillRealValueList(ChoiceField& list) const;

 private:
  friend class Field;
  void Register(Field& field) { fields_.push_back(&field); }

  PageParent& parent_;
  PageHost& host_;
  std::string className_;
  std::string startFolder_;
  std::string status_ = "Status:";
  std::vector<Field*> fields_;
  std::atomic<int> workersStarted_{0};
  bool commandLineRun_ = false;
  bool automaticTest_ = false;
};

}  // namespace tarnlog
