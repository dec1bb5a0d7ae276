// The record-time extraction: the bytes of each kind of time line, the
// filter's checks and masks, the GGA day count, damage, the block/mapping
// boundary, and golden files from real recordings.
#include "extract/record_time/record_time.h"
#include "platform/folders.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <algorithm>

#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

// "#<text>*crc\r\n"
std::string Log(const std::string& text, bool holds = true) {
  return testing::WithAsciiCrc(text, '#', "\r\n", holds);
}
std::string Nmea(const std::string& text, bool holds = true) {
  return testing::WithNmeaChecksum(text, "\r\n", holds);
}

// A long-header log of `name` at week and seconds with body `body`.
std::string LongLog(const std::string& name, int week, const std::string& seconds,
                    const std::string& body, const std::string& port = "USB1") {
  return Log(name + "," + port + ",0,80.0,FINESTEERING," + std::to_string(week) + "," + seconds +
             ",02000020,9691,16809;" + body);
}

std::string BestPos(int week, const std::string& seconds, const std::string& port = "COM1") {
  return LongLog("BESTPOSA", week, seconds,
                 "SOL_COMPUTED,NARROW_INT,51.15043874397,-114.03066788586,1097.6822,-17.0000,"
                 "WGS84,0.0100,0.0090,0.0200,\"0\",1.000,0.000,18,18,18,18,00,02,11,01",
                 port);
}

std::string Gga(const std::string& time) {
  return Nmea("GNGGA," + time +
              ",4404.1306024,N,12118.8446777,W,2,12,0.49,1129.913,M,-21.350,M,,0278");
}

RecordTimeOptions AllTypes() {
  RecordTimeOptions options;
  options.logMaskA = options.logMaskB = kAllLogTypes;
  return options;
}

class RecordTimeTest : public ::testing::Test {
 protected:
  // Extracts `log` into a fresh result folder.
  void Run(const std::string& log, const RecordTimeOptions& options = AllTypes()) {
    testing::WriteBytes(folder / "log.txt", log);
    RunFile(folder / "log.txt", options);
  }
  void RunFile(const std::string& path, const RecordTimeOptions& options = AllTypes()) {
    ++runs;
    out = folder / ("out" + std::to_string(runs));
    MakeFolder(out);
    ASSERT_TRUE(extractor.OpenTimeFiles(path, out, options));
    EXPECT_TRUE(extractor.Extract());
    extractor.CloseTimeFiles();
  }
  std::string File(const std::string& name) const { return FileBytes(out + "/" + name); }

  TempFolder folder;
  RecordTimeExtractor extractor;
  std::string out;
  int runs = 0;
};

struct LineCase {
  const char* what;
  std::string log;
  const char* file;
  const char* expected;
};

