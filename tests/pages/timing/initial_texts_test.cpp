#include "pages/timing/initial_texts.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "pages/timing/initial_command_line.h"
#include "pages/timing/parameter_text.h"
#include "pages/timing/test_sets.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;

TestSet SetOf(const char* processType, const char* logType, unsigned char connect, float time) {
  TestSet set;
  set.fileName = "a_TTFF.log";
  set.folder = "/data/logs";
  set.processType = processType;
  set.logType = logType;
  set.chipType = "N1";
  set.connect = connect;
  set.time = time;
  set.testTimes = 1000;
  set.real = {31.5, 121.25, 10.0};
  set.rover = {-30.123456789012, 120.0, -5.25};
  return set;
}

TEST(ControlTextTest, PhasesPositionsAndTheParameterText) {
  const struct {
    TestSet set;
    std::string expected;
  } cases[] = {
      {SetOf("TTFF", "gga", 1, 120.9f),
       "TestType: TTFF\nLogType: gga\nChipType: N1\nTestTimes: 1000\nOnTime: 120\nOffTime: 0\n"
       "RealPos: 31.500000000 121.250000000 10.000000\nP 1\nQ 2\n\n"},
      {SetOf("REACQ", "bestposa", 0, 10.75f),
       "TestType: REACQ\nLogType: bestposa\nChipType: N1\nTestTimes: 1000\nOnTime: 0\n"
       "OffTime: 10\nRealPos: 31.500000000 121.250000000 10.000000\nP 1\nQ 2\n\n"},
      {SetOf("TTFF", "headinga", 1, 5.5f),
       "TestType: TTFF\nLogType: headinga\nChipType: N1\nTestTimes: 1000\nOnTime: 5\nOffTime: 0\n"
       "Base: 31.500000000 121.250000000 10.000000\n"
       "Rover: -30.123456789 120.000000000 -5.250000\nP 1\nQ 2\n\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(ControlText(c.set, "P 1\nQ 2\n"), c.expected) << c.set.logType;

  // A time past int's range is held at its end.
  TestSet huge = SetOf("TTFF", "gga", 1, 1e30f);
  EXPECT_NE(ControlText(huge, "").find("OnTime: 2147483647\n"), std::string::npos);
}

TEST(InitialScriptTest, ScriptBytes) {
  TestSet set = SetOf("TTFF", "gga", 1, 120);
  set.outputFolder = "/data/logs/TTFFInitial101010/a_TTFF_gga";
  set.scriptPath = set.outputFolder + "/InitialCommamd.bat";
  EXPECT_EQ(InitialCommandText(set, 3),
            "\ncd \"/data/logs/TTFFInitial101010/a_TTFF_gga\"\n"
            "Reacq_TTFF_DataProcess.exe \"/data/logs/a_TTFF.log\" "
            "\"/data/logs/TTFFInitial101010/a_TTFF_gga/Control.txt\"  3\nexit");

  const std::vector<PpsScriptRow> rows{{"/r/PPS101010/c", "/d/c.csv", "c"},
                                       {"/r/PPS101010/e.x", "/d/e.x.CSV", "e.x"}};
  EXPECT_EQ(PpsScriptText(rows, 2),
            "\ncd \"/r/PPS101010/c\"\nPPS.exe \"/r/PPS101010/c\" \"/d/c.csv\" \"c\" 2\n\n"
            "\ncd \"/r/PPS101010/e.x\"\nPPS.exe \"/r/PPS101010/e.x\" \"/d/e.x.CSV\" \"e.x\" 2\n\n"
            "exit\n");
  EXPECT_EQ(PpsCleanScriptText(rows),
            "\ncd \"/r/PPS101010/c\"\nDel PPS.exe\n\ncd \"/r/PPS101010/e.x\"\nDel PPS.exe\nexit\n");
  EXPECT_EQ(PpsScriptText({}, 1), "exit\n");
}

TEST(TestSetTableTest, DuplicatesFreeEntriesAndCapacities) {
  TestSetTable table;
  TestSet set = SetOf("TTFF", "gga", 1, 120);
  EXPECT_EQ(table.Add(set), 0);
  // Only file, folder and the three types count.
  TestSet other = set;
  other.time = 60;
  other.connect = 0;
  other.real.latitude = 1;
  EXPECT_TRUE(table.HoldsSameSet(other));
  for (std::string TestSet::*field : {&TestSet::fileName, &TestSet::folder, &TestSet::logType,
                                      &TestSet::processType, &TestSet::chipType}) {
    TestSet differing = set;
    differing.*field += "x";
    EXPECT_FALSE(table.HoldsSameSet(differing)) << differing.*field;
  }
  EXPECT_TRUE(table.HoldsFile("a_TTFF.log", "/data/logs"));
  EXPECT_FALSE(table.HoldsFile("a_TTFF.log", "/data"));

  // Overlong texts keep their first capacity-1 bytes, and compare so.
  TestSet longNames = set;
  longNames.fileName = std::string(300, 'n');
  longNames.logType = "bestpos2a-and-more";
  const int index = table.Add(longNames);
  EXPECT_EQ(table[index].fileName, std::string(255, 'n'));
  EXPECT_EQ(table[index].logType, "bestpos2a-and-m");
  EXPECT_TRUE(table.HoldsSameSet(longNames));

  for (int i = 2; i < 100; ++i) {
    set.fileName = std::to_string(i) + ".log";
    EXPECT_EQ(table.Add(set), i);
  }
  EXPECT_EQ(table.Add(set), -1);
  table.Free(1);
  table.Free(-1);
  table.Free(100);
  EXPECT_EQ(table.OccupiedCount(), 99);
  EXPECT_EQ(table.Occupied()[1], 2);
  EXPECT_EQ(table.Add(set), 1);
  table.Clear();
  EXPECT_EQ(table.OccupiedCount(), 0);
}

TEST(TestSetTableTest, RootNameAndOutputFolder) {
  const struct {
    Names types;
    const char* root;
  } cases[] = {{{"TTFF", "TTFF"}, "TTFFInitial"},
               {{"REACQ"}, "ReacqInitial"},
               {{"TTFF", "REACQ"}, "Initial"},
               {{"REACQ", ""}, "Initial"}};
  for (const auto& c : cases) {
    TestSetTable table;
    for (const std::string& type : c.types) {
      TestSet set = SetOf("", "gga", 1, 1);
      set.processType = type;
      set.fileName = std::to_string(table.OccupiedCount()) + ".log";
      table.Add(set);
    }
    EXPECT_EQ(ReacquisitionRootName(table), c.root) << c.types.size();
  }

  const struct {
    const char* name;
    const char* folder;
  } names[] = {{"a_TTFF.log", "/r/a_TTFF_gga"},
               {"a.b.log", "/r/a.b_gga"},
               {"noext", "/r/_gga"},
               {".log", "/r/_gga"}};
  for (const auto& n : names) {
    TestSet set = SetOf("TTFF", "gga", 1, 1);
    set.fileName = n.name;
    EXPECT_EQ(ReacquisitionOutputFolder("/r", set), n.folder);
  }
}

TEST(ParameterTextTest, KeepsTheWholeTextInTextMode) {
  testing::TempFolder folder;
  std::string text = "left";
  EXPECT_FALSE(ReadParameterText(folder / "none.txt", text));
  EXPECT_EQ(text, "");
  EXPECT_FALSE(ReadParameterText(folder.Path(), text));  // a folder is no file

  using namespace std::string_literals;
  const std::string longLine(300, 'x');
  const struct {
    std::string bytes;
    std::string kept;
  } cases[] = {{"", ""},
               {"A 1\r\nB 2\r\n", "A 1\nB 2\n"},
               {"no end", "no end"},
               {longLine + "\r\nz", longLine + "\nz"},
               {"lone\rcr\n", "lone\rcr\n"},
               {"a\0b\r\n\0"s, "ab\n"}};
  for (const auto& c : cases) {
    testing::WriteBytes(folder / "parameter.txt", c.bytes);
    ASSERT_TRUE(ReadParameterText(folder / "parameter.txt", text));
    EXPECT_EQ(text, c.kept) << c.bytes.size();
  }
}

TEST(InitialCommandLineTest, NumberPairs) {
  const struct {
    const char* text;
    int first;
    int second;
  } cases[] = {{"120_120", 120, 120},
               {"5", 5, 0},
               {"x_3", 0, 0},
               {" 7_ 8", 7, 8},
               {"7 _8", 7, 0},
               {"-3_+4", -3, 4},
               {"1__2", 1, 0},
               {"", 0, 0},
               {"2_x", 2, 0},
               {"1.5_2", 1, 0},
               {"99999999999_-99999999999", INT_MAX, INT_MIN}};
  for (const auto& c : cases) {
    const NumberPair pair = ReadNumberPair(c.text);
    EXPECT_EQ(pair.first, c.first) << c.text;
    EXPECT_EQ(pair.second, c.second) << c.text;
  }
}

TEST(InitialCommandLineTest, RoverShiftsTheFilesForTheHeadingTypes) {
  const Names head{"tarnlog", "", "3", "1", "120_90", "10_20", "5_6", "31.5", "121.25", "10"};
  const struct {
    const char* ttffType;
    bool rover;
  } cases[] = {{"3", false}, {"4", true}, {"5", true}, {"6", false}, {"x", false}};
  for (const auto& c : cases) {
    Names args = head;
    args[1] = c.ttffType;
    for (const char* more : {"30", "120", "5", "a.log", "b.log", "test"})
      args.push_back(more);
    const InitialTestArguments read = ReadInitialTestArguments(CommandLine(args));
    EXPECT_EQ(read.hasRover, c.rover) << c.ttffType;
    if (c.rover) {
      EXPECT_EQ(read.rover[0], "30");
      EXPECT_EQ(read.rover[2], "5");
      EXPECT_EQ(read.files, (Names{"a.log", "b.log"}));
    } else {
      EXPECT_EQ(read.rover[0], "");
      EXPECT_EQ(read.files, (Names{"30", "120", "5", "a.log", "b.log"}));
    }
    EXPECT_EQ(read.reacqLogType, 3);
    EXPECT_EQ(read.chipType, 1);
    EXPECT_EQ(read.onTime.second, 90);
    EXPECT_EQ(read.testTimes.first, 5);
    EXPECT_EQ(read.real[1], "121.25");
  }

  // Fewer arguments than positions: empty texts, no files.
  const InitialTestArguments few =
      ReadInitialTestArguments(CommandLine(Names{"tarnlog", "4", "test"}));
  EXPECT_TRUE(few.hasRover);
  EXPECT_EQ(few.real[0], "");
  EXPECT_TRUE(few.files.empty());

  EXPECT_TRUE(PathHoldsWord("/d/x_ttff.log", "TTFF"));
  EXPECT_TRUE(PathHoldsWord("/d/Reacq.log", "REA"));
  EXPECT_FALSE(PathHoldsWord("/d/TTF_F.log", "TTFF"));
}

}  // namespace
}  // namespace tarnlog
