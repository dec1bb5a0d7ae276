#include "pages/nmea/nema_page.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "pages/start_folder_fixture.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;

class NemaPageTest : public testing::StartFolderFixture {
 protected:
  Nema& Start() { return *StartDialog().nemaPage; }
};

TEST_F(NemaPageTest, ProcessRefusesInItsFixedOrder) {
  Nema& page = Start();
  page.AddFile(start_ + "/a.log");
  struct Case {
    const char* start;
    const char* end;
    bool kml, split;
    int splitType;  // list position, -1 for none
    const char* marker;
    std::string message;
  };
  const Case cases[] = {
      {"-1", "", true, false, -1, "[COM1]", "Please check the start time"},
      {"", "1000001", true, false, -1, "[COM1]", "Please check the end time"},
      // Beyond int the times are held at its ends, never wrapped into range.
      {"4294967297", "", true, false, -1, "[COM1]", "Please check the start time"},
      {"", "-4294967296", true, false, -1, "[COM1]", "Please check the end time"},
      {"", "", false, true, -1, "[COM1]", "Please select split type!"},
      {"", "", false, true, 0, "", "Please Make Sure The Fixed String!"},
      {"", "", false, true, 0, " ", "It does not support symbol, you should input one string!"},
      {"", "", false, true, 0, ";", "It does not support symbol, you should input one string!"},
      // Two blanks are a marker: the split runs and fails on the missing log.
      {"", "", false, true, 0, "  ", "Fail To Process " + start_ + "/a.log"},
  };
  for (const Case& c : cases) {
    host_.messages.clear();
    page.startTime.text = c.start;
    page.endTime.text = c.end;
    page.kml.checked = c.kml;
    page.split.checked = c.split;
    page.splitType.Select(c.splitType);
    page.fixedString.text = c.marker;
    page.process.Press();
    ASSERT_EQ(host_.messages.size(), 1u) << c.message;
    EXPECT_EQ(host_.messages[0].text, c.message);
    EXPECT_EQ(page.FileCount(), 1);
  }
}

TEST_F(NemaPageTest, NothingTickedClearsTheList) {
  Nema& page = Start();
  page.AddFile(start_ + "/a.log");
  page.kml.checked = false;
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Please Set Processing KML Or NEMA Data Or Split File!"});
  EXPECT_EQ(host_.statuses, (Names{"Status:Processing", "Status:Finished"}));
  EXPECT_EQ(page.FileCount(), 0);
  EXPECT_EQ(page.filePath.text, "");
}

TEST_F(NemaPageTest, GetDataReportsTheLineOfAFailureAndSucceedsOtherwise) {
  Nema& page = Start();
  testing::WriteBytes(start_ + "/rover.log", "$GPGGA,000001.00,,,,,0,,,,,,,,*5E\r\n");
  page.AddFile(start_ + "/rover.log");
  page.AddFile(start_ + "/gone.log");
  page.kml.checked = false;
  page.gga.checked = true;
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Fail To Process " + start_ + "/gone.logOn The Line0"});
  EXPECT_NE(FileBytes(start_ + "/rover_GGA.log"), "<missing>");

  page.DeleteAllItem();
  page.AddFile(start_ + "/rover.log");
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts().back(), "Get Data Successfully!");
  EXPECT_EQ(page.FileCount(), 0);
}

TEST_F(NemaPageTest, SlotsTakeColourFromTheirNumberAndDeleteAllClearsSeventeen) {
  Nema& page = Start();
  page.dataType.Choose(8);
  page.boardType.Choose(3);
  for (int i = 0; i < 20; ++i)
    page.AddFile("/x/f" + std::to_string(i) + ".log");
  EXPECT_EQ(page.Slots()[3].colour, 3);
  EXPECT_EQ(page.Slots()[12].colour, 2);
  EXPECT_EQ(page.Slots()[19].dataType, 9);
  EXPECT_EQ(page.Slots()[19].board, 4);
  EXPECT_EQ(page.files.rows[12], (Names{"13", "f12", "Yellow", "BESTPOS", "SiNan", "/x/f12.log"}));
  page.DeleteAllItem();
  EXPECT_EQ(page.Slots()[16].path, "");
  EXPECT_EQ(page.Slots()[17].path, "/x/f17.log");  // stale until reused
  EXPECT_EQ(page.color.selected, 0);

  for (int i = 0; i < 99; ++i)
    page.AddFile("/x/f.log");
  host_.fileChoices = {{"/x/more.log"}};
  page.open.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Two Many Files had chosed! The Max file number is 16!"});
  EXPECT_EQ(page.FileCount(), 99);
}

TEST_F(NemaPageTest, KmlTickedMakesKmlOnly) {
  Nema& page = Start();
  CopyFileReplacing(testing::SourceDir() + "/tests/data/ParsingData2.ASC", start_ + "/drive.log");
  page.dataType.Choose(8);  // BESTPOS
  page.AddFile(start_ + "/drive.log");
  page.gga.checked = true;
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Generate KML File Successfully!"});
  EXPECT_EQ(host_.statuses,
            (Names{"Status:Processing", "Status: Generate KML File of  the 1 File...",
                   "Status: Generate KML File of the 1 File Finished!", "Status:Finished"}));
  EXPECT_NE(FileBytes(start_ + "/drive_Mix_Bestpos.kml"), "<missing>");
  EXPECT_EQ(FileBytes(start_ + "/drive_GGA.log"), "<missing>");
}

