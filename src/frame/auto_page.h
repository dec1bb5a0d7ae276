// The "AUTO" page: runs the ticked tests over one folder of logs by starting
// copies of the program with the automatic-test switches, one after the
// other, each reading the configuration the page saved beside the logs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/coordinate_fields.h"
#include "frame/file_slot.h"
#include "frame/page.h"

namespace tarnlog {

inline constexpr std::string_view kSetPathFirst = "请设置路径！";
inline constexpr std::string_view kAutoStatusStatic = "Status: Process RTKStatic......";
inline constexpr std::string_view kAutoStatusContinue = "Status: Process Continue......";
inline constexpr std::string_view kAutoStatusNoise = "Status: Process Noise......";
inline constexpr std::string_view kAutoStatusFinished = "Status: Finished";

// The program's own path is read into a buffer of this size.
inline constexpr std::size_t kOwnPathLimit = 512;

class CAuto : public Page {
 public:
  CAuto(PageParent& parent, PageHost& host);
  // Fills both real-value lists at entry 0. With "-AUTO -PATH <folder>" the
  // folder is set and Prosess pressed, the folder's configuration as it
  // stands.
  void Start() override;
  // Reads the page back (unless `autoRun` is set: the folder's
  // configuration is then used as it stands) and starts the run on a
  // worker.
  void Process() override;

  // The Add action's part for one chosen file: refused past 128 rows.
  void AddFile(const std::string& path);

  TextField testFolder;
  TextField goldenFile;
  CheckField runStatic;
  CheckField runContinue;
  CheckField runNoise;
  ChoiceField realValueA;
  CoordinateFields realValueACoordinates;
  ChoiceField realValueB;
  CoordinateFields realValueBCoordinates;
  TableField files;
  ActionField add;
  ActionField chooseGoldenFile;
  ActionField prosess;

  // Set by -AUTO; cleared by the finished notice.
  unsigned char autoRun = 0;

  // The two sets as last read from or shown in their fields.
  Coordinates realA;
  Coordinates realB;

  // The copies started; empty means the running program. Tests name a
  // stand-in.
  std::string copyProgram;

  int FileCount() const { return static_cast<int>(slots_.size()); }
  // The configuration saved by the last run that saved one.
  const AutoTestConfig& Config() const { return config_; }

 private:
  void OnRealValueAChanged();
  void OnRealValueBChanged();
  void Run();
  AutoTestConfig ConfigFromPage() const;
  void RunCopy(std::string_view status, std::string_view switchText, const std::string& program,
               const std::string& folder);
  // "Add", "Golden file" and "Prosess" go off for a run and on after it.
  void EnableRunActions(bool enabled);
  void OnFinished();

  std::vector<FileSlotPaths> slots_;
  AutoTestConfig config_;
};

}  // namespace tarnlog
