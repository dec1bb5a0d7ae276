#include "synthcap/sentence_frame.h"

#include <bit>

#include "extract/checksums.h"
#include "synthcap/message_writers.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {

std::size_t BeginLongLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch,
                         std::string_view timeStatus) {
  const std::size_t start = out.size();
  out += '#';
  out += name;
  out += ",COM1,0,";
  AppendFixed(out, epoch.idle, 1);
  out += ',';
  out += timeStatus;
  out += ',';
  AppendInt(out, epoch.week);
  out += ',';
  AppendFixed(out, epoch.Seconds(), 3);
  out += ",02000000,b1f6,16248;";
  return start;
}

std::size_t BeginCompactLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch) {
  const std::size_t start = out.size();
  out += '#';
  out += name;
  out += ',';
  AppendInt(out, static_cast<int>(epoch.idle));
  out += ",GPS,FINE,";
  AppendInt(out, epoch.week);
  out += ',';
  AppendInt(out, epoch.millisecond);
  out += ",0,0,18,12;";
  return start;
}

std::size_t BeginBriefLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch) {
  const std::size_t start = out.size();
  out += '%';
  out += name;
  out += ',';
  AppendInt(out, epoch.week);
  out += ',';
  AppendInt(out, epoch.millisecond);
  out += ';';
  return start;
}

void EndAsciiLog(std::string& out, std::size_t start) {
  const std::uint32_t crc = Crc32Block(out.data() + start + 1, out.size() - start - 1);
  out += '*';
  AppendHex(out, crc, 8);
  out += "\r\n";
}

std::size_t BeginLog(const WriterContext& c) {
  switch (c.form) {
    case SentenceForm::kCompactLog:
      return BeginCompactLog(c.out, c.name, c.epoch);
    case SentenceForm::kBriefLog:
      return BeginBriefLog(c.out, c.name, c.epoch);
    default:
      return BeginLongLog(c.out, c.name, c.epoch);
  }
}

void EndLog(const WriterContext& c, std::size_t start) {
  EndAsciiLog(c.out, start);
}

std::size_t BeginNmea(std::string& out, std::string_view address) {
  const std::size_t start = out.size();
  out += '$';
  out += address;
  return start;
}

void EndNmea(std::string& out, std::size_t start) {
  const std::uint8_t sum = NmeaXor(out.size() - start - 1, out.data() + start + 1);
  out += '*';
  AppendUpperHex(out, sum, 2);
  out += "\r\n";
}

std::size_t BeginBinaryFrame(std::string& out, std::uint16_t messageId,
                             const ReceiverEpoch& epoch) {
  const std::size_t start = out.size();
  out += "\xAA\x44\x12";
  PutU8(out, kBinaryHeaderLength);
  PutU16(out, messageId);
  PutU8(out, 0);     // message type: binary, original message
  PutU8(out, 0x20);  // port: COM1
  PutU16(out, 0);    // message length, filled in by EndBinaryFrame
  PutU16(out, 0);    // sequence
  PutU8(out, static_cast<std::uint8_t>(epoch.idle * 2.0));
  PutU8(out, 180);  // time status: FINESTEERING
  PutU16(out, static_cast<std::uint16_t>(epoch.week));
  PutU32(out, epoch.millisecond);
  PutU32(out, 0x02000000);  // receiver status
  PutU16(out, 0xb1f6);
  PutU16(out, 16248);  // receiver software build
  return start;
}

void EndBinaryFrame(std::string& out, std::size_t start) {
  const std::size_t length = out.size() - start - kBinaryHeaderLength;
  out[start + 8] = static_cast<char>(length & 0xFF);
  out[start + 9] = static_cast<char>((length >> 8) & 0xFF);
  PutU32(out, Crc32Block(out.data() + start, out.size() - start));
}

void PutU8(std::string& out, std::uint8_t value) {
  out += static_cast<char>(value);
}

void PutU16(std::string& out, std::uint16_t value) {
  out += static_cast<char>(value & 0xFF);
  out += static_cast<char>(value >> 8);
}

void PutU32(std::string& out, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8)
    out += static_cast<char>((value >> shift) & 0xFF);
}

void PutF32(std::string& out, float value) {
  PutU32(out, std::bit_cast<std::uint32_t>(value));
}

void PutF64(std::string& out, double value) {
  const std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
  PutU32(out, static_cast<std::uint32_t>(bits));
  PutU32(out, static_cast<std::uint32_t>(bits >> 32));
}

}  // namespace tarnlog::synth
