// Reversed runs, 16 bytes at a time. Pixels move as unsigned numbers of their size, so every bit survives.
#pragma once

#include <cstdint>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/border/copy_border_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The pixels of a 16-byte block in reverse order: first within the halves, then the halves change places.
template <size_t kPixelBytes>
uint8x16_t reverseBlock(uint8x16_t block) {
  if constexpr (kPixelBytes == 1) block = vrev64q_u8(block);
  if constexpr (kPixelBytes == 2) block = vreinterpretq_u8_u16(vrev64q_u16(vreinterpretq_u16_u8(block)));
  if constexpr (kPixelBytes == 4) block = vreinterpretq_u8_u32(vrev64q_u32(vreinterpretq_u32_u8(block)));
  if constexpr (kPixelBytes <= 8) block = vextq_u8(block, block, 8);
  return block;
}

// The kBlocks blocks that end at `end` to dst.
template <int kBlocks, class T>
void reverseBlocks(T* dst, const T* end) {
  constexpr ptrdiff_t kBlock = 16 / sizeof(T);
  uint8x16_t blocks[kBlocks];
  for (int k = 0; k < kBlocks; ++k) blocks[k] = vld1q_u8(reinterpret_cast<const uint8_t*>(end - (k + 1) * kBlock));
  for (int k = 0; k < kBlocks; ++k) {
    vst1q_u8(reinterpret_cast<uint8_t*>(dst + k * kBlock), reverseBlock<sizeof(T)>(blocks[k]));
  }
}

template <class T>
void reverseRun(T* dst, const T* src, ptrdiff_t n) {
  constexpr ptrdiff_t kBlock = 16 / sizeof(T);
  ptrdiff_t i = 0;
  for (; i <= n - 4 * kBlock; i += 4 * kBlock) reverseBlocks<4>(dst + i, src + n - i);
  for (; i <= n - kBlock; i += kBlock) reverseBlocks<1>(dst + i, src + n - i);
  portable::reverseRun(dst + i, src, n - i);
}

}  // namespace dax::neon
#endif
