#include "extract/position/position_extractors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

// The streams of one extractor, read back as bytes.
class Streams {
 public:
  Streams() {
    table_.Open(folder_ / "table.txt", FileMode::kBinary);
    grid_.Open(folder_ / "grid.txt", FileMode::kBinary);
    ttff_.Open(folder_ / "ttff.txt", FileMode::kBinary);
  }
  PositionTables Tables() { return {&table_, &grid_, &ttff_}; }
  OutFile* Table() { return &table_; }
  std::string TableBytes() { return Read(table_, "table.txt"); }
  std::string GridBytes() { return Read(grid_, "grid.txt"); }
  std::string TtffBytes() { return Read(ttff_, "ttff.txt"); }
  std::string Unflushed() { return FileBytes(folder_ / "table.txt"); }

 private:
  std::string Read(OutFile& file, const char* name) {
    file.Flush();
    return FileBytes(folder_ / name);
  }
  TempFolder folder_;
  OutFile table_, grid_, ttff_;
};

void Extract(PositionLog log, const std::string& s, Streams& streams, ExtractionState& state,
             int origin = 0) {
  ExtractPosition(log, s.c_str(), s.size(), streams.Tables(), state, origin);
}

// A long-header sentence with a body behind the ';'.
std::string Sentence(const std::string& name, const std::string& timeStatus, int week,
                     const std::string& seconds, const std::string& body) {
  return "#" + name + ",COM1,0,72.5," + timeStatus + "," + std::to_string(week) + "," + seconds +
         ",02000000,b1f6,16809;" + body + "*5e1a2b3c\r\n";
}

// Body pieces behind the type, with the datum and what follows it.
const std::string kShanghai = "31.24187733925,121.48561247208,12.3456,8.9000,";
const std::string kTail = "WGS84,0.0081,0.0074,0.0162,\"0\",1.000,0.000,24,22,22,18,2,0b,30,33";

std::string Body(const std::string& status, const std::string& type,
                 const std::string& position = kShanghai) {
  return status + "," + type + "," + position + kTail;
}

// A BESTPOSA at 431250.000 over Shanghai.
std::string BestAt(const std::string& type, const std::string& status = "SOL_COMPUTED") {
  return Sentence("BESTPOSA", "FINESTEERING", 2210, "431250.000", Body(status, type));
}

const std::string kPublicBestPos =
    "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,0."
    "000,18,18,18,0,00,02,11,01*c3194e35\r\n";
const std::string kPublicBestPosRow =
    "2163,329760.000,30,51.15043874397,-114.03066788586,1080.6822,1.3648,1.1806,3.1112,18,18,18,"
    "0,0.0000,0.0000,1,84,17,-17.0000,0\n";

const std::string kRtkPos =
    "#RTKPOSA,COM2,0,71.0,FINESTEERING,2210,431250.000,02000000,bd5e,16809;SOL_COMPUTED,NARROW_"
    "INT,31.24187733925,121.48561247208,12.3456,8.9000,WGS84,0.0081,0.0074,0.0162,\"0\",1.000,0."
    "000,24,22,22,18,2,0b,30,33*5e1a2b3c\r\n";
const std::string kMatchedPos =
    "#MATCHEDPOSA,COM1,0,72.5,FINESTEERING,2210,431250.000,02040008,f37b,16809;SOL_COMPUTED,"
    "NARROW_INT,31.24187733925,121.48561247208,12.3456,8.9000,WGS84,0.0081,0.0074,0.0162,\"0\",0."
    "000,0.000,22,20,20,16,0,06,10,33*1b2c3d4e\r\n";
const std::string kPppPos =
    "#PPPPOSA,COM1,0,80.0,FINESTEERING,2210,431300.000,02000020,e3a1,16809;SOL_COMPUTED,PPP,31."
    "24187711853,121.48561261907,12.4102,8.9000,WGS84,0.0512,0.0433,0.1021,\"\",5.000,0.000,28,"
    "26,26,24,0,04,30,33*1d2c3b4a\r\n";
const std::string kGnssPos =
    "#BESTGNSSPOSA,COM1,0,77.0,FINESTEERING,2210,431250.000,02000000,c2b1,16809;SOL_COMPUTED,L1_"
    "FLOAT,31.24187652311,121.48561370024,12.9013,8.9000,WGS84,0.2210,0.1830,0.4012,\"\",1.000,0."
    "000,24,20,20,0,0,00,00,33*0f1e2d3c\r\n";
