// synthcap, run as a program: reproducible bytes, the size asked for, valid
// checksums and receiver-shaped sentences, and every kind of damage.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "extract/checksums.h"
#include "extract/dispatch.h"
#include "extract/extract_main.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::RunAndCapture;
using testing::RunResult;
using testing::TempFolder;

constexpr std::size_t kForceCutLength = 23552;

RunResult RunSynthcap(std::vector<std::string> args, const std::string& output) {
  args.insert(args.begin(), TARNLOG_SYNTHCAP_BIN);
  args.push_back("-o");
  args.push_back(output);
  return RunAndCapture(args);
}

// The capture written for `args`; fails the test when synthcap fails.
std::string Capture(const std::vector<std::string>& args) {
  TempFolder temp;
  const RunResult result = RunSynthcap(args, temp / "capture.log");
  EXPECT_EQ(result.status, 0) << result.err;
  return FileBytes(temp / "capture.log");
}

std::uint32_t ReadLe32(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// A whole binary frame at `at` whose CRC holds: its length, else 0.
std::size_t ValidFrameAt(std::string_view bytes, std::size_t at) {
  if (bytes.substr(at, 4) != "\xAA\x44\x12\x1C" || at + 28 > bytes.size()) return 0;
  const std::size_t body = 28 + (static_cast<unsigned char>(bytes[at + 8]) |
                                 static_cast<unsigned char>(bytes[at + 9]) << 8);
  if (at + body + 4 > bytes.size()) return 0;
  return Crc32Block(bytes.data() + at, body) == ReadLe32(bytes, at + body) ? body + 4 : 0;
}

// A text sentence without its line end: "#...*xxxxxxxx" or "$...*hh" with
// exactly one star.
bool ChecksumHolds(std::string_view line) {
  const std::size_t star = line.find('*');
  if (star == std::string_view::npos || line.find('*', star + 1) != std::string_view::npos) {
    return false;
  }
  const std::string stored(line.substr(star + 1));
  char* end = nullptr;
  const unsigned long value = std::strtoul(stored.c_str(), &end, 16);
  if (line[0] == '$') {
    return stored.size() == 2 && *end == '\0' && value == NmeaXor(star - 1, line.data() + 1);
  }
  return stored.size() == 8 && *end == '\0' && value == Crc32Block(line.data() + 1, star - 1);
}

// Cuts a capture written without faults into its text sentences (line ends
// taken off) and counts its binary frames; anything else fails the test.
struct CleanCapture {
  std::vector<std::string_view> sentences;
  int frames = 0;
};
CleanCapture SplitClean(std::string_view capture) {
  CleanCapture clean;
  std::size_t at = 0;
  while (at < capture.size()) {
    if (const std::size_t frame = ValidFrameAt(capture, at)) {
      ++clean.frames;
      at += frame;
      continue;
    }
    const std::size_t end = capture.find("\r\n", at);
    if (end == std::string_view::npos) {
      ADD_FAILURE() << "no line end after byte " << at;
      break;
    }
    const std::string_view line = capture.substr(at, end - at);
    EXPECT_TRUE(!line.empty() && std::string_view("#$%").find(line[0]) != std::string_view::npos)
        << "not a sentence at byte " << at;
    clean.sentences.push_back(line);
    at = end + 2;
  }
  return clean;
}

// "#BESTPOSA,..." gives "BESTPOSA"; "$GNGGA,..." gives "GGA" (the talker
// dropped), "$GNGGAH,..." "GGAH".
std::string MessageName(std::string_view sentence) {
  const std::string_view name = sentence.substr(1, sentence.find_first_of(",;") - 1);
  return std::string(sentence[0] == '$' ? name.substr(2) : name);
}

std::vector<std::string_view> Fields(std::string_view text) {
  std::vector<std::string_view> fields;
  std::size_t begin = 0;
  for (;;) {
    const std::size_t comma = text.find(',', begin);
    fields.push_back(text.substr(begin, comma - begin));
    if (comma == std::string_view::npos) return fields;
    begin = comma + 1;
  }
}

// The body between ';' and '*'.
std::string_view Body(std::string_view sentence) {
  const std::size_t semicolon = sentence.find(';');
  return sentence.substr(semicolon + 1, sentence.rfind('*') - semicolon - 1);
}

// Every message the extraction dispatches, by the name its sentences carry.
// "XRTK" is "$GNXRTK", whose type stands one character later than a
// standard sentence's.
const std::set<std::string>& EveryName() {
  static const std::set<std::string> names = {
      // Dispatched in the first stage.
      "DOPHD2A", "BESTNAVA", "BESTNAVHA", "CLKDTA", "BESTNAVXYZA", "BESTNAVXYZHA", "SPPNAVA",
      "SPPNAVHA", "RECTIMEA", "ADRNAVA", "ADRNAVHA", "SPPDOPA", "SPPDOPHA", "PPPNAVA", "PPPDOPA",
      "MPPPDOPA", "MPPPPOSA", "ADRDOPA", "ADRDOPHA", "OBSVMA", "OBSVMHA", "SLANTAPA", "GGAH",
      "BASEINFOA", "SLANTSTATUSA", "RXSTATUSA", "HWSTATUSA", "FREQJAMSTATUSA", "MOWSTATUSA",
      "BESTPOSBASE2A", "GGABASE2", "TROPINFOA", "GST", "GBS", "IMUATTA", "PPSSTATUSA", "GYRATTSA",
      "RAWGYR2A", "INSATTCOVSA", "SPPNAVENUA", "RTKPOSBASE2A", "PSRPOSBASE2A", "MATCHEDPOSBASE2A",
      "PSRVELBASE2A", "RTKVELBASE2A", "PSRDOPBASE2A", "RTKDOPBASE2A", "BASE2BIASA", "ENVINFOA",
      // The position set.
      "RTKPOSA", "MATCHEDPOSA", "GGA", "PPPPOSA", "MATCHEDPOSHA", "BESTPOSA", "PSRPOSA",
      // The third stage.
      "RANGEA", "BASERANGEA", "RTKVELA", "PSRVELA", "PSRDOPA", "RTKDOPA", "TIMEA", "RMC", "VTG",
      "BESTVELA", "NTR", "DRPVAA", "PVTSOLA", "PERFSTATA", "BSLNENUHD2A", "ODOMETERA", "EVENTALLA",
      "RAWIMUXA", "RTKPOS2A", "RTKVEL2A", "RTKDOP2A", "MATCHEDPOS2A", "BESTGNSSPOSA", "INSPVAA",
      "RAWMAGXA", "RAWIMUA", "BESTPOS1A", "BESTPOS2A", "BESTVEL1A", "BESTVEL2A", "PSRPOS2A",
      "MPSRPOSA", "PSRVEL2A", "PSRDOP2A", "BESTXYZA", "RTKDOPPLERVELA", "INSPVAXA", "RANGEHA",
      "AGRICA", "CANGLEA", "FANGLEA", "ANGVELA", "TIMEDWHEELDATAA", "BSLNXYZA", "TPINFOA",
      "VELDATAA", "TSVNUMA", "XRTK", "GNS"};
  return names;
}

// "missing: A B; extra: C" between what a capture holds and what it should;
// empty when they agree.
std::string NameDifference(const std::set<std::string>& seen,
                           const std::set<std::string>& expected) {
  std::string missing, extra;
  for (const std::string& name : expected) {
    if (!seen.contains(name)) missing += " " + name;
  }
  for (const std::string& name : seen) {
    if (!expected.contains(name)) extra += " " + name;
  }
  return missing.empty() && extra.empty() ? "" : "missing:" + missing + "; extra:" + extra;
}

TEST(SynthcapTest, SameArgumentsGiveTheSameBytes) {
  const std::vector<std::string> args = {"--size", "200000", "--seed", "42", "--faults"};
  const std::string first = Capture(args);
  EXPECT_EQ(Capture(args), first);
  EXPECT_NE(Capture({"--size", "200000", "--seed", "43", "--faults"}), first);
  EXPECT_NE(Capture({"--size", "200000", "--seed", "42"}), first);
}

TEST(SynthcapTest, WritesAtLeastTheSizeAndStopsBehindASentence) {
  struct Case {
    std::string size, rate;
    std::size_t bytes;
  };
  const std::vector<Case> cases = {
      {"0", "10", 0},           {"1", "10", 1},     {"5000", "1", 5000},
      {"300000", "20", 300000}, {"1K", "10", 1024}, {"1M", "5", 1 << 20},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.size);
    const std::string capture = Capture({"--size", c.size, "--seed", "5", "--rate", c.rate});
    ASSERT_GE(capture.size(), c.bytes);
    // Less than one more epoch behind the size.
    EXPECT_LT(capture.size(), c.bytes + 8192);
    if (c.bytes > 0) SplitClean(capture);
  }
}

