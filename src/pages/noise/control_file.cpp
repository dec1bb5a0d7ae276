#include "pages/noise/control_file.h"

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstddef>

#include "platform/fast_format.h"
#include "platform/files.h"

namespace tarnlog {

namespace {

constexpr double kSecondsPerWeek = 604800.0;
constexpr double kLastSecondOfWeek = 604799.0;
constexpr double kSecondsPerHour = 3600.0;
constexpr double kDegreesPerRadian = 57.295779513082195;

// printf in the "C" locale, appended to `out`; a number of any size fits.
void AppendFormatted(std::string& out, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
void AppendFormatted(std::string& out, const char* format, ...) {
  char text[256];
  va_list args;
  va_start(args, format);
  const int length = FastFormat(text, sizeof text, format, args);
  va_end(args);
  if (length < 0) return;
  const std::size_t size = static_cast<std::size_t>(length);
  if (size <= sizeof text) {
    out.append(text, size);
    return;
  }
  const std::size_t at = out.size();
  out.resize(at + size);
  va_start(args, format);
  FastFormat(out.data() + at, size, format, args);
  va_end(args);
}

bool IsSet(const GpsWeekSecond& time) {
  return time.week > 0 && time.second >= 0.0;
}

// The end of a span of `hours` from `start`, in the start's week.
GpsWeekSecond EndAfter(const GpsWeekSecond& start, double hours) {
  return WrapWeekSecond({start.week, start.second + hours * kSecondsPerHour});
}

// The end when no length is given: an hour after the start.
GpsWeekSecond EndOrHourAfter(const GpsWeekSecond& start, double hours) {
  return EndAfter(start, hours > 0.0 ? hours : 1.0);
}

// The two lines of a `systemMode`, each switching one system off.
struct SystemLines {
  const char* first;
  const char* second;
};

constexpr SystemLines kSystemLines[] = {
    {nullptr, nullptr},
    {"SetUseBD2InRTK false", "SetUseGalInRTK false"},
    {"SetUseGpsInRTK false", "SetUseGloInRTK false"},
    {"SetUseGloInRTK false", "SetUseGalInRTK false"},
    {"SetUseGloInRTK false", "SetUseBD2InRTK false"},
    {"SetUseGpsInRTK false", "SetUseGalInRTK false"},
};

void AppendCoordinates(std::string& out, const char* directive, const Coordinates& at) {
  AppendFormatted(out, "%s %.9lf %.9lf %.6lf\n", directive, at.latitude, at.longitude, at.height);
}

}  // namespace

GpsWeekSecond WrapWeekSecond(GpsWeekSecond time) {
  if (time.second > kLastSecondOfWeek) {
    time.second -= kSecondsPerWeek;
    // A week read from outside may sit at the end of int's range.
    if (time.week < INT_MAX) ++time.week;
  }
  return time;
}

SpanLines ResolveSpan(SpanCase spanCase, SpanFields& fields, GpsWeekSecond firstEpoch,
                      int startOffset) {
  SpanLines lines;
  switch (spanCase) {
    case SpanCase::kProduction:
      fields.start = WrapWeekSecond({firstEpoch.week, firstEpoch.second + startOffset});
      fields.end = EndOrHourAfter(fields.start, fields.hours);
      lines.start = fields.start;
      lines.end = fields.end;
      break;
    case SpanCase::kTyped:
      if (IsSet(fields.start)) {
        lines.start = fields.start;
        if (fields.hours > 0.0) {
          fields.end = EndAfter(fields.start, fields.hours);
          lines.end = fields.end;
        }
      }
      if (IsSet(fields.end) && !(fields.hours > 0.0)) lines.end = fields.end;
      break;
    case SpanCase::kFromRover:
      fields.start = WrapWeekSecond(firstEpoch);
      lines.start = fields.start;
      if (!(fields.hours > 0.0) && IsSet(fields.end)) {
        lines.end = fields.end;
      } else {
        fields.end = EndOrHourAfter(fields.start, fields.hours);
        lines.end = fields.end;
      }
      break;
  }
  return lines;
}

bool IsValidGpsPrn(int prn) {
  return prn >= 1 && prn <= 32;
}

bool IsValidGloPrn(int prn) {
  return prn >= 38 && prn <= 61;
}

bool IsValidBd2Prn(int prn) {
  return prn >= 161 && prn <= 223;
}

std::string ControlFileText(const ControlFileSettings& settings, char systemMode,
                            const SpanLines& span) {
  std::string text;
  if (settings.staticScene) {
    AppendCoordinates(text, "SetRefCoor", settings.ref);
    // The lists' selections are compared as bytes.
    if (static_cast<unsigned char>(settings.refSelection) !=
        static_cast<unsigned char>(settings.initSelection))
      AppendCoordinates(text, "SetInitCoor", settings.init);
  }
  AppendFormatted(text, "%s %d\n", "SetMatchedInterval", settings.intervalMs);
  AppendFormatted(text, "%s %lf\n", "SetEleMask", settings.elevation);
  AppendFormatted(text, "%s %lf\n", "SetElECNO", settings.cn0);
  if (span.start)
    AppendFormatted(text, "%s %d %lf\n", "SetStartTime", span.start->week, span.start->second);
  if (span.end)
    AppendFormatted(text, "%s %d %lf\n", "SetEndTime", span.end->week, span.end->second);

  if (systemMode >= '1' && systemMode <= '5') {
    const SystemLines& lines = kSystemLines[systemMode - '0'];
    text.append(lines.first).append("\n").append(lines.second).append("\n");
  }
  if (settings.rangeH) text.append("SETRANGEH\n");
  if (settings.onlyRangeH) text.append("ONLYRANGEH\n");

  const bool valid[] = {IsValidGpsPrn(settings.gpsPrn), IsValidGloPrn(settings.gloPrn),
                        IsValidBd2Prn(settings.bd2Prn)};
  const int prns[] = {settings.gpsPrn, settings.gloPrn, settings.bd2Prn};
  if (valid[0] || valid[1] || valid[2]) {
    text.append("SETREFPRN");
    for (std::size_t system = 0; system < 3; ++system)
      if (valid[system]) AppendFormatted(text, " %d", prns[system]);
    // Written as it stands: in a text file this line ends in "\r\r\n".
    text.append("\r\n");
  }
  text.append("SETRECEIVERTYPE ").append(settings.baseStation).append("\n");
  return text;
}

void WriteControlFile(const std::string& path, const ControlFileSettings& settings, char systemMode,
                      const SpanLines& span) {
  WriteWholeFile(path, ControlFileText(settings, systemMode, span), FileMode::kText);
}

Coordinates EcefToGeodetic(double a, double f, double x, double y, double z) {
  const double e2 = 2.0 * f - f * f;
  Coordinates result;
  result.longitude = std::atan2(y, x) * kDegreesPerRadian;
  if (result.longitude < 0.0) result.longitude += 360.0;

  const double p = std::sqrt(x * x + y * y);
  const double scale = a / std::sqrt(1.0 - e2) * e2 / p;
  double t = z / p;
  for (int round = 0; round < 20; ++round) {
    const double next = z / p + scale * t / std::sqrt(t * t + e2 / (1.0 - e2) + 1.0);
    const bool settled = std::fabs(next - t) <= 1e-8;
    t = next;
    if (settled) break;
  }
  const double latitude = std::atan(t);
  result.latitude = latitude * kDegreesPerRadian;
  result.height =
      p / std::cos(latitude) - a / std::sqrt(1.0 - e2 * std::sin(latitude) * std::sin(latitude));
  return result;
}

}  // namespace tarnlog