// As the driver rebuilds a combined log.
const std::string kNormalisedPsrPos =
    "#PSRPOSA,COM1,0,85,FINE,2210,431250.000,929473751,3,18;SOL_COMPUTED,SINGLE,31.24187733925,"
    "121.48561247208,12.3456,8.9000,WGS84,1.2081,1.1074,2.5162,\"\",0.000,0.000,24,22,0,0,0,04,00,"
    "33*abcdef12\r\n";

const std::string kXyz =
    "#BESTXYZA,COM1,0,85,FINE,2210,431250.000,929473751,3,18;SOL_COMPUTED,NARROW_INT,-2850115."
    "5621,4651530.1185,3289432.0417,0.0102,0.0124,0.0093,SOL_COMPUTED,DOPPLER_VELOCITY,0.0031,-"
    "0.0042,0.0017,0.0210,0.0260,0.0190,\"\",0.150,1.000,0.000,24,22,22,18,0,01,30,33*abcdef12\r\n";
const std::string kXyzValues = ",-2850115.5621,4651530.1185,3289432.0417,";
const std::string kXyzSpeeds = ",0.0031,-0.0042,0.0017,";

std::string Replace(std::string s, const std::string& from, const std::string& to) {
  s.replace(s.find(from), from.size(), to);
  return s;
}

const std::string kRtkRow =
    "2210,431250.000,50,31.24187733925,121.48561247208,21.2456,0.0081,0.0074,0.0162,24,22,22,18,"
    "1.0000,0.0000,11,51,71.0,48";
const std::string kMatchedRow =
    "2210,431250.000,50,31.24187733925,121.48561247208,21.2456,0.0081,0.0074,0.0162,22,20,20,16,"
    "0.0000,0.0000,6,51,72.5,10,16,0,67584,1.000\n";
const std::string kPsrRow =
    "2210,431250.000,22,31.24187733925,121.48561247208,21.2456,1.2081,1.1074,2.5162,24,22,0,0,0."
    "0000,0.0000,4,51,85,0,0,4,0,1\n";
const std::string kPppRow =
    ",31.24187711853,121.48561261907,21.3102,0.0512,0.0433,0.1021,28,26,26,24,5.0000,0.0000,4,51,"
    "80,48,0,";

struct RowCase {
  const char* name;
  PositionLog log;
  std::string sentence;
  int origin;
  std::string row;  // "" for none
};

class PositionRowTest : public ::testing::TestWithParam<RowCase> {};

TEST_P(PositionRowTest, WritesExactRow) {
  const RowCase& c = GetParam();
  Streams streams;
  ExtractionState state;
  state.currentEpochSeconds = 431249.0;
  Extract(c.log, c.sentence, streams, state, c.origin);
  EXPECT_EQ(streams.TableBytes(), c.row);
}

std::string BestRow(int code, const std::string& station = "0") {
  return "2210,431250.000," + std::to_string(code) +
         ",31.24187733925,121.48561247208,21.2456,0.0081,0.0074,0.0162,24,22,22,18,1.0000,0.0000,"
         "51,72,48,8.9000," +
         station + "\n";
}

