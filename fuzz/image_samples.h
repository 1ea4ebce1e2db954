// Small image files of every way in which BMP, PNM and PFM pack, and of what readers must refuse; with what becomes of them,
// which the tests of the readers check and from which fuzzers start.
#pragma once

#include <string>
#include <vector>

#include "daxi/image_file.h"
#include "fuzz/file_bytes.h"

namespace dax::fuzz {

struct ImageSample {
  const char* name;
  std::string file;
  DaxStatus status;         // of reading
  int32_t channels = 0;     // and the record, where it is read
  std::string pixels = {};  // rows without gaps
};

// An information head and what follows it. The file's length is not read.
inline std::string bmp(int32_t width, int32_t height, uint32_t bits, uint32_t compression, uint32_t colours,
                       std::string_view table, std::string_view pixels, uint32_t offset = 0) {
  Bytes file;
  if (offset == 0) offset = 54 + static_cast<uint32_t>(table.size());
  file.text("BM").little(4, {0, 0, offset, 40, static_cast<uint32_t>(width), static_cast<uint32_t>(height)});
  file.little(2, {1, bits}).little(4, {compression, 0, 0, 0, colours, 0});
  return file.text(table).text(pixels);
}

inline std::vector<ImageSample> bmpSamples() {
  using namespace std::string_view_literals;
  const auto masks = [](std::initializer_list<uint32_t> bits) { return std::string(Bytes().little(4, bits)); };
  constexpr auto kTwo = "\0\0\0\0\x30\x80\xF0\0"sv;  // black and a colour
  const std::string greys = std::string("\0\0\0\0\xFF\xFF\xFF\0"sv);
  const std::string core = Bytes().text("BM").little(4, {0, 0, 26, 12}).little(2, {1, 1, 1, 24}).text("\1\2\3\0"sv);
  std::string tall = core;
  tall[21] = 1;  // 257 rows
  Bytes v4;
  v4.text("BM").little(4, {0, 0, 122, 108, 1, 1}).little(2, {1, 32}).little(4, {3, 0, 0, 0, 0, 0});
  v4.little(4, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}).zeros(52).text("\1\2\3\4");
  return {
      {"24 bits", bmp(2, 2, 24, 0, 0, "", "\1\2\3\4\5\6\0\0\xf1\xf2\xf3\xf4\xf5\xf6\0\0"sv), 0, 3,
       "\xf3\xf2\xf1\xf6\xf5\xf4\3\2\1\6\5\4"},
      {"top down", bmp(1, -2, 24, 0, 0, "", "\1\2\3\0\4\5\6\0"sv), 0, 3, "\3\2\1\6\5\4"},
      {"the first version", core, 0, 3, "\3\2\1"},
      {"1 bit, greys", bmp(9, 1, 1, 0, 2, greys, "\xAA\x80\0\0"sv), 0, 1,
       std::string("\xFF\0\xFF\0\xFF\0\xFF\0\xFF"sv)},
      {"4 bits, a short table", bmp(2, 1, 4, 0, 2, kTwo, "\x1F\0\0\0"sv), 0, 3, std::string("\xF0\x80\x30\0\0\0"sv)},
      {"8 bits, fewer colours than said", bmp(2, 1, 8, 0, 200, kTwo, "\1\xC7\0\0"sv), 0, 3,
       std::string("\xF0\x80\x30\0\0\0"sv)},
      {"16 bits, 5 each", bmp(2, 1, 16, 0, 0, "", "\xFF\x7F\x00\x7C"sv), 0, 3, std::string("\xFF\xFF\xFF\xFF\0\0"sv)},
      {"16 bits, 5 6 5", bmp(1, 1, 16, 3, 0, masks({0xF800, 0x7E0, 0x1F}), "\x10\x08\0\0"sv), 0, 3,
       std::string("\x08\0\x84"sv)},
      {"32 bits, no alpha", bmp(1, 1, 32, 0, 0, "", "\1\2\3\4"), 0, 3, "\3\2\1"},
      {"32 bits, alpha", v4, 0, 4, "\1\2\3\4"},
      {"runs of 8 bits", bmp(4, 2, 8, 1, 2, kTwo, "\3\1\1\0\0\0\0\2\2\0\1\1\0\1"sv), 0, 3,
       std::string("\0\0\0\0\0\0\xF0\x80\x30\0\0\0\xF0\x80\x30\xF0\x80\x30\xF0\x80\x30\0\0\0"sv)},
      {"runs and single colours of 4 bits", bmp(5, 1, 4, 2, 2, greys, "\2\x10\0\3\x01\x10\0\1"sv), 0, 1,
       std::string("\xFF\0\0\xFF\xFF"sv)},

      {"height INT_MIN", bmp(4, INT32_MIN, 24, 0, 0, "", ""), DAX_STS_IMAGE_SIZE},
      {"negative width", bmp(-4, 4, 24, 0, 0, "", ""), DAX_STS_IMAGE_SIZE},
      {"sides whose product wraps", bmp(65536, 65536, 8, 0, 2, kTwo, ""), DAX_STS_IMAGE_SIZE},
      {"a table longer than the file", bmp(1, 1, 8, 0, 256, kTwo, "", 54 + 1024), DAX_STS_FILE_READ},
      {"more colours than 8 bits tell", bmp(1, 1, 8, 0, 257, kTwo, "\0\0\0\0"sv), DAX_STS_DATA_RANGE},
      {"pixels within the head", bmp(1, 1, 24, 0, 0, "", "\1\2\3\0"sv, 20), DAX_STS_DATA_RANGE},
      {"a run past the row", bmp(4, 2, 8, 1, 2, kTwo, "\5\1\0\1"sv), DAX_STS_DATA_RANGE},
      {"rows past the image", bmp(4, 1, 8, 1, 2, kTwo, "\0\0\1\1\0\1"sv), DAX_STS_DATA_RANGE},
      {"a move past the image", bmp(4, 2, 8, 1, 2, kTwo, "\0\2\5\0\0\1"sv), DAX_STS_DATA_RANGE},
      {"runs without an end", bmp(4, 1, 8, 1, 2, kTwo, "\4\1"sv), DAX_STS_FILE_READ},
      {"runs that begin at the top", bmp(4, -1, 8, 1, 2, kTwo, "\4\1\0\1"sv), DAX_STS_DATA_RANGE},
      {"a mask of 0", bmp(1, 1, 16, 3, 0, masks({0xF800, 0, 0x1F}), "\0\0\0\0"sv), DAX_STS_DATA_RANGE},
      {"masks that overlap", bmp(1, 1, 16, 3, 0, masks({0xF800, 0xFE0, 0x1F}), "\0\0\0\0"sv), DAX_STS_DATA_RANGE},
      {"a mask with a hole", bmp(1, 1, 32, 3, 0, masks({0xF00F00, 0xF0, 0xF}), "\0\0\0\0"sv), DAX_STS_DATA_RANGE},
      {"12 bits", bmp(1, 1, 12, 0, 0, "", "\0\0\0\0"sv), DAX_STS_DATA_RANGE},
      {"a head of 41 bytes", Bytes().text("BM").little(4, {0, 0, 55, 41}).zeros(64), DAX_STS_DATA_RANGE},
      {"a JPEG within", bmp(1, 1, 24, 4, 0, "", "\0\0\0\0"sv), DAX_STS_UNSUPPORTED_METHOD},
      {"rows of the first version cut short", tall, DAX_STS_FILE_READ},
      {"pixels cut short", bmp(2, 2, 24, 0, 0, "", "\1\2\3\4\5\6\0\0\1"sv), DAX_STS_FILE_READ},
  };
}

