#include "pages/static/real_value_store.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <optional>

#include "frame/varnel_dlg.h"
#include "pages/static/static_page.h"
#include "platform/folders.h"
#include "platform/recording_host.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;

constexpr char kThreePoints[] =
    "Roof,31.5,121.25,10\r\nPier,30,120,5\r\nMast,29.75,119.5,40.125\r\n";

// Starts the main dialog in a scratch start folder and works on its Static
// page, with a table of its own.
class RealValueStoreTest : public ::testing::Test {
 protected:
  RealValueStoreTest() : previous_(CurrentFolder()) {
    MakeFolder(folder_ / "Config");
    testing::PlaceStartFiles(folder_.Path());
    EXPECT_EQ(chdir(folder_.Path().c_str()), 0);
  }
  ~RealValueStoreTest() override { EXPECT_EQ(chdir(previous_.c_str()), 0); }

  llherroRTKStatic& Start(std::optional<std::string> file) {
    if (file) testing::WriteBytes(FilePath(), *file);
    dialog_ = std::make_unique<CVarnelDlg>(
        CommandLine({"tarnlog"}), [this](std::string_view) -> PageHost& { return host_; }, table_);
    dialog_->OnInitDialog();
    return *dialog_->staticPage;
  }
  std::string FilePath() const { return CurrentFolder() + "/Config/AllRealValue.txt"; }
  std::string File() const { return testing::FileBytes(FilePath()); }
  static void Type(CoordinateFields& fields, const char* lat, const char* lon, const char* h) {
    fields.latitude.text = lat;
    fields.longitude.text = lon;
    fields.height.text = h;
  }

  testing::TempFolder folder_;
  std::string previous_;
  RecordingHost host_;
  RealValueTable table_;
  std::unique_ptr<CVarnelDlg> dialog_;
};

TEST_F(RealValueStoreTest, StartFillsTheListsAndShowsEntryZero) {
  llherroRTKStatic& page = Start("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n");
  for (ChoiceField* list : {&page.realValueType, &page.master, &page.slave}) {
    EXPECT_EQ(list->entries, (Names{"Roof", "Pier"}));
    EXPECT_EQ(list->selected, 0);
  }
  EXPECT_EQ(page.Find<TextField>("Latitude", "Real Value")->text, "31.5");
  EXPECT_EQ(page.Find<TextField>("Longitude", "Slave")->text, "121.25");
  EXPECT_DOUBLE_EQ(page.masterValue.height, 10.0);
  EXPECT_TRUE(host_.messages.empty());
}

TEST_F(RealValueStoreTest, MissingFileStopsTheStartWithThePath) {
  llherroRTKStatic& page = Start(std::nullopt);
  EXPECT_EQ(host_.MessageTexts(), Names{FilePath() + "doesn't exist"});
  EXPECT_TRUE(page.realValueType.entries.empty());
  EXPECT_EQ(page.realValueCoordinates.latitude.text, "");
}

TEST_F(RealValueStoreTest, AddWritesElevenDecimalsAndModifyNineForEveryRow) {
  llherroRTKStatic& page = Start("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n");
  page.master.Choose(1);
  Type(page.realValueCoordinates, "1.5", "-2.25", "3");
  page.addRealValueType.text = "New";
  page.addAction.Press();
  EXPECT_EQ(File(),
            "Roof,31.50000000000,121.25000000000,10.000000\n"
            "Pier,30.00000000000,120.00000000000,5.000000\n"
            "New,1.50000000000,-2.25000000000,3.000000\n");
  EXPECT_EQ(page.slave.entries, (Names{"Roof", "Pier", "New"}));
  EXPECT_EQ(page.realValueType.selected, 2);
  EXPECT_EQ(page.master.selected, 1);
  EXPECT_EQ(page.slave.selected, 0);

  Type(page.realValueCoordinates, "-45.123456789", "179.5", "-0.25");
  page.modifyAction.Press();
  EXPECT_EQ(File(),
            "Roof,31.500000000,121.250000000,10.000000\n"
            "Pier,30.000000000,120.000000000,5.000000\n"
            "New,-45.123456789,179.500000000,-0.250000\n");
  EXPECT_TRUE(host_.messages.empty());
}

