// The automatic-test switches (-RS, -N, -CT, -AUTO) that a page looks for in
// its own start. The AUTO page starts copies of the program with them.
#pragma once

#include <string>
#include <string_view>

#include "frame/command_line.h"

namespace tarnlog {

inline constexpr std::string_view kStaticSwitch = "-RS";
inline constexpr std::string_view kNoiseSwitch = "-N";
inline constexpr std::string_view kContinueSwitch = "-CT";
inline constexpr std::string_view kAutoSwitch = "-AUTO";

struct AutoTestSwitch {
  enum class State {
    kAbsent,   // argv[1] is not this switch
    kIgnored,  // argv[1] is the switch but argc is not exactly 4
    kTaken,    // the page runs its test on `folder`
  };
  State state = State::kAbsent;
  std::string folder;  // the argument after "-PATH"; empty when none follows
};

// A switch applies only when argv[1] is exactly it, case-sensitively, and
// argc is exactly 4; the test folder is the argument after the first exact
// "-PATH" from argv[2] on.
AutoTestSwitch ReadAutoTestSwitch(const CommandLine& commandLine, std::string_view switchText);

}  // namespace tarnlog
