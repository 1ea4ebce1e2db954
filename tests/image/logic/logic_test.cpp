#include "daxi/logic.h"

#include "image/logic/logic.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

#define CHECK_BITS(NAME, SUFFIX, T, OPERATOR)                                                                      \
  {                                                                                                                \
    const auto expected = [](T a, T b) { return static_cast<T>(a OPERATOR b); };                                   \
    const auto withConstant = [](T a) { return static_cast<T>(a OPERATOR T{0x55}); };                              \
    checkExportOfTwo<T, T>(DAXI_##NAME##_##SUFFIX##_C1R, DAXI_##NAME##_##SUFFIX##_C1IR, expected);                 \
    checkExportOfOne<T, T>([](auto... a) { return DAXI_##NAME##C_##SUFFIX##_C1R(a..., T{0x55}); },                 \
                           [](auto... a) { return DAXI_##NAME##C_##SUFFIX##_C1IR(a..., T{0x55}); }, withConstant); \
    checkRowOfTwo<T, T>(bitsRow<NAME##Op, Operand::row, T>, expected);                                             \
    checkRowWithConstant<T, T>(bitsRow<NAME##Op, Operand::pattern, T>, expected);                                  \
  }
// Dropped bits and signs by multiplication and division, which rounds down.
#define CHECK_SHIFTS(SUFFIX, T)                                                                                        \
  for (int32_t count = 0; count < static_cast<int32_t>(8 * sizeof(T)); ++count) {                                      \
    const auto left = [=](T a) { return static_cast<T>(int64_t{a} * (int64_t{1} << count)); };                         \
    const auto right = [=](T a) { return static_cast<T>(std::floor(a / std::ldexp(1.0, count))); };                    \
    checkExportOfOne<T, T>([=](auto... a) { return DAXI_LShiftC_##SUFFIX##_C1R(a..., count); },                        \
                           [=](auto... a) { return DAXI_LShiftC_##SUFFIX##_C1IR(a..., count); }, left);                \
    checkExportOfOne<T, T>([=](auto... a) { return DAXI_RShiftC_##SUFFIX##_C1R(a..., count); },                        \
                           [=](auto... a) { return DAXI_RShiftC_##SUFFIX##_C1IR(a..., count); }, right);               \
    checkRowOfOne<T, T>(                                                                                               \
        [=](const T* src, T* dst, int32_t width, int32_t isa) { shiftRow<LeftShiftOp>(src, dst, width, count, isa); }, \
        left);                                                                                                         \
    checkRowOfOne<T, T>([=](const T* src, T* dst, int32_t width,                                                       \
                            int32_t isa) { shiftRow<RightShiftOp>(src, dst, width, count, isa); },                     \
                        right);                                                                                        \
  }
#define CHECK_LOGIC(SUFFIX, T)  \
  CHECK_BITS(And, SUFFIX, T, &) \
  CHECK_BITS(Or, SUFFIX, T, |)  \
  CHECK_BITS(Xor, SUFFIX, T, ^) \
  CHECK_SHIFTS(SUFFIX, T)       \
  checkExportOfOne<T, T>(DAXI_Not_##SUFFIX##_C1R, DAXI_Not_##SUFFIX##_C1IR, [](T a) { return static_cast<T>(-1 - a); });

TEST(Logic, ExportsAndRows) {
  CHECK_LOGIC(8u, uint8_t)
  CHECK_LOGIC(16u, uint16_t)
  CHECK_LOGIC(16s, int16_t)
}

}  // namespace
}  // namespace dax::test
