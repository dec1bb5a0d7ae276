// Sentences through the real dispatch chain into tables of a scratch folder,
// for the extractor tests: a case opens the tables it looks at, or all of
// them with the Static page's full vector of options.
#pragma once

#include <string>
#include <vector>

#include "extract/dispatch.h"
#include "extract/extract_main.h"
#include "support/test_support.h"

namespace tarnlog::testing {

class ChainHarness {
 public:
  enum class Tables { kOpenedByCase, kFullVector };

  explicit ChainHarness(Tables tables = Tables::kOpenedByCase) {
    if (tables == Tables::kOpenedByCase) return;
    std::vector<std::string> texts = FullExtractionVector("out", "cap.log");
    std::vector<char*> argv = ArgvOf(texts);
    options = ParseExtractOptions(125, argv.data());
    for (std::size_t i = 0; i < kTableCount; ++i)
      Open(static_cast<TableId>(i));
  }

  void Open(TableId id) { tables_[id].Open(PathOf(id), FileMode::kBinary); }
  void Feed(const std::string& sentence) {
    static const Dispatcher dispatcher;
    dispatcher.Dispatch(sentence.c_str(), sentence.size(), options, tables_, state, settings);
  }
  void Feed(const std::vector<std::string>& sentences) {
    for (const std::string& sentence : sentences)
      Feed(sentence);
  }
  // What the table holds once its buffer is written out.
  std::string Bytes(TableId id) {
    tables_[id].Flush();
    return Unflushed(id);
  }
  // What reached the file by itself (a table that flushes after each row).
  std::string Unflushed(TableId id) { return FileBytes(PathOf(id)); }
  ExtractionState& State() { return state; }

  ExtractOptions options;
  ExtractionState state;
  ExtractSettings settings;

 private:
  std::string PathOf(TableId id) {
    return folder_ / (std::to_string(static_cast<int>(id)) + ".txt");
  }
  TempFolder folder_;
  ExtractTables tables_;
};

}  // namespace tarnlog::testing