INSTANTIATE_TEST_SUITE_P(
    Members, PositionRowTest,
    ::testing::Values(
        RowCase{"PublicBestPos", PositionLog::kBestPos, kPublicBestPos, 0, kPublicBestPosRow},
        RowCase{"BestPos1", PositionLog::kBestPos1,
                Replace(kPublicBestPos, "BESTPOSA", "BESTPOS1A"), 0, kPublicBestPosRow},
        RowCase{"BestPos2", PositionLog::kBestPos2,
                Replace(kPublicBestPos, "BESTPOSA", "BESTPOS2A"), 0, kPublicBestPosRow},
        RowCase{"BestPosBase2", PositionLog::kBestPosBase2,
                Replace(kPublicBestPos, "BESTPOSA", "BESTPOSBASE2A"), 0, kPublicBestPosRow},
        RowCase{"BestPosOtherLog", PositionLog::kBestPos,
                Replace(kPublicBestPos, "BESTPOSA", "BESTPOS2A"), 0, ""},
        RowCase{"BestPosQuotedStation", PositionLog::kBestPos, BestAt("NARROW_INT"), 0,
                BestRow(50)},
        RowCase{"BestPosNumberInQuotes", PositionLog::kBestPos,
                Replace(BestAt("L1_INT"), "\"0\"", "\"131\""), 0, BestRow(48, "131")},
        RowCase{"BestPosPlainStation", PositionLog::kBestPos,
                Replace(BestAt("FIXEDPOS"), "\"0\"", "7"), 0, BestRow(51, "7")},
        RowCase{"BestPosPpp", PositionLog::kBestPos, BestAt("PPP"), 0, BestRow(69)},
        RowCase{"BestPosPppConverging", PositionLog::kBestPos, BestAt("PPP_CONVERGING"), 0,
                BestRow(68)},
        RowCase{"BestPosNoneBadStatus", PositionLog::kBestPos, BestAt("NONE", "INSUFFICIENT_OBS"),
                0, BestRow(100)},
        RowCase{"BestPosUnlistedTypeGoodStatus", PositionLog::kBestPos, BestAt("PROPAGATED"), 0,
                ""},
        RowCase{"BestPosUnknownInHead", PositionLog::kBestPos,
                Sentence("BESTPOSA", "UNKNOWN", 2210, "431250.000", Body("SOL_COMPUTED", "SINGLE")),
                0, ""},
        RowCase{"BestPosNoSemicolon", PositionLog::kBestPos, Replace(kPublicBestPos, ";", ","), 0,
                ""},
        RowCase{"BestPosCutInDeviations", PositionLog::kBestPos,
                kPublicBestPos.substr(0, kPublicBestPos.find(",1.1806")), 0, ""},
        RowCase{"BestGnssPos", PositionLog::kBestGnssPos, kGnssPos, 0,
                "2210,431250.000,32,31.24187652311,121.48561370024,21.8013\n"},
        RowCase{"BestGnssPosNoWideInt", PositionLog::kBestGnssPos,
                Replace(kGnssPos, "L1_FLOAT", "WIDE_INT"), 0, ""},
        RowCase{
            "BestGnssPosNoWideIntBadStatus", PositionLog::kBestGnssPos,
            Replace(Replace(kGnssPos, "L1_FLOAT", "WIDE_INT"), "SOL_COMPUTED", "INSUFFICIENT_OBS"),
            0, ""},
        RowCase{"BestGnssPosNoPpp", PositionLog::kBestGnssPos, Replace(kGnssPos, "L1_FLOAT", "PPP"),
                0, ""},
        RowCase{"RtkPos", PositionLog::kRtkPos, kRtkPos, 0, kRtkRow + ",2,11\n"},
        RowCase{"RtkPos2", PositionLog::kRtkPos2, Replace(kRtkPos, "RTKPOSA", "RTKPOS2A"), 0,
                kRtkRow + "\n"},
        RowCase{"RtkPosBase2", PositionLog::kRtkPosBase2,
                Replace(kRtkPos, "RTKPOSA", "RTKPOSBASE2A"), 0, kRtkRow + "\n"},
        RowCase{
            "RtkPosBase2NeedsFine", PositionLog::kRtkPosBase2,
            Replace(Replace(kRtkPos, "RTKPOSA", "RTKPOSBASE2A"), "FINESTEERING", "COARSESTEERING"),
            0, ""},
        RowCase{"RtkPosPsrTypeUnlisted", PositionLog::kRtkPos,
                Replace(kRtkPos, "NARROW_INT", "SINGLE"), 0, ""},
        RowCase{"MatchedPos", PositionLog::kMatchedPos, kMatchedPos, 0, kMatchedRow},
        RowCase{"MatchedPos2", PositionLog::kMatchedPos2,
                Replace(kMatchedPos, "MATCHEDPOSA", "MATCHEDPOS2A"), 0, kMatchedRow},
        RowCase{"MatchedPosH", PositionLog::kMatchedPosH,
                Replace(kMatchedPos, "MATCHEDPOSA", "MATCHEDPOSHA"), 0, kMatchedRow},
        RowCase{"MatchedPosBase2", PositionLog::kMatchedPosBase2,
                Replace(kMatchedPos, "MATCHEDPOSA", "MATCHEDPOSBASE2A"), 0, kMatchedRow},
        RowCase{"MatchedPosBase2NeedsFine", PositionLog::kMatchedPosBase2,
                Replace(Replace(kMatchedPos, "MATCHEDPOSA", "MATCHEDPOSBASE2A"), "FINESTEERING",
                        "COARSESTEERING"),
                0, ""},
        RowCase{"PsrPosNormalised", PositionLog::kPsrPos, kNormalisedPsrPos, 1, kPsrRow},
        RowCase{"PsrPos2", PositionLog::kPsrPos2, Replace(kNormalisedPsrPos, "PSRPOSA", "PSRPOS2A"),
                1, kPsrRow},
        RowCase{"MPsrPos", PositionLog::kMPsrPos, Replace(kNormalisedPsrPos, "PSRPOSA", "MPSRPOSA"),
                1, kPsrRow},
        RowCase{"PsrPosBase2", PositionLog::kPsrPosBase2,
                Replace(kNormalisedPsrPos, "PSRPOSA", "PSRPOSBASE2A"), 1, kPsrRow},
        RowCase{"PsrPosFixedAndStation", PositionLog::kPsrPos,
                Replace(Replace(kNormalisedPsrPos, "SINGLE", "FIXEDPOS"), "\"\"", "\"12\""), 0,
                Replace(kPsrRow, ",4,0,1\n", ",4,12,0\n")},
        RowCase{"PsrPosNeverAdds100", PositionLog::kPsrPos,
                Replace(kNormalisedPsrPos, "SOL_COMPUTED", "UNAUTHORIZED"), 1, kPsrRow},
        RowCase{"PsrPosTimeStatusNotFine", PositionLog::kPsrPos,
                Replace(kNormalisedPsrPos, "FINE", "COARSE"), 1, ""},
        RowCase{"PsrPosInsufficientObs", PositionLog::kPsrPos,
                Replace(Replace(kNormalisedPsrPos, "SOL_COMPUTED", "INSUFFICIENT_OBS"), "SINGLE",
                        "NONE"),
                1, ""},
        RowCase{"PppPos", PositionLog::kPppPos, kPppPos, 0,
                "2210,431300.000,26" + kPppRow + "-1,0\n"},
        RowCase{"PppPosConverging", PositionLog::kPppPos,
                Replace(kPppPos, ",PPP,", ",PPP_CONVERGING,"), 0,
                "2210,431300.000,27" + kPppRow + "-1,0\n"},
        RowCase{"MPppPosStation", PositionLog::kMPppPos,
                Replace(Replace(kPppPos, "PPPPOSA", "MPPPPOSA"), "\"\"", "\"0\""), 1,
                "2210,431300.000,26" + kPppRow + "0,1\n"},
        RowCase{"PppPosWeekZero", PositionLog::kPppPos, Replace(kPppPos, ",2210,", ",0,"), 0, ""},
        RowCase{"PppPosTimeStatusNotFine", PositionLog::kPppPos,
                Replace(kPppPos, "FINESTEERING", "COARSESTEERING"), 0, ""}),
    [](const ::testing::TestParamInfo<RowCase>& info) { return std::string(info.param.name); });

