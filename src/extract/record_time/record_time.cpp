#include "extract/record_time/record_time.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include "extract/capture_views.h"
#include "extract/checksums.h"
#include "extract/pattern_set.h"
#include "extract/record_time/line_values.h"
#include "extract/record_time/log_types.h"
#include "extract/record_time/text_chain.h"
#include "extract/record_time/time_files.h"
#include "extract/record_time/time_lines.h"
#include "extract/sentence_stream.h"
#include "platform/files.h"

namespace tarnlog {
namespace {

using namespace record_time;

// A log up to the block-read limit is read in blocks of the first size, a
// larger one in slices of its mapped views of the second.
constexpr std::size_t kReadBlockSize = 102400;
constexpr std::size_t kMappedSliceSize = 204800;
constexpr std::size_t kLineLimit = 204800;
constexpr std::size_t kCarrySize = 2 * kMappedSliceSize;  // a carried tail and one block

constexpr double kSecondsPerDay = 86400.0;
// GGA and RMC give the time of day only: a fall of more than this is the
// next day, a smaller one is jitter.
constexpr double kNewDayFall = 10.0;

struct DayCount {
  int days = 0;
  double previous = 0.0;

  // The seconds since the log's first day began.
  double Running(double secondOfDay) {
    if (secondOfDay < previous - kNewDayFall) ++days;
    previous = secondOfDay;
    return days * kSecondsPerDay + secondOfDay;
  }
};

// Weeks 0 and 1 are a clock that isn't set yet.
bool IsSetWeek(int week) {
  return week != 0 && week != 1;
}

}  // namespace

class RecordTimeState : public SentenceSink {
 public:
  RecordTimeState()
      : chain_(SharedTextChain()), slots_(SharedTimeFileSlots()), stream_(kCarrySize, kLineLimit) {}
  ~RecordTimeState() { CloseLog(); }

  bool Open(const std::string& logPath, const std::string& folder,
            const RecordTimeOptions& options) {
    struct stat info {};
    const int fd = OpenRegularFileForReading(logPath, &info);
    if (fd < 0) return false;
    CloseLog();
    logFd_ = fd;
    logSize_ = static_cast<std::uint64_t>(info.st_size);
    options_ = options;
    wanted_ = chain_.Wanted(options.logMaskA, options.logMaskB);
    files_.Open(folder);
    return true;
  }

  bool Extract() {
    if (logFd_ < 0) return false;
    MappedViews views(logFd_);
    return Walk(logSize_, views);
  }

  void ExtractFromMemory(const char* bytes, std::size_t size) { Walk(size, MemoryViews{bytes}); }

  void Close() {
    files_.Close();
    CloseLog();
  }

 private:
  void CloseLog() {
    if (logFd_ >= 0) ::close(logFd_);
    logFd_ = -1;
  }

  // One sweep over a log of `size` bytes.
  template <typename ViewSource>
  bool Walk(std::uint64_t size, ViewSource&& view) {
    // Every count starts again with each log.
    gga_ = ggaBase2_ = rmc_ = DayCount{};
    roverWeek_ = 0;
    roverSeconds_ = 0.0;
    const std::size_t blockSize =
        size <= options_.blockReadLimit ? kReadBlockSize : kMappedSliceSize;
    // Lines are buffered per file and handed to the kernel at the end of
    // every block of the log (a write call per line would cost more than
    // the whole extraction), so that a run killed later keeps every line up
    // to its last finished block.
    const auto block = [&](const char* bytes, std::size_t length) {
      stream_.Feed(bytes, length, *this);
      files_.FlushWritten();
    };
    const bool whole = WalkViews(size, options_.viewSize, blockSize, view, block);
    stream_.Finish(*this);
    files_.FlushWritten();
    return whole;
  }

  void Accept(char* line, std::size_t copied) override {
    // Only '#' logs and '$' sentences give time lines; '%' logs, binary
    // frames and lines cut off in front of them go.
    const char first = line[0];
    if (first != '#' && first != '$') return;
    const std::size_t length = strnlen(line, copied);
    chain_.Match(line, length, hits_);
    if (first == '$') {
      AcceptSentence(line, length);
      return;
    }
    // The filter: "#MATCHED" lines with "FINE" write their mixed line and
    // pass on; the classified types pass; failing those, a direct type
    // with "FINE" writes its line; anything else is dropped. Where the line
    // would go is known before its frame check, which every '#' line must
    // pass whatever the CRC tick says: a line dropped anyway isn't checked.
    const bool fine = chain_.HoldsFine(hits_);
    const bool mixMatched = fine && chain_.HoldsMixMatched(hits_);
    const bool passes = chain_.PassesFilter(hits_, wanted_);
    const int direct = !passes && fine ? chain_.DirectType(hits_) : -1;
    if (!mixMatched && !passes && direct < 0) return;
    if (!VerifyAsciiCrc(line, length, LastStarIndex(line, length))) return;
    if (mixMatched) WriteDirect(line, slots_.mixMatched, DirectForm::kTime);
    if (passes) {
      const int type = chain_.ClassifiedType(hits_, wanted_);
      if (type >= 0) Classify(type, line);
    } else if (direct >= 0) {
      WriteDirect(line, slots_.ofDirect[static_cast<std::size_t>(direct)],
                  DirectTypes()[static_cast<std::size_t>(direct)].form);
    }
  }

