#include "extract/velocity/velocity_extractors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chain_harness.h"
#include "extract/dispatch.h"
#include "extract/extract_main.h"
#include "extract/normalise.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

// Every table of a full run, fed sentence by sentence through the chain.
class Chain : public testing::ChainHarness {
 public:
  Chain() : ChainHarness(Tables::kFullVector) {}
};

std::string Long(const std::string& name, const std::string& timeStatus, const std::string& body) {
  return "#" + name + ",COM1,0,74.0," + timeStatus + ",1687,420227.000,00000000,827b,3153;" + body +
         "*45165d89\r\n";
}
std::string Compact(const std::string& name, const std::string& body) {
  return "#" + name + ",85,GPS,FINE,2210,431250500,0,0,18,12;" + body + "*1a2b3c4d\r\n";
}

const std::string kDoppler =
    "SOL_COMPUTED,DOPPLER_VELOCITY,0.150,0.000,0.0197,157.412675,0.0246,0.0";
const std::string kValues = "1687,420227.000,0,0.150000,0.000000,0.019700,157.4127";

struct Case {
  std::string sentence;
  TableId table;
  std::string row;  // "" when nothing is written
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sentence);
    Chain chain;
    chain.Feed(c.sentence);
    EXPECT_EQ(chain.Bytes(c.table), c.row);
  }
}

TEST(VelocityTest, NativeRows) {
  const std::string rtkFloat = "SOL_COMPUTED,NARROW_FLOAT,0.150,0.000,0.0197,157.412675,0.0246,0.0";
  const std::string rtkBad = "INSUFFICIENT_OBS,NARROW_INT,0.150,0.000,0.0197,157.412675,0.0246,0.0";
  Check({
      // A receiver's own BESTVELA: the rest of the body up to the star is kept.
      {Long("BESTVELA", "FINESTEERING", kDoppler), TableId::kBestVel, kValues + ",0.0,0\n"},
      {Long("BESTVELA", "FINESTEERING", "COMPUTING," + kDoppler.substr(13)), TableId::kBestVel,
       "1687,420227.000,100,0.150000,0.000000,0.019700,157.4127,0.0,0\n"},
      {Long("BESTVEL1A", "FINESTEERING", kDoppler), TableId::kBestVel1, kValues + "\n"},
      {Long("BESTVEL2A", "COARSE", kDoppler), TableId::kBestVel2, kValues + ",0\n"},
      {Long("PSRVELA", "FINESTEERING", kDoppler), TableId::kPsrVel, kValues + ",0.0,0\n"},
      {Long("PSRVELA", "COARSESTEERING", kDoppler), TableId::kPsrVel, ""},
      {Long("PSRVEL2A", "COARSE", kDoppler), TableId::kPsrVel2, kValues + ",0.0,0\n"},
      {Long("PSRVELBASE2A", "FINESTEERING", kDoppler), TableId::kPsrVelBase2, kValues + ",0.0,0\n"},
      {Long("PSRVELBASE2A", "COARSE", kDoppler), TableId::kPsrVelBase2, ""},
      // RTK velocity types count, DOPPLER_VELOCITY as 17, and a bad status adds 100.
      {Long("RTKVELA", "FINESTEERING", kDoppler), TableId::kRtkVel,
       "1687,420227.000,17,0.150000,0.000000,0.019700,157.4127,0\n"},
      {Long("RTKVELA", "FINESTEERING", rtkBad), TableId::kRtkVel,
       "1687,420227.000,150,0.150000,0.000000,0.019700,157.4127,0\n"},
      {Long("RTKVEL2A", "FINESTEERING", rtkFloat), TableId::kRtkVel2,
       "1687,420227.000,34,0.150000,0.000000,0.019700,157.4127,0\n"},
      {Long("RTKVELBASE2A", "FINESTEERING", kDoppler), TableId::kRtkVelBase2, kValues + ",0\n"},
      {Long("RTKVELBASE2A", "COARSE", kDoppler), TableId::kRtkVelBase2, ""},
      {Long("RTKDOPPLERVELA", "FINESTEERING", kDoppler), TableId::kRtkDopplerVel, kValues + "\n"},
      // Too few values, or no type behind the status.
      {Long("BESTVELA", "FINESTEERING", "SOL_COMPUTED,DOPPLER_VELOCITY,0.150,0.000,0.0197"),
       TableId::kBestVel, ""},
      {Long("BESTVELA", "FINESTEERING", "SOL_COMP"), TableId::kBestVel, ""},
  });
}

// 21 position fields, then the velocity block with its two deviations.
const std::string kPositionBlock =
    "SOL_COMPUTED,NARROW_INT,31.24187733925,121.48561247208,12.3456,8.9000,WGS84,0.0081,0.0074,0."
    "0162,\"0\",1.000,0.000,24,22,22,18,0,01,30,33,";
const std::string kVelocityBlock =
    "SOL_COMPUTED,DOPPLER_VELOCITY,0.150,0.000,0.0197,157.412675,0.0246,0.0123,0.0345";

