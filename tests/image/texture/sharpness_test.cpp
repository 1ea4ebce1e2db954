#include "daxi/sharpness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using SharpnessCall = DaxStatus (*)(const T*, int32_t, DaxiSize, double*);

template <class T>
double sharpnessOf(SharpnessCall<T> call, const TestImage<T>& image) {
  double sharpness = -1;
  EXPECT_EQ(call(image.data(), image.step(), image.size(), &sharpness), DAX_STS_OK);
  return sharpness;
}

// The response of a 3 x 3 kernel at all inner pixels.
template <class T>
std::vector<long double> filtered(const TestImage<T>& image, const int (&kernel)[9]) {
  std::vector<long double> all;
  for (int32_t y = 1; y + 1 < image.size().height; ++y) {
    for (int32_t x = 1; x + 1 < image.size().width; ++x) {
      long double sum = 0;
      for (int32_t i = 0; i < 9; ++i)
        sum += kernel[i] * static_cast<long double>(image.at(x + i % 3 - 1, y + i / 3 - 1));
      all.push_back(sum);
    }
  }
  return all;
}

long double meanSquare(const std::vector<long double>& values, long double about = 0) {
  long double sum = 0;
  for (const long double v : values) sum += (v - about) * (v - about);
  return sum / static_cast<long double>(values.size());
}

template <class T>
struct SharpnessCalls {
  SharpnessCall<T> serial;
  DaxStatus (*pooled)(void*, uint32_t, const T*, int32_t, DaxiSize, double*, void*);
  DaxStatus (*query)(DaxiSize, uint64_t*);
};

// On a pool it is the same bits.
template <class T>
double sharpnessOf(const SharpnessCalls<T>& calls, const TestImage<T>& image) {
  const double serial = sharpnessOf(calls.serial, image);
  uint64_t bytes = 0;
  EXPECT_EQ(calls.query(image.size(), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  for (const uint32_t threads : {1u, 4u, 90u}) {
    MockPool pool;
    double sharpness = -1;
    EXPECT_EQ(calls.pooled(&pool, threads, image.data(), image.step(), image.size(), &sharpness, buffer.data()),
              DAX_STS_OK);
    EXPECT_EQ(sharpness, serial);
    EXPECT_EQ(pool.calls > 0, threads > 1);
  }
  return serial;
}

template <class T>
void expectTheDefinitions(const SharpnessCalls<T>& tenengrad, const SharpnessCalls<T>& laplacian,
                          const SharpnessCalls<T>& brenner) {
  for (const DaxiSize size : {DaxiSize{3, 3}, DaxiSize{38, 5}, DaxiSize{17, 23}, DaxiSize{2100, 4}}) {
    TestImage<uint16_t> bits(size);
    bits.randomize(5);
    TestImage<T> image(size, 2);
    image.fill([&](int32_t x, int32_t y) { return static_cast<T>(bits.at(x, y)); });
    const auto expectNear = [](double value, long double truth) {
      EXPECT_NEAR(value, static_cast<double>(truth), 1e-12 * static_cast<double>(truth));
    };
    expectNear(sharpnessOf(tenengrad, image), meanSquare(filtered(image, {-1, 0, 1, -2, 0, 2, -1, 0, 1})) +
                                                  meanSquare(filtered(image, {-1, -2, -1, 0, 0, 0, 1, 2, 1})));
    expectNear(sharpnessOf(brenner, image), meanSquare(filtered(image, {0, 0, 0, -1, 0, 1, 0, 0, 0})));
    const std::vector<long double> bends = filtered(image, {0, 1, 0, 1, -4, 1, 0, 1, 0});
    long double mean = 0;
    for (const long double v : bends) mean += v / static_cast<long double>(bends.size());
    expectNear(sharpnessOf(laplacian, image), meanSquare(bends, mean));
  }
}

#define SHARPNESS_CALLS(NAME, SUFFIX)                                                \
  {                                                                                  \
    DAXI_Sharpness##NAME##_##SUFFIX##_C1R, DAXI_Sharpness##NAME##_##SUFFIX##_C1R_MT, \
        DAXI_Sharpness##NAME##BufferSize_##SUFFIX##_MT                               \
  }
#define EXPECT_DEFINITIONS(SUFFIX, T)                                                                     \
  expectTheDefinitions<T>(SHARPNESS_CALLS(Tenengrad, SUFFIX), SHARPNESS_CALLS(LaplacianVariance, SUFFIX), \
                          SHARPNESS_CALLS(Brenner, SUFFIX))

TEST(Sharpness, EqualsTheDefinitions) {
  EXPECT_DEFINITIONS(8u, uint8_t);
  EXPECT_DEFINITIONS(16u, uint16_t);
  EXPECT_DEFINITIONS(16s, int16_t);
  EXPECT_DEFINITIONS(32f, float);
}

// Black beside white, where the squares of bytes fill their sums.
TEST(Sharpness, OfTheSteepestSteps) {
  TestImage<uint8_t> image({5000, 3});
  image.fill([](int32_t x, int32_t) { return x / 2 % 2 * 255; });
  EXPECT_EQ(sharpnessOf(DAXI_SharpnessTenengrad_8u_C1R, image), 1020.0 * 1020);
  EXPECT_EQ(sharpnessOf(DAXI_SharpnessBrenner_8u_C1R, image), 255.0 * 255);
}

// An edge that is spread over more pixels is less sharp by each of them.
TEST(Sharpness, FallsWithBlur) {
  for (const auto call :
       {DAXI_SharpnessTenengrad_8u_C1R, DAXI_SharpnessLaplacianVariance_8u_C1R, DAXI_SharpnessBrenner_8u_C1R}) {
    double before = INFINITY;
    for (const double width : {0.3, 1.0, 2.0, 4.0, 8.0}) {
      TestImage<uint8_t> image({64, 20});
      image.fill([=](int32_t x, int32_t) { return std::round(120 + 100 * std::tanh((x - 32) / width)); });
      const double sharpness = sharpnessOf(call, image);
      EXPECT_LT(sharpness, before) << width;
      before = sharpness;
    }
  }
}

TEST(Sharpness, NanShows) {
  TestImage<float> image({9, 9});
  image.fill([](int32_t x, int32_t y) { return x * y; });
  image.at(4, 4) = NAN;
  for (const auto call :
       {DAXI_SharpnessTenengrad_32f_C1R, DAXI_SharpnessLaplacianVariance_32f_C1R, DAXI_SharpnessBrenner_32f_C1R}) {
    EXPECT_TRUE(std::isnan(sharpnessOf(call, image)));
  }
}

}  // namespace
}  // namespace dax::test
