#include "pages/nmea/kml_writer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "pages/nmea/kml_colours.h"
#include "pages/nmea/mix_log.h"
#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

constexpr char kFixedRow[] =
    "1687,419928.000,203830.000,32.595359126,-85.295677897,170.777700,12,0.900,4,1.000,       3,"
    "       1,       1,       1,       1,       0,       0,       0,       0,       0,       0,"
    "       1,       1,       0,       0\r\n";
constexpr char kInsAidedRow[] =
    "1687,419929.000,203831.000,32.595400000,-85.295600000,171.250000,11,1.100,6,2.000,       2,"
    "       1,       0,       1,       0,       2,       2,       0,       0,       1,       1,"
    "       0,       0,       0,       0\r\n";

constexpr char kInsRows[] =
    "1695,309428.000,000000.000,0.500000,1.250000,51.116378734,-114.038251150,1046.709300,0,"
    "0.000,     3,0.000,-0.000100,-0.001500,0.000000,0.142000,0.205000,358.683000,       0,"
    "       0,       0,       0,       0,       0,       0,       0,       0,       0,       0,"
    "       0,       0,       0,       0\r\n"
    "1695,309429.000,000000.000,0.500000,1.250000,51.116378734,-114.038251150,1046.709300,0,"
    "0.000,     6,0.000,-0.000100,-0.001500,0.000000,0.142000,0.205000,358.683000,       0,"
    "       0,       0,       0,       0,       0,       0,       0,       0,       0,       0,"
    "       0,       0,       0,       0\r\n";
constexpr char kTrajectoryRows[] =
    "1 419928.000 3606720.1234  678901.2345 170.778 32.59535912622 -85.29567789741 0.0000 "
    "0.10000 0.20000 358.50000 1\r\n"
    "2 419929.000 3606720.1234  678901.2345 170.778 32.59535912622 -85.29567789741 1.5000 "
    "0.10000 0.20000 358.50000 4\r\n";

// A position row of the given status and seconds, all else fixed.
std::string Row(int status, int second, const char* latitude = "32.5954") {
  return "1687," + std::to_string(second) + ".000,203830.000," + latitude +
         ",-85.2956,171.25,11,1.1," + std::to_string(status) +
         ",2.0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\n";
}

// xmllint reads the file as XML; 0 when it is well formed.
int XmlLint(const std::string& path) {
  const std::string command = "/usr/bin/xmllint --noout '" + path + "' 2>/dev/null";
  return std::system(command.c_str());
}

class KmlWriterTest : public ::testing::Test {
 protected:
  // Writes a mix log of the header and `rows` and returns its path.
  std::string MixLog(const std::string& rows) {
    WriteBytes(mix_, std::string(kMixLogHeader) + "\r\n" + rows);
    return mix_;
  }
  std::string Kml(const char* suffix) const {
    return FileBytes(folder_ / ("a_Mix" + std::string(suffix) + ".kml"));
  }
  // The epoch icons, in file order.
  static std::vector<std::string> Icons(const std::string& kml) {
    std::vector<std::string> icons;
    const std::string folder = "KestrixKML/";
    for (auto at = kml.find(folder); at != std::string::npos; at = kml.find(folder, at + 1)) {
      const auto start = at + folder.size();
      icons.push_back(kml.substr(start, kml.find(".png", start) - start));
    }
    return icons;
  }
  static int Count(const std::string& text, const std::string& part) {
    int n = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
      ++n;
    return n;
  }

  TempFolder folder_;
  std::string mix_ = folder_ / "a_Mix.log";
};

TEST_F(KmlWriterTest, TwoEpochsGiveTheReviewedFile) {
  MixLog(std::string(kFixedRow) + "a line that doesn't parse\r\n" + kInsAidedRow);
  EXPECT_EQ(WriteKml(mix_, 0, 5, 3), 1);
  const std::string path = folder_ / "a_Mix_BestRange.kml";
  EXPECT_EQ(FileBytes(path), FileBytes(testing::SourceDir() + "/tests/data/kml/two_epochs.kml"));
}

