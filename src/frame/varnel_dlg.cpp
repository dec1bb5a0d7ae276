#include "frame/varnel_dlg.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include "frame/auto_page.h"
#include "frame/frame_texts.h"
#include "frame/mode_dispatch.h"
#include "pages/auth/auth_code_page.h"
#include "pages/continuity/record_time_page.h"
#include "pages/dynamic/dynamic_page.h"
#include "pages/heading/heading_page.h"
#include "pages/ins/pvt_process_page.h"
#include "pages/nmea/nema_page.h"
#include "pages/noise/noise_page.h"
#include "pages/rangeplot/range_plot_page.h"
#include "pages/simulator/simulator_page.h"
#include "pages/static/static_page.h"
#include "pages/timing/pps_reacquisition_page.h"
#include "platform/batch_host.h"
#include "platform/folders.h"
#include "platform/processes.h"

namespace tarnlog {

CVarnelDlg::CVarnelDlg(CommandLine commandLine, HostProvider hosts, RealValueTable& realValues,
                       FrameWindow* window)
    : commandLine_(std::move(commandLine)),
      hosts_(std::move(hosts)),
      realValues_(realValues),
      window_(window) {}

CVarnelDlg::~CVarnelDlg() = default;

CVarnelDlg::StartResult CVarnelDlg::OnInitDialog() {
  if (window_) {
    window_->SetTitle(kDialogTitle);
    window_->AddSystemMenuItem(kAboutMenuItem, kAboutCommand);
    window_->SetIcons();
  }

  // The real values are there before any page exists, so that each page's
  // start can fill its lists.
  realValues_.Clear();
  LoadRealValues(realValues_, CurrentFolder(), hosts_("CVarnelDlg"));

  CreatePages();
  Wizard(*pages_[0]);  // the Static page is the one at rest
  return EvaluateCommandLine();
}

void CVarnelDlg::CreatePages() {
  const auto& registry = PageRegistry();
  if (window_) {
    for (int tab = 0; tab < static_cast<int>(kPageCount); ++tab) {
      window_->InsertTab(tab, RegistrationAtTab(tab)->caption);
    }
  }
  for (std::size_t i = 0; i < registry.size(); ++i) {
    const PageRegistration& registration = registry[i];
    if (startObserver_) startObserver_(registration.className, "create");
    pages_[i] = registration.create(*this, hosts_(registration.className));
    if (window_) window_->AddPage(*pages_[i], registration.tabIndex);
    Wizard(*pages_[i]);
    if (startObserver_) startObserver_(registration.className, "start");
    pages_[i]->Start();
  }
  staticPage = static_cast<llherroRTKStatic*>(pages_[0].get());
  dynamicPage = static_cast<llherroRTKDynamic*>(pages_[1].get());
  noisePage = static_cast<GenNoise*>(pages_[2].get());
  initialPage = static_cast<PPSReacquisition*>(pages_[3].get());
  authPage = static_cast<AuthCode*>(pages_[4].get());
  continuePage = static_cast<CRecordTimeDlg*>(pages_[5].get());
  nemaPage = static_cast<Nema*>(pages_[6].get());
  headingPage = static_cast<Heading*>(pages_[7].get());
  simulatorPage = static_cast<SimulatorProDlg*>(pages_[8].get());
  rangePlotPage = static_cast<CCN0CompareDlg*>(pages_[9].get());
  autoPage = static_cast<CAuto*>(pages_[10].get());
  insPage = static_cast<PVTProcess*>(pages_[11].get());
}

void CVarnelDlg::Wizard(Page& page) {
  for (std::size_t i = 0; i < kPageCount; ++i) {
    if (pages_[i].get() == &page) visibleTab_ = PageRegistry()[i].tabIndex;
  }
  if (window_) window_->ShowPage(page);
}

CVarnelDlg::StartResult CVarnelDlg::EvaluateCommandLine() {
  if (commandLine_.Argc() < 3) return {Outcome::kInteractive, {}};
  if (window_) window_->HideForBatch();

  // The pages have taken their copies of the arguments; the lower-casing is
  // seen by everything that looks later.
  const ModeWord* mode = MatchModeWord(commandLine_.args.back());
  if (!mode) {
    if (switchRun_) return {Outcome::kRunning, {}};
    std::string why = "no mode word (" + ModeWordList() + ") in the last argument \"" +
                      commandLine_.Last() + "\"";
    if (!ignoredSwitches_.empty()) {
      why += "; " + ignoredSwitches_ + " ignored: an automatic-test switch needs exactly " +
             "\"-SWITCH -PATH <folder>\"";
    }
    return {Outcome::kNoModeWord, why};
  }

  Page& page = *PageByClass(mode->className);
  if (mode->showsPage) Wizard(page);
  const int workersBefore = page.WorkersStarted();
  if (!page.RunModeWord(commandLine_, mode->word)) {
    return {Outcome::kModeNotBuilt, "the mode \"" + std::string(mode->word) + "\" of " +
                                        page.ClassName() + " is not built yet"};
  }
  if (page.WorkersStarted() > workersBefore || switchRun_) return {Outcome::kRunning, {}};
  return {Outcome::kRunEnded, page.ClassName() + ": the \"" + std::string(mode->word) +
                                  "\" run ended before it finished"};
}

void CVarnelDlg::OnTabChoice(int tabIndex) {
  Page* page = PageAtTab(tabIndex);
  if (!page) return;
  Wizard(*page);
  page->RefreshOnTabChoice();
}

Page* CVarnelDlg::PageAtTab(int tabIndex) const {
  const auto& registry = PageRegistry();
  for (std::size_t i = 0; i < registry.size(); ++i) {
    if (registry[i].tabIndex == tabIndex) return pages_[i].get();
  }
  return nullptr;
}

Page* CVarnelDlg::PageByClass(std::string_view className) const {
  const auto& registry = PageRegistry();
  for (std::size_t i = 0; i < registry.size(); ++i) {
    if (registry[i].className == className) return pages_[i].get();
  }
  return nullptr;
}

void CVarnelDlg::NoteSwitchRun(const Page&) {
  switchRun_ = true;
}

void CVarnelDlg::NoteIgnoredSwitch(std::string_view switchText) {
  if (!ignoredSwitches_.empty()) ignoredSwitches_ += ", ";
  ignoredSwitches_ += switchText;
}

namespace {

void PrintStartWithoutWindow(const RealValueTable& table) {
  std::printf("%s\n", std::string(kDialogTitle).c_str());
  int loaded = 0;
  for (const RealValueRow& row : table.rows) {
    if (!row.IsFree()) ++loaded;
  }
  std::printf("Real values: %d\n", loaded);
  for (const RealValueRow& row : table.rows) {
    if (!row.IsFree()) {
      std::printf("  %s,%.9f,%.9f,%.4f\n", row.name, row.latitude, row.longitude, row.height);
    }
  }
  std::printf("Tabs:\n");
  for (int tab = 0; tab < static_cast<int>(kPageCount); ++tab) {
    const PageRegistration* registration = RegistrationAtTab(tab);
    std::printf("  %d %s (%s)\n", tab, std::string(registration->caption).c_str(),
                std::string(registration->className).c_str());
  }
  std::fflush(stdout);
}

}  // namespace

int CVarnelApp::Run(int argc, const char* const* argv) {
  static BatchHost host;
  // The dialog lives for the whole run: pages' workers hold on to it.
  static CVarnelDlg dialog(CommandLine(argc, argv),
                           [](std::string_view) -> PageHost& { return host; });
  const CVarnelDlg::StartResult result = dialog.OnInitDialog();
  switch (result.outcome) {
    case CVarnelDlg::Outcome::kInteractive:
      PrintStartWithoutWindow(dialog.RealValueStore());
      std::fprintf(stderr,
                   "tarnlog: the window is not built in this configuration (TARNLOG_GUI=OFF); "
                   "see tarnlog --help for the batch modes\n");
      return 0;
    case CVarnelDlg::Outcome::kRunning:
      // The page ends the process when its run is over.
      for (;;)
        std::this_thread::sleep_for(std::chrono::hours(1));
    case CVarnelDlg::Outcome::kRunEnded:
      EndProcess(1, result.why);
    case CVarnelDlg::Outcome::kNoModeWord:
    case CVarnelDlg::Outcome::kModeNotBuilt:
      EndProcess(2, result.why);
  }
  return 0;
}

}  // namespace tarnlog
