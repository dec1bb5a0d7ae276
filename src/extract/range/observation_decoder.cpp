#include "extract/range/observation_decoder.h"

#include "extract/read_number.h"

#include <cstring>

#include "extract/field_cursor.h"

namespace tarnlog {
namespace {

// OBSVM carries its deviations and C/N0 as scaled integers.
constexpr double kObsvmPseudorangeSigmaScale = 0.01;
constexpr double kObsvmAdrSigmaScale = 0.0001;
constexpr double kObsvmCn0Scale = 0.01;

// The satellites of one log by system and PRN: open addressing over a
// table sized to the declared count, so that a short log clears a short
// table.
class SatelliteIndex {
 public:
  explicit SatelliteIndex(int expected) {
    int size = kMinSlots;
    while (size < 2 * expected && size < kMaxSlots)
      size *= 2;
    mask_ = static_cast<std::uint32_t>(size - 1);
    std::memset(slots_, 0xFF, sizeof(slots_[0]) * static_cast<std::size_t>(size));
  }

  // The satellite's index in `set`, added when new. There are never more
  // satellites than channels, so the set has room.
  int Find(ObservationSet& set, SatelliteSystem system, int prn) {
    const std::uint32_t key =
        (static_cast<std::uint32_t>(system) << 24) ^ static_cast<std::uint32_t>(prn);
    std::uint32_t slot = ((key * 2654435761u) >> 7) & mask_;
    for (;; slot = (slot + 1) & mask_) {
      const int index = slots_[slot];
      if (index < 0) break;
      const ObservedSatellite& s = set.satellites[index];
      if (s.system == system && s.prn == prn) return index;
    }
    const int index = set.satelliteCount++;
    set.satellites[index] = {system, prn, 0};
    slots_[slot] = static_cast<std::int16_t>(index);
    return index;
  }

 private:
  static constexpr int kMinSlots = 64;
  // Twice the capacity: the table never fills.
  static constexpr int kMaxSlots = 2 * kMaxObservationChannels;
  std::int16_t slots_[kMaxSlots];
  std::uint32_t mask_ = 0;
};

// Numbers as FieldCursor reads them (whose readers take the plain decimals
// of an observation log on a short path), a hexadecimal status word read
// directly, and fields skipped eight bytes at a time: RANGEA is most of a
// capture's bytes.
class ChannelCursor {
 public:
  // `end` bounds the look-ahead of the field skips; reads never pass it.
  ChannelCursor(const char* at, const char* end) : at_(at), end_(end) {}
  bool ok() const { return ok_; }

  ChannelCursor& Comma() {
    if (ok_ && *at_ == ',') {
      ++at_;
    } else {
      ok_ = false;
    }
    return *this;
  }
  ChannelCursor& SkipField() {
    if (!ok_) return *this;
    const char* start = at_;
    // Eight bytes at a time while they lie inside the sentence: a byte is
    // a comma or the NUL where (word ^ pattern) has a zero byte.
    constexpr std::uint64_t kOnes = 0x0101010101010101ull;
    constexpr std::uint64_t kHighs = 0x8080808080808080ull;
    while (at_ + 8 <= end_) {
      std::uint64_t word;
      std::memcpy(&word, at_, 8);
      const std::uint64_t commas = word ^ (kOnes * ',');
      const std::uint64_t stops =
          ((commas - kOnes) & ~commas & kHighs) | ((word - kOnes) & ~word & kHighs);
      if (stops != 0) {
        at_ += __builtin_ctzll(stops) / 8;
        ok_ = at_ != start;
        return *this;
      }
      at_ += 8;
    }
    while (*at_ != '\0' && *at_ != ',')
      ++at_;
    ok_ = at_ != start;
    return *this;
  }
  ChannelCursor& Decimal(int& out) {
    if (!ok_) return *this;
    return General([&] {
      FieldCursor c(at_);
      c.Decimal(out);
      return c;
    });
  }
  ChannelCursor& Hex(std::uint32_t& out) {
    if (!ok_) return *this;
    const char* p = at_;
    std::uint32_t value = 0;
    int digits = 0;
    for (;; ++p, ++digits) {
      const int d = HexDigit(*p);
      if (d < 0 || digits > kMaxHexDigits) break;
      value = value << 4 | static_cast<std::uint32_t>(d);
    }
    // "0x" and over-long words go the general way.
    if (digits == 0 || digits > kMaxHexDigits || (*p == 'x' || *p == 'X')) {
      return General([&] {
        FieldCursor c(at_);
        int word = 0;
        c.Hex(word);
        out = static_cast<std::uint32_t>(word);
        return c;
      });
    }
    out = value;
    at_ = p;
    return *this;
  }
  // "%lf", through the extraction's one exact reader.
  ChannelCursor& Double(double& out) {
    if (!ok_) return *this;
    const char* end = ReadDouble(at_, &out);
    ok_ = end != at_;
    at_ = end;
    return *this;
  }

 private:
  static constexpr int kMaxHexDigits = 8;

  static int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  }
  template <typename Read>
  ChannelCursor& General(Read read) {
    const FieldCursor c = read();
    ok_ = c.ok;
    at_ = c.at;
    return *this;
  }