TEST_F(KmlWriterTest, AllThreeWritersGiveWellFormedXml) {
  if (!PathExists("/usr/bin/xmllint")) GTEST_SKIP() << "xmllint (libxml2-utils) is not installed";
  MixLog(std::string(kFixedRow) + kInsAidedRow);
  ASSERT_EQ(WriteKml(mix_, 0, 5, 3), 1);
  EXPECT_EQ(XmlLint(folder_ / "a_Mix_BestRange.kml"), 0);
  MixLog(kInsRows);
  ASSERT_EQ(WriteInsKml(mix_, 3, 2, 2), 1);
  EXPECT_EQ(XmlLint(folder_ / "a_Mix_Inspvax.kml"), 0);
  MixLog(kTrajectoryRows);
  ASSERT_EQ(WritePostKml(mix_, 2), 1);
  EXPECT_EQ(XmlLint(folder_ / "a_Mix_PosT.kml"), 0);
  // A file cut inside an epoch is not.
  const std::string kml = FileBytes(folder_ / "a_Mix_PosT.kml");
  WriteBytes(folder_ / "cut.kml", kml.substr(0, kml.find("<Document><name>Tag1")) + "<Docu");
  EXPECT_NE(XmlLint(folder_ / "cut.kml"), 0);
  // A log named with XML's own marks still gives a well-formed file.
  const std::string odd = folder_ / "R&D <1>_Mix.log";
  WriteBytes(odd, std::string(kMixLogHeader) + "\r\n" + kFixedRow);
  ASSERT_EQ(WriteKml(odd, 0, 1, 2), 1);
  const std::string oddKml = folder_ / "R&D <1>_Mix_GGA.kml";
  EXPECT_NE(FileBytes(oddKml).find("<name>R&amp;D &lt;1&gt;_Mix</name>"), std::string::npos);
  EXPECT_EQ(XmlLint(oddKml), 0);
}

TEST_F(KmlWriterTest, OneEpochHasNoTrack) {
  MixLog(kFixedRow);
  EXPECT_EQ(WriteKml(mix_, 0, 1, 2), 1);
  const std::string kml = Kml("_GGA");
  EXPECT_EQ(Count(kml, "<Document><name>"), 3);
  EXPECT_NE(kml.find("<Document><name>Start</name>"), std::string::npos);
  EXPECT_NE(kml.find("<Document><name>Tag0</name><Placemark><name>Tag0</name>"), std::string::npos);
  EXPECT_EQ(kml.find("<LineString>"), std::string::npos);
  EXPECT_NE(kml.find("<Document><name>End</name>"), std::string::npos);
  // Start and end stand on the one epoch.
  EXPECT_EQ(Count(kml, "<coordinates>-85.295678,32.595359,170.78</coordinates>"), 2);
}

TEST_F(KmlWriterTest, NoRowLeavesZeroMarkers) {
  MixLog("1687,bad\r\n");
  EXPECT_EQ(WriteKml(mix_, 0, 8, 2), 1);
  const std::string kml = Kml("_Bestpos");
  EXPECT_EQ(Count(kml, "<coordinates>0.000000,0.000000,0.00</coordinates>"), 2);
  EXPECT_EQ(kml.find("Tag0"), std::string::npos);
}

TEST_F(KmlWriterTest, IconsFollowColourAndStatus) {
  struct Case {
    int colourIndex;
    int status;
    const char* tag0Icon;
    const char* tag1Icon;
    const char* lineColour;
  };
  const Case cases[] = {
      {0, 0, "green0", "green0", "ff00ff00"},    {0, 4, "green04", "green04", "ff00ff00"},
      {11, 5, "green05", "green05", "ff00ff00"}, {-1, 1, "green01", "green01", "ff00ff00"},
      {2, 9, "yellow9", "yellow9", "ff00ffff"},  {8, 6, "brown06", "red06", "ff2a2aa5"},
      {4, 6, "red06", "blue06", "ff3300ff"},
  };
  for (const Case& c : cases) {
    MixLog(Row(c.status, 419928) + Row(c.status, 419929));
    ASSERT_EQ(WriteKml(mix_, c.colourIndex, 0, 2), 1);
    const std::string kml = Kml("_GGARange");
    EXPECT_EQ(Icons(kml), (std::vector<std::string>{c.tag0Icon, c.tag1Icon}))
        << c.colourIndex << " " << c.status;
    EXPECT_NE(kml.find(std::string("<color>") + c.lineColour + "</color>"), std::string::npos);
  }
}

TEST_F(KmlWriterTest, DisplayHeightsSeparateFixedFloatAndOther) {
  MixLog(Row(4, 1) + Row(5, 2) + Row(2, 3));
  ASSERT_EQ(WriteKml(mix_, 0, 0, 2), 1);
  const std::string kml = Kml("_GGARange");
  EXPECT_NE(kml.find("<coordinates>-85.295600,32.595400,0.000000</coordinates>"),
            std::string::npos);
  EXPECT_NE(kml.find("<coordinates>-85.295600,32.595400,7.500000</coordinates>"),
            std::string::npos);
  EXPECT_NE(kml.find("<coordinates>-85.295600,32.595400,15.000000</coordinates>"),
            std::string::npos);
}

TEST_F(KmlWriterTest, OnlyEveryHundredthTagIsLabelled) {
  std::string rows;
  for (int n = 0; n <= 200; ++n)
    rows += Row(4, 1000 + n, "-33.8569");
  MixLog(rows);
  ASSERT_EQ(WriteKml(mix_, 0, 0, 2), 1);
  const std::string kml = Kml("_GGARange");
  EXPECT_EQ(Count(kml, "</Document>\r\n"), 202);
  EXPECT_EQ(Count(kml, "<Placemark><name>Tag"), 3);
  for (const char* label : {"<name>Tag0</name>", "<name>Tag100</name>", "<name>Tag200</name>"})
    EXPECT_EQ(Count(kml, std::string("<Placemark>") + label), 1) << label;
  // Southern latitudes keep the fixed N.
  EXPECT_NE(kml.find("Lat:-33.857N, Lon:-85.296E,"), std::string::npos);
}

