#include "extract/extract_main.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "extract/checksums.h"
#include "extract/dispatch.h"
#include "extract/extract_options.h"
#include "extract/open_stream.h"
#include "extract/scan_sentence.h"

namespace tarnlog {
namespace {

constexpr std::size_t kBlockSize = 204800;     // bytes scanned per step
constexpr std::size_t kCarrySize = 409600;     // carried tail plus one block
constexpr std::size_t kSentenceSize = 102400;  // one sentence's copy
constexpr std::size_t kMaxSentenceLength = 51200;
// Windows maps views at multiples of its 64 KiB allocation granularity; the
// same view size keeps the same blocks.
constexpr std::size_t kAllocationGranularity = 65536;
constexpr std::size_t kViewSize = 1000 * kAllocationGranularity;

constexpr char kUsage[] =
    "***********************************\n"
    " -i inputFlie;\n\n\n -R extract RTKPos file name;\n -M extract MATCHPos file name;\n"
    " -B extract BESTPos file name;\n"
    " -V extract RTKVEL file name;\n"
    " -0 extract BASERANGE file name;\n"
    " -1 extract RANGE file name;\n"
    "************************************\n";

const Dispatcher& SharedDispatcher() {
  static const Dispatcher dispatcher;
  return dispatcher;
}

// One run's open tables, the sentence loop and the carry between blocks.
class ExtractionRun {
 public:
  ExtractionRun(const ExtractOptions& options, const ExtractSettings& settings,
                ExtractionState& state)
      : options_(options),
        settings_(settings),
        state_(state),
        dispatcher_(SharedDispatcher()),
        tables_(std::make_unique<ExtractTables>()),
        carry_(kCarrySize + 1),
        sentence_(kSentenceSize + 1) {}
  ~ExtractionRun() {
    if (captureFd_ >= 0) ::close(captureFd_);
  }

  void OpenTables() {
    captureFd_ = OpenCaptureForReading(options_.capturePath);
    // The tables the first options name open first, as the system does.
    for (TableId id :
         {TableId::kRtkPos, TableId::kTtff, TableId::kRtkPosXY, TableId::kMatch, TableId::kBestPos,
          TableId::kBstPosXY, TableId::kRange, TableId::kFreqList}) {
      Open(id);
    }
    if (!settings_.realValueMode) {
      for (std::size_t k = 0; k < kDefaultTableNames.size(); ++k) {
        const auto id = static_cast<TableId>(static_cast<std::size_t>(kFirstDefaultTable) + k);
        OpenTable(id, TablePath(options_.outputFolder, std::string(kDefaultTableNames[k])));
      }
    }
    for (TableId id : options_.optionOrder) {
      if (!(*tables_)[id].IsOpen()) Open(id);
    }
  }

  // Scans `size` bytes that follow whatever was carried; the unread tail is
  // carried to the next call.
  void Feed(const char* bytes, std::size_t size) {
    while (size > 0) {
      if (carryLength_ == 0) {
        // Nothing carried: scan the block in place and carry only its tail.
        const std::size_t used = Scan(bytes, size);
        CarryTail(bytes + used, size - used);
        return;
      }
      // The carried tail with the block behind it, as one buffer.
      const std::size_t take = std::min(size, kCarrySize - carryLength_);
      std::memcpy(carry_.data() + carryLength_, bytes, take);
      const std::size_t total = carryLength_ + take;
      const std::size_t used = Scan(carry_.data(), total);
      bytes += take;
      size -= take;
      std::memmove(carry_.data(), carry_.data() + used, total - used);
      carryLength_ = total - used;
      // A full buffer always yields a sentence (the force cut sees to it);
      // should it not, the carry is dropped rather than looping.
      if (take == 0 && used == 0) carryLength_ = 0;
    }
  }

  // At the capture's end: a binary frame that the carried tail cuts short
  // is bad, and what it seemed to cover is scanned. A sentence without its
  // line end stays unread, as one cut short anywhere else.
  void Finish() {
    if (carryLength_ > 0) Scan(carry_.data(), carryLength_, /*endOfCapture=*/true);
    carryLength_ = 0;
  }

  void Close() {
    if (settings_.perfstatHeaderPending) *settings_.perfstatHeaderPending = true;
    for (OutFile& file : tables_->files) {
      file.Close();
      if (file.WriteFailed()) ++unwritableTables_;
    }
  }

  // Tables that could not be opened, or not written whole.
  int UnwritableTables() const { return unwritableTables_; }

  // The capture's descriptor, opened with the tables (-1 when it couldn't
  // be); the caller closes it.
  int TakeCapture() { return std::exchange(captureFd_, -1); }

 private:
  void Open(TableId id) {
    const std::string& path = options_.PathOf(id);
    if (options_.Wants(id) && !path.empty()) OpenTable(id, path);
  }

  void OpenTable(TableId id, const std::string& path) {
    if (!OpenStream(1, path, (*tables_)[id])) ++unwritableTables_;
  }

