// Record-time extraction: one receiver log to one small time file per log
// type, a line per received message with its GPS week and seconds and a few
// header values, for the continuity analysis. It shares the framing and the
// frame check with the table extraction and nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace tarnlog {

// Both mask words with every bit set: "SelectAllLog".
inline constexpr std::uint32_t kAllLogTypes = 0xFFFFFFFFu;

// Logs up to this size are read in blocks of 102400 bytes; larger ones
// through mapped views sliced into 204800-byte pieces.
inline constexpr std::uint64_t kRecordTimeBlockReadLimit = 1073741824;

struct RecordTimeOptions {
  std::uint32_t logMaskA = 0;
  std::uint32_t logMaskB = 0;
  // '#' lines always pass their frame check, whatever the page's CRC tick
  // says: that tick is kept with the page and has no option here.
  bool nmeaCrcCheck = true;  // "NemaCRCCheck": checksums of '$' lines
  bool otherGga = false;     // "Other_GGA": the per-talker GGA files as well
  // Tests move the block/mapping boundary down to small sizes.
  std::uint64_t blockReadLimit = kRecordTimeBlockReadLimit;
  // Bytes mapped at a time; 0 is the mapping's own 1000 x 64 KiB. Tests
  // make it small so that sentences straddle the views.
  std::size_t viewSize = 0;
};

class RecordTimeState;

// One extraction after another, as the Continue page runs its rows. The
// day counters (GGA, the second base's GGA, RMC) and the latest rover time
// start again with each log.
class RecordTimeExtractor {
 public:
  RecordTimeExtractor();
  ~RecordTimeExtractor();
  RecordTimeExtractor(const RecordTimeExtractor&) = delete;
  RecordTimeExtractor& operator=(const RecordTimeExtractor&) = delete;

  // Opens the log (a regular file) and creates every time file empty in
  // `folder`, which the caller has made, with the per-satellite subfolders.
  // False, with nothing created, when the log can't be opened: the caller's
  // run stops there. A
  // time file that can't be created stays closed and its lines go nowhere.
  bool OpenTimeFiles(const std::string& logPath, const std::string& folder,
                     const RecordTimeOptions& options);
  // Walks the opened log in one sweep; false when it could not be read to
  // its end.
  bool Extract();
  // Closes every time file and every per-satellite file and clears their
  // slots; the log is closed too.
  void CloseTimeFiles();

  // The same filter, classifier and writer over bytes already in memory,
  // fed in blocks as a log is (for the fuzzer and the tests); the time files
  // must be open.
  void ExtractFromMemory(const char* bytes, std::size_t size);

 private:
  std::unique_ptr<RecordTimeState> state_;
};

}  // namespace tarnlog
