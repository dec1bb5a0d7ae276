#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "chain_harness.h"
#include "extract/dispatch.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using ChainRun = testing::ChainHarness;

struct RowCase {
  const char* name;
  TableId table;
  std::string sentence;
  std::string row;  // "" for none
};

// Compact and long headers as the receiver sends them.
std::string Compact(const std::string& name, const std::string& time, const std::string& body) {
  return "#" + name + ",92,GPS,FINE,2210," + time + ",0,0,18,12;" + body + "*1a2b3c4d\r\n";
}
std::string Long(const std::string& name, const std::string& body,
                 const std::string& seconds = "431250.000") {
  return "#" + name + ",COM1,0,72.5,FINESTEERING,2210," + seconds + ",02000000,1234,16809;" + body +
         "*1a2b3c4d\r\n";
}

std::string Ints(int from, int to) {
  std::string text;
  for (int n = from; n <= to; ++n)
    text += std::to_string(n) + ",";
  return text;
}

std::string Replace(std::string s, const std::string& from, const std::string& to) {
  s.replace(s.find(from), from.size(), to);
  return s;
}

const std::vector<RowCase>& RowCases() {
  static const std::vector<RowCase> cases{
      {"HwStatus", TableId::kHwStatus,
       Compact("HWSTATUSA", "431250000", "5,3.300,1.800,1.200,x,5.000,a,b,c,1f"),
       "2210,431250.000000,3.300000,1.800000,1.200000,5.000000,31,5.000000\r\n"},
      {"EnvInfo", TableId::kEnvInfo, Compact("ENVINFOA", "431250000", "1,45.25,3,4,"),
       "2210,431250.000000,1,45.25,3,4\r\n"},
      {"RxStatus", TableId::kRxStatus, Long("RXSTATUSA", "0,1,2,3,4,5,6,7,8,0000ffff,0"),
       "2210 431250.000 65535\n"},
      {"SlantAp", TableId::kSlantAp,
       Compact("SLANTAPA", "431250.5", "3,a,b,c,1.5,2.5,3.5,d,e,f,4.25,5.125"),
       "2210 431250.500000 3 1.50000000000 2.50000000000 3.50000000000 4.250000 5.12500000000\n"},
      {"FreqJamStatus", TableId::kFreqJamStatus,
       Compact("FREQJAMSTATUSA", "431250000", "L1,1,L2,0,L5,2,"), "2210 431250.00 1 0 2\r\n"},
      {"MowStatus", TableId::kMowStatus, Compact("MOWSTATUSA", "431250.5", Ints(1, 19) + "77,12"),
       "2210 431250.500000 77 \n"},
      {"TropInfo", TableId::kTropInfo,
       Compact("TROPINFOA", "431250000", "G,2.301234,0.101234,2.402468,0.500001,"),
       "2210 431250.00 2.301234 0.101234 2.402468 0.500001\r\n"},
      {"Base2Bias", TableId::kMatchBias,
       Long("BASE2BIASA", "0,SOL_COMPUTED,NARROW_INT,b,c,d,0.12345,-0.23456,0.34567"),
       "2210 431250.000 0.1235 -0.2346 0.3457\n"},
      {"Base2BiasNeedsCommaSolComputed", TableId::kMatchBias,
       Long("BASE2BIASA", "SOL_COMPUTED,NARROW_INT,b,c,d,e,0.12345,-0.23456,0.34567"), ""},
      {"Odometer", TableId::kOdometer, Long("ODOMETERA", "1,2,123456,4"),
       "2210,431250.000,1,2,123456,4\n"},
      {"VelData", TableId::kVelData, Long("VELDATAA", "1,2,3,4,5,0.1,0.2,0.3,9.9,0.4,0.5,0.6,9.9"),
       "2210,431250.000,4,5,0.100000,0.200000,0.300000,0.400000,0.500000,0.600000\n"},
      {"SppNavEnu", TableId::kSppNavEnu,
       Compact("SPPNAVENUA", "431250000",
               "SOL_COMPUTED,SINGLE,1.23456,2.34567,3.45678,0.1,0.2,0.3"),
       "2210,431250.000,1.2346,2.3457,3.4568,0.1000,0.2000,0.3000\n"},
      {"BslnEnuHd2", TableId::kAlignBslnEnu,
       Long("BSLNENUHD2A",
            "SOL_COMPUTED,NARROW_INT,1.23456,-2.34567,0.34567,0.01,0.02,0.03,\"0092\",\"0001\",18,"
            "16,0,0"),
       "2210,431250.000,1.2346,-2.3457,0.3457,1,18,16,2 \r\n"},
      {"BslnXyz", TableId::kBslnXyz,
       Long("BSLNXYZA",
            "SOL_COMPUTED,NARROW_INT,0.1234,-1.2345,2.3456,0.01,0.02,0.03,\"0001\",12,10,0"),
       "2210,431250.000,0.1234,-1.2345,2.3456,1,12,10,1\n"},
      {"BslnXyzHd2", TableId::kBslnXyz,
       Long("BSLNXYZHD2A", "SOL_COMPUTED,NARROW_INT,1,2,3,0.01,0.02,0.03,\"7\",12,10,0"),
       "2210,431250.000,1.0000,2.0000,3.0000,7,12,10,2\n"},
      {"ClockDataOneBlock", TableId::kClkDt,
       Compact("CLKDTA", "431250000", Ints(1, 17) + "0.123,4.567,-8.901"),
       "2210,431250.000," + Ints(1, 17) + "0.123,4.567,-8.901 \r\n"},
      {"ClockDataTwoBlocks", TableId::kClkDt,
       Compact("CLKDTA", "431250000", Ints(1, 17) + "0.1,0.2,0.3," + Ints(21, 37) + "1.0005,2,3"),
       "2210,431250.000," + Ints(1, 17) + "0.100,0.200,0.300," + Ints(21, 37) +
           "1.000,2.000,3.000 \r\n"},
      {"ClockDataLongFormNotDispatched", TableId::kClkDt,
       Long("CLKDTA", Ints(1, 17) + "0.123,4.567,-8.901"), ""},
      {"Agric", TableId::kAgric,
       Compact("AGRICA", "431250000",
               "GNSS,236,22,5,17,23,47,12,4,4,12,10,9,1.1,2.2,3.3,0.1,0.2,0.3,123.456,1.5,-0.5,0."
               "01,0.1,0.2,0.3,0.01,0.02,0.03,31.24187733925,121.48561247208,12.3456,1,2,3"),
       "2210,431250.000,4,31.24187733925,121.48561247208,12.3456,123.46\n"},
      {"BaseInfoStaysEmpty", TableId::kBaseInfo, Compact("BASEINFOA", "431250000", "1,2,3"), ""},
      {"CarAngle", TableId::kCangle, "%CANGLEA,2210,431250500;3412,ff00,0100,0080*1a2b3c4d\r\n",
       "2210,431250.500,4660,255,1,32768\r\n"},
      {"FilteredAngle", TableId::kFangle, "%FANGLEA,2210,1000;0x00,-1-1,0A0b,FF7f*1a2b3c4d\r\n",
       "2210,1.000,0,-1,2826,32767\r\n"},
      {"CarAngleDecimalNotRead", TableId::kCangle,
       "%CANGLEA,2210,431250500;1.234567,2.345678,3.456789*1a2b3c4d\r\n", ""},
  };
  return cases;
}

