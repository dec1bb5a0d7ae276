// The folder, copy and script work of the Initial page's two runs, over the
// test-set table. The page does the checks, the status line and the
// clearing around them.
#pragma once

#include <string>

#include "pages/timing/test_sets.h"

namespace tarnlog {

struct PpsRun {
  std::string root;          // "Set Save Path", or the folder of the first file
  std::string resultFolder;  // the root, "PPS" and the stamp; made by the caller
  std::string toolFolder;    // <start folder>/EXE
  int method = 1;            // the "Method" value
  bool copyData = false;     // "Copy Data Files"
};

struct PpsScripts {
  std::string run;    // CSVPro.bat
  std::string clean;  // CSVDel.bat
};

// Gives each file a folder in the result folder, named after its name
// without the last extension, with PPS.exe (and with `copyData` the file)
// copied in without overwriting; writes CSVPro.bat and CSVDel.bat into the
// root.
PpsScripts PreparePpsRun(const TestSetTable& table, const PpsRun& run);

// Runs a script, waits for it without limit and, when it started, deletes
// it.
void RunScriptAndRemove(const std::string& scriptPath);

struct ReacquisitionRun {
  std::string resultFolder;   // the base, the root name and the stamp; made by the caller
  std::string toolFolder;     // <start folder>/EXE
  std::string parameterText;  // the whole of parameter.txt
  bool copyData = false;      // "Copy Data Files"
};

// For every set in table order: makes its output folder and keeps it and
// its script path in the set, copies the three tools in without
// overwriting, writes Control.txt and InitialCommamd.bat, and with
// `copyData` copies the log in without overwriting.
void PrepareReacquisitionRun(TestSetTable& table, const ReacquisitionRun& run);

// Runs every set's script in table order, each to its end before the next.
void RunReacquisitionScripts(const TestSetTable& table);

}  // namespace tarnlog
