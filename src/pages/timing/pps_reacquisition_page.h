// The "Initial" page: first fix, reacquisition and PPS tests. The page
// prepares folders, control files and scripts and runs the external tools
// on them, one after the other, on the calling thread; the measuring is
// theirs.
#pragma once

#include <string>
#include <string_view>

#include "frame/coordinate_fields.h"
#include "frame/page.h"
#include "pages/timing/test_sets.h"

namespace tarnlog {

// The first file added decides what the page's sets are; "Delete All Item"
// leaves the page undecided again.
enum class InitialSetKind { kNone, kPps, kReacquisition };

class PPSReacquisition : public Page {
 public:
  PPSReacquisition(PageParent& parent, PageHost& host);
  // Reads Config/parameter.txt; when it can't be opened, says so twice and
  // leaves the rest undone. Then applies the signal and log type choices
  // and refreshes the real-value lists.
  void Start() override;
  // Refills both real-value lists, selects entry 0 of both and runs the
  // "RealValue" list's changed action.
  void RefreshOnTabChoice() override;
  // The PPS run or the reacquisition run, by the page's set kind; in a
  // command-line run the process ends afterwards.
  void Process() override;

  // The list actions.
  void OpenPpsCsvFile();
  void OpenFile();
  // Adds the file of the "Open File" field with the current settings.
  void Add();
  void SetSavePath();
  void DeleteOneItem();
  void DeleteAllItem();

  // PPS
  ChoiceField method;
  ActionField openPpsCsvFile;
  // First fix and reacquisition
  ChoiceField logType;
  ChoiceField processType;
  ChoiceField chipType;
  ChoiceField signal;  // "ConnectSignal" or "DisconnectSignal"
  TextField onTime;
  TextField offTime;
  TextField testTimes;
  ChoiceField realValue;
  CoordinateFields realCoordinates;
  ChoiceField roverPos;
  CoordinateFields roverCoordinates;
  // Common
  TextField filePath;  // "Open File": the current file
  ActionField openFile;
  ActionField add;
  TextField savePath;
  ActionField setSavePath;
  CheckField copyDataFiles;
  CheckField generateReport;
  TableField files;
  ActionField deleteOne;
  ActionField deleteAll;
  ActionField process;

  InitialSetKind SetKind() const { return kind_; }
  const TestSetTable& Sets() const { return sets_; }
  const std::string& ParameterText() const { return parameterText_; }
  // The caption over the "RealValue" list: "BasePos" for the heading log
  // types.
  const std::string& RealValueLabel() const { return realValueLabel_; }

 protected:
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  // A pick in "RealValue" sets both coordinate sets and moves "RoverPos"
  // to the same position; a pick in "RoverPos" sets the rover's only.
  void OnRealValueChanged();
  void OnRoverPosChanged();
  // The chosen phase enables its time field and disables the other.
  void OnSignalChanged();
  // The heading log types enable the rover and relabel the true position.
  void OnLogTypeChanged();
  void ShowRows();
  void RunPps();
  void RunReacquisition();
  // Empties the path fields and the list and gives Process back.
  void EndRun();
  // The test run's pass: the settings of one process type, then every file
  // whose path holds `word`.
  void AddFilesHolding(const std::vector<std::string>& paths, std::string_view word);

  TestSetTable sets_;
  InitialSetKind kind_ = InitialSetKind::kNone;
  std::string parameterText_;
  std::string realValueLabel_ = "RealValue";
};

}  // namespace tarnlog
