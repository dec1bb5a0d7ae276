#include "extract/extract_main.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "extract/capture_views.h"
#include "extract/checksums.h"
#include "extract/dispatch.h"
#include "extract/extract_options.h"
#include "extract/open_stream.h"
#include "extract/sentence_stream.h"

namespace tarnlog {
namespace {

constexpr std::size_t kBlockSize = 204800;     // bytes scanned per step
constexpr std::size_t kCarrySize = 409600;     // carried tail plus one block
constexpr std::size_t kSentenceSize = 102400;  // one sentence's copy
constexpr std::size_t kMaxSentenceLength = 51200;

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

// One run's open tables, fed by the sentence loop.
class ExtractionRun : public SentenceSink {
 public:
  ExtractionRun(const ExtractOptions& options, const ExtractSettings& settings,
                ExtractionState& state)
      : options_(options),
        settings_(settings),
        state_(state),
        dispatcher_(SharedDispatcher()),
        tables_(std::make_unique<ExtractTables>()),
        stream_(kCarrySize, kSentenceSize) {}
  ~ExtractionRun() {
    if (captureFd_ >= 0) ::close(captureFd_);
  }

  void OpenTables() {
    struct stat info {};
    captureFd_ = OpenCaptureForReading(options_.capturePath, &info);
    captureSize_ = static_cast<std::uint64_t>(info.st_size);
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

  void Feed(const char* bytes, std::size_t size) { stream_.Feed(bytes, size, *this); }
  void Finish() { stream_.Finish(*this); }

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
  // be) and closed with the run.
  int Capture() const { return captureFd_; }
  std::uint64_t CaptureSize() const { return captureSize_; }

 private:
  void Open(TableId id) {
    const std::string& path = options_.PathOf(id);
    if (options_.Wants(id) && !path.empty()) OpenTable(id, path);
  }

  void OpenTable(TableId id, const std::string& path) {
    if (!OpenStream(1, path, (*tables_)[id])) ++unwritableTables_;
  }

  // The checks of an accepted sentence, then the dispatch.
  void Accept(char* line, std::size_t copied) override {
    const char first = line[0];
    if (first != '#' && first != '$' && first != '%') return;
    // The sentence as C text: everything behind a NUL is out of sight.
    const std::size_t length = strnlen(line, copied);
    if (length >= kMaxSentenceLength) return;
    const std::size_t starIndex = LastStarIndex(line, length);
    if (starIndex == 0) return;
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
  SentenceStream stream_;
  int unwritableTables_ = 0;
  int captureFd_ = -1;
  std::uint64_t captureSize_ = 0;  // taken when the capture is opened
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
bool WalkCapture(std::uint64_t fileSize, const ExtractSettings& settings, ExtractionRun& run,
                 ViewSource&& view) {
  if (!WalkViews(fileSize, settings.viewSize, kBlockSize, view,
                 [&](const char* bytes, std::size_t size) { run.Feed(bytes, size); })) {
    return false;
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
  if (run->Capture() < 0) {
    // The run ends here, as the system ends it, without the closing steps;
    // the tables come out empty.
    outcome.unwritableTables = run->UnwritableTables();
    return outcome;
  }
  {
    MappedViews views(run->Capture());
    outcome.captureRead = WalkCapture(run->CaptureSize(), settings, *run, views);
  }
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
  WalkCapture(size, settings, *run, MemoryViews{bytes});
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