TEST_F(RecordTimeTest, EachKindOfLineHasItsBytes) {
  const std::string range = LongLog("RANGEA", 2163, "1.000", "0");
  const std::string hexBody = "8b0284a6eeb37a4134a0f0469296b5ee80dc7da6ce1ada076697d4296ac6";
  const std::vector<LineCase> cases = {
      {"classified, header words as hex", LongLog("RANGEA", 2163, "329760.000", "0"),
       "RangeTime.txt", "  2163  329760.0000 33554464 38545\n"},
      {"position, the receiver's numbers", BestPos(2163, "329760.500"), "BestPosTime.txt",
       "  2163  329760.5000 0 50\n"},
      {"position words not in the tables", LongLog("PSRPOSA", 2163, "1.000", "SOMETHING,ELSE,1"),
       "PsrPosTime.txt", "  2163       1.0000 -1 -1\n"},
      {"direct with FINE", Log("BESTNAVA,83,GPS,FINE,2163,329760250,0,0,18,12;SOL_COMPUTED"),
       "bestnav.txt", "2163  329760.250\r\n"},
      {"direct without FINE", Log("BESTNAVA,83,GPS,UNKNOWN,2163,329760250,0,0,18,12;X"),
       "bestnav.txt", ""},
      {"direct of a second base", Log("RTKPOS2A,83,GPS,FINE,2163,1500,7,8,18,12;X"), "rtkpos2.txt",
       "2163  1.500 7  8\r\n"},
      {"direct E6 block", Log("E6MASKBLOCKA,83,GAL,FINE,2163,1500,5,0,18,12;X"), "maskblk.txt",
       "2163  1.500  5  999\r\n"},
      {"direct event", Log("EVENTFLAGA,83,GPS,FINE,2163,1500,1,2,3,4;X"), "eventflag.txt",
       "2163  1.500  0  1     2       3  4\r\n"},
      {"mixed matched, then its own table",
       LongLog("MATCHEDPOSA", 2163, "2.000", "SOL_COMPUTED,L1_INT"), "mixmatched.txt",
       "2163  2.000\r\n"},
      {"subtype with a compact header", Log("AGRICA,68,GPS,FINE,2063,454587000,0,0,18,38;GNSS"),
       "Agric.txt", "  2063  454587.0000 \n"},
      {"subtype of the RawImux tick, week 0", LongLog("RAWIMUXCA", 0, "10.000", "0,0"),
       "RawImuxC.txt", "     0      10.0000 33554464 38545\n"},
      {"heading: second word, station, first word",
       LongLog("HEADINGA", 2163, "3.000",
               "SOL_COMPUTED,NARROW_INT,1.5,2.5,0.1,0.0,0.2,0.3,\"7\",12"),
       "HeadingTime.txt", "  2163       3.0000 38545 7 33554464\n"},
      {"event mark", LongLog("EVENTMARKA", 2163, "4.000", "1,2,3,4"), "EventMark.txt",
       "  2163       4.0000 38545 33554464 1 2 3 \n"},
      {"SSR: system and count", LongLog("SSR1CLOCKA", 2163, "5.000", "R,12,0"), "SSR1CLOCK.txt",
       "  2163       5.0000 2  12\n"},
      {"Galileo signal word", LongLog("GALINAVRAWWORDA", 2163, "6.000", "3,11,GALE5B,ab"),
       "GALINAVRAWWORDATime.txt", "  2163       6.0000 2\n"},
      {"BeiDou subframe, folder of its signal",
       LongLog("BDSRAWNAVSUBFRAMEA", 2163, "7.000", "5,23,B2D1,1," + hexBody),
       "BDSB2SUBFRAME/23.txt", "  2163       7.0000 23\n"},
      {"BeiDou subframe's own table",
       LongLog("BDSRAWNAVSUBFRAMEA", 2163, "7.000", "5,23,B2D1,1," + hexBody),
       "BDSRAWNAVSUBFRAMEATime.txt", "  2163       7.0000 33554464 38545\n"},
      {"GLONASS string by its slot",
       LongLog("GLORAWSTRINGA", 2163, "9.000", "45,3," + hexBody + ",0,7"), "GLOSTRING/45.txt",
       "  2163       9.0000 45\n"},
      {"GPS PRN past 32: no file of its own",
       LongLog("RAWGPSSUBFRAMEA", 2163, "8.000", "2,33,4," + hexBody + ",2"), "GPSSUBFRAME/33.txt",
       "<missing>"},
      {"BeiDou signal word of no folder",
       LongLog("BDSRAWNAVSUBFRAMEA", 2163, "7.000", "5,23,B9D9,1," + hexBody),
       "BDSRAWNAVSUBFRAMEATime.txt", "  2163       7.0000 33554464 38545\n"},
      {"BD2 ephemeris", LongLog("BD2EPHEMA", 2163, "1.000", "0"), "Bd2EphemTime.txt",
       "  2163       1.0000 33554464 38545\n"},
      {"BDS ephemeris under the same tick", LongLog("BDSEPHEMERISA", 2163, "1.000", "0"),
       "BdsEphemTime.txt", "  2163       1.0000 33554464 38545\n"},
      {"PDP position with the TDIF one", LongLog("PDPPOSA", 2163, "1.000", "SOL_COMPUTED,PPP"),
       "TdifPosTime.txt", "  2163       1.0000 0 69\n"},
      {"SBAS", LongLog("SBAS26A", 2163, "1.000", "0"), "Sbas.txt",
       "  2163       1.0000 33554464 38545\n"},
      {"direct with a long header", LongLog("OBSSTATUSA", 2163, "12.250", "0"), "obsstatus.txt",
       "2163  12.250\r\n"},
      {"text behind a NUL is out of sight",
       range.substr(0, range.size() - 2) + std::string(1, '\0') + "*1\r\n", "RangeTime.txt",
       "  2163       1.0000 33554464 38545\n"},
      {"GPS subframe by its PRN",
       LongLog("RAWGPSSUBFRAMEA", 2163, "8.000", "2,20,4," + hexBody + ",2"), "GPSSUBFRAME/20.txt",
       "  2163       8.0000 20\n"},
      {"GGA", Gga("235959.50"), "GPGGATime.txt", "   1   86399.5000 235959.5000\n"},
      {"RMC", Nmea("GNRMC,014500.00,A,4404.1306024,N,12118.8446777,W,0.013,,231221,,,D,V"),
       "GNRMCTime.txt", "   1    6300.0000 014500.0000\n"},
      {"AHGH date and time as GPS time", Nmea("AHGH,014500.00,23,12,2021,1.0"), "AHGHTime.txt",
       "  2189  351900.0000 0 0\n"},
      {"GGA with 60 seconds", Gga("235960.00"), "GPGGATime.txt", ""},
      {"GGA at hour 24", Gga("240000.00"), "GPGGATime.txt", ""},
      {"#RANGEA of week 0", LongLog("RANGEA", 0, "1.000", "0"), "RangeTime.txt", ""},
      {"#RANGEA of week 1", LongLog("RANGEA", 1, "1.000", "0"), "RangeTime.txt", ""},
      {"#RAWIMUA of week 1", LongLog("RAWIMUA", 1, "1.000", "0"), "RawImu.txt",
       "     1       1.0000 33554464 38545\n"},
      {"#DRPVAA of week 0", LongLog("DRPVAA", 0, "1.000", "0"), "Drpva.txt",
       "     0       1.0000 33554464 38545\n"},
      {"#PPPDOPA on a COM port", LongLog("PPPDOPA", 2163, "1.000", "1.0", "COM2"), "PppDopTime.txt",
       ""},
      {"#PPPDOPA elsewhere", LongLog("PPPDOPA", 2163, "1.000", "1.0"), "PppDopTime.txt",
       "  2163       1.0000 33554464 38545\n"},
      {"#BESTPOSA on a COM port", BestPos(2163, "1.000", "COM1"), "BestPosTime.txt",
       "  2163       1.0000 0 50\n"},
      {"#PSRVEL2A passes and is dropped", LongLog("PSRVEL2A", 2163, "1.000", "SOL_COMPUTED,SINGLE"),
       "PsrVel2Time.txt", ""},
      {"bad frame check", Log("RANGEA,USB1,0,80.0,FINESTEERING,2163,1.000,0,0,1;0", false),
       "RangeTime.txt", ""},
      {"missing header word", Log("RANGEA,USB1,0,80.0,FINESTEERING,2163,1.000;0"), "RangeTime.txt",
       ""},
  };
  for (const LineCase& c : cases) {
    SCOPED_TRACE(c.what);
    Run(c.log);
    EXPECT_EQ(File(c.file), c.expected);
  }
}

