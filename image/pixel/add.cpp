#include "daxi/add.h"

#include "frame/op2d.h"
#include "image/pixel/arithmetic.h"

DaxStatus DAXI_Add_8u_C1RSfs_IS(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                int32_t dstStep, DaxiSize size, int32_t isa) {
  const dax::Plane first{src1, step1}, second{src2, step2};
  const dax::Plane to{dst, dstStep};
  DAX_REQUIRE_OK(dax::checkPlanes(size, 1, first, second, to));
  DAX_REQUIRE(isa >= 0, DAX_STS_BAD_ISA);
  const auto row = [=](const uint8_t* a, const uint8_t* b, uint8_t* result, int32_t count) {
    dax::arithmeticRow<dax::AddOp, dax::Operand::row>(a, b, result, count, 0, isa);
  };
  dax::forEachRow(size, 1, row, first, second, to);
  return DAX_STS_OK;
}
