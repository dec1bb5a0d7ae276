// Throughput and peak memory of the extraction over a synthesized capture:
// the sentence scan alone, the BESTPOSA table alone, the Static page's full
// set of tables, and the Continue page's time files of every log type.
//
// The capture (1 GiB, seed 1, 10 Hz, no faults) is made once before the
// benchmarks run. TARNLOG_BENCH_BYTES sets another size for quick runs;
// TARNLOG_BENCH_CAPTURE names a file to make (or reuse, when it is at least
// that large) and keep, for bench/compare-grep-awk to time on the same bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_capture.h"
#include "extract/extract_main.h"
#include "extract/record_time/record_time.h"
#include "extract/scan_sentence.h"
#include "platform/folders.h"
#include "synthcap/synth.h"

namespace tarnlog {
namespace {

constexpr std::uint64_t kDefaultCaptureBytes = 1ull << 30;
constexpr std::uint64_t kSynthesisBytes = 256ull << 20;
constexpr std::size_t kLineCapacity = 102400;

struct BenchFiles {
  std::string folder;   // scratch folder, removed at the end
  std::string capture;  // the capture's path
  std::uint64_t bytes = 0;
};

BenchFiles& Files() {
  static BenchFiles files;
  return files;
}

using bench::FileSize;

SynthOptions CaptureOptions(std::uint64_t bytes) {
  SynthOptions options;
  options.size = bytes;
  options.seed = 1;
  options.rateHz = 10;
  return options;
}

bool PrepareFiles() {
  BenchFiles& files = Files();
  files.folder = bench::MakeScratchFolder("tarnlog-bench");
  if (files.folder.empty()) return false;
  const std::uint64_t wanted = bench::CaptureBytesWanted(kDefaultCaptureBytes);
  const char* kept = std::getenv("TARNLOG_BENCH_CAPTURE");
  files.capture = kept && *kept ? kept : files.folder + "/capture.log";
  if (FileSize(files.capture) < wanted || wanted == 0) {
    std::fprintf(stderr, "making a capture of %llu bytes in %s\n",
                 static_cast<unsigned long long>(wanted), files.capture.c_str());
    if (!bench::WriteCapture(files.capture, CaptureOptions(wanted))) return false;
  }
  files.bytes = FileSize(files.capture);
  return true;
}

// Peak resident memory is measured per benchmark: writing 5 to clear_refs
// sets the high-water mark back to the current resident size.
void ResetPeakMemory() {
  if (std::FILE* file = std::fopen("/proc/self/clear_refs", "w")) {
    std::fputs("5", file);
    std::fclose(file);
  }
}

double PeakMemoryMiB() {
  std::FILE* file = std::fopen("/proc/self/status", "r");
  if (file == nullptr) return 0.0;
  char line[256];
  double kib = 0.0;
  while (std::fgets(line, sizeof line, file)) {
    if (std::strncmp(line, "VmHWM:", 6) == 0) kib = std::strtod(line + 6, nullptr);
  }
  std::fclose(file);
  return kib / 1024.0;
}

void Report(benchmark::State& state, std::uint64_t bytesPerIteration) {
  bench::ReportBytes(state, bytesPerIteration);
  state.counters["peak_rss_MiB"] = PeakMemoryMiB();
}

class MappedCapture {
 public:
  explicit MappedCapture(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return;
    size_ = FileSize(path);
    void* mapped = size_ ? ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, fd, 0) : MAP_FAILED;
    ::close(fd);
    if (mapped == MAP_FAILED) return;
    ::madvise(mapped, size_, MADV_SEQUENTIAL);
    data_ = static_cast<const char*>(mapped);
  }
  ~MappedCapture() {
    if (data_) ::munmap(const_cast<char*>(data_), size_);
  }
  MappedCapture(const MappedCapture&) = delete;
  MappedCapture& operator=(const MappedCapture&) = delete;

  const char* Data() const { return data_; }
  std::size_t Size() const { return size_; }

