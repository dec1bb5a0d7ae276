// Opening the extraction's tables, with the system's complaints on standard
// output. A failed open never stops a run: the stream stays closed and
// writes to it go nowhere.
#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/files.h"

namespace tarnlog {

// Mode 1 opens for "wb", anything but 0 for "ab". On failure prints
// "Cannot open write  file:\n" (or "Cannot open  append  file:\n") and
// "***   %.20s\n" with the path.
bool OpenStream(int mode, const std::string& path, OutFile& stream);

// The capture, opened once for its mapping: a regular file's descriptor
// (with its status in `info` when given), or -1 after printing
// "Cannot open  read  file:\n" and the path as above.
int OpenCaptureForReading(const std::string& path, struct stat* info = nullptr);

}  // namespace tarnlog