  void CarryTail(const char* tail, std::size_t length) {
    if (length > kCarrySize) {  // a tail is never this long; keep the newest bytes
      tail += length - kCarrySize;
      length = kCarrySize;
    }
    std::memcpy(carry_.data(), tail, length);
    carryLength_ = length;
  }

  // The sentence loop over `size` bytes; returns how many were used.
  std::size_t Scan(const char* buffer, std::size_t size, bool endOfCapture = false) {
    const char* cursor = buffer;
    std::size_t remaining = size;
    char* line = sentence_.data();
    while (remaining > 0) {
      line[0] = '\0';
      int kind = 0;
      std::size_t length = 0;
      const char* next = cursor;
      const int result = ScanSentence(cursor, &remaining, &next, line, kSentenceSize, &length,
                                      &kind, endOfCapture);
      // Ran out: the tail waits for the next block.
      if (next == cursor) break;
      cursor = next;
      // A completed sentence of kind 0 is damage (a force-cut run without
      // line ends, or a sentence with a bad binary frame inside): it is
      // dropped, and the scan goes on behind it so that nothing valid after
      // the damage is lost.
      if (result == kNoSentence) continue;
      Accept(line, std::min(length, kSentenceSize));
    }
    return static_cast<std::size_t>(cursor - buffer);
  }

  // The checks of an accepted sentence, then the dispatch.
  void Accept(char* line, std::size_t copied) {
    const char first = line[0];
    if (first != '#' && first != '$' && first != '%') return;
    // The sentence as C text: everything behind a NUL is out of sight.
    const std::size_t length = strnlen(line, copied);
    if (length >= kMaxSentenceLength) return;
    const char* star = static_cast<const char*>(memrchr(line, '*', length));
    if (!star || star == line) return;
    const std::size_t starIndex = static_cast<std::size_t>(star - line);
    if (first == '$') {
      if (settings_.nmeaCrc && !VerifyNmeaChecksum(line, length, starIndex)) return;
    } else if (settings_.asciiCrc && !VerifyAsciiCrc(line, length, starIndex)) {
      return;
    }
    dispatcher_.Dispatch(line, length, options_, *tables_, state_, settings_);
  }

