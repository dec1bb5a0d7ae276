#include "extract/log_fields.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace tarnlog {
namespace {

const char* const kBestPos =
    "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,"
    "0.000,18,18,18,0,00,02,11,01*c3194e35\r\n";

TEST(ReadLongHeaderTest, IdleWeekAndSeconds) {
  LongHeader header;
  ASSERT_TRUE(ReadLongHeader(kBestPos, &header));
  EXPECT_DOUBLE_EQ(header.idle, 83.5);
  EXPECT_EQ(header.week, 2163);
  EXPECT_DOUBLE_EQ(header.seconds, 329760.0);

  // The week is read as "%i": a leading zero means octal.
  LongHeader octal;
  ASSERT_TRUE(ReadLongHeader("#A,COM1,0,5,FINE,02163,1.5,0;x", &octal));
  EXPECT_EQ(octal.week, 02163);
  EXPECT_DOUBLE_EQ(octal.seconds, 1.5);

  LongHeader shortHeader;
  EXPECT_FALSE(ReadLongHeader("#A,COM1,0,5,FINE", &shortHeader));
  EXPECT_FALSE(ReadLongHeader("#A,COM1,0,5,FINE,x,1.0;", &shortHeader));
  EXPECT_FALSE(ReadLongHeader("#A,COM1", &shortHeader));
}

TEST(ReadCompactHeaderTest, IdleWeekAndMilliseconds) {
  CompactHeader header;
  ASSERT_TRUE(
      ReadCompactHeader("#RAWIMUA,45,GPS,FINESTEERING,2163,329760123,0,0,0,0;1*00", &header));
  EXPECT_EQ(header.idle, 45);
  EXPECT_EQ(header.week, 2163);
  EXPECT_EQ(header.milliseconds, 329760123);
  EXPECT_DOUBLE_EQ(header.Seconds(), 329760.123);

  CompactHeader bad;
  EXPECT_FALSE(ReadCompactHeader("#RAWIMUA,45,,FINESTEERING,2163,1,0;", &bad));
  EXPECT_FALSE(ReadCompactHeader("#RAWIMUA,45.5,GPS,FINESTEERING,2163,1,0;", &bad));
}

TEST(ReadBriefHeaderTest, WeekAndMilliseconds) {
  CompactHeader header;
  ASSERT_TRUE(ReadBriefHeader("%RAWIMUSXA,2163,329760500;04,41*00", &header));
  EXPECT_EQ(header.week, 2163);
  EXPECT_EQ(header.milliseconds, 329760500);
  EXPECT_DOUBLE_EQ(header.Seconds(), 329760.5);
  EXPECT_FALSE(ReadBriefHeader("%RAWIMUSXA,2163", &header));
}

struct HexCase {
  std::string sentence;
  unsigned last;
  unsigned secondLast;
};

TEST(ReadTrailingHexTest, BackwardsFromTheStar) {
  const std::vector<HexCase> cases = {
      {kBestPos, 0x01, 0x11},
      // Two-character last field, one-character second-last.
      {"#A,x,3,1a*00000000", 0x1a, 0x3},
      // A longer last field gives its last two characters and no second.
      {"#A,x,12,abc*00000000", 0xbc, 0},
      // A one-character last field is dropped; the field before it is read.
      {"#A,x,2f,7*00000000", 0, 0x2f},
      {"#A,x,5,7*00000000", 0, 0x5},
      // The last star decides.
      {"#A,0,11,22*x,33,44*12345678", 0x44, 0x33},
      {"#A,x,zz,yy*00000000", 0, 0},
      {"#A*", 0, 0},
      {"", 0, 0},
  };
  for (const HexCase& c : cases) {
    SCOPED_TRACE(c.sentence);
    const TrailingHex hex = ReadTrailingHex(c.sentence.c_str(), c.sentence.size());
    EXPECT_EQ(hex.last, c.last);
    EXPECT_EQ(hex.secondLast, c.secondLast);
  }
  // Only the given length is looked at.
  const std::string twoStars = "#A,0,11,22*x,33,44*12345678";
  const TrailingHex first = ReadTrailingHex(twoStars.c_str(), twoStars.find('x') + 1);
  EXPECT_EQ(first.last, 0x22u);
  EXPECT_EQ(first.secondLast, 0x11u);
}

}  // namespace
}  // namespace tarnlog
