// Many "contains" tests over one sentence in a single pass. Every text of
// the dispatch chain is at least two characters long, so a table of the byte
// pairs that begin some text rejects almost every position of a sentence
// with one lookup and no dependence on the position before it; the rare
// positions that pass are compared with the texts of that pair. One pass
// marks every text the sentence holds and where each first starts, so that
// the chain's ~150 tests become bit tests.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnlog {

inline constexpr std::size_t kMaxPatterns = 256;

struct PatternHits {
  std::array<std::uint64_t, kMaxPatterns / 64> found{};
  std::array<std::uint32_t, kMaxPatterns> firstStart{};  // valid where found

  // Texts asked about by only a few rows are searched for on demand, once:
  // bit k of `searched` says whether bit k of `present` is known.
  mutable unsigned searched = 0;
  mutable unsigned present = 0;

  void Clear() {
    found.fill(0);
    searched = present = 0;
  }
  bool Has(int id) const { return (found[id >> 6] >> (id & 63)) & 1; }
  // Found, and its first occurrence starts the text.
  bool AtStart(int id) const { return Has(id) && firstStart[id] == 0; }
};

class PatternSet {
 public:
  // Returns the pattern's id; the same text twice gives the same id. Texts
  // are at least two characters long.
  int Add(std::string_view pattern);
  void Build();
  // Marks the patterns found in text[0, length).
  void Match(const char* text, std::size_t length, PatternHits& hits) const;
  int Count() const { return static_cast<int>(patterns_.size()); }

 private:
  static std::size_t Pair(unsigned char first, unsigned char second) {
    return (static_cast<std::size_t>(first) << 8) | second;
  }

  std::vector<std::string_view> patterns_;
  // Each text's first eight bytes (fewer for a shorter text) and the mask
  // of those it has, so that most candidates are told apart by one compare.
  std::vector<std::uint64_t> heads_;
  std::vector<std::uint64_t> headMasks_;
  // Per entry of byPair_: the end of the run of texts that share its first
  // four bytes.
  std::vector<std::uint32_t> runEnd_;
  // The first four bytes of a little-endian load.
  static constexpr std::uint64_t kFirstFour = 0xFFFFFFFFu;
  std::vector<std::uint64_t> pairBits_;   // 65536 bits: pairs that begin a text
  std::vector<std::uint32_t> pairBegin_;  // per pair, into byPair_
  std::vector<std::uint16_t> byPair_;     // pattern ids grouped by their first pair

  // For the 16-bytes-at-a-time pre-filter: first bytes that begin texts
  // with many different second bytes are tested alone, the others as pairs.
  std::vector<unsigned char> singles_;
  std::vector<std::pair<unsigned char, unsigned char>> pairs_;
  void MatchAt(const char* text, std::size_t length, std::size_t i, PatternHits& hits) const;
  // The filter over 32 positions at a time; returns where it stopped.
  std::size_t MatchWide(const char* text, std::size_t length, PatternHits& hits) const;
  static constexpr std::size_t kMaxFilters = 16;
};

}  // namespace tarnlog
