#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "daxi/arithmetic.h"
#include "image/pixel/arithmetic_portable.h"
#include "tests/image/pixel/arithmetic_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// One operation on one type: its exports, without the scale factor where floats have none, and its worker.
template <class T>
struct Operation {
  const char* name;
  std::function<DaxStatus(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t)> c1, c3;
  std::function<DaxStatus(T*, int32_t, DaxiSize, const T*, int32_t)> inPlace1, inPlace3;
  void (*worker)(const T*, int32_t, T*, int32_t, DaxiSize, const T*, int32_t, int32_t);
};

#define INTEGER_OPERATION(NAME, SUFFIX, T)                                                                    \
  {                                                                                                           \
#NAME "C",                                                                                                  \
        [](const T* s, int32_t ss, T* d, int32_t ds, DaxiSize z, const T* v, int32_t f) {                       \
          return DAXI_##NAME##C_##SUFFIX##_C1RSfs(s, ss, d, ds, z, *v, f);                                      \
        },                                                                                                      \
        DAXI_##NAME##C_##SUFFIX##_C3RSfs,                                                                       \
        [](T* p, int32_t step, DaxiSize z, const T* v, int32_t f) {                                             \
          return DAXI_##NAME##C_##SUFFIX##_C1IRSfs(p, step, z, *v, f);                                          \
        },                                                                                                      \
        DAXI_##NAME##C_##SUFFIX##_C3IRSfs, constantRows<NAME##Op, T> \
  }
#define FLOAT_OPERATION(NAME)                                                                                 \
  {                                                                                                           \
#NAME "C",                                                                                                  \
        [](const float* s, int32_t ss, float* d, int32_t ds, DaxiSize z, const float* v, int32_t) {             \
          return DAXI_##NAME##C_32f_C1R(s, ss, d, ds, z, *v);                                                   \
        },                                                                                                      \
        [](const float* s, int32_t ss, float* d, int32_t ds, DaxiSize z, const float* v, int32_t) {             \
          return DAXI_##NAME##C_32f_C3R(s, ss, d, ds, z, v);                                                    \
        },                                                                                                      \
        [](float* p, int32_t step, DaxiSize z, const float* v, int32_t) {                                       \
          return DAXI_##NAME##C_32f_C1IR(p, step, z, *v);                                                       \
        },                                                                                                      \
        [](float* p, int32_t step, DaxiSize z, const float* v, int32_t) {                                       \
          return DAXI_##NAME##C_32f_C3IR(p, step, z, v);                                                        \
        },                                                                                                      \
        constantRows<NAME##Op, float> \
  }
#define OPERATIONS(MACRO, ...)                                                           \
  {                                                                                      \
    MACRO(Add __VA_OPT__(, ) __VA_ARGS__), MACRO(Sub __VA_OPT__(, ) __VA_ARGS__),        \
        MACRO(Mul __VA_OPT__(, ) __VA_ARGS__), MACRO(AbsDiff __VA_OPT__(, ) __VA_ARGS__) \
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

template <class T>
testing::AssertionResult isResult(const Operation<T>& operation, const TestImage<T>& src, const TestImage<T>& dst,
                                  const T* value, int32_t channels, int32_t scaleFactor) {
  for (int32_t y = 0; y < src.size().height; ++y) {
    for (int32_t x = 0; x < src.size().width; ++x) {
      const T expected = oracle::arithmetic(operation.name, src.at(x, y), value[x % channels], scaleFactor);
      const bool bothNan = expected != expected && dst.at(x, y) != dst.at(x, y);
      if (!bothNan && !sameBits(dst.at(x, y), expected)) {
        return testing::AssertionFailure() << operation.name << " factor " << scaleFactor << " at " << x << ", " << y;
      }
    }
  }
  return testing::AssertionSuccess();
}

// Ragged sizes, padded and guarded, out of place and in place, one channel and three.
TYPED_TEST(Arithmetic, ExportsOverRaggedSizes) {
  using T = TypeParam;
  for (const Operation<T>& operation : kOperations<T>) {
    for (int32_t pixels = 1; pixels <= 40; ++pixels) {
      for (const int32_t channels : {1, 3}) {
        const int32_t scaleFactor = std::is_integral_v<T> ? pixels % 7 - 2 : 0;
        const DaxiSize size = {pixels, 1 + pixels % 3};
        TestImage<T> src({pixels * channels, size.height}, pixels % 4, kGuards[pixels % 2]), dst(src.size(), 5),
            value({3, 1});
        src.randomize(static_cast<uint64_t>(pixels));
        value.randomize(static_cast<uint64_t>(100 + pixels));
        dst.remember();
        const auto& call = channels == 1 ? operation.c1 : operation.c3;
        ASSERT_EQ(call(src.data(), src.step(), dst.data(), dst.step(), size, value.data(), scaleFactor), DAX_STS_OK);
        ASSERT_TRUE(isResult(operation, src, dst, value.data(), channels, scaleFactor));
        ASSERT_TRUE(dst.paddingUntouched());
        const auto& callInPlace = channels == 1 ? operation.inPlace1 : operation.inPlace3;
        ASSERT_EQ(callInPlace(src.data(), src.step(), size, value.data(), scaleFactor), DAX_STS_OK);
        ASSERT_TRUE(samePixels(src, dst));
      }
    }
  }
}

// Both twins: every pair of bytes, and of the numbers around powers of two and the limits of the other types, with every
// scale factor.
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
      for (int32_t i = 0; i < 256; i += scaleFactor == 0 ? 1 : 5) {
        T pattern[kPatternLength];
        std::fill_n(pattern, kPatternLength, values.at(i, 0));
        for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
          TestImage<T> dst(values.size());
          operation.worker(values.data(), 256, dst.data(), 256, {256, 1}, pattern, scaleFactor, isa);
          ASSERT_TRUE(isResult(operation, values, dst, pattern, 1, scaleFactor)) << i << " code " << isa;
        }
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
