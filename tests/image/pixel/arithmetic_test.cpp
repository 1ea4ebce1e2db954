#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <vector>

#include "daxi/arithmetic.h"
#include "image/pixel/arithmetic_portable.h"
#include "tests/image/pixel/arithmetic_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// One operation on one type: its exports for one channel and for three, without the scale factor where floats have none, and
// its rows.
template <class T>
struct Operation {
  const char* name;
  std::function<DaxStatus(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t)> constant1, constant3;
  std::function<DaxStatus(T*, int32_t, DaxiSize, const T*, int32_t)> constantInPlace1, constantInPlace3;
  std::function<DaxStatus(const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize, int32_t)> images1, images3;
  std::function<DaxStatus(const T*, int32_t, T*, int32_t, DaxiSize, int32_t)> imagesInPlace1, imagesInPlace3;
  void (*patternRow)(const T*, const T*, T*, int32_t, int32_t, int32_t);
  void (*imageRow)(const T*, const T*, T*, int32_t, int32_t, int32_t);
};

#define INTEGER_OPERATION(NAME, SUFFIX, T)                                                                \
  {                                                                                                       \
#NAME,                                                                                                  \
        [](const T* s, int32_t ss, T* d, int32_t ds, DaxiSize z, const T* v, int32_t f) {                       \
          return DAXI_##NAME##C_##SUFFIX##_C1RSfs(s, ss, d, ds, z, *v, f);                                      \
        },                                                                                                      \
        DAXI_##NAME##C_##SUFFIX##_C3RSfs,                                                                       \
        [](T* p, int32_t step, DaxiSize z, const T* v, int32_t f) {                                             \
          return DAXI_##NAME##C_##SUFFIX##_C1IRSfs(p, step, z, *v, f);                                          \
        },                                                                                                      \
        DAXI_##NAME##C_##SUFFIX##_C3IRSfs, DAXI_##NAME##_##SUFFIX##_C1RSfs, DAXI_##NAME##_##SUFFIX##_C3RSfs,    \
        DAXI_##NAME##_##SUFFIX##_C1IRSfs, DAXI_##NAME##_##SUFFIX##_C3IRSfs,                                     \
        arithmeticRow<NAME##Op, Operand::pattern, T>, arithmeticRow<NAME##Op, Operand::row, T> \
  }
