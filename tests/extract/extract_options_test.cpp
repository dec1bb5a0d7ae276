#include "extract/extract_options.h"

#include <gtest/gtest.h>

#include "extract/extract_main.h"

namespace tarnlog {
namespace {

struct Parsed {
  ExtractOptions options;
  std::string printed;
};

// Parses "out -i cap.log" followed by `rest`; texts past argc stay readable.
Parsed Parse(std::vector<std::string> rest, int extraPastArgc = 0) {
  std::vector<std::string> texts{"out", "-i", "cap.log"};
  texts.insert(texts.end(), rest.begin(), rest.end());
  std::vector<char*> argv = ArgvOf(texts);
  ::testing::internal::CaptureStdout();
  Parsed parsed{ParseExtractOptions(static_cast<int>(texts.size()) - extraPastArgc, argv.data()),
                {}};
  parsed.printed = ::testing::internal::GetCapturedStdout();
  return parsed;
}

TEST(ExtractOptionsTest, FullVectorNamesGnsOnePastArgc) {
  std::vector<std::string> texts = FullExtractionVector("out", "cap.log");
  ASSERT_EQ(texts.size(), 126u);
  std::vector<char*> argv = ArgvOf(texts);
  const ExtractOptions options = ParseExtractOptions(125, argv.data());
  EXPECT_EQ(options.capturePath, "cap.log");
  EXPECT_TRUE(options.Wants(TableId::kGns));
  EXPECT_EQ(options.PathOf(TableId::kGns), "out/GNS.txt");
  // -S8 fixes its own name; the vector's "IMU2VELATTBIASA.txt" is skipped.
  EXPECT_EQ(options.PathOf(TableId::kImu2VelAttBias), "out/IMU2VELATTBIAS.txt");
  EXPECT_EQ(options.PathOf(TableId::kRtkVelD), "out/RtkvelD.txt");
  EXPECT_EQ(options.PathOf(TableId::kTtff), "out/ttff.txt");
  EXPECT_EQ(options.PathOf(TableId::kBstPosXY), "out/BstPosXY.txt");
  EXPECT_EQ(options.PathOf(TableId::kRawImuxP), "out/RawImuxP.txt");
  EXPECT_EQ(options.PathOf(TableId::kFreqhList), "out/FreqhList.txt");
}

TEST(ExtractOptionsTest, CountsAndValues) {
  struct Case {
    std::vector<std::string> rest;
    int outputs;
  };
  const std::vector<Case> cases{
      {{"-BP", "bestpos.txt"}, 1},
      {{"-1", "r.txt", "f.txt"}, 2},
      {{"-PS", "a", "b"}, 2},
      {{"-RI", "x.txt"}, 3},
      {{"-PP", "p.txt"}, 3},
      {{"stray", "-T", "t.txt"}, 1},
      {{}, 0},
      {{"-i"}, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.rest));
    EXPECT_EQ(Parse(c.rest).options.outputCount, c.outputs);
  }
}

TEST(ExtractOptionsTest, LaterOptionReplacesEarlierPath) {
  const Parsed parsed = Parse({"-RP", "a.txt", "-RP", "b.txt"});
  EXPECT_EQ(parsed.options.PathOf(TableId::kRtkPos), "out/b.txt");
  EXPECT_EQ(parsed.options.outputCount, 2);
}

TEST(ExtractOptionsTest, UnknownOptionsComplainWhereTheSystemDoes) {
  struct Case {
    std::string option;
    int errors;
  };
  const std::vector<Case> cases{
      {"-X", 1},
      {"-q", 1},
      {"-GX", 1},
      {"-EX", 1},
      {"-PX", 1},
      {"-KX", 1},
      {"-AX", 0},
      {"-BZ", 0},
      {"-IX", 0},
      {"-MX", 0},
      {"-RZ", 0},
      {"-SZ", 0},
      {"-ZX", 0},
      // One-letter options take any second letter.
      {"-Tx", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.option);
    const Parsed parsed = Parse({c.option, "v.txt"});
    std::string expected;
    for (int i = 0; i < c.errors; ++i)
      expected += "*****command error\n";
    EXPECT_EQ(parsed.printed, expected);
  }
}

TEST(ExtractOptionsTest, KBranchRunsOnIntoZ) {
  const Parsed ka = Parse({"-KA"});
  EXPECT_EQ(ka.printed, "*****command error\n");
  EXPECT_EQ(ka.options.PathOf(TableId::kPppPos), "out/ppppos.txt");

  const Parsed ks = Parse({"-KS", "ksxt.txt"});
  EXPECT_EQ(ks.printed, "");
  EXPECT_EQ(ks.options.PathOf(TableId::kKsxt), "out/ksxt.txt");
  EXPECT_EQ(ks.options.outputCount, 1);
}

TEST(ExtractOptionsTest, EventValueIsIgnoredAndMissingValueNamesNothing) {
  const Parsed ev = Parse({"-EV", "mine.txt"});
  EXPECT_EQ(ev.options.outputCount, 1);
  for (std::size_t i = 0; i < kTableCount; ++i)
    EXPECT_FALSE(ev.options.wanted[i]);

  // The value position holds the terminating null: counted, not named.
  const Parsed last = Parse({"-GG"});
  EXPECT_EQ(last.options.outputCount, 1);
  EXPECT_FALSE(last.options.Wants(TableId::kGga));
}

// A process's argument vector is followed by its environment: an option
// given last never reads past the null that ends the vector.
TEST(ExtractOptionsTest, ValuesAreNeverReadPastTheVectorsEnd) {
  std::string texts[] = {"out", "-i", "cap.log", "-1", "HOME=/root", "only.txt"};
  for (int valuesGiven : {0, 1}) {
    SCOPED_TRACE(valuesGiven);
    // "-1" with its first value at argv[argc] (one past, as the full vector
    // keeps it) or at the null; the environment string lies behind.
    char* argv[] = {texts[0].data(),
                    texts[1].data(),
                    texts[2].data(),
                    texts[3].data(),
                    valuesGiven ? texts[5].data() : nullptr,
                    texts[4].data(),
                    nullptr};
    const ExtractOptions options = ParseExtractOptions(4, argv);
    EXPECT_EQ(options.outputCount, 2);
    EXPECT_EQ(options.Wants(TableId::kRange), valuesGiven == 1);
    EXPECT_FALSE(options.Wants(TableId::kFreqList));
  }
}

}  // namespace
}  // namespace tarnlog
