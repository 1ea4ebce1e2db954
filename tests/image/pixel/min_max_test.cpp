#include "daxi/min_max.h"

#include "image/pixel/min_max.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

// NaN loses, and the sign of a zero counts.
template <class T>
T lesserOf(T a, T b) {
  if (a != a) return b;
  if (b != b) return a;
  if (a == b) return std::signbit(static_cast<double>(a)) ? a : b;
  return a < b ? a : b;
}
template <class T>
T greaterOf(T a, T b) {
  if (a != a) return b;
  if (b != b) return a;
  if (a == b) return std::signbit(static_cast<double>(a)) ? b : a;
  return a > b ? a : b;
}

#define CHECK_EXTREME(NAME, SUFFIX, T, EXPECTED)                                                    \
  checkExportOfTwo<T, T>(DAXI_##NAME##_##SUFFIX##_C1R, DAXI_##NAME##_##SUFFIX##_C1IR, EXPECTED<T>); \
  checkExportOfOne<T, T>([](auto... a) { return DAXI_##NAME##C_##SUFFIX##_C1R(a..., T{40}); },      \
                         [](auto... a) { return DAXI_##NAME##C_##SUFFIX##_C1IR(a..., T{40}); },     \
                         [](T a) { return EXPECTED<T>(a, T{40}); });                                \
  checkRowOfTwo<T, T>(extremeRow<NAME##Op, Operand::row, T>, EXPECTED<T>);                          \
  checkRowWithConstant<T, T>(extremeRow<NAME##Op, Operand::pattern, T>, EXPECTED<T>)

TEST(MinMax, ExportsAndRows) {
  CHECK_EXTREME(Min, 8u, uint8_t, lesserOf);
  CHECK_EXTREME(Min, 16u, uint16_t, lesserOf);
  CHECK_EXTREME(Min, 16s, int16_t, lesserOf);
  CHECK_EXTREME(Min, 32f, float, lesserOf);
  CHECK_EXTREME(Max, 8u, uint8_t, greaterOf);
  CHECK_EXTREME(Max, 16u, uint16_t, greaterOf);
  CHECK_EXTREME(Max, 16s, int16_t, greaterOf);
  CHECK_EXTREME(Max, 32f, float, greaterOf);
}

}  // namespace
}  // namespace dax::test
