// The noise page's Process: one folder per pair below a fresh output folder,
// every processor script started at once, each pair plotted as its own
// processor ends, then the clean-up of each pair in turn.
#include <thread>

#include "pages/noise/capture_scan.h"
#include "pages/noise/noise_page.h"
#include "pages/noise/noise_scripts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

std::string ScriptPath(const std::string& pairFolder, std::string_view stem,
                       const std::string& tag) {
  return JoinPath(pairFolder, std::string(stem) + tag + ".bat");
}

}  // namespace

void GenNoise::Process() {
  if (!ready_) return;
  ConvertXyzInPlace();
  if (!CheckProcess()) return;

  process.enabled = false;
  tag_ = TimeStamp();
  const std::string parent = !savePath.text.empty() ? savePath.text : FolderOf(binaries_[0].path);
  const std::string output = JoinPath(parent, "Noise" + tag_);
  MakeFolder(output);
  if (report.checked) {
    CopyFileReplacing(ConfigPath("Noise_report.xlsx"), JoinPath(output, "Noise_report.xlsx"));
  }
  SetStatus("Status: Processing");

  const bool selfNoise = brR.checked || rhR.checked;
  // Self-noise with no pairs chosen: each file is a pair of its own, named
  // after it.
  if (selfNoise && selectionCount_ == 0) {
    selectionCount_ = 2 * binaryCount_;
    for (int i = 0; i < binaryCount_; ++i)
      pairs_[static_cast<std::size_t>(i)].name = binaries_[static_cast<std::size_t>(i)].displayName;
  }
  const int pairCount = selectionCount_ / 2;
  const std::vector<SystemFolder> systems = NoiseSystemFolders(boardType.selected);
  const std::string_view processor = OfflineProcessorName(noiseType.selected, sbasIrnss.checked);
  const std::string_view plotter = NoisePlotterName(sbasIrnss.checked);

  for (int i = 0; i < pairCount; ++i) {
    NoisePair& pair = pairs_[static_cast<std::size_t>(i)];
    pair.folder = JoinPath(output, pair.name);
    if (!MakeFolder(pair.folder)) Message("Create Folder" + pair.folder + "is Failed!");
    for (const SystemFolder& system : systems) {
      const std::string folder = JoinPath(pair.folder, system.name);
      if (!MakeFolder(folder)) Message("Create Folder" + folder + "is Failed!");
    }
    CopyFileNoOverwrite(ExePath(plotter), JoinPath(pair.folder, plotter));
    // Only the "Time" case starts from the rover: its first epoch is read
    // once for the pair.
    const GpsWeekSecond firstEpoch =
        timeFromRover.checked ? FindFirstEpoch(PairCapture(i, 1)).value_or(GpsWeekSecond{})
                              : GpsWeekSecond{};
    for (const SystemFolder& system : systems) {
      const std::string folder = JoinPath(pair.folder, system.name);
      CopyFileNoOverwrite(ExePath(processor), JoinPath(folder, processor));
      WriteControlFile(JoinPath(folder, "control.txt"), system.systemMode, firstEpoch);
    }
  }
  if (!selfNoise) {
    for (int i = 0; i < pairCount; ++i) {
      pairs_[static_cast<std::size_t>(i)].basePath = PairCapture(i, 0);
      pairs_[static_cast<std::size_t>(i)].roverPath = PairCapture(i, 1);
    }
  }

  std::vector<ChildProcess> processors;
  for (int i = 0; i < pairCount; ++i) {
    const NoisePair& pair = pairs_[static_cast<std::size_t>(i)];
    ProcessorScript script;
    script.drive = PathPart(pair.folder, 1);
    script.pairFolder = pair.folder;
    script.systemFolders = systems;
    script.processorName = processor;
    script.selfNoise = selfNoise;
    script.basePath = pair.basePath;
    script.roverPath = selfNoise ? binaries_[static_cast<std::size_t>(i)].path : pair.roverPath;
    WriteWholeFile(ScriptPath(pair.folder, "Noise", tag_), ProcessorScriptText(script),
                   FileMode::kText);
  }
  for (int i = 0; i < pairCount; ++i) {
    processors.push_back(
        LaunchScript(ScriptPath(pairs_[static_cast<std::size_t>(i)].folder, "Noise", tag_)));
    std::this_thread::sleep_for(startSpacing);
  }

  std::vector<ChildProcess> plotters(static_cast<std::size_t>(pairCount));
  for (int i = 0; i < pairCount; ++i) {
    ChildProcess& run = processors[static_cast<std::size_t>(i)];
    const bool started = run.Started();
    WaitChild(run);
    if (!started) continue;
    const NoisePair& pair = pairs_[static_cast<std::size_t>(i)];
    PlotterScript script;
    script.drive = PathPart(pair.folder, 1);
    script.pairFolder = pair.folder;
    script.plotterName = plotter;
    const int board = boardType.selected;
    script.boardWord = board >= 0 && board < static_cast<int>(kNoiseBoards.size())
                           ? kNoiseBoards[static_cast<std::size_t>(board)].plotterWord
                           : kNoiseBoards[0].plotterWord;
    script.elevation = FormatThreshold(elevation);
    script.lockTime = FormatThreshold(lockTime);
    script.cn0 = FormatThreshold(cn0);
    script.pairNumber = i + 1;
    const std::string path = ScriptPath(pair.folder, "NoisePlot", tag_);
    WriteWholeFile(path, PlotterScriptText(script), FileMode::kText);
    if (!onlyTxt.checked) plotters[static_cast<std::size_t>(i)] = LaunchScript(path);
  }
  // "OnlyTXT" starts no plotter, so no pair reaches its clean-up.
  for (int i = 0; i < pairCount; ++i) {
    ChildProcess& run = plotters[static_cast<std::size_t>(i)];
    const bool started = run.Started();
    WaitChild(run);
    if (started) CleanUpPair(pairs_[static_cast<std::size_t>(i)].folder);
  }

  SetStatus("Status: Finished");
  binaryFile.text.clear();
  savePath.text.clear();
  ClearAll();
  process.enabled = true;
  brR.checked = false;
  rhR.checked = false;
}

void GenNoise::CleanUpPair(const std::string& pairFolder) {
  CleanupScript script;
  script.drive = PathPart(pairFolder, 1);
  script.pairFolder = pairFolder;
  script.sbasIrnss = sbasIrnss.checked;
  script.lastExtension = lastExtension_;
  script.delTxt = delTxt.checked;
  script.delFig = delFig.checked;
  const std::string path = ScriptPath(pairFolder, "Del", tag_);
  if (mfgFlag_) {
    WriteWholeFile(path, MfgCleanupText(script), FileMode::kText);
  } else {
    WriteWholeFile(path, NoiseCleanupText(script), FileMode::kText);
    // With both flags off the script stays on disk, unrun.
    if (!delTxt.checked && !delFig.checked) return;
  }
  if (delTxt.checked) RemoveFile(ScriptPath(pairFolder, "Noise", tag_));
  if (delFig.checked) RemoveFile(ScriptPath(pairFolder, "NoisePlot", tag_));
  RunScriptAndWait(path);
  RemoveFile(path);
}

}  // namespace tarnlog
