// The mode words of a headless run. The last argument is lower-cased in
// place and tested for containing each word in this order; the first hit
// wins. "MFG" is compared in capitals with the lower-cased argument, so it
// never fires; the row stays because the noise page still defines its fields.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tarnlog {

struct ModeWord {
  std::string_view word;
  std::string_view className;  // the page that the word fills and runs
  bool showsPage;              // the page is made the visible one first
};

inline constexpr std::array<ModeWord, 7> kModeWords{{
    {"heading", "Heading", true},
    {"rangeplot", "CCN0CompareDlg", true},
    {"static", "llherroRTKStatic", false},
    {"continue", "CRecordTimeDlg", true},
    {"kml", "Nema", true},
    {"test", "PPSReacquisition", true},
    {"MFG", "GenNoise", false},
}};

// Lower-cases `lastArgument` in place (ASCII letters) and returns the first
// mode word it contains, or nullptr.
const ModeWord* MatchModeWord(std::string& lastArgument);

// The words in their order, for messages: "heading, rangeplot, ...".
std::string ModeWordList();

}  // namespace tarnlog
