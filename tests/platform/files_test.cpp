#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

// The reader's buffer size: a byte at this offset is the first of the
// second read.
constexpr std::size_t kReadBuffer = 64 * 1024;

struct WriteCase {
  FileMode mode;
  std::string written, onDisk;
};

TEST(OutFileTest, TextModeTranslatesLineFeeds) {
  const std::vector<WriteCase> cases = {
      {FileMode::kText, "a\n", "a\r\n"},
      {FileMode::kText, "a\r\n", "a\r\r\n"},
      {FileMode::kText, "\n\nb", "\r\n\r\nb"},
      {FileMode::kText, "no end", "no end"},
      {FileMode::kBinary, "a\n", "a\n"},
      {FileMode::kBinary, std::string("a\r\n\0z", 5), std::string("a\r\n\0z", 5)},
  };
  TempFolder temp;
  for (const WriteCase& c : cases) {
    SCOPED_TRACE(c.written);
    ASSERT_TRUE(WriteWholeFile(temp / "f", c.written, c.mode));
    EXPECT_EQ(FileBytes(temp / "f"), c.onDisk);
  }
}

TEST(OutFileTest, AppendKeepsAndTruncateReplaces) {
  TempFolder temp;
  const std::string path = temp / "f.txt";
  ASSERT_TRUE(WriteWholeFile(path, "x\n", FileMode::kText));
  {
    OutFile out;
    ASSERT_TRUE(out.Open(path, FileMode::kBinary, true));
    out.Write("y\n");
  }
  EXPECT_EQ(FileBytes(path), "x\r\ny\n");
  {
    OutFile out;
    ASSERT_TRUE(out.Open(path, FileMode::kText));
    out.Write("z");
  }
  EXPECT_EQ(FileBytes(path), "z");
}

TEST(OutFileTest, PrintfOfAnyLength) {
  TempFolder temp;
  const std::string path = temp / "p.txt";
  const std::string longText(10000, 'q');
  {
    OutFile out;
    ASSERT_TRUE(out.Open(path, FileMode::kText));
    out.Printf("%d,%.3f\n", 7, 2.5);
    out.Printf("%s|\n", longText.c_str());
  }
  EXPECT_EQ(FileBytes(path), "7,2.500\r\n" + longText + "|\r\n");
}

TEST(OutFileTest, ManyRowsPastTheBufferAndMoves) {
  TempFolder temp;
  const std::string path = temp / "rows.txt";
  std::string expected;
  OutFile moved;
  {
    OutFile out;
    ASSERT_TRUE(out.Open(path, FileMode::kText));
    for (int i = 0; i < 20000; ++i) {
      out.Printf("%05d\n", i);
      expected += std::to_string(100000 + i).substr(1) + "\r\n";
    }
    out.Write(std::string(3 * kReadBuffer, 'w'));
    moved = std::move(out);
    EXPECT_FALSE(out.IsOpen());
  }
  expected += std::string(3 * kReadBuffer, 'w');
  moved.Write("end\n");
  moved.Flush();
  EXPECT_EQ(FileBytes(path), expected + "end\r\n");
}

TEST(OutFileTest, UnopenableFileIgnoresWrites) {
  TempFolder temp;
  OutFile out;
  EXPECT_FALSE(out.Open(temp / "no/such/folder/f", FileMode::kText));
  out.Write("x\n");
  out.Printf("%d", 1);
  out.Close();
  EXPECT_FALSE(WriteWholeFile(temp / "no/f", "x", FileMode::kBinary));
  std::string bytes = "kept";
  EXPECT_FALSE(ReadWholeFile(temp / "missing", bytes));
}

TEST(OutFileTest, FailedWritesAreToldAfterClose) {
  // /dev/full takes the open and refuses every byte, as a full disk does.
  for (const std::size_t size : {std::size_t{10}, std::size_t{200000}}) {
    OutFile out;
    ASSERT_TRUE(out.Open("/dev/full", FileMode::kBinary));
    out.Write(std::string(size, 'x'));
    out.Close();
    EXPECT_TRUE(out.WriteFailed()) << size;
    EXPECT_FALSE(WriteWholeFile("/dev/full", std::string(size, 'x'), FileMode::kBinary));
  }
  TempFolder temp;
  OutFile good;
  ASSERT_TRUE(good.Open(temp / "f", FileMode::kText));
  good.Write("x\n");
  good.Close();
  EXPECT_FALSE(good.WriteFailed());
}

