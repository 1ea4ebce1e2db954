#include "image/pixel/copy.h"

#include <cstring>

#include "frame/op2d.h"

void _DAXI_Copy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  const auto copyRow = [](const uint8_t* from, uint8_t* to, int32_t count) {
    std::memcpy(to, from, static_cast<size_t>(count));
  };
  dax::forEachRow(size, 1, copyRow, dax::Plane{src, srcStep}, dax::Plane{dst, dstStep});
}
