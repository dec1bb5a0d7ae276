// The converter idiom: a script beside the input runs the laboratory's
// Converter.exe over it, and the page goes on with the converted file.
#pragma once

#include <string>

namespace tarnlog {

enum class ConvertTarget {
  kBinary,  // " -b": a ".BIN" capture
  kAscii,   // " -a": an ".ASC" log
};

// Writes "<stem>.bat" beside `path` with the one line
// "<start folder>/EXE/Converter.exe <path> -batch -b" (or -a) and no line
// end, runs it with no console and waits, removes the script through a "del"
// command line confined to the input's folder, and returns the input's path
// with its suffix replaced by ".BIN" (".ASC"), whether or not that was made.
std::string ConvertCapture(const std::string& startFolder, const std::string& path,
                           ConvertTarget target);

}  // namespace tarnlog
