// Pixels of 10 and 12 bits, eight at a time: a table look-up gives each the two bytes that hold its bits.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/camera/packed_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Format>
struct PackedTables {
  uint8_t bytes[16] = {};  // of eight pixels, from which bytes of the stream they come, the lower one first
  int16_t shifts[8] = {};  // to the left, so negative

  constexpr PackedTables() {
    for (int i = 0; i < 8; ++i) set(i, Format{});
  }

 private:
  template <int32_t kBits>
  constexpr void set(int i, BitStream<kBits>) {
    bytes[2 * i] = static_cast<uint8_t>(i * kBits / 8), bytes[2 * i + 1] = static_cast<uint8_t>(i * kBits / 8 + 1);
    shifts[i] = static_cast<int16_t>(-(i * kBits % 8));
  }
  template <int32_t kBits>
  constexpr void set(int i, GigEPairs<kBits>) {
    bytes[2 * i] = static_cast<uint8_t>(i / 2 * 3 + 1), bytes[2 * i + 1] = static_cast<uint8_t>(i / 2 * 3 + i % 2 * 2);
    shifts[i] = static_cast<int16_t>(-(i % 2 * 4));
  }
};

template <int32_t kBits>
uint16x8_t unpacked(BitStream<kBits> format, uint16x8_t bytes, int16x8_t shifts) {
  return vandq_u16(vshlq_u16(bytes, shifts), vdupq_n_u16(format.kMax));
}

template <int32_t kBits>
uint16x8_t unpacked(GigEPairs<kBits> format, uint16x8_t bytes, int16x8_t shifts) {
  const uint16x8_t low = vandq_u16(vshlq_u16(bytes, shifts), vdupq_n_u16(format.kLowMax));
  return vorrq_u16(vshlq_n_u16(vshrq_n_u16(bytes, 8), kBits - 8), low);
}

template <class Format>
void unpackRow(const uint8_t* stream, int64_t first, uint16_t* dst, int32_t count) {
  static constexpr PackedTables<Format> kTables;
  const uint8x16_t bytes = vld1q_u8(kTables.bytes);
  const int16x8_t shifts = vld1q_s16(kTables.shifts);
  // Blocks begin where a group does, and read 16 bytes, of which some belong to the pixels behind them.
  constexpr int64_t kRead = (16 * 8 + Format::kBitsInStream - 1) / Format::kBitsInStream;
  const auto before = static_cast<int32_t>(std::min<int64_t>(count, -first & (Format::kGroup - 1)));
  portable::unpackRow<Format>(stream, first, dst, before);
  ptrdiff_t i = before;
  for (; i + kRead <= count; i += 8) {
    const uint8_t* const at = stream + (first + i) * Format::kBitsInStream / 8;
    vst1q_u16(dst + i, unpacked(Format{}, vreinterpretq_u16_u8(vqtbl1q_u8(vld1q_u8(at), bytes)), shifts));
  }
  portable::unpackRow<Format>(stream, first + i, dst + i, static_cast<int32_t>(count - i));
}

}  // namespace dax::neon
#endif