// "full" and "every" both open with every message; the rare ones come again
// after ten seconds in "full" and every second in "every".
TEST(SynthcapTest, EveryMessageAndEveryChecksumWithoutFaults) {
  for (const char* mix : {"full", "every"}) {
    for (const char* seed : {"1", "2", "3"}) {
      SCOPED_TRACE(std::string(mix) + " " + seed);
      const std::string capture = Capture({"--size", "300000", "--seed", seed, "--mix", mix});
      const CleanCapture clean = SplitClean(capture);
      std::set<std::string> seen;
      for (const std::string_view sentence : clean.sentences) {
        EXPECT_TRUE(ChecksumHolds(sentence)) << sentence;
        seen.insert(MessageName(sentence));
      }
      EXPECT_EQ(NameDifference(seen, EveryName()), "");
      EXPECT_GT(clean.frames, 0);
    }
  }
}

TEST(SynthcapTest, RareMessagesComeEveryTenSecondsInFullAndEverySecondInEvery) {
  struct Case {
    std::string mix;
    int perfstat;  // in the first 35 seconds at 1 Hz: seconds 0, 10, 20, 30
  };
  for (const Case& c : std::vector<Case>{{"full", 4}, {"every", 35}}) {
    SCOPED_TRACE(c.mix);
    const std::string capture =
        Capture({"--size", "8M", "--seed", "6", "--rate", "1", "--mix", c.mix});
    int perfstat = 0, bestpos = 0;
    for (const std::string_view sentence : SplitClean(capture).sentences) {
      if (bestpos > 35) break;
      perfstat += sentence.starts_with("#PERFSTATA,") ? 1 : 0;
      bestpos += sentence.starts_with("#BESTPOSA,") ? 1 : 0;
    }
    ASSERT_GT(bestpos, 35) << "capture too short";
    EXPECT_EQ(perfstat, c.perfstat);
  }
}

