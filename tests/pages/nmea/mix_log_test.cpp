#include "pages/nmea/mix_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "pages/nmea/mix_lines.h"
#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

std::string Ascii(char lead, const std::string& body, const std::string& tail = "\r\n") {
  return testing::WithAsciiCrc(body, lead, tail);
}
std::string Ascii(const std::string& body) {
  return testing::WithAsciiCrc(body);
}
std::string Nmea(const std::string& body) {
  return testing::WithNmeaChecksum(body);
}

std::string BestPos(const std::string& seconds, const std::string& type = "NARROW_INT",
                    const std::string& port = "COM1") {
  return Ascii("BESTPOSA," + port + ",0,65.5,FINESTEERING,1687," + seconds +
               ",00000000,6145,3153;SOL_COMPUTED," + type +
               ",32.59535912622,-85.29567789741,199.9777,-29.2000,WGS84,0.0100,0.0100,0.0200,"
               "\"0\",1.000,0.000,12,12,12,12,0,06,00,03");
}

// Three observations: GPS L1 C/A and L2 P(Y), GLONASS L1 C/A, all locked.
std::string Range(const std::string& seconds) {
  return Ascii("RANGEA,COM1,0,69.5,FINESTEERING,1687," + seconds +
               ",00000000,5103,3153;3,16,0,20612359.352,0.035,-103626277.506003,0.006,-1595.594,"
               "50.3,4835.392,18109c04,16,0,20612359.863,0.068,-80734665.612673,0.006,-1243.324,"
               "44.5,4806.920,11309c0b,3,1,21128957.505,0.036,-106341096.538592,0.010,2313.016,"
               "50.0,4803.358,18119c04");
}

constexpr char kZeros[] =
    "       0,       0,       0,       0,       0,       0,       0,       0,       0,       0,"
    "       0,       0,       0,       0,       0\r\n";
constexpr char kThreeObservations[] =
    "       3,       1,       1,       1,       1,       0,       0,       0,       0,       0,"
    "       0,       1,       1,       0,       0\r\n";

std::string Header() {
  return std::string(kMixLogHeader) + "\r\n";
}

class MixLogTest : public ::testing::Test {
 protected:
  std::string Log(const std::string& bytes) {
    WriteBytes(log_, bytes);
    return log_;
  }
  std::string Mix() const { return FileBytes(folder_ / "a_Mix.log"); }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const FolderEntry& entry : ListMatching(folder_.Path(), "*"))
      names.push_back(entry.name);
    return names;
  }

  TempFolder folder_;
  std::string log_ = folder_ / "a.log";
};

