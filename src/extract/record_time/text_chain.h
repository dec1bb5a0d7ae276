// Every text the record-time filter and classifier look for, found in one
// pass over a line; the tables' tests then become bit tests on the texts
// found.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "extract/pattern_set.h"

namespace tarnlog::record_time {

using TextBits = std::array<std::uint64_t, kMaxPatterns / 64>;

// The texts wanted under one pair of mask words.
struct WantedTexts {
  TextBits filter{};      // the filter texts of the types whose bit is set
  TextBits classified{};  // their classifier texts
};

class TextChain {
 public:
  TextChain();

  void Match(const char* line, std::size_t length, PatternHits& hits) const {
    hits.Clear();
    set_.Match(line, length, hits);
  }

  WantedTexts Wanted(std::uint32_t maskA, std::uint32_t maskB) const;

  // Whether a line with these texts passes the filter's rows. "#PPPDOPA" is
  // wanted only on a line without "COM": the COM test belongs to that row
  // alone, so that "#BESTPOSA,COM1,..." and the like are written.
  bool PassesFilter(const PatternHits& hits, const WantedTexts& wanted) const;
  // The first classified type, in the classifier's order, whose text the
  // line holds and whose bit is set; -1 for none.
  int ClassifiedType(const PatternHits& hits, const WantedTexts& wanted) const;
  // The first direct type whose text the line holds; -1 for none.
  int DirectType(const PatternHits& hits) const;

  bool HoldsMixMatched(const PatternHits& hits) const { return hits.Has(mixMatched_); }
  bool HoldsFine(const PatternHits& hits) const { return hits.Has(fine_); }
  bool HoldsGgaBase2(const PatternHits& hits) const { return hits.Has(ggaBase2_); }
  bool StartsWithAhgh(const PatternHits& hits) const { return hits.AtStart(ahgh_); }
  // None of the texts that keep a line from setting the latest rover time.
  bool IsRoverLine(const PatternHits& hits) const;

 private:
  // The lowest id set in `hits` and `bits`, or -1.
  static int FirstOf(const PatternHits& hits, const TextBits& bits, int skip);

  PatternSet set_;
  std::array<std::int16_t, kMaxPatterns> typeOfText_{};    // -1 for other texts
  std::array<std::int16_t, kMaxPatterns> directOfText_{};  // -1 for other texts
  std::vector<std::int16_t> textOfType_;                   // -1 for NMEA sentences
  std::vector<std::int16_t> filterTextOfType_;
  TextBits directTexts_{};
  TextBits notRoverTexts_{};
  int pppDop_ = -1;
  int com_ = -1;
  int mixMatched_ = -1;
  int fine_ = -1;
  int ggaBase2_ = -1;
  int ahgh_ = -1;
};

// The chain of the tables, made once.
const TextChain& SharedTextChain();

}  // namespace tarnlog::record_time
