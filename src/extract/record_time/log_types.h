// The record-time extraction's tables: which lines are wanted under which
// bit of the two mask words, what is read from them, and which time file
// and form each one's line takes.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tarnlog::record_time {

// The bit of `logMaskA` or `logMaskB` a line needs; kAlways for the
// subtypes that always pass.
enum class MaskWord : std::uint8_t { kAlways, kA, kB };
struct Gate {
  MaskWord word = MaskWord::kAlways;
  std::uint32_t bit = 0;

  bool Passes(std::uint32_t maskA, std::uint32_t maskB) const {
    if (word == MaskWord::kAlways) return true;
    return ((word == MaskWord::kA ? maskA : maskB) & bit) != 0;
  }
};

// What the classifier reads from a line behind its sentence name.
enum class Reading : std::uint8_t {
  kHeaderWords,    // long header: week, seconds, receiver status, reserved word
  kSolution,       // long header week and seconds; solution status and type from the body
  kGpsSubframe,    // header words; the PRN, second field of the body
  kGloString,      // header words; the slot, first field of the body
  kBdsSubframe,    // header words; the PRN and the signal word, second and third of the body
  kHeading,        // header words; the quoted station id, ninth field of the body
  kEvent,          // header words; the first three fields of the body
  kCompactTime,    // fifth and sixth fields: week and milliseconds
  kLongTime,       // long header week and seconds only
  kSsr,            // long header week and seconds; system letter and entry count from the body
  kGalileoSignal,  // long header week and seconds; the signal word, third field of the body
  kBd3Signal,      // the same, with the BeiDou signal words
  kGga,            // NMEA time of day, checked
  kRmc,            // NMEA time of day
  kAhgh,           // NMEA time and date, to GPS week and seconds
};

// The forms of a time file's line.
enum class Form : std::uint8_t {
  kHeaderPair,  // "%6d %12.4lf %d %d\n"
  kTimeOfDay,   // "%4d %12.4lf %02d%02d%07.4lf\n"
  kHeading,     // "%6d %12.4lf %d %d %d\n"
  kEvent,       // "%6d %12.4lf %d %d %d %d %d \n"
  kTimeOnly,    // "%6d %12.4lf \n"
  kSsr,         // "%6d %12.4lf %d  %d\n"
  kOneValue,    // "%6d %12.4lf %d\n"
};

// The families of per-satellite files.
enum class Satellites : std::uint8_t { kNone, kGps, kGlonass, kBeiDou };

// A classified type. '#' logs are found by their text; NMEA sentences (an
// empty text) by their sentence name.
struct LogType {
  std::string_view text;
  Gate gate;
  std::string_view file;
  Reading reading;
  Form form;
  bool alwaysKept = false;  // written whatever the week
  Satellites satellites = Satellites::kNone;
  std::string_view talkerFile = {};  // "Other_GGA": the talker's own GGA file
  std::string_view filterText = {};  // what the filter passes, where it isn't `text`

  std::string_view FilterText() const { return filterText.empty() ? text : filterText; }
};

// The classified types in the order the classifier tries them: the first
// mask word's bits, the second's, then the subtypes. The filter passes a '#'
// line that holds the filter text of a type whose bit is set (a tick may
// thus pass several texts, which the classifier tells apart).
std::span<const LogType> LogTypes();

// Indexes into LogTypes() of the NMEA sentences.
struct NmeaTypes {
  int anyGga = -1;
  int gnGga = -1;
  int gpGga = -1;
  int bdGga = -1;
  int ggaBase2 = -1;
  int rmc = -1;
  int ahgh = -1;
};
const NmeaTypes& NmeaTypeIndexes();

// The forms of the lines written at once by the filter.
enum class DirectForm : std::uint8_t {
  kTime,        // "%d  %.3lf\r\n"
  kEvent,       // "%d  %.3lf  0  %d  %4d  %6d  %d\r\n"
  kBlock,       // "%d  %.3lf  %d  999\r\n"
  kSecondBase,  // "%d  %.3lf %d  %d\r\n"
};
struct DirectType {
  std::string_view text;
  std::string_view file;
  DirectForm form;
};
std::span<const DirectType> DirectTypes();

// "#MATCHED" lines with "FINE" go here before they pass on.
inline constexpr std::string_view kMixMatchedText = "#MATCHED";
inline constexpr std::string_view kMixMatchedFile = "mixmatched.txt";
// The clock status that direct lines must hold.
inline constexpr std::string_view kFineText = "FINE";
// "#PPPDOPA" is wanted only off the COM lines.
inline constexpr std::string_view kPppDopText = "#PPPDOPA";
inline constexpr std::string_view kComText = "COM";
// The base delay: each "#BASERANGEA" against the latest rover time.
inline constexpr std::string_view kBaseRangeText = "#BASERANGEA";
inline constexpr std::string_view kBaseDelayFile = "RangeBaserangeTime.txt";
// A line holding any of these doesn't set the latest rover time.
std::span<const std::string_view> NotRoverTexts();
// NMEA texts found by the same one pass.
inline constexpr std::string_view kGgaBase2Text = "GGABASE2";
inline constexpr std::string_view kAhghText = "$AHGH";

// The per-satellite families: folder and highest file number.
struct SatelliteFolder {
  std::string_view folder;
  int highest;
};
inline constexpr SatelliteFolder kGpsFolder{"GPSSUBFRAME", 32};
inline constexpr SatelliteFolder kGlonassFolder{"GLOSTRING", 61};
inline constexpr SatelliteFolder kBeiDouFolders[3] = {
    {"BDSB1SUBFRAME", 223}, {"BDSB2SUBFRAME", 223}, {"BDSB3SUBFRAME", 223}};

// The receiver's numbers of a solution status and of a position or
// velocity type; -1 for a word not in its table.
int SolutionStatusNumber(std::string_view word);
int PositionTypeNumber(std::string_view word);

// A satellite system letter: "G" 1, "R" 2, "C" 3, "E" 4, any other 0.
int SystemNumber(char letter);

// BeiDou signal words: "B1D1"/"B1D2" 1, "B2D1"/"B2D2" 2, "B3D1"/"B3D2" 3;
// 0 for any other.
int BeiDouSignalNumber(std::string_view word);
// "#RAWBD3SUBFRAMEA": "B1D1" 1, "B2D1" 2; 0 for any other.
int Bd3SignalNumber(std::string_view word);
// "#GALINAVRAWWORDA": "GALE1" 1, "GALE5B" 2; 0 for any other.
int GalileoSignalNumber(std::string_view word);

}  // namespace tarnlog::record_time
