// The inertial extractors, as the dispatch chain calls them, and the raw IMU
// row that the INS noise page writes by itself.
#pragma once

#include <cstddef>

#include "extract/dispatch.h"
#include "platform/files.h"

namespace tarnlog {

// #RAWIMUXA: one row into `table` when the sentence is readable and carries
// "FINE". `sentence` is NUL-terminated.
void ExtractRawImux(const char* sentence, std::size_t length, OutFile* table);

// The INS status word's number: its position in the receiver's list, compared
// over the shortened lengths (INSPVAA) or over the whole word (INSPVAXA); -1
// for a word that matches none.
int InsStatusNumber(const char* text, std::size_t length, bool shortened);

// ins_pva.cpp
void ExtractInsPva(const DispatchContext& c);   // INSPVAA
void ExtractInsPvax(const DispatchContext& c);  // INSPVAXA
void ExtractDrPva(const DispatchContext& c);    // DRPVAA

// raw_imu.cpp
void ExtractRawImuxRow(const DispatchContext& c);  // RAWIMUXA
void ExtractRawImu(const DispatchContext& c);      // RAWIMUA, with the page's IMU type

// attitude_logs.cpp
void ExtractImuAtt(const DispatchContext& c);          // IMUATTA
void ExtractGyrAtts(const DispatchContext& c);         // GYRATTSA
void ExtractRawGyr2(const DispatchContext& c);         // RAWGYR2A
void ExtractInsAttCov(const DispatchContext& c);       // INSATTCOVSA
void ExtractRawMagx(const DispatchContext& c);         // RAWMAGXA
void ExtractTimedWheelData(const DispatchContext& c);  // TIMEDWHEELDATAA

}  // namespace tarnlog