TEST(BestPosTest, StoresLastPositionUnlessInsufficientObsAndWritesGridNorthOnly) {
  Streams streams;
  ExtractionState state;
  Extract(PositionLog::kBestPos, kPublicBestPos, streams, state);
  EXPECT_DOUBLE_EQ(state.lastBestPos.latitude, 51.15043874397);
  EXPECT_DOUBLE_EQ(state.lastBestPos.longitude, -114.03066788586);
  EXPECT_DOUBLE_EQ(state.lastBestPos.height, 1097.6822 - 17.0);
  EXPECT_DOUBLE_EQ(state.lastBestPos.seconds, 329760.0);
  EXPECT_EQ(state.lastBestPos.week, 2163);

  // Written, but not stored.
  Extract(
      PositionLog::kBestPos,
      Sentence("BESTPOSA", "FINESTEERING", 2210, "431251.000", Body("INSUFFICIENT_OBS", "NONE")),
      streams, state);
  EXPECT_EQ(state.lastBestPos.week, 2163);
  // Latitude 0 and south of the equator: rows, no grid rows.
  const std::string south = "-33.86785000000,151.20732000000,58.0000,22.0000,";
  Extract(PositionLog::kBestPos,
          Sentence("BESTPOSA", "FINESTEERING", 2210, "431252.000",
                   Body("SOL_COMPUTED", "SINGLE", south)),
          streams, state);
  Extract(PositionLog::kBestPos,
          Sentence("BESTPOSA", "FINESTEERING", 2210, "431253.000",
                   Body("SOL_COMPUTED", "SINGLE", "0.00000000000,10.0,1.0,1.0,")),
          streams, state);
  EXPECT_EQ(state.lastBestPos.seconds, 431253.0);
  EXPECT_EQ(state.Sums(SumSource::kBestPos).counts[0], 0);
  // A row not stored still has its grid row.
  EXPECT_EQ(streams.GridBytes(),
            "329760.000, 502145.845, 5668822.442\n431251.000, 641530.321, 3458743.427\n");
  const std::string rows = streams.TableBytes();
  EXPECT_EQ(std::count(rows.begin(), rows.end(), '\n'), 4);
}

struct SumCase {
  PositionLog log;
  const char* name;  // the log name in the sentence
  const char* type;
  SumSource source;
  bool summed;
};

