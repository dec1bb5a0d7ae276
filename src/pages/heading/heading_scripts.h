// The files the heading page writes for its analysis tool: the control file
// of a static run, the scripts that run the tool on one log or one pair, and
// the script of the spreadsheet report. The texts are given with the line
// ends the program writes; the files are text files, so each "\n" lands as
// "\r\n".
#pragma once

#include <string>

#include "frame/coordinate_fields.h"

namespace tarnlog {

inline constexpr const char* kHeadingControlName = "HeadingControl.txt";

// HeadingControl.txt: the coordinate kind, then the base and both antennas.
std::string HeadingControlText(const Coordinates& base, const Coordinates& ant1,
                               const Coordinates& ant2);

// Plot<stamp>.bat of one log of a static run.
struct StaticHeadingScript {
  std::string drive;   // of the log's folder; empty on Linux
  std::string folder;  // the log's folder below the result folder
  std::string logPath;
  std::string trueHeading;  // as typed
  int fileNumber = 1;       // from 1
};
std::string StaticHeadingScriptText(const StaticHeadingScript& script);

// Plot<stamp>.bat of one pair of a dynamic run.
struct DynamicHeadingScript {
  std::string drive;
  std::string pairFolder;
  std::string sourcePath;
  std::string referencePath;
  std::string sourceKind;  // "heading" or "heading2"
  std::string referenceKind;
};
std::string DynamicHeadingScriptText(const DynamicHeadingScript& script);

// GenerateReport.bat in the result folder.
struct HeadingReportScript {
  std::string drive;
  std::string resultFolder;
  std::string reportPath;   // HeadingReport.xlsx there
  std::string dirlistPath;  // DirlistFile.txt there
};
std::string HeadingReportScriptText(const HeadingReportScript& script);

}  // namespace tarnlog
