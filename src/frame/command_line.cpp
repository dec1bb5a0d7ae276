#include "frame/command_line.h"

#include <cstdlib>

#include "platform/saturating.h"

namespace tarnlog {

CommandLine::CommandLine(int argc, const char* const* argv) {
  for (int i = 0; i < argc; ++i)
    args.emplace_back(argv[i] ? argv[i] : "");
}

const std::string& CommandLine::Arg(int i) const {
  static const std::string empty;
  if (i < 0 || i >= Argc()) return empty;
  return args[i];
}

int ArgToInt(const std::string& text) {
  return TextToInt(text);
}

double ArgToDouble(const std::string& text) {
  return std::atof(text.c_str());
}

}  // namespace tarnlog
