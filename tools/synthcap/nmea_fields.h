// Fields that several NMEA sentences share, in the high-precision form a
// survey receiver writes: seven decimals of minutes, UTC time to the
// hundredth of a second.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "synthcap/message_writers.h"
#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

inline constexpr double kKnotsPerMetrePerSecond = 1.0 / 0.514444;

// "$", the talker and the context's sentence type, such as "GNGGA".
std::size_t BeginTalker(WriterContext& c, std::string_view talker);

// ",hhmmss.ss"
void FieldUtcTime(std::string& out, const ReceiverEpoch& e);
// ",ddmm.mmmmmmm,N,dddmm.mmmmmmm,E"
void FieldLatitudeLongitude(std::string& out, double latitude, double longitude);

// The GGA quality indicator of a fix, and the mode letter of RMC and VTG.
int GgaQuality(FixKind kind);
char ModeLetter(FixKind kind);

// "GN" for a receiver that tracks GLONASS too, else "GP".
std::string_view TalkerOf(const ReceiverEpoch& e);

}  // namespace tarnlog::synth