inline std::vector<ImageSample> pnmSamples() {
  using namespace std::string_view_literals;
  return {
      {"text of greys", "P2\n# of text\n3 #three\n2\n9\n0 1 2\n3 4 9\n", 0, 1, std::string("\0\x1C\x39\x55\x71\xFF"sv)},
      {"text of colours", "P3 1 2 255 1 2 3\n250 251 252\n", 0, 3, "\1\2\3\xFA\xFB\xFC"},
      {"8 bits", std::string("P6\n2 1\n255\n\1\2\3\xf0\xf1\xf2"), 0, 3, "\1\2\3\xf0\xf1\xf2"},
      {"16 bits, the high byte first", std::string("P5 2 1 65535\n\0\1\xff\xfe"sv), 0, 1,
       std::string("\1\0\xfe\xff"sv)},
      {"12 bits stay", std::string("P5 1 1 4095\n\x0f\xff"sv), 0, 1, "\xff\x0f"},
      {"16 bits as text", "P2 1 1 300 299 ", 0, 1, "\x2B\x01"},

      {"largest value 0", "P5 1 1 0\n\1", DAX_STS_DATA_RANGE},
      {"largest value 65536", "P5 1 1 65536\n\1\1\1\1", DAX_STS_DATA_RANGE},
      {"a value above the largest", "P5 1 1 9\n\x0A", DAX_STS_DATA_RANGE},
      {"a text above the largest", "P2 1 1 9 10 ", DAX_STS_DATA_RANGE},
      {"digits without end", "P5 " + std::string(5000, '1'), DAX_STS_DATA_RANGE},
      {"zeros without end", "P5 " + std::string(5000, '0') + "1 1 255\n\1", DAX_STS_DATA_RANGE},
      {"a comment without end", "P5 #" + std::string(5000, 'c'), DAX_STS_FILE_READ},
      {"a negative side", "P5 -1 1 255\n\1", DAX_STS_DATA_RANGE},
      {"a zero byte in a number", std::string("P5 1\0 1 255\n\1"sv), DAX_STS_DATA_RANGE},
      {"no side", "P5 0 1 255\n\1", DAX_STS_IMAGE_SIZE},
      {"a number that the end may have cut", "P2 1 1 255 12", DAX_STS_FILE_READ},
      {"samples cut short", std::string("P5 2 2 255\n\1\2\3"), DAX_STS_FILE_READ},
      {"text cut short", "P2 2 2 255\n1 2 3 ", DAX_STS_FILE_READ},
      {"more pixels than the limit", "P5 1048576 1048576 255\n", DAX_STS_IMAGE_SIZE},
  };
}

inline std::vector<ImageSample> pfmSamples() {
  using namespace std::string_view_literals;
  const std::string two = Bytes().little(4, {0x3F800000, 0x40000000}), three = Bytes().little(4, {1, 2, 3});
  return {
      {"from the bottom up", "Pf\n1 2\n-1.0\n" + two, 0, 1, std::string(Bytes().little(4, {0x40000000, 0x3F800000}))},
      {"the high byte first", Bytes().text("PF 1 1 +2.5e-3\n").big(4, {1, 2, 3}), 0, 3, three},
      {"scale 0", "Pf 1 2 -0.0\n" + two, DAX_STS_DATA_RANGE},
      {"a scale of another locale", "Pf 1 2 -1,0\n" + two, DAX_STS_DATA_RANGE},
      {"no number", "Pf 1 2 nan\n" + two, DAX_STS_DATA_RANGE},
      {"an exponent without digits", "Pf 1 2 1e\n" + two, DAX_STS_DATA_RANGE},
      {"samples cut short", "Pf 1 2 -1\n" + two.substr(1), DAX_STS_FILE_READ},
  };
}

}  // namespace dax::fuzz
