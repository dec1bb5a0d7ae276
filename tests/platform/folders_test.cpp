#include "platform/folders.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "platform/recording_host.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

TEST(CopyFileNoOverwrite, CopiesBytesAndKeepsTheExecutableBit) {
  TempFolder dir;
  const std::string bytes = std::string("MZ\0\r\n\r\r\nend", 11);
  WriteBytes(dir / "tool.exe", bytes);
  ASSERT_EQ(::chmod((dir / "tool.exe").c_str(), 0755), 0);

  EXPECT_TRUE(CopyFileNoOverwrite(dir / "tool.exe", dir / "copy.exe"));
  EXPECT_EQ(FileBytes(dir / "copy.exe"), bytes);
  struct stat info {};
  ASSERT_EQ(::stat((dir / "copy.exe").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0755u);
}

TEST(CopyFileNoOverwrite, AnOlderCopyStays) {
  TempFolder dir;
  WriteBytes(dir / "new.exe", "new version");
  WriteBytes(dir / "old.exe", "old");
  EXPECT_FALSE(CopyFileNoOverwrite(dir / "new.exe", dir / "old.exe"));
  EXPECT_EQ(FileBytes(dir / "old.exe"), "old");
}

TEST(CopyFileNoOverwrite, AMissingSourceLeavesNothing) {
  TempFolder dir;
  EXPECT_FALSE(CopyFileNoOverwrite(dir / "absent.exe", dir / "copy.exe"));
  EXPECT_FALSE(PathExists(dir / "copy.exe"));
}

TEST(MakeFolderChecked, ShowsTheMessageOnlyWhenItFails) {
  TempFolder dir;
  RecordingHost host;
  EXPECT_TRUE(MakeFolderChecked(dir / "fresh", host));
  EXPECT_TRUE(IsFolder(dir / "fresh"));
  EXPECT_TRUE(host.messages.empty());

  EXPECT_FALSE(MakeFolderChecked(dir / "fresh", host));           // exists already
  EXPECT_FALSE(MakeFolderChecked(dir / "no/such/parent", host));  // can't be made
  EXPECT_EQ(host.MessageTexts(),
            (std::vector<std::string>{"Make DIR is Failed! Enter OK continue.",
                                      "Make DIR is Failed! Enter OK continue."}));
  EXPECT_EQ(host.messages[0].title, "");
  EXPECT_FALSE(MakeFolder(dir / "fresh"));  // the plain form only reports
}

struct MatchCase {
  const char* pattern;
  const char* name;
  bool matches;
};

TEST(WildcardMatch, MatchesLikeTheWindowsSearch) {
  const MatchCase cases[] = {
      {"*.TXT", "a.txt", true},
      {"*.txt", "B.Txt", true},
      {"*.txt", "c.log", false},
      {"*.log", "x.log.bak", false},
      {"*.log", "x.bak.log", true},
      {"a?c", "abc", true},
      {"a?c", "ac", false},
      {"a?c", "abbc", false},
      {"*", "", true},
      {"", "", true},
      {"", "a", false},
      {"*a*b", "xaxxab", true},
      {"*a*b", "xaxxabc", false},
      {"**", "a", true},
      {"*.*", "README", true},
      {"run.*", "run", true},
      {"*.*", "a.b", true},
      {"LOG*", "log_1.txt", true},
      {"realvalue.txt", "RealValue.TXT", true},
  };
  for (const MatchCase& c : cases) {
    EXPECT_EQ(WildcardMatch(c.pattern, c.name), c.matches) << c.pattern << " vs " << c.name;
  }
}

TEST(ListMatching, SortsWithoutRegardToCase) {
  TempFolder dir;
  for (const char* name : {"b.log", "A.LOG", "c.Log", "d.txt", "a.log.bak"}) {
    WriteBytes(dir / name, "x");
  }
  ASSERT_TRUE(MakeFolder(dir / "E.log"));

  std::vector<std::string> names;
  std::vector<bool> folders;
  for (const FolderEntry& entry : ListMatching(dir.Path(), "*.log")) {
    names.push_back(entry.name);
    folders.push_back(entry.isFolder);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"A.LOG", "b.log", "c.Log", "E.log"}));
  EXPECT_EQ(folders, (std::vector<bool>{false, false, false, true}));

  EXPECT_EQ(ListMatching(dir.Path(), "*").size(), 6u);  // no "." or ".."
  EXPECT_TRUE(ListMatching(dir / "absent", "*").empty());
}

}  // namespace
}  // namespace tarnlog
