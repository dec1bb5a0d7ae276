// Draws the icon files of the KML tracks: for every colour word and every
// status code an image "<word><status>.png" (leading zero for 1 to 8), a
// filled circle of the colour with a dark rim and the status digit in the
// middle. The page copies the folder beside each log as KestrixKML.
//
//   kmlicons <folder>
//
// The PNGs are 8-bit palette images whose image data sits in one stored
// (uncompressed) deflate block, so the tool needs nothing but the standard
// library and its output is the same on every machine.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "pages/nmea/kml_colours.h"

namespace {

constexpr int kSize = 24;
static_assert(kSize < 256, "the header writes width and height as one byte each");

// Palette entries.
constexpr std::uint8_t kClear = 0;
constexpr std::uint8_t kFill = 1;
constexpr std::uint8_t kRim = 2;
constexpr std::uint8_t kDigit = 3;

struct Rgb {
  std::uint8_t r, g, b;
};

// 3 x 5 digits, one row per byte, bit 2 the left column.
constexpr std::array<std::array<std::uint8_t, 5>, 10> kDigits = {{
    {7, 5, 5, 5, 7},
    {2, 6, 2, 2, 7},
    {7, 1, 7, 4, 7},
    {7, 1, 7, 1, 7},
    {5, 5, 7, 1, 1},
    {7, 4, 7, 1, 7},
    {7, 4, 7, 5, 7},
    {7, 1, 2, 2, 2},
    {7, 5, 7, 5, 7},
    {7, 5, 7, 1, 7},
}};

std::uint32_t Crc32(const std::uint8_t* data, std::size_t length, std::uint32_t crc = 0) {
  static const std::array<std::uint32_t, 256> table = [] {
    std::array<std::uint32_t, 256> t{};
    for (std::uint32_t n = 0; n < 256; ++n) {
      std::uint32_t c = n;
      for (int k = 0; k < 8; ++k)
        c = (c & 1) != 0 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[n] = c;
    }
    return t;
  }();
  crc = ~crc;
  for (std::size_t i = 0; i < length; ++i)
    crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

std::uint32_t Adler32(const std::vector<std::uint8_t>& data) {
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (std::uint8_t byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

void PutBe32(std::vector<std::uint8_t>& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void PutChunk(std::vector<std::uint8_t>& png, const char* type,
              const std::vector<std::uint8_t>& data) {
  PutBe32(png, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = png.size();
  png.insert(png.end(), type, type + 4);
  png.insert(png.end(), data.begin(), data.end());
  PutBe32(png, Crc32(png.data() + start, png.size() - start));
}

// A zlib stream of stored deflate blocks, at most 65535 bytes each.
std::vector<std::uint8_t> StoredZlib(const std::vector<std::uint8_t>& raw) {
  std::vector<std::uint8_t> z = {0x78, 0x01};
  std::size_t at = 0;
  do {
    const std::size_t length = std::min<std::size_t>(raw.size() - at, 65535);
    const bool last = at + length == raw.size();
    z.push_back(last ? 1 : 0);
    z.push_back(static_cast<std::uint8_t>(length & 0xFF));
    z.push_back(static_cast<std::uint8_t>(length >> 8));
    z.push_back(static_cast<std::uint8_t>(~length & 0xFF));
    z.push_back(static_cast<std::uint8_t>((~length >> 8) & 0xFF));
    z.insert(z.end(), raw.begin() + static_cast<std::ptrdiff_t>(at),
             raw.begin() + static_cast<std::ptrdiff_t>(at + length));
    at += length;
  } while (at < raw.size());
  PutBe32(z, Adler32(raw));
  return z;
}

// "aabbggrr" to its colour.
Rgb FromLineColour(std::string_view abgr) {
  const auto byte = [abgr](std::size_t at) {
    return static_cast<std::uint8_t>(std::stoul(std::string(abgr.substr(at, 2)), nullptr, 16));
  };
  return {byte(6), byte(4), byte(2)};
}

std::vector<std::uint8_t> DrawIcon(int status) {
  std::vector<std::uint8_t> pixels(kSize * kSize, kClear);
  const double centre = (kSize - 1) / 2.0;
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const double d = std::hypot(x - centre, y - centre);
      if (d <= 9.5) {
        pixels[y * kSize + x] = kFill;
      } else if (d <= 11.5) {
        pixels[y * kSize + x] = kRim;
      }
    }
  }
  // The digit at twice its size, centred.
  const auto& glyph = kDigits[static_cast<std::size_t>(status % 10)];
  const int left = kSize / 2 - 3;
  const int top = kSize / 2 - 5;
  for (int row = 0; row < 10; ++row) {
    for (int column = 0; column < 6; ++column) {
      if ((glyph[static_cast<std::size_t>(row / 2)] >> (2 - column / 2) & 1) != 0) {
        pixels[(top + row) * kSize + left + column] = kDigit;
      }
    }
  }
  return pixels;
}

std::vector<std::uint8_t> EncodePng(const std::vector<std::uint8_t>& pixels, Rgb fill) {
  // Light fills get a black digit, dark ones a white digit and a grey rim.
  const double luminance = 0.299 * fill.r + 0.587 * fill.g + 0.114 * fill.b;
  const bool light = luminance > 140.0;
  const Rgb rim = light ? Rgb{0x30, 0x30, 0x30} : Rgb{0x90, 0x90, 0x90};
  const Rgb digit = light ? Rgb{0x00, 0x00, 0x00} : Rgb{0xFF, 0xFF, 0xFF};

  std::vector<std::uint8_t> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  // Each chunk's bytes listed whole: appending brace lists to a fresh vector
  // draws false overflow warnings from g++ 12 at -O3.
  const std::uint8_t side = kSize;
  PutChunk(png, "IHDR", {0, 0, 0, side, 0, 0, 0, side, 8, 3, 0, 0, 0});  // 8-bit palette
  PutChunk(png, "PLTE",
           {0, 0, 0, fill.r, fill.g, fill.b, rim.r, rim.g, rim.b, digit.r, digit.g, digit.b});
  PutChunk(png, "tRNS", {0, 255, 255, 255});
  std::vector<std::uint8_t> raw;
  for (int y = 0; y < kSize; ++y) {
    raw.push_back(0);  // filter: none
    raw.insert(raw.end(), pixels.begin() + y * kSize, pixels.begin() + (y + 1) * kSize);
  }
  PutChunk(png, "IDAT", StoredZlib(raw));
  PutChunk(png, "IEND", {});
  return png;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: kmlicons <folder>\n");
    return 2;
  }
  const std::string folder = argv[1];
  int written = 0;
  for (const tarnlog::KmlColour& colour : tarnlog::kKmlColours) {
    const Rgb fill = FromLineColour(colour.lineColour);
    for (int status = tarnlog::kKmlIconStatusLow; status <= tarnlog::kKmlIconStatusHigh; ++status) {
      const std::string path =
          folder + "/" + tarnlog::KmlIconName(colour.iconWord, status) + ".png";
      const std::vector<std::uint8_t> png = EncodePng(DrawIcon(status), fill);
      std::ofstream out(path, std::ios::binary | std::ios::trunc);
      out.write(reinterpret_cast<const char*>(png.data()),
                static_cast<std::streamsize>(png.size()));
      if (!out) {
        std::fprintf(stderr, "kmlicons: can't write %s\n", path.c_str());
        return 1;
      }
      ++written;
    }
  }
  std::printf("%d icons in %s\n", written, folder.c_str());
  return 0;
}
