#include "daxi/magnitude.h"

#include "image/pixel/magnitude.h"
#include "image/pixel/magnitude_portable.h"
#include "tests/image/pixel/arithmetic_oracle.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

// The greatest r with (r - 1/2)^2 < value: r^2 - r + 1/4 is no integer.
template <class T>
T rootOf(T value) {
  if constexpr (std::is_floating_point_v<T>) return static_cast<T>(std::sqrt(static_cast<long double>(value)));
  int32_t root = 0;
  while ((root + 1) * root < value) ++root;
  return static_cast<T>(root);
}

template <class T>
T absoluteOf(T value) {
  if constexpr (std::is_integral_v<T>) return static_cast<T>(value == -32768 ? 32767 : value < 0 ? -value : value);
  return std::signbit(value) ? -value : value;
}

#define CHECK_ABS(SUFFIX, T)                                                                \
  checkExportOfOne<T, T>(DAXI_Abs_##SUFFIX##_C1R, DAXI_Abs_##SUFFIX##_C1IR, absoluteOf<T>); \
  checkRowOfOne<T, T>(magnitudeRow<AbsOp, T>, absoluteOf<T>)
#define CHECK_ROOT(SUFFIX, T)                                                             \
  checkExportOfOne<T, T>(DAXI_Sqrt_##SUFFIX##_C1R, DAXI_Sqrt_##SUFFIX##_C1IR, rootOf<T>); \
  checkRowOfOne<T, T>(magnitudeRow<SqrtOp, T>, rootOf<T>)
#define CHECK_SQUARE(SUFFIX, T)                                                                  \
  for (const int32_t factor : {-2, 0, 3}) {                                                      \
    checkExportOfOne<T, T>([=](auto... a) { return DAXI_Sqr_##SUFFIX##_C1RSfs(a..., factor); },  \
                           [=](auto... a) { return DAXI_Sqr_##SUFFIX##_C1IRSfs(a..., factor); }, \
                           [=](T a) { return oracle::arithmetic<T>("Mul", a, a, factor); });     \
  }

TEST(Magnitude, AbsoluteValuesRootsAndSquares) {
  CHECK_ABS(16s, int16_t);
  CHECK_ABS(32f, float);
  CHECK_ROOT(8u, uint8_t);
  CHECK_ROOT(16u, uint16_t);
  CHECK_ROOT(16s, int16_t);
  CHECK_ROOT(32f, float);
  CHECK_SQUARE(8u, uint8_t)
  CHECK_SQUARE(16u, uint16_t)
  CHECK_SQUARE(16s, int16_t)
  checkExportOfOne<float, float>(DAXI_Sqr_32f_C1R, DAXI_Sqr_32f_C1IR, [](float a) { return a * a; });
}

// The two numbers around each half of the way between squares.
TEST(Magnitude, RootsNearHalves) {
  for (int32_t root = 0; root < 255; ++root) {
    const std::vector<uint16_t> values(16, static_cast<uint16_t>(root * root + root));
    std::vector<uint16_t> above(values), roots(16), rootsAbove(16);
    for (uint16_t& each : above) ++each;
    magnitudeRow<SqrtOp>(values.data(), roots.data(), 16, DAX_ISA_NEON);
    magnitudeRow<SqrtOp>(above.data(), rootsAbove.data(), 16, DAX_ISA_NEON);
    ASSERT_EQ(roots[0], root);
    ASSERT_EQ(rootsAbove[0], root + 1);
  }
}

}  // namespace
}  // namespace dax::test
