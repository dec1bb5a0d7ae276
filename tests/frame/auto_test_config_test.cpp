#include "frame/auto_test_config.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;

// A configuration as the AUTO page saves it: two logs from one folder and a
// golden file from another, Static and Noise ticked.
AutoTestConfig PageConfig(const std::string& folder) {
  AutoTestConfig config;
  config.path = folder;
  config.realA = {31.5, 121.25, 10};
  config.realB = {-30.125, -120.0625, -5.5};
  config.fileCount = 2;
  config.filePaths[0] = "/data/x/a.log";
  config.filePaths[1] = "/data/x/b.verylongext";
  config.goldenFile = "/gold/ref.log";
  config.runStatic = 1;
  config.runNoise = 1;
  return config;
}

struct Files {
  std::string list;
  std::string realValues;
  std::string modes;
};

Files Saved(const std::string& folder) {
  return {FileBytes(folder + "/AutoTestConfig/filelist.ini"),
          FileBytes(folder + "/AutoTestConfig/realvalue.ini"),
          FileBytes(folder + "/AutoTestConfig/mode.ini")};
}

TEST(AutoTestConfigTest, SaveWritesEachLineWithOneCrLf) {
  testing::TempFolder folder;
  EXPECT_TRUE(PageConfig(folder.Path()).Save());
  const Files files = Saved(folder.Path());
  EXPECT_EQ(files.list, "FileList:2\r\na.log\r\nb.verylongext\r\n\r\nGoldenFile:\r\nref.log\r\n");
  EXPECT_EQ(files.realValues,
            "31.5000000000,121.2500000000,10.0000000000\r\n"
            "-30.1250000000,-120.0625000000,-5.5000000000\r\n");
  EXPECT_EQ(files.modes,
            "Static,1\r\nDynamic,0\r\nNoise,1\r\nInitial,0\r\nContinue,0\r\nNmea,0\r\n"
            "RangePlot,0\r\n");
}

TEST(AutoTestConfigTest, WhatIsLoadedSavesToTheSameBytes) {
  testing::TempFolder folder;
  MakeFolder(folder / "first");
  MakeFolder(folder / "second");
  ASSERT_TRUE(PageConfig(folder / "first").Save());
  const AutoTestConfig loaded(folder / "first");
  EXPECT_EQ(loaded.fileCount, 2);
  EXPECT_EQ(loaded.fileNames[1], "b.verylongext");
  EXPECT_EQ(loaded.filePaths[1], folder / "first/b.verylongext");
  EXPECT_EQ(loaded.goldenFile, "ref.log");
  EXPECT_EQ(loaded.realB[1], -120.0625);
  EXPECT_EQ(loaded.runStatic + loaded.runNoise, 2);
  EXPECT_EQ(loaded.runDynamic + loaded.runInitial + loaded.runContinue + loaded.runNmea +
                loaded.runRangePlot,
            0);

  AutoTestConfig again = loaded;
  again.path = folder / "second";
  EXPECT_TRUE(again.Save());
  const Files first = Saved(folder / "first");
  const Files second = Saved(folder / "second");
  EXPECT_EQ(second.list, first.list);
  EXPECT_EQ(second.realValues, first.realValues);
  EXPECT_EQ(second.modes, first.modes);
}

TEST(AutoTestConfigTest, NothingToListLeavesAnEmptyListAndEndsTheSave) {
  testing::TempFolder folder;
  AutoTestConfig config = PageConfig(folder.Path());
  config.fileCount = 0;
  config.goldenFile.clear();
  EXPECT_FALSE(config.Save());
  EXPECT_EQ(Saved(folder.Path()).list, "");
  EXPECT_EQ(Saved(folder.Path()).realValues, "<missing>");
  EXPECT_EQ(Saved(folder.Path()).modes, "<missing>");

  config.goldenFile = "g.log";
  EXPECT_TRUE(config.Save());
  EXPECT_EQ(Saved(folder.Path()).list, "FileList:0\r\n\r\nGoldenFile:\r\ng.log\r\n");

  config.path.clear();
  EXPECT_FALSE(config.Save());
}

std::string Flags(const AutoTestConfig& c) {
  std::string flags;
  for (unsigned char flag : {c.runStatic, c.runDynamic, c.runNoise, c.runInitial, c.runContinue,
                             c.runNmea, c.runRangePlot}) {
    flags += static_cast<char>('0' + flag);
  }
  return flags;
}

// What a load gave, on one line: its result, the names, the golden file,
// the flags (Static Dynamic Noise Initial Continue Nmea RangePlot) and the
// first value of A.
std::string Summary(bool loaded, const AutoTestConfig& c) {
  std::string text = loaded ? "ok" : "failed";
  text += " [";
  for (int i = 0; i < c.fileCount; ++i)
    text += (i > 0 ? " " : "") + c.fileNames[i];
  char latitude[32];
  std::snprintf(latitude, sizeof latitude, "%g", c.realA[0]);
  return text + "] golden:" + c.goldenFile + " " + Flags(c) + " " + latitude;
}

