#include "frame/mode_dispatch.h"

namespace tarnlog {

const ModeWord* MatchModeWord(std::string& lastArgument) {
  for (char& c : lastArgument) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  for (const ModeWord& mode : kModeWords) {
    if (lastArgument.find(mode.word) != std::string::npos) return &mode;
  }
  return nullptr;
}

std::string ModeWordList() {
  std::string list;
  for (const ModeWord& mode : kModeWords) {
    if (!list.empty()) list += ", ";
    list += mode.word;
  }
  return list;
}

}  // namespace tarnlog
