#include "daxi/add.h"

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/pixel/add_neon.h"

DaxStatus DAXI_Add_8u_C1RSfs_IS(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                int32_t dstStep, DaxiSize size, int32_t isa) {
  DAX_REQUIRE(src1 && src2 && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min({step1, step2, dstStep}), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isa >= 0, DAX_STS_BAD_ISA);

  const auto addRow = dax::usesNeon(isa) ? dax::neon::addRow : dax::portable::addRow;
  for (int32_t y = 0; y < size.height; ++y) {
    addRow(dax::rowAt(src1, step1, y), dax::rowAt(src2, step2, y), dax::rowAt(dst, dstStep, y), size.width);
  }
  return DAX_STS_OK;
}
