// The positions of the Initial page's "test" run: a fixed head of list
// positions, number pairs and the true position (with the rover's for the
// two heading log types), then the logs, then the word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/command_line.h"

namespace tarnlog {

// "%d_%d": the first number and, after a '_' right behind it, the second.
// A number that isn't there reads as 0; out of int's range it saturates.
struct NumberPair {
  int first = 0;
  int second = 0;
};
NumberPair ReadNumberPair(std::string_view text);

struct InitialTestArguments {
  int ttffLogType = 0;   // "LogType" position of the TTFF pass
  int reacqLogType = 0;  // and of the REACQ pass
  int chipType = 0;      // "ChipType" position
  NumberPair onTime;     // TTFF, REACQ
  NumberPair offTime;
  NumberPair testTimes;
  // The coordinate texts as given: latitude, longitude, height.
  std::string real[3];
  bool hasRover = false;  // the TTFF log type is "headinga" or "heading2a"
  std::string rover[3];
  std::vector<std::string> files;
};

// Reads the positions; missing ones read as empty texts and 0.
InitialTestArguments ReadInitialTestArguments(const CommandLine& commandLine);

// Whether the upper-cased path contains `word` (given in capitals).
bool PathHoldsWord(std::string_view path, std::string_view word);

}  // namespace tarnlog
