#include "pages/nmea/get_data.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "support/test_support.h"

namespace tarnlog {
namespace {

std::string Nmea(const std::string& body) {
  return testing::WithNmeaChecksum(body, "");
}

std::string Gga(const char* talker, const char* time, int quality) {
  return Nmea(std::string(talker) + "GGA," + time + ",3130.1234,N,12115.5678,E," +
              std::to_string(quality) + ",12,0.8,12.3,M,8.1,M,1.0,0000");
}

std::string SpoilChecksum(std::string sentence) {
  sentence.back() = sentence.back() == '0' ? '1' : '0';
  return sentence;
}

std::string LowerChecksum(std::string sentence) {
  for (std::size_t n = sentence.size() - 2; n < sentence.size(); ++n)
    sentence[n] = static_cast<char>(std::tolower(static_cast<unsigned char>(sentence[n])));
  return sentence;
}

const std::string kBefore = Gga("GP", "095959.00", 4);  // just before the window
const std::string kFix4 = Gga("GN", "100000.00", 4);
const std::string kFix5 = Gga("GP", "100001.50", 5);
const std::string kBadSum = SpoilChecksum(Gga("GP", "100002.00", 4));
const std::string kStamped = Gga("GN", "100003.00", 5);  // behind a port stamp
const std::string kLowerSum = LowerChecksum(Gga("GP", "100004.00", 4));
const std::string kSingle = Gga("GP", "100004.00", 1);
const std::string kAfter = Gga("GP", "100005.00", 4);  // just after the window
const std::string kRmc = Nmea("GPRMC,100001.50,A,3130.1234,N,12115.5678,E,0.0,0.0,010124,,,A");
const std::string kGlonass = Gga("GL", "100001.00", 4);

// One log for the GGA kinds, with the window 100000 to 100004.
const std::string kGgaLog = kBefore + "\r\n" + kFix4 + "\r\n" + kFix5 + "\n" + kRmc + "\r\n" +
                            kBadSum + "\r\n" + "[COM1]" + kStamped + "\r\n" +
                            "#BESTPOSA,COM1*12345678\r\n" + kLowerSum + "\r\n" + kSingle + "\r\n" +
                            kGlonass + "\r\n" + kAfter + "\r\n" + "$GPGGA,100004.00,1*4\r\n";

TEST(GetDataTest, GgaKindsKeepTheWindowQualityAndChecksum) {
  ASSERT_NE(kLowerSum, Gga("GP", "100004.00", 4));
  struct Case {
    GetDataKind kind;
    bool crc;
    const char* file;
    std::string bytes;
  } cases[] = {
      {GetDataKind::kGga, true, "run_GGA.log",
       kFix4 + "\r\n" + kFix5 + "\r\n" + kStamped + "\r\n" + kLowerSum + "\r\n" + kSingle + "\r\n"},
      {GetDataKind::kGga, false, "run_GGA.log",
       kFix4 + "\r\n" + kFix5 + "\r\n" + kBadSum + "\r\n" + kStamped + "\r\n" + kLowerSum + "\r\n" +
           kSingle + "\r\n"},
      {GetDataKind::kGgaE4, true, "run_GGAE4.log", kFix4 + "\r\n" + kLowerSum + "\r\n"},
      {GetDataKind::kGgaE5, true, "run_GGAE5.log", kFix5 + "\r\n" + kStamped + "\r\n"},
      {GetDataKind::kGgaE45, true, "run_GGAE45.log",
       kFix4 + "\r\n" + kFix5 + "\r\n" + kStamped + "\r\n" + kLowerSum + "\r\n"},
  };
  for (const Case& c : cases) {
    testing::TempFolder folder;
    testing::WriteBytes(folder / "run.log", kGgaLog);
    EXPECT_EQ(GetData(c.kind, folder / "run.log", 100000, 100004, c.crc), kGetDataSucceeded)
        << c.file;
    EXPECT_EQ(testing::FileBytes(folder / c.file), c.bytes) << c.file << " crc " << c.crc;
  }
}

TEST(GetDataTest, TimeFieldsBeyondIntAreHeldAtItsEnds) {
  // The time is read as atoi reads it, but never wraps into the window.
  const std::string exponent = Gga("GP", "1e308", 4);  // reads as 1
  const std::string noNumber = Gga("GP", "nan", 4);    // reads as 0
  testing::TempFolder folder;
  testing::WriteBytes(folder / "run.log", Gga("GP", "99999999999", 4) + "\r\n" +
                                              Gga("GP", "4294967297", 4) + "\r\n" + exponent +
                                              "\r\n" + Gga("GN", "-4294967297", 4) + "\r\n" +
                                              noNumber + "\r\n");
  EXPECT_EQ(GetData(GetDataKind::kGgaE4, folder / "run.log", 0, 1000000, true), kGetDataSucceeded);
  EXPECT_EQ(testing::FileBytes(folder / "run_GGAE4.log"), exponent + "\r\n" + noNumber + "\r\n");
}

TEST(GetDataTest, TwoSentencesOnALineEndTheWorkWithSuccess) {
  testing::TempFolder folder;
  testing::WriteBytes(folder / "run.log",
                      kFix4 + "\r\n" + kFix5 + kStamped + "\r\n" + kFix4 + "\r\n");
  EXPECT_EQ(GetData(GetDataKind::kGga, folder / "run.log", 0, 1000000, true), kGetDataSucceeded);
  EXPECT_EQ(testing::FileBytes(folder / "run_GGA.log"), kFix4 + "\r\n");
}

TEST(GetDataTest, StartAfterEndGivesEmptyFilesAndAMissingLogFails) {
  testing::TempFolder folder;
  testing::WriteBytes(folder / "run.log", kGgaLog);
  for (GetDataKind kind : kGetDataKinds) {
    if (kind == GetDataKind::kNema) continue;
    EXPECT_EQ(GetData(kind, folder / "run.log", 100004, 100000, true), kGetDataSucceeded);
    EXPECT_EQ(testing::FileBytes(GetDataOutputPath(kind, folder / "run.log")), "");
  }
  for (GetDataKind kind : kGetDataKinds)
    EXPECT_EQ(GetData(kind, folder / "none.log", 0, 1000000, true), kGetDataFailed);
}

TEST(GetDataTest, NemaScanFindsSentencesAmongBinaryBytes) {
  const std::string binary("\xAA\x44\x12\x1C\x00\x01$\x00\xFF$$GA\x00", 14);
  const std::string noStar = "$GL" + std::string(100, 'k');
  const std::string gsa = Nmea("GNGSA,A,3,01,02,03,,,,,,,,,,1.5,0.9,1.2,1");
  const std::string at90 = "$GPTXT," + std::string(84, 'a') + "*11";  // star is byte 91
  const std::string at91 = "$GNTXT," + std::string(85, 'b') + "*22";  // star is byte 92
  const std::string cut = "$GPGSV,1,1\r\n";                           // runs into the next
  const std::string head =
      binary + kFix4 + "\r\n" + noStar + gsa + binary + at90 + at91 + cut + kFix5;
  // The RMC sentence starts 10 bytes before the end of the first 64 KiB read.
  const std::string padding(64 * 1024 - 10 - head.size(), '\x01');
  const std::string log = head + padding + kRmc + "\r\n" + "$BDGSV,1*4";
  testing::TempFolder folder;
  testing::WriteBytes(folder / "run.log", log);
  EXPECT_EQ(GetData(GetDataKind::kNema, folder / "run.log", 100004, 100000, true),
            kGetDataSucceeded);
  EXPECT_EQ(testing::FileBytes(folder / "run_NEMA.log"),
            kFix4 + "\r\n" + gsa + "\r\n" + at90 + "\r\n" + "$GPGSV,1,1\r\r\n" + kFix5 + "\r\n" +
                kRmc + "\r\n" + "$BDGSV,1*4\r\n");
}

}  // namespace
}  // namespace tarnlog
