#include "image/pixel/logic.h"

#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/pixel/logic_neon.h"

void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  const auto invertRow = dax::usesNeon(isa) ? dax::neon::invertRow : dax::portable::invertRow;
  for (int32_t y = 0; y < size.height; ++y) {
    invertRow(dax::rowAt(src, srcStep, y), dax::rowAt(dst, dstStep, y), size.width);
  }
}