TEST_F(RealValueStoreTest, DeleteLeavesAHoleThatTheNextAddFills) {
  llherroRTKStatic& page = Start(kThreePoints);
  page.realValueType.Choose(1);
  page.deleteAction.Press();
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].text, "Do you confirm to delete?");
  EXPECT_EQ(host_.messages[0].title, "Delete RealValue Type");
  EXPECT_EQ(host_.messages[0].buttons, MessageButtons::kOkCancel);
  EXPECT_EQ(File(),
            "Roof,31.500000000,121.250000000,10.000000\n"
            "Mast,29.750000000,119.500000000,40.125000\n");
  EXPECT_EQ(page.master.entries, (Names{"Roof", "Mast"}));
  EXPECT_EQ(page.realValueType.selected, 0);
  EXPECT_EQ(page.realValueCoordinates.height.text, "10");

  Type(page.realValueCoordinates, "1", "2", "3");
  page.addRealValueType.text = "Dock";
  page.addAction.Press();
  EXPECT_EQ(File(),
            "Roof,31.50000000000,121.25000000000,10.000000\n"
            "Dock,1.00000000000,2.00000000000,3.000000\n"
            "Mast,29.75000000000,119.50000000000,40.125000\n");
  EXPECT_EQ(page.realValueType.entries, (Names{"Roof", "Mast", "Dock"}));
}

TEST_F(RealValueStoreTest, AddRefusesEmptyAndTakenNames) {
  struct Case {
    std::string name;
    std::string message;
  };
  // Names are compared exactly, case and spaces included.
  for (const Case& c : {Case{"", "Please confirm RealValue Type Name!"},
                        Case{"Pier", "Already Exists a same name!"}, Case{"pier ", ""}}) {
    host_.messages.clear();
    llherroRTKStatic& page = Start(kThreePoints);
    page.addRealValueType.text = c.name;
    page.addAction.Press();
    if (c.message.empty()) {
      EXPECT_TRUE(host_.messages.empty()) << c.name;
      EXPECT_EQ(page.realValueType.entries.back(), c.name);
      continue;
    }
    ASSERT_EQ(host_.messages.size(), 1u) << c.name;
    EXPECT_EQ(host_.messages[0].text, c.message);
    EXPECT_EQ(host_.messages[0].title, "Add RealValue Error");
    EXPECT_EQ(File(), kThreePoints);
  }
}

TEST_F(RealValueStoreTest, AddCutsTheNameTo63Characters) {
  llherroRTKStatic& page = Start("");
  const std::string cut(63, 'x');
  page.addRealValueType.text = cut + "y";
  page.addAction.Press();
  EXPECT_EQ(page.master.entries, Names{cut});
  EXPECT_EQ(File(), cut + ",0.00000000000,0.00000000000,0.000000\n");
  page.addRealValueType.text = cut + "z";
  page.addAction.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Already Exists a same name!"});
}

TEST_F(RealValueStoreTest, FullTableRefusesAdd) {
  llherroRTKStatic& page = Start(kThreePoints);
  for (RealValueRow& row : table_.rows)
    if (row.IsFree()) row.SetName("filler");
  page.addRealValueType.text = "One more";
  page.addAction.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Too many RealValueType,the max number is 32!"});
  EXPECT_EQ(File(), kThreePoints);
}

