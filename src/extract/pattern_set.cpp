#include "extract/pattern_set.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#if defined(__SSE2__)
#include <immintrin.h>
#endif
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
  heads_.assign(patterns_.size(), 0);
  headMasks_.assign(patterns_.size(), 0);
  for (std::size_t id = 0; id < patterns_.size(); ++id) {
    const std::size_t bytes = std::min<std::size_t>(patterns_[id].size(), sizeof(std::uint64_t));
    unsigned char head[sizeof(std::uint64_t)] = {};
    unsigned char mask[sizeof(std::uint64_t)] = {};
    std::memcpy(head, patterns_[id].data(), bytes);
    std::memset(mask, 0xFF, bytes);
    std::memcpy(&heads_[id], head, sizeof head);
    std::memcpy(&headMasks_[id], mask, sizeof mask);
  }
  constexpr std::size_t kPairs = 65536;
  pairBits_.assign(kPairs / 64, 0);
  std::vector<std::vector<std::uint16_t>> groups(kPairs);
  for (std::size_t id = 0; id < patterns_.size(); ++id) {
    const std::size_t pair = Pair(static_cast<unsigned char>(patterns_[id][0]),
                                  static_cast<unsigned char>(patterns_[id][1]));
    pairBits_[pair >> 6] |= std::uint64_t{1} << (pair & 63);
    groups[pair].push_back(static_cast<std::uint16_t>(id));
  }
  // Within a pair's texts, those with the same first four bytes stand
  // together, so that a candidate passes over each such run with one
  // compare.
  const auto firstFour = [&](std::uint16_t id) {
    return std::pair(heads_[id] & headMasks_[id] & kFirstFour, headMasks_[id] & kFirstFour);
  };
  pairBegin_.assign(kPairs + 1, 0);
  byPair_.clear();
  runEnd_.clear();
  for (std::size_t pair = 0; pair < kPairs; ++pair) {
    std::vector<std::uint16_t>& group = groups[pair];
    std::stable_sort(group.begin(), group.end(),
                     [&](std::uint16_t a, std::uint16_t b) { return firstFour(a) < firstFour(b); });
    pairBegin_[pair] = static_cast<std::uint32_t>(byPair_.size());
    for (std::size_t k = 0; k < group.size(); ++k) {
      std::size_t end = k + 1;
      while (end < group.size() && firstFour(group[end]) == firstFour(group[k]))
        ++end;
      byPair_.push_back(group[k]);
      runEnd_.push_back(static_cast<std::uint32_t>(pairBegin_[pair] + end));
    }
  }
  pairBegin_[kPairs] = static_cast<std::uint32_t>(byPair_.size());

  std::map<unsigned char, std::set<unsigned char>> seconds;
  for (std::string_view pattern : patterns_) {
    seconds[static_cast<unsigned char>(pattern[0])].insert(static_cast<unsigned char>(pattern[1]));
  }
  singles_.clear();
  pairs_.clear();
  for (const auto& [first, following] : seconds) {
    if (following.size() > 3) {
      singles_.push_back(first);
    } else {
      for (unsigned char second : following)
        pairs_.emplace_back(first, second);
    }
  }
}

void PatternSet::MatchAt(const char* text, std::size_t length, std::size_t i,
                         PatternHits& hits) const {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  const std::size_t pair = Pair(bytes[i], bytes[i + 1]);
  if (!((pairBits_[pair >> 6] >> (pair & 63)) & 1)) return;
  // Where eight bytes remain, a run of texts whose first four bytes differ
  // from the candidate's is passed over at once, and the first-eight
  // compare settles most of the others without a call.
  const bool wide = length - i >= sizeof(std::uint64_t);
  std::uint64_t here = 0;
  if (wide) std::memcpy(&here, text + i, sizeof here);
  for (std::uint32_t k = pairBegin_[pair]; k < pairBegin_[pair + 1];) {
    const int id = byPair_[k];
    if (wide && ((here ^ heads_[id]) & headMasks_[id] & kFirstFour) != 0) {
      k = runEnd_[k];
      continue;
    }
    ++k;
    if (hits.Has(id)) continue;
    const std::string_view pattern = patterns_[id];
    if (wide) {
      if ((here & headMasks_[id]) != heads_[id]) continue;
      if (pattern.size() <= sizeof here ||
          (pattern.size() <= length - i &&
           std::memcmp(text + i + sizeof here, pattern.data() + sizeof here,
                       pattern.size() - sizeof here) == 0)) {
        hits.found[id >> 6] |= std::uint64_t{1} << (id & 63);
        hits.firstStart[id] = static_cast<std::uint32_t>(i);
      }
      continue;
    }
    // Texts that begin with one pair mostly differ in their third character:
    // test it before comparing the rest.
    if (pattern.size() <= length - i && (pattern.size() == 2 || text[i + 2] == pattern[2]) &&
        std::memcmp(text + i + 2, pattern.data() + 2, pattern.size() - 2) == 0) {
      hits.found[id >> 6] |= std::uint64_t{1} << (id & 63);
      hits.firstStart[id] = static_cast<std::uint32_t>(i);
    }
  }
}