TEST_F(RecordTimeTest, EveryTableFileIsCreatedEmptyAndNothingForAMissingLog) {
  EXPECT_FALSE(extractor.OpenTimeFiles(folder / "absent.log", folder / "a", AllTypes()));
  EXPECT_FALSE(extractor.OpenTimeFiles(folder.Path(), folder / "b", AllTypes()));
  struct stat info {};
  EXPECT_NE(::stat((folder / "a").c_str(), &info), 0);
  EXPECT_NE(::stat((folder / "b").c_str(), &info), 0);
  EXPECT_FALSE(extractor.Extract());

  Run("");
  for (const char* name :
       {"RangeTime.txt", "GPGGATime.txt", "OnlyBDGGATime.txt", "RawImuxP.txt", "BDSEPHEM.txt",
        "RangeBaserangeTime.txt", "mixmatched.txt", "insattcov.txt", "ggabase2.txt"}) {
    EXPECT_EQ(File(name), "") << name;
  }
  EXPECT_EQ(File("GPSSUBFRAME/1.txt"), "<missing>");
  EXPECT_EQ(::stat((out + "/BDSB3SUBFRAME").c_str(), &info), 0);
}

TEST_F(RecordTimeTest, BaseDelayAgainstTheLatestRoverTime) {
  const std::string base0 = LongLog("BASERANGEA", 2163, "329759.000", "0");
  Run(base0 + BestPos(2163, "329760.500") + base0);
  EXPECT_EQ(File("RangeBaserangeTime.txt"), "2163  329760.500, 2163 329759.000  1.500\r\n");
  EXPECT_EQ(File("BaseRangeTime.txt"),
            "  2163  329759.0000 33554464 38545\n"
            "  2163  329759.0000 33554464 38545\n");
  Run(BestPos(2164, "0.500") + LongLog("BASERANGEA", 2163, "604799.000", "0"));
  EXPECT_EQ(File("RangeBaserangeTime.txt"), "2164  0.500, 2163 604799.000  1.500\r\n");
  // Base logs and week-0 rovers set no rover time.
  Run(LongLog("RTKDATAA", 2163, "5.000", "0") + LongLog("RANGEA", 0, "6.000", "0") + base0);
  EXPECT_EQ(File("RangeBaserangeTime.txt"), "");
}