  const ExtractOptions& options_;
  const ExtractSettings& settings_;
  ExtractionState& state_;
  const Dispatcher& dispatcher_;
  std::unique_ptr<ExtractTables> tables_;
  std::vector<char> carry_;
  std::size_t carryLength_ = 0;
  std::vector<char> sentence_;
  int unwritableTables_ = 0;
  int captureFd_ = -1;
};

// Parses, reports the two process endings, and opens the tables.
std::unique_ptr<ExtractionRun> BeginRun(int argc, char** argv, const ExtractSettings& settings,
                                        ExtractionState& state, ExtractOptions& options) {
  if (argc < 2) {
    std::fputs(kUsage, stdout);
    std::fflush(stdout);
    std::exit(0);
  }
  options = ParseExtractOptions(argc, argv);
  if (options.outputCount == 0) {
    std::fputs("no out file !\n", stdout);
    std::fflush(stdout);
    std::exit(0);
  }
  auto run = std::make_unique<ExtractionRun>(options, settings, state);
  run->OpenTables();
  return run;
}

// Walks a capture in views and blocks as the mapped file is walked; false
// when a view could not be had.
template <typename ViewSource>
bool WalkViews(std::uint64_t fileSize, const ExtractSettings& settings, ExtractionRun& run,
               ViewSource&& view) {
  const std::size_t viewSize = settings.viewSize ? settings.viewSize : kViewSize;
  for (std::uint64_t offset = 0; offset < fileSize; offset += viewSize) {
    const std::size_t length =
        static_cast<std::size_t>(std::min<std::uint64_t>(viewSize, fileSize - offset));
    const char* bytes = view(offset, length);
    if (!bytes) return false;
    for (std::size_t block = 0; block < length; block += kBlockSize) {
      run.Feed(bytes + block, std::min(kBlockSize, length - block));
    }
    view(offset, 0);  // release
  }
  run.Finish();
  return true;
}

}  // namespace

ExtractOutcome RunExtraction(int argc, char** argv, const ExtractSettings& settings,
                             ExtractionState& state) {
  ExtractOptions options;
  std::unique_ptr<ExtractionRun> run = BeginRun(argc, argv, settings, state, options);
  ExtractOutcome outcome;
  const int fd = run->TakeCapture();
  struct stat info {};
  if (fd < 0 || ::fstat(fd, &info) != 0) {
    // The run ends here, as the system ends it, without the closing steps;
    // the tables come out empty.
    if (fd >= 0) ::close(fd);
    outcome.unwritableTables = run->UnwritableTables();
    return outcome;
  }
  const auto fileSize = static_cast<std::uint64_t>(info.st_size);
  void* mapped = nullptr;
  std::size_t mappedLength = 0;
  outcome.captureRead = WalkViews(
      fileSize, settings, *run, [&](std::uint64_t offset, std::size_t length) -> const char* {
        if (mapped) {
          ::munmap(mapped, mappedLength);
          mapped = nullptr;
        }
        if (length == 0) return nullptr;
        mapped = ::mmap(nullptr, length, PROT_READ, MAP_PRIVATE, fd, static_cast<off_t>(offset));
        if (mapped == MAP_FAILED) {
          mapped = nullptr;
          return nullptr;
        }
        mappedLength = length;
        ::madvise(mapped, length, MADV_SEQUENTIAL | MADV_WILLNEED);
        return static_cast<const char*>(mapped);
      });
  if (mapped) ::munmap(mapped, mappedLength);
  ::close(fd);
  run->Close();
  outcome.unwritableTables = run->UnwritableTables();
  return outcome;
}

int ExtractMain(int argc, char** argv, const ExtractSettings& settings, ExtractionState& state) {
  RunExtraction(argc, argv, settings, state);
  return 0;
}

int ExtractFromMemory(int argc, char** argv, const char* bytes, std::size_t size,
                      const ExtractSettings& settings, ExtractionState& state) {
  ExtractOptions options;
  std::unique_ptr<ExtractionRun> run = BeginRun(argc, argv, settings, state, options);
  WalkViews(size, settings, *run, [&](std::uint64_t offset, std::size_t length) -> const char* {
    return length ? bytes + offset : nullptr;
  });
  run->Close();
  return 0;
}

std::vector<std::string> FullExtractionVector(const std::string& outputFolder,
                                              const std::string& capturePath) {
  return {outputFolder,
          "-i",
          capturePath,
          "-RP",
          "rtkpos.txt",
          "-RV",
          "rtkvel.txt",
          "-RD",
          "rtkdop.txt",
          "-MP",
          "match.txt",
          "-PP",
          "psrpos.txt",
          "-PV",
          "psrvel.txt",
          "-PD",
          "psrdop.txt",
          "-T",
          "time.txt",
          "-1",
          "range.txt",
          "FreqList.txt",
          "-BP",
          "bestpos.txt",
          "-GG",
          "gngga.txt",
          "-GR",
          "gnrmc.txt",
          "-GV",
          "gnvtg.txt",
          "-BV",
          "bestvel.txt",
          "-GN",
          "gpntr.txt",
          "-D",
          "drpva.txt",
          "-J",
          "pvtsol.txt",
          "-GY",
          "gyoacc.txt",
          "-ZP",
          "tdifpdppos.txt",
          "-ZV",
          "tdifpdpvel.txt",
          "-ZA",
          "ppppos.txt",
          "-ZD",
          "pppdop.txt",
          "-C",
          "clkdt.txt",
          "-PS",
          "perfstat.txt",
          "perfstat_Name.txt",
          "-AB",
          "alignbslnenua.txt",
          "-o",
          "Odometer.txt",
          "-RI",
          "RawImux.txt",
          "-RQ",
          "rtkpos2.txt",
          "-RW",
          "rtkvel2.txt",
          "-RE",
          "rtkdop2.txt",
          "-MQ",
          "match2.txt",
          "-BG",
          "bestgnss.txt",
          "-IP",
          "inspva.txt",
          "-RM",
          "RawImu.txt",
          "-B1",
          "bestpos1.txt",
          "-B2",
          "bestpos2.txt",
          "-B3",
          "bestvel1.txt",
          "-B4",
          "bestvel2.txt",
          "-P1",
          "psrpos2.txt",
          "-P2",
          "psrvel2.txt",
          "-P3",
          "psrdop2.txt",
          "-BX",
          "bestxyz.txt",
          "-RS",
          "refstation.txt",
          "-RX",
          "rtkdopplervel.txt",
          "-IQ",
          "inspvax.txt",
          "-MH",
          "matchh.txt",
          "-2",
          "rangeh.txt",
          "FreqhList.txt",
          "-KS",
          "ksxt.txt",
          "-AG",
          "agric.txt",
          "-S1",
          "cangear.txt",
          "-S2",
          "canangle.txt",
          "-S3",
          "canspeed.txt",
          "-S4",
          "corrimudata.txt",
          "-S5",
          "timedwheeldata.txt",
          "-S6",
          "dop-ErrorInfo.txt",
          "-S7",
          "bslnxyz.txt",
          "-S8",
          "IMU2VELATTBIASA.txt",
          "-S9",
          "rtkvelD.txt",
          "-Sa",
          "RTK.txt",
          "-GS",
          "GNS.txt"};
}

std::vector<char*> ArgvOf(std::vector<std::string>& texts) {
  std::vector<char*> argv;
  for (std::string& text : texts)
    argv.push_back(text.data());
  argv.push_back(nullptr);
  return argv;
}

}  // namespace tarnlog
