#include "image/pixel/logic.h"

#include "frame/dispatch.h"
#include "frame/op2d.h"
#include "image/pixel/logic_neon.h"

void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  const auto invertRow = dax::usesNeon(isa) ? dax::neon::invertRow : dax::portable::invertRow;
  dax::forEachRow(size, 1, invertRow, dax::Plane{src, srcStep}, dax::Plane{dst, dstStep});
}
