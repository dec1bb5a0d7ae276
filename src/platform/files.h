// Files as the system writes and reads them.
//
// Text-mode files get the Windows text-mode translation: every '\n' written
// becomes "\r\n", so an explicit "\r\n" becomes "\r\r\n". Binary files are
// written as they are. Reads in text mode turn "\r\n" into '\n' and accept
// plain '\n'.
#pragma once

#include <sys/stat.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

enum class FileMode { kText, kBinary };

// Buffered output file with the "w"/"a" (text) and "wb"/"ab" (binary)
// behaviours of the C library. Not copyable; closes on destruction.
class OutFile {
 public:
  OutFile() = default;
  ~OutFile();
  OutFile(const OutFile&) = delete;
  OutFile& operator=(const OutFile&) = delete;
  OutFile(OutFile&& other) noexcept;
  OutFile& operator=(OutFile&& other) noexcept;

  // Opens for writing (truncating) or appending; false when it can't be
  // opened, after which writes are ignored.
  bool Open(const std::string& path, FileMode mode, bool append = false);
  bool IsOpen() const { return fd_ >= 0; }
  void Close();

  void Write(std::string_view bytes);
  // printf-style formatting in the "C" locale; any length.
  void Printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  void VPrintf(const char* format, va_list args);
  // Pushes the buffer to the file (an interrupted run then leaves a prefix).
  void Flush();
  // Whether some bytes could not be written (disk full or the like) since
  // the last Open; still answers after Close, which flushes.
  bool WriteFailed() const { return writeFailed_; }

 private:
  void Raw(const char* data, std::size_t size);

  int fd_ = -1;
  FileMode mode_ = FileMode::kText;
  bool writeFailed_ = false;
  std::vector<char> buffer_;
};

// Writes all `size` bytes to a descriptor, going on after interruptions;
// false when not every byte got through (disk full or the like): the file
// keeps what did.
bool WriteAll(int fd, const char* data, std::size_t size);

// Opens a regular file read-only and returns its descriptor, or -1. Anything
// else (a folder, a FIFO, a device) is refused without blocking: every
// reader of captures, logs, scripts and configuration opens through here.
// `info`, when given, receives the file's status as the open found it.
int OpenRegularFileForReading(const std::string& path, struct stat* info = nullptr);

// Writes `bytes` as a whole file; false when it can't be created or not
// every byte could be written.
bool WriteWholeFile(const std::string& path, std::string_view bytes, FileMode mode);
// Reads a whole file as it is on disk; false when it can't be opened.
bool ReadWholeFile(const std::string& path, std::string& bytes);

// Buffered input file. In text mode ReadLine behaves like fgets on a Windows
// text-mode stream: "\r\n" arrives as '\n', a lone '\r' stays.
class InFile {
 public:
  InFile() = default;
  ~InFile();
  InFile(const InFile&) = delete;
  InFile& operator=(const InFile&) = delete;

  bool Open(const std::string& path, FileMode mode);
  bool IsOpen() const { return fd_ >= 0; }
  void Close();

  // fgets: reads at most size-1 bytes, stopping after a '\n'; always
  // terminates `buffer`. False at end of file with nothing read. A size of 0
  // gives false and writes nothing; a size of 1 gives "" and false only at
  // end of file.
  bool ReadLine(char* buffer, std::size_t size);
  // ReadLine for readers with a read limit: a line longer than size-1 bytes
  // gives its first size-1 bytes, and the rest of it, up to and including
  // its '\n', is skipped instead of arriving as a line of its own. Returns
  // the bytes stored (NULs of the line included), 0 at end of file; `*cut`
  // tells that the buffer filled before a line end. A size below 2 reads
  // nothing.
  std::size_t ReadLineSkippingRest(char* buffer, std::size_t size, bool* cut = nullptr);
  // Up to `size` bytes; returns how many were read (0 at end of file).
  std::size_t Read(char* buffer, std::size_t size);

 private:
  // ReadLine's work for a size of 2 or more: returns the bytes stored.
  std::size_t ReadLineInto(char* buffer, std::size_t size);
  int NextByte();  // -1 at end of file
  bool Refill();

  int fd_ = -1;
  FileMode mode_ = FileMode::kText;
  std::vector<char> buffer_;
  std::size_t pos_ = 0;
  std::size_t end_ = 0;
};

}  // namespace tarnlog
