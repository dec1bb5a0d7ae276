// One writer per message kind. Each appends exactly one complete sentence
// (or binary frame) for the epoch to `out`.
#pragma once

#include <string>

#include "synthcap/prng.h"
#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

struct WriterContext {
  const ReceiverEpoch& epoch;
  Rng& rng;  // measurement noise
  std::string& out;
};

using MessageWriter = void (*)(WriterContext&);

// Long-header logs.
void WriteBestPos(WriterContext& c);
void WriteRtkPos(WriterContext& c);
void WritePsrPos(WriterContext& c);
void WriteMatchedPos(WriterContext& c);
void WritePppPos(WriterContext& c);
void WriteBestVel(WriterContext& c);
void WriteRtkVel(WriterContext& c);
void WritePsrVel(WriterContext& c);
void WritePsrDop(WriterContext& c);
void WriteRtkDop(WriterContext& c);
void WriteBestXyz(WriterContext& c);
void WriteTime(WriterContext& c);
void WriteRange(WriterContext& c);

// NMEA.
void WriteGga(WriterContext& c);
void WriteRmc(WriterContext& c);
void WriteVtg(WriterContext& c);
void WriteGst(WriterContext& c);

// Combined logs with the compact header.
void WriteBestNav(WriterContext& c);
void WriteAdrNav(WriterContext& c);
void WriteSppNav(WriterContext& c);
void WritePppNav(WriterContext& c);

// Brief '%' logs.
void WriteCarAngle(WriterContext& c);
void WriteAngularVelocity(WriterContext& c);
void WriteFilteredAngle(WriterContext& c);

// Binary frames.
void WriteBestPosBinary(WriterContext& c);
void WriteRangeCompressedBinary(WriterContext& c);

}  // namespace tarnlog::synth
