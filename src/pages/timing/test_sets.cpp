#include "pages/timing/test_sets.h"

#include "platform/paths.h"

namespace tarnlog {

std::string TestSet::FilePath() const {
  return folder + kPathSeparator + fileName;
}

bool IsHeadingLogType(std::string_view logType) {
  return logType == "headinga" || logType == "heading2a";
}

std::string HeldTo(std::string_view text, std::size_t size) {
  return std::string(text.substr(0, size - 1));
}

int TestSetTable::Add(const TestSet& set) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].IsFree()) continue;
    TestSet& entry = entries_[i];
    entry = set;
    entry.fileName = HeldTo(set.fileName, kSetFileNameSize);
    entry.folder = HeldTo(set.folder, kSetFolderSize);
    entry.scriptPath = HeldTo(set.scriptPath, kSetScriptPathSize);
    entry.outputFolder = HeldTo(set.outputFolder, kSetOutputFolderSize);
    entry.logType = HeldTo(set.logType, kSetKindSize);
    entry.processType = HeldTo(set.processType, kSetKindSize);
    entry.chipType = HeldTo(set.chipType, kSetKindSize);
    return static_cast<int>(i);
  }
  return -1;
}

void TestSetTable::Free(int index) {
  if (index < 0 || index >= static_cast<int>(entries_.size())) return;
  entries_[static_cast<std::size_t>(index)] = {};
}

void TestSetTable::Clear() {
  entries_.fill({});
}

int TestSetTable::OccupiedCount() const {
  return static_cast<int>(Occupied().size());
}

std::vector<int> TestSetTable::Occupied() const {
  std::vector<int> indexes;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].IsFree()) indexes.push_back(static_cast<int>(i));
  }
  return indexes;
}

bool TestSetTable::HoldsSameSet(const TestSet& set) const {
  // Compared as they would be stored.
  const std::string name = HeldTo(set.fileName, kSetFileNameSize);
  const std::string folder = HeldTo(set.folder, kSetFolderSize);
  const std::string logType = HeldTo(set.logType, kSetKindSize);
  const std::string processType = HeldTo(set.processType, kSetKindSize);
  const std::string chipType = HeldTo(set.chipType, kSetKindSize);
  for (const TestSet& entry : entries_) {
    if (!entry.IsFree() && entry.fileName == name && entry.folder == folder &&
        entry.logType == logType && entry.processType == processType &&
        entry.chipType == chipType) {
      return true;
    }
  }
  return false;
}

bool TestSetTable::HoldsFile(std::string_view fileName, std::string_view folder) const {
  const std::string name = HeldTo(fileName, kSetFileNameSize);
  const std::string held = HeldTo(folder, kSetFolderSize);
  for (const TestSet& entry : entries_) {
    if (!entry.IsFree() && entry.fileName == name && entry.folder == held) return true;
  }
  return false;
}

std::string ReacquisitionRootName(const TestSetTable& table) {
  bool allTtff = true;
  bool allReacq = true;
  for (int index : table.Occupied()) {
    allTtff = allTtff && table[index].processType == "TTFF";
    allReacq = allReacq && table[index].processType == "REACQ";
  }
  if (allTtff) return "TTFFInitial";
  if (allReacq) return "ReacqInitial";
  return "Initial";
}

std::string ReacquisitionOutputFolder(std::string_view resultFolder, const TestSet& set) {
  const std::size_t dot = set.fileName.rfind('.');
  const std::string stem = dot == std::string::npos ? std::string() : set.fileName.substr(0, dot);
  return JoinPath(resultFolder, stem + "_" + set.logType);
}

}  // namespace tarnlog
