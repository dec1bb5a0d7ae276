#include "open_stream.h"

#include <cstdio>

namespace tarnlog {
namespace {

void ComplainAbout(const char* what, const std::string& path) {
  std::printf("%s", what);
  std::printf("***   %.20s\n", path.c_str());
}

}  // namespace

bool OpenStream(int mode, const std::string& path, OutFile& stream) {
  stream.Close();
  if (mode == 0) {
    // A table is never opened for reading.
    ComplainAbout("Cannot open  read  file:\n", path);
    return false;
  }
  const bool append = mode != 1;
  if (stream.Open(path, FileMode::kBinary, append)) return true;
  ComplainAbout(append ? "Cannot open  append  file:\n" : "Cannot open write  file:\n", path);
  return false;
}

int OpenCaptureForReading(const std::string& path, struct stat* info) {
  const int fd = OpenRegularFileForReading(path, info);
  if (fd < 0) ComplainAbout("Cannot open  read  file:\n", path);
  return fd;
}

}  // namespace tarnlog
