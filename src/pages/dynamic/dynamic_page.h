// The dynamic page: accuracy of receivers recorded on a moving carrier
// against a reference trajectory. Each pair of a source log and a reference
// file gets a folder and a script that runs DynamicDataProcess.exe on them;
// the page itself compares nothing.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "frame/page.h"
#include "pages/dynamic/dynamic_scripts.h"
#include "pages/dynamic/source_reference_pairs.h"

namespace tarnlog {

inline constexpr std::string_view kDynamicChooseAsciiFirst = "Please Choose ASCII File Firstly!";
inline constexpr std::string_view kDynamicChooseRefFirst = "Please Choose Ref File Firstly!";
inline constexpr std::string_view kDynamicSetPairsFirst = "Please Set DD Files Firstly!";

class llherroRTKDynamic : public Page {
 public:
  llherroRTKDynamic(PageParent& parent, PageHost& host);
  // Clears the lists, makes the stamp and selects entry 0 of the five lists.
  void Start() override;
  // The run over the complete pairs, on a worker of its own.
  void Process() override;

  // The Open actions' part for one chosen file.
  void AddSourceFile(const std::string& path);
  void AddReferenceFile(const std::string& path);
  // Double-clicks on the two file lists.
  void OnSourceDoubleClick();
  void OnReferenceDoubleClick();
  void ClearAll();

  ChoiceField srcFileType;
  ChoiceField refFileType;
  TextField resultPath;
  ActionField saveAs;
  ChoiceField refPosType;
  ChoiceField refVelType;
  ChoiceField refAttType;
  TextField fromWeek;
  TextField fromSeconds;
  TextField toWeek;
  TextField toSeconds;
  CheckField generateReport;
  TextField sourceFile;
  ActionField openSourceFile;
  TableField sourceFiles;
  ActionField deleteOneSource;
  ActionField deleteAllSource;
  TextField referenceFile;
  ActionField openReferenceFile;
  TableField referenceFiles;
  ActionField deleteOneReference;
  ActionField deleteAllReference;
  TableField pairFiles;
  ActionField deleteOnePair;
  ActionField deleteAllPair;
  ActionField clearAll;
  ActionField process;

  // What a run reads besides the controls.
  const PairedFileList& Sources() const { return sources_; }
  const PairedFileList& References() const { return references_; }
  const SourceReferencePairs& Pairs() const { return pairs_; }
  // The kinds each pair is run with, as list indexes.
  const std::array<int, kMaxSourceReferencePairs>& PosKinds() const { return posKinds_; }
  const std::array<int, kMaxSourceReferencePairs>& VelKinds() const { return velKinds_; }
  const std::array<int, kMaxSourceReferencePairs>& AttKinds() const { return attKinds_; }
  int NextSourceType() const { return nextSourceType_; }
  int NextReferenceType() const { return nextReferenceType_; }
  const std::string& Stamp() const { return stamp_; }
  void SetStamp(std::string stamp) { stamp_ = std::move(stamp); }

 private:
  void ChooseResultFolder();
  void Worker();
  void OnSrcFileTypeChanged();
  void OnRefFileTypeChanged();

  PairedFileList sources_;
  PairedFileList references_;
  SourceReferencePairs pairs_;
  std::array<int, kMaxSourceReferencePairs> posKinds_{};
  std::array<int, kMaxSourceReferencePairs> velKinds_{};
  std::array<int, kMaxSourceReferencePairs> attKinds_{};
  int nextSourceType_ = 0;
  int nextReferenceType_ = 0;
  std::string stamp_;
};

}  // namespace tarnlog
