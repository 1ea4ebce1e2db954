#include "daxi/compare.h"

#include "image/logic/compare.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

template <class T>
uint8_t comparison(int32_t op, T a, T b) {
  // NaN is in no relation.
  const bool less = a<b, greater = a> b, equal = !less && !greater && a == a && b == b;
  const bool holds[] = {less, less || equal, equal, !equal, greater || equal, greater};
  return holds[op] ? 255 : 0;
}

template <class T, class OfImages, class OfConstant>
void checkComparisons(OfImages ofImages, OfConstant ofConstant) {
  for (int32_t op = DAXI_COMPARE_LT; op <= DAXI_COMPARE_GT; ++op) {
    const auto expected = [=](T a, T b) { return comparison(op, a, b); };
    checkExportOfTwo<T, uint8_t>([=](auto... a) { return ofImages(a..., op); }, nullptr, expected);
    checkExportOfOne<T, uint8_t>([=](auto... a) { return ofConstant(a..., T{77}, op); }, nullptr,
                                 [=](T a) { return comparison(op, a, T{77}); });
    checkRowOfTwo<T, uint8_t>([=](const T* a, const T* b, uint8_t* dst, int32_t count,
                                  int32_t isa) { compareRow<Operand::row>(a, b, dst, count, op, isa); },
                              expected);
    checkRowWithConstant<T, uint8_t>([=](const T* a, const T* b, uint8_t* dst, int32_t count,
                                         int32_t isa) { compareRow<Operand::pattern>(a, b, dst, count, op, isa); },
                                     expected);
  }
}

#define TO_CALL(FUNCTION) [](auto... a) { return FUNCTION(a...); }

TEST(Compare, SixRelationsOfEveryType) {
  checkComparisons<uint8_t>(TO_CALL(DAXI_Compare_8u_C1R), TO_CALL(DAXI_CompareC_8u_C1R));
  checkComparisons<uint16_t>(TO_CALL(DAXI_Compare_16u_C1R), TO_CALL(DAXI_CompareC_16u_C1R));
  checkComparisons<int16_t>(TO_CALL(DAXI_Compare_16s_C1R), TO_CALL(DAXI_CompareC_16s_C1R));
  checkComparisons<float>(TO_CALL(DAXI_Compare_32f_C1R), TO_CALL(DAXI_CompareC_32f_C1R));
}

TEST(Compare, EqualWithinATolerance) {
  for (const double eps : {0.0, 1e-45, 0x1p-24, 0.1, 1e38, static_cast<double>(INFINITY)}) {
    const auto expected = [=](float a, float b) -> uint8_t {
      const double apart = double{a} - double{b};  // rounded, as the contract says
      return apart <= eps && apart >= -eps ? 255 : 0;
    };
    checkExportOfTwo<float, uint8_t>([=](auto... a) { return DAXI_CompareEqualEps_32f_C1R(a..., eps); }, nullptr,
                                     expected);
    checkExportOfOne<float, uint8_t>([=](auto... a) { return DAXI_CompareEqualEpsC_32f_C1R(a..., 0.5f, eps); }, nullptr,
                                     [=](float a) { return expected(a, 0.5f); });
    checkRowOfTwo<float, uint8_t>([=](const float* a, const float* b, uint8_t* dst, int32_t count,
                                      int32_t isa) { compareEpsRow<Operand::row>(a, b, dst, count, eps, isa); },
                                  expected);
    checkRowWithConstant<float, uint8_t>(
        [=](const float* a, const float* b, uint8_t* dst, int32_t count, int32_t isa) {
          compareEpsRow<Operand::pattern>(a, b, dst, count, eps, isa);
        },
        expected);
  }
}

}  // namespace
}  // namespace dax::test
