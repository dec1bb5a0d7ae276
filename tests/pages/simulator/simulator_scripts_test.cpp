#include "pages/simulator/simulator_scripts.h"

#include <gtest/gtest.h>

namespace tarnlog {
namespace {

// The start time counts for the Spirent alone; a type off the list writes
// no option and no line end.
TEST(SimulatorScriptsTest, SmltPreprocessLineByType) {
  const std::vector<std::pair<int, std::string>> cases{
      {0, "-3 \"/r/SmltMiddleFile.txt\"\r\n"},
      {1, "-4 \"/r/SmltMiddleFile.txt\"\r\n"},
      {2, "-s -st 345600.500000 \"/r/SmltMiddleFile.txt\"\r\n"},
      {3, ""},
  };
  for (const auto& [type, rest] : cases) {
    const SimulatorPreprocess script{"/s/EXE/ExtractAndProcessData.exe", "/sim/truth file.csv",
                                     "/r/SmltMiddleFile.txt", type, 345600.5};
    EXPECT_EQ(SmltPreprocessText(script),
              "\"/s/EXE/ExtractAndProcessData.exe\" \"/sim/truth file.csv\" -smlt " + rest)
        << type;
  }
}

}  // namespace
}  // namespace tarnlog
