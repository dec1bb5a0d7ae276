// The production test's result files: the verdict line that closes a dual
// board's two rows, and the repair of the tables a run leaves.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tarnlog {

// Appends the verdict of the last two rows of `resultPath` when both name
// the rover (their second field occurs in `roverPath`): both "NG" gives NG,
// else both "Yes" gives Yes, else No. Null or empty arguments, a file of
// fewer than two lines, or rows that don't name the rover add nothing.
// Lines are read at most 1024 bytes long (terminator included); a longer
// line counts once, cut there.
void WriteVerdict(const char* resultPath, const char* name, const char* roverPath);

// The repair of the result tables of `folder`: in every "*.txt" but the
// plotter's own tables, lines whose length differs from line 2 are removed
// (with `onlyTxt`, the last line alone). A length counts the line end and at
// most 1024 bytes. A table that loses lines is rewritten in text mode through
// "instead.txt" beside it. `message` shows the system's messages. False when
// the run stopped at "DiffLineNum is more than 1024!".
bool TrimResultTableFiles(const std::string& folder, bool onlyTxt,
                          const std::function<void(std::string_view)>& message);

inline constexpr std::string_view kTrimLinesDiffer = "2nd line and 1st line are differernt!";
inline constexpr std::string_view kTrimTooManyLines = "DiffLineNum is more than 1024!";

}  // namespace tarnlog
