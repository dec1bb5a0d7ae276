#include "extract/dispatch.h"

#include <gtest/gtest.h>

#include <cstring>

#include "extract/extract_main.h"

namespace tarnlog {
namespace {

struct Route {
  int stage = 0;  // 0: no row took it
  TableId table = kNoTable;
};

// Which row takes a sentence, stage by stage, as the driver walks them.
Route RouteOf(const std::string& sentence, const ExtractOptions& options,
              bool realValueMode = false) {
  static const Dispatcher dispatcher;
  PatternHits hits;
  dispatcher.Match(sentence.c_str(), sentence.size(), hits);
  for (int stage = realValueMode ? 2 : 1; stage <= (realValueMode ? 2 : 3); ++stage) {
    const DispatchRow* row =
        dispatcher.Classify(stage, sentence.c_str(), sentence.size(), hits, options);
    if (row && !row->goesOn) return {stage, row->tables[0]};
  }
  return {};
}

ExtractOptions FullOptions() {
  std::vector<std::string> texts = FullExtractionVector("out", "cap.log");
  std::vector<char*> argv = ArgvOf(texts);
  return ParseExtractOptions(125, argv.data());
}

TEST(DispatchTest, RoutesOfTheChain) {
  const ExtractOptions full = FullOptions();
  struct Case {
    std::string sentence;
    int stage;
    TableId table;
  };
  const std::vector<Case> cases{
      {"#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,0,b1f6,1;SOL_COMPUTED*1", 2,
       TableId::kBestPos},
      // "GST" anywhere wins in stage 1, even inside another log.
      {"#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,1.0,0,b1f6,1;SOL_COMPUTED,GST*1", 1, TableId::kGst},
      {"$GPGST,1*00", 1, TableId::kGst},
      {"$GNGGA,1*00", 2, TableId::kGga},
      {"$GNGGAH,1*00", 1, TableId::kGngGah},
      {"$GNGGABASE2,1*00", 1, TableId::kGgaBase2},
      {"$GNRMC,1*00", 3, TableId::kRmc},
      {"$GNGNS,1*00", 3, TableId::kGns},
      {"$GNXRTK,1*00", 3, TableId::kRtk},
      // The two DOP rows want no ",COM"; the PPP position row wants one.
      {"#MPPPPOSA,COM1,0,1,FINE,1,1;x*1", 1, TableId::kMPppPos},
      {"#MPPPPOSA,0,GPS,FINE,1,1;x*1", 0, kNoTable},
      {"#PPPDOPA,COM1,0,1,FINE,1,1;x*1", 3, TableId::kPppDop},
      {"#PPPDOPA,0,GPS,FINE,1,1;x*1", 1, TableId::kPppDop},
      {"#BESTNAVA,0,GPS,FINE,1,1;x*1", 1, TableId::kBestNavPos},
      {"#BESTNAVA,0,GPS,COARSE,1,1;x*1", 0, kNoTable},
      {"#BESTNAVHA,0,GPS,FINE,1,1;x*1", 1, TableId::kBestNavHPos},
      {"#BESTNAVXYZA,0,GPS,FINE,1,1;x*1", 1, TableId::kBestXyzPos},
      {"#BESTNAVXYZHA,0,GPS,FINE,1,1;x*1", 1, TableId::kBestXyzHPos},
      {"#SPPNAVHA,0,GPS,FINE,1,1;x*1", 1, TableId::kSppNavHPos},
      {"#ADRDOPHA,0,GPS,FINE,1,1;x*1", 1, TableId::kAdrDopH},
      {"#TROPINFOA,COM1,0,1,FINESTEERING,1,1;x*1", 0, kNoTable},
      {"#TROPINFOA,COM1,0,1,FINE,1,1;x*1", 1, TableId::kTropInfo},
      // Only BSLNENUHD2A reaches the baseline table.
      {"#ALIGNBSLNENUA,COM1,0,1,FINE,1,1;x*1", 0, kNoTable},
      {"#BSLNENUHD2A,COM1,0,1,FINE,1,1;x*1", 3, TableId::kAlignBslnEnu},
      // LOCAL keeps a log out of the position set.
      {"#BESTPOSA,COM1,0,1,FINE,1,1;SOL_COMPUTED,LOCAL*1", 0, kNoTable},
      {"#RANGEA,COM1,0,1,FINE,1,1;LOCAL*1", 0, kNoTable},
      {"#RANGEA,COM1,0,1,FINE,1,1;2*1", 3, TableId::kRange},
      {"#RTKPOS2A,COM1,0,1,FINE,1,1;x*1", 3, TableId::kRtkPos2},
      {"#BESTXYZA,COM1,0,1,FINE,1,1;x*1", 3, TableId::kBestXyz},
      {"%ANGVELA,1,1;x*1", 3, TableId::kAngVel},
      {"#MATCHEDPOSA,COM1,0,1,FINE,1,1;x*1", 2, TableId::kMatch},
      {"#MATCHEDPOSHA,COM1,0,1,FINE,1,1;x*1", 2, TableId::kMatchH},
      {"#VERSIONA,COM1,0,1,FINE,1,1;x*1", 0, kNoTable},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sentence);
    const Route route = RouteOf(c.sentence, full);
    EXPECT_EQ(route.stage, c.stage);
    EXPECT_EQ(route.table, c.table);
  }
}

TEST(DispatchTest, MatchedBase2EndsStageOneOnly) {
  static const Dispatcher dispatcher;
  const std::string sentence = "#MATCHEDPOSBASE2A,COM1,0,1,FINE,1,1;x,#PSRVELA,*1";
  PatternHits hits;
  dispatcher.Match(sentence.c_str(), sentence.size(), hits);
  const ExtractOptions full = FullOptions();
  const DispatchRow* first = dispatcher.Classify(1, sentence.c_str(), sentence.size(), hits, full);
  ASSERT_NE(first, nullptr);
  EXPECT_TRUE(first->goesOn);
  EXPECT_EQ(first->tables[0], TableId::kMatchBase2);
  // It goes on, and stage 3 finds the velocity name inside it.
  EXPECT_EQ(RouteOf(sentence, full).table, TableId::kPsrVel);
}

TEST(DispatchTest, PositionSetNeedsItsOption) {
  std::vector<std::string> texts{"out", "-i", "cap.log", "-BP"};
  std::vector<char*> argv = ArgvOf(texts);
  const ExtractOptions bestOnly = ParseExtractOptions(4, argv.data());
  const std::string rtk = "#RTKPOSA,COM1,0,1,FINE,1,1;x*1";
  EXPECT_EQ(RouteOf(rtk, bestOnly).stage, 0);
  EXPECT_EQ(RouteOf(rtk, FullOptions()).table, TableId::kRtkPos);
  // Real-value generation looks at the position set only.
  EXPECT_EQ(RouteOf("$GPGST,1*00", FullOptions(), true).stage, 0);
  EXPECT_EQ(RouteOf("#BESTPOSA,COM1,0,1,FINE,1,1;x*1", FullOptions(), true).stage, 2);
}

TEST(DispatchTest, RowsNameTheirTables) {
  // Every row's table must be opened by some option or the default set.
  for (const DispatchRow& row : DispatchRows()) {
    EXPECT_NE(row.tables[0], kNoTable) << row.text;
    EXPECT_GE(row.stage, 1);
    EXPECT_LE(row.stage, 3);
  }
}

}  // namespace
}  // namespace tarnlog
