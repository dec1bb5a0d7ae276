#include "pages/static/nmea_conversion.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace tarnlog {
namespace {

std::string Nmea(const std::string& body, bool damaged = false) {
  return testing::WithNmeaChecksum(body, "\r\n", !damaged);
}

std::string Gga(const char* head, const char* time, int quality) {
  return Nmea(std::string(head) + "," + time + ",3112.0000,N,12130.0000,W," +
              std::to_string(quality) + ",12,0.9,10.5,M,-5.25,M,1.0,0000");
}

class NmeaConversionTest : public ::testing::Test {
 protected:
  std::string Convert(const std::string& log, bool crc, int day = 3) {
    testing::WriteBytes(folder_ / "rover.log", log);
    ConvertGgaLog(folder_ / "rover.log", crc, day);
    return testing::FileBytes(folder_ / "rover.txt");
  }
  std::string ConvertZda(const std::string& log, bool crc) {
    testing::WriteBytes(folder_ / "rover.nmea", log);
    ConvertNmeaWithZdaLog(folder_ / "rover.nmea", crc);
    return testing::FileBytes(folder_ / "rover.txt");
  }
  testing::TempFolder folder_;
};

// Hemispheres are not read: the west longitude comes out positive.
constexpr char kRecordHead[] =
    "45319.000   31.200000000   121.500000000   5.250000    12   0.900\t";

TEST_F(NmeaConversionTest, GgaRecordsHoldTheQualityAndCloseWithTheDayOfWeek) {
  const std::string log = Gga("GPGGA", "123518.00", 0) +  // quality 0: nothing yet
                          Gga("GPGGA", "123519.00", 4) +  // written
                          Gga("GNGGA", "123519.00", 7) +  // 7 keeps the held 4
                          Gga("BDGGA", "123519.00", 5) +  // BDS talker accepted
                          Gga("GLGGA", "123519.00", 4) +  // other talkers are not
                          "$GPRMC,junk\r\n";
  const std::string head = kRecordHead;
  EXPECT_EQ(Convert(log, true), head + "  4\t  1    3     45319.0 \r\n" + head +
                                    "  4\t  1    3     45319.0 \r\n" + head +
                                    "  5\t  1    3     45319.0 \r\n");
}

TEST_F(NmeaConversionTest, GgaChecksumOnlyWithTheFlag) {
  const std::string log = Nmea(
      "GPGGA,123519.00,3112.0000,N,12130.0000,E,4,12,0.9,10.5,M,-5.25,M,"
      "1.0,0000",
      true);
  EXPECT_EQ(Convert(log, true), "");
  EXPECT_EQ(Convert(log, false, 6), std::string(kRecordHead) + "  4\t  1    6     45319.0 \r\n");
  // A star at the very start of the line or none at all: nothing.
  EXPECT_EQ(Convert("$GPGGA,123519.00,3112.0,N,12130.0,E,4,12,0.9,1,M,1,M,,\r\n", false), "");
}

TEST_F(NmeaConversionTest, ZdaRecordsWhenBothTimesAgreeToTheTenth) {
  const std::string log = Nmea("GPZDA,123518.00,23,11,2026,00,00") +  // no position held yet
                          Gga("GPGGA", "123519.00", 4) +  // the ZDA was ignored: no time
                          Nmea("GPZDA,123519.04,23,11,2026,00,00") +  // agrees: written
                          Gga("GPGGA", "123520.00", 4) +              // ZDA of the epoch before: no
                          Nmea("GNZDA,123520.00,23,11,2026,00,00") +  // written
                          Gga("GPGGA", "123520.00", 0);               // quality 0: no
  // Week 2446, Monday: one day plus the time of day plus the leap seconds.
  EXPECT_EQ(ConvertZda(log, true),
            std::string(kRecordHead) + "  4\t  1    2446    131737.0 \r\n" +
                "45320.000   31.200000000   121.500000000   5.250000    12   0.900\t  4\t  1    "
                "2446    131738.0 \r\n");
}

TEST_F(NmeaConversionTest, ZdaSecondsPastTheWeekAreTakenBack) {
  const std::string log = Gga("GPGGA", "235950.00", 2) + Nmea("GPZDA,235950.00,28,11,2026,00,00");
  EXPECT_EQ(ConvertZda(log, true),
            "86390.000   31.200000000   121.500000000   5.250000    12   0.900\t  2\t  1    "
            "2446         8.0 \r\n");
}

// Numbers out of int's range are held at its ends, and a date far outside
// the calendar still gives a week; nothing is undefined.
TEST_F(NmeaConversionTest, FieldsOutOfRangeAreHeldAtTheRangeEnds) {
  const std::string gga =
      Nmea("GPGGA,123519.00,3112.0000,N,12130.0000,E,4,99999999999,0.9,10.5,M,-5.25,M,-1e300,0000");
  EXPECT_EQ(Convert(gga, true), std::string("45319.000   31.200000000   121.500000000   5.250000   "
                                            "2147483647   0.900\t  4\t-2147483648    3     "
                                            "45319.0 \r\n"));
  // A ZDA date out of every range still gives a week, held at int's end.
  EXPECT_EQ(ConvertZda(Gga("GPGGA", "123519.00", 4) +
                           Nmea("GPZDA,123519.00,1,99999999999,99999999999,00,00"),
                       true),
            std::string(kRecordHead) + "  4\t  1    2147483647    477337.0 \r\n");
  // A time that is no number agrees with no other, midnight included.
  EXPECT_EQ(
      ConvertZda(Nmea("GPGGA,nan,3112.0,N,12130.0,E,4,12,0.9,1,M,1,M,,") +
                     Nmea("GPZDA,nan,23,11,2026,00,00") + Nmea("GPZDA,000000.00,23,11,2026,00,00"),
                 true),
      "");
}

// The rest of a line over the read limit goes with it: a sentence that
// would begin exactly at the limit is not taken as a line of its own.
TEST_F(NmeaConversionTest, RestOfALineOverTheReadLimitIsSkipped) {
  const std::string fix = Gga("GPGGA", "123519.00", 4);
  const std::string record = std::string(kRecordHead) + "  4\t  1    3     45319.0 \r\n";
  EXPECT_EQ(Convert(std::string(1023, 'x') + fix + fix, true), record);
  EXPECT_EQ(Convert(fix.substr(0, fix.size() - 2) + std::string(2000, ' ') + "\r\n" + fix, false),
            record + record);
}

}  // namespace
}  // namespace tarnlog
