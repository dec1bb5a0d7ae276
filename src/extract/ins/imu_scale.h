// What one count of a raw IMU log is worth, by IMU model.
#pragma once

namespace tarnlog {

struct ImuScale {
  double gyroDegreesPerSecond;   // per count
  double accelMetresPerSecond2;  // per count
};

// `type` is the board value of the Static page's list ("Kestrix", "Novatel",
// "Trimble", "NEMA", "GGA", "BMI055", "ADIS16470", "ADIS16488", "ADIS16465",
// "EPSON354", "EPSON365" at 0-10), which the receiver also writes as the
// IMU type of RAWIMUXA. Types without an IMU of their own, and unknown
// types, leave the counts as they are (a scale of 1).
ImuScale ScaleOfImu(int type);

}  // namespace tarnlog
