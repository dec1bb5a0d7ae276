// Fuzz target of control.txt: what it says from the values that come from
// files. The input begins with a fixed block of raw numbers (the capture's
// first epoch, the typed span, hours, offset, selections and settings; NaN,
// infinities and huge values included), and the rest is
// Config/AllRealValue.txt of a start folder of the entry's own, whose rows
// give the RefCoor and InitCoor triples. Each span case is resolved and
// written, and the triples also go through the ECEF conversion.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "frame/real_value_table.h"
#include "fuzz_folder.h"
#include "pages/noise/control_file.h"
#include "platform/recording_host.h"

namespace {

// Takes raw values off the front of the input; past its end they are 0.
class Reader {
 public:
  Reader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  template <typename T>
  T Take() {
    unsigned char bytes[sizeof(T)] = {};
    for (std::size_t i = 0; i < sizeof(T) && at_ < size_; ++i)
      bytes[i] = data_[at_++];
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }
  std::string_view Rest() const {
    return {reinterpret_cast<const char*>(data_) + at_, size_ - at_};
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

tarnlog::GpsWeekSecond TakeTime(Reader& in) {
  tarnlog::GpsWeekSecond time;
  time.week = in.Take<std::int32_t>();
  time.second = in.Take<double>();
  return time;
}

const tarnlog::RealValueRow& RowAt(const tarnlog::RealValueTable& table, int selection) {
  return table.rows[static_cast<unsigned>(selection) % tarnlog::kRealValueRows];
}

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto table = std::make_unique<tarnlog::RealValueTable>();
  Reader in(data, size);
  const tarnlog::GpsWeekSecond firstEpoch = TakeTime(in);
  const int startOffset = in.Take<std::int32_t>();
  tarnlog::SpanFields typed;
  typed.start = TakeTime(in);
  typed.end = TakeTime(in);
  typed.hours = in.Take<double>();

  tarnlog::ControlFileSettings settings;
  settings.refSelection = in.Take<std::int32_t>();
  settings.initSelection = in.Take<std::int32_t>();
  settings.intervalMs = in.Take<std::int32_t>();
  settings.gpsPrn = in.Take<std::int32_t>();
  settings.gloPrn = in.Take<std::int32_t>();
  settings.bd2Prn = in.Take<std::int32_t>();
  settings.elevation = in.Take<double>();
  settings.cn0 = in.Take<double>();
  const auto flags = in.Take<std::uint8_t>();
  const char systemMode = in.Take<char>();
  settings.staticScene = (flags & 1) != 0;
  settings.rangeH = (flags & 2) != 0;
  settings.onlyRangeH = (flags & 4) != 0;
  settings.baseStation = (flags & 8) != 0 ? "TRIMBLE" : "KESTRIX";

  const std::string& folder = tarnlog::fuzz::Folder({"Config"});
  tarnlog::fuzz::WriteNew(folder + std::string(tarnlog::kRealValueFile), in.Rest());
  table->Clear();
  tarnlog::RecordingHost host;
  tarnlog::LoadRealValues(*table, folder, host);
  settings.ref = tarnlog::CoordinatesOf(RowAt(*table, settings.refSelection));
  settings.init = tarnlog::CoordinatesOf(RowAt(*table, settings.initSelection));

  const std::string receiverLine = "SETRECEIVERTYPE " + settings.baseStation + "\n";
  for (const tarnlog::SpanCase spanCase :
       {tarnlog::SpanCase::kProduction, tarnlog::SpanCase::kTyped, tarnlog::SpanCase::kFromRover}) {
    tarnlog::SpanFields fields = typed;
    const tarnlog::SpanLines span = tarnlog::ResolveSpan(spanCase, fields, firstEpoch, startOffset);
    // Only typed fields may leave a line out.
    if (spanCase != tarnlog::SpanCase::kTyped && (!span.start || !span.end)) std::abort();
    if (!EndsWith(tarnlog::ControlFileText(settings, systemMode, span), receiverLine)) std::abort();
  }

  // "xyz": the triples read as ECEF, as Process converts them.
  settings.ref =
      tarnlog::EcefToGeodetic(tarnlog::kNoiseSemiMajor, tarnlog::kNoiseFlattening,
                              settings.ref.latitude, settings.ref.longitude, settings.ref.height);
  settings.init = tarnlog::EcefToGeodetic(tarnlog::kNoiseSemiMajor, tarnlog::kNoiseFlattening,
                                          settings.init.latitude, settings.init.longitude,
                                          settings.init.height);
  tarnlog::SpanFields fields = typed;
  const std::string path = folder + "/control.txt";
  tarnlog::fuzz::Renew(path);
  tarnlog::WriteControlFile(
      path, settings, systemMode,
      tarnlog::ResolveSpan(tarnlog::SpanCase::kTyped, fields, firstEpoch, startOffset));
  return 0;
}
