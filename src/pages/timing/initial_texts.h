// The files the Initial page writes: Control.txt and InitialCommamd.bat for
// each first-fix or reacquisition set, CSVPro.bat and CSVDel.bat for a PPS
// run. All are written in text mode.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pages/timing/test_sets.h"

namespace tarnlog {

inline constexpr std::string_view kControlFileName = "Control.txt";
inline constexpr std::string_view kInitialScriptName = "InitialCommamd.bat";
inline constexpr std::string_view kPpsScriptName = "CSVPro.bat";
inline constexpr std::string_view kPpsCleanScriptName = "CSVDel.bat";

// Control.txt of a set: the six settings (the time cut to whole seconds in
// the line of its phase, 0 in the other), the true position as "RealPos:"
// or, for the heading log types, as "Base:" and "Rover:", then the whole
// text of parameter.txt and a line end.
std::string ControlText(const TestSet& set, std::string_view parameterText);

// InitialCommamd.bat of a set: into the output folder, then the tool on the
// log and Control.txt with the set's table index counted from 1. The last
// line "exit" has no line end.
std::string InitialCommandText(const TestSet& set, int number);

// One CSV file of a PPS run.
struct PpsScriptRow {
  std::string folder;   // the file's own folder in the result folder
  std::string csvPath;  // the CSV file as chosen
  std::string stem;     // its name without the last extension
};

// CSVPro.bat: for each row, into its folder and PPS.exe on the file with
// the "Method" value (1 or 2), a blank line after each.
std::string PpsScriptText(const std::vector<PpsScriptRow>& rows, int method);
// CSVDel.bat: for each row, into its folder and "Del PPS.exe".
std::string PpsCleanScriptText(const std::vector<PpsScriptRow>& rows);

}  // namespace tarnlog
