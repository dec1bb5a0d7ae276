#include "extract/nmea/nmea_extractors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chain_harness.h"
#include "extract/dispatch.h"
#include "extract/extract_main.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

// Every table of a full run, fed sentence by sentence through the chain.
class Chain : public testing::ChainHarness {
 public:
  Chain() : ChainHarness(Tables::kFullVector) {}
};

// A GGA over Bend, Oregon, and the columns of its row behind day and seconds.
std::string Gga(const std::string& name, const std::string& time, int quality = 1) {
  return "$" + name + "," + time + ",4404.1306024,N,12118.8446777,W," + std::to_string(quality) +
         ",12,0.49,1129.913,M,-21.350,M,1.0,0278*4C\r\n";
}
std::string GgaRow(int day, const std::string& seconds, int talker, int quality = 1) {
  return std::to_string(day) + "," + seconds + ",44.06884337333,-121.31407796167,1108.5630,0.49," +
         std::to_string(quality) + ",12,1.0,-21.3500,0278," + std::to_string(talker) + "\n";
}
std::string Rmc(const std::string& time, const std::string& status = "A",
                const std::string& speed = "0.013") {
  return "$GNRMC," + time + "," + status + ",4404.1306024,N,12118.8446777,W," + speed +
         ",,231221,,,D,V*04\r\n";
}

struct Case {
  std::string sentence;
  TableId table;
  std::string row;  // "" when nothing is written
};