#define WITHOUT_FACTOR(FUNCTION) [](auto... arguments) { return withoutLast(FUNCTION, arguments...); }
#define FLOAT_OPERATION(NAME)                                                                             \
  {                                                                                                       \
#NAME,                                                                                                  \
        [](const float* s, int32_t ss, float* d, int32_t ds, DaxiSize z, const float* v, int32_t) {             \
          return DAXI_##NAME##C_32f_C1R(s, ss, d, ds, z, *v);                                                   \
        },                                                                                                      \
        WITHOUT_FACTOR(DAXI_##NAME##C_32f_C3R),                                                                 \
        [](float* p, int32_t step, DaxiSize z, const float* v, int32_t) {                                       \
          return DAXI_##NAME##C_32f_C1IR(p, step, z, *v);                                                       \
        },                                                                                                      \
        WITHOUT_FACTOR(DAXI_##NAME##C_32f_C3IR), WITHOUT_FACTOR(DAXI_##NAME##_32f_C1R),                         \
        WITHOUT_FACTOR(DAXI_##NAME##_32f_C3R), WITHOUT_FACTOR(DAXI_##NAME##_32f_C1IR),                          \
        WITHOUT_FACTOR(DAXI_##NAME##_32f_C3IR), arithmeticRow<NAME##Op, Operand::pattern, float>,               \
        arithmeticRow<NAME##Op, Operand::row, float> \
  }
#define OPERATIONS(MACRO, ...)                                                           \
  {                                                                                      \
    MACRO(Add __VA_OPT__(, ) __VA_ARGS__), MACRO(Sub __VA_OPT__(, ) __VA_ARGS__),        \
        MACRO(Mul __VA_OPT__(, ) __VA_ARGS__), MACRO(AbsDiff __VA_OPT__(, ) __VA_ARGS__) \
  }

template <class... P, class... A>
DaxStatus withoutLast(DaxStatus (*function)(P...), A... arguments) {
  const auto all = std::tie(arguments...);
  return [&]<size_t... k>(std::index_sequence<k...>) {
    return function(std::get<k>(all)...);
  }
  (std::make_index_sequence<sizeof...(P)>());
}

template <class T>
const std::vector<Operation<T>> kOperations;
template <>
const std::vector<Operation<uint8_t>> kOperations<uint8_t> = OPERATIONS(INTEGER_OPERATION, 8u, uint8_t);
template <>
const std::vector<Operation<uint16_t>> kOperations<uint16_t> = OPERATIONS(INTEGER_OPERATION, 16u, uint16_t);
template <>
const std::vector<Operation<int16_t>> kOperations<int16_t> = OPERATIONS(INTEGER_OPERATION, 16s, int16_t);
template <>
const std::vector<Operation<float>> kOperations<float> = OPERATIONS(FLOAT_OPERATION);

template <class T>
class Arithmetic : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Arithmetic, PixelTypes);

// second(x, y): the second operand there.
template <class T, class Second>
testing::AssertionResult isResult(const char* name, const TestImage<T>& src, const TestImage<T>& dst, Second second,
                                  int32_t scaleFactor) {
  for (int32_t y = 0; y < src.size().height; ++y) {
    for (int32_t x = 0; x < src.size().width; ++x) {
      const T expected = oracle::arithmetic<T>(name, src.at(x, y), second(x, y), scaleFactor);
      const bool bothNan = expected != expected && dst.at(x, y) != dst.at(x, y);
      if (!bothNan && !sameBits(dst.at(x, y), expected)) {
        return testing::AssertionFailure() << name << " factor " << scaleFactor << " at " << x << ", " << y;
      }
    }
  }
  return testing::AssertionSuccess();
}

// Ragged sizes, padded and guarded, out of place and in place, one channel and three, with gaps between rows and without.
TYPED_TEST(Arithmetic, ExportsOverRaggedSizes) {
  using T = TypeParam;
  for (const Operation<T>& operation : kOperations<T>) {
    for (int32_t i = 2; i <= 81; ++i) {
      const int32_t pixels = i / 2, channels = i % 2 ? 3 : 1, scaleFactor = std::is_integral_v<T> ? pixels % 7 - 2 : 0;
      const DaxiSize size = {pixels, 1 + pixels % 3};
      const int32_t width = pixels * channels, gap = pixels % 4;
      TestImage<T> src({width, size.height}, gap, kGuards[pixels % 2]), other(src.size(), gap), dst(src.size(), gap);
      TestImage<T> value({3, 1});
      src.randomize(static_cast<uint64_t>(pixels)), other.randomize(static_cast<uint64_t>(50 + pixels));
      value.randomize(static_cast<uint64_t>(100 + pixels));
      dst.remember();

      const auto& onImages = channels == 1 ? operation.images1 : operation.images3;
      ASSERT_EQ(onImages(src.data(), src.step(), other.data(), other.step(), dst.data(), dst.step(), size, scaleFactor),
                DAX_STS_OK);
      const auto atOther = [&](int32_t x, int32_t y) { return other.at(x, y); };
      ASSERT_TRUE(isResult(operation.name, src, dst, atOther, scaleFactor));
      ASSERT_TRUE(dst.paddingUntouched());
      TestImage<T> both(src.size(), gap);
      both.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
      const auto& onImagesInPlace = channels == 1 ? operation.imagesInPlace1 : operation.imagesInPlace3;
      ASSERT_EQ(onImagesInPlace(other.data(), other.step(), both.data(), both.step(), size, scaleFactor), DAX_STS_OK);
      ASSERT_TRUE(samePixels(both, dst));

      const auto& onConstant = channels == 1 ? operation.constant1 : operation.constant3;
      ASSERT_EQ(onConstant(src.data(), src.step(), dst.data(), dst.step(), size, value.data(), scaleFactor),
                DAX_STS_OK);
      const auto constant = [&](int32_t x, int32_t) { return value.at(x % channels, 0); };
      ASSERT_TRUE(isResult(operation.name, src, dst, constant, scaleFactor));
      ASSERT_TRUE(dst.paddingUntouched());
      const auto& onConstantInPlace = channels == 1 ? operation.constantInPlace1 : operation.constantInPlace3;
      ASSERT_EQ(onConstantInPlace(src.data(), src.step(), size, value.data(), scaleFactor), DAX_STS_OK);
      ASSERT_TRUE(samePixels(src, dst));
    }
  }
}

// Both twins: every pair of bytes with scale factors of -8..8, and pairs of the numbers around powers of two and the limits of
// the other types with every one.
TYPED_TEST(Arithmetic, ValuesAndScaleFactors) {
  using T = TypeParam;
  TestImage<T> values({256, 1});
  Random random(5);
  values.fill([&](int32_t x, int32_t) -> T {
    if (sizeof(T) == 1) return static_cast<T>(x);
    if (std::is_floating_point_v<T>) return std::ldexp(static_cast<T>(random.below(1 << 25) - (1 << 24)), x - 128);
    return static_cast<T>((1 << (x / 3 % 17)) + x % 3 - 1) * (x < 128 ? 1 : static_cast<T>(-1));
  });
  const int32_t last = std::is_integral_v<T> ? 31 : 0;
  for (const Operation<T>& operation : kOperations<T>) {
    for (int32_t scaleFactor = -last; scaleFactor <= last; ++scaleFactor) {
      const bool all = scaleFactor == 0 || (sizeof(T) == 1 && std::abs(scaleFactor) <= 8);
      for (int32_t i = 0; i < 256; i += all ? 1 : 15) {
        TestImage<T> same({256, 1}), dst({256, 1});
        same.fill([&](int32_t, int32_t) { return values.at(i, 0); });
        for (const auto row : {operation.patternRow, operation.imageRow}) {
          for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
            row(values.data(), same.data(), dst.data(), 256, scaleFactor, isa);
            const auto atSame = [&](int32_t x, int32_t y) { return same.at(x, y); };
            ASSERT_TRUE(isResult(operation.name, values, dst, atSame, scaleFactor)) << i << " code " << isa;
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
