#include "pages/nmea/mix_log.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "pages/nmea/kml_writer.h"
#include "pages/nmea/mix_lines.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace tarnlog {
namespace {

// The fifteen integers that end a row: ulObs, then the signal counts.
constexpr int kRowCounts = 1 + kSignalCounts;
constexpr const char* kCountsFormat =
    "%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d,%8d\n";

// Rows of the position-only builder.
constexpr const char* kPositionRowFormat =
    "%d,%.3f,000000.000,%-6.9f,%-6.9f,%-5.6f,%6d,0.000,%6d,%6.2f,";
constexpr const char* kInsRowFormat =
    "%d,%.3f,000000.000,%-5.6f,%-5.6f,%-6.9f,%-6.9f,%-5.6f,0,0.000,%6d,0.000,";
constexpr const char* kMotionFormat = "%-5.6f,%-5.6f,%-5.6f,%-5.6f,%-5.6f,%-5.6f,";
// GGA and the joined rows: UTC text, position, SN, HDOP, status and age.
constexpr const char* kSolutionFormat = "%s,%.9lf,%.9lf,%.6lf,%d,%.3lf,%d,%.3lf,";

// The two intermediate files of the range builder and how they are read back.
constexpr const char* kPositionFileFormat = "%d,%.3f,%-6.9f,%-6.9f,%-5.6f,%6d,%6.3f,%6d,%6.2f,\n";
constexpr const char* kRangeFileFormat =
    "%d,%.3f,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d,%6d\n";
constexpr const char* kPositionFileRead = "%d,%lf,%lf,%lf,%lf,%d,%lf,%d,%lf";
constexpr const char* kRangeFileRead = "%d,%lf,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d";

// A post-processed trajectory: rows begin one line after this header.
constexpr const char* kPostHeader =
    "SeqNum        GPSTime      Northing       Easting        H-Ell        Latitude       "
    "Longitude   HzSpeed";
// The project name is dropped on rewriting, so it is passed over whole
// (%*s), however long: it can't run past the line in hand.
constexpr const char* kPostRead = "%d %lf %lf %lf %lf %lf %lf %lf %lf %lf %lf %*s %d";
constexpr int kPostFields = 12;
constexpr const char* kPostRow =
    "%d %.3lf %.4lf  %.4lf %.3lf %.11lf %.11lf %.4lf %.5lf %.5lf %.5lf %d\n";

// Two epochs closer than this are the same epoch.
constexpr double kSameEpoch = 0.000001;
constexpr double kSecondsPerWeek = 604800.0;
constexpr double kSecondsPerDay = 86400.0;

struct MixRequest {
  MixMessage message = MixMessage::kNone;
  bool asciiCrc = true;
  bool nmeaCrc = true;
  int frequency = 0;
};

std::string BesideLog(const std::string& logPath, std::string_view suffix) {
  const PathParts parts = SplitPath(logPath);
  return parts.drive + parts.folder + parts.name + std::string(suffix);
}

std::string_view PositionFileSuffix(MixMessage message) {
  switch (message) {
    case MixMessage::kPsrPos:
      return "_Psrpos.log";
    case MixMessage::kRtkPos:
      return "_Rtkpos.log";
    case MixMessage::kMatchedPos:
      return "_Matchedpos.log";
    case MixMessage::kBestPos:
      return "_Bestpos.log";
    case MixMessage::kGga:
      return "_GGA.log";
    case MixMessage::kBestNav:
      return "_Bestnav.log";
    default:
      return "_Sppnav.log";
  }
}

void WriteCounts(OutFile& out, const int values[kRowCounts]) {
  out.Printf(kCountsFormat, values[0], values[1], values[2], values[3], values[4], values[5],
             values[6], values[7], values[8], values[9], values[10], values[11], values[12],
             values[13], values[14]);
}

void WriteZeroCounts(OutFile& out) {
  const int zeros[kRowCounts] = {};
  WriteCounts(out, zeros);
}

// A position fix read from an accepted line: a GGA sentence or a position
// log that holds "SOL_COMPUTED". `starTail` is the builder's limit.
bool ReadFix(const MixRequest& request, const char* line, std::size_t length, std::size_t starTail,
             MixFix& fix) {
  if (request.message == MixMessage::kGga) return ReadGgaLine(line, length, request.nmeaCrc, fix);
  return AcceptAsciiLine(line, length, LogHead(request.message), starTail, request.asciiCrc) &&
         ReadPositionLine(request.message, line, fix);
}

// ---- position-only rows ----

struct PostState {
  bool headerSeen = false;
  bool skipNext = false;
};

bool WritePostRow(OutFile& out, const char* line, int frequency, PostState& state) {
  if (std::strstr(line, kPostHeader) != nullptr) {
    state.headerSeen = true;
    state.skipNext = true;
    return false;
  }
  if (!state.headerSeen) return false;
  if (state.skipNext) {
    state.skipNext = false;
    return false;
  }
  int sequence = 0;
  double v[10] = {};
  int quality = 0;
  if (std::sscanf(line, kPostRead, &sequence, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6],
                  &v[7], &v[8], &v[9], &quality) != kPostFields ||
      !KeepEpoch(v[0], frequency)) {
    return false;
  }
  out.Printf(kPostRow, sequence, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9],
             quality);
  return true;
}

