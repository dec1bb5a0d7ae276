// One synthesized capture with every message the chain routes, through the
// Static page's full vector: every table that fills is checked by its row
// count and the bytes of its first row against whole_capture.chk, a reviewed
// record beside the test data (set TARNLOG_UPDATE_GOLDEN=1 to rewrite it
// after a reviewed change).
#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/stat.h>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>

#include "extract/extract_main.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;

struct TableSummary {
  long rows = 0;
  std::string firstRow;
};

// "name<TAB>rows<TAB>first row" with the row's CR and LF spelled out.
std::string Describe(const std::map<std::string, TableSummary>& tables) {
  std::string text;
  for (const auto& [name, summary] : tables) {
    std::string row;
    for (char c : summary.firstRow) {
      if (c == '\r') {
        row += "\\r";
      } else if (c == '\n') {
        row += "\\n";
      } else {
        row += c;
      }
    }
    text += name + "\t" + std::to_string(summary.rows) + "\t" + row + "\n";
  }
  return text;
}

std::map<std::string, TableSummary> Summarise(const std::string& folder) {
  std::map<std::string, TableSummary> tables;
  DIR* dir = opendir(folder.c_str());
  if (!dir) return tables;
  while (dirent* entry = readdir(dir)) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    const std::string bytes = FileBytes(folder + "/" + name);
    if (bytes.empty()) continue;
    TableSummary summary;
    summary.rows = static_cast<long>(std::count(bytes.begin(), bytes.end(), '\n'));
    summary.firstRow = bytes.substr(0, bytes.find('\n') + 1);
    tables[name] = summary;
  }
  closedir(dir);
  return tables;
}

TEST(WholeCaptureTest, EveryTableThatFillsMatchesTheRecord) {
  testing::TempFolder folder;
  const std::string capture = folder / "every.log";
  const testing::RunResult made = testing::RunAndCapture(
      {TARNLOG_SYNTHCAP_BIN, "--size", "400K", "--seed", "7", "--mix", "every", "-o", capture});
  ASSERT_EQ(made.status, 0) << made.err;

  std::vector<std::string> texts = FullExtractionVector(folder / "tables", capture);
  std::vector<char*> argv = ArgvOf(texts);
  ::mkdir((folder / "tables").c_str(), 0755);
  bool perfstatPending = true;
  ExtractSettings settings;
  settings.perfstatHeaderPending = &perfstatPending;
  ExtractionState state;
  ::testing::internal::CaptureStdout();
  ExtractMain(125, argv.data(), settings, state);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");

  const std::string actual = Describe(Summarise(folder / "tables"));
  const std::string record = testing::SourceDir() + "/tests/data/whole_capture.chk";
  if (std::getenv("TARNLOG_UPDATE_GOLDEN")) testing::WriteBytes(record, actual);
  EXPECT_EQ(actual, FileBytes(record));
}

}  // namespace
}  // namespace tarnlog
