#include "pages/ins/pvt_process_page.h"

#include "pages/ins/ins_meas_script.h"
#include "pages/ins/raw_imu_filter.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

constexpr std::string_view kTool = "InsMeasProc.exe";

// The held stream, or the field's log opened now when it was typed rather
// than chosen.
InFile& LogStream(InFile& stream, const std::string& path) {
  if (!stream.IsOpen()) stream.Open(path, FileMode::kText);
  return stream;
}

}  // namespace

PVTProcess::PVTProcess(PageParent& parent, PageHost& host)
    : Page(parent, host, "PVTProcess"),
      sourceLog(*this, "Open Source"),
      openSource(*this, "Open Source", [this] { ChooseLog(sourceLog, sourceStream_); }),
      referenceLog(*this, "Open Refere"),
      openReference(*this, "Open Refere", [this] { ChooseLog(referenceLog, referenceStream_); }),
      configFile(*this, "Open Config", kInsConfigOptional),
      save(*this, "Save"),
      process(*this, "Process", [this] { Process(); }) {}

void PVTProcess::ChooseLog(TextField& field, InFile& stream) {
  // Several names may be chosen; the last one stays.
  const std::vector<std::string> chosen = Host().ChooseFiles(filters::kLogFiles);
  if (!chosen.empty()) TakeLog(field, stream, chosen.back());
}

void PVTProcess::TakeLog(TextField& field, InFile& stream, const std::string& path) {
  field.text = AbsolutePath(path);
  stream.Open(field.text, FileMode::kText);
}

void PVTProcess::ChooseSourceLog(const std::string& path) {
  TakeLog(sourceLog, sourceStream_, path);
}

void PVTProcess::ChooseReferenceLog(const std::string& path) {
  TakeLog(referenceLog, referenceStream_, path);
}

void PVTProcess::Process() {
  process.enabled = false;
  // A missing log stops the run without a word, and Process stays off.
  if (sourceLog.text.empty() || referenceLog.text.empty()) return;

  const std::string saveText = save.text.empty() ? std::string() : AbsolutePath(save.text);
  const std::string result = InsResultFolder(saveText, SplitPath(sourceLog.text).name,
                                             SplitPath(referenceLog.text).name, TimeStamp());
  MakeFolder(result);
  {
    OutFile sourceTable;
    OutFile referenceTable;
    sourceTable.Open(JoinPath(result, kInsSourceTable), FileMode::kText);
    referenceTable.Open(JoinPath(result, kInsReferenceTable), FileMode::kText);
    FilterRawImuLog(LogStream(sourceStream_, sourceLog.text), sourceTable);
    FilterRawImuLog(LogStream(referenceStream_, referenceLog.text), referenceTable);
  }
  sourceStream_.Close();
  referenceStream_.Close();

  const std::string script = JoinPath(result, "InsMeasProcPlot.bat");
  OutFile scriptFile;
  if (!scriptFile.Open(script, FileMode::kText)) {
    Message(kInsOpenBatError);
    return;
  }
  scriptFile.Write(InsMeasProcPlotText(PathPart(result, 1), result));
  scriptFile.Close();

  if (!CopyFileNoOverwrite(JoinPath(CurrentFolder(), std::string("EXE/").append(kTool)),
                           JoinPath(result, kTool))) {
    Message(kInsCopyToolError);
    process.enabled = true;
    return;
  }
  RunScriptAndWait(script);

  sourceLog.text.clear();
  referenceLog.text.clear();
  configFile.text.clear();
  process.enabled = true;
}

}  // namespace tarnlog