TEST(NmeaTest, RowsOfEveryMember) {
  const std::string place = "44.06884337333,-121.31407796167,";
  const std::vector<Case> cases{
      // A receiver's own GGA: no differential age.
      {"$GNGGA,014500.00,4404.1306024,N,12118.8446777,W,2,12,0.49,1129.913,M,-21.350,M,,0278*4C"
       "\r\n",
       TableId::kGga, "0,6300.000," + place + "1108.5630,0.49,2,12,0.0,-21.3500,0278,1\n"},
      {Gga("GNGGAH", "014500.00"), TableId::kGngGah, GgaRow(0, "6300.000", 1)},
      {Gga("GNGGABASE2", "014500.00"), TableId::kGgaBase2, GgaRow(0, "6300.000", 1)},
      {"$GNGNS,014500.00,4404.1306024,N,12118.8446777,W,RR,24,0.6,1129.913,-21.350,1.0,0278,V*"
       "00\r\n",
       TableId::kGns, "0,6300.000," + place + "1108.5630,0.60,4,24,1,-21.3500,0278,1\n"},
      {"$GNGNS,014500.00,4404.1306024,N,12118.8446777,W,RR,2a,0.6,1129.913,-21.350,1.0,0278*00\r\n",
       TableId::kGns, ""},
      {Rmc("014500.00"), TableId::kRmc,
       "6300.000," + place + "0.01300,0.000,0.0,2,231221,014500.00,1\n"},
      {Rmc("014500.00", "V"), TableId::kRmc, ""},
      {Rmc("014500.00", "A", "0.0x3"), TableId::kRmc, ""},
      // VTG without a GGA before it.
      {"$GNVTG,,T,,M,0.013,N,0.024,K,D*3C\r\n", TableId::kVtg,
       "0.000,0.000,0.000,0.01300,0.02400,2,0.000\n"},
      {"$GNVTG,abc,T,,M,0.013,N,0.024,K,D*3C\r\n", TableId::kVtg, ""},
      {"$GPGST,195959.00,0.30,0.36,0.26,283.74,0.26,0.36,0.68*68\r\n", TableId::kGst,
       "0,71999.000,0.260,0.360,0.680,195959.00\n"},
      // "%02d" takes two digits of the fraction; the comma must follow.
      {"$GPGST,195959.123,0.30,0.36,0.26,283.74,0.26,0.36,0.68*68\r\n", TableId::kGst, ""},
      {"$GNGBS,014500.00,1.2,0.9,2.1,07,0.012,-3.1,1.5,1,1*4B\r\n", TableId::kGbs,
       "0,6300.000,0.012,7,1\n"},
      {"$GPGBS,014500.00,1.2,0.9,2.1,07,0.012,-3.1,1.5*4B\r\n", TableId::kGbs,
       "0,6300.000,0.012,7,0\n"},
      {"$GPGBS,014500.00,1.2,0.9,2.1,,,,*4B\r\n", TableId::kGbs, ""},
      {"$GPNTR,024404.00,4,17253.242,+5210.449, -16447.587, -49.685,0004*40\r\n", TableId::kNtr,
       "9844.000,4,17253.242,5210.449,-16447.587,-49.685,4,024404.00\n"},
      {"$GNXRTK,014500.00,4404.1306024,N,12118.8446777,W,1108.563,1.5,FIX,4*00\r\n", TableId::kRtk,
       "0,6300.000," + place + "1108.5630,1.5000,FIX,4\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sentence);
    Chain chain;
    chain.Feed(c.sentence);
    EXPECT_EQ(chain.Bytes(c.table), c.row);
  }
}

TEST(NmeaTest, GgaDropsWhatItCantRead) {
  const std::string good = Gga("GPGGA", "014500.00");
  const std::vector<std::string> bad{
      good.substr(0, good.find('*')) + "*1FF\r\n",  // checksum above 0xFF
      good.substr(0, good.find('*')) + "\r\n",      // no checksum
      "$GPGGA,014500.00,4404.1306024,N,12118.8446777,W,1,12,0.49,1129.913,M,-21.350,M,1.0*4C\r\n",
      Gga("GPGGA", "014500"),  // no hundredths
      Gga("GPGGA", "014500.00", 0),
      Gga("QZGGA", "014500.00"),
      "$GPGGA," + std::string(600, '1') + "," + good.substr(7),
  };
  Chain chain;
  chain.Feed(bad);
  EXPECT_EQ(chain.Bytes(TableId::kGga), "");
}

TEST(NmeaTest, MidnightRolloverAndQualityZero) {
  Chain chain;
  chain.Feed({
      Gga("GNGGA", "235959.00"),
      // Quality 0 writes nothing, but its time turns the day all the same.
      Gga("GNGGA", "000000.00", 0),
      "$GNVTG,12.5,T,,M,0.013,N,0.024,K,A*3C\r\n",
      Gga("GNGGA", "000001.00"),
      Rmc("235959.00"),
      Rmc("000001.00"),
  });
  EXPECT_EQ(chain.Bytes(TableId::kGga), GgaRow(0, "86399.000", 1) + GgaRow(1, "86401.000", 1));
  EXPECT_EQ(chain.Bytes(TableId::kVtg), "86400.000,12.500,0.000,0.01300,0.02400,1,1129.913\n");
  EXPECT_EQ(chain.Bytes(TableId::kRmc),
            "86399.000,44.06884337333,-121.31407796167,0.01300,0.000,0.0,2,231221,235959.00,1\n"
            "86401.000,44.06884337333,-121.31407796167,0.01300,0.000,0.0,2,231221,000001.00,1\n");
}

TEST(NmeaTest, GgaStepsADayAtEightThousandTheOthersAtEightyThousand) {
  Chain chain;
  // Nine thousand seconds back in time.
  chain.Feed({Gga("GNGGA", "030000.00"), Gga("GNGGA", "003000.00"), Gga("GNGGAH", "030000.00"),
              Gga("GNGGAH", "003000.00"), Rmc("030000.00"), Rmc("003000.00")});
  EXPECT_EQ(chain.Bytes(TableId::kGga), GgaRow(0, "10800.000", 1) + GgaRow(1, "88200.000", 1));
  EXPECT_EQ(chain.Bytes(TableId::kGngGah), GgaRow(0, "10800.000", 1) + GgaRow(0, "1800.000", 1));
  EXPECT_EQ(chain.Bytes(TableId::kRmc),
            "10800.000,44.06884337333,-121.31407796167,0.01300,0.000,0.0,2,231221,030000.00,1\n"
            "1800.000,44.06884337333,-121.31407796167,0.01300,0.000,0.0,2,231221,003000.00,1\n");

  // A new file starts the days over; the tallies stay.
  chain.State().nmea.ResetDays();
  chain.Feed(Gga("GNGGA", "000001.00"));
  EXPECT_EQ(chain.Bytes(TableId::kGga),
            GgaRow(0, "10800.000", 1) + GgaRow(1, "88200.000", 1) + GgaRow(0, "1.000", 1));
  EXPECT_EQ(chain.State().nmea.ggaFixRows, 3);
}

TEST(NmeaTest, TalkersInterleaveInOneTable) {
  Chain chain;
  chain.Feed({Gga("GPGGA", "014500.00"), Gga("GNGGA", "014500.00"), Gga("BDGGA", "014501.00"),
              Gga("GBGGA", "014501.00"), Gga("GLGGA", "014502.00"), Gga("GAGGA", "014502.00")});
  EXPECT_EQ(chain.Bytes(TableId::kGga), GgaRow(0, "6300.000", 2) + GgaRow(0, "6300.000", 1) +
                                            GgaRow(0, "6301.000", 3) + GgaRow(0, "6301.000", 3) +
                                            GgaRow(0, "6302.000", 4) + GgaRow(0, "6302.000", 0));
}

TEST(NmeaTest, GgaSumsAndTallies) {
  Chain chain;
  chain.Feed({Gga("GPGGA", "014500.00", 4), Gga("GPGGA", "014501.00", 4),
              Gga("GNGGA", "014502.00", 1), Gga("GPGGA", "0145"),
              // The other GGA tables don't add to the GGA sums.
              Gga("GNGGAH", "014503.00", 4)});
  const PositionSums& sums = chain.State().Sums(SumSource::kGga);
  EXPECT_EQ(sums.counts[0], 2);
  EXPECT_EQ(sums.counts[2], 2);
  EXPECT_DOUBLE_EQ(sums.latitude, 2 * (44 + 4.1306024 / 60));
  EXPECT_DOUBLE_EQ(sums.longitude, -2 * (121 + 18.8446777 / 60));
  EXPECT_DOUBLE_EQ(sums.height, 2 * (1129.913 - 21.350));
  const NmeaState& nmea = chain.State().nmea;
  EXPECT_EQ(nmea.gpggaSentences, 3);  // the one with a bad time too
  EXPECT_EQ(nmea.ggaRtkFixes, 2);
  EXPECT_EQ(nmea.ggaFixRows, 3);
}

}  // namespace
}  // namespace tarnlog