TEST_F(MixLogTest, BestPosRowsCarryTheEllipsoidalHeightAndZeroCounts) {
  Log("junk line\r\n" + BestPos("419928.000") + BestPos("419929.000", "L1_FLOAT"));
  EXPECT_EQ(BuildPositionMixLog(log_, "BESTPOS", 0, 8, 2, 1, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header() +
                       "1687,419928.000,000000.000,32.595359126,-85.295677897,170.777700,    12,"
                       "0.000,     4,  1.00," +
                       kZeros +
                       "1687,419929.000,000000.000,32.595359126,-85.295677897,170.777700,    12,"
                       "0.000,     5,  1.00," +
                       kZeros);
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.log", "a_Mix.log", "a_Mix_Bestpos.kml"}));
}

TEST_F(MixLogTest, PositionLinesFailingACheckAreDropped) {
  std::string badCrc = BestPos("419930.000");
  badCrc[badCrc.size() - 3] ^= 1;
  const std::string cut = BestPos("419931.000").substr(0, 120) + "\r\n";
  std::string twoInOne = BestPos("419932.000");
  twoInOne.resize(twoInOne.size() - 2);
  twoInOne += BestPos("419933.000");
  Log(badCrc + cut + twoInOne + BestPos("419934.000", "SINGLE", "LOGLIST") +
      Ascii("BESTPOSA,COM1,0,65.5,FINESTEERING,1687,419935.000,00000000,6145,3153;"
            "INSUFFICIENT_OBS,NONE,0.0,0.0,0.0,0.0,WGS84,0.0,0.0,0.0,\"\",0.000,0.000,0,0,0,0,0,"
            "00,00,00"));
  EXPECT_EQ(BuildPositionMixLog(log_, "BESTPOS", 0, 8, 2, 1, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header());
  // Without the CRC test only the damaged line passes.
  EXPECT_EQ(BuildPositionMixLog(log_, "BESTPOS", 0, 8, 2, 1, false, true, 0), 1);
  const std::string mix = Mix();
  EXPECT_EQ(mix.substr(Header().size(), 16), "1687,419930.000,");
  for (const char* second : {"419931", "419932", "419933", "419934", "419935"})
    EXPECT_EQ(mix.find(second), std::string::npos) << second;
}

TEST(MixLinesTest, StarTailIsUnderTwentyForPositionsAndAtMostTwentyForRanges) {
  const std::string body =
      "PSRPOSA,COM1,0,60.5,FINESTEERING,1687,419928.000,00000000,6145,3153;SOL_COMPUTED,SINGLE";
  for (const auto& [blanks, positionTakes, rangeTakes] : std::vector<std::tuple<int, bool, bool>>{
           {9, true, true}, {10, false, true}, {11, false, false}}) {
    // Star, eight digits, the blanks and the line feed.
    const std::string line = Ascii('#', body, std::string(blanks, ' ') + "\n");
    EXPECT_EQ(AcceptAsciiLine(line.c_str(), line.size(), "#PSRPOSA", kPositionStarTail, true),
              positionTakes)
        << blanks;
    EXPECT_EQ(AcceptAsciiLine(line.c_str(), line.size(), "#PSRPOSA", kRangeStarTail, true),
              rangeTakes)
        << blanks;
  }
}

TEST(MixLinesTest, MessageNamesAreTestedInOrder) {
  EXPECT_EQ(MatchMixMessage("INSPVAX", true), MixMessage::kInsPvax);
  EXPECT_EQ(MatchMixMessage("INSPVAS", true), MixMessage::kInsPvas);
  EXPECT_EQ(MatchMixMessage("INSPVA", true), MixMessage::kInsPva);
  EXPECT_EQ(MatchMixMessage("PosT", true), MixMessage::kPosT);
  EXPECT_EQ(MatchMixMessage("BESTGNSSPOS", true), MixMessage::kBestGnssPos);
  EXPECT_EQ(MatchMixMessage("MATCHEDPOS", false), MixMessage::kMatchedPos);
  EXPECT_EQ(MatchMixMessage("DRPVA", false), MixMessage::kNone);
}

TEST(MixLinesTest, StatusCodesOfSolutionTypes) {
  const char* plain = "#BESTPOSA,...;SOL_COMPUTED,X,";
  struct Case {
    MixMessage message;
    const char* type;
    const char* line;
    int status;
  };
  const Case cases[] = {
      {MixMessage::kBestPos, "NARROW_INT", "#BESTPOSA;SOL_COMPUTED,NARROW_INT,\"INSUFFICIENT_OBS\"",
       0},
      {MixMessage::kBestPos, "SINGLE", plain, 1},
      {MixMessage::kBestPos, "WAAS", plain, 1},
      {MixMessage::kPsrPos, "PSRDIFF", plain, 2},
      {MixMessage::kBestPos, "INS_PSRDIFF", plain, 2},
      {MixMessage::kBestNav, "INS_PSRDIFF", plain, 6},
      {MixMessage::kPsrPos, "INS_PSRDIFF", plain, 1},
      {MixMessage::kBestPos, "SBAS", "#BESTPOSA;SOL_COMPUTED,SBAS,1.0", 2},
      {MixMessage::kPsrPos, "SBAS", "#PSRPOSA;SOL_COMPUTED,SBAS,1.0", 1},
      {MixMessage::kRtkPos, "L1_INT", plain, 4},
      {MixMessage::kRtkPos, "WIDE_INT", plain, 4},
      {MixMessage::kPppPos, "PPP", plain, 4},
      {MixMessage::kBestPos, "PPP", plain, 1},
      {MixMessage::kPppPos, "PPP_CONVERGING", plain, 5},
      {MixMessage::kMatchedPos, "IONOFREE_FLOAT", plain, 5},
      {MixMessage::kBestPos, "INS", plain, 6},
      {MixMessage::kSppNav, "INS_RTKFIXED", plain, 6},
      {MixMessage::kBestNav, "INS_PSRSP", plain, 6},
      {MixMessage::kRtkPos, "INS_PSRSP", plain, 1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SolutionStatus(c.message, c.type, c.line), c.status) << c.type << " " << c.line;
  }
}

TEST(MixLinesTest, BestNavSecondsComeFromMilliseconds) {
  const std::string line = Ascii(
      "BESTNAVA,97,GPS,FINE,2190,285750200,0,0,18,26;SOL_COMPUTED,NARROW_INT,40.1,116.2,60.5,"
      "-9.5,WGS84,0.01,0.01,0.02,\"0\",1.000,0.000,30,28,28,28,0,06,00,03");
  MixFix fix;
  ASSERT_TRUE(ReadPositionLine(MixMessage::kBestNav, line.c_str(), fix));
  EXPECT_EQ(fix.week, 2190);
  EXPECT_DOUBLE_EQ(fix.second, 285750.2);
  EXPECT_DOUBLE_EQ(fix.height, 51.0);
  EXPECT_EQ(fix.satellites, 30);
  EXPECT_EQ(fix.status, 4);
}

TEST(MixLinesTest, EpochThinning) {
  struct Case {
    double second;
    int frequency;
    bool kept;
  };
  const Case cases[] = {
      {419928.37, 0, true},
      {419928.0, 1, true},
      {419928.5, 1, false},
      {419928.999, 1, true},  // rounds to 1.00
      {419928.0, 3, true},
      {419928.333, 3, false},
      {419928.667, 3, false},
      {419928.2, 5, true},
      {419928.6, 5, true},
      {419928.8, 5, true},
      {419928.1, 5, false},
      {419928.5, 5, false},
      // No fraction, or none that reads as a number: kept.
      {1e308, 1, true},
      {NAN, 1, true},
      {INFINITY, 5, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(KeepEpoch(c.second, c.frequency), c.kept) << c.second << " at " << c.frequency;
  }
}

TEST(MixLinesTest, TrackingStatusWordsFillTheirCounters) {
  // Counter order: GPS L1, L2, BD2 B1, B2, B3, GLONASS L1, L2; each code,
  // then carrier.
  struct Case {
    std::uint32_t word;
    std::vector<int> counted;
  };
  const Case cases[] = {
      {0x18109c04, {0, 1}},    // GPS L1 C/A, code and phase locked
      {0x11309c0b, {2, 3}},    // GPS L2 P(Y), signal 9
      {0x00A01C00, {2, 3}},    // GPS L2C, signal 5
      {0x00001000, {0}},       // code only
      {0x00001800, {0}},       // parity known without phase lock: no carrier
      {0x00000C00, {1}},       // carrier only
      {0x00041C00, {4, 5}},    // BeiDou B1
      {0x02241C00, {6, 7}},    // BeiDou signal 17: B2
      {0x00441C00, {8, 9}},    // BeiDou signal 2: B3
      {0x02A41C00, {8, 9}},    // BeiDou signal 21: B3
      {0x00011C00, {10, 11}},  // GLONASS L1 C/A
      {0x00211C00, {12, 13}},  // GLONASS L2 C/A
      {0x00031C00, {}},        // Galileo
      {0x00021C00, {}},        // SBAS
      {0x00201C00, {}},        // GPS signal 1
  };
  for (const Case& c : cases) {
    int counts[kSignalCounts] = {};
    CountObservation(c.word, counts);
    int expected[kSignalCounts] = {};
    for (int n : c.counted)
      expected[n] = 1;
    EXPECT_TRUE(std::equal(counts, counts + kSignalCounts, expected)) << std::hex << c.word;
  }
}

TEST(MixLinesTest, UtcColumnLessLeapSecondsAndTheSiNanSecond) {
  EXPECT_EQ(JoinedUtcColumn(419928.0, 1), "203830.000");
  EXPECT_EQ(JoinedUtcColumn(419928.25, 4), "203829.250");
  // 0.5 s after the leap seconds: board 4 wraps to the day before.
  EXPECT_EQ(JoinedUtcColumn(345618.5, 1), "000000.500");
  EXPECT_EQ(JoinedUtcColumn(345618.5, 4), "235959.500");
  EXPECT_EQ(JoinedUtcColumn(INFINITY, 1).substr(0, 4), "0000");
  EXPECT_EQ(JoinedUtcColumn(NAN, 4).substr(0, 4), "0000");
}

TEST_F(MixLogTest, RangeJoinKeepsPositionsAndDropsLoneRanges) {
  // Range 419927 has no position; position 419929 has no range; the range
  // file ends before position 419931, which is lost with it.
  Log(Range("419927.000") + BestPos("419928.000") + Range("419928.000") + BestPos("419929.000") +
      BestPos("419930.000") + Range("419930.000") + BestPos("419931.000"));
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 3, 5, 2, 1, true, true, 0), 1);
  const std::string fix = "32.595359126,-85.295677897,170.777700,12,0.000,4,1.000,";
  EXPECT_EQ(Mix(), Header() + "1687,419928.000,203830.000," + fix + kThreeObservations +
                       "1687,419929.000,203831.000," + fix + kZeros +
                       "1687,419930.000,203832.000," + fix + kThreeObservations);
  // The intermediate files are gone.
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.log", "a_Mix.log", "a_Mix_BestRange.kml"}));
}

TEST_F(MixLogTest, RangeJoinEndsWithThePositionFile) {
  Log(BestPos("419928.000") + Range("419928.000") + Range("419929.000"));
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 0, 5, 2, 4, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header() +
                       "1687,419928.000,203829.000,32.595359126,-85.295677897,170.777700,12,0.000,"
                       "4,1.000," +
                       kThreeObservations);
}

