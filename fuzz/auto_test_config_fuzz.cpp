// Fuzz target of the automatic test's configuration: the input, behind its
// first byte, is written as one of the three files of an AutoTestConfig
// folder of the entry's own (the byte modulo 3 picks filelist.ini,
// mode.ini or realvalue.ini); the other two hold a plain configuration, so
// that the load reaches the file under test. What was loaded is saved to a
// second folder and loaded from there again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "frame/auto_test_config.h"
#include "fuzz_folder.h"

namespace {

struct ConfigFile {
  const char* name;
  const char* plain;
};

constexpr ConfigFile kFiles[] = {
    {"filelist.ini", "FileList:2\r\na.log\r\nb.log\r\n\r\nGoldenFile:\r\ng.log\r\n"},
    {"mode.ini", "Static,1\r\nDynamic,0\r\nNoise,1\r\nInitial,0\r\nContinue,1\r\nNmea,0\r\n"},
    {"realvalue.ini", "31.5,121.25,10\r\n30,120,5\r\n"},
};

void CheckCount(const tarnlog::AutoTestConfig& config) {
  if (config.fileCount < 0 || config.fileCount > static_cast<int>(tarnlog::kAutoTestFileCapacity))
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string& folder = tarnlog::fuzz::Folder({"AutoTestConfig", "saved"});
  const std::size_t chosen = data[0] % 3;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::string path = folder + "/AutoTestConfig/" + kFiles[i].name;
    tarnlog::fuzz::WriteNew(
        path, i == chosen ? std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1)
                          : std::string_view(kFiles[i].plain));
  }

  tarnlog::AutoTestConfig config;
  config.path = folder;
  config.Load();
  CheckCount(config);

  config.path = folder + "/saved";
  for (const ConfigFile& file : kFiles)
    tarnlog::fuzz::Renew(config.path + "/AutoTestConfig/" + file.name);
  config.Save();
  tarnlog::AutoTestConfig again(config.path);
  CheckCount(again);
  return 0;
}
