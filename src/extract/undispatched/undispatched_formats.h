// Message formats that stand ready without a path from the dispatch chain:
// their options open a table and the driver leaves it empty. Each function
// takes one sentence (NUL-terminated) and writes its row into `out`; it
// returns false, writing nothing, when the sentence isn't its log or can't
// be read whole.
//
// Unless said otherwise the sentence has a long header
// ("#NAME,port,sequence,idle,timeStatus,week,seconds,...;") whose week and
// seconds open the row.
#pragma once

#include "platform/files.h"

namespace tarnlog {

// GPSEPHEMA and BD2EPHEMA (-EG, -EB), one body layout: PRN, tow, health,
// IODE1, IODE2, week, z-count week, toe, A, delta N, M0, e, omega, cuc,
// cus, crc, crs, cic, cis, I0, I-dot, omega0, omega-dot, IODC, toc, tgd,
// af0, af1, af2, anti-spoofing (TRUE/FALSE), N, URA. Row: week, seconds,
// PRN, tow, toe, health, ephemeris age (header seconds - toe), IODE1,
// IODE2, week, z-count week, A to omega-dot, IODC, toc, tgd, af0, af1,
// af2, anti-spoofing as 1 or 0, N, URA.
bool WriteGpsEphemerisRow(const char* sentence, OutFile& out);
bool WriteBd2EphemerisRow(const char* sentence, OutFile& out);

// GLOEPHEMERISA (-EL). Body: slot, frequency (+7), satellite type,
// reserved, ephemeris week, ephemeris time (ms), time offset, Nt, two
// reserved, issue, health, position, velocity and luni-solar acceleration
// (x, y, z each), tau_n, delta tau_n, gamma, Tk, P, Ft, age, flags. Row:
// week, seconds, slot, ephemeris time (s), time offset, frequency,
// satellite type, the reserved field, ephemeris week, Nt, issue, health,
// then position to flags in body order.
bool WriteGloEphemerisRow(const char* sentence, OutFile& out);

// CANANGLEA (-S2): body the steering angle. CANGEARA (-S1): body the gear.
// CANSPEEDA (-S3): body one (flag, speed) pair for the vehicle or four for
// the wheels (front left, front right, rear left, rear right); the row
// has as many pairs as the body.
bool WriteCanAngleRow(const char* sentence, OutFile& out);
bool WriteCanGearRow(const char* sentence, OutFile& out);
bool WriteCanSpeedRow(const char* sentence, OutFile& out);

// CORRIMUDATAA (-S4): body week, seconds, pitch, roll and yaw rates,
// lateral, longitudinal and vertical accelerations; the row takes the
// body's week and seconds.
bool WriteCorrImuDataRow(const char* sentence, OutFile& out);

// IMU2VELATTBIASA (-S8): body north, east and up velocity, roll, pitch,
// azimuth, and the heading bias.
bool WriteImu2VelAttBiasRow(const char* sentence, OutFile& out);

// RTKVELDA (-S9) and TDIFVELA (-ZV): the velocity body (status, type,
// latency, age, horizontal speed, track over ground, ...). Row: week,
// seconds, code, latency, age, horizontal speed, track; the code is 0 for
// "SOL_COMPUTED", otherwise 100, plus the type's number ("DOPPLER_VELOCITY"
// 17, the others by the BESTXYZA position table).
bool WriteRtkVelDRow(const char* sentence, OutFile& out);
bool WriteTdifVelRow(const char* sentence, OutFile& out);

// TDIFPOSA and PDPPOSA (-ZP): the position body, walked as the PSR logs
// are but with the status deciding where the type starts. Row: week,
// seconds, code, latitude, longitude, ellipsoidal height, three
// deviations, four satellite counts, differential and solution age, the
// extended solution status and the last hex field.
bool WriteTdifPosRow(const char* sentence, OutFile& out);

// $KSXT (-KS): time (YYYYMMDDhhmmss.ss), longitude, latitude, height,
// heading, pitch, track, speed, roll, position quality, heading quality,
// heading satellites, position satellites, east, north and up position,
// east, north and up velocity. Row: seconds of the UTC day, latitude,
// longitude, then the fields from height on in sentence order. Empty
// fields read as 0; a non-numeric one drops the sentence.
bool WriteKsxtRow(const char* sentence, OutFile& out);

}  // namespace tarnlog
