// The colours of the KML tracks and the icon files that go with them. The
// icon generator (tools/kmlicons) includes this header too, so the shipped
// KML folder holds exactly the names the writers refer to.
#pragma once

#include <iterator>
#include <string>
#include <string_view>

namespace tarnlog {

struct KmlColour {
  std::string_view listText;    // the page's "Color" list
  std::string_view iconWord;    // first part of an icon file name
  std::string_view lineColour;  // LineStyle colour, aabbggrr
};

// By colour index, as the "Color" list orders them.
inline constexpr KmlColour kKmlColours[] = {
    {"Green", "green", "ff00ff00"},   {"Orange", "orange", "ff0080ff"},
    {"Yellow", "yellow", "ff00ffff"}, {"Blue", "blue", "ffff0000"},
    {"Red", "red", "ff3300ff"},       {"Teal", "teal", "ff33ccff"},
    {"Pink", "pink", "ffcbc0ff"},     {"Gray", "gray", "ffcccccc"},
    {"Brown", "brown", "ff2a2aa5"},   {"Black", "black", "ff000000"},
    {"White", "white", "ffffffff"},
};
inline constexpr int kKmlColourCount = static_cast<int>(std::size(kKmlColours));

// Status codes that get an icon file in every colour: the mix logs write 0
// to 7, and a GGA quality runs up to 9. An icon is named by the word and the
// status, with a leading zero for 1 to 8 only: "green0", "green04", "green9"
// (the receiver tool's names, kept as they are).
inline constexpr int kKmlIconStatusLow = 0;
inline constexpr int kKmlIconStatusHigh = 9;

// The icon file of an epoch without folder and extension.
inline std::string KmlIconName(std::string_view word, int status) {
  std::string name(word);
  if (status >= 1 && status <= 8) name += '0';
  name += std::to_string(status);
  return name;
}

}  // namespace tarnlog
