// The static page: accuracy of receivers recorded on a surveyed point, the
// editor of the real-value table, and the generation of a true coordinate
// from a log.
#pragma once

#include <array>
#include <string>

#include "frame/coordinate_fields.h"
#include "frame/page.h"
#include "pages/static/real_value_generation.h"
#include "pages/static/real_value_store.h"
#include "pages/static/static_run.h"

namespace tarnlog {

inline constexpr std::size_t kStaticSlotCount = 100;

inline constexpr std::string_view kChooseFileFirst = "Please Choose ASCII File Firstly!";
inline constexpr std::string_view kNoItemSelected = "No item was selected!";
inline constexpr std::string_view kTransferFirst =
    "Please click transfer button, transfer the value to original";
inline constexpr std::string_view kStaticListFull = "At most 100 files can be chosen!";

class llherroRTKStatic : public Page {
 public:
  llherroRTKStatic(PageParent& parent, PageHost& host);
  // Tests Config/AllRealValue.txt, fills the three real-value lists and
  // applies their first entries; when the file can't be read and written
  // the start stops right after saying so. With "-RS -PATH <folder>" the
  // files of the folder's automatic-test list are added and Process pressed.
  void Start() override;
  void Process() override;

  // The Open action's part for one chosen file.
  void AddFile(const std::string& path);
  void DeleteOneItem();
  void DeleteAllItem();
  void Generate();
  void Transfer();

  ChoiceField boardType;
  ChoiceField processType;
  TextField savePath;
  ActionField setSavePath;
  TextField changePath;
  CheckField copyAsciiFiles;
  CheckField crc;
  CheckField nemaCrc;
  CheckField generateReport;
  CheckField ppp;
  CheckField delTxtFiles;
  CheckField delFigFiles;
  TextField dayOfWeek;
  TableField files;
  ActionField openAsciiFile;
  ActionField deleteOne;
  ActionField deleteAll;
  ActionField process;
  std::array<CheckField, kMeanSourceCount> meanSources;  // "GenerateRealValue"
  ActionField generate;
  ActionField transfer;

  ChoiceField realValueType;
  CoordinateFields realValueCoordinates;
  ChoiceField master;
  CoordinateFields masterCoordinates;
  ChoiceField slave;
  CoordinateFields slaveCoordinates;
  TextField addRealValueType;
  ActionField addAction;
  ActionField modifyAction;
  ActionField deleteAction;

  // The three sets as last read from or shown in their fields.
  Coordinates realValue;
  Coordinates masterValue;
  Coordinates slaveValue;

  // What a run reads besides the controls.
  const std::array<StaticFileSlot, kStaticSlotCount>& Slots() const { return slots_; }
  int FileCount() const { return count_; }
  const std::string& LastFilePath() const { return lastFilePath_; }
  const std::string& HeldRoot() const { return heldRoot_; }
  const std::string& Stamp() const { return stamp_; }
  void SetStamp(std::string stamp) { stamp_ = std::move(stamp); }
  bool TransferToggled() const { return transferToggled_; }

  // Tests follow the worker's extractions through these.
  std::function<void(std::size_t slot)> onExtractionStart;
  std::function<void(std::size_t slot)> onExtractionEnd;

 protected:
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  RealValueEditor Editor();
  ExtractSettings ExtractionSettings();
  StaticRun RunFromFields();
  std::string ChooseResultFolder(std::string_view word);
  void Worker(StaticRun run);
  void CompareEphemeris();
  void OnFinished();
  void EnableAll(bool enabled);
  void ClearList(std::size_t slotsCleared);
  void OnBoardChanged();
  void OnProcessChanged();
  void ChooseSaveFolder();

  std::array<StaticFileSlot, kStaticSlotCount> slots_{};
  int count_ = 0;
  std::string extension_;  // of the file added last
  std::string lastFilePath_;
  std::string heldRoot_;
  std::string stamp_;
  bool transferToggled_ = false;
  bool realValueMode_ = false;
  bool perfstatHeaderPending_ = true;
};

}  // namespace tarnlog
