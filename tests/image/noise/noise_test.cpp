#include "daxi/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/image/noise/noise_images.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

template <class T>
struct NoiseCalls;
#define NOISE_CALLS(SUFFIX, T)                                                                                \
  template <>                                                                                                 \
  struct NoiseCalls<T> {                                                                                      \
    static constexpr auto immerkaer = DAXI_NoiseImmerkaer_##SUFFIX##_C1R, mad = DAXI_NoiseMad_##SUFFIX##_C1R; \
    static constexpr auto immerkaerMt = DAXI_NoiseImmerkaer_##SUFFIX##_C1R_MT,                                \
                          madMt = DAXI_NoiseMad_##SUFFIX##_C1R_MT;                                            \
    static constexpr auto immerkaerBytes = DAXI_NoiseImmerkaerBufferSize_##SUFFIX##_MT;                       \
    static constexpr auto madBytes = DAXI_NoiseMadBufferSize_##SUFFIX##_MT;                                   \
  };
NOISE_CALLS(8u, uint8_t)
NOISE_CALLS(16u, uint16_t)
NOISE_CALLS(16s, int16_t)
NOISE_CALLS(32f, float)
#undef NOISE_CALLS

template <class T, class Call>
double sigmaOf(Call call, const TestImage<T>& image, double low = -kInf, double high = kInf) {
  double sigma = -1;
  EXPECT_EQ(call(image.data(), image.step(), image.size(), low, high, &sigma), DAX_STS_OK);
  return sigma;
}

// The responses of all windows that count, one pixel at a time.
template <class T>
std::vector<double> responses(const TestImage<T>& image, double low, double high) {
  const double weights[3] = {1, -2, 1};
  std::vector<double> all;
  for (int32_t y = 1; y + 1 < image.size().height; ++y) {
    for (int32_t x = 1; x + 1 < image.size().width; ++x) {
      double sum = 0;
      bool counts = true;
      for (int32_t i = 0; i < 9; ++i) {
        const double v = image.at(x - 1 + i % 3, y - 1 + i / 3);
        sum += weights[i % 3] * weights[i / 3] * v;
        counts &= v > low && v < high;
      }
      if (counts) all.push_back(std::fabs(sum));
    }
  }
  std::sort(all.begin(), all.end());
  return all;
}

double meanOf(const std::vector<double>& values) {
  double sum = 0;
  for (const double v : values) sum += v;
  return sum / static_cast<double>(values.size());
}

// The point up to which half of the spread values lie, by bisection.
double spreadMedian(const std::vector<double>& values) {
  double low = 0, high = values.back() + 1;
  for (int i = 0; i < 100; ++i) {
    const double middle = (low + high) / 2;
    double below = 0;
    for (const double v : values) below += v == 0 ? std::min(2 * middle, 1.0) : std::clamp(middle - v + 0.5, 0.0, 1.0);
    (below < static_cast<double>(values.size()) / 2 ? low : high) = middle;
  }
  return low;
}

template <class T>
class NoiseOf : public ::testing::Test {};
using NoiseTypes = ::testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(NoiseOf, NoiseTypes);

TYPED_TEST(NoiseOf, EqualsTheDefinition) {
  using T = TypeParam;
  for (const DaxiSize size : {DaxiSize{3, 3}, DaxiSize{40, 7}, DaxiSize{31, 22}}) {
    for (const auto& [low, high] : {std::pair{-kInf, kInf}, std::pair{99.5, 140.0}}) {
      TestImage<T> image = noisyScene<T>(size, 5);
      if (std::is_floating_point_v<T>) image.at(2, 2) = static_cast<T>(NAN);
      const std::vector<double> all = responses(image, low, high);
      double sigma = -1;
      const DaxStatus status = NoiseCalls<T>::immerkaer(image.data(), image.step(), image.size(), low, high, &sigma);
      ASSERT_EQ(status, all.empty() ? DAX_STS_DEGENERATE : DAX_STS_OK);
      if (all.empty()) continue;
      const double rounding = std::is_integral_v<T> ? 1.0 / 12 : 0;
      const auto corrected = [=](double s) { return std::sqrt(std::max(s * s - rounding, 0.0)); };
      EXPECT_NEAR(sigma, corrected(std::sqrt(std::acos(-1.0) / 2) / 6 * meanOf(all)), 1e-9);
      const double median = std::is_integral_v<T> ? spreadMedian(all) : all[(all.size() - 1) / 2];
      EXPECT_NEAR(sigmaOf(NoiseCalls<T>::mad, image, low, high), corrected(median / 6 / 0.6744897501960817), 1e-6);
    }
  }
}

