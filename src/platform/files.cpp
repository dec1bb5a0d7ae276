#include "platform/files.h"

#include "platform/fast_format.h"

#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tarnlog {
namespace {

// Both directions buffer this much; the extraction pushes hundreds of MB of
// rows through OutFile, so a write call per line would dominate.
constexpr std::size_t kBufferSize = 64 * 1024;

// Most formatted rows fit here; longer ones go through the heap.
constexpr std::size_t kStackFormatSize = 4096;

ssize_t ReadSome(int fd, char* data, std::size_t size) {
  ssize_t got;
  do {
    got = ::read(fd, data, size);
  } while (got < 0 && errno == EINTR);
  return got;
}

}  // namespace

bool WriteAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

// ---- OutFile ----

OutFile::~OutFile() {
  Close();
}

OutFile::OutFile(OutFile&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)),
      mode_(other.mode_),
      writeFailed_(other.writeFailed_),
      buffer_(std::move(other.buffer_)) {
  other.buffer_.clear();
}

OutFile& OutFile::operator=(OutFile&& other) noexcept {
  if (this != &other) {
    Close();
    fd_ = std::exchange(other.fd_, -1);
    mode_ = other.mode_;
    writeFailed_ = other.writeFailed_;
    buffer_ = std::move(other.buffer_);
    other.buffer_.clear();
  }
  return *this;
}

bool OutFile::Open(const std::string& path, FileMode mode, bool append) {
  Close();
  const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (append ? O_APPEND : O_TRUNC);
  fd_ = ::open(path.c_str(), flags, 0666);
  mode_ = mode;
  writeFailed_ = false;
  buffer_.clear();
  if (fd_ < 0) return false;
  buffer_.reserve(kBufferSize);
  return true;
}

void OutFile::Close() {
  if (fd_ < 0) return;
  Flush();
  ::close(fd_);
  fd_ = -1;
}

void OutFile::Flush() {
  if (fd_ < 0 || buffer_.empty()) return;
  if (!WriteAll(fd_, buffer_.data(), buffer_.size())) writeFailed_ = true;
  buffer_.clear();
}

void OutFile::Raw(const char* data, std::size_t size) {
  if (buffer_.size() + size > kBufferSize) {
    Flush();
    if (size >= kBufferSize) {
      if (!WriteAll(fd_, data, size)) writeFailed_ = true;
      return;
    }
  }
  buffer_.insert(buffer_.end(), data, data + size);
}

void OutFile::Write(std::string_view bytes) {
  if (fd_ < 0) return;
  if (mode_ == FileMode::kBinary) {
    Raw(bytes.data(), bytes.size());
    return;
  }
  const char* rest = bytes.data();
  std::size_t left = bytes.size();
  while (left > 0) {
    const auto* lf = static_cast<const char*>(std::memchr(rest, '\n', left));
    if (lf == nullptr) {
      Raw(rest, left);
      return;
    }
    const auto before = static_cast<std::size_t>(lf - rest);
    Raw(rest, before);
    Raw("\r\n", 2);
    rest = lf + 1;
    left -= before + 1;
  }
}

void OutFile::Printf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  VPrintf(format, args);
  va_end(args);
}

void OutFile::VPrintf(const char* format, va_list args) {
  if (fd_ < 0) return;
  char stackText[kStackFormatSize];
  va_list again;
  va_copy(again, args);
  const int length = FastFormat(stackText, sizeof stackText, format, args);
  if (length < 0) {
    va_end(again);
    return;
  }
  if (static_cast<std::size_t>(length) < sizeof stackText) {
    Write(std::string_view(stackText, static_cast<std::size_t>(length)));
  } else {
    std::string heapText(static_cast<std::size_t>(length) + 1, '\0');
    FastFormat(heapText.data(), heapText.size(), format, again);
    heapText.pop_back();
    Write(heapText);
  }
  va_end(again);
}

bool WriteWholeFile(const std::string& path, std::string_view bytes, FileMode mode) {
  OutFile file;
  if (!file.Open(path, mode)) return false;
  file.Write(bytes);
  file.Close();
  return !file.WriteFailed();
}

int OpenRegularFileForReading(const std::string& path, struct stat* info) {
  // O_NONBLOCK so that opening a FIFO with no writer returns at once; it is
  // refused below anyway, and a regular file reads the same either way.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return -1;
  struct stat own {};
  if (info == nullptr) info = &own;
  if (::fstat(fd, info) != 0 || !S_ISREG(info->st_mode)) {
    ::close(fd);
    errno = EINVAL;
    return -1;
  }
  const int flags = ::fcntl(fd, F_GETFL);
  if (flags >= 0) ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK);
  return fd;
}

