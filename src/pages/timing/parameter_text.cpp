#include "pages/timing/parameter_text.h"

#include <algorithm>

#include "platform/files.h"

namespace tarnlog {

bool ReadParameterText(const std::string& path, std::string& text) {
  text.clear();
  InFile file;
  if (!file.Open(path, FileMode::kText)) return false;
  char block[4096];
  for (std::size_t got = file.Read(block, sizeof block); got > 0;
       got = file.Read(block, sizeof block)) {
    text.append(block, got);
  }
  text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
  return true;
}

}  // namespace tarnlog