TEST(SynthcapTest, LongHeadersAdvanceAtTheRate) {
  for (const int rate : {1, 3, 10, 20}) {
    SCOPED_TRACE(rate);
    const std::string capture =
        Capture({"--size", "400000", "--seed", "9", "--rate", std::to_string(rate)});
    std::vector<double> seconds;
    for (const std::string_view sentence : SplitClean(capture).sentences) {
      if (!sentence.starts_with("#BESTPOSA,")) continue;
      const std::vector<std::string_view> header = Fields(sentence.substr(0, sentence.find(';')));
      ASSERT_EQ(header.size(), 10u) << sentence;
      EXPECT_EQ(header[1], "COM1");
      EXPECT_EQ(header[4], "FINESTEERING");
      EXPECT_EQ(
          std::string(header[7]) + "," + std::string(header[8]) + "," + std::string(header[9]),
          "02000000,b1f6,16248");
      seconds.push_back(std::stod(std::string(header[6])));
    }
    ASSERT_GT(seconds.size(), 10u);
    for (std::size_t i = 1; i < seconds.size(); ++i) {
      // 1000 / 3 ms rounds to 333 or 334 ms.
      EXPECT_NEAR(seconds[i] - seconds[i - 1], 1.0 / rate, 0.0007) << i;
    }
  }
}

