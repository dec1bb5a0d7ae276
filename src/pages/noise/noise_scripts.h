// The scripts of a noise pair: Noise<tag>.bat runs the offline processor in
// each system folder, NoisePlot<tag>.bat the plotter in the pair folder, and
// Del<tag>.bat cleans up after it. The texts are given with the line ends the
// program writes; the files are text files, so "\r\n" lands as "\r\r\n".
#pragma once

#include <string>
#include <vector>

#include "pages/noise/noise_boards.h"

namespace tarnlog {

// What the processor script of one pair runs.
struct ProcessorScript {
  std::string drive;       // the drive of the paths; empty on Linux
  std::string pairFolder;  // the pair's folder, the system folders below it
  std::vector<SystemFolder> systemFolders;
  std::string processorName;  // the executable copied into each system folder;
                              // production runs always name "OfflineProcessor.exe"
  bool selfNoise = false;     // "-r" alone on `roverPath`
  std::string basePath;
  std::string roverPath;
  // Production runs: after the system blocks the script goes back to the
  // pair folder, and with `extraData` runs ExtraData.exe over the rover.
  bool production = false;
  bool extraData = false;
};
std::string ProcessorScriptText(const ProcessorScript& script);

// The noise pipeline's plotter script.
struct PlotterScript {
  std::string drive;
  std::string pairFolder;
  std::string plotterName;  // "NoisePlot.exe" or "NoisePlot_IRNSS_SBAS.exe"
  std::string boardWord;
  std::string elevation;  // the three thresholds as "%.2lf"
  std::string lockTime;
  std::string cn0;
  int pairNumber = 1;  // from 1
};
std::string PlotterScriptText(const PlotterScript& script);

// The production test's plotter script: its 17 arguments in order.
struct MfgPlotterScript {
  std::string drive;
  std::string pairFolder;
  bool imuTools = false;  // board 30: IMUdataGet.exe and GyoaccNoiseProcessFCT.exe first
  std::string roverPath;
  std::string boardWord;
  std::string elevation;  // "%.2lf"
  std::string lockTime;   // "%.2lf"
  std::string cn0;        // "%.2lf"
  std::string baseSize;   // megabytes, "%.5f"
  std::string roverSize;  // megabytes, "%.5f"
  std::string subSatNum;  // the five thresholds as typed
  std::string subObsNum;
  std::string subMaxCno;
  std::string subTotalCno;
  std::string clockDrift;
  std::string imuState;  // "0", "1" or "2"
  std::string resultPath;
};
std::string MfgPlotterScriptText(const MfgPlotterScript& script);

// A capture's size for the plotter: whole kilobytes, then megabytes, "%.5f".
std::string CaptureSizeText(unsigned long long bytes);

// The clean-up of a pair.
struct CleanupScript {
  std::string drive;
  std::string pairFolder;
  bool sbasIrnss = false;
  std::string lastExtension;  // of the last binary file added, with its dot
  bool delTxt = false;
  bool delFig = false;
};
// The kept tables that a "Del TXT" clean-up moves aside and back: those that
// are in the pair folder when the text is made.
inline constexpr const char* kKeptTables[] = {"half_cycle.txt", "half_cycle_glo.txt",
                                              "big_psr_res.txt"};
// The noise pipeline's Del<tag>.bat. With both flags off it is the text that
// is left on disk and never run.
std::string NoiseCleanupText(const CleanupScript& script);
// The production test's Del<tag>.bat: it goes into the pair folder, the
// processor copies of both system folders go first, and the script is always
// run; "Del FIG" deletes the figures of JPG/FIG.
std::string MfgCleanupText(const CleanupScript& script);

}  // namespace tarnlog
