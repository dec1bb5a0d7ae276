// Fuzz target of the script line parser: the input is a script, each line
// (with its line end) goes to the parser, and then the whole input as one
// line. Only the text is read: nothing runs and nothing on disk is touched.
// The record must hold what the runner relies on; a breach aborts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/script_runner.h"

namespace {

using tarnlog::ScriptCommand;

bool DriveRooted(const std::string& word) {
  if (!word.empty() && word.front() == '\\') return true;
  if (word.size() < 3) return false;
  const char lower = static_cast<char>(word[0] | 0x20);
  return lower >= 'a' && lower <= 'z' && word[1] == ':' && (word[2] == '\\' || word[2] == '/');
}

bool Clean(const std::string& word) {
  return word.find('"') == std::string::npos && word.find('\0') == std::string::npos;
}

void Check(std::string_view text) {
  const tarnlog::ScriptLine line = tarnlog::ParseScriptLine(text);
  if (!line.refusal.empty()) return;  // nothing of it runs
  for (const std::string& word : line.arguments) {
    if (!Clean(word) || DriveRooted(word)) std::abort();
  }
  switch (line.command) {
    case ScriptCommand::kChangeFolder:
      if (line.arguments.size() != 1 || line.arguments.front().empty()) std::abort();
      break;
    case ScriptCommand::kDelete:
      if (line.arguments.empty()) std::abort();
      break;
    case ScriptCommand::kMove:
    case ScriptCommand::kCopy:
      if (line.arguments.size() != 2) std::abort();
      break;
    case ScriptCommand::kProgram:
      if (line.programWords.empty() || line.programWords.front().empty()) std::abort();
      for (const std::string& word : line.programWords) {
        if (!Clean(word)) std::abort();
      }
      break;
    default:
      if (!line.arguments.empty() || !line.programWords.empty()) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view script(reinterpret_cast<const char*>(data), size);
  std::size_t pos = 0;
  while (pos < script.size()) {
    std::size_t end = script.find('\n', pos);
    end = end == std::string_view::npos ? script.size() : end + 1;
    Check(script.substr(pos, end - pos));
    pos = end;
  }
  Check(script);
  return 0;
}