TEST(VelocityTest, CombinedHalves) {
  const std::string combined =
      "2210,431250.500,%d,0.150000,0.000000,0.019700,157.4127,0.0246,0.0123,1\n";
  auto row = [&](int code) {
    const std::size_t at = combined.find("%d");
    return combined.substr(0, at) + std::to_string(code) + combined.substr(at + 2);
  };
  Check({
      {Compact("BESTNAVA", kPositionBlock + kVelocityBlock), TableId::kBestNavVel, row(0)},
      {Compact("BESTNAVHA", kPositionBlock + kVelocityBlock), TableId::kBestNavHVel, row(0)},
      {Compact("SPPNAVA", kPositionBlock + kVelocityBlock), TableId::kSppNavVel, row(0)},
      {Compact("ADRNAVA", kPositionBlock + kVelocityBlock), TableId::kAdrNavVel, row(17)},
      {Compact("ADRNAVHA", kPositionBlock + "SOL_COMPUTED,L1_INT" + kVelocityBlock.substr(29)),
       TableId::kAdrNavHVel, row(48)},
      // The half is no native log: the native table stays empty.
      {Compact("BESTNAVA", kPositionBlock + kVelocityBlock), TableId::kBestVel, ""},
  });
}

TEST(VelocityTest, ModeOneOnlyWhereACombinedFormExists) {
  TempFolder folder;
  OutFile table;
  table.Open(folder / "v.txt", FileMode::kBinary);
  const std::string s = Long("BESTVEL1A", "FINESTEERING", kDoppler);
  ExtractVelocity(VelocityLog::kBestVel1, s.c_str(), &table, 1);
  ExtractVelocity(VelocityLog::kBestVel1, s.c_str(), nullptr, 0);
  table.Flush();
  EXPECT_EQ(FileBytes(folder / "v.txt"), "");
}

const std::string kDopHead = "1687,420227.000,0,1.732500,1.532600,0.795200,1.133600,0.807900,";
const std::string kDopValues = "1.7325,1.5326,0.7952,1.1336,0.8079,0.0,";
const std::string kCompactValues = "431250500,1.5,1.3,0.9,1.0,0.8,0.6,0.5,10.0,0,";
const std::string kCompactHead =
    "2210,431250.500,1.500000,1.300000,0.900000,1.000000,0.800000,0.600000,0.500000,";

TEST(DopTest, EveryMember) {
  const std::string list = "11,16,3,30,20,6,13,7,19,31,32,23";
  const std::string mixed = "4,5,45,80,170";
  Check({
      {Long("PSRDOPA", "FINESTEERING", kDopValues + list), TableId::kPsrDop,
       kDopHead + "11,0,0,0,0,0\n"},
      {Long("PSRDOPA", "COARSE", kDopValues + list), TableId::kPsrDop, ""},
      {Long("PSRDOP2A", "COARSE", kDopValues + list), TableId::kPsrDop2,
       kDopHead + "11,0,0,0,0,0\n"},
      {Long("PSRDOPBASE2A", "FINESTEERING", kDopValues + mixed), TableId::kPsrDopBase2,
       kDopHead + "1,1,1,1,0,0\n"},
      {Long("PSRDOPBASE2A", "COARSE", kDopValues + mixed), TableId::kPsrDopBase2, ""},
      {Long("RTKDOPA", "FINESTEERING", kDopValues + mixed), TableId::kRtkDop,
       kDopHead + "1,1,1,1,0,0\n"},
      {Long("RTKDOPA", "COARSE", kDopValues + mixed), TableId::kRtkDop, ""},
      {Long("RTKDOP2A", "COARSE", kDopValues + mixed), TableId::kRtkDop2,
       kDopHead + "1,1,1,1,0,0\n"},
      {Long("RTKDOPBASE2A", "FINESTEERING", kDopValues + mixed), TableId::kRtkDopBase2,
       kDopHead + "1,1,1,1,0,0\n"},
      // Compact forms: one field skipped, seven values, the list ten fields on.
      {Compact("SPPDOPA", kCompactValues + mixed), TableId::kSppDop,
       kCompactHead + "1,1,1,1,0,1\n"},
      {Compact("SPPDOPHA", kCompactValues + mixed), TableId::kSppDopH,
       kCompactHead + "1,1,1,1,0,1\n"},
      {Compact("ADRDOPA", kCompactValues + mixed), TableId::kAdrDop,
       kCompactHead + "1,1,1,1,0,1\n"},
      {Compact("ADRDOPHA", kCompactValues + mixed), TableId::kAdrDopH,
       kCompactHead + "1,1,1,1,0,1\n"},
      // DOPHD2A: the native body behind a compact header.
      {Compact("DOPHD2A", kDopValues + mixed), TableId::kDopHd2,
       "2210,431250.500,0,1.732500,1.532600,0.795200,1.133600,0.807900,1,1,1,1,0,1\n"},
      // PPP: no counts; the native form needs "COM", the compact one must lack ",COM".
      {Long("PPPDOPA", "FINESTEERING", kDopValues + mixed), TableId::kPppDop,
       "1687,420227.000,0,1.732500,1.532600,0.795200,1.133600,0.807900,0\n"},
      {"#PPPDOPA,XYZ1,0,74.0,COARSE,1687,420227.000,0,827b,3153;" + kDopValues + mixed + "*1\r\n",
       TableId::kPppDop, ""},
      {Compact("PPPDOPA", kCompactValues + mixed), TableId::kPppDop, kCompactHead + "1\n"},
      {Compact("MPPPDOPA", kCompactValues + mixed), TableId::kMPppDop, kCompactHead + "1\n"},
      // Too few values leave no row.
      {Long("PSRDOP2A", "FINE", "1.7,1.5,0.7,1.1"), TableId::kPsrDop2, ""},
  });
}

