#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "chain_harness.h"
#include "extract/dispatch.h"
#include "extract/ins/imu_scale.h"
#include "extract/ins/ins_extractors.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

using ChainRun = testing::ChainHarness;

struct RowCase {
  const char* name;
  TableId table;
  std::string sentence;
  std::string row;  // "" for none
  int imuType = 0;
};

const std::string kInsPva =
    "#INSPVAA,COM1,0,31.0,FINESTEERING,2210,431250.000,02040000,5615,1541;2210,431250.002284950,"
    "31.241877339,121.485612472,12.345678,0.012345,-0.023456,0.003456,1.116219952,-3.476059035,7."
    "372686190,INS_SOLUTION_GOOD*af719fd9\r\n";
const std::string kInsPvax =
    "#INSPVAXA,COM1,0,73.5,FINESTEERING,2210,431250.000,00000040,4e77,43562;INS_SOLUTION_GOOD,INS_"
    "PSRSP,31.24187733925,121.48561247208,12.3456,8.9000,-0.0845,-0.0464,-0.0127,0.138,0.047,-1."
    "453,0.9243,0.9271,0.9275,0.3245,0.0275,0.0305,0.0102,0.0119,0.0251,00000020,5*b8bd2afd\r\n";
const std::string kRawImux =
    "#RAWIMUXA,COM1,0,81.5,FINESTEERING,2210,431250.000,024c0020,3fd1,43495;04,7,2210,431249.995,"
    "00170705,81920000,0,0,3276800,-65536,0*1a2b3c4d\r\n";
const std::string kRawImuxRow =
    "2210 431250.000 2210 431249.995 9.807 0.000 0.000 1.000000 -0.020000 0.000000 1509125 9.807 "
    "1.000\n";
const std::string kRawImu =
    "#RAWIMUA,COM1,0,81.5,FINESTEERING,2210,431250.000,024c0020,3fd1,43495;2210,431249.995,"
    "00000077,327680000,0,-327680000,4096000,0,0*1a2b3c4d\r\n";

std::string Replace(std::string s, const std::string& from, const std::string& to) {
  s.replace(s.find(from), from.size(), to);
  return s;
}

