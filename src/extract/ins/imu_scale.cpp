#include "extract/ins/imu_scale.h"

namespace tarnlog {
namespace {

constexpr double kStandardGravity = 9.80665;  // m/s^2 per g
// The low word of a 32-bit output extends the 16-bit word by 16 bits.
constexpr double kLowWord = 65536.0;

struct ImuModel {
  int type;            // board value
  int outputBits;      // width of the counts the receiver logs
  double gyroLsb16;    // deg/s per count of the 16-bit (or native) output
  double accelLsb16G;  // g per count of the 16-bit (or native) output
};

// From the makers' data sheets, as the public drivers of the makers and of
// Linux (industrialio) carry them:
//  - ADIS16470: 0.1 deg/s, 1.25 mg (+-2000 deg/s, +-40 g).
//  - ADIS16488(A): 0.02 deg/s, 0.8 mg (+-450 deg/s, +-18 g).
//  - ADIS16465: 0.25 mg (+-8 g); gyro 0.00625 deg/s for the -1 grade
//    (+-125 deg/s). UNCONFIRMED which grade the boards carry: -2 is
//    0.025 deg/s, -3 is 0.1 deg/s.
//  - BMI055: 12-bit accelerometer, 0.98 mg (1/1024 g) in its +-2 g range;
//    16-bit gyroscope, 61.0 mdeg/s (1/16.4 deg/s) in its +-2000 deg/s range.
//    Both are the ranges after reset; UNCONFIRMED that the board keeps them.
//  - EPSON354 (M-G354PDH0): 0.016 deg/s (1/62.5), 0.2 mg. The older
//    M-G354PDC0 had 1/66 deg/s.
//  - EPSON365 (M-G365PDF1): 1/66 deg/s, 0.4 mg. UNCONFIRMED which variant
//    the boards carry: the M-G365PDC1 has 0.16 mg.
// The ADIS and EPSON units are logged with their 32-bit outputs (UNCONFIRMED:
// the receiver's data sheet doesn't say); the BMI055 has only its native
// widths.
constexpr ImuModel kModels[] = {
    {5, 16, 1.0 / 16.4, 1.0 / 1024.0},  // BMI055
    {6, 32, 0.1, 0.00125},              // ADIS16470
    {7, 32, 0.02, 0.0008},              // ADIS16488
    {8, 32, 0.00625, 0.00025},          // ADIS16465
    {9, 32, 1.0 / 62.5, 0.0002},        // EPSON354
    {10, 32, 1.0 / 66.0, 0.0004},       // EPSON365
};

}  // namespace

ImuScale ScaleOfImu(int type) {
  for (const ImuModel& model : kModels) {
    if (model.type != type) continue;
    const double widen = model.outputBits == 32 ? kLowWord : 1.0;
    return {model.gyroLsb16 / widen, model.accelLsb16G * kStandardGravity / widen};
  }
  return {1.0, 1.0};
}

}  // namespace tarnlog