std::vector<std::string> Lines(const std::string& path, FileMode mode, std::size_t size) {
  InFile in;
  EXPECT_TRUE(in.Open(path, mode));
  std::vector<char> buffer(size);
  std::vector<std::string> lines;
  while (in.ReadLine(buffer.data(), size))
    lines.emplace_back(buffer.data());
  return lines;
}

struct ReadCase {
  std::string bytes;
  FileMode mode;
  std::size_t size;
  std::vector<std::string> lines;
};

TEST(InFileTest, ReadLineIsFgetsOnATextStream) {
  const std::vector<ReadCase> cases = {
      {"a\r\nb\n", FileMode::kText, 64, {"a\n", "b\n"}},
      {"a\rb\n", FileMode::kText, 64, {"a\rb\n"}},
      {"a\r\r\n", FileMode::kText, 64, {"a\r\n"}},
      {"x\r\ny", FileMode::kText, 64, {"x\n", "y"}},
      {"a\r", FileMode::kText, 64, {"a\r"}},
      {"abcdef\n", FileMode::kText, 4, {"abc", "def", "\n"}},
      // CRLF as the last pair of a full buffer counts as one character.
      {"ab\r\nc", FileMode::kText, 4, {"ab\n", "c"}},
      {"ab\r\nc", FileMode::kText, 3, {"ab", "\n", "c"}},
      {"ab\rcd", FileMode::kText, 4, {"ab\r", "cd"}},
      {"a\r\nb", FileMode::kBinary, 64, {"a\r\n", "b"}},
      {"", FileMode::kText, 64, {}},
  };
  TempFolder temp;
  for (const ReadCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.bytes) + " size " + std::to_string(c.size));
    WriteBytes(temp / "in", c.bytes);
    EXPECT_EQ(Lines(temp / "in", c.mode, c.size), c.lines);
  }
}

// Long lines as their length and their last bytes, so that a failure stays
// readable.
std::vector<std::string> Shapes(const std::vector<std::string>& lines) {
  std::vector<std::string> shapes;
  for (const std::string& line : lines) {
    const std::string tail = line.substr(line.size() - std::min<std::size_t>(line.size(), 6));
    shapes.push_back(std::to_string(line.size()) + ":" + ::testing::PrintToString(tail));
  }
  return shapes;
}

TEST(InFileTest, CarriageReturnOnTheBufferBoundary) {
  const std::string head(kReadBuffer - 1, 'x');
  const std::vector<ReadCase> cases = {
      {head + "\r\ntail\r\n", FileMode::kText, 2 * kReadBuffer, {head + "\n", "tail\n"}},
      {head + "\ry\n", FileMode::kText, 2 * kReadBuffer, {head + "\ry\n"}},
      {head + "\r", FileMode::kText, 2 * kReadBuffer, {head + "\r"}},
      {head + "\r\n", FileMode::kBinary, 2 * kReadBuffer, {head + "\r\n"}},
      // A line longer than the reader's buffer arrives whole.
      {std::string(3 * kReadBuffer, 'l') + "\r\n",
       FileMode::kText,
       4 * kReadBuffer,
       {std::string(3 * kReadBuffer, 'l') + "\n"}},
  };
  TempFolder temp;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(i);
    WriteBytes(temp / "in", cases[i].bytes);
    EXPECT_EQ(Shapes(Lines(temp / "in", cases[i].mode, cases[i].size)), Shapes(cases[i].lines));
  }
}

// Lines as ReadLineSkippingRest gives them, NULs kept, each marked "|cut"
// when the buffer filled before its line end.
std::vector<std::string> SkippingLines(const std::string& path, FileMode mode, std::size_t size) {
  InFile in;
  EXPECT_TRUE(in.Open(path, mode));
  std::vector<char> buffer(size);
  std::vector<std::string> lines;
  bool cut = false;
  while (const std::size_t length = in.ReadLineSkippingRest(buffer.data(), size, &cut))
    lines.push_back(std::string(buffer.data(), length) + (cut ? "|cut" : ""));
  return lines;
}

