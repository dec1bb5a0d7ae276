// synthcap: writes a synthetic receiver capture.
//
//   synthcap --size BYTES --seed N [--rate HZ] [--faults] [--mix NAME] -o FILE
//
// BYTES may end in K, M or G (binary multiples). Exit status 0 on success,
// 1 when the file can't be written, 2 on bad arguments.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "synthcap/message_table.h"
#include "synthcap/synth.h"

namespace {

constexpr char kUsage[] =
    "usage: synthcap --size BYTES --seed N [--rate HZ] [--faults] [--mix NAME] -o FILE\n"
    "  --size   bytes to write at least (suffix K, M or G for binary multiples)\n"
    "  --seed   seed of the capture; the same arguments give the same bytes\n"
    "  --rate   epochs per second, 1 to 20 (10)\n"
    "  --faults damage a fraction of the sentences as real captures are damaged\n"
    "  --mix    which messages (full)\n";

int Usage(const std::string& problem) {
  std::fprintf(stderr, "synthcap: %s\n%s%s", problem.c_str(), kUsage,
               tarnlog::synth::MixHelp().c_str());
  return 2;
}

// Digits with an optional K, M or G; false on anything else or overflow.
bool ParseCount(std::string_view text, std::uint64_t& value) {
  if (text.empty()) return false;
  std::uint64_t multiplier = 1;
  switch (text.back()) {
    case 'K':
    case 'k':
      multiplier = 1ull << 10;
      break;
    case 'M':
    case 'm':
      multiplier = 1ull << 20;
      break;
    case 'G':
    case 'g':
      multiplier = 1ull << 30;
      break;
    default:
      break;
  }
  if (multiplier != 1) text.remove_suffix(1);
  if (text.empty()) return false;
  std::uint64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    const std::uint64_t digit = static_cast<std::uint64_t>(c - '0');
    if (number > (UINT64_MAX - digit) / 10) return false;
    number = number * 10 + digit;
  }
  if (number > UINT64_MAX / multiplier) return false;
  value = number * multiplier;
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  tarnlog::SynthOptions options;
  std::string output;
  bool haveSize = false, haveSeed = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    const bool takesValue =
        arg == "--size" || arg == "--seed" || arg == "--rate" || arg == "--mix" || arg == "-o";
    if (takesValue && i + 1 >= argc) return Usage(std::string(arg) + " needs a value");
    if (arg == "--help" || arg == "-h") {
      std::fputs(kUsage, stdout);
      std::fputs(tarnlog::synth::MixHelp().c_str(), stdout);
      return 0;
    } else if (arg == "--size") {
      if (!ParseCount(argv[++i], options.size)) return Usage("bad size");
      haveSize = true;
    } else if (arg == "--seed") {
      if (!ParseCount(argv[++i], options.seed)) return Usage("bad seed");
      haveSeed = true;
    } else if (arg == "--rate") {
      std::uint64_t rate = 0;
      if (!ParseCount(argv[++i], rate) || rate > 1000) return Usage("bad rate");
      options.rateHz = static_cast<int>(rate);
    } else if (arg == "--mix") {
      options.mix = argv[++i];
    } else if (arg == "-o") {
      output = argv[++i];
    } else if (arg == "--faults") {
      options.faults = true;
    } else {
      return Usage("unknown argument " + std::string(arg));
    }
  }
  if (!haveSize) return Usage("--size is required");
  if (!haveSeed) return Usage("--seed is required");
  if (output.empty()) return Usage("-o is required");
  const std::string problem = tarnlog::CheckSynthOptions(options);
  if (!problem.empty()) return Usage(problem);

  std::FILE* file = std::fopen(output.c_str(), "wb");
  if (file == nullptr) {
    std::fprintf(stderr, "synthcap: cannot write %s: %s\n", output.c_str(), std::strerror(errno));
    return 1;
  }
  std::setvbuf(file, nullptr, _IONBF, 0);  // blocks are written whole
  const bool written = tarnlog::StreamCapture(options, [file](std::string_view block) {
    return std::fwrite(block.data(), 1, block.size(), file) == block.size();
  });
  if (std::fclose(file) != 0 || !written) {
    std::fprintf(stderr, "synthcap: cannot write %s\n", output.c_str());
    return 1;
  }
  return 0;
}
