// Config/parameter.txt: settings of the reacquisition tool that the Initial
// page doesn't read itself. Its whole text is kept at page start and copied
// into every Control.txt.
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

inline constexpr std::string_view kParameterFile = "Config/parameter.txt";

inline constexpr std::string_view kParameterMissing = "请确认parameter.txt文件存在！";
inline constexpr std::string_view kCheckParameter = "请检查parameter.txt";

// Reads the file in text mode ("\r\n" arrives as "\n") into `text`. Lines
// of any length are kept whole (the pieces of 127 characters in which they
// are read join up again); NUL bytes, which the control file's text can't
// carry, are left out and nothing else. False when the file can't be
// opened, with `text` then empty.
bool ReadParameterText(const std::string& path, std::string& text);

}  // namespace tarnlog
