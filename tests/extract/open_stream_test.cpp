#include "extract/open_stream.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

TEST(OpenStreamTest, WriteAppendAndReadAreBinary) {
  TempFolder temp;
  const std::string path = temp / "table.txt";
  WriteBytes(path, "old\n");
  {
    OutFile out;
    ASSERT_TRUE(OpenStream(1, path, out));
    out.Write("a\n");
  }
  EXPECT_EQ(FileBytes(path), "a\n");
  {
    OutFile out;
    ASSERT_TRUE(OpenStream(2, path, out));
    out.Write("b\r\n");
  }
  EXPECT_EQ(FileBytes(path), "a\nb\r\n");
  struct stat info {};
  const int capture = OpenCaptureForReading(path, &info);
  ASSERT_GE(capture, 0);
  EXPECT_EQ(info.st_size, 5);
  char bytes[16] = {};
  EXPECT_EQ(::read(capture, bytes, sizeof bytes), 5);
  ::close(capture);
  EXPECT_STREQ(bytes, "a\nb\r\n");
}

TEST(OpenStreamTest, FailuresSayWhichAndCutThePath) {
  TempFolder temp;
  const std::string path = temp / "missing-folder/table.txt";
  const std::string shown = "***   " + path.substr(0, 20) + "\n";
  struct Case {
    int mode;
    std::string message;
  };
  for (const Case& c :
       {Case{1, "Cannot open write  file:\n"}, Case{2, "Cannot open  append  file:\n"},
        Case{-7, "Cannot open  append  file:\n"}}) {
    OutFile out;
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(OpenStream(c.mode, path, out));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), c.message + shown);
    EXPECT_FALSE(out.IsOpen());
    out.Write("ignored");  // a closed stream takes writes without harm
  }
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(OpenCaptureForReading(path), -1);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Cannot open  read  file:\n" + shown);
}

}  // namespace
}  // namespace tarnlog
