#include "pages/timing/initial_command_line.h"

#include "platform/saturating.h"

namespace tarnlog {
namespace {

// The log types with a base and a rover stand at these list positions.
constexpr int kHeadingA = 4;
constexpr int kHeading2A = 5;
constexpr int kFirstFileWithoutRover = 10;
constexpr int kFirstFileWithRover = 13;

bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// One "%d" conversion from `at`: false, with `at` unmoved, when no digits
// follow the blanks and the sign.
bool ReadOne(std::string_view text, std::size_t& at, int& value) {
  std::size_t p = at;
  while (p < text.size() && IsBlank(text[p]))
    ++p;
  if (p < text.size() && (text[p] == '+' || text[p] == '-')) ++p;
  if (p >= text.size() || !IsDigit(text[p])) return false;
  while (p < text.size() && IsDigit(text[p]))
    ++p;
  value = TextToInt(std::string(text.substr(at, p - at)));
  at = p;
  return true;
}

}  // namespace

NumberPair ReadNumberPair(std::string_view text) {
  NumberPair pair;
  std::size_t at = 0;
  if (!ReadOne(text, at, pair.first)) return pair;
  if (at >= text.size() || text[at] != '_') return pair;
  ++at;
  ReadOne(text, at, pair.second);
  return pair;
}

InitialTestArguments ReadInitialTestArguments(const CommandLine& commandLine) {
  InitialTestArguments args;
  args.ttffLogType = ArgToInt(commandLine.Arg(1));
  args.reacqLogType = ArgToInt(commandLine.Arg(2));
  args.chipType = ArgToInt(commandLine.Arg(3));
  args.onTime = ReadNumberPair(commandLine.Arg(4));
  args.offTime = ReadNumberPair(commandLine.Arg(5));
  args.testTimes = ReadNumberPair(commandLine.Arg(6));
  for (int i = 0; i < 3; ++i)
    args.real[i] = commandLine.Arg(7 + i);
  args.hasRover = args.ttffLogType == kHeadingA || args.ttffLogType == kHeading2A;
  int firstFile = kFirstFileWithoutRover;
  if (args.hasRover) {
    for (int i = 0; i < 3; ++i)
      args.rover[i] = commandLine.Arg(10 + i);
    firstFile = kFirstFileWithRover;
  }
  for (int i = firstFile; i <= commandLine.Argc() - 2; ++i)
    args.files.push_back(commandLine.Arg(i));
  return args;
}

bool PathHoldsWord(std::string_view path, std::string_view word) {
  std::string upper(path);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper.find(word) != std::string::npos;
}

}  // namespace tarnlog
