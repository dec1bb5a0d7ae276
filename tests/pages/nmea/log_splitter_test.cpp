#include "pages/nmea/log_splitter.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Parts = std::map<std::string, std::string>;  // part name -> bytes

// Every file of a split folder with its bytes.
Parts ReadParts(const std::string& folder) {
  Parts parts;
  for (const FolderEntry& entry : ListMatching(folder, "*"))
    parts[entry.name] = testing::FileBytes(folder + "/" + entry.name);
  return parts;
}

// A long head with week and seconds, its CRC right or spoilt, and "\r\n".
std::string Head(int week, const char* seconds, bool crcHolds = true) {
  const std::string text = "BESTPOSA,COM1,0,55.5,FINESTEERING," + std::to_string(week) + "," +
                           seconds + ",02000000,b1f6,16248;SOL_COMPUTED,SINGLE,31.5,121.2";
  return testing::WithAsciiCrc(text, '#', "\r\n", crcHolds);
}

TEST(SplitFieldTest, TakesTheTextBehindTheNthCommaCutToTheTarget) {
  const std::string head = "#A,COM1,0,55.5,FINE,2300,345600.000\n";
  const std::string overlong = "#A,1,2,3,4," + std::string(300, '7') + ",x";
  char target[kSplitFieldSize];
  EXPECT_EQ(SplitField(head.c_str(), target, 5), 1);
  EXPECT_STREQ(target, "2300");
  EXPECT_EQ(SplitField(head.c_str(), target, 6), 1);
  EXPECT_STREQ(target, "345600.000");
  EXPECT_EQ(SplitField(head.c_str(), target, 7), 0);
  EXPECT_STREQ(target, "");
  EXPECT_EQ(SplitField(overlong.c_str(), target, 5), 1);
  EXPECT_EQ(std::string(target), std::string(kSplitFieldSize - 1, '7'));
}

TEST(SplitByFixedStringTest, MarkerLineEndsOnePartAndOpensTheNext) {
  const std::string x(10239, 'x');
  struct Case {
    const char* what;
    std::string log;
    Parts parts;
  } cases[] = {
      {"no marker", std::string("a\r\nb\0c\r\n", 8), {{"Split0.txt", "a\r\nb c\r\n"}}},
      {"marker first",
       "[COM1]\r\nx\r\n",
       {{"Split0.txt", "[COM1]\r\n"}, {"Split1.txt", "[COM1]\r\nx\r\n"}}},
      {"two markers, unended tail",
       "a\r\n[COM1]\r\nb\r\nc [COM1]\r\ntail",
       {{"Split0.txt", "a\r\n[COM1]\r\n"},
        {"Split1.txt", "[COM1]\r\nb\r\nc [COM1]\r\n"},
        {"Split2.txt", "c [COM1]\r\n"}}},
      {"marker in a second piece",
       x + "[COM1]\r\n",
       {{"Split0.txt", x + "[COM1]\r\n"}, {"Split1.txt", "[COM1]\r\n"}}},
      {"marker across two pieces",
       x.substr(3) + "[COM1]\r\n",
       {{"Split0.txt", x.substr(3) + "[COM1]\r\n"}}},
  };
  for (const Case& c : cases) {
    testing::TempFolder folder;
    testing::WriteBytes(folder / "run.log", c.log);
    EXPECT_EQ(SplitByFixedString(folder / "run.log", "[COM1]"), 1) << c.what;
    EXPECT_EQ(ReadParts(folder / "run_FixedString"), c.parts) << c.what;
  }
}

