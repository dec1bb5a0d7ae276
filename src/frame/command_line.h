// The program's arguments as the frame and the pages see them: argv[0] is the
// program's own path, and argc counts it.
#pragma once

#include <string>
#include <vector>

namespace tarnlog {

struct CommandLine {
  std::vector<std::string> args;

  CommandLine() = default;
  explicit CommandLine(std::vector<std::string> arguments) : args(std::move(arguments)) {}
  CommandLine(int argc, const char* const* argv);

  int Argc() const { return static_cast<int>(args.size()); }
  // argv[i], or the empty text past the end: positions are taken as they
  // stand, and a missing one must not crash.
  const std::string& Arg(int i) const;
  const std::string& Last() const { return Arg(Argc() - 1); }
};

// Plain text-to-number conversions of the batch positions: a text that is no
// number gives 0, as atoi and atof do.
int ArgToInt(const std::string& text);
double ArgToDouble(const std::string& text);

}  // namespace tarnlog
