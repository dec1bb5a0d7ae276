// The time files of one log: every file of the tables, created empty at
// open, and the per-satellite files, opened when their first line comes.
// Lines are written in binary mode, every form's bytes as they stand.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "extract/record_time/log_types.h"
#include "platform/files.h"

namespace tarnlog::record_time {

// Which slot each table's file has.
struct TimeFileSlots {
  std::vector<std::string_view> names;  // one per slot, in the tables' order
  std::vector<int> ofType;              // per LogTypes() entry
  std::vector<int> talkerOfType;        // per LogTypes() entry, -1 for none
  std::vector<int> ofDirect;            // per DirectTypes() entry
  int mixMatched = -1;
  int baseDelay = -1;
};
const TimeFileSlots& SharedTimeFileSlots();

// Per-satellite families: GPS, GLONASS, then BeiDou by signal 1 to 3.
inline constexpr int kSatelliteFamilies = 5;
inline constexpr int kGpsFamily = 0;
inline constexpr int kGlonassFamily = 1;
inline constexpr int kFirstBeiDouFamily = 2;

class TimeFiles {
 public:
  TimeFiles();

  // Makes the per-satellite folders in `folder` and creates every time
  // file of the tables there, empty. A slot already open stays as it is; a
  // file that can't be created leaves its slot closed, and its lines go
  // nowhere.
  void Open(const std::string& folder);
  // Closes every file, per-satellite ones included, and clears the slots.
  void Close();

  // The file of a slot, to write a line to.
  OutFile& Slot(int slot) { return Touch(files_[static_cast<std::size_t>(slot)]); }
  // A satellite's file of a family, opened if its slot is empty; null for a
  // number outside the family's files.
  OutFile* Satellite(int family, int number);

  // Hands the lines written since the last call to the kernel, so that a
  // run killed later keeps them.
  void FlushWritten();

 private:
  struct File {
    OutFile out;
    bool written = false;  // since the last FlushWritten
    bool tried = false;    // a per-satellite file is tried once a log
  };
  OutFile& Touch(File& file) {
    if (!file.written) {
      file.written = true;
      written_.push_back(&file);
    }
    return file.out;
  }

  std::string folder_;
  std::vector<File> files_;
  std::array<std::vector<File>, kSatelliteFamilies> satellites_;
  std::vector<File*> written_;
};

}  // namespace tarnlog::record_time
