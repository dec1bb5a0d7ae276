#include "extract/undispatched/undispatched_formats.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "extract/undispatched/range_smoothing.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

using RowWriter = bool (*)(const char*, OutFile&);

// What one writer leaves in a fresh table for one sentence.
std::string RowOf(RowWriter write, const std::string& sentence, bool* wrote = nullptr) {
  TempFolder folder;
  OutFile out;
  out.Open(folder / "t.txt", FileMode::kBinary);
  const bool result = write(sentence.c_str(), out);
  if (wrote != nullptr) *wrote = result;
  out.Flush();
  return FileBytes(folder / "t.txt");
}

std::string FirstLineOf(const std::string& file, const std::string& prefix) {
  const std::string bytes = FileBytes(testing::SourceDir() + "/tests/data/" + file);
  const std::size_t start = bytes.find(prefix);
  return bytes.substr(start, bytes.find('\n', start) + 1 - start);
}

std::string Long(const std::string& name, const std::string& body,
                 const std::string& seconds = "431250.100") {
  return "#" + name + ",COM1,0,80.0,FINESTEERING,2210," + seconds + ",02000020,0000,16809;" + body +
         "*1a2b3c4d\r\n";
}

const std::string kGpsEphemerisRow =
    "1687,410400.000,1,410400.000,417600.000,  0, -7200.000,62, 62,1687,1687,   2.656005046e+07,  "
    " 4.701624413e-09,  -2.591122451e+00,  6.6842383239e-04,  3.3505171223e-01,   "
    "1.063570380e-06,   6.912276149e-06,    2.47468750e+02,    1.93750000e+01,   "
    "2.235174179e-08,   1.043081284e-07,  9.5991331983e-01,   2.739399821e-10,  "
    "-8.595498118e-01,   -8.07105048e-09, 62,  417600.0,   8.381903172e-09,  2.55728e-04,  "
    "2.38742e-12,      0.00000,1,   1.458611304e-04,   4.000000000e+00\n";

const std::string kGloBody =
    "45,8,1,0,2210,431262000,10782,573,0,0,95,0,-2.3171955566406250e+07,4.4630751953125000e+06,-"
    "1.9006484375000000e+06,-5.7813663482666016e+02,1.1079101562500000e+03,3."
    "5460853576660156e+03,3.7252902984619141e-06,-9.3132257461547852e-07,-1.8626451492309570e-06,"
    "-4.0587596595287323e-05,-5.5879354476928711e-09,0.0000000000000000e+00,82800,3,2,0,13";
const std::string kGloRow =
    "2210,431250.000,45,431262.000, 10782.000,  8, 1,0,2210,573,95,0,  -2.3171955566406250e+07,   "
    "4.4630751953125000e+06,  -1.9006484375000000e+06,  -5.7813663482666016e+02,   "
    "1.1079101562500000e+03,   3.5460853576660156e+03,      0.00000372529029846, "
    "-9.31322574615478516e-07, -1.86264514923095703e-06, -4.05875965952873216e-05,  "
    "-5.587935448e-09,  0.00000000000000000e+00,82800,3,2,0,13\n";

const std::string kPositionBody =
    "31.24187733925,121.48561247208,12.3456,8.9000,WGS84,1.2345,1.0123,2.3456,\"0\",0.000,0.000,"
    "24,22,0,0,0,06,00,33";
const std::string kPositionRow =
    "31.24187733925,121.48561247208,21.2456,1.2345,1.0123,2.3456,24,22,0,0,0.0000,0.0000,6,51\n";

const std::string kKsxtRow =
    "8130.500,39.98431234000,116.30571234000,52.3456,123.45,-1.23,45.678,12.345,0.12,3,3,12,15,1."
    "2345,-2.3456,0.1234,0.12,-0.34,0.01\n";