TEST(DopTest, SatelliteClassesAndColumnOrder) {
  // GPS 6, GLONASS 5, Galileo 4, BDS 3, SBAS 2, and six numbers in no class.
  const std::string list =
      "26,1,32,7,8,9,10,43,66,50,51,52,75,110,90,91,161,223,200,33,42,0,67,74,111,160,224";
  Check({{Long("PSRDOP2A", "FINE", kDopValues + list), TableId::kPsrDop2,
          kDopHead + "6,5,4,3,2,0\n"}});
}

TEST(DopTest, ShortListCountsItsLastNumberAgain) {
  Check({
      // Five announced, three given: 44 is counted three times.
      {Long("PSRDOP2A", "FINE", kDopValues + "5,7,8,44"), TableId::kPsrDop2,
       kDopHead + "2,3,0,0,0,0\n"},
      // No list at all: the walk stays on the count and reads it as a number.
      {Long("PSRDOP2A", "FINE", kDopValues + "3"), TableId::kPsrDop2, kDopHead + "3,0,0,0,0,0\n"},
      {Compact("SPPDOPA", kCompactValues + "3,80"), TableId::kSppDop,
       kCompactHead + "0,0,3,0,0,1\n"},
      // A huge count doesn't walk forever.
      {Long("PSRDOP2A", "FINE", kDopValues + "2000000000,5"), TableId::kPsrDop2,
       kDopHead + "2000000000,0,0,0,0,0\n"},
  });
}

TEST(DopTest, BaseAndHeadingTablesAreFlushedEachRow) {
  Chain chain;
  chain.Feed(Long("RTKDOPBASE2A", "FINESTEERING", kDopValues + "1,5"));
  chain.Feed(Compact("ADRDOPHA", kCompactValues + "1,5"));
  chain.Feed(Long("RTKDOPA", "FINESTEERING", kDopValues + "1,5"));
  EXPECT_EQ(chain.Unflushed(TableId::kRtkDopBase2), kDopHead + "1,0,0,0,0,0\n");
  EXPECT_EQ(chain.Unflushed(TableId::kAdrDopH), kCompactHead + "1,0,0,0,0,1\n");
  EXPECT_EQ(chain.Unflushed(TableId::kRtkDop), "");
}

TEST(TimeTest, TimeaAndRectimea) {
  const std::string body =
      "VALID,1.953377165e-09,7.481712815e-08,-12.99999999492,2005,8,25,17,53,17000,VALID";
  const std::string timea = "#TIMEA,COM1,0,86.5,FINESTEERING,1337,410010.000,00000000,9924,1984;" +
                            body + "*e2fc088c\r\n";
  NormalisedSentence rectime;
  ASSERT_TRUE(NormaliseSingle(
      Compact("RECTIMEA", "CONVERGING,0.0,0.0,-18.0,2022,5,20,23,47,12000,WARNING").c_str(),
      "TIMEA", &rectime));
  NormalisedSentence cut;
  ASSERT_TRUE(NormaliseSingle(Compact("RECTIMEA", "SOMETHING,0.0").c_str(), "TIMEA", &cut));

  TempFolder folder;
  OutFile table;
  table.Open(folder / "time.txt", FileMode::kBinary);
  ExtractTime(timea.c_str(), &table, 0);
  ExtractTime(rectime.text, &table, 1);
  // A field that is missing stays 0; an unknown word is -1.
  ExtractTime(cut.text, &table, 1);
  ExtractTime("#TIMEA,COM1,0,86.5,FINESTEERING,1337*1\r\n", &table, 0);
  // Each row is flushed at once.
  EXPECT_EQ(FileBytes(folder / "time.txt"),
            "1337,410010.000,0,   1.953377165e-09,   7.481712815e-08,  -1.299999999e+01,2005, "
            "8,25,17,53,17000,1,0\n"
            "2210,431250.500,1,   0.000000000e+00,   0.000000000e+00,  -1.800000000e+01,2022, "
            "5,20,23,47,12000,2,1\n"
            "2210,431250.500,-1,   0.000000000e+00,   0.000000000e+00,   0.000000000e+00,0, 0, "
            "0, 0, 0,    0,-1,1\n");
}

}  // namespace
}  // namespace tarnlog
