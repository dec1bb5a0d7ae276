// The result folder of an INS noise run and the script that runs
// InsMeasProc.exe in it over the two raw-IMU tables.
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

inline constexpr std::string_view kInsSourceTable = "SrcRawimux.txt";
inline constexpr std::string_view kInsReferenceTable = "RefRawimux.txt";
inline constexpr std::string_view kInsMeasProcLine =
    "InsMeasProc.exe SrcRawimux.txt RefRawimux.txt";

// "<save>/InsMeasProc-<source>-<reference>-<hhmmss>", the names without
// folder and extension.
std::string InsResultFolder(std::string_view save, std::string_view sourceName,
                            std::string_view referenceName, std::string_view stamp);

// InsMeasProcPlot.bat in its "\n" form: the drive, "cd" into the folder
// unquoted, the tool's line and exit.
std::string InsMeasProcPlotText(std::string_view drive, std::string_view folder);

}  // namespace tarnlog