const std::vector<RowCase>& RowCases() {
  static const std::vector<RowCase> cases{
      {"InsPva", TableId::kInspva, kInsPva,
       "2210,431250.000,2210,431250.002,3,31.24187733900,121.48561247200,12.3457,0.0123,-0.0235,0."
       "0035,1.116220,-3.476059,7.372686\n"},
      {"InsPvaxAddsUndulation", TableId::kInspvax, kInsPvax,
       "2210,431250.000,3,53,31.24187733925,121.48561247208,21.2456,-0.0845,-0.0464,-0.0127,0."
       "138000,0.047000,-1.453000,5,0.9243,0.9271,0.9275\n"},
      {"DrPva", TableId::kDrpva,
       "#DRPVAA,COM1,0,70.0,FINESTEERING,2210,431250.000,02000000,1234,16809;SOL_COMPUTED,NARROW_"
       "INT,31.24187733925,121.48561247208,12.3456,0.123456,-0.654321,0.1,0.2,0.3,0.4,0.5,0.6,1.5,"
       "2.5,3.5,7,12.345,0.0000001,0.0000002,0.0000003*12345678\r\n",
       "2210,431250.000,50,31.24187733925,121.48561247208,12.3456,0.123456,-0.654321,0."
       "10000000000,0.20000000000,0.30000000000,0.40000000000,0.50000000000,0.60000000000,1.5000,"
       "2.5000,3.5000,7,12.35,0.0000001,0.0000002,0.0000003\n"},
      {"DrPvaNotComputedAddsHundred", TableId::kDrpva,
       "#DRPVAA,COM1,0,70.0,FINESTEERING,2210,1.000,0,1,1;INSUFFICIENT_OBS,NONE,1,2,3,4,5,6,7,8,9,"
       "10,11,12,13,14,15,16,17,18,19*12345678\r\n",
       "2210,1.000,100,1.00000000000,2.00000000000,3.0000,4.000000,5.000000,6.00000000000,7."
       "00000000000,8.00000000000,9.00000000000,10.00000000000,11.00000000000,12.0000,13.0000,14."
       "0000,15,16.00,17.0000000,18.0000000,19.0000000\n"},
      {"DrPvaTooFewFields", TableId::kDrpva,
       "#DRPVAA,COM1,0,70.0,FINESTEERING,2210,1.000,0,1,1;SOL_COMPUTED,SINGLE,1,2,3*12345678\r\n",
       ""},
      {"ImuAtt", TableId::kImuAtt,
       "#IMUATTA,85,GPS,FINE,2210,431250500,0,0,18,12;3,12*1a2b3c4d\r\n",
       "2210,431250.500,3,12 \n"},
      {"ImuAttKeepsTextBehindNumber", TableId::kImuAtt,
       "#IMUATTA,85,GPS,FINE,2210,431250500,0,0,18,12;3,12deg,9*1a2b3c4d\r\n",
       "2210,431250.500,3,12deg \n"},
      {"ImuAttNeedsFine", TableId::kImuAtt,
       "#IMUATTA,85,GPS,COARSE,2210,431250500,0,0,18,12;3,12*1a2b3c4d\r\n", ""},
      {"GyrAtts", TableId::kGyrAtts, "%GYRATTSA,2210,431250500;1,7*1a2b3c4d\r\n",
       "2210,431250.500,1,7 \n"},
      {"RawGyr2", TableId::kRawGyr2,
       "%RAWGYR2A,2210,431250500;2210,431250.500,-120,35,9999*1a2b3c4d\r\n",
       "2210,431250.500,-120,35,9999\r\n"},
      {"InsAttCovSbasOverThree", TableId::kInsAttCov,
       "%INSATTCOVSA,2210,431250500;SBAX,x,0.0001,0.0002,0.0003,0.0004,0.0005,0.0006,0.0007,0."
       "0008,0.0009*1a2b3c4d\r\n",
       "2210 431250.500 1 0.000100 0.000200 0.000300 0.000400 0.000500 0.000600 0.000700 0.000800 "
       "0.000900 \n"},
      {"InsAttCovOtherType", TableId::kInsAttCov,
       "%INSATTCOVSA,2210,431250500;SB,x,1,2,3,4,5,6,7,8,9*1a2b3c4d\r\n",
       "2210 431250.500 0 1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7.000000 8.000000 "
       "9.000000 \n"},
      {"RawMagx", TableId::kRawMagx,
       "#RAWMAGXA,COM1,0,80.0,FINESTEERING,2210,431250.000,02000000,1234,16809;1,x,100,-200,300*"
       "1a2b3c4d\r\n",
       "2210 431250.000  1 100 -200 300\n"},
      {"TimedWheelData", TableId::kTimedWheelData,
       "#TIMEDWHEELDATAA,COM1,0,70.0,FINESTEERING,2210,431250.000,02000000,1234,16809;58,0,0."
       "000000,0,12,-345*1a2b3c4d\r\n",
       "2210,431250.000,12,-345\n"},
      // ADIS16488 from the log's own type: 32-bit counts.
      {"RawImuxScalesByItsType", TableId::kRawImux, kRawImux, kRawImuxRow},
      {"RawImuxNeedsFine", TableId::kRawImux, Replace(kRawImux, "FINESTEERING", "COARSE"), ""},
      // EPSON354 from the page's selected row.
      {"RawImuScalesByPageType", TableId::kRawImu, kRawImu,
       "2210 431250.000 2210 431249.995 9.807 0.000 -9.807 1.000000 0.000000 0.000000 119 13.869 "
       "\n",
       9},
      {"RawImuUnscaledForReceiverTypes", TableId::kRawImu, kRawImu,
       "2210 431250.000 2210 431249.995 327680000.000 0.000 -327680000.000 4096000.000000 "
       "0.000000 0.000000 119 463409500.118 \n",
       1},
  };
  return cases;
}

class InsRowTest : public ::testing::TestWithParam<RowCase> {};

TEST_P(InsRowTest, WritesExactRow) {
  const RowCase& c = GetParam();
  ChainRun run;
  run.settings.imuType = c.imuType;
  run.Open(c.table);
  run.Feed(c.sentence);
  EXPECT_EQ(run.Bytes(c.table), c.row);
}