bool WriteInsRow(OutFile& out, const MixRequest& request, const char* line, std::size_t length) {
  InsFix fix;
  if (!AcceptAsciiLine(line, length, LogHead(request.message), kPositionStarTail,
                       request.asciiCrc) ||
      !ReadInsLine(request.message, line, fix) || !KeepEpoch(fix.second, request.frequency)) {
    return false;
  }
  out.Printf(kInsRowFormat, fix.week, fix.second, fix.drAge, fix.solAge, fix.latitude,
             fix.longitude, fix.height, fix.status);
  out.Printf(kMotionFormat, fix.velocity[0], fix.velocity[1], fix.velocity[2], fix.attitude[0],
             fix.attitude[1], fix.attitude[2]);
  WriteZeroCounts(out);
  return true;
}

bool WriteFixRow(OutFile& out, const MixRequest& request, const char* line, std::size_t length) {
  MixFix fix;
  if (!ReadFix(request, line, length, kPositionStarTail, fix) ||
      !KeepEpoch(fix.second, request.frequency)) {
    return false;
  }
  if (request.message == MixMessage::kGga) {
    // The sentence has no week: week and second are zero, UTC is its time.
    out.Write("0,0.000,");
    out.Printf(kSolutionFormat, UtcColumn(fix.hours, fix.minutes, fix.seconds).c_str(),
               fix.latitude, fix.longitude, fix.height, fix.satellites, fix.hdop, fix.status,
               fix.age);
  } else {
    out.Printf(kPositionRowFormat, fix.week, fix.second, fix.latitude, fix.longitude, fix.height,
               fix.satellites, fix.status, fix.age);
  }
  WriteZeroCounts(out);
  return true;
}

int WritePositionKml(const std::string& mixPath, MixMessage message, int colourIndex, int kmlType,
                     int lineWidth) {
  switch (message) {
    case MixMessage::kDrPva:
      return WriteInsKml(mixPath, colourIndex, 0, lineWidth);
    case MixMessage::kInsPva:
      return WriteInsKml(mixPath, colourIndex, 1, lineWidth);
    case MixMessage::kInsPvax:
      return WriteInsKml(mixPath, colourIndex, 2, lineWidth);
    case MixMessage::kInsPvas:
      return WriteInsKml(mixPath, colourIndex, 3, lineWidth);
    case MixMessage::kPosT:
      return WritePostKml(mixPath, lineWidth);
    default:
      return WriteKml(mixPath, colourIndex, kmlType, lineWidth);
  }
}