TEST(UndispatchedFormatsTest, ExactRows) {
  const std::string gpsEphemeris = FirstLineOf("OnceEachAgain.ASC", "#GPSEPHEMA");
  std::string bd2Ephemeris = gpsEphemeris;
  bd2Ephemeris.replace(1, 9, "BD2EPHEMA");
  struct Case {
    RowWriter write;
    std::string sentence, row;
  };
  const std::vector<Case> cases = {
      {WriteGpsEphemerisRow, gpsEphemeris, kGpsEphemerisRow},
      {WriteBd2EphemerisRow, bd2Ephemeris, kGpsEphemerisRow},
      {WriteGloEphemerisRow, Long("GLOEPHEMERISA", kGloBody, "431250.000"), kGloRow},
      {WriteCanAngleRow, Long("CANANGLEA", "-12.345"), "2210,431250.100,-12.345\n"},
      {WriteCanGearRow, Long("CANGEARA", "3"), "2210,431250.100,3\n"},
      {WriteCanSpeedRow, Long("CANSPEEDA", "1,12.5"), "2210,431250.100,1,12.500\n"},
      {WriteCanSpeedRow, Long("CANSPEEDA", "1,12.5,1,12.625,0,0,1,12.4"),
       "2210,431250.100,1,12.500,1,12.625,0,0.000,1,12.400\n"},
      {WriteCorrImuDataRow,
       Long("CORRIMUDATAA", "2210,431250.005,0.00012345678901,-0.0000123,0.001,0.01,-0.02,9.80665"),
       "2210,431250.005,0.00012345679,-0.00001230000,0.00100000000,0.01000000000,-0.02000000000,9."
       "80665000000\n"},
      {WriteImu2VelAttBiasRow,
       Long("IMU2VELATTBIASA", "0.123456,-1.5,0.01,1.2345,-0.5,271.25,0.125"),
       "2210,431250.100,0.123456,-1.500000,0.010000,1.2345,-0.5000,271.2500,0.125\n"},
      {WriteRtkVelDRow,
       Long("RTKVELDA", "SOL_COMPUTED,NARROW_INT,0.250,1.000,0.0123,45.6789,0.0012,0"),
       "2210,431250.100,50,0.250000,1.000000,0.012300,45.6789\n"},
      {WriteTdifVelRow,
       Long("TDIFVELA", "INSUFFICIENT_OBS,DOPPLER_VELOCITY,0.250,1.000,0.0123,45.6789,0.0012,0"),
       "2210,431250.100,117,0.250000,1.000000,0.012300,45.6789\n"},
      {WriteTdifPosRow, Long("TDIFPOSA", "SOL_COMPUTED,SINGLE," + kPositionBody),
       "2210,431250.100,22," + kPositionRow},
      {WriteTdifPosRow, Long("PDPPOSA", "SOL_COMPUTED,PSRDIFF," + kPositionBody),
       "2210,431250.100,11," + kPositionRow},
      {WriteKsxtRow,
       "$KSXT,20230815021530.50,116.30571234,39.98431234,52.3456,123.45,-1.23,45.678,12.345,0.12,"
       "3,3,12,15,1.2345,-2.3456,0.1234,0.12,-0.34,0.01,*5A\r\n",
       kKsxtRow},
      // Empty fields read as 0.
      {WriteKsxtRow, "$KSXT,20230815021530.50,,,,,,,,,,,,,,,,,,*5A\r\n",
       "8130.500,0.00000000000,0.00000000000,0.0000,0.00,0.00,0.000,0.000,0.00,0,0,0,0,0.0000,0."
       "0000,0.0000,0.00,0.00,0.00\n"},
  };
  for (const Case& c : cases) {
    bool wrote = false;
    EXPECT_EQ(RowOf(c.write, c.sentence, &wrote), c.row) << c.sentence;
    EXPECT_TRUE(wrote) << c.sentence;
  }
}

// Another log, a body cut short, or a field that isn't a number: no row.
TEST(UndispatchedFormatsTest, UnreadableSentencesLeaveNoRow) {
  const std::string gpsEphemeris = FirstLineOf("OnceEachAgain.ASC", "#GPSEPHEMA");
  struct Case {
    RowWriter write;
    std::string sentence;
  };
  const std::vector<Case> cases = {
      {WriteBd2EphemerisRow, gpsEphemeris},
      {WriteGpsEphemerisRow, gpsEphemeris.substr(0, gpsEphemeris.find(",TRUE,"))},
      {WriteGloEphemerisRow, Long("GLOEPHEMERISA", kGloBody.substr(0, kGloBody.size() - 3))},
      {WriteCanAngleRow, Long("CANANGLEAX", "1.0")},
      {WriteCanSpeedRow, Long("CANSPEEDA", "1")},
      {WriteCorrImuDataRow, Long("CORRIMUDATAA", "2210,1.0,1,2,3,4,5")},
      {WriteRtkVelDRow, Long("RTKVELDA", "SOL_COMPUTED")},
      {WriteTdifVelRow, Long("RTKVELDA", "SOL_COMPUTED,NARROW_INT,0,0,0,0")},
      {WriteTdifPosRow, Long("TDIFPOSA", "SOL_COMPUTED,NONE," + kPositionBody)},
      {WriteTdifPosRow, Long("PSRPOSA", "SOL_COMPUTED,SINGLE," + kPositionBody)},
      {WriteKsxtRow, "$KSXT,20230815021530.50,116.3,39.9*5A\r\n"},
      {WriteKsxtRow, "$KSXT,20230815021530.50,abc,,,,,,,,,,,,,,,,,*5A\r\n"},
      {WriteKsxtRow, "$KSXT,20230815021530.50,1" + std::string(40, '0') + ",,,,,,,,,,,,,,,,,*5A"},
  };
  for (const Case& c : cases) {
    bool wrote = true;
    EXPECT_EQ(RowOf(c.write, c.sentence, &wrote), "") << c.sentence;
    EXPECT_FALSE(wrote) << c.sentence;
  }
}

