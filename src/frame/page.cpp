#include "frame/page.h"

#include <thread>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"

namespace tarnlog {

Page::Page(PageParent& parent, PageHost& host, std::string_view className)
    : parent_(parent), host_(host), className_(className) {}

void Page::Start() {
  startFolder_ = CurrentFolder();
  for (Field* field : fields_)
    field->Reset();
}

std::string Page::ExePath(std::string_view tool) const {
  return JoinPath(JoinPath(startFolder_, "EXE"), tool);
}

std::string Page::ConfigPath(std::string_view file) const {
  return JoinPath(JoinPath(startFolder_, "Config"), file);
}

bool Page::RunModeWord(const CommandLine& commandLine, std::string_view word) {
  BeginCommandLineRun();
  return TakeModeWord(commandLine, word);
}

bool Page::TakeModeWord(const CommandLine&, std::string_view) {
  return false;
}

Field* Page::FindField(std::string_view caption, std::string_view group) const {
  for (Field* field : fields_) {
    if (field->Caption() == caption && (group.empty() || field->Group() == group)) return field;
  }
  return nullptr;
}

void Page::SetStatus(std::string_view text) {
  status_ = text;
  host_.SetStatus(text);
}

MessageAnswer Page::Message(std::string_view text, std::string_view title, MessageButtons buttons) {
  return host_.ShowMessage(text, title, buttons);
}

void Page::FailCheck(std::string_view message, std::string_view field) {
  if (!commandLineRun_) {
    Message(message);
    return;
  }
  std::string why = className_ + ": " + std::string(message);
  if (!field.empty()) why += " (" + std::string(field) + ")";
  EndProcess(1, why);
}

void Page::StartWorker(std::function<void()> work) {
  ++workersStarted_;
  std::thread([this, work = std::move(work)] {
    work();
    if (commandLineRun_) EndProcess(1, className_ + ": the run ended before it finished");
  }).detach();
}

AutoTestSwitch Page::TakeAutoTestSwitch(std::string_view switchText) {
  AutoTestSwitch found = ReadAutoTestSwitch(parent_.Arguments(), switchText);
  if (found.state == AutoTestSwitch::State::kIgnored) parent_.NoteIgnoredSwitch(switchText);
  if (found.state == AutoTestSwitch::State::kTaken) {
    BeginCommandLineRun();
    parent_.NoteSwitchRun(*this);
  }
  return found;
}

std::optional<AutoTestConfig> Page::TakeAutomaticTest(std::string_view switchText,
                                                      unsigned char AutoTestConfig::*flag) {
  const AutoTestSwitch found = TakeAutoTestSwitch(switchText);
  if (found.state != AutoTestSwitch::State::kTaken) return std::nullopt;
  AutoTestConfig config;
  config.path = found.folder;
  if (config.path.empty() || !config.Load() || config.*flag == 0) SelfTerminate();
  automaticTest_ = true;
  return config;
}

void Page::RefillRealValueList(ChoiceField& list) const {
  std::vector<std::string> names;
  for (const RealValueRow& row : parent_.RealValueStore().rows) {
    if (row.IsFree()) break;
    names.emplace_back(row.Name());
  }
  list.Fill(std::move(names));
}

}  // namespace tarnlog
