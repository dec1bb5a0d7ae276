#include "pages/noise/control_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace tarnlog {
namespace {

// The lines every file has around the span, as they land on disk.
constexpr char kHead[] = "SetMatchedInterval 10\r\nSetEleMask 5.000000\r\nSetElECNO 20.000000\r\n";
constexpr char kTail[] = "SETRECEIVERTYPE KESTRIX\r\n";

ControlFileSettings Dynamic() {
  ControlFileSettings settings;
  settings.staticScene = false;
  return settings;
}

std::string Written(const ControlFileSettings& settings, char systemMode, const SpanLines& span) {
  testing::TempFolder folder;
  WriteControlFile(folder / "control.txt", settings, systemMode, span);
  return testing::FileBytes(folder / "control.txt");
}

TEST(ControlFileTest, StaticSceneOnDisk) {
  ControlFileSettings settings;
  settings.ref = {31.123456789, -121.5, 12.25};
  settings.init = {30.5, 120.0000000004, -3.12345649};
  settings.refSelection = 0;
  settings.initSelection = 2;
  settings.intervalMs = 200;
  settings.elevation = 12.5;
  settings.cn0 = 35.0;
  settings.gpsPrn = 5;
  settings.gloPrn = 40;
  settings.bd2Prn = 200;
  settings.rangeH = true;
  settings.onlyRangeH = true;
  settings.baseStation = "TRIMBLE";
  SpanLines span;
  span.start = GpsWeekSecond{2100, 1234.5};
  span.end = GpsWeekSecond{2100, 4834.5};
  EXPECT_EQ(Written(settings, '4', span),
            "SetRefCoor 31.123456789 -121.500000000 12.250000\r\n"
            "SetInitCoor 30.500000000 120.000000000 -3.123456\r\n"
            "SetMatchedInterval 200\r\n"
            "SetEleMask 12.500000\r\n"
            "SetElECNO 35.000000\r\n"
            "SetStartTime 2100 1234.500000\r\n"
            "SetEndTime 2100 4834.500000\r\n"
            "SetUseGloInRTK false\r\n"
            "SetUseBD2InRTK false\r\n"
            "SETRANGEH\r\n"
            "ONLYRANGEH\r\n"
            "SETREFPRN 5 40 200\r\r\n"
            "SETRECEIVERTYPE TRIMBLE\r\n");
}

TEST(ControlFileTest, InitCoorOnlyWhenTheSelectionsDifferInTheirLowByte) {
  const struct {
    int ref;
    int init;
    bool written;
  } cases[] = {{0, 0, false}, {0, 1, true}, {3, 259, false}, {-1, 255, false}, {-1, 0, true}};
  for (const auto& c : cases) {
    ControlFileSettings settings;
    settings.refSelection = c.ref;
    settings.initSelection = c.init;
    const std::string text = ControlFileText(settings, '0', {});
    EXPECT_EQ(text.find("SetInitCoor 0.000000000 0.000000000 0.000000\n") != std::string::npos,
              c.written)
        << c.ref << " " << c.init;
    EXPECT_EQ(text.rfind("SetRefCoor 0.000000000 0.000000000 0.000000\n", 0), 0u);
  }
}

TEST(ControlFileTest, NumbersOfAnySizeAsTheCLibraryPrintsThem) {
  ControlFileSettings settings;
  settings.ref = {-1e300, 1e-300, 1.5e308};
  settings.elevation = -0.0;
  settings.cn0 = std::nan("");
  std::vector<char> line(1024);
  std::snprintf(line.data(), line.size(), "%s %.9lf %.9lf %.6lf\n", "SetRefCoor", -1e300, 1e-300,
                1.5e308);
  char cn0[64];
  std::snprintf(cn0, sizeof cn0, "SetElECNO %lf\n", std::nan(""));
  EXPECT_EQ(ControlFileText(settings, '0', {}), std::string(line.data()) +
                                                    "SetMatchedInterval 10\n"
                                                    "SetEleMask -0.000000\n" +
                                                    cn0 + "SETRECEIVERTYPE KESTRIX\n");
}

TEST(ControlFileTest, DynamicSceneHasNoCoordinates) {
  ControlFileSettings settings = Dynamic();
  settings.ref = {31.0, 121.0, 10.0};
  settings.init = {30.0, 120.0, 5.0};
  settings.initSelection = 1;
  EXPECT_EQ(Written(settings, '0', {}), std::string(kHead) + kTail);
}

TEST(ControlFileTest, SystemModeLines) {
  const struct {
    char mode;
    const char* lines;
  } cases[] = {
      {'0', ""},
      {'1', "SetUseBD2InRTK false\nSetUseGalInRTK false\n"},
      {'2', "SetUseGpsInRTK false\nSetUseGloInRTK false\n"},
      {'3', "SetUseGloInRTK false\nSetUseGalInRTK false\n"},
      {'4', "SetUseGloInRTK false\nSetUseBD2InRTK false\n"},
      {'5', "SetUseGpsInRTK false\nSetUseGalInRTK false\n"},
      {'6', ""},
      {0, ""},
      {'/', ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ControlFileText(Dynamic(), c.mode, {}),
              "SetMatchedInterval 10\nSetEleMask 5.000000\nSetElECNO 20.000000\n" +
                  std::string(c.lines) + "SETRECEIVERTYPE KESTRIX\n")
        << static_cast<int>(c.mode);
  }
}

TEST(ControlFileTest, ReferencePrnRanges) {
  const struct {
    int prn;
    bool gps, glo, bd2;
  } cases[] = {
      {-1, false, false, false},  {0, false, false, false},  {1, true, false, false},
      {32, true, false, false},   {33, false, false, false}, {37, false, false, false},
      {38, false, true, false},   {61, false, true, false},  {62, false, false, false},
      {160, false, false, false}, {161, false, false, true}, {223, false, false, true},
      {224, false, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsValidGpsPrn(c.prn), c.gps) << c.prn;
    EXPECT_EQ(IsValidGloPrn(c.prn), c.glo) << c.prn;
    EXPECT_EQ(IsValidBd2Prn(c.prn), c.bd2) << c.prn;
  }
}

TEST(ControlFileTest, RefPrnLineKeepsTheValidOnesInSystemOrder) {
  const struct {
    int gps, glo, bd2;
    const char* line;  // as on disk; empty: no line
  } cases[] = {
      {0, 0, 0, ""},
      {33, 62, 224, ""},
      {0, 0, 161, "SETREFPRN 161\r\r\n"},
      {32, 0, 0, "SETREFPRN 32\r\r\n"},
      {33, 38, 160, "SETREFPRN 38\r\r\n"},
      {1, 61, 223, "SETREFPRN 1 61 223\r\r\n"},
  };
  for (const auto& c : cases) {
    ControlFileSettings settings = Dynamic();
    settings.gpsPrn = c.gps;
    settings.gloPrn = c.glo;
    settings.bd2Prn = c.bd2;
    EXPECT_EQ(Written(settings, '0', {}), std::string(kHead) + c.line + kTail)
        << c.gps << " " << c.glo << " " << c.bd2;
  }
}

TEST(ControlFileTest, WrapIsStrictlyPastTheLastWholeSecond) {
  const struct {
    GpsWeekSecond in;
    GpsWeekSecond out;
  } cases[] = {
      {{2000, 604799.0}, {2000, 604799.0}},
      {{2000, 604799.5}, {2001, -0.5}},
      {{2000, 604800.0}, {2001, 0.0}},
      {{2000, 1209700.0}, {2001, 604900.0}},  // wraps once only
      {{2147483647, 604800.0}, {2147483647, 0.0}},
  };
  for (const auto& c : cases) {
    const GpsWeekSecond out = WrapWeekSecond(c.in);
    EXPECT_EQ(out.week, c.out.week) << c.in.second;
    EXPECT_EQ(out.second, c.out.second) << c.in.second;
  }
}

TEST(ControlFileTest, SpanCasesOnDiskAndInTheFields) {
  const GpsWeekSecond none{0, 0.0};
  const struct {
    const char* what;
    SpanCase spanCase;
    SpanFields fields;
    GpsWeekSecond firstEpoch;
    int offset;
    const char* lines;  // the span lines on disk
    SpanFields after;
  } cases[] = {
      {"typed start second 0 is set",
       SpanCase::kTyped,
       {{2000, 0.0}, none, 0.0},
       none,
       0,
       "SetStartTime 2000 0.000000\r\n",
       {{2000, 0.0}, none, 0.0}},
      {"typed start with an hour",
       SpanCase::kTyped,
       {{2000, 604000.0}, {1, 5.0}, 1.0},
       none,
       0,
       "SetStartTime 2000 604000.000000\r\nSetEndTime 2001 2800.000000\r\n",
       {{2000, 604000.0}, {2001, 2800.0}, 1.0}},
      {"typed start and end",
       SpanCase::kTyped,
       {{2000, 10.0}, {2000, 20.0}, 0.0},
       none,
       0,
       "SetStartTime 2000 10.000000\r\nSetEndTime 2000 20.000000\r\n",
       {{2000, 10.0}, {2000, 20.0}, 0.0}},
      {"typed end alone",
       SpanCase::kTyped,
       {{0, 10.0}, {2000, 0.0}, -1.0},
       none,
       0,
       "SetEndTime 2000 0.000000\r\n",
       {{0, 10.0}, {2000, 0.0}, -1.0}},
      {"typed end under hours",
       SpanCase::kTyped,
       {{0, 10.0}, {2000, 20.0}, 0.5},
       none,
       0,
       "",
       {{0, 10.0}, {2000, 20.0}, 0.5}},
      {"typed negative seconds",
       SpanCase::kTyped,
       {{2000, -1.0}, {2000, -0.5}, 0.0},
       none,
       0,
       "",
       {{2000, -1.0}, {2000, -0.5}, 0.0}},
      {"production wraps the offset start",
       SpanCase::kProduction,
       {{5, 5.0}, {6, 6.0}, 0.0},
       {2000, 604790.5},
       9,
       "SetStartTime 2001 -0.500000\r\nSetEndTime 2001 3599.500000\r\n",
       {{2001, -0.5}, {2001, 3599.5}, 0.0}},
      {"production at the last whole second",
       SpanCase::kProduction,
       {none, none, 2.0},
       {2000, 604790.0},
       9,
       "SetStartTime 2000 604799.000000\r\nSetEndTime 2001 7199.000000\r\n",
       {{2000, 604799.0}, {2001, 7199.0}, 2.0}},
      {"rover start, no end typed",
       SpanCase::kFromRover,
       {{7, 7.0}, none, 0.0},
       {2000, 604799.5},
       30,
       "SetStartTime 2001 -0.500000\r\nSetEndTime 2001 3599.500000\r\n",
       {{2001, -0.5}, {2001, 3599.5}, 0.0}},
      {"rover start, typed end",
       SpanCase::kFromRover,
       {none, {2002, 0.0}, 0.0},
       {2000, 100.0},
       0,
       "SetStartTime 2000 100.000000\r\nSetEndTime 2002 0.000000\r\n",
       {{2000, 100.0}, {2002, 0.0}, 0.0}},
      {"rover start, hours over a typed end",
       SpanCase::kFromRover,
       {none, {2002, 0.0}, 1.0},
       {2000, 604000.0},
       0,
       "SetStartTime 2000 604000.000000\r\nSetEndTime 2001 2800.000000\r\n",
       {{2000, 604000.0}, {2001, 2800.0}, 1.0}},
      {"rover without an epoch",
       SpanCase::kFromRover,
       {none, none, 0.0},
       none,
       0,
       "SetStartTime 0 0.000000\r\nSetEndTime 0 3600.000000\r\n",
       {none, {0, 3600.0}, 0.0}},
  };
  for (const auto& c : cases) {
    SpanFields fields = c.fields;
    const SpanLines span = ResolveSpan(c.spanCase, fields, c.firstEpoch, c.offset);
    EXPECT_EQ(Written(Dynamic(), '0', span), std::string(kHead) + c.lines + kTail) << c.what;
    EXPECT_EQ(fields.start.week, c.after.start.week) << c.what;
    EXPECT_EQ(fields.start.second, c.after.start.second) << c.what;
    EXPECT_EQ(fields.end.week, c.after.end.week) << c.what;
    EXPECT_EQ(fields.end.second, c.after.end.second) << c.what;
  }
}

// x, y, z of a geodetic point on the same ellipsoid.
struct Ecef {
  double x, y, z;
};

Ecef ToEcef(double latDeg, double lonDeg, double height) {
  const double f = kNoiseFlattening;
  const double e2 = 2 * f - f * f;
  const double lat = latDeg * M_PI / 180.0;
  const double lon = lonDeg * M_PI / 180.0;
  const double n = kNoiseSemiMajor / std::sqrt(1 - e2 * std::sin(lat) * std::sin(lat));
  return {(n + height) * std::cos(lat) * std::cos(lon),
          (n + height) * std::cos(lat) * std::sin(lon), (n * (1 - e2) + height) * std::sin(lat)};
}

TEST(ControlFileTest, EcefToGeodeticOnKnownPoints) {
  const struct {
    double lat, lon, height;
    double lonOut;  // in 0 to 360
  } cases[] = {
      {31.2, 121.5, 45.0, 121.5},
      {-33.9, -70.6, 500.0, 289.4},
      {0.0, 0.0, 0.0, 0.0},
      {0.0, -90.0, 0.0, 270.0},
      {89.5, 10.0, 2000.0, 10.0},
      {-60.0, 179.9, -30.0, 179.9},
      {45.0, -0.000001, 100.0, 359.999999},
  };
  for (const auto& c : cases) {
    const Ecef point = ToEcef(c.lat, c.lon, c.height);
    const Coordinates out =
        EcefToGeodetic(kNoiseSemiMajor, kNoiseFlattening, point.x, point.y, point.z);
    EXPECT_NEAR(out.latitude, c.lat, 1e-9) << c.lat << " " << c.lon;
    EXPECT_NEAR(out.longitude, c.lonOut, 1e-9) << c.lat << " " << c.lon;
    EXPECT_NEAR(out.height, c.height, 1e-4) << c.lat << " " << c.lon;
  }
  const Coordinates equator = EcefToGeodetic(kNoiseSemiMajor, kNoiseFlattening, 6378137.0, 0, 0);
  EXPECT_EQ(equator.latitude, 0.0);
  EXPECT_EQ(equator.longitude, 0.0);
  EXPECT_EQ(equator.height, 0.0);
}

}  // namespace
}  // namespace tarnlog
