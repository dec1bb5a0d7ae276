// The heading page: heading accuracy of two-antenna receivers. "Static" runs
// each log alone against the known antenna coordinates and a true heading;
// "Dynamic" runs pairs of a source and a reference log. Either way each run
// gets a folder where HeadingErrorPro.exe does the analysis, one run after
// the other, on the calling thread.
#pragma once

#include <string>
#include <string_view>

#include "frame/coordinate_fields.h"
#include "frame/page.h"
#include "pages/dynamic/source_reference_pairs.h"

namespace tarnlog {

// The "Type" entries, and the type value each file keeps.
inline constexpr int kHeadingStatic = 0;
inline constexpr int kHeadingDynamic = 1;

inline constexpr std::string_view kHeadingChooseAsciiFirst = "Please Choose ASCII File Firstly!";
inline constexpr std::string_view kHeadingChooseRefFirst = "Please Choose Ref File Firstly!";
inline constexpr std::string_view kHeadingSetPairsFirst = "Please Set DD Files Firstly!";
inline constexpr std::string_view kHeadingMixedTypes =
    "You could only process dynamic or static data at the same time!";
inline constexpr std::string_view kHeadingReportOpenFailed =
    "Error occur when generating report,clock ok to continue without report!";

// The three lists and the groups of their actions.
inline constexpr std::string_view kHeadingSourceList = "Source File";
inline constexpr std::string_view kHeadingRefList = "Ref File";
inline constexpr std::string_view kHeadingPairList = "DD File";

class Heading : public Page {
 public:
  Heading(PageParent& parent, PageHost& host);
  // Defaults, a new stamp, the tool's path and the Static flow's controls.
  void Start() override;
  // The flow of the first file's type; afterwards "GenerateReport" is off,
  // and a run from the command line ends the process.
  void Process() override;
  // Refills the "Base" and "ANT1" lists, selects entry 0 of both and runs
  // the "Base" list's changed action.
  void RefreshOnTabChoice() override;

  // Open's part for one chosen file: it keeps the "Type" in force now.
  void AddSource(const std::string& path);
  void AddReference(const std::string& path);
  void ClearAll();

  ChoiceField type;
  TextField resultFolder;  // "SaveAs"
  ActionField saveAs;
  ChoiceField base;
  CoordinateFields baseCoordinates;
  ChoiceField ant1;
  CoordinateFields ant1Coordinates;
  ChoiceField ant2;
  CoordinateFields ant2Coordinates;
  TextField trueHeading;
  CheckField generateReport;
  ChoiceField sourceKind;     // "Source"
  ChoiceField referenceKind;  // "Ref"
  TableField sourceFiles;
  ActionField openSource;
  ActionField deleteOneSource;
  ActionField deleteAllSources;
  TableField referenceFiles;
  ActionField openReference;
  ActionField deleteOneReference;
  ActionField deleteAllReferences;
  TableField pairList;
  ActionField deleteOnePair;
  ActionField deleteAllPairs;
  ActionField clearAll;
  ActionField process;

  const PairedFileList& Sources() const { return sources_; }
  const PairedFileList& References() const { return references_; }
  const SourceReferencePairs& Pairs() const { return pairs_; }
  const std::string& Stamp() const { return stamp_; }
  void SetStamp(std::string stamp) { stamp_ = std::move(stamp); }

 protected:
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  // A pick in "Base" takes the first row of that exact name; when the name
  // also stands in "ANT1", "ANT1" and "ANT2" move to the same position and
  // all three sets receive the row's coordinates.
  void OnBaseChanged();
  void OnTypeChanged();
  void ShowFlowControls();
  void ChooseResultFolder();
  void OpenFiles(PairedFileList& files, TableField& list);
  void DeleteOneOf(PairedFileList& files, TableField& list, std::string_view emptyText);
  void AddFile(PairedFileList& files, TableField& list, const std::string& path);

  // The two flows (heading_run.cpp).
  void StaticFlow();
  void DynamicFlow();
  std::string TakeResultFolder();
  void CopyTools(const std::string& folder) const;
  void FinishRun();

  PairedFileList sources_;
  PairedFileList references_;
  SourceReferencePairs pairs_;
  std::string stamp_;
  int currentFileType_ = kHeadingStatic;
};

}  // namespace tarnlog