INSTANTIATE_TEST_SUITE_P(Logs, InsRowTest, ::testing::ValuesIn(RowCases()),
                         [](const auto& info) { return std::string(info.param.name); });

// INSPVAA compares the status words over shortened lengths, so that
// INS_SOLUTION_FREE reads as INS_SOLUTION_GOOD there; INSPVAXA compares the
// whole word.
TEST(InsStatusTest, CompareLengths) {
  struct Case {
    const char* word;
    int shortened;
    int full;
  };
  const Case cases[] = {
      {"INS_INACTIVE", 0, 0},
      {"INS_ALIGNING", 1, 1},
      {"INS_HIGH_VARIANCE", 2, 2},
      {"INS_HIGH_VARXXX", 2, -1},
      {"INS_SOLUTION_GOOD", 3, 3},
      {"INS_SOLUTION_FREE", 3, 4},
      {"INS_ALIGNMENT_COMPLETE", 5, 5},
      {"INS_ALX", 5, -1},
      {"DETERMINING_ORIENTATION", 6, 6},
      {"GSP_WAITING_INITIALPOS", 7, 7},
      {"GSP_", 7, -1},
      {"INS", -1, -1},
      {"", -1, -1},
  };
  for (const Case& c : cases) {
    const std::string word = c.word;
    EXPECT_EQ(InsStatusNumber(word.data(), word.size(), true), c.shortened) << c.word;
    EXPECT_EQ(InsStatusNumber(word.data(), word.size(), false), c.full) << c.word;
  }
  ChainRun run;
  run.Open(TableId::kInspva);
  run.Open(TableId::kInspvax);
  run.Feed(Replace(kInsPva, "INS_SOLUTION_GOOD", "INS_SOLUTION_FREE"));
  run.Feed(Replace(kInsPvax, "INS_SOLUTION_GOOD", "INS_SOLUTION_FREE"));
  EXPECT_EQ(run.Bytes(TableId::kInspva).substr(31, 3), ",3,");
  EXPECT_EQ(run.Bytes(TableId::kInspvax).substr(15, 3), ",4,");
}

TEST(ImuScaleTest, ModelsByBoardValue) {
  // One count of the 32-bit output of the ADIS16470 gyro, and a full g of
  // the BMI055's 12-bit accelerometer in its 2 g range.
  EXPECT_DOUBLE_EQ(ScaleOfImu(6).gyroDegreesPerSecond * 65536.0, 0.1);
  EXPECT_DOUBLE_EQ(ScaleOfImu(5).accelMetresPerSecond2 * 1024.0, 9.80665);
  for (int type : {-1, 0, 4, 11}) {
    EXPECT_EQ(ScaleOfImu(type).gyroDegreesPerSecond, 1.0) << type;
    EXPECT_EQ(ScaleOfImu(type).accelMetresPerSecond2, 1.0) << type;
  }
}

// The INS noise page writes RAWIMUXA rows without the chain.
TEST(RawImuxTest, WritesWithoutTheChain) {
  TempFolder folder;
  OutFile table;
  table.Open(folder / "raw.txt", FileMode::kBinary);
  ExtractRawImux(kRawImux.c_str(), kRawImux.size(), &table);
  ExtractRawImux(kRawImux.c_str(), kRawImux.size(), nullptr);
  ExtractRawImux(nullptr, 0, &table);
  table.Flush();
  EXPECT_EQ(FileBytes(folder / "raw.txt"), kRawImuxRow);
}

// Every prefix of every case: never more than one row, never a crash or a
// read past the end.
TEST(InsRowTest, CutSentencesGiveAtMostOneRow) {
  for (const RowCase& c : RowCases()) {
    const std::size_t star = c.sentence.find('*');
    ChainRun run;
    run.settings.imuType = c.imuType;
    run.Open(c.table);
    long rows = 0;
    for (std::size_t length = 0; length < star; ++length) {
      run.Feed(c.sentence.substr(0, length));
      const std::string bytes = run.Bytes(c.table);
      const long now = std::count(bytes.begin(), bytes.end(), '\n');
      EXPECT_LE(now - rows, 1) << c.name << " cut at " << length;
      rows = now;
    }
  }
}

}  // namespace
}  // namespace tarnlog