class PositionSumTest : public ::testing::TestWithParam<SumCase> {};

TEST_P(PositionSumTest, AddsToItsOwnSumsOnly) {
  const SumCase& c = GetParam();
  Streams streams;
  ExtractionState state;
  const std::string s =
      Sentence(c.name, "FINESTEERING", 2210, "431250.000", Body("SOL_COMPUTED", c.type));
  Extract(c.log, s, streams, state);
  Extract(c.log, s, streams, state);
  ASSERT_NE(streams.TableBytes(), "");
  for (std::size_t i = 0; i < state.sums.size(); ++i) {
    const PositionSums& sums = state.sums[i];
    const bool expected = c.summed && i == static_cast<std::size_t>(c.source);
    EXPECT_EQ(sums.counts[0], expected ? 2 : 0) << "source " << i;
    EXPECT_EQ(sums.counts[2], sums.counts[0]);
    EXPECT_DOUBLE_EQ(sums.latitude, expected ? 2 * 31.24187733925 : 0.0);
    EXPECT_DOUBLE_EQ(sums.longitude, expected ? 2 * 121.48561247208 : 0.0);
    EXPECT_DOUBLE_EQ(sums.height, expected ? 2 * 21.2456 : 0.0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sources, PositionSumTest,
    ::testing::Values(
        SumCase{PositionLog::kBestPos, "BESTPOSA", "NARROW_INT", SumSource::kBestPos, true},
        SumCase{PositionLog::kBestPos, "BESTPOSA", "L1_INT", SumSource::kBestPos, true},
        SumCase{PositionLog::kBestPos, "BESTPOSA", "FIXEDPOS", SumSource::kBestPos, true},
        SumCase{PositionLog::kBestPos, "BESTPOSA", "WIDE_INT", SumSource::kBestPos, false},
        SumCase{PositionLog::kBestPos, "BESTPOSA", "SINGLE", SumSource::kBestPos, false},
        SumCase{PositionLog::kBestPos2, "BESTPOS2A", "NARROW_INT", SumSource::kBestPos, false},
        SumCase{PositionLog::kRtkPos, "RTKPOSA", "WIDE_INT", SumSource::kRtkPos, true},
        SumCase{PositionLog::kRtkPos, "RTKPOSA", "L1_INT", SumSource::kRtkPos, true},
        SumCase{PositionLog::kRtkPos, "RTKPOSA", "NARROW_FLOAT", SumSource::kRtkPos, false},
        SumCase{PositionLog::kRtkPos2, "RTKPOS2A", "NARROW_INT", SumSource::kRtkPos2, true},
        SumCase{PositionLog::kRtkPosBase2, "RTKPOSBASE2A", "NARROW_INT", SumSource::kRtkPos, false},
        SumCase{PositionLog::kMatchedPos, "MATCHEDPOSA", "NARROW_INT", SumSource::kMatched, true},
        SumCase{PositionLog::kMatchedPos, "MATCHEDPOSA", "WIDE_INT", SumSource::kMatched, false},
        SumCase{PositionLog::kMatchedPos2, "MATCHEDPOS2A", "NARROW_INT", SumSource::kMatched2,
                true},
        SumCase{PositionLog::kMatchedPosH, "MATCHEDPOSHA", "NARROW_INT", SumSource::kMatchedH,
                true},
        SumCase{PositionLog::kPsrPos, "PSRPOSA", "SINGLE", SumSource::kPsrPos, true},
        SumCase{PositionLog::kPsrPos, "PSRPOSA", "PSRDIFF", SumSource::kPsrPos, true},
        SumCase{PositionLog::kPsrPos2, "PSRPOS2A", "SINGLE", SumSource::kPsrPos, false},
        SumCase{PositionLog::kPppPos, "PPPPOSA", "PPP", SumSource::kPppPos, true},
        SumCase{PositionLog::kPppPos, "PPPPOSA", "PPP_CONVERGING", SumSource::kPppPos, false}));

std::string RtkAt(const std::string& seconds, const std::string& status, const std::string& type) {
  return Sentence("RTKPOSA", "FINESTEERING", 2210, seconds, Body(status, type));
}

TEST(RtkPosTest, TtffRowsOnlyOnCodeChangesAcrossRuns) {
  ExtractionState state;
  Streams first;
  Extract(PositionLog::kRtkPos, RtkAt("100.000", "SOL_COMPUTED", "NARROW_INT"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("101.000", "SOL_COMPUTED", "NARROW_INT"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("102.000", "SOL_COMPUTED", "NARROW_FLOAT"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("103.000", "INSUFFICIENT_OBS", "NONE"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("104.000", "UNKNOWN", "NONE"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("105.000", "SOL_COMPUTED", "SINGLE"), first, state);
  Extract(PositionLog::kRtkPos, RtkAt("106.000", "SOL_COMPUTED", "NARROW_INT"), first, state);
  EXPECT_EQ(first.TtffBytes(), "100.00,50\n102.00,34\n103.00,100\n106.00,50\n");
  const std::string grid = first.GridBytes();
  EXPECT_EQ(grid.substr(0, 33), "100.000, 641530.321, 3458743.427\n");
  EXPECT_EQ(std::count(grid.begin(), grid.end(), '\n'), 5);

  // "UNKNOWN" counts nothing; "SINGLE" is no RTK type but an epoch.
  const RtkRunStatistics& stats = state.rtkStatistics;
  EXPECT_EQ(stats.firstSeconds, 100.0);
  EXPECT_EQ(stats.firstWeek, 2210);
  EXPECT_EQ(stats.lastSeconds, 106.0);
  auto at = [](RtkStatType t) { return static_cast<std::size_t>(t); };
  EXPECT_EQ(stats.good[at(RtkStatType::kNarrowInt)], 3);
  EXPECT_EQ(stats.good[at(RtkStatType::kNarrowFloat)], 1);
  EXPECT_EQ(stats.good[at(RtkStatType::kOther)], 1);
  EXPECT_EQ(stats.bad[at(RtkStatType::kOther)], 1);
  EXPECT_EQ(stats.bad[at(RtkStatType::kNarrowInt)], 0);

  // The last code outlives the run: an unchanged first row isn't repeated.
  Streams second;
  Extract(PositionLog::kRtkPos, RtkAt("200.000", "SOL_COMPUTED", "NARROW_INT"), second, state);
  Extract(PositionLog::kRtkPos, RtkAt("201.000", "SOL_COMPUTED", "L1_FLOAT"), second, state);
  EXPECT_EQ(second.TtffBytes(), "201.00,32\n");
  EXPECT_EQ(stats.firstSeconds, 100.0);

  // Without a ttff.txt stream the last code stays.
  ExtractionState fresh;
  Streams third;
  const std::string s = RtkAt("300.000", "SOL_COMPUTED", "NARROW_INT");
  ExtractPosition(PositionLog::kRtkPos, s.c_str(), s.size(), {third.Table(), nullptr, nullptr},
                  fresh, 0);
  EXPECT_EQ(fresh.lastTtffCode, -1);
  EXPECT_NE(third.TableBytes(), "");
}

TEST(RtkPosTest, OtherMembersKeepNoRunState) {
  ExtractionState state;
  Streams streams;
  Extract(PositionLog::kRtkPos2, Replace(kRtkPos, "RTKPOSA", "RTKPOS2A"), streams, state);
  EXPECT_EQ(state.lastTtffCode, -1);
  EXPECT_EQ(state.rtkStatistics.lastSeconds, 0.0);
  EXPECT_EQ(streams.TtffBytes(), "");
  EXPECT_EQ(streams.GridBytes(), "");
}

struct AgeCase {
  const char* seconds;
  double epoch;
  const char* age;
};

class MatchedAgeTest : public ::testing::TestWithParam<AgeCase> {};

TEST_P(MatchedAgeTest, FoldsAboutTheWeekBoundary) {
  const AgeCase& c = GetParam();
  Streams streams;
  ExtractionState state;
  state.currentEpochSeconds = c.epoch;
  Extract(PositionLog::kMatchedPos, Replace(kMatchedPos, "431250.000", c.seconds), streams, state);
  const std::string row = streams.TableBytes();
  EXPECT_EQ(row.substr(row.rfind(',') + 1), std::string(c.age) + "\n");
}

INSTANTIATE_TEST_SUITE_P(Ages, MatchedAgeTest,
                         ::testing::Values(AgeCase{"0.200", 604799.9, "0.300"},
                                           AgeCase{"604799.500", 0.5, "-1.000"},
                                           AgeCase{"302400.000", 0.0, "302400.000"},
                                           AgeCase{"302400.500", 0.0, "-302399.500"},
                                           AgeCase{"0.000", 302400.0, "-302400.000"},
                                           AgeCase{"0.000", 302400.25, "302399.750"}));

TEST(BestPosBase2Test, FlushesEachRow) {
  Streams streams;
  ExtractionState state;
  Extract(PositionLog::kBestPosBase2, Replace(kPublicBestPos, "BESTPOSA", "BESTPOSBASE2A"), streams,
          state);
  EXPECT_EQ(streams.Unflushed(), kPublicBestPosRow);
}

TEST(PositionExtractorTest, NullOrClosedTablesTakeNothingButStateMoves) {
  ExtractionState state;
  OutFile closed;
  const std::string best = BestAt("NARROW_INT");
  ExtractPosition(PositionLog::kBestPos, best.c_str(), best.size(), PositionTables{}, state, 0);
  ExtractPosition(PositionLog::kBestPos, best.c_str(), best.size(), {&closed, &closed, &closed},
                  state, 0);
  EXPECT_EQ(state.Sums(SumSource::kBestPos).counts[1], 2);
  EXPECT_EQ(state.lastBestPos.week, 2210);

  const std::string rtk = RtkAt("431260.000", "SOL_COMPUTED", "L1_INT");
  ExtractPosition(PositionLog::kRtkPos, rtk.c_str(), rtk.size(), PositionTables{}, state, 0);
  EXPECT_EQ(state.Sums(SumSource::kRtkPos).counts[0], 1);
  EXPECT_EQ(state.rtkStatistics.lastSeconds, 431260.0);
  EXPECT_EQ(state.rtkStatistics.good[static_cast<std::size_t>(RtkStatType::kL1Int)], 1);
  ExtractBestXyz(kXyz.c_str(), kXyz.size(), nullptr, 0);
  ExtractPosition(PositionLog::kBestPos, nullptr, 0, PositionTables{}, state, 0);
}

struct XyzCase {
  const char* name;
  std::string sentence;
  int mode;
  std::string row;
};

class BestXyzTest : public ::testing::TestWithParam<XyzCase> {};

TEST_P(BestXyzTest, WritesExactRow) {
  const XyzCase& c = GetParam();
  Streams streams;
  ExtractBestXyz(c.sentence.c_str(), c.sentence.size(), streams.Table(), c.mode);
  EXPECT_EQ(streams.TableBytes(), c.row);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, BestXyzTest,
    ::testing::Values(
        XyzCase{"Mode0", kXyz, 0, "2210,431250.000,50" + kXyzValues + "17" + kXyzSpeeds + "0\n"},
        XyzCase{"Mode1", kXyz, 1, "2210,431250.000,50" + kXyzValues + "17" + kXyzSpeeds + "1\n"},
        XyzCase{"Mode2", kXyz, 2, "2210,431250.000,50" + kXyzValues + "17" + kXyzSpeeds + "2\n"},
        XyzCase{"Ppp", Replace(kXyz, "NARROW_INT", "PPP"), 0,
                "2210,431250.000,51" + kXyzValues + "17" + kXyzSpeeds + "0\n"},
        XyzCase{"PppConverging", Replace(kXyz, "NARROW_INT", "PPP_CONVERGING"), 0,
                "2210,431250.000,55" + kXyzValues + "17" + kXyzSpeeds + "0\n"},
        XyzCase{"VelocityBadStatus",
                Replace(kXyz, "SOL_COMPUTED,DOPPLER_VELOCITY", "INSUFFICIENT_OBS,NONE"), 0,
                "2210,431250.000,50" + kXyzValues + "100" + kXyzSpeeds + "0\n"},
        XyzCase{"PositionBadStatus", Replace(kXyz, "SOL_COMPUTED,NARROW_INT", "COLD_START,NONE"), 0,
                "2210,431250.000,100" + kXyzValues + "17" + kXyzSpeeds + "0\n"},
        XyzCase{"UnlistedPositionType", Replace(kXyz, "NARROW_INT", "PROPAGATED"), 0, ""},
        XyzCase{"Unknown", Replace(kXyz, "FINE", "UNKNOWN"), 0, ""},
        XyzCase{"OtherLog", Replace(kXyz, "BESTXYZA", "BESTXYZHA"), 0, ""},
        XyzCase{"CutInVelocity", kXyz.substr(0, kXyz.find("-0.0042")), 0, ""}),
    [](const ::testing::TestParamInfo<XyzCase>& info) { return std::string(info.param.name); });

// Every line of a real capture through each extractor: only its own log
// leaves a row.
std::vector<std::string> CaptureLines(const std::string& file) {
  const std::string bytes = FileBytes(testing::SourceDir() + "/tests/data/" + file);
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < bytes.size();) {
    std::size_t end = bytes.find('\n', start);
    end = end == std::string::npos ? bytes.size() : end + 1;
    lines.push_back(bytes.substr(start, end - start));
    start = end;
  }
  return lines;
}

struct CaptureCase {
  const char* file;
  std::string bestPos, psrPos, bestXyz, grid;
};

class RealCaptureTest : public ::testing::TestWithParam<CaptureCase> {};

TEST_P(RealCaptureTest, GoldenRows) {
  const CaptureCase& c = GetParam();
  const std::vector<std::string> lines = CaptureLines(c.file);
  ASSERT_GT(lines.size(), 5u);
  Streams best, psr, xyz;
  ExtractionState state;
  for (const std::string& line : lines) {
    Extract(PositionLog::kBestPos, line, best, state);
    Extract(PositionLog::kPsrPos, line, psr, state);
    ExtractBestXyz(line.c_str(), line.size(), xyz.Table(), 0);
  }
  EXPECT_EQ(best.TableBytes(), c.bestPos);
  EXPECT_EQ(best.GridBytes(), c.grid);
  EXPECT_EQ(psr.TableBytes(), c.psrPos);
  EXPECT_EQ(xyz.TableBytes(), c.bestXyz);
}

INSTANTIATE_TEST_SUITE_P(
    Oemv, RealCaptureTest,
    ::testing::Values(
        CaptureCase{"OneEach.ASC",
                    "1687,419928.000,30,32.59535912622,-85.29567789741,170.7777,1.1396,1.1687,2."
                    "4308,12,12,0,0,0.0000,0.0000,3,66,0,-29.2000,0\n",
                    "",
                    "1687,419977.000,30,441145.3725,-5360805.2592,3416329.3448,17,-0.0018,0.0220,"
                    "0.0080,0\n",
                    "419928.000, 621639.337, 3608614.015\n"},
        CaptureCase{"OnceEachAgain.ASC",
                    "1687,420221.000,30,32.59536697319,-85.29568091247,170.6451,1.2596,1.1674,2."
                    "6585,12,11,0,0,0.0000,0.0000,3,74,0,-29.2000,0\n",
                    "1687,420244.000,22,32.59536630487,-85.29568168760,170.6572,1.2602,1.1670,2."
                    "6559,12,11,0,0,0.0000,0.0000,6,3,74,0,0,6,0,0\n",
                    "1687,420223.000,30,441145.2617,-5360805.1981,3416329.9540,17,-0.0036,0.0426,"
                    "-0.0264,0\n",
                    "420221.000, 621639.610, 3608614.888\n"}));

// Cut anywhere, a sentence leaves a row only once the fields the row needs
// are all there, and nothing is read past the cut.
struct CutCase {
  PositionLog log;
  std::string sentence;
  std::string lastNeeded;  // the row needs the text up to and including this
};

TEST(PositionExtractorTest, CutSentencesLeaveRowsOnlyWhenComplete) {
  const std::vector<CutCase> cases = {
      {PositionLog::kBestPos, kPublicBestPos, ",18,18,18,0"},
      {PositionLog::kBestGnssPos, kGnssPos, "9013,8"},
      {PositionLog::kRtkPos, kRtkPos, "24,22,22,1"},
      {PositionLog::kMatchedPos, kMatchedPos, "22,20,20,1"},
      {PositionLog::kPsrPos, kNormalisedPsrPos, "24,22,0,0"},
      {PositionLog::kPppPos, kPppPos, "28,26,26,2"},
  };
  // Each cut sits in a buffer of its exact size, so a read past the NUL
  // leaves the allocation.
  auto cutOf = [](const std::string& s, std::size_t n) {
    auto buffer = std::make_unique<char[]>(n + 1);
    s.copy(buffer.get(), n);
    buffer[n] = '\0';
    return buffer;
  };
  for (const CutCase& c : cases) {
    const std::size_t needed = c.sentence.find(c.lastNeeded) + c.lastNeeded.size();
    Streams streams;
    ExtractionState state;
    std::size_t written = 0;
    for (std::size_t n = 0; n <= c.sentence.size(); ++n) {
      ExtractPosition(c.log, cutOf(c.sentence, n).get(), n, streams.Tables(), state, 0);
      const std::size_t now = streams.TableBytes().size();
      EXPECT_EQ(now > written, n >= needed) << c.sentence.substr(0, n);
      written = now;
    }
  }
  const std::size_t needed = kXyz.find(",0.0017") + 2;
  Streams streams;
  std::size_t written = 0;
  for (std::size_t n = 0; n <= kXyz.size(); ++n) {
    ExtractBestXyz(cutOf(kXyz, n).get(), n, streams.Table(), 0);
    const std::size_t now = streams.TableBytes().size();
    EXPECT_EQ(now > written, n >= needed) << kXyz.substr(0, n);
    written = now;
  }
}

}  // namespace
}  // namespace tarnlog
