#include "pages/nmea/get_data.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "extract/checksums.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

enum class QualityRule { kAny, kFour, kFive, kFourOrFive };

struct GetDataRule {
  GetDataKind kind;
  std::string_view caption;
  std::string_view suffix;
  QualityRule quality;
};

constexpr GetDataRule kRules[] = {
    {GetDataKind::kNema, "NEMA", "_NEMA.log", QualityRule::kAny},
    {GetDataKind::kGga, "GGA", "_GGA.log", QualityRule::kAny},
    {GetDataKind::kGgaE4, "GGA_E4", "_GGAE4.log", QualityRule::kFour},
    {GetDataKind::kGgaE5, "GGA_E5", "_GGAE5.log", QualityRule::kFive},
    {GetDataKind::kGgaE45, "GGA_E45", "_GGAE45.log", QualityRule::kFourOrFive},
};

constexpr bool RulesInKindOrder() {
  for (std::size_t n = 0; n < std::size(kRules); ++n) {
    if (static_cast<std::size_t>(kRules[n].kind) != n) return false;
  }
  return true;
}
static_assert(RulesInKindOrder());

const GetDataRule& RuleOf(GetDataKind kind) {
  return kRules[static_cast<std::size_t>(kind)];
}

void WriteSentence(OutFile& out, std::string_view sentence) {
  out.Write(sentence);
  out.Write("\n");
  // Each sentence reaches the file at once, so a stopped run leaves a prefix.
  out.Flush();
}

// ---- "NEMA": a byte scan that works on binary captures too ----

// More bytes than this read behind the "$" without a "*" is no sentence.
constexpr std::size_t kMostSentenceBytes = 90;
// The most a candidate takes from its "$": the byte read past the limit and
// the two checksum characters included.
constexpr std::size_t kCandidateSpan = 1 + kMostSentenceBytes + 1 + 2;
constexpr std::size_t kScanBlock = 64 * 1024;

bool IsNmeaTalker(const char* letters) {
  return (letters[0] == 'G' && (letters[1] == 'P' || letters[1] == 'N' || letters[1] == 'L')) ||
         (letters[0] == 'B' && letters[1] == 'D');
}

// Scans `data` and returns how many bytes it is done with. Unless `atEnd`,
// it stops at a "$" whose candidate could run past the bytes, which the
// caller carries into the next block.
std::size_t ScanNmeaBlock(const char* data, std::size_t size, bool atEnd, OutFile& out) {
  std::size_t at = 0;
  while (at < size) {
    if (data[at] != '$') {
      ++at;
      continue;
    }
    const std::size_t left = size - at;
    if (!atEnd && left < kCandidateSpan) return at;
    if (left < 3 || !IsNmeaTalker(data + at + 1)) {
      ++at;
      continue;
    }
    std::size_t end = at + 1;
    bool star = false;
    for (std::size_t read = 1; end < size; ++read) {
      star = data[end++] == '*';
      if (star || read > kMostSentenceBytes) break;
    }
    if (!star) {
      // Not a sentence: go on behind the "$" and its two letters.
      at += 3;
      continue;
    }
    end = std::min(end + 2, size);
    std::string_view sentence(data + at, end - at);
    // The sentence is written as a C text, so a zero byte ends it.
    sentence = sentence.substr(0, sentence.find('\0'));
    WriteSentence(out, sentence);
    at = end;
  }
  return at;
}

void ScanNmeaSentences(InFile& log, OutFile& out) {
  std::vector<char> window(kScanBlock + kCandidateSpan);
  std::size_t kept = 0;
  for (;;) {
    const std::size_t got = log.Read(window.data() + kept, kScanBlock);
    const std::size_t size = kept + got;
    const bool atEnd = got < kScanBlock;
    const std::size_t used = ScanNmeaBlock(window.data(), size, atEnd, out);
    if (atEnd) return;
    kept = size - used;
    std::memmove(window.data(), window.data() + used, kept);
  }
}

// ---- the GGA kinds: one sentence per text line ----

