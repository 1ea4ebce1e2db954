#include "frame/memory/crc32.h"

#include <array>
#include <bit>
#include <cstring>

namespace dax {
namespace {

static_assert(std::endian::native == std::endian::little);

using Table = std::array<std::array<uint32_t, 256>, 8>;

// [k][b]: what byte b does to the checksum when k zero bytes follow it.
constexpr Table kRemainder = [] {
  Table table = {};
  for (uint32_t b = 0; b < 256; ++b) {
    uint32_t rest = b;
    for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ (rest & 1 ? 0xEDB88320u : 0);
    table[0][b] = rest;
  }
  for (size_t k = 1; k < 8; ++k) {
    for (size_t b = 0; b < 256; ++b) {
      const uint32_t rest = table[k - 1][b];
      table[k][b] = rest >> 8 ^ table[0][rest & 0xFF];
    }
  }
  return table;
}();

}  // namespace

// Eight bytes at a time: Kounavis and Berry, A systematic approach to building high performance software-based CRC
// generators, ISCC 2005.
uint32_t crc32(const void* data, uint64_t bytes, uint32_t before) {
  const auto* byte = static_cast<const uint8_t*>(data);
  uint32_t rest = ~before;
  for (; bytes >= 8; bytes -= 8, byte += 8) {
    uint64_t word;
    std::memcpy(&word, byte, sizeof word);
    word ^= rest;
    rest = 0;
    for (size_t k = 0; k < 8; ++k) rest ^= kRemainder[7 - k][word >> (8 * k) & 0xFF];
  }
  for (; bytes > 0; --bytes, ++byte) rest = rest >> 8 ^ kRemainder[0][(rest ^ *byte) & 0xFF];
  return ~rest;
}

}  // namespace dax