TEST_F(RecordTimeTest, NmeaChecksumOnlyWithItsTick) {
  const std::string bad = Nmea("GPGGA,120000.00,1,N,2,E,1,8,1.0,0,M,0,M,,", false);
  Run(bad);
  EXPECT_EQ(File("GPGGATime.txt"), "");
  RecordTimeOptions unchecked = AllTypes();
  unchecked.nmeaCrcCheck = false;
  unchecked.otherGga = true;
  Run(bad, unchecked);
  EXPECT_EQ(File("GPGGATime.txt"), "   1   43200.0000 120000.0000\n");
  EXPECT_EQ(File("OnlyGPGGATime.txt"), File("GPGGATime.txt"));
  EXPECT_EQ(File("OnlyGNGGATime.txt"), "");
}

TEST_F(RecordTimeTest, TalkersFallBackToAnyGgaAndTheSecondBaseCountsItsOwnDays) {
  RecordTimeOptions options;
  options.logMaskA = 0x200 | 0x8000000;  // any GGA, GGABASE2
  options.otherGga = true;
  Run(Gga("235950.00") + Nmea("GPGGABASE2,000005.00,1,N,2,E,1,8,1.0,0,M,0,M,,") + Gga("235955.00"),
      options);
  EXPECT_EQ(File("GPGGATime.txt"),
            "   1   86390.0000 235950.0000\n"
            "   1   86395.0000 235955.0000\n");
  EXPECT_EQ(File("OnlyGNGGATime.txt"), "");
  EXPECT_EQ(File("ggabase2.txt"), "   1       5.0000 000005.0000\n");
}

TEST_F(RecordTimeTest, RmcCountsItsOwnDays) {
  const std::string rmc = Nmea("GNRMC,000001.00,A,1,N,2,E,0,,231221,,,D,V");
  const std::string late = Nmea("GNRMC,235959.00,A,1,N,2,E,0,,231221,,,D,V");
  Run(late + rmc);
  EXPECT_EQ(File("GNRMCTime.txt"),
            "   1   86399.0000 235959.0000\n"
            "   2   86401.0000 000001.0000\n");
}

TEST_F(RecordTimeTest, MasksPassOnlyTheirTypesAndSubtypesAlways) {
  RecordTimeOptions options;
  options.logMaskA = 0x4;  // BestPosa
  Run(BestPos(2163, "1.000") + LongLog("RANGEA", 2163, "1.000", "0") +
          LongLog("BESTPOS1A", 2163, "1.000", "SOL_COMPUTED,SINGLE") +
          LongLog("RAWIMUXCA", 2163, "1.000", "0") + Gga("000001.00"),
      options);
  EXPECT_NE(File("BestPosTime.txt"), "");
  EXPECT_NE(File("BestPos1Time.txt"), "");
  EXPECT_EQ(File("RangeTime.txt"), "");
  EXPECT_EQ(File("RawImuxC.txt"), "");  // follows the RawImux tick
  EXPECT_EQ(File("GPGGATime.txt"), "");
}

TEST_F(RecordTimeTest, DayCountRisesOnlyPastTenSecondsOfFall) {
  Run(Gga("235955.00") + Gga("000001.00") + Gga("000020.00") + Gga("000010.00") + Gga("000020.00") +
      Gga("000009.99"));
  EXPECT_EQ(File("GPGGATime.txt"),
            "   1   86395.0000 235955.0000\n"
            "   2   86401.0000 000001.0000\n"
            "   2   86420.0000 000020.0000\n"
            "   2   86410.0000 000010.0000\n"
            "   2   86420.0000 000020.0000\n"
            "   3  172809.9900 000009.9900\n");
  // The next log starts on its first day again.
  Run(Gga("000001.00"));
  EXPECT_EQ(File("GPGGATime.txt"), "   1       1.0000 000001.0000\n");
}

