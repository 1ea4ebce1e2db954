// A small file of every format that the program reads, and of the ways in which they pack.
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "fuzz/png.h"
#include "fuzz/seeds.h"

namespace dax::fuzz {
namespace {

using namespace std::string_view_literals;

class Bytes {
 public:
  Bytes& text(std::string_view text) {
    bytes_ += text;
    return *this;
  }
  // Numbers of `width` bytes.
  Bytes& big(int width, std::initializer_list<uint32_t> numbers) {
    for (const uint32_t number : numbers) {
      for (int i = width; i-- > 0;) bytes_ += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return *this;
  }
  Bytes& little(int width, std::initializer_list<uint32_t> numbers) {
    for (const uint32_t number : numbers) {
      for (int i = 0; i < width; ++i) bytes_ += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return *this;
  }
  Seed as(const char* name) const { return {name, bytes_}; }
  std::string& bytes() { return bytes_; }
  std::string_view view() const { return bytes_; }

 private:
  std::string bytes_;
};

void pngChunk(Bytes& png, std::string_view type, std::string_view data) {
  png.big(4, {static_cast<uint32_t>(data.size())}).text(type).text(data).big(4, {0});
}

// Of rows that start with their filter, in one stored block of deflate.
Bytes png(uint32_t width, uint32_t height, uint32_t bits, uint32_t colour, std::string_view rows) {
  uint32_t a = 1, b = 0;  // Adler-32
  for (const char byte : rows) {
    a = (a + static_cast<uint8_t>(byte)) % 65521;
    b = (b + a) % 65521;
  }
  const auto count = static_cast<uint32_t>(rows.size());
  const Bytes packed = Bytes().big(1, {0x78, 1, 1}).little(2, {count, ~count}).text(rows).big(2, {b, a});
  Bytes file;
  file.text("\x89PNG\r\n\x1a\n");
  pngChunk(file, "IHDR", Bytes().big(4, {width, height}).big(1, {bits, colour, 0, 0, 0}).view());
  if (colour == 3) {
    pngChunk(file, "PLTE", "\0\0\0\xff\x80\x10"sv);
    pngChunk(file, "tRNS", "\x80"sv);
  }
  pngChunk(file, "IDAT", packed.view());
  pngChunk(file, "IEND", {});
  mendPng(reinterpret_cast<uint8_t*>(file.bytes().data()), file.bytes().size());
  return file;
}

// Grey, in one strip; the directory comes behind the header of 8 bytes.
Bytes tiff(bool isBig, uint32_t width, uint32_t height, uint32_t bits, uint32_t compression, std::string_view strip) {
  const uint32_t entries[][2] = {{256, width},       {257, height}, {258, bits},
                                 {259, compression}, {262, 1},      {273, 122},
                                 {277, 1},           {278, height}, {279, static_cast<uint32_t>(strip.size())}};
  Bytes file;
  const auto put = [&](int size, uint32_t number) { isBig ? file.big(size, {number}) : file.little(size, {number}); };
  file.text(isBig ? "MM" : "II");
  put(2, 42), put(4, 8), put(2, 9);
  for (const auto& [tag, value] : entries) put(2, tag), put(2, 4), put(4, 1), put(4, value);
  put(4, 0);
  return file.text(strip);
}

Bytes bmp(uint32_t width, uint32_t height, uint32_t bits, uint32_t compression, std::string_view pixels) {
  const uint32_t colours = bits == 8 ? 2 : 0, offset = 54 + 4 * colours;
  Bytes file;
  file.text("BM").little(4, {offset + static_cast<uint32_t>(pixels.size()), 0, offset, 40, width, height});
  file.little(2, {1, bits}).little(4, {compression, static_cast<uint32_t>(pixels.size()), 0, 0, colours, 0});
  if (colours) file.little(4, {0x000000, 0x3080F0});
  return file.text(pixels);
}

// 8 x 8, grey: one block whose steady part comes in one of two codes, and whose others are none.
Bytes jpeg() {
  Bytes file;
  file.big(2, {0xFFD8, 0xFFDB, 67}).big(1, {0});
  for (uint32_t i = 1; i <= 64; ++i) file.big(1, {i});
  file.big(2, {0xFFC0, 11}).big(1, {8, 0, 8, 0, 8, 1, 1, 0x11, 0});
  file.big(2, {0xFFC4, 21}).big(1, {0x00, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3});
  file.big(2, {0xFFC4, 20}).big(1, {0x10, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  return file.big(2, {0xFFDA, 8}).big(1, {1, 1, 0, 0, 63, 0, 0xAB}).big(2, {0xFFD9});
}

}  // namespace

std::vector<Seed> seeds() {
  return {
      Bytes().text("P2\n# of text\n3 2\n9\n0 1 2\n3 4 9\n").as("text.pgm"),
      Bytes().text("P3 1 2 255 1 2 3\n250 251 252\n").as("text.ppm"),
      Bytes().text("P5 3 2 65535\n\0\1\2\3\4\5\6\7\xff\xff\xfe\0"sv).as("16-bits.pgm"),
      Bytes().text("P6\n2 1\n255\n\1\2\3\xf0\xf1\xf2").as("8-bits.ppm"),

      // A row as it is, and one of differences to the row above.
      png(3, 2, 8, 0, "\0\1\x80\xff\2\5\5\5"sv).as("grey.png"),
      png(2, 1, 16, 2, "\1\1\2\3\4\5\6\xff\xfe\0\1\x80\0"sv).as("16-bits.png"),
      png(9, 2, 1, 3, "\0\xaa\x80\0\x55\0"sv).as("palette.png"),

      tiff(false, 3, 2, 16, 1, "\0\1\2\3\4\5\6\7\xff\xff\xfe\0"sv).as("16-bits.tif"),
      tiff(true, 4, 2, 8, 32773, "\xfd\x70\3\1\2\3\4"sv).as("packed.tif"),  // a run, and 4 bytes
      tiff(false, 4, 1, 8, 5, "\x80\0\x40\x40\x30\x24\x04"sv).as("codes.tif"),

      bmp(2, 2, 24, 0, "\1\2\3\4\5\6\0\0\xf1\xf2\xf3\xf4\xf5\xf6\0\0"sv).as("plain.bmp"),
      bmp(4, 2, 8, 1, "\3\1\1\0\0\0\0\4\0\1\1\0\0\1"sv).as("runs.bmp"),
      jpeg().as("grey.jpg"),
  };
}

}  // namespace dax::fuzz
