#include "image/pixel/copy.h"

#include <cstring>

#include "frame/rows.h"

void _DAXI_Copy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  for (int32_t y = 0; y < size.height; ++y) {
    std::memcpy(dax::rowAt(dst, dstStep, y), dax::rowAt(src, srcStep, y), static_cast<size_t>(size.width));
  }
}
