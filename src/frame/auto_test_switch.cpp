#include "frame/auto_test_switch.h"

namespace tarnlog {

AutoTestSwitch ReadAutoTestSwitch(const CommandLine& commandLine, std::string_view switchText) {
  AutoTestSwitch result;
  if (commandLine.Argc() < 2 || commandLine.Arg(1) != switchText) return result;
  if (commandLine.Argc() != 4) {
    result.state = AutoTestSwitch::State::kIgnored;
    return result;
  }
  result.state = AutoTestSwitch::State::kTaken;
  for (int i = 2; i < commandLine.Argc(); ++i) {
    if (commandLine.Arg(i) == "-PATH") {
      result.folder = commandLine.Arg(i + 1);  // empty past the end
      break;
    }
  }
  return result;
}

}  // namespace tarnlog
