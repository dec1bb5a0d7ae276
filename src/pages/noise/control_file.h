// control.txt, the offline processor's control file: the directives the
// noise page and the production test write, and the span of GPS time they
// hand the processor.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/coordinate_fields.h"

namespace tarnlog {

// A GPS week and second of week.
struct GpsWeekSecond {
  int week = 0;
  double second = 0.0;
};

// Past 604799.0 (strictly) a second is taken into the next week, so 604799.5
// becomes -0.5 of the next week.
GpsWeekSecond WrapWeekSecond(GpsWeekSecond time);

// The span fields of the page: typed, or overwritten by a computed span.
struct SpanFields {
  GpsWeekSecond start;  // "SetStartTime" Week, Second
  GpsWeekSecond end;    // "SetEndTime" Week, Second
  double hours = 0.0;   // "CutTime hour"
};

// Which of the three ways the span is chosen.
enum class SpanCase {
  kProduction,  // a production run: the capture's first epoch plus the offset
  kTyped,       // "Time" off: the typed fields
  kFromRover,   // "Time" on: the first epoch of the pair's rover
};

// The "SetStartTime" and "SetEndTime" lines to write, when written.
struct SpanLines {
  std::optional<GpsWeekSecond> start;
  std::optional<GpsWeekSecond> end;
};

// Works out the span lines. `firstEpoch` is the capture's first epoch (the
// production and rover cases; a capture without one gives week 0, second
// 0); `startOffset` is the production run's whole-second offset. Computed
// values are stored back into `fields`, as the page shows them.
SpanLines ResolveSpan(SpanCase spanCase, SpanFields& fields, GpsWeekSecond firstEpoch,
                      int startOffset);

// Everything else control.txt says, from the page's fields.
struct ControlFileSettings {
  bool staticScene = true;  // "Scene" is "Static": coordinates are written
  Coordinates ref;          // RefCoor latitude, longitude, height
  Coordinates init;         // InitCoor
  // The RefCoor and InitCoor list selections: "SetInitCoor" is written when
  // their low bytes differ.
  int refSelection = 0;
  int initSelection = 0;
  int intervalMs = 10;     // "SetMatchedInterval"
  double elevation = 5.0;  // "SetEleMask"
  double cn0 = 20.0;       // "SetElECNO"
  int gpsPrn = 0;          // "SETREFPRN", each when in its system's range
  int gloPrn = 0;
  int bd2Prn = 0;
  bool rangeH = false;                  // "RH-R": "SETRANGEH"
  bool onlyRangeH = false;              // "OnlyRH": "ONLYRANGEH"
  std::string baseStation = "KESTRIX";  // "SETRECEIVERTYPE"
};

// The valid reference PRNs of "SETREFPRN": GPS 1 to 32, GLONASS 38 to 61,
// BD2 161 to 223.
bool IsValidGpsPrn(int prn);
bool IsValidGloPrn(int prn);
bool IsValidBd2Prn(int prn);

// The text of control.txt as the program writes it, each line ending in
// '\n' except "SETREFPRN", which ends in "\r\n" (so "\r\r\n" once written in
// text mode). `systemMode` is '0' to '5'; another character adds no
// system lines.
std::string ControlFileText(const ControlFileSettings& settings, char systemMode,
                            const SpanLines& span);

// Writes control.txt at `path` in text mode; the result is not looked at.
void WriteControlFile(const std::string& path, const ControlFileSettings& settings, char systemMode,
                      const SpanLines& span);

// ECEF to geodetic on the ellipsoid (a, f): latitude and longitude in
// degrees, the longitude in 0 to 360, height in metres.
Coordinates EcefToGeodetic(double a, double f, double x, double y, double z);
inline constexpr double kNoiseSemiMajor = 6378137.0;
inline constexpr double kNoiseFlattening = 0.0033528106647474805;

}  // namespace tarnlog
