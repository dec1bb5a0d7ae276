// tarnlog-extract as a script runs it: its exit status, its complaints, and
// that it never blocks on a capture that is no file.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::RunAndCapture;
using testing::RunResult;
using testing::TempFolder;

const std::string kBestPos = testing::WithAsciiCrc(
    "BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,"
    "0.000,18,18,18,0,00,02,11,01");

RunResult Extract(const std::vector<std::string>& args, const std::string& folder) {
  std::vector<std::string> argv{TARNLOG_EXTRACT_BIN};
  argv.insert(argv.end(), args.begin(), args.end());
  return RunAndCapture(argv, folder);
}

TEST(ExtractCommandTest, StatusSaysWhetherTheCaptureWasReadAndTheTablesWritten) {
  TempFolder temp;
  testing::WriteBytes(temp / "cap.log", kBestPos);
  ASSERT_EQ(::mkfifo((temp / "fifo").c_str(), 0600), 0);
  std::filesystem::create_directory(temp / "out");
  struct Case {
    const char* what;
    std::string folder, capture;
    int status;
    std::string complaint;  // the start of standard output
  };
  const std::vector<Case> cases = {
      {"good", temp / "out", temp / "cap.log", 0, ""},
      {"missing capture", temp / "out", temp / "none.log", 1,
       "Cannot open  read  file:\n***   " + (temp / "none.log").substr(0, 20) + "\n"},
      {"FIFO as capture", temp / "out", temp / "fifo", 1, "Cannot open  read  file:\n"},
      {"folder as capture", temp / "out", temp.Path(), 1, "Cannot open  read  file:\n"},
      {"no output folder", temp / "gone", temp / "cap.log", 1, "Cannot open write  file:\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const RunResult run = Extract({c.folder, "-i", c.capture, "-BP"}, temp.Path());
    EXPECT_EQ(run.status, c.status) << run.out << run.err;
    EXPECT_EQ(run.out.substr(0, c.complaint.size()), c.complaint);
    if (c.status == 0) {
      EXPECT_NE(testing::FileBytes(c.folder + "/bestpos.txt"), "");
    }
  }
}

TEST(ExtractCommandTest, TableThatCannotBeWrittenWholeFailsTheRun) {
  // A file size limit of 1 KiB (with the signal ignored, so that writes
  // fail instead) lets the tables open but not take 8,000 rows.
  TempFolder temp;
  std::string capture;
  for (int i = 0; i < 8000; ++i)
    capture += kBestPos;
  testing::WriteBytes(temp / "cap.log", capture);
  const RunResult run =
      RunAndCapture({"/bin/sh", "-c", "ulimit -f 2; trap '' XFSZ; exec \"$0\" . -i cap.log -BP",
                     TARNLOG_EXTRACT_BIN},
                    temp.Path());
  EXPECT_EQ(run.status, 1) << run.out << run.err;
}

TEST(ExtractCommandTest, OptionGivenLastNamesNoTableAfterTheEnvironment) {
  TempFolder temp;
  testing::WriteBytes(temp / "cap.log", kBestPos);
  const RunResult run = Extract({".", "-i", "cap.log", "-BP", "-1"}, temp.Path());
  EXPECT_EQ(run.status, 0) << run.out;
  for (const auto& entry : std::filesystem::directory_iterator(temp.Path())) {
    EXPECT_EQ(entry.path().filename().string().find('='), std::string::npos)
        << entry.path().filename();
  }
}

}  // namespace
}  // namespace tarnlog
