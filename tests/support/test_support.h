// Helpers shared by the tests: scratch folders, whole-file bytes, and the
// records that the stand-in tools leave behind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnlog::testing {

// A fresh folder under the system's temporary folder, removed with all its
// content when the object goes.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& Path() const { return path_; }
  // Path() + "/" + relative
  std::string operator/(const std::string& relative) const;

 private:
  std::string path_;
};

// The path with links and dots resolved, or as given when it doesn't exist.
std::string Canonical(const std::string& path);

// The bytes of a file, or "<missing>" when it can't be read.
std::string FileBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);

// Sentences as a receiver writes them, for tests that feed the extractors:
// "<lead><body>*<crc>" with the CRC-32 in "%08x", and "$<body>*<hh>" with
// the NMEA checksum in capitals, each followed by `tail`. With `holds`
// false the stored value is spoilt in its lowest bit.
std::string WithAsciiCrc(const std::string& body, char lead = '#', const std::string& tail = "\r\n",
                         bool holds = true);
std::string WithNmeaChecksum(const std::string& body, const std::string& tail = "\r\n",
                             bool holds = true);

// Where the project's own programs were built.
std::string StandinBinary();       // tools/standin
std::string ScriptRunnerBinary();  // tarnlog-script
std::string TarnlogBinary();       // tarnlog
std::string SourceDir();

// Puts a stand-in under `name` into `folder` (a copy, so that it is found as
// a file of that folder) and returns its path.
std::string InstallStandin(const std::string& folder, const std::string& name);

// The files whose absence pages report at start: an empty EXE/NoisePlot.exe
// (the noise page sets nothing up without its plotter) and
// Config/parameter.txt holding kStartParameterText (the Initial page stops
// its start without it).
inline constexpr const char* kStartParameterText = "Threshold 30\r\nInterval 1\r\n";
void PlaceStartFiles(const std::string& startFolder);

// One call of a stand-in tool, as recorded in $TARNLOG_STANDIN_LOG.
struct StandinCall {
  std::string name;               // the name it was called under
  std::string exe;                // the file that ran
  std::string cwd;                // its working folder
  std::int64_t startNs = 0;       // CLOCK_MONOTONIC at start
  std::int64_t endNs = 0;         // CLOCK_MONOTONIC just before it wrote the record
  std::vector<std::string> args;  // the whole argument vector, argv[0] first
};
std::vector<StandinCall> ReadStandinLog(const std::string& logPath);

// Result of running a program to its end with its output captured.
struct RunResult {
  int status = -1;  // exit status, or 128 + signal
  std::string out;
  std::string err;
};
RunResult RunAndCapture(const std::vector<std::string>& argv, const std::string& folder = "",
                        const std::vector<std::string>& extraEnv = {});

}  // namespace tarnlog::testing
