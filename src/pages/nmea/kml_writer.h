// KML tracks from a mix log: a start and an end marker, one icon with a
// balloon of solution details per epoch, and a coloured line between
// epochs. The output lies beside the mix log as <folder>/<mix log name>
// <suffix>.kml and is flushed after every epoch, so an interrupted run
// leaves a readable prefix without the closing tags.
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

inline constexpr int kKmlOpenFailed = -1;

// Colour index (0 "Green" to 10 "White"); any other index is green.
std::string_view KmlIconWord(int colourIndex);
std::string_view KmlLineColour(int colourIndex);  // aabbggrr

// Name suffixes: by KML type 0 to 17 ("_GGARange" ... "_Sppnav") and by INS
// type 0 to 3 ("_Drpva", "_Inspva", "_Inspvax", "_Inspvas"); other types
// add nothing. The trajectory writer's is "_PosT".
std::string_view KmlTypeSuffix(int kmlType);
std::string_view InsKmlTypeSuffix(int insType);

// <folder of the mix log>/<its name without extension><suffix>.kml
std::string KmlPath(const std::string& mixLogPath, std::string_view suffix);

// Each returns 1 when the track was written and kKmlOpenFailed when the mix
// log or the KML file can't be opened. Lines that don't parse are skipped.

// Position rows of 25 fields, icons in the colour of `colourIndex`.
int WriteKml(const std::string& mixLogPath, int colourIndex, int kmlType, int lineWidth);

// INS rows of 33 fields, with velocity, attitude and the two ages in the
// balloon.
int WriteInsKml(const std::string& mixLogPath, int colourIndex, int insType, int lineWidth);

// Rewritten trajectory rows of 12 fields; icon and line colours follow the
// quality.
int WritePostKml(const std::string& mixLogPath, int lineWidth);

}  // namespace tarnlog
