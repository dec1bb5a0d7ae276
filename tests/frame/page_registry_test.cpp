#include "frame/page_registry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "frame/auto_page.h"
#include "frame/varnel_dlg.h"
#include "pages/heading/heading_page.h"
#include "pages/ins/pvt_process_page.h"
#include "pages/noise/noise_page.h"
#include "pages/timing/pps_reacquisition_page.h"
#include "platform/folders.h"
#include "platform/recording_host.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

// Runs the start of the main dialog in a scratch start folder that holds a
// Config/AllRealValue.txt.
class StartSequenceTest : public ::testing::Test {
 protected:
  StartSequenceTest() {
    previous_ = CurrentFolder();
    MakeFolder(folder_ / "Config");
    testing::PlaceStartFiles(folder_.Path());
    testing::WriteBytes(folder_ / "Config/AllRealValue.txt",
                        "Roof,31.5,121.25,10\r\nPier,30,120,5\r\nMast,29.75,119.5,40.125\r\n");
    EXPECT_EQ(chdir(folder_.Path().c_str()), 0);
  }
  ~StartSequenceTest() override { EXPECT_EQ(chdir(previous_.c_str()), 0); }

  CVarnelDlg::StartResult Start(std::vector<std::string> args = {"tarnlog"}) {
    dialog_ = std::make_unique<CVarnelDlg>(
        CommandLine(std::move(args)), [this](std::string_view) -> PageHost& { return host_; },
        table_);
    dialog_->SetStartObserver([this](std::string_view name, std::string_view step) {
      steps_.push_back(std::string(step) + " " + std::string(name));
    });
    return dialog_->OnInitDialog();
  }

  testing::TempFolder folder_;
  std::string previous_;
  RecordingHost host_;
  RealValueTable table_;
  std::unique_ptr<CVarnelDlg> dialog_;
  std::vector<std::string> steps_;
};

TEST_F(StartSequenceTest, EachPageIsCreatedAndStartedBeforeTheNext) {
  Start();
  const std::vector<std::string> creationOrder{
      "llherroRTKStatic", "llherroRTKDynamic", "GenNoise", "PPSReacquisition",
      "AuthCode",         "CRecordTimeDlg",    "Nema",     "Heading",
      "SimulatorProDlg",  "CCN0CompareDlg",    "CAuto",    "PVTProcess"};
  std::vector<std::string> expected;
  for (const std::string& name : creationOrder) {
    expected.push_back("create " + name);
    expected.push_back("start " + name);
  }
  EXPECT_EQ(steps_, expected);
}

TEST_F(StartSequenceTest, TabOrderDiffersFromCreationOrder) {
  Start();
  const std::vector<std::pair<std::string, std::string>> tabs{{"Static", "llherroRTKStatic"},
                                                              {"Dynamic", "llherroRTKDynamic"},
                                                              {"Noise", "GenNoise"},
                                                              {"Initial", "PPSReacquisition"},
                                                              {"AuthCode", "AuthCode"},
                                                              {"Continue", "CRecordTimeDlg"},
                                                              {"Nema", "Nema"},
                                                              {"Heading", "Heading"},
                                                              {"Simulator", "SimulatorProDlg"},
                                                              {"RangePlot", "CCN0CompareDlg"},
                                                              {"INS", "PVTProcess"},
                                                              {"AUTO", "CAuto"}};
  for (int tab = 0; tab < 12; ++tab) {
    ASSERT_NE(RegistrationAtTab(tab), nullptr);
    EXPECT_EQ(RegistrationAtTab(tab)->caption, tabs[tab].first) << tab;
    EXPECT_EQ(dialog_->PageAtTab(tab)->ClassName(), tabs[tab].second) << tab;
  }
  EXPECT_EQ(RegistrationAtTab(12), nullptr);
  EXPECT_EQ(static_cast<Page*>(dialog_->insPage), dialog_->PageAtTab(10));
  EXPECT_EQ(static_cast<Page*>(dialog_->autoPage), dialog_->PageAtTab(11));
  // The Static page is the one in front at rest.
  EXPECT_EQ(dialog_->VisibleTab(), 0);
}