TEST(InFileTest, ReadLineSkippingRestDropsTheRestOfALongLine) {
  const std::string longRest(kReadBuffer + 10, 'l');  // runs across a refill
  const std::vector<ReadCase> cases = {
      {"ab\ncdef\r\ngh", FileMode::kText, 4, {"ab\n", "cde|cut", "gh"}},
      // CRLF as the last pair of a full buffer still ends the line in it.
      {"ab\r\nc\n", FileMode::kText, 4, {"ab\n", "c\n"}},
      {"abc\r\nd", FileMode::kText, 4, {"abc|cut", "d"}},
      {"abc\r\nd", FileMode::kBinary, 4, {"abc|cut", "d"}},
      {"ab" + longRest + "\nz\n", FileMode::kText, 4, {"abl|cut", "z\n"}},
      {"abcdef", FileMode::kText, 4, {"abc|cut"}},
      {std::string("a\0b\n", 4), FileMode::kText, 8, {std::string("a\0b\n", 4)}},
      {"ab\n", FileMode::kText, 1, {}},
  };
  TempFolder temp;
  for (const ReadCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.bytes.substr(0, 16)) + " size " +
                 std::to_string(c.size));
    WriteBytes(temp / "in", c.bytes);
    EXPECT_EQ(SkippingLines(temp / "in", c.mode, c.size), c.lines);
  }
}

TEST(InFileTest, TinyBuffersStayInside) {
  TempFolder temp;
  WriteBytes(temp / "in", "ab");
  InFile in;
  ASSERT_TRUE(in.Open(temp / "in", FileMode::kText));
  char guard[3] = {'#', '#', '#'};
  EXPECT_FALSE(in.ReadLine(guard, 0));
  EXPECT_EQ(guard[0], '#');
  EXPECT_TRUE(in.ReadLine(guard, 1));
  EXPECT_EQ(guard[0], '\0');
  EXPECT_EQ(guard[1], '#');
  EXPECT_TRUE(in.ReadLine(guard, 3));
  EXPECT_STREQ(guard, "ab");
  EXPECT_FALSE(in.ReadLine(guard, 1));
  EXPECT_FALSE(in.ReadLine(guard, 3));
}

// A FIFO with no writer would block an open for reading for ever; a folder
// or a device is no file to read either. All are refused at once.
TEST(InFileTest, OnlyRegularFilesOpen) {
  TempFolder temp;
  ASSERT_EQ(::mkfifo((temp / "fifo").c_str(), 0600), 0);
  WriteBytes(temp / "plain", "x\n");
  for (const std::string& path : {temp / "fifo", temp.Path(), std::string("/dev/null")}) {
    SCOPED_TRACE(path);
    InFile in;
    EXPECT_FALSE(in.Open(path, FileMode::kText));
    std::string bytes;
    EXPECT_FALSE(ReadWholeFile(path, bytes));
    EXPECT_EQ(OpenRegularFileForReading(path), -1);
  }
  InFile in;
  EXPECT_TRUE(in.Open(temp / "plain", FileMode::kText));
}

TEST(InFileTest, BulkReads) {
  std::string bytes;
  for (std::size_t i = 0; i < 3 * kReadBuffer + 17; ++i)
    bytes += static_cast<char>(i * 7);
  TempFolder temp;
  WriteBytes(temp / "bin", bytes);

  InFile in;
  ASSERT_TRUE(in.Open(temp / "bin", FileMode::kBinary));
  std::string back(bytes.size() + 10, '\0');
  std::size_t got = in.Read(back.data(), 1000);
  got += in.Read(back.data() + got, 2 * kReadBuffer);
  got += in.Read(back.data() + got, back.size() - got);
  EXPECT_EQ(got, bytes.size());
  back.resize(got);
  EXPECT_EQ(back, bytes);
  EXPECT_EQ(in.Read(back.data(), 10), 0u);

  WriteBytes(temp / "txt", "a\r\nb\rc");
  ASSERT_TRUE(in.Open(temp / "txt", FileMode::kText));
  char text[16] = {};
  EXPECT_EQ(in.Read(text, sizeof text), 5u);
  EXPECT_EQ(std::string(text, 5), "a\nb\rc");

  std::string whole;
  ASSERT_TRUE(ReadWholeFile(temp / "txt", whole));
  EXPECT_EQ(whole, "a\r\nb\rc");
}

}  // namespace
}  // namespace tarnlog
