#include "extract/record_time/text_chain.h"

#include <stdexcept>

#include "extract/record_time/log_types.h"

namespace tarnlog::record_time {
namespace {

void SetBit(TextBits& bits, int id) {
  bits[static_cast<std::size_t>(id) >> 6] |= std::uint64_t{1} << (id & 63);
}

}  // namespace

TextChain::TextChain() {
  typeOfText_.fill(-1);
  directOfText_.fill(-1);
  // The classifier's texts first, in its order, so that the lowest id found
  // is the first type of the chain; then the direct types' texts in theirs.
  const auto types = LogTypes();
  textOfType_.assign(types.size(), -1);
  filterTextOfType_.assign(types.size(), -1);
  int expected = 0;
  for (std::size_t k = 0; k < types.size(); ++k) {
    if (types[k].text.empty()) continue;
    const int id = set_.Add(types[k].text);
    if (id != expected++) throw std::logic_error("record-time texts out of order");
    typeOfText_[static_cast<std::size_t>(id)] = static_cast<std::int16_t>(k);
    textOfType_[k] = static_cast<std::int16_t>(id);
  }
  for (std::size_t k = 0; k < types.size(); ++k) {
    if (!types[k].text.empty()) {
      filterTextOfType_[k] = static_cast<std::int16_t>(set_.Add(types[k].FilterText()));
    }
  }
  const auto directs = DirectTypes();
  for (std::size_t k = 0; k < directs.size(); ++k) {
    const int id = set_.Add(directs[k].text);
    if (directOfText_[static_cast<std::size_t>(id)] >= 0 || typeOfText_[id] >= 0) {
      throw std::logic_error("record-time direct text repeated");
    }
    directOfText_[static_cast<std::size_t>(id)] = static_cast<std::int16_t>(k);
    SetBit(directTexts_, id);
  }
  for (std::string_view text : NotRoverTexts())
    SetBit(notRoverTexts_, set_.Add(text));
  pppDop_ = set_.Add(kPppDopText);
  com_ = set_.Add(kComText);
  mixMatched_ = set_.Add(kMixMatchedText);
  fine_ = set_.Add(kFineText);
  ggaBase2_ = set_.Add(kGgaBase2Text);
  ahgh_ = set_.Add(kAhghText);
  set_.Build();
}

WantedTexts TextChain::Wanted(std::uint32_t maskA, std::uint32_t maskB) const {
  WantedTexts wanted;
  const auto types = LogTypes();
  for (std::size_t k = 0; k < types.size(); ++k) {
    if (textOfType_[k] < 0 || !types[k].gate.Passes(maskA, maskB)) continue;
    SetBit(wanted.classified, textOfType_[k]);
    SetBit(wanted.filter, filterTextOfType_[k]);
  }
  return wanted;
}

int TextChain::FirstOf(const PatternHits& hits, const TextBits& bits, int skip) {
  for (std::size_t word = 0; word < bits.size(); ++word) {
    std::uint64_t both = hits.found[word] & bits[word];
    if (skip >= 0 && static_cast<std::size_t>(skip >> 6) == word) {
      both &= ~(std::uint64_t{1} << (skip & 63));
    }
    if (both != 0) return static_cast<int>(word * 64) + __builtin_ctzll(both);
  }
  return -1;
}

bool TextChain::PassesFilter(const PatternHits& hits, const WantedTexts& wanted) const {
  return FirstOf(hits, wanted.filter, hits.Has(com_) ? pppDop_ : -1) >= 0;
}

int TextChain::ClassifiedType(const PatternHits& hits, const WantedTexts& wanted) const {
  const int id = FirstOf(hits, wanted.classified, hits.Has(com_) ? pppDop_ : -1);
  return id < 0 ? -1 : typeOfText_[static_cast<std::size_t>(id)];
}

int TextChain::DirectType(const PatternHits& hits) const {
  const int id = FirstOf(hits, directTexts_, -1);
  return id < 0 ? -1 : directOfText_[static_cast<std::size_t>(id)];
}

bool TextChain::IsRoverLine(const PatternHits& hits) const {
  for (std::size_t word = 0; word < notRoverTexts_.size(); ++word) {
    if (hits.found[word] & notRoverTexts_[word]) return false;
  }
  return true;
}

const TextChain& SharedTextChain() {
  static const TextChain chain;
  return chain;
}

}  // namespace tarnlog::record_time