// Damage costs only the damaged bytes, wherever it falls against the
// 102,400-byte blocks.
TEST_F(RecordTimeTest, DamageCostsOnlyTheDamagedBytes) {
  std::string badFrame = "\xAA\x44\x12\x1C" + std::string(24, '\0');
  badFrame[8] = '\x10';  // a 16-byte message whose CRC fails
  badFrame += std::string(20, '\x01');
  std::string noLineEnds(30000, 'x');
  const std::vector<std::pair<const char*, std::string>> damages = {
      {"zero-filled hole", std::string(40000, '\0')},
      {"garbage without line ends", noLineEnds},
      {"truncated log", BestPos(2163, "99.000").substr(0, 90)},
      {"bad-CRC binary frame", badFrame},
      {"bad sync inside a log", "#JUNK,\xAA\x44\x12\x1C" + std::string(30, '\0') + "\r\n"},
  };
  std::string after;
  int afterCount = 0;
  for (; after.size() < 120000; ++afterCount)
    after += BestPos(2163, std::to_string(1000 + afterCount) + ".000");
  for (std::size_t offset : {0u, 102350u}) {
    std::string before;
    int beforeCount = 0;
    for (; before.size() + 300 < offset; ++beforeCount)
      before += BestPos(2163, std::to_string(beforeCount) + ".000");
    for (const auto& [what, damage] : damages) {
      SCOPED_TRACE(std::string(what) + " at " + std::to_string(offset));
      Run(before + damage + after);
      const std::string lines = File("BestPosTime.txt");
      EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), beforeCount + afterCount);
    }
  }
}

// A log of exactly the block-read limit is read in blocks, one byte more
// through the mapping's slices; both come out whole, whatever the views.
TEST_F(RecordTimeTest, LogsAtAndPastTheBlockLimitComeOutWhole) {
  std::string log;
  int lines = 0;
  for (; log.size() < 300000; ++lines) {
    log += BestPos(2163, std::to_string(lines) + ".000");
    if (lines % 3 == 0) log += Gga("1200" + std::to_string(10 + lines % 40) + ".00");
  }
  Run(log);
  const std::string whole = File("BestPosTime.txt");
  const std::string gga = File("GPGGATime.txt");
  EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), lines);
  for (std::uint64_t limit : {std::uint64_t{log.size()}, std::uint64_t{log.size() - 1}}) {
    for (std::size_t view : {0u, 4096u, 65536u}) {
      SCOPED_TRACE("limit " + std::to_string(limit) + ", views of " + std::to_string(view));
      RecordTimeOptions options = AllTypes();
      options.blockReadLimit = limit;
      options.viewSize = view;
      Run(log, options);
      EXPECT_EQ(File("BestPosTime.txt"), whole);
      EXPECT_EQ(File("GPGGATime.txt"), gga);
    }
  }
  // The same bytes from memory.
  MakeFolder(folder / "memory");
  ASSERT_TRUE(extractor.OpenTimeFiles(folder / "log.txt", folder / "memory", AllTypes()));
  extractor.ExtractFromMemory(log.data(), log.size());
  extractor.CloseTimeFiles();
  EXPECT_EQ(FileBytes(folder / "memory/BestPosTime.txt"), whole);
  EXPECT_EQ(FileBytes(folder / "memory/GPGGATime.txt"), gga);
}

TEST_F(RecordTimeTest, RealRecordingsMatchTheirReviewedLines) {
  const std::string data = testing::SourceDir() + "/tests/data/";
  RunFile(data + "ublox-f9p-hpnmea.log");
  EXPECT_EQ(File("GPGGATime.txt"), FileBytes(data + "record_time/GPGGATime.txt"));
  RunFile(data + "ParsingData2.ASC");
  EXPECT_EQ(File("BestPosTime.txt"), FileBytes(data + "record_time/BestPosTime.txt"));
}

}  // namespace
}  // namespace tarnlog
