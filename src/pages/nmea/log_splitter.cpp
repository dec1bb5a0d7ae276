#include "pages/nmea/log_splitter.h"

#include <array>
#include <cstring>

#include "extract/checksums.h"
#include "extract/nmea/nmea_fields.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

constexpr double kSecondsPerWeek = 604800.0;
constexpr int kWeekField = 5;
constexpr int kSecondsField = 6;

using SplitLine = std::array<char, kSplitLineSize>;

// <drive><dir><name><suffix>: the folder that takes the parts.
std::string PartFolder(const std::string& logPath, std::string_view suffix) {
  const PathParts parts = SplitPath(logPath);
  return parts.drive + parts.folder + parts.name + std::string(suffix);
}

// A part that can't be opened takes nothing; the run goes on as before.
void OpenPart(OutFile& part, const std::string& folder, long long number) {
  part.Open(folder + "/Split" + std::to_string(number) + ".txt", FileMode::kText, true);
}

// Week and seconds of a long head: "#NAME,port,sequence,idle,timeStatus,
// week,seconds,...". A missing field reads as 0.
struct HeadTime {
  int week = 0;
  double seconds = 0.0;
};

HeadTime ReadHeadTime(const char* line) {
  char field[kSplitFieldSize];
  HeadTime time;
  if (SplitField(line, field, kWeekField)) time.week = TextToInt(field);
  if (SplitField(line, field, kSecondsField)) time.seconds = FieldDouble(field);
  return time;
}

// The first line whose CRC holds and whose head gives a non-zero week and
// seconds in (0, 604800].
bool FindFirstEpoch(InFile& log, SplitLine& line, HeadTime& first) {
  std::size_t length = 0;
  while (ReadSplitLine(log, line.data(), length)) {
    const char* star = std::strchr(line.data(), '*');
    if (star == nullptr) continue;
    if (!VerifyAsciiCrc(line.data(), length, static_cast<std::size_t>(star - line.data()))) {
      continue;
    }
    const HeadTime time = ReadHeadTime(line.data());
    if (time.week != 0 && time.seconds > 0.0 && time.seconds <= kSecondsPerWeek) {
      first = time;
      return true;
    }
  }
  return false;
}

// Port stamps of the recording tool and base ranges carry no time of their
// own: they stay with the part in hand.
bool HasNoOwnTime(const char* line) {
  return std::strstr(line, "#BASERANGE") != nullptr || std::strstr(line, "[COM") != nullptr ||
         std::strstr(line, "[ICOM") != nullptr;
}

}  // namespace

int ReadSplitLine(InFile& stream, char* line, std::size_t& length) {
  length = 0;
  while (length < kSplitLineSize - 1) {
    char byte = 0;
    if (stream.Read(&byte, 1) == 0) {
      line[length] = '\0';
      return 0;
    }
    // Binary runs pass through as text.
    if (byte == '\0') byte = ' ';
    line[length++] = byte;
    if (byte == '\n') break;
  }
  line[length] = '\0';
  return 1;
}

int SplitField(const char* line, char* target, int field) {
  std::memset(target, 0, kSplitFieldSize);
  const char* at = line;
  for (int comma = 0; comma < field; ++comma) {
    at = std::strchr(at, ',');
    if (at == nullptr) return 0;
    ++at;
  }
  for (std::size_t n = 0; n < kSplitFieldSize - 1; ++n) {
    const char c = at[n];
    if (c == '\0' || c == ',' || c == '\n' || c == '\r') break;
    target[n] = c;
  }
  return 1;
}

int SplitByFixedString(const std::string& logPath, std::string_view text) {
  InFile log;
  if (!log.Open(logPath, FileMode::kText)) return 0;
  const std::string folder = PartFolder(logPath, "_FixedString");
  MakeFolder(folder);
  OutFile part;
  long long number = 0;
  OpenPart(part, folder, number);

  const std::string marker(text);
  SplitLine line;
  std::size_t length = 0;
  while (ReadSplitLine(log, line.data(), length)) {
    const std::string_view bytes(line.data(), length);
    part.Write(bytes);
    if (std::strstr(line.data(), marker.c_str()) == nullptr) continue;
    // The marker line ends its part and starts the next one as well.
    part.Close();
    OpenPart(part, folder, ++number);
    part.Write(bytes);
  }
  return 1;
}

int SplitByFixedPeriod(const std::string& logPath, int periodSeconds) {
  if (periodSeconds < 1) return 0;
  InFile log;
  if (!log.Open(logPath, FileMode::kText)) return 0;
  const std::string folder = PartFolder(logPath, "_FixedPeriod");
  MakeFolder(folder);
  OutFile part;
  long long current = 0;
  OpenPart(part, folder, current);

  SplitLine line;
  HeadTime first;
  const bool haveFirst = FindFirstEpoch(log, line, first);
  // The second pass copies everything from the top, without CRC tests.
  log.Close();
  if (!log.Open(logPath, FileMode::kText)) return 0;

  std::size_t length = 0;
  while (ReadSplitLine(log, line.data(), length)) {
    const std::string_view bytes(line.data(), length);
    part.Write(bytes);
    // With no usable epoch anywhere, every line stays in the first part.
    if (!haveFirst || HasNoOwnTime(line.data())) continue;
    const HeadTime time = ReadHeadTime(line.data());
    if (time.week == 0 || !(time.seconds >= 0.0 && time.seconds <= kSecondsPerWeek)) continue;
    // Parts count periods from the first epoch; lines before it that lie
    // within one period still fall into part 0 by truncation.
    const double elapsed =
        static_cast<double>(static_cast<long long>(time.week) - first.week) * kSecondsPerWeek +
        time.seconds - first.seconds;
    const long long number = static_cast<long long>(elapsed) / periodSeconds;
    if (number == current) continue;
    // The boundary line stands at the end of one part and the start of the next.
    part.Close();
    current = number;
    OpenPart(part, folder, current);
    part.Write(bytes);
  }
  return 1;
}

}  // namespace tarnlog
