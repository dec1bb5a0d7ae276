// The production test of the noise page: every capture of a folder paired
// with its neighbour in a ring, or with a golden capture, each pair through
// the noise pipeline one after the other, judged by the plotter.
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "frame/file_slot.h"
#include "frame/frame_texts.h"
#include "pages/noise/capture_scan.h"
#include "pages/noise/mfg_results.h"
#include "pages/noise/noise_page.h"
#include "pages/noise/noise_scripts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

constexpr std::string_view kCaptureSuffixes[] = {".log", ".LOG", ".Log", ".bin", ".BIN", ".Bin"};
// The captures the "-N" run's preparation step makes: "<stem>.BIN" beside
// each listed log. Only these are paired, so that a log is never paired with
// its own conversion.
constexpr std::string_view kPreparedSuffixes[] = {".bin", ".BIN", ".Bin"};
// The command-line run looks for captures by this pattern, as the
// laboratory names them ("...cap.log").
constexpr std::string_view kCommandLinePattern = "*ap.*";

// The plain files of `folder` matching `pattern` with one of `suffixes`.
std::vector<std::string> ListCaptures(const std::string& folder, std::string_view pattern,
                                      std::span<const std::string_view> suffixes) {
  std::vector<std::string> captures = ListFilesEndingIn(folder, pattern, suffixes);
  std::erase_if(captures, [](const std::string& path) { return !IsRegularFile(path); });
  return captures;
}

// The folder as the run names it: one trailing separator is dropped.
std::string WithoutTrailingSeparator(std::string folder) {
  if (folder.size() > 1 && folder.back() == kPathSeparator) folder.pop_back();
  return folder;
}

std::string NameWithExtension(const std::string& path) {
  return FileSlotPathsOf(path).nameWithExtension;
}

// A capture's size as the plotter is told it; nothing when it can't be
// opened.
std::optional<unsigned long long> CaptureSize(const std::string& path) {
  struct stat info {};
  const int fd = OpenRegularFileForReading(path, &info);
  if (fd < 0) return std::nullopt;
  ::close(fd);
  return static_cast<unsigned long long>(info.st_size);
}

}  // namespace

void GenNoise::MFGProcess() {
  mfgFlag_ = true;
  const std::string& folder = mfgFolder.text;
  if (folder.empty()) {
    FailCheck(kMfgChooseFolderFirst);
    return;
  }
  mfgFolder.text = WithoutTrailingSeparator(folder);
  RunMfgCaptures(ListCaptures(mfgFolder.text, "*", kCaptureSuffixes), goldenFile.text);
}

void GenNoise::MFGProcessFromCommandLine(const std::string& folder, const std::string& golden) {
  mfgFlag_ = true;
  mfgFolder.text = WithoutTrailingSeparator(folder);
  const std::vector<std::string> captures =
      ListCaptures(mfgFolder.text, kCommandLinePattern, kPreparedSuffixes);
  if (captures.empty()) {
    FailCheck(kMfgCommandLineError);
    return;
  }
  goldenFile.text = golden;
  RunMfgCaptures(captures, golden);
}