  // NMEA sentences: the talker and the sentence name decide.
  void AcceptSentence(const char* line, std::size_t length) {
    const int type = SentenceType(line, length);
    if (type < 0) return;
    if (options_.nmeaCrcCheck && !VerifyNmeaChecksum(line, length, LastStarIndex(line, length))) {
      return;
    }
    Classify(type, line);
  }

  int SentenceType(const char* line, std::size_t length) const {
    const NmeaTypes& nmea = NmeaTypeIndexes();
    const auto wanted = [&](int type) {
      return LogTypes()[static_cast<std::size_t>(type)].gate.Passes(options_.logMaskA,
                                                                    options_.logMaskB)
                 ? type
                 : -1;
    };
    if (chain_.HoldsGgaBase2(hits_)) return wanted(nmea.ggaBase2);
    if (chain_.StartsWithAhgh(hits_)) return wanted(nmea.ahgh);
    // "$ttSSS,": two talker letters and the sentence's name.
    if (length < 7 || line[6] != ',') return -1;
    const std::string_view name(line + 3, 3);
    if (name == "RMC") return wanted(nmea.rmc);
    if (name != "GGA") return -1;
    // A talker's GGA goes under its own bit, and under the bit of any GGA
    // when its own is off.
    const std::string_view talker(line + 1, 2);
    const int own = talker == "GN"   ? nmea.gnGga
                    : talker == "GP" ? nmea.gpGga
                    : talker == "BD" ? nmea.bdGga
                                     : -1;
    if (own >= 0 && wanted(own) >= 0) return own;
    return wanted(nmea.anyGga);
  }

  void Classify(int typeIndex, const char* line) {
    const LogType& type = LogTypes()[static_cast<std::size_t>(typeIndex)];
    LineValues values;
    if (!ReadLineValues(type, line, values)) return;
    // A file is taken (and so flushed at the block's end) only for a line
    // that is written.
    const int slot = slots_.ofType[static_cast<std::size_t>(typeIndex)];
    if (type.form == Form::kTimeOfDay) {
      DayCount& count = type.reading == Reading::kRmc             ? rmc_
                        : typeIndex == NmeaTypeIndexes().ggaBase2 ? ggaBase2_
                                                                  : gga_;
      const double running =
          count.Running(values.hours * 3600.0 + values.minutes * 60.0 + values.daySeconds);
      WriteTypeLine(files_.Slot(slot), type.form, values, count.days, running);
      const int talker = slots_.talkerOfType[static_cast<std::size_t>(typeIndex)];
      if (options_.otherGga && talker >= 0) {
        WriteTypeLine(files_.Slot(talker), type.form, values, count.days, running);
      }
      return;
    }
    if (type.text == kBaseRangeText && IsSetWeek(roverWeek_) && IsSetWeek(values.week)) {
      WriteBaseDelay(files_.Slot(slots_.baseDelay), roverWeek_, roverSeconds_, values.week,
                     values.seconds);
    }
    if (chain_.IsRoverLine(hits_)) {
      roverWeek_ = values.week;
      roverSeconds_ = values.seconds;
    }
    if (!type.alwaysKept && !IsSetWeek(values.week)) return;
    WriteTypeLine(files_.Slot(slot), type.form, values, 0, 0.0);
    if (OutFile* satellite = SatelliteFile(type.satellites, values)) {
      WriteSatelliteLine(*satellite, values);
    }
  }

  OutFile* SatelliteFile(Satellites family, const LineValues& values) {
    switch (family) {
      case Satellites::kGps:
        return files_.Satellite(kGpsFamily, values.satellite);
      case Satellites::kGlonass:
        return files_.Satellite(kGlonassFamily, values.satellite);
      case Satellites::kBeiDou:
        // The signal word chooses the folder; a word of none has no file.
        return values.signal > 0
                   ? files_.Satellite(kFirstBeiDouFamily + values.signal - 1, values.satellite)
                   : nullptr;
      case Satellites::kNone:
        break;
    }
    return nullptr;
  }

  void WriteDirect(const char* line, int slot, DirectForm form) {
    DirectValues values;
    if (ReadDirectValues(line, values)) WriteDirectLine(files_.Slot(slot), form, values);
  }

  const TextChain& chain_;
  const TimeFileSlots& slots_;
  RecordTimeOptions options_;
  WantedTexts wanted_;
  int logFd_ = -1;
  std::uint64_t logSize_ = 0;  // taken when the log is opened
  TimeFiles files_;
  SentenceStream stream_;
  PatternHits hits_;
  DayCount gga_;
  DayCount ggaBase2_;
  DayCount rmc_;
  int roverWeek_ = 0;
  double roverSeconds_ = 0.0;
};

RecordTimeExtractor::RecordTimeExtractor() : state_(std::make_unique<RecordTimeState>()) {}
RecordTimeExtractor::~RecordTimeExtractor() = default;

bool RecordTimeExtractor::OpenTimeFiles(const std::string& logPath, const std::string& folder,
                                        const RecordTimeOptions& options) {
  return state_->Open(logPath, folder, options);
}

bool RecordTimeExtractor::Extract() {
  return state_->Extract();
}

void RecordTimeExtractor::CloseTimeFiles() {
  state_->Close();
}

void RecordTimeExtractor::ExtractFromMemory(const char* bytes, std::size_t size) {
  state_->ExtractFromMemory(bytes, size);
}

}  // namespace tarnlog
