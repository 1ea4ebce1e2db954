// The checksums of PNG files, without which a decoder refuses every changed byte.
#pragma once

#include <cstddef>
#include <cstdint>

namespace dax::fuzz {

// CRC-32 as of ISO 3309, bit by bit.
inline uint32_t crc32(const uint8_t* bytes, size_t count) {
  uint32_t crc = 0xFFFFFFFF;
  for (size_t i = 0; i < count; ++i) {
    crc ^= bytes[i];
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  return ~crc;
}

inline uint32_t bigEndian32(const uint8_t* bytes) {
  return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

// Puts the checksums right of all chunks that lie whole in the bytes: length, type, data, checksum, after a signature of
// 8 bytes.
inline void mendPng(uint8_t* bytes, size_t count) {
  for (size_t at = 8; at + 12 <= count;) {
    const size_t length = bigEndian32(&bytes[at]);
    if (length > count - at - 12) return;
    const uint32_t crc = crc32(&bytes[at + 4], 4 + length);
    for (size_t i = 0; i < 4; ++i) bytes[at + 8 + length + i] = static_cast<uint8_t>(crc >> (24 - 8 * i));
    at += 12 + length;
  }
}

}  // namespace dax::fuzz
