#include "frame/mode_dispatch.h"

#include <gtest/gtest.h>

namespace tarnlog {
namespace {

struct WordCase {
  std::string lastArgument;
  std::string_view expectedWord;  // empty: no hit
  std::string loweredArgument;
};

TEST(MatchModeWordTest, FirstContainedWordWinsAfterLowerCasing) {
  const std::vector<WordCase> cases{
      {"static", "static", "static"},
      {"STATIC", "static", "static"},
      {"myheadingrun", "heading", "myheadingrun"},
      // Order decides, not the position in the text.
      {"statictest", "static", "statictest"},
      {"testkml", "kml", "testkml"},
      {"kmlcontinue", "continue", "kmlcontinue"},
      {"RangePlot", "rangeplot", "rangeplot"},
      {"heading_static", "heading", "heading_static"},
      // MFG is compared in capitals with a lower-cased text.
      {"MFG", "", "mfg"},
      {"mfg", "", "mfg"},
      {"b", "", "b"},
      {"", "", ""},
      {"/Data/Run1/TEST", "test", "/data/run1/test"},
  };
  for (WordCase c : cases) {
    SCOPED_TRACE(c.lastArgument);
    const ModeWord* mode = MatchModeWord(c.lastArgument);
    EXPECT_EQ(mode ? mode->word : std::string_view{}, c.expectedWord);
    EXPECT_EQ(c.lastArgument, c.loweredArgument);
  }
}

TEST(ModeWordsTest, PagesAndVisibility) {
  const std::vector<std::pair<std::string_view, std::string_view>> expected{
      {"heading", "Heading"},
      {"rangeplot", "CCN0CompareDlg"},
      {"static", "llherroRTKStatic"},
      {"continue", "CRecordTimeDlg"},
      {"kml", "Nema"},
      {"test", "PPSReacquisition"},
      {"MFG", "GenNoise"}};
  ASSERT_EQ(kModeWords.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(kModeWords[i].word, expected[i].first);
    EXPECT_EQ(kModeWords[i].className, expected[i].second);
    // "static" and "MFG" fill their page without bringing it to the front.
    EXPECT_EQ(kModeWords[i].showsPage, expected[i].first != "static" && expected[i].first != "MFG");
  }
}

}  // namespace
}  // namespace tarnlog