 private:
  const char* data_ = nullptr;
  std::size_t size_ = 0;
};

constexpr std::size_t kReleaseStep = 64u << 20;
constexpr std::size_t kPage = 4096;

void BM_ScanOnly(benchmark::State& state) {
  ResetPeakMemory();
  MappedCapture capture(Files().capture);
  if (capture.Data() == nullptr) {
    state.SkipWithError("cannot map the capture");
    return;
  }
  std::vector<char> line(kLineCapacity);
  std::uint64_t sentences = 0;
  for (auto _ : state) {
    const char* cursor = capture.Data();
    const char* released = capture.Data();
    std::size_t remaining = capture.Size();
    while (remaining > 0) {
      const std::size_t before = remaining;
      const char* next = cursor;
      std::size_t length = 0;
      int kind = 0;
      const int result =
          ScanSentence(cursor, &remaining, &next, line.data(), line.size(), &length, &kind);
      if (result == 0 && remaining == before) break;  // an unfinished tail
      cursor = next;
      ++sentences;
      // Like the driver's 64 MB views, let go of what has been read, so the
      // resident size says what scanning needs, not the file's size.
      if (static_cast<std::size_t>(cursor - released) >= kReleaseStep) {
        const std::size_t span = static_cast<std::size_t>(cursor - released) / kPage * kPage;
        ::madvise(const_cast<char*>(released), span, MADV_DONTNEED);
        released += span;
      }
    }
    benchmark::DoNotOptimize(sentences);
  }
  Report(state, capture.Size());
  state.counters["sentences"] = static_cast<double>(sentences / state.iterations());
}

// ExtractMain as the pages call it, with default settings and a fresh state.
void RunExtraction(benchmark::State& state, bool fullVector) {
  const std::string output = Files().folder + (fullVector ? "/full" : "/bestpos");
  std::filesystem::create_directories(output);
  std::vector<std::string> texts = FullExtractionVector(output, Files().capture);
  int argc = 125;
  if (!fullVector) {
    const std::vector<std::string> full = texts;
    texts.resize(3);
    for (std::size_t i = 3; i + 1 < full.size(); ++i) {
      if (full[i] != "-BP") continue;
      texts.push_back(full[i]);
      texts.push_back(full[i + 1]);
    }
    argc = static_cast<int>(texts.size());
  }
  ResetPeakMemory();
  for (auto _ : state) {
    std::vector<char*> argv = ArgvOf(texts);
    ExtractSettings settings;
    ExtractionState extractionState;
    ExtractMain(argc, argv.data(), settings, extractionState);
  }
  Report(state, Files().bytes);
}

void BM_ExtractBestPos(benchmark::State& state) {
  RunExtraction(state, false);
}
void BM_ExtractFullVector(benchmark::State& state) {
  RunExtraction(state, true);
}

// The record-time extraction with both mask words all ones, as the Continue
// page runs one row.
void BM_RecordTimeAllTypes(benchmark::State& state) {
  const std::string output = Files().folder + "/recordtime";
  MakeFolder(output);
  RecordTimeOptions options;
  options.logMaskA = options.logMaskB = kAllLogTypes;
  ResetPeakMemory();
  for (auto _ : state) {
    RecordTimeExtractor extractor;
    if (!extractor.OpenTimeFiles(Files().capture, output, options)) {
      state.SkipWithError("cannot open the capture");
      return;
    }
    extractor.Extract();
    extractor.CloseTimeFiles();
  }
  Report(state, Files().bytes);
}

// The synthesizer itself, into memory that is thrown away.
void BM_Synthesize(benchmark::State& state) {
  const std::uint64_t bytes = std::min(kSynthesisBytes, std::max<std::uint64_t>(Files().bytes, 1));
  std::uint64_t produced = 0;
  ResetPeakMemory();
  for (auto _ : state) {
    produced = 0;
    StreamCapture(CaptureOptions(bytes), [&](std::string_view block) {
      produced += block.size();
      benchmark::DoNotOptimize(block.data());
      return true;
    });
  }
  Report(state, produced);
}

BENCHMARK(BM_ScanOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ExtractBestPos)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ExtractFullVector)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_RecordTimeAllTypes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Synthesize)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace tarnlog

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  if (!tarnlog::PrepareFiles()) {
    std::fprintf(stderr, "extract_bench: cannot make the capture\n");
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::error_code ignored;
  std::filesystem::remove_all(tarnlog::Files().folder, ignored);
  return 0;
}