TEST_F(KmlWriterTest, InsBalloonCarriesMotionAndAges) {
  MixLog(kInsRows);
  ASSERT_EQ(WriteInsKml(mix_, 3, 2, 2), 1);
  const std::string path = folder_ / "a_Mix_Inspvax.kml";
  const std::string kml = FileBytes(path);
  EXPECT_NE(kml.find("<Document><name>Tag0</name><Placemark><name>Tag0</name><description><!"
                     "[CDATA[<TABLE><TR><TD width=1000>UTC:00:00:0.0, Tag:0, PM:0,<BR>Lat:"),
            std::string::npos);
  EXPECT_NE(kml.find("HDOP:0.0<BR>vel:-0.000100,-0.001500,0.000000<BR>altitude:0.142000,"
                     "0.205000,358.683000<BR>Dr_age:0.500000,Sol_age:1.250000</TD>"),
            std::string::npos);
  EXPECT_NE(kml.find("KestrixKML/blue03.png"), std::string::npos);
  EXPECT_NE(kml.find("KestrixKML/red06.png"), std::string::npos);
}

TEST_F(KmlWriterTest, TrajectoryIconsFollowQuality) {
  MixLog(kTrajectoryRows);
  ASSERT_EQ(WritePostKml(mix_, 2), 1);
  const std::string path = folder_ / "a_Mix_PosT.kml";
  const std::string kml = FileBytes(path);
  EXPECT_NE(kml.find("<tr><td>4</td><td>419929.000</td><td>-85.29567789741</td><td>"
                     "32.59535912622</td><td>170.778</td><td>1.5000</td><td>0.10000</td><td>"
                     "0.20000</td><td>358.50000</td></tr></table></description>"),
            std::string::npos);
  EXPECT_NE(kml.find("KestrixKML/green04.png"), std::string::npos);
  EXPECT_NE(kml.find("KestrixKML/blue02.png"), std::string::npos);
  EXPECT_NE(kml.find("<color>ffff0000</color>"), std::string::npos);
}

TEST_F(KmlWriterTest, UtcOutOfRangeIsHeldAtIntsEnd) {
  const std::string rest =
      ",32.5954,-85.2956,171.25,11,1.1,4,2.0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n";
  MixLog("1687,419928.000,1e308" + rest + "1687,419929.000,nan" + rest);
  ASSERT_EQ(WriteKml(mix_, 0, 0, 2), 1);
  const std::string kml = Kml("_GGARange");
  EXPECT_NE(kml.find("UTC:2147483647:2147483647:1000000000000000010979"), std::string::npos);
  EXPECT_NE(kml.find("UTC:00:00:nan, Tag:1,"), std::string::npos);
  EXPECT_NE(kml.find("&time=00:00:nan&velocity="), std::string::npos);
}

TEST_F(KmlWriterTest, MissingMixLogFails) {
  EXPECT_EQ(WriteKml(mix_, 0, 0, 2), kKmlOpenFailed);
  EXPECT_EQ(WriteInsKml(mix_, 0, 0, 2), kKmlOpenFailed);
  EXPECT_EQ(WritePostKml(mix_, 2), kKmlOpenFailed);
  EXPECT_TRUE(ListMatching(folder_.Path(), "*").empty());
}

TEST(KmlNamesTest, SuffixesAndIconNames) {
  EXPECT_EQ(KmlTypeSuffix(0), "_GGARange");
  EXPECT_EQ(KmlTypeSuffix(11), "_PosT");
  EXPECT_EQ(KmlTypeSuffix(17), "_Sppnav");
  EXPECT_EQ(InsKmlTypeSuffix(3), "_Inspvas");
  EXPECT_EQ(KmlPath("/d/run/a_Mix.log", "_GGA"), "/d/run/a_Mix_GGA.kml");
  EXPECT_EQ(KmlIconName("green", 0), "green0");
  EXPECT_EQ(KmlIconName("green", 8), "green08");
  EXPECT_EQ(KmlIconName("white", 9), "white9");
}

// The shipped icon folder holds every name the writers can give.
TEST(KmlNamesTest, ShippedIconsCoverEveryName) {
  const std::string folder = testing::SourceDir() + "/KML/";
  for (const KmlColour& colour : kKmlColours) {
    for (int status = kKmlIconStatusLow; status <= kKmlIconStatusHigh; ++status) {
      const std::string path = folder + KmlIconName(colour.iconWord, status) + ".png";
      EXPECT_EQ(FileBytes(path).substr(0, 4), "\x89PNG") << path;
    }
  }
}

}  // namespace
}  // namespace tarnlog
