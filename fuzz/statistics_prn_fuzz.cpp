// Fuzz target of the continuity statistics helper: the input is a result
// table of the continuity analyser, read field by field into
// StatisticsPRN.txt beside it.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/continuity/statistics_prn.h"
#include "platform/recording_host.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string& folder = tarnlog::fuzz::Folder();
  const std::string path = folder + "/result.txt";
  tarnlog::fuzz::WriteNew(path, std::string_view(reinterpret_cast<const char*>(data), size));
  tarnlog::fuzz::Renew(folder + "/StatisticsPRN.txt");
  tarnlog::RecordingHost host;
  tarnlog::WriteStatisticsPrn(path, host);
  return 0;
}
