#include "image/logic/compare.h"

#include "daxi/compare.h"
#include "image/logic/compare_neon.h"
#include "image/logic/compare_portable.h"

namespace dax {
namespace {

template <class T>
using CompareRow = void (*)(const T*, const T*, uint8_t*, int32_t);

template <class Op, Operand kOperand, class T>
CompareRow<T> compareTwin(int32_t isa) {
  return usesNeon(isa) ? CompareRow<T>{neon::compareRow<Op, kOperand, T>}
                       : CompareRow<T>{portable::compareRow<Op, kOperand, T>};
}

template <Operand kOperand, class T>
CompareRow<T> rowOfComparison(int32_t op, int32_t isa) {
  switch (op) {
    case DAXI_COMPARE_LT:
      return compareTwin<LessOp, kOperand, T>(isa);
    case DAXI_COMPARE_LE:
      return compareTwin<LessEqualOp, kOperand, T>(isa);
    case DAXI_COMPARE_EQ:
      return compareTwin<EqualOp, kOperand, T>(isa);
    case DAXI_COMPARE_NE:
      return compareTwin<NotEqualOp, kOperand, T>(isa);
    case DAXI_COMPARE_GE:
      return compareTwin<GreaterEqualOp, kOperand, T>(isa);
    default:
      return compareTwin<GreaterOp, kOperand, T>(isa);
  }
}

bool isComparison(int32_t op) {
  return op >= DAXI_COMPARE_LT && op <= DAXI_COMPARE_GT;
}

}  // namespace

template <Operand kOperand, class T>
void compareRow(const T* a, const T* b, uint8_t* dst, int32_t count, int32_t op, int32_t isa) {
  rowOfComparison<kOperand, T>(op, isa)(a, b, dst, count);
}

template <Operand kOperand>
void compareEpsRow(const float* a, const float* b, uint8_t* dst, int32_t count, double eps, int32_t isa) {
  usesNeon(isa) ? neon::compareEpsRow<kOperand>(a, b, dst, count, eps)
                : portable::compareEpsRow<kOperand>(a, b, dst, count, eps);
}

template <class T>
DaxStatus compareImages(const T* src1, int32_t step1, const T* src2, int32_t step2, uint8_t* dst, int32_t dstStep,
                        DaxiSize size, int32_t op) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, first, second, to));
  DAX_REQUIRE(isComparison(op), DAX_STS_BAD_PARAM);
  forEachRow(size, 1, rowOfComparison<Operand::row, T>(op, currentIsa()), first, second, to);
  return DAX_STS_OK;
}

template <class T>
DaxStatus compareConstant(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, T value,
                          int32_t op) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(isComparison(op), DAX_STS_BAD_PARAM);
  const Pattern<T, 1> pattern(&value);
  const auto row = [&, compare = rowOfComparison<Operand::pattern, T>(op, currentIsa())](
                       const T* a, uint8_t* result, int32_t count) { compare(a, pattern.elements, result, count); };
  forEachRow(size, 1, row, from, to);
  return DAX_STS_OK;
}

DaxStatus compareImagesEps(const float* src1, int32_t step1, const float* src2, int32_t step2, uint8_t* dst,
                           int32_t dstStep, DaxiSize size, double eps) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, first, second, to));
  DAX_REQUIRE(eps >= 0, DAX_STS_BAD_PARAM);
  const auto row = [eps, isa = currentIsa()](const float* a, const float* b, uint8_t* result, int32_t count) {
    compareEpsRow<Operand::row>(a, b, result, count, eps, isa);
  };
  forEachRow(size, 1, row, first, second, to);
  return DAX_STS_OK;
}

DaxStatus compareConstantEps(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                             float value, double eps) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE(eps >= 0, DAX_STS_BAD_PARAM);
  const Pattern<float, 1> pattern(&value);
  const auto row = [&, isa = currentIsa()](const float* a, uint8_t* result, int32_t count) {
    compareEpsRow<Operand::pattern>(a, pattern.elements, result, count, eps, isa);
  };
  forEachRow(size, 1, row, from, to);
  return DAX_STS_OK;
}

#define DAX_COMPARE(T)                                                                                             \
  template DaxStatus compareImages<T>(const T*, int32_t, const T*, int32_t, uint8_t*, int32_t, DaxiSize, int32_t); \
  template DaxStatus compareConstant<T>(const T*, int32_t, uint8_t*, int32_t, DaxiSize, T, int32_t);               \
  template void compareRow<Operand::row, T>(const T*, const T*, uint8_t*, int32_t, int32_t, int32_t);              \
  template void compareRow<Operand::pattern, T>(const T*, const T*, uint8_t*, int32_t, int32_t, int32_t);
DAX_COMPARE(uint8_t)
DAX_COMPARE(uint16_t)
DAX_COMPARE(int16_t)
DAX_COMPARE(float)
#undef DAX_COMPARE
template void compareEpsRow<Operand::row>(const float*, const float*, uint8_t*, int32_t, double, int32_t);
template void compareEpsRow<Operand::pattern>(const float*, const float*, uint8_t*, int32_t, double, int32_t);

}  // namespace dax
