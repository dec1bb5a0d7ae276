#include "pages/static/real_value_generation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/test_support.h"

namespace tarnlog {
namespace {

std::string Ascii(const std::string& body) {
  return testing::WithAsciiCrc(body);
}

std::string Position(const char* message, int seconds, const char* type, const char* lat,
                     const char* lon, const char* height) {
  return Ascii(std::string(message) + ",COM1,0,83.5,FINESTEERING,2163," + std::to_string(seconds) +
               ".000,02400000,b1f6,65535;SOL_COMPUTED," + type + "," + lat + "," + lon + "," +
               height +
               ",-5.0000,WGS84,0.0100,0.0100,0.0200,\"\",1.000,0.000,18,18,18,18,00,02,"
               "11,01");
}

// Two fixed BESTPOSA epochs around a known point, one single-point epoch
// that must not count, and PSRPOSA which counts every record.
std::string Capture() {
  return Position("BESTPOSA", 1, "NARROW_INT", "31.00000000000", "-121.10000000000", "10.0000") +
         Position("BESTPOSA", 2, "SINGLE", "35.00000000000", "-100.00000000000", "90.0000") +
         Position("BESTPOSA", 3, "NARROW_INT", "31.20000000000", "-121.30000000000", "12.0000") +
         Position("PSRPOSA", 1, "SINGLE", "30.00000000000", "120.00000000000", "1.0000") +
         Position("PSRPOSA", 2, "SINGLE", "30.50000000000", "120.50000000000", "2.0000");
}

TEST(GenerateTest, MeanValueFileInReportOrderAndTheLastSourceWins) {
  testing::TempFolder folder;
  testing::WriteBytes(folder / "rover.log", Capture());
  std::array<bool, kMeanSourceCount> flags{};
  flags[0] = true;  // PSRPOS
  flags[3] = true;  // BESTPOS
  flags[5] = true;  // GGA: no sentence, so not-a-number
  ExtractionState state;
  const MeanResult mean =
      GenerateMeanValues(folder.Path() + "/", folder / "rover.log", flags, {}, state);
  const std::string report = testing::FileBytes(folder / "MeanValue.txt");
  EXPECT_EQ(report.substr(0, report.find("ggapos")),
            "psrpos mean value\r\n30.25000000000 120.25000000000 -3.50000000000\r\n"
            "bestpos mean value\r\n31.10000000000 -121.20000000000 6.00000000000\r\n");
  EXPECT_NE(report.find("ggapos mean value\r\n"), std::string::npos);
  EXPECT_NE(report.find("nan"), std::string::npos);
  EXPECT_TRUE(std::isnan(mean.last.latitude));
  // Real-value mode: only the named tables, none of the default set.
  EXPECT_EQ(testing::FileBytes(folder / "bestnavpos.txt"), "<missing>");
  EXPECT_NE(testing::FileBytes(folder / "bestpos.txt"), "<missing>");

  DeleteMeanTables(folder.Path() + "/", flags);
  EXPECT_EQ(testing::FileBytes(folder / "bestpos.txt"), "<missing>");
  EXPECT_EQ(testing::FileBytes(folder / "psrpos.txt"), "<missing>");
}

TEST(GenerateTest, SumsAreZeroedBeforeEachSource) {
  testing::TempFolder folder;
  testing::WriteBytes(folder / "rover.log", Capture());
  std::array<bool, kMeanSourceCount> flags{};
  flags[3] = true;
  ExtractionState state;
  state.Sums(SumSource::kBestPos).Add(90, 90, 90);
  const MeanResult mean =
      GenerateMeanValues(folder.Path() + "/", folder / "rover.log", flags, {}, state);
  EXPECT_DOUBLE_EQ(mean.last.latitude, 31.1);
  EXPECT_DOUBLE_EQ(mean.last.height, 6.0);
}

TEST(TransferTest, BothWaysWithTheSignOnEveryNonZeroPart) {
  struct Case {
    double degrees;
    const char* marked;
    const char* back;
  };
  const Case cases[] = {
      {0.5, "0*30#0.000000&", "0.500000000"},
      {-31.5, "-31*-30#0.000000&", "-31.500000000"},
      {-0.5, "0*-30#0.000000&", "-0.500000000"},
      {31.20096, "31*12#3.456000&", "31.200960000"},
      {-121.25, "-121*-15#0.000000&", "-121.250000000"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DegreesToMarkedText(c.degrees), c.marked);
    EXPECT_EQ(MarkedTextToDegrees(c.marked), c.back);
  }
  // Out of int's range the parts are held at its ends.
  EXPECT_EQ(DegreesToMarkedText(1e308), "2147483647*2147483647#inf&");
  EXPECT_EQ(DegreesToMarkedText(-1e308), "-2147483648*-2147483648#-inf&");
  EXPECT_EQ(MarkedTextToDegrees("99999999999*0#0&"), "2147483647.000000000");
  EXPECT_EQ(MarkedTextToDegrees("-99999999999*0#0&"), "-2147483648.000000000");
  // The last marks count; a text without marks reads as degrees only.
  EXPECT_EQ(MarkedTextToDegrees("1*2*3#30&"), "1.058333333");
  EXPECT_EQ(MarkedTextToDegrees("45"), "45.000000000");
  EXPECT_TRUE(HoldsDegreeMarks("31*12"));
  EXPECT_FALSE(HoldsDegreeMarks("-31.5"));
}

}  // namespace
}  // namespace tarnlog
