// Throughput of the production test's capture scans over synthesized binary
// captures: the epoch range (a capture within one window, where the last
// epoch's pass covers it whole, and a large one, where only the two windows
// are read), a framing pass over the whole capture with and without the
// frames' times, and the IMU check over a capture whose IMU frames are all
// zero, so that it reads to the end.
//
// The large captures (300 MB each, seed 1, 10 Hz) are made before the
// benchmarks run; TARNLOG_BENCH_BYTES sets another size. To set the scan
// beside the extraction's own, run extract_bench's BM_ScanOnly with
// TARNLOG_BENCH_CAPTURE naming a capture of the same mix.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "bench_capture.h"
#include "extract/capture_views.h"
#include "pages/noise/capture_scan.h"
#include "synthcap/synth.h"

namespace tarnlog {
namespace {

constexpr std::uint64_t kDefaultCaptureBytes = 300ull << 20;
// Within one window, so that the last epoch's pass reads it all.
constexpr std::uint64_t kWindowCaptureBytes = 1000000;
constexpr char kLiveMix[] = "RANGEB,RAWIMUB,RAWIMUXB,BESTPOSB,RANGECMPB";
constexpr char kSilentMix[] = "RANGEB,RAWIMUB:zero,RAWIMUXB:zero,BESTPOSB,RANGECMPB";
constexpr char kWindowMix[] = "RANGEA,GGA,RANGEB,RAWIMUB,BESTPOSB";

struct BenchFiles {
  std::string folder;
  std::string live;    // binary, IMU frames with data
  std::string silent;  // binary, IMU frames all zero
  std::string window;  // binary and ASCII, within one window
};

BenchFiles& Files() {
  static BenchFiles files;
  return files;
}

using bench::FileSize;
using bench::ReportBytes;

bool WriteCapture(const std::string& path, std::uint64_t bytes, const char* mix) {
  SynthOptions options;
  options.size = bytes;
  options.seed = 1;
  options.rateHz = 10;
  options.mix = mix;
  return bench::WriteCapture(path, options);
}

bool PrepareFiles() {
  BenchFiles& files = Files();
  files.folder = bench::MakeScratchFolder("tarnlog-scan-bench");
  if (files.folder.empty()) return false;
  const std::uint64_t bytes = bench::CaptureBytesWanted(kDefaultCaptureBytes);
  files.live = files.folder + "/live.bin";
  files.silent = files.folder + "/silent.bin";
  files.window = files.folder + "/window.bin";
  std::fprintf(stderr, "making two captures of %llu bytes in %s\n",
               static_cast<unsigned long long>(bytes), files.folder.c_str());
  return WriteCapture(files.live, bytes, kLiveMix) &&
         WriteCapture(files.silent, bytes, kSilentMix) &&
         WriteCapture(files.window, kWindowCaptureBytes, kWindowMix) &&
         FileSize(files.window) <= kEpochWindowBytes;
}

void BM_FindEpochRangeWithinOneWindow(benchmark::State& state) {
  for (auto _ : state) {
    const EpochRange range = FindEpochRange(Files().window);
    if (!range.first || !range.last) state.SkipWithError("no epochs");
    benchmark::DoNotOptimize(range);
  }
  ReportBytes(state, FileSize(Files().window));
}

void BM_FindEpochRangeLargeCapture(benchmark::State& state) {
  for (auto _ : state) {
    const EpochRange range = FindEpochRange(Files().live);
    if (!range.first || !range.last) state.SkipWithError("no epochs");
    benchmark::DoNotOptimize(range);
  }
  ReportBytes(state, 2 * kEpochWindowBytes);
}

// Every frame of the capture, and with `times` each frame's id and time as
// the last epoch's pass takes them.
void FramingPass(benchmark::State& state, bool times) {
  const std::uint64_t size = FileSize(Files().live);
  const int fd = ::open(Files().live.c_str(), O_RDONLY | O_CLOEXEC);
  MappedViews views(fd);
  const char* data = fd >= 0 ? views(0, size) : nullptr;
  if (fd >= 0) ::close(fd);
  if (data == nullptr) {
    state.SkipWithError("cannot map the capture");
    return;
  }
  std::uint64_t frames = 0;
  for (auto _ : state) {
    frames = 0;
    double lastSecond = -1.0;
    std::size_t position = 0;
    CaptureFrame frame;
    FrameStep step;
    while ((step = FrameNextMessage(data, size, &position, &frame, true)) != FrameStep::kNeedMore) {
      if (step != FrameStep::kFrame) continue;
      ++frames;
      if (!times) continue;
      if (const std::optional<FrameEpoch> epoch = EpochOfFrame(frame)) {
        if (epoch->messageId == 43) lastSecond = epoch->time.second;
      }
    }
    benchmark::DoNotOptimize(lastSecond);
  }
  ReportBytes(state, size);
  state.counters["frames"] = static_cast<double>(frames);
}

void BM_FrameNextMessageWholeCapture(benchmark::State& state) {
  FramingPass(state, false);
}
void BM_FramesAndEpochsWholeCapture(benchmark::State& state) {
  FramingPass(state, true);
}

void BM_CheckImuDataSilentImu(benchmark::State& state) {
  for (auto _ : state) {
    const std::string_view verdict = CheckImuData(Files().silent);
    if (verdict != "1") state.SkipWithError("the silent IMU gave another verdict");
    benchmark::DoNotOptimize(verdict);
  }
  ReportBytes(state, FileSize(Files().silent));
}

BENCHMARK(BM_FindEpochRangeWithinOneWindow)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_FindEpochRangeLargeCapture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_FrameNextMessageWholeCapture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_FramesAndEpochsWholeCapture)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CheckImuDataSilentImu)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace tarnlog

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const bool prepared = tarnlog::PrepareFiles();
  if (prepared) benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::error_code ignored;
  std::filesystem::remove_all(tarnlog::Files().folder, ignored);
  if (!prepared) std::fprintf(stderr, "capture_scan_bench: cannot make the captures\n");
  return prepared ? 0 : 1;
}
