#include "extract/text_search.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnlog {
namespace {

struct FindCase {
  std::string text;
  std::string pattern;
  int start;
  int position;
};

TEST(FindTextTest, PositionsCountFromStartAndRestartsSkipTheMismatch) {
  const std::vector<FindCase> cases = {
      {"LOCAL", "LOCAL", 0, 1},
      {"x,LOCAL", "LOCAL", 0, 3},
      {"LOCAL,LOCAL", "LOCAL", 1, 6},
      // After a partial match the mismatching character isn't tried again.
      {"LLOCAL", "LOCAL", 0, 0},
      {"WWGS84", "WGS84", 0, 0},
      {"WGS8WGS84", "WGS84", 0, 0},
      {"LOCALLOCAL", "LOCAL", 1, 0},
      {"LLOCAL,LOCAL", "LOCAL", 0, 8},
      {"UNKNOWN", "UNKNOWN", 0, 1},
      {"FINESTEERING,UNKNOW", "UNKNOWN", 0, 0},
      // A comma's position is the offset of the character behind it.
      {",x", ",", 0, 1},
      {"a,b,c", ",", 0, 2},
      {"a,b,c", ",", 2, 2},
      {"a,b,c", ",", 4, 0},
      {"#A,B;C", ";", 0, 5},
      {"", ",", 0, 0},
      {"abc", "", 0, 0},
  };
  FindTextTable table;
  for (const FindCase& c : cases) {
    SCOPED_TRACE(c.text + " / " + c.pattern);
    table.Clear();
    EXPECT_EQ(FindText(c.text.c_str(), c.pattern.c_str(), c.start, table), c.position);
  }
}

TEST(FindTextTest, AddingCommaResultsWalksTheFields) {
  const char* sentence = "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163;";
  FindTextTable table;
  int at = 0;
  std::vector<std::string> fields;
  for (int n = 0; n < 5; ++n) {
    at += FindText(sentence, ",", at, table);
    fields.emplace_back(sentence + at, 4);
  }
  EXPECT_EQ(fields, (std::vector<std::string>{"COM1", "0,83", "83.5", "FINE", "2163"}));
}

TEST(FindTextTest, ClearZeroesTheTable) {
  FindTextTable table;
  for (int& entry : table.entries)
    entry = 7;
  table.Clear();
  for (int entry : table.entries)
    EXPECT_EQ(entry, 0);
}

TEST(IsNumericTextTest, CharactersOnly) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"", 0},     {"123", 0},  {"-1.5", 0}, {"+-..", 0}, {"1e3", -1},
      {"1 2", -1}, {"12a", -1}, {" ", -1},   {"0x1", -1},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(IsNumericText(text.c_str()), expected) << text;
}

}  // namespace
}  // namespace tarnlog
