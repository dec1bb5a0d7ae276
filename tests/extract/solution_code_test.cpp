#include "extract/solution_code.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnlog {
namespace {

using F = PositionFamily;

struct TypeCase {
  F family;
  std::string text;  // the position type and what follows it
  int code;
  int skip;
};

TEST(MatchPositionTypeTest, CodesAndSkipsByFamily) {
  const std::vector<TypeCase> cases = {
      {F::kBestPos, "NARROW_INT,51.1", 50, 11},
      {F::kBestPos, "WIDE_INT,51.1", 49, 9},
      {F::kBestPos, "L1_INT,51.1", 48, 7},
      {F::kBestPos, "FIXEDPOS,51.1", 51, 9},
      {F::kBestPos, "NARROW_FLOAT,51.1", 34, 13},
      {F::kBestPos, "L1_FLOAT,51.1", 32, 9},
      {F::kBestPos, "PSRDIFF,51.1", 11, 8},
      {F::kBestPos, "SINGLE,51.1", 30, 7},
      {F::kBestPos, "WAAS,51.1", 25, 5},
      {F::kBestPos, "SBAS,51.1", 25, 5},
      {F::kBestPos, "INS,51.1", 52, 4},
      {F::kBestPos, "INS_PSRSP,51.1", 53, 10},
      {F::kBestPos, "INS_PSRDIFF,51.1", 54, 12},
      {F::kBestPos, "INS_RTKFIXED,51.1", 56, 13},
      {F::kBestPos, "PPP,51.1", 69, 4},
      {F::kBestPos, "PPP_CONVERGING,51.1", 68, 15},
      {F::kBestPos, "NONE,0.0", 0, 5},
      {F::kBestPos, "PPP_BASIC,51.1", 0, 5},
      {F::kBestPos, "INS_RTKFLOAT,51.1", 0, 5},
      {F::kBestPos, "", 0, 5},

      {F::kBestGnssPos, "NARROW_INT,51.1", 50, 11},
      {F::kBestGnssPos, "WIDE_INT,51.1", 0, 5},
      {F::kBestGnssPos, "PPP,51.1", 0, 5},
      {F::kBestGnssPos, "PPP_CONVERGING,51.1", 0, 5},
      {F::kBestGnssPos, "INS_RTKFIXED,51.1", 56, 13},
      {F::kBestGnssPos, "SBAS,51.1", 25, 5},

      // The comma belongs to the compare of both PPP words here.
      {F::kBestXyz, "PPP,441145.3", 51, 4},
      {F::kBestXyz, "PPP_CONVERGING,441145.3", 55, 15},
      {F::kBestXyz, "PPP_CONVERGING", 0, 5},
      {F::kBestXyz, "WIDE_INT,441145.3", 0, 5},
      {F::kBestXyz, "FIXEDPOS,441145.3", 51, 9},
      {F::kBestXyz, "SINGLE,441145.3", 30, 7},

      {F::kRtk, "NARROW_INT,51.1", 50, 11},
      {F::kRtk, "WIDE_INT,51.1", 49, 9},
      {F::kRtk, "L1_INT,51.1", 48, 7},
      {F::kRtk, "NARROW_FLOAT,51.1", 34, 13},
      {F::kRtk, "L1_FLOAT,51.1", 32, 9},
      {F::kRtk, "FIXEDPOS,51.1", 0, 5},
      {F::kRtk, "SINGLE,51.1", 0, 5},
      {F::kRtk, "PSRDIFF,51.1", 0, 5},

      {F::kPsr, "FIXEDPOS,51.1", 22, 9},
      {F::kPsr, "SINGLE,51.1", 22, 7},
      {F::kPsr, "PSRDIFF,51.1", 11, 8},
      {F::kPsr, "WAAS,51.1", 25, 5},
      {F::kPsr, "SBAS,51.1", 25, 5},
      {F::kPsr, "NARROW_INT,51.1", 0, 5},
      {F::kPsr, "PPP,51.1", 0, 5},

      {F::kPpp, "SINGLE,51.1", 22, 7},
      {F::kPpp, "PSRDIFF,51.1", 11, 8},
      {F::kPpp, "WAAS,51.1", 25, 5},
      {F::kPpp, "SBAS,51.1", 25, 5},
      // The longer word is tried before its three-letter prefix.
      {F::kPpp, "PPP_CONVERGING,51.1", 27, 15},
      {F::kPpp, "PPP,51.1", 26, 4},
      {F::kPpp, "PPP_BASIC,51.1", 26, 4},
      {F::kPpp, "FIXEDPOS,51.1", 0, 5},
      {F::kPpp, "NARROW_INT,51.1", 0, 5},
  };
  for (const TypeCase& c : cases) {
    SCOPED_TRACE(std::to_string(static_cast<int>(c.family)) + " " + c.text);
    const PositionTypeMatch match = MatchPositionType(c.family, c.text.c_str());
    EXPECT_EQ(match.code, c.code);
    EXPECT_EQ(match.skip, c.skip);
  }
}

TEST(MatchVelocityTypeTest, DopplerAndTheXyzColumn) {
  const std::vector<TypeCase> cases = {
      {F::kBestXyz, "DOPPLER_VELOCITY,-0.0018", 17, 17},
      {F::kBestXyz, "PPP,-0.0018", 51, 4},
      {F::kBestXyz, "PPP_CONVERGING,-0.0018", 55, 15},
      {F::kBestXyz, "NARROW_INT,-0.0018", 50, 11},
      {F::kBestXyz, "WIDE_INT,-0.0018", 0, 5},
      {F::kBestXyz, "NONE,-0.0018", 0, 5},
  };
  for (const TypeCase& c : cases) {
    SCOPED_TRACE(c.text);
    const PositionTypeMatch match = MatchVelocityType(c.text.c_str());
    EXPECT_EQ(match.code, c.code);
    EXPECT_EQ(match.skip, c.skip);
  }
}

}  // namespace
}  // namespace tarnlog