TEST_F(NemaPageTest, LineWidthAndFrequencyBeyondIntAreHeldAtItsEnd) {
  Nema& page = Start();
  std::string log;
  for (const char* time : {"014500.00", "014500.20", "014500.50"}) {
    log += testing::WithNmeaChecksum(std::string("GPGGA,") + time +
                                     ",4404.1306024,N,12118.8446777,W,4,12,0.49,1129.913,M,"
                                     "-21.350,M,1,0000");
  }
  testing::WriteBytes(start_ + "/rover.log", log);
  page.dataType.Choose(1);  // OnlyGGA
  page.AddFile(start_ + "/rover.log");
  page.lineWidth.text = "99999999999";
  // Wrapped, this would be 5 Hz and drop the half second; held, the
  // interval is below a millisecond and every epoch stays.
  page.frequency.text = "4294967301";
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Generate KML File Successfully!"});
  const std::string kml = FileBytes(start_ + "/rover_Mix_GGA.kml");
  EXPECT_NE(kml.find("<width>2147483647</width>"), std::string::npos);
  EXPECT_NE(kml.find("<name>Tag2</name>"), std::string::npos);
}

// A run from the command line as a calling script sees it.
class NemaBatchTest : public NemaPageTest {
 protected:
  testing::RunResult RunKml(const std::vector<std::string>& arguments) {
    // A hang ends the test, not the whole suite.
    std::vector<std::string> argv = {"timeout", "60", testing::TarnlogBinary()};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    argv.push_back("kml");
    return testing::RunAndCapture(argv, start_);
  }
};

// A FIFO or a folder given as the log is refused at once with the page's
// own message, and the mode still ends with 0.
TEST_F(NemaBatchTest, LogThatIsNoRegularFileFailsAtOnce) {
  MakeFolder(start_ + "/logs");
  MakeFolder(start_ + "/logs/folder.log");
  ASSERT_EQ(mkfifo((start_ + "/logs/pipe.log").c_str(), 0600), 0);
  for (const char* name : {"pipe", "folder"}) {
    for (const char* dataType : {"9", "1", "12"}) {  // BESTPOS, GGA+RANGE, PosT
      const std::string path = start_ + "/logs/" + name + ".log";
      const testing::RunResult run =
          RunKml({"logs/" + std::string(name) + ".log", dataType, "0", "2"});
      EXPECT_EQ(run.status, 0) << name << " " << dataType;
      EXPECT_EQ(run.err, "Fail To Process " + path + "\n");
      EXPECT_EQ(run.out, "Status:Processing\nStatus: Generate KML File of  the 1 File...\n");
      EXPECT_EQ(FileBytes(start_ + "/logs/" + name + "_Mix.log"), "<missing>");
    }
  }
}

TEST_F(NemaBatchTest, NumbersBeyondIntAreHeldAtItsEnds) {
  CopyFolderTree(testing::SourceDir() + "/KML", start_ + "/KML");
  CopyFileReplacing(testing::SourceDir() + "/tests/data/ParsingData2.ASC", start_ + "/sample.log");
  // Wrapped, the colour would be 4 (red) and the width 2.
  testing::RunResult run = RunKml({"sample.log", "9", "4294967300", "4294967298"});
  EXPECT_EQ(run.status, 0) << run.err;
  const std::string kml = FileBytes(start_ + "/sample_Mix_Bestpos.kml");
  EXPECT_NE(kml.find("<width>2147483647</width><color>ff00ff00</color>"), std::string::npos);
  EXPECT_NE(kml.find("KestrixKML/green01.png"), std::string::npos);
  // Wrapped, the data type would be 9 (BESTPOS); held, it is none of the
  // list and GGA+RANGE stands for it.
  run = RunKml({"sample.log", "4294967305", "0", "2"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(FileBytes(start_ + "/sample_Mix_GGARange.kml"), "<missing>");
}

// The README's main job: a real log to a KML track from the command line.
TEST_F(NemaPageTest, KmlBatchRunWritesTheMixLogAndTheKmlAndEndsWithZero) {
  CopyFolderTree(testing::SourceDir() + "/KML", start_ + "/KML");
  MakeFolder(start_ + "/logs");
  CopyFileReplacing(testing::SourceDir() + "/tests/data/ParsingData2.ASC",
                    start_ + "/logs/sample.log");
  const testing::RunResult result = testing::RunAndCapture(
      {testing::TarnlogBinary(), "logs/sample.log", "9", "0", "2", "kml"}, start_);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  const std::string kml = start_ + "/logs/sample_Mix_Bestpos.kml";
  EXPECT_NE(FileBytes(start_ + "/logs/sample_Mix.log"), "<missing>");
  ASSERT_NE(FileBytes(kml), "<missing>");
  EXPECT_EQ(std::system(("xmllint --noout '" + kml + "'").c_str()), 0);
  EXPECT_NE(FileBytes(start_ + "/logs/KestrixKML/green04.png"), "<missing>");
}

}  // namespace
}  // namespace tarnlog