TEST(SynthcapTest, CompactHeadersAndCombinedLogsSplitBehindTheTwentyFirstComma) {
  const std::string capture = Capture({"--size", "300000", "--seed", "4", "--mix", "compact"});
  const std::set<std::string_view> combined = {"#BESTNAVA", "#BESTNAVHA", "#ADRNAVA", "#ADRNAVHA",
                                               "#SPPNAVA",  "#SPPNAVHA",  "#PPPNAVA"};
  int splits = 0;
  for (const std::string_view sentence : SplitClean(capture).sentences) {
    SCOPED_TRACE(sentence);
    const std::vector<std::string_view> header = Fields(sentence.substr(0, sentence.find(';')));
    ASSERT_EQ(header.size(), 10u);
    EXPECT_EQ(header[2], "GPS");
    EXPECT_EQ(header[3], "FINE");
    EXPECT_EQ(header[6], "0");
    if (!combined.contains(header[0])) continue;
    const std::vector<std::string_view> fields = Fields(Body(sentence));
    ASSERT_EQ(fields.size(), 21u + 8u);
    // Status words open both blocks; the position block ends in hex masks.
    EXPECT_TRUE(fields[0] == "SOL_COMPUTED" || fields[0] == "INSUFFICIENT_OBS");
    EXPECT_TRUE(fields[21] == "SOL_COMPUTED" || fields[21] == "INSUFFICIENT_OBS");
    EXPECT_EQ(fields[6], "WGS84");
    EXPECT_EQ(fields[20].size(), 2u);
    ++splits;
  }
  EXPECT_GT(splits, 100);
}

TEST(SynthcapTest, ObservationLogsCarryTwentyToFortyChannels) {
  const std::string capture = Capture(
      {"--size", "2M", "--seed", "11", "--mix", "RANGEA,BASERANGEA,RANGEHA,OBSVMA,OBSVMHA"});
  std::set<std::size_t> counts;
  for (const std::string_view sentence : SplitClean(capture).sentences) {
    const std::vector<std::string_view> fields = Fields(Body(sentence));
    const std::size_t channels = std::stoul(std::string(fields[0]));
    const std::size_t perChannel = sentence.starts_with("#OBSVM") ? 11 : 10;
    ASSERT_EQ(fields.size(), 1 + channels * perChannel) << sentence.substr(0, 100);
    EXPECT_GE(channels, 20u);
    EXPECT_LE(channels, 40u);
    counts.insert(channels);
  }
  EXPECT_GT(counts.size(), 1u);  // satellites rise and set
}

// Field counts the tables' readers rely on (a reader skips to the n-th
// field or reads a fixed run of them), and the bus words' shape.
TEST(SynthcapTest, BodiesHaveTheirLayouts) {
  const std::map<std::string, std::size_t> fieldCounts = {
      {"CLKDTA", 20},         {"RXSTATUSA", 18},   {"HWSTATUSA", 10},      {"ENVINFOA", 5},
      {"FREQJAMSTATUSA", 12}, {"MOWSTATUSA", 24},  {"TROPINFOA", 6},       {"PPSSTATUSA", 5},
      {"SLANTSTATUSA", 5},    {"TPINFOA", 4},      {"TSVNUMA", 5},         {"SLANTAPA", 12},
      {"BSLNENUHD2A", 18},    {"BSLNXYZA", 17},    {"BASE2BIASA", 9},      {"SPPNAVENUA", 8},
      {"INSPVAA", 12},        {"INSPVAXA", 23},    {"DRPVAA", 21},         {"RAWIMUXA", 11},
      {"RAWIMUA", 9},         {"RAWMAGXA", 5},     {"IMUATTA", 4},         {"GYRATTSA", 4},
      {"RAWGYR2A", 5},        {"INSATTCOVSA", 11}, {"TIMEDWHEELDATAA", 6}, {"ODOMETERA", 4},
      {"VELDATAA", 13},       {"EVENTALLA", 27},   {"PERFSTATA", 55},      {"CANGLEA", 4},
      {"FANGLEA", 4},         {"ANGVELA", 4},      {"BESTXYZA", 28},       {"BESTNAVXYZA", 28},
      {"TIMEA", 11},          {"RECTIMEA", 11},    {"BASEINFOA", 7}};
  const std::string capture = Capture({"--size", "400000", "--seed", "8", "--mix", "every"});
  std::set<std::string> checked;
  for (const std::string_view sentence : SplitClean(capture).sentences) {
    const std::string name = MessageName(sentence);
    const auto count = fieldCounts.find(name);
    if (count == fieldCounts.end()) continue;
    SCOPED_TRACE(sentence);
    const std::vector<std::string_view> fields = Fields(Body(sentence));
    EXPECT_EQ(fields.size(), count->second);
    if (name.ends_with("ANGLEA") || name == "ANGVELA") {
      for (const std::string_view word : fields) {
        EXPECT_EQ(word.size(), 4u);
        EXPECT_EQ(word.find_first_not_of("0123456789abcdef"), std::string_view::npos);
      }
    }
    checked.insert(name);
  }
  EXPECT_EQ(checked.size(), fieldCounts.size());
}

