#include "extract/geodetic_grid.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnlog {
namespace {

struct GridCase {
  double latitude, longitude;
  int zoneWidth;
  double easting, northing;
};

// Reference values from the same series evaluated at 40 significant digits.
// The tolerance is far below the millimetres by which the textbook second
// eccentricity would move them.
TEST(GeodeticToGridTest, KnownPoints) {
  const std::vector<GridCase> cases = {
      {32.59535912622, -85.29567789741, 3, 621639.337330952, 3608614.014570918},
      {51.15043874397, -114.03066788586, 3, 502145.845136783, 5668822.442428753},
      {31.0, 119.6, 3, 461798.148258653, 3431043.007943568},
      {31.0, 119.6, 6, 748351.390206449, 3433877.765556352},
      // With width 3, a longitude up to 1.5 is taken as 180 minus it.
      {40.0, 1.0, 3, 414605.380464793, 4430008.072172360},
      {40.0, 1.0, 6, 329206.189316986, 4431445.555596831},
  };
  for (const GridCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.latitude << "," << c.longitude << "/" << c.zoneWidth);
    double easting = 0.0;
    double northing = 0.0;
    GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, c.latitude, c.longitude, 0.0, &easting,
                   &northing, c.zoneWidth);
    EXPECT_NEAR(easting, c.easting, 1e-5);
    EXPECT_NEAR(northing, c.northing, 1e-5);
  }
}

TEST(GeodeticToGridTest, CentralMeridianAndSymmetry) {
  double east = 0.0, north = 0.0, westEast = 0.0, westNorth = 0.0;
  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, 0.0, 117.0, 0.0, &east, &north, 3);
  EXPECT_DOUBLE_EQ(east, 500000.0);
  EXPECT_DOUBLE_EQ(north, 0.0);

  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, 31.0, 118.2, 0.0, &east, &north, 3);
  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, 31.0, 115.8, 0.0, &westEast, &westNorth, 3);
  EXPECT_NEAR(east - 500000.0, 500000.0 - westEast, 1e-6);
  EXPECT_NEAR(north, westNorth, 1e-6);

  // A western longitude is taken as 180 minus it, which puts it east.
  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, 31.0, -85.3, 0.0, &east, &north, 3);
  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, 31.0, 265.3, 0.0, &westEast, &westNorth, 3);
  EXPECT_DOUBLE_EQ(east, westEast);
  EXPECT_DOUBLE_EQ(north, westNorth);
}

}  // namespace
}  // namespace tarnlog