TEST_F(StartSequenceTest, RealValuesAreLoadedBeforeThePagesFillTheirLists) {
  Start();
  EXPECT_EQ(table_.rows[2].Name(), "Mast");
  EXPECT_EQ(dialog_->noisePage->refCoor.entries,
            (std::vector<std::string>{"Roof", "Pier", "Mast"}));
  EXPECT_EQ(dialog_->headingPage->base.selected, 0);
}

TEST_F(StartSequenceTest, NoiseTabPutsBothListsBackOnEntryZero) {
  Start();
  GenNoise& noise = *dialog_->noisePage;
  noise.refCoor.Select(2);
  noise.initCoor.Select(1);
  table_.rows[3].SetName("Added");
  dialog_->OnTabChoice(2);
  EXPECT_EQ(dialog_->VisibleTab(), 2);
  EXPECT_EQ(noise.refCoor.selected, 0);
  EXPECT_EQ(noise.initCoor.selected, 0);
  EXPECT_EQ(noise.refCoor.entries.back(), "Added");
}

TEST_F(StartSequenceTest, InitialTabRunsTheRealValueChangedAction) {
  Start();
  PPSReacquisition& initial = *dialog_->initialPage;
  initial.realValue.Choose(2);
  EXPECT_EQ(initial.roverPos.selected, 2);
  EXPECT_EQ(initial.roverCoordinates.height.text, "40.125");
  dialog_->OnTabChoice(3);
  EXPECT_EQ(initial.realValue.selected, 0);
  EXPECT_EQ(initial.roverPos.selected, 0);
  EXPECT_EQ(initial.realCoordinates.latitude.text, "31.5");
  EXPECT_EQ(initial.roverCoordinates.longitude.text, "121.25");
}

TEST_F(StartSequenceTest, HeadingTabMovesBothAntennasWithTheBase) {
  Start();
  Heading& heading = *dialog_->headingPage;
  heading.base.Choose(1);
  EXPECT_EQ(heading.ant1.selected, 1);
  EXPECT_EQ(heading.ant2.selected, 1);
  EXPECT_EQ(heading.ant2Coordinates.height.text, "5");
  dialog_->OnTabChoice(7);
  EXPECT_EQ(heading.base.selected, 0);
  EXPECT_EQ(heading.ant2.selected, 0);
  EXPECT_EQ(heading.ant1Coordinates.latitude.text, "31.5");
}

TEST_F(StartSequenceTest, OtherTabsOnlyShowTheirPage) {
  Start();
  GenNoise& noise = *dialog_->noisePage;
  noise.refCoor.Select(2);
  dialog_->OnTabChoice(11);
  EXPECT_EQ(dialog_->VisibleTab(), 11);
  dialog_->OnTabChoice(12);
  dialog_->OnTabChoice(-1);
  EXPECT_EQ(dialog_->VisibleTab(), 11);
  EXPECT_EQ(noise.refCoor.selected, 2);
}

TEST_F(StartSequenceTest, CommandLineOutcomes) {
  EXPECT_EQ(Start({"tarnlog"}).outcome, CVarnelDlg::Outcome::kInteractive);
  EXPECT_EQ(Start({"tarnlog", "static"}).outcome, CVarnelDlg::Outcome::kInteractive);

  const CVarnelDlg::StartResult none = Start({"tarnlog", "a", "b"});
  EXPECT_EQ(none.outcome, CVarnelDlg::Outcome::kNoModeWord);
  EXPECT_NE(none.why.find("\"b\""), std::string::npos);

  // Still a page without its mode: the run ends with a clear reason.
  const CVarnelDlg::StartResult unbuilt =
      Start({"tarnlog", "a.log", "0", "0", "single", "RANGEPLOT"});
  EXPECT_EQ(unbuilt.outcome, CVarnelDlg::Outcome::kModeNotBuilt);
  EXPECT_EQ(dialog_->Arguments().Last(), "rangeplot");
  EXPECT_EQ(dialog_->VisibleTab(), 9);
}

}  // namespace
}  // namespace tarnlog
