#include "frame/real_value_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/folders.h"
#include "platform/recording_host.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::TempFolder;

class LoadRealValuesTest : public ::testing::Test {
 protected:
  void WriteConfig(const std::string& bytes) {
    MakeFolder(folder / "Config");
    testing::WriteBytes(folder / "Config/AllRealValue.txt", bytes);
  }
  RealValueTable& Load() {
    table.Clear();
    LoadRealValues(table, folder.Path(), host);
    return table;
  }
  int Filled() const {
    int count = 0;
    for (const RealValueRow& row : table.rows)
      count += row.IsFree() ? 0 : 1;
    return count;
  }

  TempFolder folder;
  RecordingHost host;
  RealValueTable table;
};

TEST_F(LoadRealValuesTest, MissingFileLeavesTableEmptyWithoutMessage) {
  Load();
  EXPECT_EQ(Filled(), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadRealValuesTest, ReadsCrlfAndLfLinesAndSkipsMalformedOnes) {
  WriteConfig(
      "Roof,31.123456789012,121.5,12.25\r\n"
      "no numbers here\r\n"
      "Short,1.0,2.0\n"
      ",1,2,3\n"
      "Field A,-33.5,-70.25,500\n");
  Load();
  ASSERT_EQ(Filled(), 2);
  EXPECT_EQ(table.rows[0].Name(), "Roof");
  EXPECT_DOUBLE_EQ(table.rows[0].latitude, 31.123456789012);
  EXPECT_DOUBLE_EQ(table.rows[0].longitude, 121.5);
  EXPECT_DOUBLE_EQ(table.rows[0].height, 12.25);
  EXPECT_EQ(table.rows[1].Name(), "Field A");
  EXPECT_DOUBLE_EQ(table.rows[1].height, 500.0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadRealValuesTest, DuplicateNameFillsTwoRows) {
  WriteConfig("Pier,1,2,3\nPier,4,5,6\n");
  Load();
  ASSERT_EQ(Filled(), 2);
  EXPECT_EQ(table.rows[1].Name(), "Pier");
  EXPECT_DOUBLE_EQ(table.rows[1].latitude, 4.0);
  EXPECT_EQ(table.Find("Pier"), 0);
}

TEST_F(LoadRealValuesTest, NamesAreCutTo63Characters) {
  const std::string longName(80, 'n');
  WriteConfig(longName + ",1,2,3\n");
  Load();
  EXPECT_EQ(table.rows[0].Name(), std::string(63, 'n'));
}

TEST_F(LoadRealValuesTest, FillsTheLowestFreeRowFirst) {
  table.Clear();
  table.rows[0].SetName("kept");
  WriteConfig("new,1,2,3\n");
  LoadRealValues(table, folder.Path(), host);
  EXPECT_EQ(table.rows[0].Name(), "kept");
  EXPECT_EQ(table.rows[1].Name(), "new");
}

TEST_F(LoadRealValuesTest, StopsOnceTheLastRowIsFilled) {
  std::string bytes;
  for (int i = 0; i < 1005; ++i)
    bytes += 'P' + std::to_string(i) + "," + std::to_string(i) + ",0,0\n";
  WriteConfig(bytes);
  Load();
  EXPECT_EQ(Filled(), 1000);
  EXPECT_EQ(table.rows[999].Name(), "P999");
  EXPECT_EQ(table.Find("P1000"), -1);
}

TEST_F(LoadRealValuesTest, RestOfALineOverTheReadLimitIsSkipped) {
  struct Case {
    const char* what;
    std::string bytes;
    std::vector<std::string> names;
  };
  const std::string pad(1024 - 7, ' ');
  const Case cases[] = {
      {"name of 2000", std::string(2000, 'a') + ",1,2,3\nNext,4,5,6\n", {"Next"}},
      {"exactly 1024 then CRLF", "Q,1,2,3" + pad + "\r\nNext,4,5,6\r\n", {"Q", "Next"}},
      {"first 1024 parse", "Q,1,2,3" + pad + "Tail,4,5,6\nNext,7,8,9\n", {"Q", "Next"}},
      {"a NUL early",
       std::string("Z\0", 2) + std::string(1500, 'z') + "Frag,1,2,3\nNext,4,5,6",
       {"Next"}},
      {"last line unended", "Next,4,5,6\n" + std::string(3000, 'b') + ",1,2,3", {"Next"}},
  };
  for (const Case& c : cases) {
    WriteConfig(c.bytes);
    Load();
    std::vector<std::string> names;
    for (const RealValueRow& row : table.rows)
      if (!row.IsFree()) names.emplace_back(row.Name());
    EXPECT_EQ(names, c.names) << c.what;
  }
}

TEST_F(LoadRealValuesTest, LongStartFolderWarnsAndStillLoads) {
  std::string deep = folder.Path();
  while (deep.size() <= 220) {
    deep += "/deeper_folder_name";
    MakeFolder(deep);
  }
  MakeFolder(deep + "/Config");
  testing::WriteBytes(deep + "/Config/AllRealValue.txt", "Far,1,2,3\n");
  LoadRealValues(table, deep, host);
  ASSERT_EQ(host.MessageTexts().size(), 1u);
  EXPECT_EQ(host.MessageTexts()[0], kLongStartFolderWarning);
  EXPECT_EQ(table.rows[0].Name(), "Far");
}

}  // namespace
}  // namespace tarnlog
