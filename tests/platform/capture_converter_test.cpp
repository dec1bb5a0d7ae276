#include "platform/capture_converter.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using Words = std::vector<std::string>;

// A start folder with the stand-in as EXE/Converter.exe, which leaves a copy
// of its source under the converted name.
class CaptureConverterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(MakeFolder(start_.Path() + "/EXE") && MakeFolder(captures_));
    testing::InstallStandin(start_.Path() + "/EXE", "Converter.exe");
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    ::setenv("TARNLOG_STANDIN_LOG", log_.c_str(), 1);
  }
  void TearDown() override {
    SetScriptRunnerPath("");
    ::unsetenv("TARNLOG_STANDIN_LOG");
    ::unsetenv("TARNLOG_STANDIN_COPY");
  }

  TempFolder start_;
  TempFolder work_;
  std::string captures_ = work_ / "captures";
  std::string log_ = work_ / "calls.log";
};

TEST_F(CaptureConverterTest, BothTargets) {
  const struct {
    ConvertTarget target;
    const char* input;
    const char* result;
    const char* flag;
    const char* suffix;
  } cases[] = {
      {ConvertTarget::kBinary, "KB570.log", "KB570.BIN", "-b", ".BIN"},
      {ConvertTarget::kAscii, "KB570.bin", "KB570.ASC", "-a", ".ASC"},
      {ConvertTarget::kBinary, "roof.day2.log", "roof.day2.BIN", "-b", ".BIN"},
  };
  for (const auto& c : cases) {
    const std::string input = captures_ + "/" + c.input;
    testing::WriteBytes(input, std::string("capture \r\n\0bytes", 17));
    ::setenv("TARNLOG_STANDIN_COPY", (std::string("Converter.exe:1:") + c.suffix).c_str(), 1);
    RemoveFile(log_);

    const std::string result = ConvertCapture(start_.Path(), input, c.target);
    EXPECT_EQ(result, captures_ + "/" + c.result);
    EXPECT_EQ(FileBytes(result), FileBytes(input));

    const auto calls = testing::ReadStandinLog(log_);
    ASSERT_EQ(calls.size(), 1u) << c.input;
    EXPECT_EQ(calls[0].args,
              (Words{start_.Path() + "/EXE/Converter.exe", input, "-batch", c.flag}));
    EXPECT_EQ(calls[0].cwd, testing::Canonical(CurrentFolder()));
    // The script is gone, and nothing else was left beside the capture.
    EXPECT_EQ(ListMatching(captures_, "*").size(), 2u) << c.input;
    RemoveFile(input);
    RemoveFile(result);
  }
}

TEST_F(CaptureConverterTest, AnotherToolsCopySwitchLeavesNoFile) {
  const std::string input = captures_ + "/KB570.log";
  testing::WriteBytes(input, "capture");
  ::setenv("TARNLOG_STANDIN_COPY", "NoisePlot.exe:1:.BIN", 1);
  EXPECT_EQ(ConvertCapture(start_.Path(), input, ConvertTarget::kBinary), captures_ + "/KB570.BIN");
  EXPECT_FALSE(PathExists(captures_ + "/KB570.BIN"));
  EXPECT_FALSE(PathExists(captures_ + "/KB570.bat"));
  EXPECT_EQ(testing::ReadStandinLog(log_).size(), 1u);
}

}  // namespace
}  // namespace tarnlog
