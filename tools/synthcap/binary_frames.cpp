// Binary frames: BESTPOSB, and RANGECMPB with its packed observations.
#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"

namespace tarnlog::synth {
namespace {

constexpr std::uint16_t kBestPosId = 42;
constexpr std::uint16_t kRangeCompressedId = 140;

std::uint32_t SolutionStatusCode(std::string_view status) {
  return status == "SOL_COMPUTED" ? 0 : 1;  // 1: insufficient observations
}

std::uint32_t PositionTypeCode(std::string_view type) {
  if (type == "SINGLE") return 16;
  if (type == "PSRDIFF") return 17;
  if (type == "NARROW_FLOAT") return 34;
  if (type == "NARROW_INT") return 50;
  return 0;
}

}  // namespace

void WriteBestPosBinary(WriterContext& c) {
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, c.epoch, c.rng);
  std::string& out = c.out;
  const std::size_t start = BeginBinaryFrame(out, kBestPosId, c.epoch);
  PutU32(out, SolutionStatusCode(p.status));
  PutU32(out, PositionTypeCode(p.type));
  PutF64(out, p.latitude);
  PutF64(out, p.longitude);
  PutF64(out, p.height);
  PutF32(out, static_cast<float>(p.undulation));
  PutU32(out, 61);  // datum: WGS84
  for (double sigma : p.sigma)
    PutF32(out, static_cast<float>(sigma));
  const std::uint32_t station = p.stationId < 0 ? 0 : static_cast<std::uint32_t>(p.stationId);
  PutU32(out, station);
  PutF32(out, static_cast<float>(p.differentialAge));
  PutF32(out, static_cast<float>(p.solutionAge));
  PutU8(out, static_cast<std::uint8_t>(p.tracked));
  PutU8(out, static_cast<std::uint8_t>(p.used));
  PutU8(out, static_cast<std::uint8_t>(p.usedL1));
  PutU8(out, static_cast<std::uint8_t>(p.usedMulti));
  PutU8(out, 0);
  PutU8(out, static_cast<std::uint8_t>(p.extendedStatus));
  PutU8(out, static_cast<std::uint8_t>(p.galileoBeidouMask));
  PutU8(out, static_cast<std::uint8_t>(p.gpsGlonassMask));
  EndBinaryFrame(out, start);
}

// 24 bytes per L1 observation: tracking status, then Doppler, pseudorange,
// carrier phase, deviations, PRN, lock time and C/No packed into bit fields.
void WriteRangeCompressedBinary(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginBinaryFrame(out, kRangeCompressedId, e);
  PutU32(out, static_cast<std::uint32_t>(e.satellites.size()));
  for (const Satellite& s : e.satellites) {
    const std::uint32_t channel = static_cast<std::uint32_t>(s.channel) << 5;
    PutU32(out, 0x08109c04 | channel | (s.Glonass() ? 0x00010000u : 0u));
    const std::uint32_t doppler =
        static_cast<std::uint32_t>(static_cast<std::int32_t>(-s.rangeRate / 0.19 * 256.0)) &
        0x0FFFFFFF;
    const std::uint64_t range = static_cast<std::uint64_t>(s.range * 128.0) & 0xFFFFFFFFFull;
    PutU32(out, doppler | static_cast<std::uint32_t>((range & 0xF) << 28));
    PutU32(out, static_cast<std::uint32_t>(range >> 4));
    PutU32(out, static_cast<std::uint32_t>(static_cast<std::int32_t>(s.adrOffsetL1 * 256.0)));
    PutU8(out, static_cast<std::uint8_t>(0x5A));  // deviations
    PutU8(out, static_cast<std::uint8_t>(s.prn));
    const std::uint32_t lock = static_cast<std::uint32_t>(s.lockTime * 32.0) & 0x1FFFFF;
    const std::uint32_t cno = static_cast<std::uint32_t>(s.cnoL1 - 20.0) & 0x1F;
    PutU32(out, lock | (cno << 21));
    PutU16(out, 0);
  }
  EndBinaryFrame(out, start);
}

}  // namespace tarnlog::synth
