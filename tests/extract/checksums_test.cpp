#include "extract/checksums.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace tarnlog {
namespace {

const std::string kBestPos =
    "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,"
    "0.000,18,18,18,0,00,02,11,01*c3194e35";

std::size_t StarOf(const std::string& line) {
  return line.rfind('*');
}

// The plain byte-at-a-time CRC, to hold the fast one against.
std::uint32_t ByteWiseCrc(const std::string& bytes) {
  std::uint32_t crc = 0;
  for (unsigned char byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
  }
  return crc;
}

TEST(Crc32BlockTest, MatchesTheByteWiseCrcAtEveryLengthAndAlignment) {
  std::string bytes;
  for (int n = 0; n < 300; ++n)
    bytes.push_back(static_cast<char>((n * 131 + 7) & 0xFF));
  for (std::size_t offset = 0; offset < 8; ++offset) {
    for (std::size_t length = 0; length + offset <= 40; ++length) {
      const std::string part = bytes.substr(offset, length);
      EXPECT_EQ(Crc32Block(part.data(), part.size()), ByteWiseCrc(part)) << offset << "+" << length;
    }
  }
  EXPECT_EQ(Crc32Block(bytes.data(), bytes.size()), ByteWiseCrc(bytes));
  EXPECT_EQ(Crc32Block("", 0), 0u);
  // Register starts at 0 and isn't inverted: "123456789" isn't 0xCBF43926.
  EXPECT_EQ(Crc32Block("123456789", 9), ByteWiseCrc("123456789"));
  EXPECT_NE(Crc32Block("123456789", 9), 0xCBF43926u);
}

TEST(VerifyAsciiCrcTest, PublicExampleVerifiesAndAnyChangedByteFails) {
  ASSERT_TRUE(VerifyAsciiCrc(kBestPos.c_str(), kBestPos.size(), StarOf(kBestPos)));
  for (std::size_t at = 1; at < kBestPos.size(); ++at) {
    std::string changed = kBestPos;
    changed[at] = changed[at] == '7' ? '8' : '7';
    if (kBestPos[at] == '*') continue;
    EXPECT_FALSE(VerifyAsciiCrc(changed.c_str(), changed.size(), StarOf(changed))) << at;
  }
}

TEST(VerifyAsciiCrcTest, StoredValueReadsLikeHexOfEitherCase) {
  struct Case {
    std::string tail;
    bool ok;
  };
  const std::vector<Case> cases = {
      {"*c3194e35", true},     {"*C3194E35", true},
      {"*c3194e35\r\n", true}, {"*c3194e35ff", true},  // only eight digits are read
      {"*c3194e3", false},     {"*", false},
      {"*zz", false},          {"*c3194e36", false},
  };
  const std::string body = kBestPos.substr(0, StarOf(kBestPos));
  for (const Case& c : cases) {
    const std::string line = body + c.tail;
    SCOPED_TRACE(c.tail);
    EXPECT_EQ(VerifyAsciiCrc(line.c_str(), line.size(), body.size()), c.ok);
  }
}

std::string Hex8(std::uint32_t value) {
  char text[9];
  std::snprintf(text, sizeof text, "%08x", value);
  return text;
}

TEST(VerifyAsciiCrcTest, SpanEndsAtTheGivenStarButTheValueIsReadAtTheFirstStar) {
  // Right value behind the last star only: the first star's value is read.
  const std::string lastHolds = "#A,1*00000000*" + Hex8(Crc32Block("A,1*00000000", 12));
  EXPECT_FALSE(VerifyAsciiCrc(lastHolds.c_str(), lastHolds.size(), lastHolds.rfind('*')));
  // Right value behind the first star: it verifies only when the caller's
  // star index also ends the span there.
  const std::string firstHolds = "#A,1*" + Hex8(Crc32Block("A,1", 3)) + "*ffffffff";
  EXPECT_FALSE(VerifyAsciiCrc(firstHolds.c_str(), firstHolds.size(), firstHolds.rfind('*')));
  EXPECT_TRUE(VerifyAsciiCrc(firstHolds.c_str(), firstHolds.size(), firstHolds.find('*')));
}

TEST(VerifyAsciiCrcTest, StarIndexLimits) {
  EXPECT_FALSE(VerifyAsciiCrc(kBestPos.c_str(), kBestPos.size(), 0));
  EXPECT_FALSE(VerifyAsciiCrc(kBestPos.c_str(), kBestPos.size(), 30720));
  EXPECT_FALSE(VerifyAsciiCrc("#ABC", 4, 3));  // no star at all
  // A NUL ends the span early.
  std::string withNul = kBestPos;
  withNul[10] = '\0';
  EXPECT_FALSE(VerifyAsciiCrc(withNul.c_str(), withNul.size(), StarOf(kBestPos)));
}

TEST(VerifyNmeaChecksumTest, EitherLetterCaseAndTheLengthLimit) {
  const std::string gga =
      "$GPGGA,134658.00,5106.9792,N,11402.3003,W,2,09,1.0,1048.47,M,-16.27,M,08,AAAA*60";
  const std::size_t star = gga.find('*');
  EXPECT_EQ(NmeaXor(star - 1, gga.data() + 1), 0x60);
  struct Case {
    std::string line;
    bool ok;
  };
  const std::vector<Case> cases = {
      {"$GPXXX,1y*2B", true},  // 'G'^'P'^'X'^'X'^'X'^','^'1'^'y'
      {"$GPXXX,1y*2b", true},  {"$GPXXX,1y*2b\r\n", true}, {"$GPXXX,1y*2D", false},
      {"$GPXXX,1y*B2", false}, {"$GPXXX,1y*2", false},     {"$GPXXX,1y*", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    EXPECT_EQ(VerifyNmeaChecksum(c.line.c_str(), c.line.size(), c.line.find('*')), c.ok);
  }
  EXPECT_TRUE(VerifyNmeaChecksum(gga.c_str(), gga.size(), star));
  EXPECT_FALSE(VerifyNmeaChecksum(gga.c_str(), gga.size(), 0));

  // 255 bytes pass, 256 fail whatever the sum.
  std::string longLine = "$GPTXT," + std::string(255 - 7 - 3, 'A');
  const std::uint8_t sum = NmeaXor(longLine.size() - 1, longLine.data() + 1);
  char tail[4];
  std::snprintf(tail, sizeof tail, "*%02X", sum);
  longLine += tail;
  ASSERT_EQ(longLine.size(), 255u);
  EXPECT_TRUE(VerifyNmeaChecksum(longLine.c_str(), longLine.size(), longLine.find('*')));
  const std::string tooLong = longLine + "\n";
  EXPECT_FALSE(VerifyNmeaChecksum(tooLong.c_str(), tooLong.size(), tooLong.find('*')));
  EXPECT_FALSE(VerifyNmeaChecksum(tooLong.c_str(), 200, 256));
}

}  // namespace
}  // namespace tarnlog
