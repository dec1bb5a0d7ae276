#include "extract/range/observation_decoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace tarnlog {
namespace {

// The one RANGEA of OnceEachAgain.ASC: 12 GPS satellites on L1 C/A and L2.
std::string RealRange() {
  const std::string bytes =
      testing::FileBytes(testing::SourceDir() + "/tests/data/OnceEachAgain.ASC");
  const std::size_t start = bytes.find("#RANGEA");
  return bytes.substr(start, bytes.find('\n', start) + 1 - start);
}

std::unique_ptr<ObservationSet> Decode(ObservationLayout layout, const std::string& s,
                                       bool* read = nullptr) {
  auto set = std::make_unique<ObservationSet>();
  const bool ok = DecodeObservations(layout, s.c_str(), s.size(), set.get());
  if (read != nullptr) *read = ok;
  return set;
}

std::string RangeOf(const std::string& body) {
  return "#RANGEA,COM1,0,69.5,FINESTEERING,1687,420261.000,00000000,5103,3153;" + body +
         "*ef968926\r\n";
}

TEST(TrackingStatusTest, DecodesTheDocumentedFields) {
  struct Case {
    std::uint32_t word;
    int state, channel;
    bool phase, parity, code;
    int correlator;
    SatelliteSystem system;
    bool grouped;
    int signal;
    bool primary, phaseMeasurement, forced;
  };
  const std::vector<Case> cases = {
      // GPS L1 C/A and L2 P(Y) of the real RANGEA.
      {0x18109c04, 4, 0, true, true, true, 4, SatelliteSystem::kGps, true, 0, true, true, false},
      {0x11309c0b, 11, 0, true, true, true, 4, SatelliteSystem::kGps, true, 9, false, true, false},
      // BeiDou B1I (D2) on channel 9 without locks, and every bit set.
      {0x00840124, 4, 9, false, false, false, 0, SatelliteSystem::kBeiDou, false, 4, false, false,
       false},
      {0xFFFFFFFF, 31, 31, true, true, true, 7, SatelliteSystem::kOther, true, 31, true, true,
       true},
  };
  for (const Case& c : cases) {
    const TrackingStatus s = DecodeTrackingStatus(c.word);
    SCOPED_TRACE(::testing::PrintToString(c.word));
    EXPECT_EQ(s.trackingState, c.state);
    EXPECT_EQ(s.channel, c.channel);
    EXPECT_EQ(s.phaseLocked, c.phase);
    EXPECT_EQ(s.parityKnown, c.parity);
    EXPECT_EQ(s.codeLocked, c.code);
    EXPECT_EQ(s.correlator, c.correlator);
    EXPECT_EQ(s.system, c.system);
    EXPECT_EQ(s.grouped, c.grouped);
    EXPECT_EQ(s.signalType, c.signal);
    EXPECT_EQ(s.primaryL1, c.primary);
    EXPECT_EQ(s.phaseMeasurement, c.phaseMeasurement);
    EXPECT_EQ(s.forcedAssignment, c.forced);
  }
}

TEST(ObservationDecoderTest, RealRangeGivesEveryChannel) {
  const auto set = Decode(ObservationLayout::kRange, RealRange());
  ASSERT_EQ(set->channelCount, 24);
  EXPECT_TRUE(set->complete);
  const ObservationChannel& first = set->channels[0];
  EXPECT_EQ(first.prn, 16);
  EXPECT_EQ(first.pseudorange, 20612359.352);
  EXPECT_EQ(first.pseudorangeSigma, 0.035);
  EXPECT_EQ(first.adr, -103626277.506003);
  EXPECT_EQ(first.doppler, -1595.594);
  EXPECT_EQ(first.cn0, 50.3);
  EXPECT_EQ(first.lockTime, 4835.392);
  EXPECT_EQ(first.status, 0x18109c04u);
  const ObservationChannel& last = set->channels[23];
  EXPECT_EQ(last.prn, 23);
  EXPECT_EQ(last.signalType, 9);
  EXPECT_EQ(last.status, 0x01309d8bu);
  EXPECT_EQ(set->satellites[last.satellite].prn, 23);
  EXPECT_EQ(set->satellites[last.satellite].signals, 2);
}

TEST(ObservationDecoderTest, TalliesBySystemAndSignal) {
  // GPS 5 on two signals (the second without parity), BeiDou 5 (another
  // satellite, code locked only), GLONASS 38 with a C/N0 of 0 and no locks,
  // Galileo 11 twice on one signal type.
  const std::string s = RangeOf(
      "6,5,0,1.0,0.1,2.0,0.1,3.0,45.0,10.0,08109c04,"
      "5,0,1.0,0.1,2.0,0.1,3.0,39.5,10.0,0130140b,"
      "5,0,1.0,0.1,2.0,0.1,3.0,41.0,10.0,08141004,"
      "38,9,1.0,0.1,2.0,0.1,3.0,0.0,0.0,00010000,"
      "11,0,1.0,0.1,2.0,0.1,3.0,40.0,10.0,08531c04,"
      "11,0,1.0,0.1,2.0,0.1,3.0,40.0,10.0,08531c04");
  const auto set = Decode(ObservationLayout::kRange, s);
  ASSERT_EQ(set->channelCount, 6);
  EXPECT_EQ(set->channels[3].frequency, 9);
  const ObservationTallies& t = set->tallies;
  EXPECT_EQ(t.positiveCn0, 5);
  EXPECT_DOUBLE_EQ(t.MeanCn0(), (45.0 + 39.5 + 41.0 + 40.0 + 40.0) / 5);
  EXPECT_EQ(t.multiSignalChannels, 4);
  EXPECT_EQ(t.channelsBySystem[static_cast<int>(SatelliteSystem::kGalileo)], 2);
  EXPECT_EQ(ObservationCounts(t),
            (std::array<int, 15>{6, 5, 4, 2, 1, 1, 0, 1, 1, 0, 0, 0, 5, 4, 3}));
}

TEST(ObservationDecoderTest, ObsvmFieldsAreScaled) {
  const std::string s =
      "#OBSVMA,84,GPS,FINE,2210,431250000,0,0,18,12;2,"
      "0,10,21932562.457,-115255986.063,19,7,-3296.422,4625,0,1113.060,08109c04,"
      "17,10,21932566.810,-89809811.150,52,12,-2568.641,3980,0,1113.060,01309c0b*5e1a2b3c\r\n";
  const auto set = Decode(ObservationLayout::kObsvm, s);
  ASSERT_EQ(set->channelCount, 2);
  const ObservationChannel& ch = set->channels[1];
  EXPECT_EQ(ch.frequency, 17);
  EXPECT_EQ(ch.prn, 10);
  EXPECT_EQ(ch.adr, -89809811.150);
  EXPECT_DOUBLE_EQ(ch.pseudorangeSigma, 0.52);
  EXPECT_DOUBLE_EQ(ch.adrSigma, 0.0012);
  EXPECT_DOUBLE_EQ(ch.cn0, 39.80);
  EXPECT_EQ(ch.lockTime, 1113.060);
  EXPECT_EQ(set->tallies.multiSignalSatellites, 1);
}

// Numbers written in the less usual ways read as the C library reads them.
TEST(ObservationDecoderTest, UnusualNumbersReadAsStrtodReadsThem) {
  const std::string s = RangeOf(
      "2,+7,-1,2.0612359352e7,0.0000000000000350001,-103626277.5060031234,.5,-0,50.,"
      "123456789012345678,0x18109c04,"
      " 9,0,20612359.352,0.035,-1.0,0.006,1.0,44.5,1.0,1FFFFFFFF");
  const auto set = Decode(ObservationLayout::kRange, s);
  ASSERT_EQ(set->channelCount, 2);
  const ObservationChannel& a = set->channels[0];
  EXPECT_EQ(a.prn, 7);
  EXPECT_EQ(a.frequency, -1);
  EXPECT_EQ(a.pseudorange, std::strtod("2.0612359352e7", nullptr));
  EXPECT_EQ(a.pseudorangeSigma, std::strtod("0.0000000000000350001", nullptr));
  EXPECT_EQ(a.adr, std::strtod("-103626277.5060031234", nullptr));
  EXPECT_EQ(a.adrSigma, 0.5);
  EXPECT_TRUE(std::signbit(a.doppler));
  EXPECT_EQ(a.cn0, 50.0);
  EXPECT_EQ(a.lockTime, 123456789012345678.0);
  EXPECT_EQ(a.status, 0x18109c04u);
  EXPECT_EQ(set->channels[1].prn, 9);
  EXPECT_EQ(set->channels[1].status, 0xFFFFFFFFu);
}

// The count and the list disagree, or there is no list: the channels
// present, whole, and never a read past the sentence.
TEST(ObservationDecoderTest, CountsAgainstTheListPresent) {
  const std::string channel = "3,0,1.0,0.1,2.0,0.1,3.0,45.0,10.0,08109c04";
  struct Case {
    std::string sentence;
    bool read;
    int declared, channels;
    bool complete;
  };
  const std::vector<Case> cases = {
      {RangeOf("5," + channel + "," + channel), true, 5, 2, false},
      {RangeOf("100000," + channel), true, 100000, 1, false},
      // A channel cut short is not taken.
      {RangeOf("2," + channel + ",4,0,1.0,0.1"), true, 2, 1, false},
      {RangeOf("1," + channel + "," + channel), true, 1, 1, true},
      {RangeOf("0"), true, 0, 0, true},
      {RangeOf("-3," + channel), true, -3, 0, true},
      {RangeOf("x"), false, 0, 0, false},
      {"#RANGEA,COM1,0,69.5,FINESTEERING,1687,420261.000", false, 0, 0, false},
  };
  for (const Case& c : cases) {
    bool read = false;
    const auto set = Decode(ObservationLayout::kRange, c.sentence, &read);
    EXPECT_EQ(read, c.read) << c.sentence;
    EXPECT_EQ(set->declared, c.declared) << c.sentence;
    EXPECT_EQ(set->channelCount, c.channels) << c.sentence;
    EXPECT_EQ(set->complete, c.complete) << c.sentence;
  }
}

TEST(ObservationDecoderTest, LongListStopsAtCapacity) {
  std::string body = std::to_string(kMaxObservationChannels + 10);
  for (int i = 0; i < kMaxObservationChannels + 10; ++i)
    body += ',' + std::to_string(i % 200) + ",0,1,1,1,1,1,40,1,08109c04";
  const auto set = Decode(ObservationLayout::kRange, RangeOf(body));
  EXPECT_EQ(set->channelCount, kMaxObservationChannels);
  EXPECT_FALSE(set->complete);
  EXPECT_EQ(set->tallies.satellites, 200);
  EXPECT_EQ(set->tallies.multiSignalChannels, kMaxObservationChannels);
}

// Cut anywhere into a buffer of its exact size: no read past the cut, and
// the channels only grow as the text does.
TEST(ObservationDecoderTest, CutSentencesStayInside) {
  const std::string full = RealRange();
  int previous = 0;
  for (std::size_t n = 0; n <= full.size(); ++n) {
    auto buffer = std::make_unique<char[]>(n + 1);
    full.copy(buffer.get(), n);
    buffer[n] = '\0';
    ObservationSet set;
    DecodeObservations(ObservationLayout::kRange, buffer.get(), n, &set);
    EXPECT_GE(set.channelCount, previous);
    EXPECT_LE(set.channelCount, 24);
    previous = set.channelCount;
  }
  EXPECT_EQ(previous, 24);
}

}  // namespace
}  // namespace tarnlog