  const char* at_;
  const char* end_;
  bool ok_ = true;
};

// One channel, its leading comma included; false when it isn't whole.
bool ReadChannel(ObservationLayout layout, ObservationDetail detail, ChannelCursor& c,
                 ObservationChannel& ch) {
  if (layout == ObservationLayout::kRange && detail == ObservationDetail::kTallies) {
    ch.pseudorange = ch.pseudorangeSigma = ch.adr = ch.adrSigma = ch.doppler = ch.lockTime = 0.0;
    c.Comma().Decimal(ch.prn).Comma().Decimal(ch.frequency);
    c.Comma().SkipField().Comma().SkipField().Comma().SkipField().Comma().SkipField();
    c.Comma().SkipField().Comma().Double(ch.cn0).Comma().SkipField();
    c.Comma().Hex(ch.status);
  } else if (layout == ObservationLayout::kRange) {
    c.Comma().Decimal(ch.prn).Comma().Decimal(ch.frequency);
    c.Comma().Double(ch.pseudorange).Comma().Double(ch.pseudorangeSigma);
    c.Comma().Double(ch.adr).Comma().Double(ch.adrSigma);
    c.Comma().Double(ch.doppler).Comma().Double(ch.cn0).Comma().Double(ch.lockTime);
    c.Comma().Hex(ch.status);
  } else {
    c.Comma().Decimal(ch.frequency).Comma().Decimal(ch.prn);
    c.Comma().Double(ch.pseudorange).Comma().Double(ch.adr);
    c.Comma().Double(ch.pseudorangeSigma).Comma().Double(ch.adrSigma);
    c.Comma().Double(ch.doppler).Comma().Double(ch.cn0);
    c.Comma().SkipField().Comma().Double(ch.lockTime).Comma().Hex(ch.status);
    if (c.ok()) {
      ch.pseudorangeSigma *= kObsvmPseudorangeSigmaScale;
      ch.adrSigma *= kObsvmAdrSigmaScale;
      ch.cn0 *= kObsvmCn0Scale;
    }
  }
  if (!c.ok()) return false;
  const TrackingStatus word = DecodeTrackingStatus(ch.status);
  ch.system = word.system;
  ch.signalType = static_cast<std::uint8_t>(word.signalType);
  ch.codeLocked = word.codeLocked;
  ch.phaseLocked = word.phaseLocked;
  ch.parityKnown = word.parityKnown;
  return true;
}

void Tally(const ObservationChannel& ch, ObservationTallies& t) {
  ++t.channels;
  if (ch.cn0 > 0.0) {
    ++t.positiveCn0;
    t.cn0Sum += ch.cn0;
  }
  t.codeLocked += ch.codeLocked;
  t.phaseLocked += ch.phaseLocked;
  t.parityKnown += ch.parityKnown;
  ++t.channelsBySystem[static_cast<int>(ch.system)];
}

}  // namespace

bool DecodeObservations(ObservationLayout layout, const char* sentence, std::size_t length,
                        ObservationSet* set, ObservationDetail detail) {
  set->declared = 0;
  set->complete = false;
  set->channelCount = 0;
  set->satelliteCount = 0;
  set->tallies = ObservationTallies{};
  if (sentence == nullptr) return false;
  const void* semicolon = std::memchr(sentence, ';', strnlen(sentence, length));
  if (semicolon == nullptr) return false;
  ChannelCursor cursor(static_cast<const char*>(semicolon) + 1,
                       sentence + strnlen(sentence, length));
  if (!cursor.Decimal(set->declared).ok()) return false;

  const int wanted = set->declared < 0 ? 0 : set->declared;
  const int limit = wanted < kMaxObservationChannels ? wanted : kMaxObservationChannels;
  SatelliteIndex index(limit);
  ObservationTallies& t = set->tallies;
  while (set->channelCount < limit) {
    ObservationChannel& ch = set->channels[set->channelCount];
    if (!ReadChannel(layout, detail, cursor, ch)) break;
    const int satellite = index.Find(*set, ch.system, ch.prn);
    ch.satellite = static_cast<std::uint16_t>(satellite);
    ++set->satellites[satellite].signals;
    Tally(ch, t);
    ++set->channelCount;
  }
  set->complete = set->channelCount == wanted;

  t.satellites = set->satelliteCount;
  for (int i = 0; i < set->satelliteCount; ++i) {
    const ObservedSatellite& s = set->satellites[i];
    ++t.satellitesBySystem[static_cast<int>(s.system)];
    if (s.signals > 1) {
      ++t.multiSignalSatellites;
      t.multiSignalChannels += s.signals;
    }
  }
  return true;
}

std::array<int, kObservationCountColumns> ObservationCounts(const ObservationTallies& t) {
  const auto& s = t.satellitesBySystem;
  return {t.channels,   t.positiveCn0, t.satellites, t.multiSignalSatellites,
          s[0],         s[1],          s[2],         s[3],
          s[4],         s[5],          s[6],         s[7],
          t.codeLocked, t.phaseLocked, t.parityKnown};
}

}  // namespace tarnlog
