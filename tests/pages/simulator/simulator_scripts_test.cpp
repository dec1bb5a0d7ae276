#include "pages/simulator/simulator_scripts.h"

#include <gtest/gtest.h>

namespace tarnlog {
namespace {

struct PreprocessCase {
  int type;
  double startTime;
  std::string rest;  // behind "-smlt "
};

// The start time counts for the Spirent alone; a type off the list writes
// no option and no line end.
TEST(SimulatorScriptsTest, SmltPreprocessLineByType) {
  const std::vector<PreprocessCase> cases{
      {0, 99.0, "-3 \"/r/SmltMiddleFile.txt\"\r\n"},
      {1, 99.0, "-4 \"/r/SmltMiddleFile.txt\"\r\n"},
      {2, 345600.5, "-s -st 345600.500000 \"/r/SmltMiddleFile.txt\"\r\n"},
      {2, 0.0, "-s -st 0.000000 \"/r/SmltMiddleFile.txt\"\r\n"},
      {3, 0.0, ""},
  };
  for (const PreprocessCase& c : cases) {
    SCOPED_TRACE(c.type);
    SimulatorPreprocess script;
    script.extractorPath = "/s/EXE/ExtractAndProcessData.exe";
    script.simulatorPath = "/sim/truth file.csv";
    script.middleFile = "/r/SmltMiddleFile.txt";
    script.type = c.type;
    script.startTime = c.startTime;
    EXPECT_EQ(SmltPreprocessText(script),
              "\"/s/EXE/ExtractAndProcessData.exe\" \"/sim/truth file.csv\" -smlt " + c.rest);
  }
}

// Both differences are negated, a zero one into "-0.000000", and two
// blanks stand before the index.
TEST(SimulatorScriptsTest, ProcessFileNegatesTheDifferences) {
  SimulatorLogScript script;
  script.outputFolder = "/d/Simulator20240102030405/a";
  script.logPath = "/d/a.log";
  script.middleFile = "/d/Simulator20240102030405/SmltMiddleFile.txt";
  script.gpstDifference = 0.0;
  script.utcDifference = -2.25;
  script.index = 12;
  EXPECT_EQ(ProcessFileText(script),
            "\r\ncd \"/d/Simulator20240102030405/a\"\r\nSimulatorDataProcess.exe "
            "\"/d/Simulator20240102030405/a\" \"/d/a.log\" "
            "\"/d/Simulator20240102030405/SmltMiddleFile.txt\" -0.000000 2.250000  12\r\nexit\r\n");
  script.drive = "D:";
  script.gpstDifference = 1e300;
  const std::string text = ProcessFileText(script);
  EXPECT_EQ(text.rfind("D:\r\ncd ", 0), 0u);
  // The widest double takes its 309 characters whole.
  EXPECT_NE(text.find(" -10000000000000000525047602552044202487044685811081591549158"),
            std::string::npos);
  EXPECT_NE(text.find(".000000 2.250000  12\r\nexit\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarnlog
