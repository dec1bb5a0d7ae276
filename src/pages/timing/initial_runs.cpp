#include "pages/timing/initial_runs.h"

#include <vector>

#include "pages/timing/initial_texts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"

namespace tarnlog {
namespace {

constexpr const char* kReacquisitionTools[] = {"Reacq_TTFF_DataProcess.exe", "TTFF_analysis.exe",
                                               "ExtractAndProcessData.exe"};

void CopyTool(const std::string& toolFolder, std::string_view tool, const std::string& into) {
  CopyFileNoOverwrite(JoinPath(toolFolder, tool), JoinPath(into, tool));
}

}  // namespace

PpsScripts PreparePpsRun(const TestSetTable& table, const PpsRun& run) {
  PpsScripts scripts{JoinPath(run.root, kPpsScriptName), JoinPath(run.root, kPpsCleanScriptName)};
  std::vector<PpsScriptRow> rows;
  for (int index : table.Occupied()) {
    const TestSet& set = table[index];
    PpsScriptRow row;
    row.csvPath = set.FilePath();
    row.stem = SplitPath(set.fileName).name;
    row.folder = JoinPath(run.resultFolder, row.stem);
    MakeFolder(row.folder);
    CopyTool(run.toolFolder, "PPS.exe", row.folder);
    if (run.copyData) CopyFileNoOverwrite(row.csvPath, JoinPath(row.folder, set.fileName));
    rows.push_back(std::move(row));
  }
  WriteWholeFile(scripts.run, PpsScriptText(rows, run.method), FileMode::kText);
  WriteWholeFile(scripts.clean, PpsCleanScriptText(rows), FileMode::kText);
  return scripts;
}

void RunScriptAndRemove(const std::string& scriptPath) {
  ChildProcess child = LaunchScript(scriptPath);
  const bool started = child.Started();
  WaitChild(child);
  if (started) RemoveFile(scriptPath);
}

void PrepareReacquisitionRun(TestSetTable& table, const ReacquisitionRun& run) {
  for (int index : table.Occupied()) {
    TestSet& set = table[index];
    set.outputFolder =
        HeldTo(ReacquisitionOutputFolder(run.resultFolder, set), kSetOutputFolderSize);
    MakeFolder(set.outputFolder);
    for (const char* tool : kReacquisitionTools)
      CopyTool(run.toolFolder, tool, set.outputFolder);
    WriteWholeFile(JoinPath(set.outputFolder, kControlFileName),
                   ControlText(set, run.parameterText), FileMode::kText);
    set.scriptPath = HeldTo(JoinPath(set.outputFolder, kInitialScriptName), kSetScriptPathSize);
    WriteWholeFile(set.scriptPath, InitialCommandText(set, index + 1), FileMode::kText);
    if (run.copyData) CopyFileNoOverwrite(set.FilePath(), JoinPath(set.outputFolder, set.fileName));
  }
}

void RunReacquisitionScripts(const TestSetTable& table) {
  for (int index : table.Occupied())
    RunScriptAndWait(table[index].scriptPath);
}

}  // namespace tarnlog