// Every sentence of an "every" capture goes through the chain as the driver
// walks it, and every row of the chain takes at least one sentence.
TEST(SynthcapTest, EveryMixReachesEveryRowOfTheChain) {
  std::vector<std::string> texts = FullExtractionVector("out", "cap.log");
  std::vector<char*> argv = ArgvOf(texts);
  const ExtractOptions options = ParseExtractOptions(125, argv.data());
  const Dispatcher dispatcher;
  const std::vector<DispatchRow>& rows = DispatchRows();
  std::vector<int> hits(rows.size(), 0);
  for (const char* seed : {"1", "2"}) {
    const std::string capture = Capture({"--size", "200000", "--seed", seed, "--mix", "every"});
    for (const std::string_view line : SplitClean(capture).sentences) {
      const std::string sentence = std::string(line) + "\r\n";
      PatternHits found;
      dispatcher.Match(sentence.c_str(), sentence.size(), found);
      const DispatchRow* taken = nullptr;
      for (int stage = 1; stage <= 3 && taken == nullptr; ++stage) {
        const DispatchRow* row =
            dispatcher.Classify(stage, sentence.c_str(), sentence.size(), found, options);
        if (row) ++hits[row - rows.data()];
        if (row && !row->goesOn) taken = row;
      }
      EXPECT_TRUE(taken != nullptr || line.starts_with("#MATCHEDPOSBASE2A,")) << line;
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    // Its text is one letter off the log's name: no receiver writes it.
    if (std::string_view(rows[i].text) == "#ALIGNBSLNEUA") continue;
    EXPECT_GT(hits[i], 0) << "stage " << rows[i].stage << " row " << rows[i].text;
  }
}

TEST(SynthcapTest, PositionTypesVaryAndNoneGoesWithInsufficientObservations) {
  const std::string capture =
      Capture({"--size", "3M", "--seed", "12", "--rate", "1", "--mix", "BESTPOSA"});
  std::map<std::string, int> types;
  for (const std::string_view sentence : SplitClean(capture).sentences) {
    const std::vector<std::string_view> fields = Fields(Body(sentence));
    ASSERT_EQ(fields.size(), 21u);
    EXPECT_EQ(fields[1] == "NONE", fields[0] == "INSUFFICIENT_OBS") << sentence;
    ++types[std::string(fields[1])];
  }
  ASSERT_EQ(types.size(), 5u);
  for (const char* type : {"NARROW_INT", "SINGLE", "PSRDIFF", "NARROW_FLOAT", "NONE"}) {
    EXPECT_GT(types[type], 0) << type;
  }
  EXPECT_GT(types["NARROW_INT"], types["NARROW_FLOAT"]);
  EXPECT_GT(types["SINGLE"], types["NONE"]);
}

TEST(SynthcapTest, MixSelectsTheSentences) {
  struct Case {
    std::string mix;
    std::set<std::string> names;  // "" stands for binary frames
  };
  const std::vector<Case> cases = {
      {"nmea", {"GGA", "RMC", "VTG", "GST", "GGAH", "GGABASE2", "GBS", "GNS", "NTR", "XRTK"}},
      {"brief", {"CANGLEA", "ANGVELA", "FANGLEA", "GYRATTSA", "RAWGYR2A", "INSATTCOVSA"}},
      {"PPPDOPA:compact,RTK", {"PPPDOPA", "XRTK"}},
      {"BESTPOSA,GGA", {"BESTPOSA", "GGA"}},
      {"binary", {""}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mix);
    // The sentences are views into the capture, which must outlive them.
    const std::string capture = Capture({"--size", "50000", "--seed", "1", "--mix", c.mix});
    const CleanCapture clean = SplitClean(capture);
    std::set<std::string> seen;
    for (const std::string_view sentence : clean.sentences)
      seen.insert(MessageName(sentence));
    if (clean.frames > 0) seen.insert("");
    EXPECT_EQ(seen, c.names);
  }
}

// Damage is told from the bytes: each kind leaves its own trace.
TEST(SynthcapTest, FaultsIncludeEveryKindOfDamage) {
  const std::string capture = Capture({"--size", "400000", "--seed", "1", "--faults"});
  std::set<std::string> found;
  std::size_t lineStart = 0;
  while (lineStart < capture.size()) {
    std::size_t end = capture.find('\n', lineStart);
    if (end == std::string::npos) end = capture.size();
    std::string_view line(capture.data() + lineStart, end - lineStart);
    lineStart = end + 1;
    if (line.size() > kForceCutLength) {
      found.insert("overlong line");
      continue;
    }
    const bool crlf = !line.empty() && line.back() == '\r';
    if (crlf) line.remove_suffix(1);
    if (line.empty() || std::string_view("#$%").find(line[0]) == std::string_view::npos) continue;
    const std::size_t nextStart = line.find_first_of("#$%", 1);
    if (line.starts_with("#PASSCOM1A,")) {
      // The wrapper's own CRC runs up to the last star.
      const std::size_t star = line.rfind('*');
      if (std::strtoul(std::string(line.substr(star + 1)).c_str(), nullptr, 16) ==
              Crc32Block(line.data() + 1, star - 1) &&
          line.find("\\x0d\\x0a*") != std::string_view::npos) {
        found.insert("passcom");
      }
    } else if (line.find('*') == std::string_view::npos) {
      if (crlf && nextStart == std::string_view::npos) found.insert("truncated");
    } else if (nextStart != std::string_view::npos && nextStart < line.find('*')) {
      found.insert("cut by next");
    } else if (line.size() == line.find('*') + (line[0] == '$' ? 3 : 9)) {
      if (!ChecksumHolds(line)) {
        found.insert("bad checksum");
      } else if (!crlf) {
        found.insert("lf only");
      } else if (line.size() > 2000 && line.find(std::string(2000, '0')) != line.npos) {
        found.insert("overlong field");
      }
    }
  }
  for (std::size_t at = capture.find("\xAA\x44\x12"); at != std::string::npos;
       at = capture.find("\xAA\x44\x12", at + 1)) {
    if (ValidFrameAt(capture, at) == 0) found.insert("stray sync");
  }
  const std::set<std::string> expected = {"overlong line",  "passcom",      "truncated",
                                          "cut by next",    "bad checksum", "lf only",
                                          "overlong field", "stray sync"};
  EXPECT_EQ(found, expected);
}

TEST(SynthcapTest, RejectsBadArgumentsWithoutWriting) {
  const std::vector<std::vector<std::string>> cases = {
      {"--seed", "1"},
      {"--size", "100"},
      {"--size", "100", "--seed", "1", "--rate", "0"},
      {"--size", "100", "--seed", "1", "--rate", "21"},
      {"--size", "100", "--seed", "1", "--mix", "NOSUCHLOG"},
      {"--size", "100", "--seed", "1", "--mix", "BESTPOSA,"},
      {"--size", "12X", "--seed", "1"},
      {"--size", "-5", "--seed", "1"},
      {"--size", "100", "--seed", "1", "--colour"},
      {"--size", "100", "--seed"},
  };
  for (const std::vector<std::string>& args : cases) {
    SCOPED_TRACE(args.back());
    TempFolder temp;
    const RunResult result = RunSynthcap(args, temp / "capture.log");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.err.starts_with("synthcap: ")) << result.err;
    EXPECT_EQ(FileBytes(temp / "capture.log"), "<missing>");
  }
}

}  // namespace
}  // namespace tarnlog