// Within 5 % on images with shading and edges; rounding and clipping must not show.
TYPED_TEST(NoiseOf, FindsTheNoiseOfScenes) {
  using T = TypeParam;
  for (const double sigma : {1.0, 3.0, 10.0, 30.0}) {
    const TestImage<T> image = noisyScene<T>({640, 480}, sigma, 1, static_cast<uint64_t>(sigma));
    EXPECT_NEAR(sigmaOf(NoiseCalls<T>::immerkaer, image, 0, 255), sigma, 0.05 * sigma);
    EXPECT_NEAR(sigmaOf(NoiseCalls<T>::mad, image, 0, 255), sigma, 0.05 * sigma);
  }
}

TYPED_TEST(NoiseOf, IsTheSameOnAPool) {
  using T = TypeParam;
  const TestImage<T> image = noisyScene<T>({61, 37}, 20);
  for (const uint32_t threads : {1u, 2u, 7u, 100u}) {
    MockPool pool;
    uint64_t immerkaerBytes = 0, madBytes = 0;
    ASSERT_EQ(NoiseCalls<T>::immerkaerBytes(image.size(), &immerkaerBytes), DAX_STS_OK);
    ASSERT_EQ(NoiseCalls<T>::madBytes(image.size(), threads, &madBytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> forImmerkaer(immerkaerBytes), forMad(madBytes);
    double sigma = -1;
    ASSERT_EQ(NoiseCalls<T>::immerkaerMt(&pool, threads, image.data(), image.step(), image.size(), 80, 200, &sigma,
                                         forImmerkaer.data()),
              DAX_STS_OK);
    EXPECT_EQ(sigma, sigmaOf(NoiseCalls<T>::immerkaer, image, 80, 200));
    ASSERT_EQ(
        NoiseCalls<T>::madMt(&pool, threads, image.data(), image.step(), image.size(), 80, 200, &sigma, forMad.data()),
        DAX_STS_OK);
    EXPECT_EQ(sigma, sigmaOf(NoiseCalls<T>::mad, image, 80, 200));
    EXPECT_EQ(pool.calls > 0, threads > 1);
  }
}

TEST(Noise, LargestResponsesAndNoNoise) {
  TestImage<uint16_t> image({9, 9});
  image.fill([](int32_t x, int32_t y) { return (x + y) % 2 ? 65535 : 0; });
  EXPECT_NEAR(sigmaOf(DAXI_NoiseMad_16u_C1R, image), 524280 / 6 / 0.6744897501960817, 1);
  image.fill([](int32_t x, int32_t y) { return 100 * x + y; });
  EXPECT_EQ(sigmaOf(DAXI_NoiseMad_16u_C1R, image), 0);
  EXPECT_EQ(sigmaOf(DAXI_NoiseImmerkaer_16u_C1R, image), 0);
  double sigma = -1;
  EXPECT_EQ(DAXI_NoiseMad_16u_C1R(image.data(), 9, image.size(), 5, NAN, &sigma), DAX_STS_BAD_PARAM);
  TestImage<int16_t> both({9, 9});
  both.fill([](int32_t x, int32_t y) { return (x + y) % 2 ? 32767 : -32768; });
  EXPECT_NEAR(sigmaOf(DAXI_NoiseMad_16s_C1R, both), 524280 / 6 / 0.6744897501960817, 1);
}

}  // namespace
}  // namespace dax::test