bool ReadWholeFile(const std::string& path, std::string& bytes) {
  struct stat info {};
  const int fd = OpenRegularFileForReading(path, &info);
  if (fd < 0) return false;
  bytes.clear();
  if (info.st_size > 0) bytes.reserve(static_cast<std::size_t>(info.st_size));
  char chunk[kStackFormatSize * 4];
  for (;;) {
    const ssize_t got = ReadSome(fd, chunk, sizeof chunk);
    if (got <= 0) break;
    bytes.append(chunk, static_cast<std::size_t>(got));
  }
  ::close(fd);
  return true;
}

// ---- InFile ----

InFile::~InFile() {
  Close();
}

bool InFile::Open(const std::string& path, FileMode mode) {
  Close();
  fd_ = OpenRegularFileForReading(path);
  mode_ = mode;
  if (fd_ < 0) return false;
  buffer_.resize(kBufferSize);
  return true;
}

void InFile::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  pos_ = 0;
  end_ = 0;
}

bool InFile::Refill() {
  pos_ = 0;
  end_ = 0;
  if (fd_ < 0) return false;
  const ssize_t got = ReadSome(fd_, buffer_.data(), buffer_.size());
  if (got <= 0) return false;
  end_ = static_cast<std::size_t>(got);
  return true;
}

int InFile::NextByte() {
  if (pos_ == end_ && !Refill()) return -1;
  const auto c = static_cast<unsigned char>(buffer_[pos_++]);
  if (mode_ == FileMode::kBinary || c != '\r') return c;
  // A CR counts as a line end only with an LF right after it, which may be
  // the first byte of the next read.
  if (pos_ == end_ && !Refill()) return '\r';
  if (buffer_[pos_] != '\n') return '\r';
  ++pos_;
  return '\n';
}

bool InFile::ReadLine(char* buffer, std::size_t size) {
  if (size == 0) return false;
  buffer[0] = '\0';
  if (fd_ < 0) return false;
  // A one-byte buffer takes no text; it still tells whether any is left, so
  // that a read loop ends.
  if (size == 1) return pos_ < end_ || Refill();
  return ReadLineInto(buffer, size) > 0;
}

std::size_t InFile::ReadLineInto(char* buffer, std::size_t size) {
  const bool text = mode_ == FileMode::kText;
  const std::size_t limit = size - 1;
  std::size_t n = 0;
  while (n < limit) {
    if (pos_ == end_ && !Refill()) break;
    const char* start = buffer_.data() + pos_;
    const std::size_t window = std::min(end_ - pos_, limit - n);
    const auto* lf = static_cast<const char*>(std::memchr(start, '\n', window));
    if (lf != nullptr) {
      const auto before = static_cast<std::size_t>(lf - start);
      const std::size_t kept =
          text && before > 0 && start[before - 1] == '\r' ? before - 1 : before;
      std::memcpy(buffer + n, start, kept);
      n += kept;
      buffer[n++] = '\n';
      pos_ += before + 1;
      break;
    }
    // A CR that ends the window is left to NextByte, which looks past it.
    const std::size_t take = text && start[window - 1] == '\r' ? window - 1 : window;
    std::memcpy(buffer + n, start, take);
    n += take;
    pos_ += take;
    if (take < window) {
      const int c = NextByte();
      buffer[n++] = static_cast<char>(c);
      if (c == '\n') break;
    }
  }
  buffer[n] = '\0';
  return n;
}

std::size_t InFile::ReadLineSkippingRest(char* buffer, std::size_t size, bool* cut) {
  if (cut) *cut = false;
  if (size == 0) return 0;
  buffer[0] = '\0';
  if (fd_ < 0 || size == 1) return 0;
  const std::size_t n = ReadLineInto(buffer, size);
  if (n < size - 1 || buffer[n - 1] == '\n') return n;
  if (cut) *cut = true;
  for (int c = NextByte(); c >= 0 && c != '\n'; c = NextByte()) {
  }
  return n;
}

std::size_t InFile::Read(char* buffer, std::size_t size) {
  if (fd_ < 0) return 0;
  std::size_t n = 0;
  if (mode_ == FileMode::kText) {
    while (n < size) {
      const int c = NextByte();
      if (c < 0) break;
      buffer[n++] = static_cast<char>(c);
    }
    return n;
  }
  while (n < size) {
    if (pos_ == end_) {
      // Large reads skip the buffer.
      if (size - n >= buffer_.size()) {
        const ssize_t got = ReadSome(fd_, buffer + n, size - n);
        if (got <= 0) break;
        n += static_cast<std::size_t>(got);
        continue;
      }
      if (!Refill()) break;
    }
    const std::size_t take = std::min(end_ - pos_, size - n);
    std::memcpy(buffer + n, buffer_.data() + pos_, take);
    pos_ += take;
    n += take;
  }
  return n;
}

}  // namespace tarnlog
