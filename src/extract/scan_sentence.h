// Cutting a receiver's mixed byte stream into sentences: ASCII logs that
// begin with '#' or '%', NMEA sentences that begin with '$', and binary
// frames that begin with the sync bytes 0xAA 0x44 0x12 and the header length
// 0x1C.
#pragma once

#include <cstddef>

namespace tarnlog {

enum SentenceKind : int {
  kNoSentence = 0,    // nothing complete, or a bad binary frame
  kNmeaSentence = 1,  // first character '$'
  kAsciiLog = 2,      // first character '#' or '%'
  kBinaryFrame = 3,   // a binary frame that passed its CRC
};

// Results of ScanSentence besides a completed kind.
inline constexpr int kScanBadArguments = -1;
inline constexpr int kScanSkippedOrCut = -2;

// Bytes without a line end are cut into a sentence once the scan passes this
// many bytes from the start of the open sentence, or from the start of the
// buffer while no sentence is open.
inline constexpr std::size_t kForceCutLength = 23552;

// Scans from `buffer`, which holds `*remaining` unread bytes.
//  - returns -1 when `buffer` or `lineOut` is null;
//  - returns -2 when it only skipped a line end, or when a new '#', '$' or
//    '%' cut the open sentence short (unless the open text holds
//    "#PASSCOM"): `lineOut` then holds the text before the cut;
//  - returns the kind (1, 2, 3, or 0 for a force-cut run of bytes) when it
//    completed a sentence, with `*lengthOut` its length, line end included;
//  - returns 0 when the bytes ran out first: nothing is updated, the caller
//    keeps the tail for the next block.
// A completed sentence of kind 0 (a force-cut run, or a sentence that held a
// binary frame with a bad CRC) also returns 0, but with the cursor moved:
// callers tell the two apart by the cursor, drop the sentence and scan on.
// On every outcome but running out and -1, `*cursorOut` points behind what
// was taken and `*remaining` is reduced accordingly. `*kindOut` must be 0 on
// entry. With `endOfCapture` no more bytes will follow the buffer, so a
// binary frame cut short by its end is treated as a frame with a bad CRC and
// the scan goes on behind its first sync byte.
// `lineOut` receives a copy of the sentence and a terminating NUL; it must
// hold `lineCapacity` bytes (a sentence longer than that is cut to fit, and
// `*lengthOut` is then the length of the copy).
int ScanSentence(const char* buffer, std::size_t* remaining, const char** cursorOut, char* lineOut,
                 std::size_t lineCapacity, std::size_t* lengthOut, int* kindOut,
                 bool endOfCapture = false);

// The same scan without the copy, for readers that look at the sentence where
// it lies: the same results and the same updates of `*remaining`,
// `*cursorOut` and `*kindOut`, and where ScanSentence would copy, the
// sentence is `buffer[*startOut, *startOut + *lengthOut)`, whole (line end
// included; a skipped line end gives a length of 0). Running out updates
// nothing. Returns -1 when any pointer is null.
int FindSentence(const char* buffer, std::size_t* remaining, const char** cursorOut,
                 std::size_t* startOut, std::size_t* lengthOut, int* kindOut,
                 bool endOfCapture = false);

}  // namespace tarnlog