void GenNoise::RunMfgCaptures(const std::vector<std::string>& captures, const std::string& golden) {
  const std::string folder = mfgFolder.text;
  resultPath_ = JoinPath(folder, "MFGResult_" + PathPart(folder, -1) + ".txt");
  if (captures.size() > kMfgMaxCaptures) {
    FailCheck(kMfgTooManyCaptures);
    return;
  }
  if (captures.empty()) {
    FailCheck(kMfgNoCaptures);
    return;
  }
  if (captures.size() == 1) {
    FailCheck(kMfgOneCapture);
    return;
  }
  SetStatus("Status: Processing");
  const MfgBoard board = ResolveMfgBoard(boardType.selected);

  const bool withGolden = !golden.empty();
  const bool dual = IsDualBoard(board.index, withGolden);
  const bool selfRound = board.index == board::kKB530 || board.index == board::kINS;
  const std::string goldenName = withGolden ? NameWithExtension(golden) : std::string();
  const std::size_t n = captures.size();

  // A dual board runs each pair twice, the second time on the RANGEH
  // observations, and then closes the two rows with a verdict line.
  auto runDual = [&](const std::string& base, const std::string& rover) {
    onlyRh.checked = false;
    RunMFGPair(folder, base, rover, board);
    onlyRh.checked = true;
    RunMFGPair(folder, base, rover, board);
    onlyRh.checked = false;
    struct stat info {};
    if (::stat(resultPath_.c_str(), &info) == 0 && info.st_size > 0) {
      const std::string roverName = FileSlotPathsOf(rover).name;
      WriteVerdict(resultPath_.c_str(), roverName.c_str(), rover.c_str());
    }
  };

  if (!withGolden) {
    std::vector<std::pair<std::size_t, std::size_t>> ring;
    for (std::size_t i = 0; i + 1 < n; ++i)
      ring.emplace_back(i, i + 1);
    if (n > 2) ring.emplace_back(n - 1, 0);
    for (const auto& [base, rover] : ring) {
      if (dual) {
        runDual(captures[base], captures[rover]);
      } else {
        RunMFGPair(folder, captures[base], captures[rover], board);
      }
    }
    if (!dual && selfRound) {
      for (const std::string& capture : captures)
        RunMFGPair(folder, capture, capture, board);
    }
  } else {
    for (const std::string& capture : captures) {
      if (NameWithExtension(capture) == goldenName) continue;
      if (dual) {
        runDual(golden, capture);
      } else {
        RunMFGPair(folder, golden, capture, board);
        if (selfRound) RunMFGPair(folder, capture, capture, board);
      }
    }
  }

  mfgFolder.text.clear();
  goldenFile.text.clear();
  mfgFlag_ = false;
  SetStatus("Status: Finished");
  if (batchFlag != 0 || InAutomaticTest()) SelfTerminate();
}