class StatusRowTest : public ::testing::TestWithParam<RowCase> {};

TEST_P(StatusRowTest, WritesExactRow) {
  const RowCase& c = GetParam();
  ChainRun run;
  run.Open(c.table);
  run.Feed(c.sentence);
  EXPECT_EQ(run.Bytes(c.table), c.row);
}

INSTANTIATE_TEST_SUITE_P(Logs, StatusRowTest, ::testing::ValuesIn(RowCases()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(StatusRowTest, CutSentencesGiveAtMostOneRow) {
  for (const RowCase& c : RowCases()) {
    const std::size_t star = c.sentence.find('*');
    ChainRun run;
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

// Only %ANGVELA's stream is flushed row by row.
TEST(AngleTest, AngularRateFlushesItsStream) {
  ChainRun run;
  run.Open(TableId::kAngVel);
  run.Open(TableId::kCangle);
  run.Feed("%ANGVELA,2210,431250500;0100,0200,0300,0400*1a2b3c4d\r\n");
  run.Feed("%CANGLEA,2210,431250500;0100,0200,0300,0400*1a2b3c4d\r\n");
  EXPECT_EQ(run.Unflushed(TableId::kAngVel), "2210,431250.500,1,2,3,4\r\n");
  EXPECT_EQ(run.Unflushed(TableId::kCangle), "");
}

std::string Perfstat(const std::string& body) {
  return Compact("PERFSTATA", "431250000", body);
}
const std::string kPerfstat =
    Perfstat("\"GSPMain\",120,12.5,\"IDLE\",3000,80.25,\"GspNVM\",7,0.5,NVMLOOPCOUNT:42");
const std::string kNameBlock =
    "GSPMain\r\nIDLE\r\nSerialPort0_IO\r\nSerialPort1_IO\r\nSerialPort2_IO\r\nTmr "
    "Svc\r\nStartGsp\r\n"
    "GSPBBPackage\r\ncommist1\r\nSerialPort1_Msg\r\nSerialPort2_Msg\r\nGSPBBMessage\r\n"
    "GspMatchedRTKDe\r\ncommist2\r\nGspEventDev\r\nSerialPort0_Msg\r\nGspNVM\r\nGspRTCMDecoder\r\n";

// The task names go out once per run; the driver raises the flag again at
// the end of each run.
TEST(PerfstatTest, NameBlockOncePerRun) {
  bool pending = true;
  std::string rows;
  const std::string epoch =
      "2210 431250.000 120 12.500 42 \r\n2210 431250.000 3000 80.250 42 \r\n2210 431250.000 7 "
      "0.500 42 \r\n";
  for (int runs = 0; runs < 2; ++runs) {
    ChainRun run;
    run.settings.perfstatHeaderPending = &pending;
    run.Open(TableId::kPerfstat);
    run.Open(TableId::kPerfstatName);
    run.Feed(kPerfstat);
    EXPECT_FALSE(pending);
    EXPECT_EQ(run.Unflushed(TableId::kPerfstatName), kNameBlock);
    run.Feed(kPerfstat);
    EXPECT_EQ(run.Bytes(TableId::kPerfstatName), kNameBlock);
    EXPECT_EQ(run.Bytes(TableId::kPerfstat), epoch + epoch);
    pending = true;  // as ExtractMain leaves it
  }
}

TEST(PerfstatTest, NeedsFineAndReadsNamesOverFixedLength) {
  bool pending = false;
  ChainRun run;
  run.settings.perfstatHeaderPending = &pending;
  run.Open(TableId::kPerfstat);
  run.Feed(Replace(kPerfstat, ",FINE,", ",FINESTEERING,"));
  run.Feed(Replace(kPerfstat, ",FINE,", ",COARSE,"));
  // Names match over the fixed name's length; a task the list lacks is left
  // out; no NVM count reads as 0.
  run.Feed(Perfstat("[Tmr Svc],1,2.0,\"GSPMainX\",3,4.0,\"Other\",5,6.0"));
  EXPECT_EQ(run.Bytes(TableId::kPerfstat),
            "2210 431250.000 3 4.000 0 \r\n2210 431250.000 1 2.000 0 \r\n");
}

std::string Pps(int state, const std::string& milliseconds) {
  return Compact("PPSSTATUSA", milliseconds, std::to_string(state) + ",x,1,");
}

TEST(PpsStatusTest, TimeToFirstPps) {
  ChainRun run;
  run.Open(TableId::kPpsStatus);
  run.Feed(Pps(3, "431200000"));  // no fix yet
  run.state.firstFixWeek = 2210;
  run.state.firstFixSeconds = 431199.5;
  run.Feed(Pps(2, "431200500"));
  run.Feed(Pps(3, "431250000"));  // the first PPS after the fix
  EXPECT_TRUE(run.state.firstFixLatched);
  run.Feed(Pps(3, "431251000"));  // latched: once only
  run.Feed(Pps(1, "431252000"));  // lost: the latch and the week go
  EXPECT_FALSE(run.state.firstFixLatched);
  EXPECT_EQ(run.state.firstFixWeek, 0);
  EXPECT_EQ(run.Bytes(TableId::kPpsStatus),
            "2210 431200.000 3 1  0.00\r\n2210 431200.500 2 1  0.00\r\n2210 431250.000 3 1  "
            "50.50\r\n2210 431251.000 3 1  0.00\r\n2210 431252.000 1 1  0.00\r\n");
}

std::string Slant(const std::string& milliseconds, const std::string& body) {
  return "#SLANTSTATUSA,92,GPS,FINE,2210," + milliseconds + ",0,0,18,12;" + body + "*1a2b3c4d\r\n";
}

TEST(SlantStatusTest, StatesAndConvergence) {
  ChainRun run;
  run.Open(TableId::kSlantStatus);
  run.Feed(Slant("431240000", "WAITING,1,2,x,3"));
  run.Feed(Slant("431241000", "STATIC,1,2,x,3"));
  run.Feed(Slant("431250000", "CONVERGENCE,4,5,STATIC,6"));
  run.Feed(Slant("431260500", "INSBIGERR,7,8,STATIC CONVERGENCE,9"));
  run.Feed(Slant("431261000", "RTKNOFIX,1,1,x,1"));
  run.Feed(Slant("431262000", "MOVING,1,1,x,1"));
  run.Feed(Slant("431263000", "MOVINGX,1,1,x,1"));  // not a state
  run.Feed(Replace(Slant("431264000", "MOVING,1,1,x,1"), "FINE", "COARSE"));
  EXPECT_EQ(run.Bytes(TableId::kSlantStatus),
            "2210 431240.000  0 1 2 3  1\n"
            "2210 431241.000  1 1 2 3  1\n"
            "2210 431250.000 0.000 0 0 0 0 \n"
            "2210 431250.000  5 4 5 6  1\n"
            "2210 431260.500 10.500 0 0 0 0 \n"
            "2210 431260.500  4 7 8 9  1\n"
            "2210 431261.000  2 1 1 1  1\n"
            "2210 431262.000  3 1 1 1  1\n");
}

const std::string kBestPos =
    "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,0."
    "000,18,18,18,0,00,02,11,01*c3194e35\r\n";

std::string Event(const std::string& wholeSeconds) {
  return "#EVENTALLA,COM1,0,80.0,FINESTEERING,2163,329761.000,02000000,1234,16809;1,0,2163," +
         wholeSeconds +
         ",500000000,4,SOL_COMPUTED,SINGLE,51.15043900000,-114.03066800000,1097.7000,-17.0000,"
         "WGS84,1.5,1.25,3.0,\"\",0.000*1a2b3c4d\r\n";
}

// The newest BESTPOSA goes to the side of the mark it lies on.
TEST(EventAllTest, AgainstTheLastBestPos) {
  ChainRun run;
  run.options.wanted[static_cast<std::size_t>(TableId::kBestPos)] = true;
  run.Open(TableId::kEvent);
  run.Feed(Event("329700"));  // no BESTPOSA yet
  run.Feed(kBestPos);
  run.Feed(Event("329760"));  // half a second after it
  run.Feed(Event("329759"));  // half a second before it
  const std::string mark = " 500000000 4 51.15043900000 -114.03066800000 1080.7000 ";
  const std::string zero = "0 0.000 0.00000000000 0.00000000000 0.0000";
  const std::string best = "2163 329760.000 51.15043874397 -114.03066788586 1080.6822";
  const std::string sigmas = " 1.5000 1.2500 3.0000\n";
  EXPECT_EQ(run.Bytes(TableId::kEvent),
            "2163 329761.000 1 0 2163 329700" + mark + "1308512100.500 " + zero + " " + zero +
                sigmas + "2163 329761.000 1 0 2163 329760" + mark + "0.500 " + best + " " + zero +
                sigmas + "2163 329761.000 1 0 2163 329759" + mark + "-0.500 " + best + " " + best +
                sigmas);
}

TEST(TableFilesTest, EpochOfTheRunForTpAndSvTables) {
  ChainRun run;
  run.state.currentEpochSeconds = 431250.0;
  run.Open(TableId::kTpfInfo);
  run.Open(TableId::kTsvNum);
  run.Feed(Compact("TPINFOA", "1000", "TP1,3,4,5"));
  // Tracked and used per system, five hexadecimal digits each.
  run.Feed(Compact("TSVNUMA", "1000", "ALL,0000c00008,0000500003,000010000f,fffff00000"));
  EXPECT_EQ(run.Bytes(TableId::kTpfInfo), "431250.000,3,4,5\r\n");
  EXPECT_EQ(run.Bytes(TableId::kTsvNum), "431250.000,12,5,1,1048575\r\n");
}

}  // namespace
}  // namespace tarnlog