TEST_F(MixLogTest, GgaJoinsByTimeOfDay) {
  // 01:45:00 is second 6300 of the day, as is 438300 of the week.
  const std::string gga =
      Nmea("GPGGA,014500.00,4404.1306024,N,12118.8446777,W,4,12,0.49,1129.913,M,-21.350,M,1,0000");
  const std::string joined =
      "0,6300.000,014442.000,44.068843373,-121.314077962,1108.563000,12,0.490,4,1.000," +
      std::string(kThreeObservations);
  // A sentence behind a port stamp is read; its checksum, counted from the
  // line's start, holds only when not tested.
  for (const auto& [stamp, nmeaCrc, rows] : std::vector<std::tuple<std::string, bool, std::string>>{
           {"", true, joined}, {"[COM1]", false, joined}, {"[COM1]", true, ""}}) {
    Log(stamp + gga + Range("438300.000"));
    EXPECT_EQ(BuildRangeMixLog(log_, "GGA", 0, 0, 2, 1, true, nmeaCrc, 0), 1);
    EXPECT_EQ(Mix(), Header() + rows) << stamp << nmeaCrc;
  }
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.log", "a_Mix.log", "a_Mix_GGARange.kml"}));
}

TEST_F(MixLogTest, JoinComparesWeeksFarApartWithoutOverflow) {
  const auto ofWeek = [](std::string line, const std::string& week) {
    return line.replace(line.find(",1687,"), 6, "," + week + ",");
  };
  // A position weeks behind every range is written alone; one ahead of every
  // range passes them all and the join ends.
  Log(ofWeek(BestPos("419928.000"), "-2147483648") + Range("419928.000"));
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 0, 5, 2, 1, false, true, 0), 1);
  EXPECT_EQ(Mix(), Header() +
                       "-2147483648,419928.000,203830.000,32.595359126,-85.295677897,170.777700,"
                       "12,0.000,4,1.000," +
                       kZeros);
  Log(ofWeek(BestPos("419928.000"), "2147483647") + ofWeek(Range("419928.000"), "-1"));
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 0, 5, 2, 1, false, true, 0), 1);
  EXPECT_EQ(Mix(), Header());
}