std::string ManyNames(int count) {
  std::string text = "FileList:" + std::to_string(count) + "\r\n";
  for (int i = 0; i < count; ++i)
    text += (i == 128 ? "GoldenFile.log" : "f" + std::to_string(i) + ".log") + std::string("\r\n");
  return text;
}

std::string FirstNames(int count) {
  std::string names;
  for (int i = 0; i < count; ++i)
    names += (i > 0 ? " f" : "f") + std::to_string(i) + ".log";
  return names;
}

// Each case writes the files it names (std::nullopt: the file is missing)
// and loads them over a fresh configuration.
struct LoadCase {
  std::optional<std::string> list;
  std::optional<std::string> modes;
  std::optional<std::string> realValues;
  std::string summary;
};

TEST(AutoTestConfigTest, LoadCases) {
  const std::string off = "Static,0\r\n";
  const std::string real = "1.5,2,3\r\n4,5,6\r\n";
  const std::string empty = "FileList:0\r\n";
  const std::string longName(2000, 'n');
  const LoadCase cases[] = {
      // plain line ends and unknown lines
      {"junk\nFileList:1\na.log\n", off, real, "ok [a.log] golden: 0000000 1.5"},
      // "Nmea" is read, "Nema" is not
      {empty, "Nema,1\r\nNmea,1\r\nRangePlot,1\r\n", real, "ok [] golden: 0000011 1.5"},
      // only a number of exactly 1 sets a flag, and only under its exact name
      {empty,
       "Static,2\r\nDynamic,-1\r\nNoise,01\r\nInitial, 1\r\nContinue,1x\r\nStatic ,1\r\n"
       " Nmea,1\r\nRangePlot\r\n,1\r\nRangePlot,99999999999\r\n",
       real, "ok [] golden: 0011100 1.5"},
      // a later line doesn't clear a flag
      {empty, "Static,1\r\nStatic,0\r\n", real, "ok [] golden: 1000000 1.5"},
      // fewer names than the count: what came stays, and nothing more is read
      {"FileList:3\r\na.log\r\nb.log\r\n", "Static,1\r\n", real,
       "failed [a.log b.log] golden: 0000000 0"},
      {"FileList:99999999999\r\na.log\r\n", off, real, "failed [a.log] golden: 0000000 0"},
      // no count
      {"FileList\r\na.log\r\nFileList: x\r\n", off, real, "ok [] golden: 0000000 1.5"},
      // a golden file without its name
      {"FileList:0\r\n\r\nGoldenFile:\r\n", off, real, "failed [] golden: 0000000 0"},
      // names past the capacity are passed over, not read as lines of their own
      {ManyNames(130) + "\r\nGoldenFile:\r\ng.log\r\n", off, real,
       "ok [" + FirstNames(128) + "] golden:g.log 0000000 1.5"},
      // an overlong name keeps its first 1024 bytes
      {"FileList:2\r\n" + longName + "\r\nb.log\r\n", off, real,
       "ok [" + longName.substr(0, 1024) + " b.log] golden: 0000000 1.5"},
      // an overlong mode line is dropped whole
      {empty, std::string(130, 'x') + "Nmea,1\r\nNoise,1\r\n", real, "ok [] golden: 0010000 1.5"},
      // a missing file ends the load there
      {std::nullopt, "Static,1\r\n", real, "failed [] golden: 0000000 0"},
      {"FileList:1\r\na.log\r\n", std::nullopt, real, "failed [a.log] golden: 0000000 0"},
      {empty, "Static,1\r\n", std::nullopt, "failed [] golden: 1000000 0"},
      // a short real value keeps what came
      {empty, off, "7,8\r\n", "failed [] golden: 0000000 7"},
      {empty, off, "7,8,9\r\n", "failed [] golden: 0000000 7"},
  };
  for (const LoadCase& c : cases) {
    testing::TempFolder folder;
    MakeFolder(folder / "AutoTestConfig");
    if (c.list) testing::WriteBytes(folder / "AutoTestConfig/filelist.ini", *c.list);
    if (c.modes) testing::WriteBytes(folder / "AutoTestConfig/mode.ini", *c.modes);
    if (c.realValues) testing::WriteBytes(folder / "AutoTestConfig/realvalue.ini", *c.realValues);
    AutoTestConfig config;
    config.path = folder.Path();
    const bool loaded = config.Load();
    EXPECT_EQ(Summary(loaded, config), c.summary);
    for (int i = 0; i < config.fileCount; ++i)
      EXPECT_EQ(config.filePaths[i], folder / config.fileNames[i]);
  }
}

}  // namespace
}  // namespace tarnlog
