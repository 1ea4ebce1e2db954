// Makers of small files of the formats that have codecs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/file_bytes.h"
#include "fuzz/png.h"
#include "fuzz/seeds.h"

namespace dax::fuzz {

using namespace std::string_view_literals;

inline Seed as(const Bytes& bytes, const char* name) {
  return {name, std::string(bytes.view())};
}

inline void pngChunk(Bytes& png, std::string_view type, std::string_view data) {
  png.big(4, {static_cast<uint32_t>(data.size())}).text(type).text(data).big(4, {0});
}

// Of rows that start with their filter, in one stored block of deflate.
inline Bytes png(uint32_t width, uint32_t height, uint32_t bits, uint32_t colour, std::string_view rows,
                 uint32_t interlace = 0, std::string_view type = {}, std::string_view chunk = {}) {
  uint32_t a = 1, b = 0;  // Adler-32
  for (const char byte : rows) {
    a = (a + static_cast<uint8_t>(byte)) % 65521;
    b = (b + a) % 65521;
  }
  const auto count = static_cast<uint32_t>(rows.size());
  const Bytes packed = Bytes().big(1, {0x78, 1, 1}).little(2, {count, ~count}).text(rows).big(2, {b, a});
  Bytes file;
  file.text("\x89PNG\r\n\x1a\n");
  pngChunk(file, "IHDR", Bytes().big(4, {width, height}).big(1, {bits, colour, 0, 0, interlace}).view());
  if (colour == 3) {
    pngChunk(file, "PLTE", "\0\0\0\xff\x80\x10"sv);
    pngChunk(file, "tRNS", "\x80"sv);
  }
  if (!type.empty()) pngChunk(file, type, chunk);
  pngChunk(file, "IDAT", packed.view());
  pngChunk(file, "IEND", {});
  mendPng(reinterpret_cast<uint8_t*>(file.bytes().data()), file.bytes().size());
  return file;
}

// Grey, in one strip; the directory comes behind the header of 8 bytes.
// Tags behind these are `more`, in ascending order; those of the same number are changed by it.
inline Bytes tiff(bool isBig, uint32_t width, uint32_t height, uint32_t bits, uint32_t compression,
                  std::string_view strip, const std::vector<std::pair<uint32_t, uint32_t>>& more = {},
                  uint32_t next = 0) {
  std::vector<std::pair<uint32_t, uint32_t>> entries = {
      {256, width},       {257, height}, {258, bits},
      {259, compression}, {262, 1},      {273, 0},
      {277, 1},           {278, height}, {279, static_cast<uint32_t>(strip.size())}};
  for (const auto& [tag, value] : more) {
    const auto same = [tag = tag](const auto& entry) { return entry.first == tag; };
    const auto found = std::find_if(entries.begin(), entries.end(), same);
    if (found != entries.end()) {
      found->second = value;
    } else {
      entries.emplace_back(tag, value);
    }
  }
  const auto start = static_cast<uint32_t>(14 + 12 * entries.size());
  for (auto& [tag, value] : entries) value = tag == 273 && value == 0 ? start : value;
  Bytes file;
  const auto put = [&](int size, uint32_t number) { isBig ? file.big(size, {number}) : file.little(size, {number}); };
  file.text(isBig ? "MM" : "II");
  put(2, 42), put(4, 8), put(2, static_cast<uint32_t>(entries.size()));
  for (const auto& [tag, value] : entries) put(2, tag), put(2, 4), put(4, 1), put(4, value);
  put(4, next);
  return file.text(strip);
}

inline Bytes plainBmp(uint32_t width, uint32_t height, uint32_t bits, uint32_t compression, std::string_view pixels) {
  const uint32_t colours = bits == 8 ? 2 : 0, offset = 54 + 4 * colours;
  Bytes file;
  file.text("BM").little(4, {offset + static_cast<uint32_t>(pixels.size()), 0, offset, 40, width, height});
  file.little(2, {1, bits}).little(4, {compression, static_cast<uint32_t>(pixels.size()), 0, 0, colours, 0});
  if (colours) file.little(4, {0x000000, 0x3080F0});
  return file.text(pixels);
}

// 8 x 8, grey: one block whose steady part comes in one of two codes, and whose others are none.
inline Bytes jpeg(std::string_view segments = {}) {
  Bytes file;
  file.big(2, {0xFFD8}).text(segments).big(2, {0xFFDB, 67}).big(1, {0});
  for (uint32_t i = 1; i <= 64; ++i) file.big(1, {i});
  file.big(2, {0xFFC0, 11}).big(1, {8, 0, 8, 0, 8, 1, 1, 0x11, 0});
  file.big(2, {0xFFC4, 21}).big(1, {0x00, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3});
  file.big(2, {0xFFC4, 20}).big(1, {0x10, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  return file.big(2, {0xFFDA, 8}).big(1, {1, 1, 0, 0, 63, 0, 0xAB}).big(2, {0xFFD9});
}

}  // namespace dax::fuzz