TEST_F(RealValueStoreTest, FieldOutOfRangeStopsTheActionBeforeAnyChange) {
  struct Case {
    const char* group;
    const char* caption;
    const char* text;
    const char* message;  // the check's box, or null when the value is taken
  };
  for (const Case& c : {
           Case{"Real Value", "Latitude", "90.0001",
                "Value out of range: Real Value Latitude is \"90.0001\", it must lie in -90 to 90"},
           Case{"Master", "Latitude", "-90.5",
                "Value out of range: Master Latitude is \"-90.5\", it must lie in -90 to 90"},
           Case{"Slave", "Longitude", "180.01",
                "Value out of range: Slave Longitude is \"180.01\", it must lie in -180 to 180"},
           Case{"Slave", "Latitude", "nan",
                "Value out of range: Slave Latitude is \"nan\", it must lie in -90 to 90"},
           Case{"Master", "Latitude", "1e308\r\n",
                "Value out of range: Master Latitude is \"1e308  \", it must lie in -90 to 90"},
           Case{"Master", "Longitude", "-180", nullptr},
           Case{"Slave", "Latitude", "90", nullptr},
           Case{"Slave", "Height", "-1e9", nullptr},
           Case{"Master", "Latitude", "north", nullptr},
       }) {
    host_.messages.clear();
    llherroRTKStatic& page = Start(kThreePoints);
    page.Find<TextField>(c.caption, c.group)->text = c.text;
    page.addRealValueType.text = "Added";
    page.addAction.Press();
    page.modifyAction.Press();
    const bool accepted = c.message == nullptr;
    EXPECT_EQ(File() != kThreePoints, accepted) << c.group << " " << c.caption << " " << c.text;
    EXPECT_EQ(table_.Find("Added") >= 0, accepted) << c.text;
    if (accepted) {
      EXPECT_TRUE(host_.messages.empty()) << c.text;
      continue;
    }
    // All or nothing: a bad Master or Slave field keeps the Real Value set too.
    EXPECT_DOUBLE_EQ(page.realValue.latitude, 31.5) << c.text;
    EXPECT_EQ(host_.MessageTexts(), (Names{c.message, c.message}));
    EXPECT_EQ(host_.messages[0].title, "");
  }
}

// A line longer than the read limit is one malformed line: its rest never
// becomes a point of its own, so a save writes none.
TEST_F(RealValueStoreTest, OverlongLinesLeaveNoPointBehindForTheNextSave) {
  llherroRTKStatic& page = Start(std::string(2000, 'a') + ",1,2,3\r\nPier,30,120,5\r\n" +
                                 std::string(1500, 'b') + ",4,5,6\n");
  EXPECT_EQ(page.master.entries, Names{"Pier"});
  Type(page.realValueCoordinates, "1", "2", "3");
  page.addRealValueType.text = "New";
  page.addAction.Press();
  EXPECT_EQ(File(),
            "Pier,30.00000000000,120.00000000000,5.000000\n"
            "New,1.00000000000,2.00000000000,3.000000\n");
}

TEST_F(RealValueStoreTest, CancelledDeleteChangesNothing) {
  llherroRTKStatic& page = Start(kThreePoints);
  host_.answers.push_back(MessageAnswer::kCancel);
  page.deleteAction.Press();
  EXPECT_EQ(File(), kThreePoints);
  EXPECT_EQ(page.slave.entries.size(), 3u);
  EXPECT_EQ(table_.Find("Roof"), 0);
}

TEST_F(RealValueStoreTest, DeletingTheOnlyRowEmptiesListsAndKeepsTheSets) {
  llherroRTKStatic& page = Start("Roof,31.5,121.25,10\n");
  page.deleteAction.Press();
  EXPECT_EQ(File(), "");
  EXPECT_TRUE(page.master.entries.empty());
  EXPECT_EQ(page.realValueType.selected, -1);
  EXPECT_EQ(page.slaveCoordinates.longitude.text, "121.25");
  EXPECT_TRUE(table_.rows[0].IsFree());
}

TEST_F(RealValueStoreTest, ChangingOneListRereadsAllThreeSets) {
  llherroRTKStatic& page = Start(kThreePoints);
  Type(page.masterCoordinates, "1", "2", "3");
  Type(page.realValueCoordinates, "4", "5", "6");
  page.slave.Choose(2);
  EXPECT_EQ(page.masterCoordinates.latitude.text, "31.5");
  EXPECT_EQ(page.realValueCoordinates.height.text, "10");
  EXPECT_EQ(page.slaveCoordinates.height.text, "40.125");
  EXPECT_DOUBLE_EQ(page.slaveValue.longitude, 119.5);
}

}  // namespace
}  // namespace tarnlog