// ---- the range builder's join ----

struct PositionRow {
  int week = 0;
  double second = 0.0;
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  int satellites = 0;
  double hdop = 0.0;
  int status = 0;
  double age = 0.0;
};

struct RangeRow {
  int week = 0;
  double second = 0.0;
  int values[kRowCounts] = {};
};

// The next row that reads whole; false at the end of the file.
bool NextPositionRow(InFile& in, PositionRow& row) {
  char line[kMixLineSize];
  while (in.ReadLine(line, sizeof line)) {
    if (std::sscanf(line, kPositionFileRead, &row.week, &row.second, &row.latitude, &row.longitude,
                    &row.height, &row.satellites, &row.hdop, &row.status, &row.age) == 9) {
      return true;
    }
  }
  return false;
}

bool NextRangeRow(InFile& in, RangeRow& row) {
  char line[kMixLineSize];
  int* v = row.values;
  while (in.ReadLine(line, sizeof line)) {
    if (std::sscanf(line, kRangeFileRead, &row.week, &row.second, &v[0], &v[1], &v[2], &v[3], &v[4],
                    &v[5], &v[6], &v[7], &v[8], &v[9], &v[10], &v[11], &v[12], &v[13],
                    &v[14]) == 17) {
      return true;
    }
  }
  return false;
}

// Position minus range time. A GGA row has week 0 and its time of day, which
// is set against the range time of day.
double EpochDifference(MixMessage message, const PositionRow& position, const RangeRow& range) {
  if (message == MixMessage::kGga && position.week == 0) {
    return position.second - std::fmod(range.second, kSecondsPerDay);
  }
  // In double, so that weeks far apart can't overflow.
  return (static_cast<double>(position.week) - range.week) * kSecondsPerWeek + position.second -
         range.second;
}

// `range` null: an epoch without observations, every count 0.
void WriteJoinedRow(OutFile& out, const PositionRow& position, const RangeRow* range,
                    int boardValue) {
  out.Printf("%d,%.3lf,", position.week, position.second);
  out.Printf(kSolutionFormat, JoinedUtcColumn(position.second, boardValue).c_str(),
             position.latitude, position.longitude, position.height, position.satellites,
             position.hdop, position.status, position.age);
  if (range == nullptr) {
    WriteZeroCounts(out);
  } else {
    WriteCounts(out, range->values);
  }
  out.Flush();
}

// Stage one: the position rows and the range rows of the log, each into its
// own file.
bool SplitRangeLog(InFile& in, const MixRequest& request, const std::string& positionPath,
                   const std::string& rangePath) {
  OutFile positions;
  OutFile ranges;
  if (!positions.Open(positionPath, FileMode::kText) || !ranges.Open(rangePath, FileMode::kText)) {
    return false;
  }
  char line[kMixLineSize];
  while (in.ReadLine(line, sizeof line)) {
    const std::size_t length = std::strlen(line);
    MixFix fix;
    RangeTally tally;
    if (ReadFix(request, line, length, kRangeStarTail, fix)) {
      if (!KeepEpoch(fix.second, request.frequency)) continue;
      positions.Printf(kPositionFileFormat, fix.week, fix.second, fix.latitude, fix.longitude,
                       fix.height, fix.satellites, fix.hdop, fix.status, fix.age);
      positions.Flush();
    } else if (ReadRangeLine(line, length, request.asciiCrc, tally)) {
      const int* c = tally.counts;
      ranges.Printf(kRangeFileFormat, tally.week, tally.second, tally.observations, c[0], c[1],
                    c[2], c[3], c[4], c[5], c[6], c[7], c[8], c[9], c[10], c[11], c[12], c[13]);
      ranges.Flush();
    }
  }
  return true;
}

