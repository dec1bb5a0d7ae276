// The "Continue" page: the continuity test. Each log of the list is turned
// into time files, one per log type, in a folder of its own, and the
// laboratory's continuity analyser then runs in every folder at once.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "extract/record_time/record_time.h"
#include "frame/file_slot.h"
#include "frame/page.h"

namespace tarnlog {

inline constexpr std::size_t kContinueSlotCount = 100;

inline constexpr std::string_view kContinueChooseFileFirst = "Please Choose ASCII File Firstly!";
inline constexpr std::string_view kContinueChooseItem = "Please Choose Item to be deleted!";
inline constexpr std::string_view kContinueChooseFileLower = "Please choose ascii file firstly!";
inline constexpr std::string_view kContinueChooseLogType = "Please choose LogType !";
inline constexpr std::string_view kContinueListFull = "At most 100 files can be chosen!";

// A "LogType" tick and the bits it adds to the two mask words.
struct LogTypeTick {
  std::string_view caption;
  std::uint32_t bitsA;
  std::uint32_t bitsB;
};

// Every "LogType" tick in the order the page reads them.
extern const std::array<LogTypeTick, 42> kLogTypeTicks;

class CRecordTimeDlg : public Page {
 public:
  CRecordTimeDlg(PageParent& parent, PageHost& host);
  // Defaults, the analyser's path under the start folder, the stamp, and the
  // "-CT" automatic test.
  void Start() override;
  void Process() override;

  // The internal add-file action (also used by the command line and the
  // automatic test).
  void AddFile(const std::string& path);
  // Adds the logs of a folder whose names match "*ap.*" and end in ".log",
  // ".LOG", ".Log" or ".ASC". No button reaches it at present.
  void AddFolder(std::string folder);
  void DeleteOneItem();
  void DeleteAllItem();
  // Process's mask: "SelectAllLog" makes both words all ones without a look
  // at the other boxes; otherwise each ticked box adds its bits to the
  // stored words, which are never cleared, so after a run they stay all
  // ones.
  void BuildMask();

  TextField file;  // "File:", the last added path
  TableField files;
  TextField savePath;
  TextField timeStamp;
  CheckField crcCheck;
  CheckField nemaCrcCheck;
  CheckField otherGga;
  std::deque<CheckField> logTypes;  // in kLogTypeTicks order; a deque never moves them
  CheckField selectAllLog;
  CheckField cancelAllLog;
  ActionField selectAsciiFile;
  ActionField deleteOne;
  ActionField deleteAll;
  ActionField process;

  const std::vector<FileSlotPaths>& Slots() const { return slots_; }
  std::uint32_t LogMaskA() const { return logMaskA_; }
  std::uint32_t LogMaskB() const { return logMaskB_; }
  const std::string& AnalyserPath() const { return allContinuesPath_; }

 protected:
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  void Worker();
  void OnSelectAllLog();
  void OnCancelAllLog();
  void ResetTicks();

  std::vector<FileSlotPaths> slots_;
  std::uint32_t logMaskA_ = 0;
  std::uint32_t logMaskB_ = 0;
  std::string allContinuesPath_;
  RecordTimeExtractor extractor_;
};

}  // namespace tarnlog