TEST(SplitByFixedPeriodTest, PartsCountPeriodsFromTheFirstEpochAcrossTheWeek) {
  testing::TempFolder folder;
  const std::string port = "[COM1]\r\n";
  const std::string early = Head(2300, "603000.000", false);  // skipped in the search
  const std::string first = Head(2300, "603900.000");
  const std::string gga = "$GPGGA,235959.00,3130.1,N,12115.5,E,1,08,0.9,5.4,M,8.1,M,,*47\r\n";
  const std::string late = Head(2300, "604799.000");
  const std::string nextWeek = Head(2301, "2700.000");  // one hour on
  const std::string base = "#BASERANGEA,COM1,0,0,FINE,9,9;*00000000\r\n";
  const std::string skip = Head(2301, "13000.000");  // part 2 has no line
  testing::WriteBytes(folder / "run.log",
                      port + early + first + gga + late + nextWeek + base + skip + "#unended");
  EXPECT_EQ(SplitByFixedPeriod(folder / "run.log", 3600), 1);
  EXPECT_EQ(ReadParts(folder / "run_FixedPeriod"),
            (Parts{{"Split0.txt", port + early + first + gga + late + nextWeek},
                   {"Split1.txt", nextWeek + base + skip},
                   {"Split3.txt", skip}}));
}

TEST(SplitByFixedPeriodTest, WithNoLineOfGoodCrcEverythingStaysInTheFirstPart) {
  testing::TempFolder folder;
  const std::string log = Head(2300, "1000.000", false) + Head(2301, "1000.000", false);
  testing::WriteBytes(folder / "run.log", log);
  EXPECT_EQ(SplitByFixedPeriod(folder / "run.log", 3600), 1);
  EXPECT_EQ(ReadParts(folder / "run_FixedPeriod"), (Parts{{"Split0.txt", log}}));
}

TEST(SplitByFixedPeriodTest, HeadFieldsBeyondTheirRangeNeverWrap) {
  testing::TempFolder folder;
  const auto line = [](const char* week, const char* seconds) {
    return std::string("#BESTPOSA,COM1,0,55.5,FINESTEERING,") + week + "," + seconds +
           ",02000000,b1f6,16248;SOL_COMPUTED*00000000\r\n";
  };
  const std::string first = Head(2300, "1000.000");
  // A week past int is held at its end: (2147483647 - 2300) weeks on.
  const std::string late = line("99999999999", "1000.000");
  const std::string early = line("-99999999999", "1000.000");
  // Seconds that are no second of a week follow the part in hand.
  const std::string odd = line("2300", "nan") + line("2300", "1e308") + line("2300", "inf");
  testing::WriteBytes(folder / "run.log", first + late + odd + early + odd);
  EXPECT_EQ(SplitByFixedPeriod(folder / "run.log", 3600), 1);
  EXPECT_EQ(ReadParts(folder / "run_FixedPeriod"),
            (Parts{{"Split0.txt", first + late},
                   {"Split360776866296.txt", late + odd + early},
                   {"Split-360777639264.txt", early + odd}}));
}

TEST(LogSplitterTest, SecondRunAppendsAndMissingLogFails) {
  testing::TempFolder folder;
  const std::string log = Head(2300, "1000.000") + "[COM1]\r\n";
  testing::WriteBytes(folder / "run.log", log);
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(SplitByFixedString(folder / "run.log", "[COM2]"), 1);
    EXPECT_EQ(SplitByFixedPeriod(folder / "run.log", 3600), 1);
  }
  EXPECT_EQ(ReadParts(folder / "run_FixedString"), (Parts{{"Split0.txt", log + log}}));
  EXPECT_EQ(ReadParts(folder / "run_FixedPeriod"), (Parts{{"Split0.txt", log + log}}));

  EXPECT_EQ(SplitByFixedString(folder / "none.log", "[COM1]"), 0);
  EXPECT_EQ(SplitByFixedPeriod(folder / "none.log", 3600), 0);
  EXPECT_EQ(SplitByFixedPeriod(folder / "run.log", 0), 0);
  EXPECT_FALSE(PathExists(folder / "none_FixedString"));
  EXPECT_FALSE(PathExists(folder / "none_FixedPeriod"));
}

}  // namespace
}  // namespace tarnlog