TEST_F(MixLogTest, SecondsOutOfRangeAreWrittenAsRead) {
  // Thinning at 1 Hz reads these as whole seconds.
  Log(BestPos("nan") + BestPos("inf") + BestPos("1e308"));
  EXPECT_EQ(BuildPositionMixLog(log_, "BESTPOS", 0, 8, 2, 1, false, true, 1), 1);
  const std::string mix = Mix();
  EXPECT_NE(mix.find("\r\n1687,nan,000000.000,"), std::string::npos) << mix;
  EXPECT_NE(mix.find("\r\n1687,inf,000000.000,"), std::string::npos) << mix;
  EXPECT_NE(mix.find("\r\n1687,100000000000000001097906362944045541740492309677311846336810"),
            std::string::npos)
      << mix;
}

TEST_F(MixLogTest, GgaRowsHaveWeekZeroAndTheirOwnTime) {
  std::string badSum = Nmea(
      "GNGGA,014501.00,4404.1306024,N,12118.8446777,W,5,12,0.49,1129.913,"
      "M,-21.350,M,,");
  badSum[badSum.size() - 3] = badSum[badSum.size() - 3] == '0' ? '1' : '0';
  const std::string stamped =
      "[COM1]" + Nmea(
                     "GNGGA,014502.00,3351.4193018,S,15112.7953162,E,4,08,1.10,20.500,M,22.000,"
                     "M,,");
  Log(Nmea("GNGGA,014500.20,3351.4193018,S,15112.7953162,E,1,08,1.10,20.500,M,22.000,M,,") +
      badSum + Nmea("GPGGA,,,,,,0,00,,,M,,M,,") + stamped);
  EXPECT_EQ(BuildPositionMixLog(log_, "GGA", 0, 1, 2, 1, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header() +
                       "0,0.000,014500.200,-33.856988363,151.213255270,42.500000,8,1.100,1,0.000," +
                       kZeros);
  // Without the checksum test the damaged float sentence and the one behind
  // the port stamp are read too.
  EXPECT_EQ(BuildPositionMixLog(log_, "GGA", 0, 1, 2, 1, true, false, 0), 1);
  EXPECT_NE(Mix().find("0,0.000,014501.000,"), std::string::npos);
  EXPECT_NE(Mix().find("\r\n0,0.000,014502.000,-33.856988363,151.213255270,42.500000,8,1.100,4,"),
            std::string::npos);
  // At 1 Hz the 0.2 s epoch goes.
  EXPECT_EQ(BuildPositionMixLog(log_, "GGA", 0, 1, 2, 1, true, false, 1), 1);
  EXPECT_EQ(Mix().find("014500.200"), std::string::npos);
}

TEST_F(MixLogTest, InsRowsCarryVelocityAndAttitude) {
  const std::string body =
      "INSPVAXA,COM1,0,73.5,FINESTEERING,1695,309428.000,00000040,4e77,43562;INS_SOLUTION_GOOD,"
      "INS_PSRSP,51.11637873403,-114.03825114994,1063.6093,-16.9000,-0.0001,-0.0015,0.0000,"
      "0.1420,0.2050,358.6830,0.9167,0.8753,2.0119,0.0004,0.0004,0.0010,0.0107,0.0101,0.0267,"
      "00000000,0";
  std::string aligning = body;
  aligning.replace(aligning.find("INS_SOLUTION_GOOD"), 17, "INS_ALIGNING");
  std::string unknown = body;
  unknown.replace(unknown.find("FINESTEERING"), 12, "UNKNOWN");
  std::string free = body;
  free.replace(free.find("INS_SOLUTION_GOOD"), 17, "INS_SOLUTION_FREE");
  free.replace(free.find("309428.000"), 10, "309428.500");
  Log(Ascii(body) + Ascii(aligning) + Ascii(unknown) + Ascii(free));
  EXPECT_EQ(BuildPositionMixLog(log_, "INSPVAX", 0, 13, 2, 1, true, true, 0), 1);
  const std::string row =
      ",000000.000,0.000000,0.000000,51.116378734,-114.038251150,1046.709300,0,0.000,";
  const std::string motion = ",0.000,-0.000100,-0.001500,0.000000,0.142000,0.205000,358.683000,";
  EXPECT_EQ(Mix(), Header() + "1695,309428.000" + row + "     3" + motion + kZeros +
                       "1695,309428.500" + row + "     6" + motion + kZeros);
  EXPECT_TRUE(testing::FileBytes(folder_ / "a_Mix_Inspvax.kml").find("Tag1") != std::string::npos);
}

TEST_F(MixLogTest, InspvasSecondsAreReadAsAFloat) {
  Log(Ascii('%',
            "INSPVASA,1264,144059.050;1264,144059.050000000,51.116680071,-114.037929194,"
            "1046.659,-0.001,0.000,0.000,2.230,-1.560,358.000,INS_SOLUTION_GOOD"));
  EXPECT_EQ(BuildPositionMixLog(log_, "INSPVAS", 0, 13, 2, 1, true, true, 0), 1);
  EXPECT_NE(Mix().find("\r\n1264,144059.047,000000.000,"), std::string::npos) << Mix();
  EXPECT_NE(FileBytes(folder_ / "a_Mix_Inspvas.kml"), "<missing>");
}

TEST_F(MixLogTest, TrajectoryRowsLoseTheirProjectName) {
  Log("Project: drive\r\n"
      "SeqNum        GPSTime      Northing       Easting        H-Ell        Latitude       "
      "Longitude   HzSpeed  Roll  Pitch  Heading  Project  Q\r\n"
      "(units)           (sec)           (m)           (m)          (m)           (deg)\r\n"
      "1 419928.00 3606720.1234 678901.2345 170.778 32.59535912622 -85.29567789741 0.0 0.1 0.2 "
      "358.5 drive 1\r\n"
      "2 419928.50 3606720.1234 678901.2345 170.778 32.59535912622 -85.29567789741 0.0 0.1 0.2 "
      "358.5 drive 2\r\n"
      // A project name of any length that fits the line.
      "3 419929.00 3606720.1234 678901.2345 170.778 32.59535912622 -85.29567789741 0.0 0.1 0.2 "
      "358.5 " +
      std::string(900, 'p') + " 4\r\n");
  EXPECT_EQ(BuildPositionMixLog(log_, "PosT", 0, 11, 2, 1, true, true, 1), 1);
  EXPECT_EQ(Mix(), Header() +
                       "1 419928.000 3606720.1234  678901.2345 170.778 32.59535912622 "
                       "-85.29567789741 0.0000 0.10000 0.20000 358.50000 1\r\n"
                       "3 419929.000 3606720.1234  678901.2345 170.778 32.59535912622 "
                       "-85.29567789741 0.0000 0.10000 0.20000 358.50000 4\r\n");
  EXPECT_NE(FileBytes(folder_ / "a_Mix_PosT.kml").find("green04.png"), std::string::npos);
}

TEST_F(MixLogTest, GarbageIsDroppedQuietly) {
  std::string garbage;
  for (int n = 0; n < 4096; ++n)
    garbage += static_cast<char>((n * 131 + 7) % 256);
  Log(garbage + "\r\n" + std::string(5000, '#') + "\r\n" +
      BestPos("419928.000", std::string(300, 'T')) +
      Ascii("RANGEA,COM1,0,69.5,FINESTEERING,1687,419928.000,00000000,5103,3153;2147483647,16,0,"
            "1.0,0.0,1.0,0.0,1.0,50.3,4835.392,18109c04,16,0") +
      Nmea("GPGGA,999999.99,99999999999999999999,N,,W,4,,,,M,,M,,") + "$GPGGA*\r\n#*\r\n");
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 0, 5, 2, 1, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header());
  EXPECT_EQ(BuildPositionMixLog(log_, "GGA", 0, 1, 2, 1, true, true, 0), 1);
  EXPECT_EQ(Mix(), Header());
}

TEST_F(MixLogTest, FailuresReturnZero) {
  EXPECT_EQ(BuildPositionMixLog(log_, "BESTPOS", 0, 8, 2, 1, true, true, 0), 0);
  EXPECT_EQ(BuildRangeMixLog(log_, "BESTPOS", 0, 5, 2, 1, true, true, 0), 0);
  Log(BestPos("419928.000"));
  EXPECT_EQ(BuildPositionMixLog(log_, "GSV", 0, 8, 2, 1, true, true, 0), 0);
  EXPECT_EQ(BuildRangeMixLog(log_, "INSPVA", 0, 5, 2, 1, true, true, 0), 0);
  EXPECT_EQ(BuildPositionMixLog(folder_ / "missing/a.log", "BESTPOS", 0, 8, 2, 1, true, true, 0),
            0);
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.log"}));
}

}  // namespace
}  // namespace tarnlog
