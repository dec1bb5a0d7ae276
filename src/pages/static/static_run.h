// One Process run of the Static page as plain records and free functions:
// the result folder, the scripts it writes, and the three passes over the
// files. The page copies its fields into a StaticRun before the worker
// starts, so the run never reads a control.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "extract/extraction_state.h"
#include "frame/file_slot.h"
#include "pages/static/real_value_store.h"
#include "platform/processes.h"

namespace tarnlog {

// Board values ("BoardType"), in list order.
enum StaticBoard {
  kBoardKestrix = 0,
  kBoardNovatel,
  kBoardTrimble,
  kBoardNema,
  kBoardGga,
  kBoardBmi055,
  kBoardAdis16470,
  kBoardAdis16488,
  kBoardAdis16465,
  kBoardEpson354,
  kBoardEpson365,
};

// Process values ("Process Type"), in list order.
enum StaticProcess {
  kProcessAccuracy = 0,
  kProcessEphemeris,
  kProcessCompareEphemeris,
  kProcessArtk,
  kProcessEvent,
};

struct StaticFileSlot : FileSlotPaths {
  int board = 0;
  int process = 0;
  // Filled by the run.
  std::string outputFolder;
  std::string copyPath;
  ChildProcess plot;
  ChildProcess cleanup;
};

// What decides the result folder.
struct ResultFolderChoice {
  std::string heldRoot;        // the chosen save folders, one behind the other
  std::string savePathText;    // the "Set Save Path" box as typed
  std::string changePathText;  // "ChangePath"
  std::string firstFolder;     // folder of slot 0, with its trailing separator
  std::string word;            // "RTKStatic", "Ephema" or "CompareEphem"
  std::string stamp;
  bool ppp = false;
};

// The first matching row of the page's table; the missing separator before
// the word with a typed save path is the page's behaviour.
std::string ResultFolder(const ResultFolderChoice& choice);

struct StaticRun {
  std::vector<StaticFileSlot> files;
  std::string extension;  // of the file added last; every copy takes it
  std::string resultFolder;
  std::string stamp;
  std::string analyserPath;        // <start>/EXE/llherroRTK_M.exe
  std::string reportTemplatePath;  // <start>/Config/Static_report.xlsx
  std::string startFolder;
  bool copyFiles = false;
  bool generateReport = false;
  bool deleteTables = false;   // "Del TXT Files"
  bool deleteFigures = false;  // "Del FIG Files"
  bool copyReport = false;     // "GenerateReport", or a batch run
  int dayOfWeek = 0;
  Coordinates master;
  Coordinates slave;
  ExtractSettings extraction;
  // Tests watch the extractions' start and end through these.
  std::function<void(std::size_t slot)> onExtractionStart;
  std::function<void(std::size_t slot)> onExtractionEnd;
};

// The plot script's text, with '\n' line ends (written in text mode).
std::string PlotScriptText(const StaticRun& run, const StaticFileSlot& file, int reportIndex);
// The clean-up script's text, with '\n' line ends.
std::string CleanupScriptText(const StaticRun& run, const StaticFileSlot& file);

// CompareEphema's plot script: the analyser copied into the folder, in
// ephemeris mode.
std::string ComparisonPlotScriptText(const StaticFileSlot& file);

// "RTKSPlot<stamp>.bat" and "Del<stamp>.bat" in the file's output folder.
std::string PlotScriptPath(const StaticRun& run, const StaticFileSlot& file);
std::string CleanupScriptPath(const StaticRun& run, const StaticFileSlot& file);

// The argument vector of one file's extraction by its process value (the
// full vector holds 126 texts of which 125 count).
struct ExtractionArguments {
  std::vector<std::string> texts;
  int count = 0;
};
ExtractionArguments ExtractionArgumentsFor(int process, const std::string& outputFolder,
                                           const std::string& input);

// One ExtractMain run over the file (its copy when "Copy ASCII Files" is
// set) with the vector of `process`.
void ExtractFile(const StaticRun& run, const StaticFileSlot& file, int process,
                 ExtractionState& state);

// "%.11lf,%.11lf,%.6lf\n" for Master and Slave, or nine decimals for the
// ephemeris comparison; `realvalue.txt` is written in binary mode there only.
void WriteRealValueFile(const std::string& folder, const Coordinates& master,
                        const Coordinates& slave, bool ephemerisComparison);

// A file's output folder under the result folder, made, with its
// realvalue.txt and, for a copied log, the copy.
void PrepareOutputFolder(const StaticRun& run, StaticFileSlot& file, bool ephemerisComparison);

// Steps 5 to 8 of the worker: report template, the three passes over the
// files, clean-up. Runs on the worker thread.
void RunStaticPasses(StaticRun& run, ExtractionState& state);

}  // namespace tarnlog