constexpr std::size_t kReadLimit = 1024;

// The text behind the `count`-th comma of `sentence`, or nullptr.
const char* AfterCommas(std::string_view sentence, int count) {
  std::size_t at = 0;
  for (int comma = 0; comma < count; ++comma) {
    at = sentence.find(',', at);
    if (at == std::string_view::npos) return nullptr;
    ++at;
  }
  return sentence.data() + at;
}

// The integer of a field; a missing field reads as 0.
int FieldIntAfter(std::string_view sentence, int commas) {
  const char* field = AfterCommas(sentence, commas);
  return field == nullptr ? 0 : TextToInt(field);
}

bool QualityPasses(QualityRule rule, int quality) {
  switch (rule) {
    case QualityRule::kAny:
      return true;
    case QualityRule::kFour:
      return quality == 4;
    case QualityRule::kFive:
      return quality == 5;
    case QualityRule::kFourOrFive:
      return quality == 4 || quality == 5;
  }
  return false;
}

struct GgaFilter {
  int startTime = 0;
  int endTime = 0;
  bool nmeaCrc = true;
  QualityRule quality = QualityRule::kAny;
};

// "$--GGA,time,lat,N,lon,E,quality,..."
constexpr int kTimeCommas = 1;
constexpr int kQualityCommas = 6;

bool GgaPasses(std::string_view sentence, std::size_t starIndex, const GgaFilter& filter) {
  if (!sentence.starts_with("$GNGGA") && !sentence.starts_with("$GPGGA")) return false;
  if (filter.nmeaCrc && !VerifyNmeaChecksum(sentence.data(), sentence.size(), starIndex)) {
    return false;
  }
  const int time = FieldIntAfter(sentence, kTimeCommas);
  if (time < filter.startTime || time > filter.endTime) return false;
  return QualityPasses(filter.quality, FieldIntAfter(sentence, kQualityCommas));
}

void CopyGgaSentences(InFile& log, OutFile& out, const GgaFilter& filter) {
  char line[kReadLimit];
  while (log.ReadLine(line, sizeof line)) {
    const std::string_view text(line);
    const std::size_t dollars = std::count(text.begin(), text.end(), '$');
    // Two sentences run together: the work ends here, as a success.
    if (dollars >= 2) return;
    const std::size_t dollar = text.rfind('$');
    const std::size_t star = text.rfind('*');
    if (dollars != 1 || star == std::string_view::npos || star < dollar) continue;
    // The sentence runs to two characters past the star, which must lie
    // before the line end: a cut checksum never takes the line feed along.
    const std::size_t lineEnd = text.ends_with('\n') ? text.size() - 1 : text.size();
    if (star + 2 >= lineEnd) continue;
    const std::string_view sentence = text.substr(dollar, star + 3 - dollar);
    if (GgaPasses(sentence, star - dollar, filter)) WriteSentence(out, sentence);
  }
}

}  // namespace

std::string_view GetDataCaption(GetDataKind kind) {
  return RuleOf(kind).caption;
}

std::string GetDataOutputPath(GetDataKind kind, const std::string& logPath) {
  const PathParts parts = SplitPath(logPath);
  return parts.drive + parts.folder + parts.name + std::string(RuleOf(kind).suffix);
}

int GetData(GetDataKind kind, const std::string& logPath, int startTime, int endTime,
            bool nmeaCrc) {
  const GetDataRule& rule = RuleOf(kind);
  const bool scan = kind == GetDataKind::kNema;
  InFile log;
  if (!log.Open(logPath, scan ? FileMode::kBinary : FileMode::kText)) return kGetDataFailed;
  // An output that can't be created takes nothing, and the run still counts
  // as done: the page looks only at the log.
  OutFile out;
  out.Open(GetDataOutputPath(kind, logPath), FileMode::kText);
  if (scan) {
    ScanNmeaSentences(log, out);
  } else {
    CopyGgaSentences(log, out, {startTime, endTime, nmeaCrc, rule.quality});
  }
  return kGetDataSucceeded;
}

}  // namespace tarnlog