void GenNoise::RunMFGPair(const std::string& folder, const std::string& base,
                          const std::string& rover, const MfgBoard& board) {
  if (ins.checked) imuState_ = CheckImuData(rover);
  const std::string elevationText = FormatThreshold(elevation);
  const std::string lockText = FormatThreshold(lockTime);
  const std::string cn0Text = FormatThreshold(cn0);

  const std::string baseName = FileSlotPathsOf(base).name;
  const std::string roverName = FileSlotPathsOf(rover).name;
  std::string pairName = roverName;
  if (base != rover) {
    pairName = baseName + "--" + roverName;
    if (onlyRh.checked) pairName += "--H";
  }
  // All pairs of a run share one output folder: the tag stays.
  const std::string output = JoinPath(folder, "Noise" + tag_);
  MakeFolder(output);
  const std::string pairFolder = JoinPath(output, pairName);
  MakeRunFolder(pairFolder, Host());
  CopyFileReplacing(JoinPath(folder, "drpva.txt"), JoinPath(pairFolder, "drpva.txt"));
  CopyFileReplacing(JoinPath(folder, "gyoacc.txt"), JoinPath(pairFolder, "gyoacc.txt"));

  const std::vector<SystemFolder> systems = MfgSystemFolders(board.index);
  for (const SystemFolder& system : systems)
    MakeFolder(JoinPath(pairFolder, system.name));
  const std::string_view plotter = NoisePlotterName(false);
  CopyFileNoOverwrite(ExePath(plotter), JoinPath(pairFolder, plotter));
  CopyFileNoOverwrite(ConfigPath("MFGResult.xlsx"), JoinPath(pairFolder, "MFGResult.xlsx"));
  for (std::string_view tool : {"ExtraData.exe", "IMUdataGet.exe", "GyoaccNoiseProcessFCT.exe"})
    CopyFileNoOverwrite(ExePath(tool), JoinPath(pairFolder, tool));
  CopyFileNoOverwrite(ConfigPath("config.txt"), JoinPath(pairFolder, "config.txt"));

  const GpsWeekSecond firstEpoch = FindFirstEpoch(rover).value_or(GpsWeekSecond{});
  for (const SystemFolder& system : systems) {
    const std::string systemFolder = JoinPath(pairFolder, system.name);
    CopyFileNoOverwrite(ExePath(MfgOfflineProcessorName(noiseType.selected)),
                        JoinPath(systemFolder, "OfflineProcessor.exe"));
    WriteControlFile(JoinPath(systemFolder, "control.txt"), system.systemMode, firstEpoch);
  }

  ProcessorScript processorScript;
  processorScript.drive = PathPart(pairFolder, 1);
  processorScript.pairFolder = pairFolder;
  processorScript.systemFolders = systems;
  processorScript.processorName = "OfflineProcessor.exe";
  processorScript.selfNoise = base == rover;
  processorScript.basePath = base;
  processorScript.roverPath = rover;
  processorScript.production = true;
  processorScript.extraData = HasExtraData(board.index);
  const std::string noiseScript = JoinPath(pairFolder, "Noise" + tag_ + ".bat");
  WriteWholeFile(noiseScript, ProcessorScriptText(processorScript), FileMode::kText);
  ChildProcess run = LaunchScript(noiseScript);
  std::this_thread::sleep_for(startSpacing);
  const bool started = run.Started();
  WaitChild(run);
  if (!started) return;

  const std::optional<unsigned long long> baseSize = CaptureSize(base);
  const std::optional<unsigned long long> roverSize = CaptureSize(rover);
  if (!baseSize || !roverSize) return;

  MfgPlotterScript plot;
  plot.drive = PathPart(pairFolder, 1);
  plot.pairFolder = pairFolder;
  plot.imuTools = board.index == board::kKM781;
  plot.roverPath = rover;
  plot.boardWord = MfgPlotterWord(board, onlyRh.checked);
  plot.elevation = elevationText;
  plot.lockTime = lockText;
  plot.cn0 = cn0Text;
  plot.baseSize = CaptureSizeText(*baseSize);
  plot.roverSize = CaptureSizeText(*roverSize);
  plot.subSatNum = subSatNum.text;
  plot.subObsNum = subObsNum.text;
  plot.subMaxCno = subMaxCno.text;
  plot.subTotalCno = subTotalCno.text;
  plot.clockDrift = clockDrift.text;
  plot.imuState = imuState_;
  plot.resultPath = resultPath_;
  const std::string plotScript = JoinPath(pairFolder, "NoisePlot" + tag_ + ".bat");
  WriteWholeFile(plotScript, MfgPlotterScriptText(plot), FileMode::kText);
  RunScriptAndWait(plotScript);
  CleanUpPair(pairFolder);
}

void GenNoise::TrimResultTables() {
  if (mfgFolder.text.empty()) {
    Message(kMfgChooseFolderFirst);
    return;
  }
  SetStatus("Status: Processing");
  if (!TrimResultTableFiles(mfgFolder.text, onlyTxt.checked,
                            [this](std::string_view text) { Message(text); })) {
    return;
  }
  SetStatus("Status: Finished!");
  Message("Finished!");
}

bool GenNoise::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "MFG") return false;
  goldenFile.text = commandLine.Arg(1);
  mfgTestLog_ = commandLine.Arg(2);
  binaryFile.text = mfgTestLog_;
  mfgFolder.text = commandLine.Arg(3);
  mfgLimit_ = ArgToDouble(commandLine.Arg(4));
  subSatNum.text = commandLine.Arg(5);
  subObsNum.text = commandLine.Arg(6);
  subMaxCno.text = commandLine.Arg(7);
  subTotalCno.text = commandLine.Arg(8);
  const Coordinates point{ArgToDouble(commandLine.Arg(9)), ArgToDouble(commandLine.Arg(10)),
                          ArgToDouble(commandLine.Arg(11))};
  refCoordinates.Show(point);
  initCoordinates.Show(point);
  startOffset = SaturatingInt(ArgToDouble(commandLine.Arg(12)) * 60.0);
  if (ArgToDouble(commandLine.Arg(13)) != 0.0) ins.checked = true;
  batchFlag = 1;
  MFGProcess();
  return true;
}

}  // namespace tarnlog