#if defined(__x86_64__)
// Thirty-two positions at a time where the processor has AVX2.
__attribute__((target("avx2"))) std::size_t PatternSet::MatchWide(const char* text,
                                                                  std::size_t length,
                                                                  PatternHits& hits) const {
  __m256i single[kMaxFilters];
  __m256i pairFirst[kMaxFilters];
  __m256i pairSecond[kMaxFilters];
  const std::size_t singles = singles_.size();
  const std::size_t pairs = pairs_.size();
  for (std::size_t k = 0; k < singles; ++k) {
    single[k] = _mm256_set1_epi8(static_cast<char>(singles_[k]));
  }
  for (std::size_t k = 0; k < pairs; ++k) {
    pairFirst[k] = _mm256_set1_epi8(static_cast<char>(pairs_[k].first));
    pairSecond[k] = _mm256_set1_epi8(static_cast<char>(pairs_[k].second));
  }
  std::size_t i = 0;
  for (; i + 33 <= length; i += 32) {
    const __m256i here = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + i));
    const __m256i next = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + i + 1));
    __m256i candidates = _mm256_setzero_si256();
    for (std::size_t k = 0; k < singles; ++k) {
      candidates = _mm256_or_si256(candidates, _mm256_cmpeq_epi8(here, single[k]));
    }
    for (std::size_t k = 0; k < pairs; ++k) {
      candidates =
          _mm256_or_si256(candidates, _mm256_and_si256(_mm256_cmpeq_epi8(here, pairFirst[k]),
                                                       _mm256_cmpeq_epi8(next, pairSecond[k])));
    }
    for (unsigned mask = static_cast<unsigned>(_mm256_movemask_epi8(candidates)); mask != 0;
         mask &= mask - 1) {
      MatchAt(text, length, i + static_cast<std::size_t>(__builtin_ctz(mask)), hits);
    }
  }
  return i;
}
#endif

void PatternSet::Match(const char* text, std::size_t length, PatternHits& hits) const {
  if (length < 2) return;
  std::size_t i = 0;
  const bool filtered = singles_.size() <= kMaxFilters && pairs_.size() <= kMaxFilters;
#if defined(__x86_64__)
  static const bool wide = __builtin_cpu_supports("avx2");
  if (filtered && wide) i = MatchWide(text, length, hits);
#endif
#if defined(__SSE2__)
  // Sixteen positions at a time: a position is looked at only when its byte
  // (or its byte pair) can begin some text.
  if (filtered) {
    __m128i single[kMaxFilters];
    __m128i pairFirst[kMaxFilters];
    __m128i pairSecond[kMaxFilters];
    const std::size_t singles = singles_.size();
    const std::size_t pairs = pairs_.size();
    for (std::size_t k = 0; k < singles; ++k) {
      single[k] = _mm_set1_epi8(static_cast<char>(singles_[k]));
    }
    for (std::size_t k = 0; k < pairs; ++k) {
      pairFirst[k] = _mm_set1_epi8(static_cast<char>(pairs_[k].first));
      pairSecond[k] = _mm_set1_epi8(static_cast<char>(pairs_[k].second));
    }
    for (; i + 17 <= length; i += 16) {
      const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
      const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i + 1));
      __m128i candidates = _mm_setzero_si128();
      for (std::size_t k = 0; k < singles; ++k) {
        candidates = _mm_or_si128(candidates, _mm_cmpeq_epi8(here, single[k]));
      }
      for (std::size_t k = 0; k < pairs; ++k) {
        candidates = _mm_or_si128(candidates, _mm_and_si128(_mm_cmpeq_epi8(here, pairFirst[k]),
                                                            _mm_cmpeq_epi8(next, pairSecond[k])));
      }
      for (unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(candidates)); mask != 0;
           mask &= mask - 1) {
        MatchAt(text, length, i + static_cast<std::size_t>(__builtin_ctz(mask)), hits);
      }
    }
  }
#endif
  // The last positions one by one; a pair that begins no text is passed
  // over here, without a call.
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  for (; i + 1 < length; ++i) {
    const std::size_t pair = Pair(bytes[i], bytes[i + 1]);
    if ((pairBits_[pair >> 6] >> (pair & 63)) & 1) MatchAt(text, length, i, hits);
  }
}

}  // namespace tarnlog
