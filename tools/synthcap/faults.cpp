#include "synthcap/faults.h"

#include "synthcap/sentence_frame.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr std::size_t kForceCutLength = 23552;
constexpr char kLowerHex[] = "0123456789abcdef";
constexpr char kUpperHex[] = "0123456789ABCDEF";

bool IsText(SentenceForm form) {
  return form != SentenceForm::kBinary;
}

// Where the checksum star of a text sentence is.
std::size_t StarOf(const std::string& out, std::size_t start) {
  const std::size_t star = out.rfind('*');
  return star == std::string::npos || star < start ? out.size() : star;
}

// Recomputes the checksum after the body changed.
void Reclose(std::string& out, std::size_t start, SentenceForm form) {
  out.resize(StarOf(out, start));
  if (form == SentenceForm::kNmea) {
    EndNmea(out, start);
  } else {
    EndAsciiLog(out, start);
  }
}

void BreakChecksum(std::string& out, std::size_t start, SentenceForm form, Rng& rng) {
  if (!IsText(form)) {
    out.back() = static_cast<char>(out.back() ^ static_cast<char>(rng.Between(1, 255)));
    return;
  }
  const bool nmea = form == SentenceForm::kNmea;
  const char* alphabet = nmea ? kUpperHex : kLowerHex;
  const std::size_t digit = StarOf(out, start) + 1 + rng.Below(nmea ? 2 : 8);
  const std::size_t old = std::string_view(alphabet).find(out[digit]);
  out[digit] = alphabet[(old + 1 + rng.Below(15)) % 16];
}

// Somewhere between the first byte after the sentence start and the star.
std::size_t CutPoint(const std::string& out, std::size_t start, Rng& rng) {
  const std::size_t star = StarOf(out, start);
  return start + 1 + rng.Below(static_cast<std::uint32_t>(star - start - 1));
}

void AppendGarbage(std::string& out, Rng& rng) {
  const int length = rng.Between(8, 300);
  const std::size_t first = out.size();
  for (int i = 0; i < length; ++i)
    out += static_cast<char>(rng.Below(256));
  // One to three stray frame starts, some with a header length and a
  // random message length behind them.
  const int syncs = rng.Between(1, 3);
  for (int i = 0; i < syncs; ++i) {
    const std::size_t at = first + rng.Below(static_cast<std::uint32_t>(length - 4));
    out[at] = '\xAA';
    out[at + 1] = '\x44';
    out[at + 2] = '\x12';
    if (rng.Chance(0.5)) out[at + 3] = '\x1C';
  }
}

// Pass-through data is printed with non-printable bytes and the backslash
// escaped; the count is of the bytes as received.
void WrapInPassCom(std::string& out, std::size_t start, const ReceiverEpoch& epoch) {
  const std::string inner = out.substr(start);
  out.resize(start);
  BeginLongLog(out, "PASSCOM1A", epoch);
  AppendInt(out, static_cast<std::int64_t>(inner.size()));
  out += ',';
  for (const char c : inner) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      out += "\\\\";
    } else if (byte >= 0x20 && byte < 0x7F) {
      out += c;
    } else {
      out += "\\x";
      AppendHex(out, byte, 2);
    }
  }
  EndAsciiLog(out, start);
}

void LengthenLastField(std::string& out, std::size_t start, SentenceForm form, Rng& rng) {
  const std::size_t star = StarOf(out, start);
  const std::size_t comma = out.rfind(',', star);
  const std::size_t at = comma == std::string::npos || comma < start ? star : comma + 1;
  out.insert(at, static_cast<std::size_t>(rng.Between(2000, 8000)), '0');
  Reclose(out, start, form);
}

// A RANGEA whose body never ends: observations repeat past the force-cut
// length, and the next sentence follows with no line end.
void AppendRunawayLine(std::string& out, const ReceiverEpoch& epoch, Rng& rng) {
  const std::size_t start = BeginLongLog(out, "RANGEA", epoch);
  const std::size_t length = kForceCutLength + 1 + rng.Below(6000);
  AppendInt(out, 40);
  while (out.size() - start < length) {
    out += ",12,0,20612359.352,0.035,-103626277.506003,0.006,-1595.594,50.3,4835.392,18109c04";
  }
}

}  // namespace

bool FaultApplies(FaultKind kind, SentenceForm form) {
  return IsText(form) || kind == FaultKind::kBadChecksum || kind == FaultKind::kGarbage ||
         kind == FaultKind::kOverlongLine;
}

void ApplyFault(FaultKind kind, std::string& out, std::size_t start, SentenceForm form,
                const ReceiverEpoch& epoch, Rng& rng) {
  switch (kind) {
    case FaultKind::kBadChecksum:
      BreakChecksum(out, start, form, rng);
      break;
    case FaultKind::kTruncatedLine:
      out.resize(CutPoint(out, start, rng));
      out += "\r\n";
      break;
    case FaultKind::kLfOnly:
      out.erase(out.size() - 2, 1);
      break;
    case FaultKind::kCutByNextSentence:
      out.resize(CutPoint(out, start, rng));
      break;
    case FaultKind::kGarbage:
      AppendGarbage(out, rng);
      break;
    case FaultKind::kPassCom:
      WrapInPassCom(out, start, epoch);
      break;
    case FaultKind::kOverlongField:
      LengthenLastField(out, start, form, rng);
      break;
    case FaultKind::kOverlongLine:
      AppendRunawayLine(out, epoch, rng);
      break;
    case FaultKind::kCount:
      break;
  }
}

FaultInjector::FaultInjector(std::uint64_t seed, double fraction)
    : rng_(seed), fraction_(fraction) {
  Refill();
}

void FaultInjector::Refill() {
  for (std::size_t i = 0; i < bag_.size(); ++i)
    bag_[i] = static_cast<FaultKind>(i);
  for (std::size_t i = bag_.size() - 1; i > 0; --i) {
    std::swap(bag_[i], bag_[rng_.Below(static_cast<std::uint32_t>(i + 1))]);
  }
  next_ = 0;
}

void FaultInjector::AfterSentence(std::string& out, std::size_t start, SentenceForm form,
                                  const ReceiverEpoch& epoch) {
  if (!rng_.Chance(fraction_)) return;
  const FaultKind kind = bag_[next_];
  // A kind that doesn't fit this sentence waits for the next damaged one.
  if (!FaultApplies(kind, form)) return;
  ApplyFault(kind, out, start, form, epoch, rng_);
  if (++next_ == bag_.size()) Refill();
}

}  // namespace tarnlog::synth
