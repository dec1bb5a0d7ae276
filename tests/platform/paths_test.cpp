#include "platform/paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnlog {
namespace {

struct SplitCase {
  std::string path, folder, name, extension;
};

TEST(SplitPathTest, SplitsLikeTheCLibrary) {
  const std::vector<SplitCase> cases = {
      {"/a/b/c.log", "/a/b/", "c", ".log"},
      {"c.log", "", "c", ".log"},
      {"dir/c", "dir/", "c", ""},
      {"/a/b/", "/a/b/", "", ""},
      {"/d1/d2/d3/d4/d5/run.2024.bin", "/d1/d2/d3/d4/d5/", "run.2024", ".bin"},
      {"/a.b/c", "/a.b/", "c", ""},
      {"/a/.x", "/a/", "", ".x"},
      {"/a/f.", "/a/", "f", "."},
      {"/a/f.abcdefghijkl", "/a/", "f", ".abcdefgh"},
      {"", "", "", ""},
  };
  for (const SplitCase& c : cases) {
    SCOPED_TRACE(c.path);
    const PathParts parts = SplitPath(c.path);
    EXPECT_EQ(parts.drive, "");
    EXPECT_EQ(parts.folder, c.folder);
    EXPECT_EQ(parts.name, c.name);
    EXPECT_EQ(parts.extension, c.extension);
  }
}

struct PartCase {
  std::string path;
  int k;
  std::string left;   // PathPart
  std::string right;  // PathPartFromRight
};

TEST(PathPartTest, BothCountingDirections) {
  const std::string p = "/data/run/x.log";
  const std::vector<PartCase> cases = {
      {p, 1, "", "/data/run"},
      {p, 2, "/data", "/data"},
      {p, 3, "/data/run", ""},
      {p, 4, p, p},
      {p, 0, p, p},
      {p, -1, "x.log", "x.log"},
      {p, -2, "run/x.log", ""},
      {p, -3, "data/run/x.log", ""},
      {p, -4, p, ""},
      {"dir/c", 1, "dir", "dir"},
      {"dir/c", -1, "c", "c"},
      {"dir/c", -2, "dir/c", "dir"},
      {"c.log", 1, "c.log", "c.log"},
      {"c.log", -1, "c.log", "c.log"},
      {"c.log", -2, "c.log", "c.log"},
      {"/a/b/", -1, "", ""},
      {"/a/b/", 1, "", "/a/b"},
  };
  for (const PartCase& c : cases) {
    SCOPED_TRACE(c.path + " k=" + std::to_string(c.k));
    EXPECT_EQ(PathPart(c.path, c.k), c.left);
    EXPECT_EQ(PathPartFromRight(c.path, c.k), c.right);
  }
}

TEST(PathPartTest, LooksAtTheFirst255CharactersOnly) {
  // The name starts at 252; only "nam" of it is inside the looked-at text.
  const std::string longName = "/" + std::string(250, 'a') + "/name.log";
  EXPECT_EQ(PathPart(longName, -1), "nam");
  EXPECT_EQ(PathPartFromRight(longName, -1), "nam");
  EXPECT_EQ(PathPart(longName, 0).size(), 255u);

  // A separator past the limit is not seen.
  const std::string longFolder = "/" + std::string(260, 'a') + "/x";
  EXPECT_EQ(PathPart(longFolder, -1), std::string(254, 'a'));
  EXPECT_EQ(PathPart(longFolder, 2), longFolder.substr(0, 255));
  EXPECT_EQ(PathPartFromRight(longFolder, 1), "");

  // Exactly 255 characters: the last one still counts.
  const std::string exact = std::string(253, 'b') + "/c";
  EXPECT_EQ(PathPart(exact, -1), "c");
}

TEST(FolderAndJoinTest, Pieces) {
  EXPECT_EQ(FolderOf("/a/b/c.log"), "/a/b");
  EXPECT_EQ(FolderOf("/c.log"), "");
  EXPECT_EQ(FolderOf("c.log"), "");
  EXPECT_EQ(FolderOf("/a/b/"), "/a/b");
  EXPECT_EQ(JoinPath("/a/b", "c.log"), "/a/b/c.log");
  EXPECT_EQ(JoinPath("/a/b/", "c.log"), "/a/b/c.log");
  EXPECT_EQ(JoinPath("/", "c"), "/c");
}

}  // namespace
}  // namespace tarnlog