std::string RangeEpoch(const std::string& seconds, const std::string& body) {
  return "#RANGEA,COM1,0,69.5,FINESTEERING,2210," + seconds + ",00000000,5103,3153;" + body +
         "*ef968926\r\n";
}

// GPS 16 over three epochs (the third after the lock time fell), GLONASS
// 40 and BeiDou 7 once, an L2 channel that isn't smoothed, and one channel
// out of range for each system.
TEST(RangeSmoothingTest, FilesPerSatelliteAndMessages) {
  TempFolder folder;
  RangeSmoothing smoothing;
  smoothing.folder = folder.Path();
  OutFile messages;
  messages.Open(folder / "messages.txt", FileMode::kBinary);
  const std::vector<std::string> epochs = {
      RangeEpoch("431250.000",
                 "7,16,0,20612359.352,0.035,-103626277.506003,0.006,-1595.594,50.3,4835.392,"
                 "18109c04,16,0,20612359.863,0.068,-80734665.612673,0.006,-1243.324,44.5,4806.920,"
                 "11309c0b,40,8,21000000.5,0.1,-110000000.25,0.01,100.5,45.0,100.0,08119c04,"
                 "7,0,38000000.125,0.1,-198000000.5,0.01,-50.25,40.0,200.0,00841c04,"
                 "40,0,1,1,1,1,1,1,1,08109c04,70,0,1,1,1,1,1,1,1,08119c04,64,0,1,1,1,1,1,1,1,"
                 "00841c04"),
      RangeEpoch("431251.000",
                 "1,16,0,20612057.789,0.035,-103624692.123456,0.006,-1595.601,50.1,4836.392,"
                 "18109c04"),
      RangeEpoch("431252.000",
                 "1,16,0,20611756.200,0.035,-103623106.7,0.006,-1595.610,49.8,2.000,18109c04"),
  };
  for (const std::string& epoch : epochs)
    EXPECT_TRUE(SmoothRanges(epoch.c_str(), smoothing, messages));
  EXPECT_FALSE(
      SmoothRanges("#RANGEHA,COM1,0,69.5,FINESTEERING,2210,1.0,0,0,0;0*0", smoothing, messages));
  for (OutFile& file : smoothing.files)
    file.Flush();
  messages.Flush();

  EXPECT_EQ(FileBytes(folder / "/G16.rg"),
            "2210,431250.000,0.000,16,20612359.3520,19719424.9450,303.6314,0.0000,0.0000,0.0000,"
            "20612359.3520, 50.300000, 4835.392000, 18109C04\n"
            "2210,431251.000,1.000,16,20612057.7890,19719123.2568,303.6328,-301.5630,-301.6883,0."
            "1253,20612057.7264, 50.100000, 4836.392000, 18109C04\n"
            "2210,431252.000,0.000,16,20611756.2000,19718821.5607,303.6345,0.0000,0.0000,0.0000,"
            "20611756.2000, 49.800000, 2.000000, 18109C04\n");
  EXPECT_EQ(FileBytes(folder / "/G40.rg"),
            "2210,431250.000,0.000,40,21000000.5000,20577774.9417,-18.8006,0.0000,0.0000,0.0000,"
            "21000000.5000, 45.000000, 100.000000, 8119C04\n");
  EXPECT_EQ(FileBytes(folder / "/G167.rg"),
            "2210,431250.000,0.000,7,38000000.1250,38023818.3855,9.6500,0.0000,0.0000,0.0000,"
            "38000000.1250, 40.000000, 200.000000, 841C04\n");
  EXPECT_EQ(FileBytes(folder / "messages.txt"),
            "error gps rangsmooth\nerror glonass rang\nerror BD rang\n");
}

}  // namespace
}  // namespace tarnlog
