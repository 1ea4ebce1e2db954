#include "pcl/convert/range_to_xyz.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>

#include "pcl/convert/range_to_xyz_portable.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class F>
struct Types {
  using Value = T;
  using Formula = F;
};

template <class>
class RangeToXyz : public testing::Test {};
using Members =
    testing::Types<Types<int16_t, GridFormula>, Types<int32_t, GridFormula>, Types<float, GridFormula>,
                   Types<int16_t, PinholeFormula>, Types<int32_t, PinholeFormula>, Types<float, PinholeFormula>>;
TYPED_TEST_SUITE(RangeToXyz, Members);

// A float operation in double precision, rounded: exact, since a double holds every product and the rounding of a
// sum of floats twice gives the same as once.
float times(float a, float b) {
  return static_cast<float>(double{a} * b);
}
float plus(float a, float b) {
  return static_cast<float>(double{a} + b);
}

using Params = std::array<float, 6>;

std::array<float, 3> expectedPoint(const Params& p, bool grid, int32_t r, int32_t c, float v) {
  if (grid) {
    return {plus(times(static_cast<float>(c), p[0]), p[3]), plus(times(static_cast<float>(r), p[1]), p[4]),
            plus(times(v, p[2]), p[5])};
  }
  const float z = plus(times(v, p[0]), p[1]);
  const auto perFx = static_cast<float>(1 / double{p[2]}), perFy = static_cast<float>(1 / double{p[3]});
  return {times(times(plus(static_cast<float>(c), -p[4]), z), perFx),
          times(times(plus(static_cast<float>(r), -p[5]), z), perFy), z};
}

template <class T>
T randomValue(Random& random) {
  const auto bits = static_cast<int32_t>(random.next());
  if constexpr (std::is_same_v<T, float>) return static_cast<float>(bits) * 1e-5f;
  return static_cast<T>(bits);
}

// Masks of every density, so that blocks are full, empty and mixed.
template <class T, class Formula>
void checkConversion(DaxiSize size, int32_t density, const Params& params) {
  constexpr bool kGrid = std::is_same_v<Formula, GridFormula>;
  const auto pixels = static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
  Random random(pixels + static_cast<size_t>(density));
  GuardedBuffer<T> values(pixels);
  GuardedBuffer<uint8_t> mask(pixels);
  std::vector<float> packed, organized(3 * pixels);
  uint8_t* const untouched = reinterpret_cast<uint8_t*>(organized.data());
  std::memset(untouched, 0xA5, 12 * pixels);
  for (size_t i = 0; i < pixels; ++i) {
    values[i] = randomValue<T>(random);
    mask[i] = random.below(100) < density ? static_cast<uint8_t>(1 + random.below(255)) : 0;
    if (!mask[i]) continue;
    const auto width = static_cast<size_t>(size.width);
    const auto point = expectedPoint(params, kGrid, static_cast<int32_t>(i / width), static_cast<int32_t>(i % width),
                                     static_cast<float>(values[i]));
    packed.insert(packed.end(), point.begin(), point.end());
    std::copy(point.begin(), point.end(), organized.begin() + static_cast<ptrdiff_t>(3 * i));
  }
  DAX3DPCL_RANGE_MAP map = {size.height, size.width, {}, nullptr, mask.data(), values.data()};
  std::copy(params.begin(), params.end(), map.params);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << ", " << density << " %, code " << isa);
    float* points = nullptr;
    DAX3DPCL_CLOUD_SIZE cloud = {-1, -1};
    GuardedBuffer<float> all(3 * pixels), exact(packed.size());
    rangeToXyz<T, Formula>(&map, all.data(), 1, &points, &cloud, isa);
    ASSERT_EQ(points, all.data());
    ASSERT_TRUE(cloud.width == size.width && cloud.height == size.height);
    ASSERT_EQ(std::memcmp(all.data(), organized.data(), 12 * pixels), 0);
    // Memory for the valid points alone: nothing may be written beyond.
    rangeToXyz<T, Formula>(&map, exact.data(), 0, &points, &cloud, isa);
    ASSERT_TRUE(cloud.width == static_cast<int32_t>(packed.size() / 3) && cloud.height == 1);
    ASSERT_TRUE(std::equal(packed.begin(), packed.end(), exact.begin(), sameBits<float>));
  }
}

TYPED_TEST(RangeToXyz, AgainstTheFormula) {
  using T = typename TypeParam::Value;
  using Formula = typename TypeParam::Formula;
  const Params grid = {0.1f, -0.37f, 0.0123f, -96.3f, 54.7f, 1000.1f};
  const Params pinhole = {0.00123f, 0.77f, 611.3f, 599.9f, 319.57f, 241.13f};
  const Params& params = std::is_same_v<Formula, GridFormula> ? grid : pinhole;
  for (const DaxiSize& size : {DaxiSize{1, 1}, {15, 3}, {16, 2}, {17, 5}, {33, 4}, {100, 7}, {1, 40}}) {
    for (const int32_t density : {0, 3, 50, 97, 100}) checkConversion<T, Formula>(size, density, params);
  }
  checkConversion<T, Formula>({500, 400}, 95, params);
}

TEST(RangeToXyzExports, ResultsOfEachMember) {
  const uint8_t mask[2] = {0, 9};
  int16_t shorts[2] = {5, -3};
  int32_t ints[2] = {5, 100000};
  float floats[2] = {5, 0.5f};
  const auto point = [&](auto convert, void* values, const Params& params) {
    DAX3DPCL_RANGE_MAP map = {1, 2, {}, nullptr, const_cast<uint8_t*>(mask), values};
    std::copy(params.begin(), params.end(), map.params);
    float buffer[32], *points = nullptr;
    DAX3DPCL_CLOUD_SIZE size = {};
    EXPECT_EQ(convert(&map, buffer, 2, &points, &size), DAX_STS_OK);
    EXPECT_TRUE(points == buffer && size.width == 1 && size.height == 1);
    return std::array{buffer[0], buffer[1], buffer[2]};
  };
  const Params grid = {2, 3, -4, 10, 20, 30}, pinhole = {2, 1, 4, 2, 3, 1};
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f, shorts, grid), (std::array{12.0f, 20.0f, 42.0f}));
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Range2XYZ_32s32f, ints, grid), (std::array{12.0f, 20.0f, -399970.0f}));
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Range2XYZ_32f32f, floats, grid), (std::array{12.0f, 20.0f, 28.0f}));
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f, shorts, pinhole), (std::array{2.5f, 2.5f, -5.0f}));
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Depth2XYZ_32s32f, ints, pinhole),
            (std::array{-100000.5f, -100000.5f, 200001.0f}));
  EXPECT_EQ(point(DAX3DPCL_PREP_CONVERT_Depth2XYZ_32f32f, floats, pinhole), (std::array{-1.0f, -1.0f, 2.0f}));
}

}  // namespace
}  // namespace dax::test
