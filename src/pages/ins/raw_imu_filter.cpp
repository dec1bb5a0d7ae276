#include "pages/ins/raw_imu_filter.h"

#include <cstring>
#include <string>
#include <vector>

#include "extract/checksums.h"
#include "extract/ins/ins_extractors.h"

namespace tarnlog {
namespace {

constexpr std::size_t kReadBlock = 64 * 1024;

// The blanks of the "%s" conversion in the "C" locale.
bool IsBlank(int byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

// Tokens of a log, read in blocks. Only the first `limit` bytes of a token
// are kept, so an endless run without blanks costs no memory; its whole
// length is still told.
class TokenReader {
 public:
  explicit TokenReader(InFile& log) : log_(log), block_(kReadBlock) {}

  // False at the end of the log.
  bool Next(std::string& token, std::size_t limit, std::size_t& length) {
    token.clear();
    length = 0;
    int byte = NextByte();
    while (byte >= 0 && IsBlank(byte))
      byte = NextByte();
    if (byte < 0) return false;
    for (; byte >= 0 && !IsBlank(byte); byte = NextByte()) {
      if (length < limit) token.push_back(static_cast<char>(byte));
      ++length;
    }
    return true;
  }

 private:
  int NextByte() {
    if (at_ == end_) {
      end_ = log_.Read(block_.data(), block_.size());
      at_ = 0;
      if (end_ == 0) return -1;
    }
    return static_cast<unsigned char>(block_[at_++]);
  }

  InFile& log_;
  std::vector<char> block_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;
};

bool PassesItsCheck(const char* text, std::size_t length) {
  if (text[0] != '#' && text[0] != '$') return false;
  const std::size_t star = LastStarIndex(text, length);
  if (star == 0) return false;
  return text[0] == '#' ? VerifyAsciiCrc(text, length, star)
                        : VerifyNmeaChecksum(text, length, star);
}

}  // namespace

void FilterRawImuLog(InFile& log, OutFile& table) {
  if (!log.IsOpen() || !table.IsOpen()) return;
  TokenReader reader(log);
  std::string token;
  std::size_t length = 0;
  while (reader.Next(token, kRawImuTokenLimit, length)) {
    if (length >= kRawImuTokenLimit) continue;
    // The token is a C string to the checks and the extractor: a NUL read
    // inside it ends it there.
    const char* text = token.c_str();
    const std::size_t textLength = std::strlen(text);
    if (textLength > 0 && PassesItsCheck(text, textLength))
      ExtractRawImux(text, textLength, &table);
  }
}

}  // namespace tarnlog
