#include "extract/pattern_set.h"

#include <cstring>
#include <stdexcept>

namespace tarnlog {

int PatternSet::Add(std::string_view pattern) {
  for (std::size_t i = 0; i < patterns_.size(); ++i) {
    if (patterns_[i] == pattern) return static_cast<int>(i);
  }
  if (patterns_.size() >= kMaxPatterns || pattern.size() < 2) {
    throw std::logic_error("pattern set is full or a pattern is shorter than two characters");
  }
  patterns_.push_back(pattern);
  return static_cast<int>(patterns_.size() - 1);
}

void PatternSet::Build() {
  constexpr std::size_t kPairs = 65536;
  pairBits_.assign(kPairs / 64, 0);
  std::vector<std::vector<std::uint16_t>> groups(kPairs);
  for (std::size_t id = 0; id < patterns_.size(); ++id) {
    const std::size_t pair = Pair(static_cast<unsigned char>(patterns_[id][0]),
                                  static_cast<unsigned char>(patterns_[id][1]));
    pairBits_[pair >> 6] |= std::uint64_t{1} << (pair & 63);
    groups[pair].push_back(static_cast<std::uint16_t>(id));
  }
  pairBegin_.assign(kPairs + 1, 0);
  byPair_.clear();
  for (std::size_t pair = 0; pair < kPairs; ++pair) {
    pairBegin_[pair] = static_cast<std::uint32_t>(byPair_.size());
    byPair_.insert(byPair_.end(), groups[pair].begin(), groups[pair].end());
  }
  pairBegin_[kPairs] = static_cast<std::uint32_t>(byPair_.size());
}

void PatternSet::Match(const char* text, std::size_t length, PatternHits& hits) const {
  if (length < 2) return;
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  const std::uint64_t* bits = pairBits_.data();
  for (std::size_t i = 0; i + 1 < length; ++i) {
    const std::size_t pair = Pair(bytes[i], bytes[i + 1]);
    if (!((bits[pair >> 6] >> (pair & 63)) & 1)) continue;
    for (std::uint32_t k = pairBegin_[pair]; k < pairBegin_[pair + 1]; ++k) {
      const int id = byPair_[k];
      if (hits.Has(id)) continue;
      const std::string_view pattern = patterns_[id];
      if (pattern.size() <= length - i &&
          std::memcmp(text + i + 2, pattern.data() + 2, pattern.size() - 2) == 0) {
        hits.found[id >> 6] |= std::uint64_t{1} << (id & 63);
        hits.firstStart[id] = static_cast<std::uint32_t>(i);
      }
    }
  }
}

}  // namespace tarnlog
