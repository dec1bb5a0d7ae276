// The simulator comparison page: receiver logs recorded against a GNSS
// signal simulator, compared with the simulator's own truth file. The truth
// file becomes one middle file through ExtractAndProcessData.exe; then
// SimulatorDataProcess.exe runs once per log in a folder of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/file_slot.h"
#include "frame/page.h"

namespace tarnlog {

inline constexpr std::string_view kSimulatorChooseSimulatorFirst =
    "Please Choose Simulator File First!";
inline constexpr std::string_view kSimulatorChooseSourceFirst = "Please Choose Source File First!";
inline constexpr std::string_view kSimulatorEnterStartTime = "Please Enter Right Start GPS SOW!";
inline constexpr std::string_view kSimulatorOpenAnotherFile = "Please open another File!";
inline constexpr std::string_view kSimulatorListEmpty = "No File in ASCII FILE LIST!";
inline constexpr std::string_view kSimulatorNoItemSelected = "No item was selected!";

// The list's fixed table; the Open action adds no file past it.
inline constexpr std::size_t kSimulatorSourceSlots = 100;

// A receiver log of the list. The run fills the last two.
struct SimulatorSource : FileSlotPaths {
  std::string extension;
  std::string drive;
  std::string scriptPath;
  std::string outputFolder;
};

// What a run takes from the page when StartProcess is pressed.
struct SimulatorRun {
  std::string startFolder;
  std::string simulatorPath;
  int type = 0;
  double gpstDifference = 0.0;
  double utcDifference = 0.0;
  double startTime = 0.0;
  bool generateReport = false;
  std::vector<SimulatorSource> sources;
};

class SimulatorProDlg : public Page {
 public:
  SimulatorProDlg(PageParent& parent, PageHost& host);
  // Defaults, an empty list and the start time hidden with type 0.
  void Start() override;
  // StartProcess: reads the page, then runs on a worker of its own.
  void Process() override;

  // The Open action's part for one chosen log; a path already listed is
  // refused.
  void AddSourceFile(const std::string& path);
  void DeleteOneItem();
  void DeleteAllItem();

  ChoiceField smltType;
  TextField smltFile;
  ActionField openSmltFile;
  TextField asciiFile;
  ActionField openAscii;
  TextField gpstDiff;
  TextField utcDiff;
  TextField startTime;
  CheckField generateReport;
  TableField sourceFiles;
  ActionField deleteOne;
  ActionField deleteAll;
  ActionField startProcess;

  const std::vector<SimulatorSource>& Sources() const { return sources_; }

 private:
  SimulatorRun RunFromFields() const;
  void Worker(SimulatorRun run);
  void OnFinished();
  void OnTypeChanged();
  void OnGpstDiffChanged();
  void EnableAll(bool enabled);

  std::vector<SimulatorSource> sources_;
};

}  // namespace tarnlog
