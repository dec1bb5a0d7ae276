#include "extract/range/range_extractors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "extract/dispatch.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

// An observation table and a frequency table, read back as bytes.
class RangeTables {
 public:
  RangeTables() {
    table_.Open(folder_ / "table.txt", FileMode::kBinary);
    frequencies_.Open(folder_ / "freq.txt", FileMode::kBinary);
  }
  OutFile* Table() { return &table_; }
  OutFile* Frequencies() { return &frequencies_; }
  std::string TableBytes() { return Read(table_, "table.txt"); }
  std::string FrequencyBytes() { return Read(frequencies_, "freq.txt"); }

 private:
  std::string Read(OutFile& file, const char* name) {
    file.Flush();
    return FileBytes(folder_ / name);
  }
  TempFolder folder_;
  OutFile table_, frequencies_;
};

// GPS 5 on L1 C/A and L2.
const std::string kTwoChannels =
    "2,5,0,1.0,0.1,2.0,0.1,3.0,45.0,10.0,08109c04,5,0,1.0,0.1,2.0,0.1,3.0,40.0,10.0,01309c0b";
const std::string kTwoChannelsRow = "431250.000, 2, 2, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2 \n";

std::string Range(const std::string& name, const std::string& idle,
                  const std::string& timeStatus = "FINESTEERING") {
  return "#" + name + ",COM1,0," + idle + "," + timeStatus +
         ",2210,431250.000,02000020,5103,16809;" + kTwoChannels + "*b35a6012\r\n";
}

TEST(RangeExtractorTest, RealCaptureRows) {
  const std::string bytes = FileBytes(testing::SourceDir() + "/tests/data/OnceEachAgain.ASC");
  RangeTables tables;
  RangeState state;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = bytes.find('\n', start);
    const std::string line = bytes.substr(start, end + 1 - start);
    ExtractRange(RangeLog::kRange, line.c_str(), line.size(), tables.Table(), tables.Frequencies(),
                 state);
    start = end + 1;
  }
  EXPECT_EQ(tables.TableBytes(),
            "420261.000, 24, 24, 12, 12, 12, 0, 0, 0, 0, 0, 0, 0, 24, 24, 24 \n");
  EXPECT_EQ(tables.FrequencyBytes(), "1687,420261.0000,42.5, 24, 24,12 ,12\n");
  EXPECT_EQ(state.latestWeek, 1687);
  EXPECT_EQ(state.latestSeconds, 420261.0);
}

TEST(RangeExtractorTest, RowsByLogAndIdle) {
  struct Case {
    RangeLog log;
    std::string sentence;
    std::string row, frequencyRow;
    bool epochStored;
  };
  const std::string rangeFrequency = "2210,431250.0000,42.5, 2, 2,1 ,1\n";
  const std::vector<Case> cases = {
      {RangeLog::kRange, Range("RANGEA", "69.5"), kTwoChannelsRow, rangeFrequency, true},
      {RangeLog::kRange, Range("RANGEA", "100"), kTwoChannelsRow, rangeFrequency, true},
      {RangeLog::kBaseRange, Range("BASERANGEA", "1"), kTwoChannelsRow, rangeFrequency, true},
      {RangeLog::kRangeH, Range("RANGEHA", "50"), kTwoChannelsRow,
       "2210,431250.0000,42.5, 2, 2, 1\n", true},
      // The idle test: no rows, the epoch all the same.
      {RangeLog::kRange, Range("RANGEA", "0.0"), "", "", true},
      {RangeLog::kRange, Range("RANGEA", "100.5"), "", "", true},
      {RangeLog::kRange, Range("RANGEA", "idle"), "", "", true},
      // Not this log, or "UNKNOWN" in the head: nothing at all.
      {RangeLog::kRange, Range("RANGEA", "69.5", "UNKNOWN"), "", "", false},
      {RangeLog::kRange, 'x' + Range("RANGEA", "69.5"), "", "", false},
      {RangeLog::kBaseRange, Range("RANGEA", "69.5"), "", "", false},
      {RangeLog::kRange, "#RANGEA,COM1,0,69.5,FINESTEERING,2210", "", "", false},
  };
  for (const Case& c : cases) {
    RangeTables tables;
    RangeState state;
    ExtractRange(c.log, c.sentence.c_str(), c.sentence.size(), tables.Table(), tables.Frequencies(),
                 state);
    EXPECT_EQ(tables.TableBytes(), c.row) << c.sentence;
    EXPECT_EQ(tables.FrequencyBytes(), c.frequencyRow) << c.sentence;
    EXPECT_EQ(state.latestKnown, c.epochStored) << c.sentence;
    if (c.epochStored) {
      EXPECT_EQ(state.latestSeconds, 431250.0);
    }
  }
}

const std::string kObsvmChannels =
    "2,0,5,1.0,2.0,10,7,3.0,4500,0,10.0,08109c04,17,5,1.0,2.0,52,12,3.0,4000,0,10.0,01309c0b";

// Every chain row reaches its extractor through its main table, with the
// row's second table as the frequency table (which OBSVM leaves empty).
// OBSVM has no idle test, and a count of 0 is a row of zeros.
TEST(RangeExtractorTest, ChainRowsAndObsvmRows) {
  struct Case {
    TableId table;
    std::string sentence;
    std::string row, frequencyRow;
  };
  const std::string frequencyRow = "2210,431250.0000,42.5, 2, 2,1 ,1\n";
  const std::vector<Case> cases = {
      {TableId::kRange, Range("RANGEA", "69.5"), kTwoChannelsRow, frequencyRow},
      {TableId::kBaseRange, Range("BASERANGEA", "69.5"), kTwoChannelsRow, frequencyRow},
      {TableId::kRangeH, Range("RANGEHA", "69.5"), kTwoChannelsRow,
       "2210,431250.0000,42.5, 2, 2, 1\n"},
      {TableId::kObsvm, "#OBSVMA,84,GPS,FINE,2210,431250500;" + kObsvmChannels + "*1\r\n",
       "2210,431250.500, 2, 2, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2 84\n", ""},
      {TableId::kObsvmh, "#OBSVMHA,84,GPS,FINE,2210,431250500;" + kObsvmChannels + "*1\r\n",
       "2210, 431250.500, 2, 2, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2  84\n", ""},
      {TableId::kObsvm, "#OBSVMA,0,GPS,FINE,2210,431250500;0*1\r\n",
       "2210,431250.500, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 0\n", ""},
      {TableId::kObsvm, "#OBSVMA,84,GPS,FINE,2210", "", ""},
  };
  for (const Case& c : cases) {
    const DispatchRow* row = nullptr;
    for (const DispatchRow& r : DispatchRows()) {
      if (r.tables[0] == c.table) row = &r;
    }
    ASSERT_NE(row, nullptr);
    ASSERT_NE(row->handler, nullptr) << c.sentence;
    TempFolder folder;
    ExtractTables tables;
    tables[row->tables[0]].Open(folder / "main.txt", FileMode::kBinary);
    tables[row->tables[1]].Open(folder / "freq.txt", FileMode::kBinary);
    ExtractionState state;
    const ExtractOptions options;
    const ExtractSettings settings;
    row->handler({c.sentence.c_str(), c.sentence.size(), *row, options, tables, state, settings});
    tables[row->tables[0]].Flush();
    tables[row->tables[1]].Flush();
    EXPECT_EQ(FileBytes(folder / "main.txt"), c.row) << c.sentence;
    EXPECT_EQ(FileBytes(folder / "freq.txt"), c.frequencyRow) << c.sentence;
  }
}

}  // namespace
}  // namespace tarnlog