// Stage two: both files in step. A position ahead of the range skips range
// rows; a position behind is written alone; equal epochs are joined. The
// join ends with either file.
bool JoinRangeLog(const std::string& mixPath, MixMessage message, int boardValue,
                  const std::string& positionPath, const std::string& rangePath) {
  OutFile out;
  if (!out.Open(mixPath, FileMode::kText)) return false;
  out.Write(kMixLogHeader);
  out.Write("\n");
  InFile positions;
  InFile ranges;
  if (!positions.Open(positionPath, FileMode::kText) || !ranges.Open(rangePath, FileMode::kText)) {
    return false;
  }
  PositionRow position;
  RangeRow range;
  bool havePosition = NextPositionRow(positions, position);
  bool haveRange = NextRangeRow(ranges, range);
  while (havePosition && haveRange) {
    const double difference = EpochDifference(message, position, range);
    if (std::fabs(difference) >= kSameEpoch) {
      if (difference > 0) {
        haveRange = NextRangeRow(ranges, range);
      } else {
        WriteJoinedRow(out, position, nullptr, boardValue);
        havePosition = NextPositionRow(positions, position);
      }
      continue;
    }
    WriteJoinedRow(out, position, &range, boardValue);
    havePosition = NextPositionRow(positions, position);
    haveRange = NextRangeRow(ranges, range);
  }
  return true;
}

}  // namespace

std::string MixLogPath(const std::string& logPath) {
  return BesideLog(logPath, "_Mix.log");
}

int BuildRangeMixLog(const std::string& logPath, std::string_view messageName, int colourIndex,
                     int kmlType, int lineWidth, int boardValue, bool asciiCrc, bool nmeaCrc,
                     int frequency) {
  const MixRequest request{MatchMixMessage(messageName, false), asciiCrc, nmeaCrc, frequency};
  if (request.message == MixMessage::kNone) return 0;
  InFile in;
  if (!in.Open(logPath, FileMode::kText)) return 0;
  const std::string positionPath = BesideLog(logPath, PositionFileSuffix(request.message));
  const std::string rangePath = BesideLog(logPath, "_Range.log");
  const std::string mixPath = MixLogPath(logPath);
  const bool written = SplitRangeLog(in, request, positionPath, rangePath) &&
                       JoinRangeLog(mixPath, request.message, boardValue, positionPath, rangePath);
  in.Close();
  RemoveFile(positionPath);
  RemoveFile(rangePath);
  if (!written) return 0;
  return WriteKml(mixPath, colourIndex, kmlType, lineWidth) > 0 ? 1 : 0;
}

int BuildPositionMixLog(const std::string& logPath, std::string_view messageName, int colourIndex,
                        int kmlType, int lineWidth, int /*boardValue*/, bool asciiCrc, bool nmeaCrc,
                        int frequency) {
  const MixRequest request{MatchMixMessage(messageName, true), asciiCrc, nmeaCrc, frequency};
  if (request.message == MixMessage::kNone) return 0;
  InFile in;
  if (!in.Open(logPath, FileMode::kText)) return 0;
  const std::string mixPath = MixLogPath(logPath);
  {
    OutFile out;
    if (!out.Open(mixPath, FileMode::kText)) return 0;
    out.Write(kMixLogHeader);
    out.Write("\n");
    PostState post;
    char line[kMixLineSize];
    while (in.ReadLine(line, sizeof line)) {
      const std::size_t length = std::strlen(line);
      bool wrote = false;
      if (request.message == MixMessage::kPosT) {
        wrote = WritePostRow(out, line, frequency, post);
      } else if (IsInsMessage(request.message)) {
        wrote = WriteInsRow(out, request, line, length);
      } else {
        wrote = WriteFixRow(out, request, line, length);
      }
      if (wrote) out.Flush();
    }
  }
  in.Close();
  return WritePositionKml(mixPath, request.message, colourIndex, kmlType, lineWidth) > 0 ? 1 : 0;
}

}  // namespace tarnlog
