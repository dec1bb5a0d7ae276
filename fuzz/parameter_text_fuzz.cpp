// Fuzz target of Config/parameter.txt: the input is the file, read whole in
// text mode and copied into a control file's text, which must end with it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/timing/initial_texts.h"
#include "pages/timing/parameter_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = tarnlog::fuzz::Folder() + "/parameter.txt";
  tarnlog::fuzz::WriteNew(path, std::string_view(reinterpret_cast<const char*>(data), size));
  std::string text;
  if (!tarnlog::ReadParameterText(path, text)) std::abort();
  // Only NULs and the CR of each CR LF go.
  if (text.size() > size || text.find('\0') != std::string::npos) std::abort();
  tarnlog::TestSet set;
  set.logType = "headinga";
  const std::string control = tarnlog::ControlText(set, text);
  if (control.size() < text.size() + 1 ||
      control.compare(control.size() - text.size() - 1, text.size(), text) != 0) {
    std::abort();
  }
  return 0;
}
