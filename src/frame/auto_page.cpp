#include "frame/auto_page.h"

#include <array>
#include <optional>

#include "platform/processes.h"

namespace tarnlog {
namespace {

constexpr std::string_view kBoardText = "Kestrix";

std::array<double, 3> Triple(const Coordinates& values) {
  return {values.latitude, values.longitude, values.height};
}

}  // namespace

CAuto::CAuto(PageParent& parent, PageHost& host)
    : Page(parent, host, "CAuto"),
      testFolder(*this, "Path"),
      goldenFile(*this, "Golden file"),
      runStatic(*this, "RTKStatic", true),
      runContinue(*this, "Continue", true),
      runNoise(*this, "Noise", true),
      realValueA(*this, "Real Value A"),
      realValueACoordinates(*this, "Real Value A"),
      realValueB(*this, "Real Value B"),
      realValueBCoordinates(*this, "Real Value B"),
      files(*this, "Files", {"ID", "NAME", "TYPE", "FILEPATH"}),
      add(*this, "Add",
          [this] {
            for (const std::string& path : Host().ChooseFiles(filters::kLogFiles))
              AddFile(path);
          }),
      chooseGoldenFile(*this, "Golden file",
                       [this] {
                         if (auto chosen = Host().ChooseFile(filters::kGoldenFile)) {
                           goldenFile.text = *chosen;
                         }
                       }),
      prosess(*this, "Prosess", [this] { Process(); }) {
  realValueA.onChanged = [this] { OnRealValueAChanged(); };
  realValueB.onChanged = [this] { OnRealValueBChanged(); };
}

void CAuto::Start() {
  Page::Start();
  RefillRealValueList(realValueA);
  RefillRealValueList(realValueB);
  realValueA.Select(0);
  realValueB.Select(0);
  realValueACoordinates.Show(realA);
  realValueBCoordinates.Show(realB);

  const AutoTestSwitch found = TakeAutoTestSwitch(kAutoSwitch);
  if (found.state != AutoTestSwitch::State::kTaken) return;
  testFolder.text = found.folder;
  autoRun = 1;
  prosess.Press();
}

void CAuto::AddFile(const std::string& path) {
  if (slots_.size() >= kAutoTestFileCapacity) return;
  FileSlotPaths slot = FileSlotPathsOf(path);
  files.rows.push_back({std::to_string(slots_.size() + 1), slot.nameWithExtension,
                        std::string(kBoardText), slot.path});
  // The folder follows the file added last: every listed file is looked
  // for there.
  testFolder.text = slot.folder;
  slots_.push_back(std::move(slot));
}

void CAuto::OnRealValueAChanged() {
  const std::optional<Coordinates> values =
      SelectedCoordinates(realValueA, Parent().RealValueStore());
  if (!values) return;
  realA = *values;
  realB = realA;
  realValueACoordinates.Show(realA);
  realValueBCoordinates.Show(realB);
}

void CAuto::OnRealValueBChanged() {
  const std::optional<Coordinates> values =
      SelectedCoordinates(realValueB, Parent().RealValueStore());
  if (!values) return;
  realB = *values;
  realValueBCoordinates.Show(realB);
}

void CAuto::Process() {
  if (autoRun == 0) {
    Coordinates a = realA;
    Coordinates b = realB;
    std::optional<std::string> refusal = realValueACoordinates.Read(a);
    if (!refusal) refusal = realValueBCoordinates.Read(b);
    if (refusal) {
      FailCheck(*refusal);
      return;
    }
    realA = a;
    realB = b;
  }
  StartWorker([this] { Run(); });
}

AutoTestConfig CAuto::ConfigFromPage() const {
  AutoTestConfig config;
  config.path = testFolder.text;
  config.runStatic = runStatic.checked ? 1 : 0;
  config.runContinue = runContinue.checked ? 1 : 0;
  config.runNoise = runNoise.checked ? 1 : 0;
  config.realA = Triple(realA);
  config.realB = Triple(realB);
  config.fileCount = FileCount();
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    config.fileNames[i] = slots_[i].nameWithExtension;
    config.filePaths[i] = slots_[i].path;
  }
  config.goldenFile = goldenFile.text;
  return config;
}

// The tests run one after the other, each a whole copy of the program that
// is awaited to its end; a copy that fails isn't seen, the next one begins.
// The notices go to the page through the host, never waiting on it.
void CAuto::Run() {
  const std::string folder = testFolder.text;
  if (folder.empty()) {
    FailCheck(kSetPathFirst);
    return;
  }
  Host().Post([this] { EnableRunActions(false); });
  if (autoRun == 0) {
    config_ = ConfigFromPage();
    config_.Save();
  }
  const std::string program = copyProgram.empty() ? OwnProgramPath(kOwnPathLimit) : copyProgram;
  if (runStatic.checked) RunCopy(kAutoStatusStatic, kStaticSwitch, program, folder);
  if (runContinue.checked) RunCopy(kAutoStatusContinue, kContinueSwitch, program, folder);
  if (runNoise.checked) RunCopy(kAutoStatusNoise, kNoiseSwitch, program, folder);
  Host().PostFinished([this] { OnFinished(); });
}

// "<program> -RS  -PATH <folder>": the switch stands between blanks, so two
// of them come before -PATH. The folder isn't quoted.
void CAuto::RunCopy(std::string_view status, std::string_view switchText,
                    const std::string& program, const std::string& folder) {
  Host().Post([this, status] { SetStatus(status); });
  std::string line = program;
  line += ' ';
  line += switchText;
  line += "  -PATH ";
  line += folder;
  RunCommandLine(line, folder);
}

void CAuto::EnableRunActions(bool enabled) {
  add.enabled = enabled;
  chooseGoldenFile.enabled = enabled;
  prosess.enabled = enabled;
}

void CAuto::OnFinished() {
  EnableRunActions(true);
  SetStatus(kAutoStatusFinished);
  if (autoRun != 0) SelfTerminate();
  autoRun = 0;
}

}  // namespace tarnlog
