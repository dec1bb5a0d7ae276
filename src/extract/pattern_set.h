// Many "contains" tests over one sentence in a single pass: an Aho-Corasick
// automaton over all the dispatch chain's texts, as a dense table over byte
// classes. One pass marks every text the sentence holds and where each first
// starts, so that the chain's ~150 tests become bit tests.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tarnlog {

inline constexpr std::size_t kMaxPatterns = 256;

struct PatternHits {
  std::array<std::uint64_t, kMaxPatterns / 64> found{};
  std::array<std::uint32_t, kMaxPatterns> firstStart{};  // valid where found

  void Clear() { found.fill(0); }
  bool Has(int id) const { return (found[id >> 6] >> (id & 63)) & 1; }
  // Found, and its first occurrence starts the text.
  bool AtStart(int id) const { return Has(id) && firstStart[id] == 0; }
};

class PatternSet {
 public:
  // Returns the pattern's id; the same text twice gives the same id.
  int Add(std::string_view pattern);
  void Build();
  // Marks the patterns found in text[0, length).
  void Match(const char* text, std::size_t length, PatternHits& hits) const;
  int Count() const { return static_cast<int>(patterns_.size()); }

 private:
  std::vector<std::string_view> patterns_;
  std::array<std::uint8_t, 256> byteClass_{};
  int classCount_ = 1;
  std::vector<std::uint16_t> next_;         // state * classCount_ + class
  std::vector<std::uint32_t> outputBegin_;  // per state, into outputs_
  std::vector<std::uint16_t> outputs_;      // pattern ids ending at a state
  std::vector<std::uint16_t> lengths_;      // per pattern
};

}  // namespace tarnlog
