#include "solution_code.h"

#include <cstddef>
#include <cstring>
#include <iterator>

namespace tarnlog {
namespace {

constexpr int kFamilyCount = 6;

// One position type word. The compare runs over the word's length; a word
// that carries its comma compares it too. `codes` holds the number in each
// family, by PositionFamily, 0 where the family doesn't list the word.
struct TypeWord {
  const char* text;
  int codes[kFamilyCount];
};

// Indices into kWords.
enum Word : int {
  kNarrowInt,
  kWideInt,
  kL1Int,
  kFixedPos,
  kNarrowFloat,
  kL1Float,
  kPsrDiff,
  kSingle,
  kWaas,
  kSbas,
  kIns,
  kInsPsrSp,
  kInsPsrDiff,
  kInsRtkFixed,
  kPppComma,
  kPppPrefix,
  kPppConverging,
  kPppConvergingComma,
  kDopplerVelocity,
  kWordCount
};

//                                       BESTPOS GNSS  XYZ   RTK   PSR   PPP
constexpr TypeWord kWords[kWordCount] = {
    {"NARROW_INT", {50, 50, 50, 50, 0, 0}},   {"WIDE_INT", {49, 0, 0, 49, 0, 0}},
    {"L1_INT", {48, 48, 48, 48, 0, 0}},       {"FIXEDPOS", {51, 51, 51, 0, 22, 0}},
    {"NARROW_FLOAT", {34, 34, 34, 34, 0, 0}}, {"L1_FLOAT", {32, 32, 32, 32, 0, 0}},
    {"PSRDIFF", {11, 11, 11, 0, 11, 11}},     {"SINGLE", {30, 30, 30, 0, 22, 22}},
    {"WAAS", {25, 25, 25, 0, 25, 25}},        {"SBAS", {25, 25, 25, 0, 25, 25}},
    {"INS,", {52, 52, 52, 0, 0, 0}},          {"INS_PSRSP", {53, 53, 53, 0, 0, 0}},
    {"INS_PSRDIFF", {54, 54, 54, 0, 0, 0}},   {"INS_RTKFIXED", {56, 56, 56, 0, 0, 0}},
    {"PPP,", {69, 0, 51, 0, 0, 0}},           {"PPP", {0, 0, 0, 0, 0, 26}},
    {"PPP_CONVERGING", {68, 0, 0, 0, 0, 27}}, {"PPP_CONVERGING,", {0, 0, 55, 0, 0, 0}},
    {"DOPPLER_VELOCITY", {0, 0, 0, 0, 0, 0}},
};

constexpr int kDopplerVelocityCode = 17;

// The order in which each family tries its words; the first match wins.
struct FamilyOrder {
  const Word* words;
  std::size_t count;
};

constexpr Word kBestPosOrder[] = {kNarrowInt, kWideInt,    kFixedPos,    kNarrowFloat,
                                  kPsrDiff,   kL1Float,    kL1Int,       kIns,
                                  kInsPsrSp,  kInsPsrDiff, kInsRtkFixed, kSingle,
                                  kWaas,      kSbas,       kPppComma,    kPppConverging};
constexpr Word kBestGnssPosOrder[] = {
    kNarrowInt, kFixedPos,   kNarrowFloat, kPsrDiff, kL1Float, kL1Int, kIns,
    kInsPsrSp,  kInsPsrDiff, kInsRtkFixed, kSingle,  kWaas,    kSbas};
constexpr Word kBestXyzOrder[] = {
    kNarrowInt, kFixedPos, kNarrowFloat, kPsrDiff,    kL1Float,
    kL1Int,     kIns,      kInsPsrSp,    kInsPsrDiff, kInsRtkFixed,
    kSingle,    kWaas,     kSbas,        kPppComma,   kPppConvergingComma};
constexpr Word kRtkOrder[] = {kNarrowInt, kWideInt, kL1Int, kNarrowFloat, kL1Float};
constexpr Word kPsrOrder[] = {kFixedPos, kPsrDiff, kSingle, kWaas, kSbas};
// The longer word goes before its three-letter prefix.
constexpr Word kPppOrder[] = {kSingle, kPsrDiff, kWaas, kSbas, kPppConverging, kPppPrefix};

constexpr FamilyOrder kOrders[kFamilyCount] = {
    {kBestPosOrder, std::size(kBestPosOrder)}, {kBestGnssPosOrder, std::size(kBestGnssPosOrder)},
    {kBestXyzOrder, std::size(kBestXyzOrder)}, {kRtkOrder, std::size(kRtkOrder)},
    {kPsrOrder, std::size(kPsrOrder)},         {kPppOrder, std::size(kPppOrder)},
};

// The characters to step over: the word and the comma behind it.
int SkipOf(const char* word) {
  const std::size_t length = std::strlen(word);
  return static_cast<int>(word[length - 1] == ',' ? length : length + 1);
}

bool StartsWith(const char* text, const char* word) {
  return std::strncmp(text, word, std::strlen(word)) == 0;
}

}  // namespace

PositionTypeMatch MatchPositionType(PositionFamily family, const char* text) {
  PositionTypeMatch match;
  const int index = static_cast<int>(family);
  if (text == nullptr || index < 0 || index >= kFamilyCount) return match;
  const FamilyOrder& order = kOrders[index];
  for (std::size_t n = 0; n < order.count; ++n) {
    const TypeWord& word = kWords[order.words[n]];
    if (StartsWith(text, word.text)) {
      match.code = word.codes[index];
      match.skip = SkipOf(word.text);
      return match;
    }
  }
  return match;
}

PositionTypeMatch MatchVelocityType(const char* text) {
  if (text != nullptr && StartsWith(text, kWords[kDopplerVelocity].text)) {
    return {kDopplerVelocityCode, SkipOf(kWords[kDopplerVelocity].text)};
  }
  return MatchPositionType(PositionFamily::kBestXyz, text);
}

}  // namespace tarnlog
