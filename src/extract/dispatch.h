// The dispatch chain: which extractor takes an accepted sentence. Three
// stages of tests, each tried in order; the first that holds ends the
// sentence's handling, whether or not its target wrote anything.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "extract/extract_options.h"
#include "extract/extraction_state.h"
#include "extract/pattern_set.h"
#include "platform/files.h"

namespace tarnlog {

// The open tables of a run; a table no option named stays closed and takes
// nothing.
struct ExtractTables {
  std::array<OutFile, kTableCount> files;
  OutFile& operator[](TableId id) { return files[static_cast<std::size_t>(id)]; }
};

enum class TestKind {
  kPrefix,       // the sentence begins with the text
  kContains,     // the text stands anywhere (up to the first NUL)
  kAtCharacter,  // the text stands at a fixed position
};

// Further conditions of a row.
enum Need : unsigned {
  kNeedFine = 1u << 0,       // "FINE" anywhere
  kNeedCommaFine = 1u << 1,  // ",FINE," anywhere
  kNeedNoCom = 1u << 2,      // no ",COM"
  kNeedCom = 1u << 3,        // ",COM"
  kNeedNoLocal = 1u << 4,    // no "LOCAL"
};

struct DispatchRow;

struct DispatchContext {
  const char* sentence;
  std::size_t length;
  const DispatchRow& row;
  const ExtractOptions& options;
  ExtractTables& tables;
  ExtractionState& state;
  const ExtractSettings& settings;

  // The row's k-th table, or null when it names none.
  OutFile* Table(int k) const;
};

using DispatchHandler = void (*)(const DispatchContext& context);

inline constexpr TableId kNoTable = TableId::kCount;

struct DispatchRow {
  int stage;
  TestKind test;
  const char* text;
  int position;  // kAtCharacter only
  unsigned needs;
  TableId option;  // stage 2: the option that must have been given, else kNoTable
  // Position targets: main table, grid table, ttff table; a combined log adds
  // its velocity table last.
  std::array<TableId, 4> tables;
  int log;    // the extractor's log, where it serves several
  int param;  // origin 0 or 1, or the BESTXYZA mode
  // Null where the target writes nothing yet; the row still ends the handling.
  DispatchHandler handler;
  // Ends stage 1 only; the sentence goes on through stages 2 and 3.
  bool goesOn = false;
  // The target keeps no state that anything reads: with all its tables
  // closed it is not called at all.
  bool quietWhenClosed = false;
};

// The rows of all three stages, in order.
const std::vector<DispatchRow>& DispatchRows();

class Dispatcher {
 public:
  Dispatcher();

  // The row that takes the sentence in `stage`, or null. `hits` must come
  // from Match over the same sentence.
  const DispatchRow* Classify(int stage, const char* sentence, std::size_t length,
                              const PatternHits& hits, const ExtractOptions& options) const;
  void Match(const char* sentence, std::size_t length, PatternHits& hits) const {
    patterns_.Match(sentence, length, hits);
  }

  // Stages 1 to 3 over one accepted sentence (NUL-terminated, `length` up to
  // its first NUL).
  void Dispatch(const char* sentence, std::size_t length, const ExtractOptions& options,
                ExtractTables& tables, ExtractionState& state,
                const ExtractSettings& settings) const;

 private:
  bool Holds(const DispatchRow& row, int rowIndex, const char* sentence, std::size_t length,
             const PatternHits& hits, const ExtractOptions& options) const;

  PatternSet patterns_;
  std::vector<int> rowPattern_;
  // Per stage: for each pattern the rows it is the test of, in order, and
  // the rows that test a fixed position; only these can hold.
  std::array<std::vector<std::vector<int>>, 3> rowsByPattern_;
  std::array<std::vector<int>, 3> positionRows_;
  std::array<int, 4> stageBegin_{};  // first row of each stage, and the end
};

}  // namespace tarnlog
