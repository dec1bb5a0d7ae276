// The application and its main dialog: the start sequence, the twelve pages,
// the tab choice and the hand-over of the command line to the mode words.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "frame/page.h"
#include "frame/page_registry.h"

namespace tarnlog {

class llherroRTKStatic;
class llherroRTKDynamic;
class GenNoise;
class PPSReacquisition;
class AuthCode;
class CRecordTimeDlg;
class Nema;
class Heading;
class SimulatorProDlg;
class CCN0CompareDlg;
class CAuto;
class PVTProcess;

// The steps that touch a window; the window build supplies them, a headless
// start has none.
class FrameWindow {
 public:
  virtual ~FrameWindow() = default;
  virtual void SetTitle(std::string_view title) = 0;
  virtual void AddSystemMenuItem(std::string_view text, int commandCode) = 0;
  virtual void SetIcons() = 0;
  virtual void InsertTab(int tabIndex, std::string_view caption) = 0;
  virtual void AddPage(Page& page, int tabIndex) = 0;
  virtual void ShowPage(Page& page) = 0;
  virtual void HideForBatch() = 0;
};

class CVarnelDlg : public PageParent {
 public:
  // The host each page talks through, by class name ("CVarnelDlg" for the
  // frame's own warning).
  using HostProvider = std::function<PageHost&(std::string_view className)>;
  // Sees each page created and started, in that order.
  using StartObserver = std::function<void(std::string_view className, std::string_view step)>;

  CVarnelDlg(CommandLine commandLine, HostProvider hosts, RealValueTable& realValues = RealValues(),
             FrameWindow* window = nullptr);
  ~CVarnelDlg() override;

  enum class Outcome {
    kInteractive,   // fewer than three arguments: the window is the program
    kRunning,       // a page runs headless and will end the process itself
    kRunEnded,      // the page's action returned without ending the process
    kNoModeWord,    // nothing matched and no page took a switch
    kModeNotBuilt,  // the word's page has no command-line mode yet
  };
  struct StartResult {
    Outcome outcome = Outcome::kInteractive;
    std::string why;  // for the line on standard error
  };

  // Steps 4 to 9 of the start: title, real values, the twelve pages created
  // and started in creation order, the Static page in front, and then the
  // command line.
  StartResult OnInitDialog();

  // A new tab was chosen: show its page, and refresh the three pages whose
  // real-value lists may have changed. Other indices do nothing.
  void OnTabChoice(int tabIndex);

  Page* PageAtTab(int tabIndex) const;
  Page* PageByClass(std::string_view className) const;
  int VisibleTab() const { return visibleTab_; }
  void SetStartObserver(StartObserver observer) { startObserver_ = std::move(observer); }

  // PageParent
  const CommandLine& Arguments() const override { return commandLine_; }
  RealValueTable& RealValueStore() override { return realValues_; }
  void NoteSwitchRun(const Page& page) override;
  void NoteIgnoredSwitch(std::string_view switchText) override;

  llherroRTKStatic* staticPage = nullptr;
  llherroRTKDynamic* dynamicPage = nullptr;
  GenNoise* noisePage = nullptr;
  PPSReacquisition* initialPage = nullptr;
  AuthCode* authPage = nullptr;
  CRecordTimeDlg* continuePage = nullptr;
  Nema* nemaPage = nullptr;
  Heading* headingPage = nullptr;
  SimulatorProDlg* simulatorPage = nullptr;
  CCN0CompareDlg* rangePlotPage = nullptr;
  CAuto* autoPage = nullptr;
  PVTProcess* insPage = nullptr;

 private:
  void CreatePages();
  void Wizard(Page& page);
  StartResult EvaluateCommandLine();

  CommandLine commandLine_;
  HostProvider hosts_;
  RealValueTable& realValues_;
  FrameWindow* window_;
  StartObserver startObserver_;
  std::array<std::unique_ptr<Page>, kPageCount> pages_;  // creation order
  int visibleTab_ = -1;
  bool switchRun_ = false;
  std::string ignoredSwitches_;
};

// The application object: builds the one dialog and runs the start.
class CVarnelApp {
 public:
  // The headless program: batch runs, and the start without a window.
  // Returns the exit status when the run ends by returning.
  int Run(int argc, const char* const* argv);
};

}  // namespace tarnlog
