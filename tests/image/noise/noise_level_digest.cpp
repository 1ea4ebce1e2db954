#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Shading and noise of few levels.
template <class T>
TestImage<T> shaded(uint64_t seed) {
  Random random(seed);
  TestImage<T> image({203, 141}, 3);
  image.fill([&](int32_t x, int32_t y) { return 40 + x / 2 + y / 3 + random.below(16 + x / 8); });
  return image;
}

template <class T, class Defaults, class Function, class Frames>
void addLevels(Digest& digest, void* pool, uint32_t threads, Defaults defaults, Function function, Frames ofFrames) {
  const TestImage<T> first = shaded<T>(1), second = shaded<T>(2), third = shaded<T>(3);
  const T* const frames[] = {first.data(), second.data(), third.data()};
  DaxiNoiseLevelCfg cfg;
  ASSERT_EQ(defaults(&cfg), DAX_STS_OK);
  uint64_t bytes = 0, frameBytes = 0;
  ASSERT_EQ(DAXI_NoiseLevelFunctionBufferSize(first.size(), &cfg, &bytes), DAX_STS_OK);
  ASSERT_EQ(DAXI_NoiseLevelFramesBufferSize(3, &cfg, &frameBytes), DAX_STS_OK);
  std::vector<double> buffer(std::max(bytes, frameBytes) / sizeof(double));
  std::vector<DaxiNoiseLevel> points(16);
  int32_t count = 0;
  ASSERT_EQ(
      function(pool, threads, first.data(), first.step(), first.size(), &cfg, points.data(), &count, buffer.data()),
      DAX_STS_OK);
  digest.add(points.data(), static_cast<size_t>(count) * sizeof(DaxiNoiseLevel));
  ASSERT_EQ(ofFrames(frames, 3, first.step(), first.size(), &cfg, points.data(), &count, buffer.data()), DAX_STS_OK);
  digest.add(points.data(), static_cast<size_t>(count) * sizeof(DaxiNoiseLevel));
}

TEST(Digests, NoiseLevels) {
  for (const uint32_t threads : {1u, 2u, 16u}) {
    AnyPool pool(threads);
    Digest digest;
    addLevels<uint16_t>(digest, pool.get(), threads, DAXI_NoiseLevelDefaultCfg_16u, DAXI_NoiseLevelFunction_16u_C1R_MT,
                        DAXI_NoiseLevelFrames_16u_C1R);
    addLevels<float>(digest, pool.get(), threads, DAXI_NoiseLevelDefaultCfg_32f, DAXI_NoiseLevelFunction_32f_C1R_MT,
                     DAXI_NoiseLevelFrames_32f_C1R);
    EXPECT_EQ(digest.value(), 0x758615D6AE605EA1u) << threads;
  }
}

TEST(Digests, PhotonTransfer) {
  std::vector<DaxiPhotonTransferPoint> points;
  const TestImage<float> first = shaded<float>(4), second = shaded<float>(5);
  for (int32_t i = 1; i <= 9; ++i) {
    TestImage<float> a(first.size()), b(first.size());
    a.fill([&](int32_t x, int32_t y) { return static_cast<float>(i) * first.at(x, y) / 3; });
    b.fill([&](int32_t x, int32_t y) { return static_cast<float>(i) * second.at(x, y) / 3; });
    const float* const frames[] = {a.data(), b.data()};
    DaxiPhotonTransferPoint point = {static_cast<double>(i), {}, {3, 0.5, 0, 0}};
    ASSERT_EQ(DAXI_FrameNoise_32f_C1R(frames, 2, a.step(), a.size(), 0, 300, &point.bright), DAX_STS_OK);
    points.push_back(point);
  }
  DaxiPhotonTransfer result = {};
  ASSERT_EQ(DAXI_PhotonTransfer(points.data(), 9, 1.0 / 12, &result), DAX_STS_OK);
  Digest digest;
  digest.add(points.data(), points.size() * sizeof points[0]).add(&result, sizeof result);
  EXPECT_EQ(digest.value(), 0xBEDAEA4EB838F2A9u);
}

}  // namespace
}  // namespace dax::test
