// Pieces of the .bat scripts the pages write, in their "\n" form (a
// text-mode write turns each into "\r\n").
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

// `text` in double quotes, as a path stands on a script line.
std::string Quoted(std::string_view text);

// The line that opens a script: the drive of `path` (the path-part
// operation with n = 1, empty on Linux) and its line end.
std::string DriveLine(std::string_view path);

// cd "<folder>" and its line end.
std::string EnterFolderLine(std::string_view folder);

}  // namespace tarnlog
