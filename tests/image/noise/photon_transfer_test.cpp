#include "daxi/photon_transfer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/image/noise/noise_images.h"

namespace dax::test {
namespace {

// A camera whose pixels hold electrons: light as a Poisson process, read noise, gain, black level, white.
struct Camera {
  double gain, readNoise, black, fullWell, white;
  double curvature = 0;  // of the response, at the full well

  TestImage<uint16_t> frame(double electrons, uint64_t seed) const {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> read(0, readNoise);
    std::poisson_distribution<int64_t> light(std::max(electrons, 1e-9));
    TestImage<uint16_t> image({160, 120}, 2);
    image.fill([&](int32_t, int32_t) {
      double held = electrons > 0 ? static_cast<double>(light(engine)) : 0;
      held = std::min(held - curvature * held * held / fullWell, fullWell) + read(engine);
      return std::clamp(std::round(gain * held + black), 0.0, white);
    });
    return image;
  }
};

DaxiFrameNoise pairOf(const Camera& camera, double electrons, uint64_t seed) {
  const TestImage<uint16_t> first = camera.frame(electrons, seed), second = camera.frame(electrons, seed + 1);
  const uint16_t* const frames[] = {first.data(), second.data()};
  DaxiFrameNoise noise{};
  EXPECT_EQ(DAXI_FrameNoise_16u_C1R(frames, 2, first.step(), first.size(), 0, camera.white, &noise), DAX_STS_OK);
  return noise;
}

std::vector<DaxiPhotonTransferPoint> curveOf(const Camera& camera, int steps, double brightest = 1.2) {
  std::vector<DaxiPhotonTransferPoint> points;
  const DaxiFrameNoise dark = pairOf(camera, 0, 1000);
  for (int i = 1; i <= steps; ++i) {
    const double share = brightest * i / steps;
    points.push_back({share * 10, pairOf(camera, share * camera.fullWell, static_cast<uint64_t>(2 * i)), dark});
  }
  return points;
}

DaxiPhotonTransfer transferOf(const std::vector<DaxiPhotonTransferPoint>& points) {
  DaxiPhotonTransfer result{};
  EXPECT_EQ(DAXI_PhotonTransfer(points.data(), static_cast<int32_t>(points.size()), 1.0 / 12, &result), DAX_STS_OK);
  return result;
}

// The gain within 2 %, of cameras of 12 and of 8 bits.
TEST(PhotonTransfer, FindsTheCamera) {
  for (const Camera& camera :
       {Camera{0.4, 5, 100, 9500, 4095}, Camera{0.025, 30, 6, 9500, 255}, Camera{3, 2, 60, 1200, 4095}}) {
    const DaxiPhotonTransfer found = transferOf(curveOf(camera, 24));
    EXPECT_EQ(found.flags, 0u);
    EXPECT_NEAR(found.gain, camera.gain, 0.02 * camera.gain);
    EXPECT_LT(std::fabs(found.gain - camera.gain), 5 * found.gainError);
    EXPECT_NEAR(found.readNoise, camera.readNoise, 0.03 * camera.readNoise);
    EXPECT_NEAR(found.darkLevel, camera.black, 0.05 * camera.black);
    EXPECT_NEAR(found.saturation, camera.gain * camera.fullWell, 0.12 * camera.gain * camera.fullWell);
    EXPECT_NEAR(found.responsivity, camera.gain * camera.fullWell / 10, 0.01 * camera.gain * camera.fullWell / 10);
    EXPECT_LT(found.linearityError, 0.5);
    EXPECT_DOUBLE_EQ(found.fullWell, found.saturation / found.gain);
    EXPECT_DOUBLE_EQ(found.maxSnr, std::sqrt(found.fullWell));
  }
}

// Rounding hides the noise in the dark: the read noise is a bound, and what is subtracted from the bright wrong.
TEST(PhotonTransfer, BelowTheRounding) {
  const Camera camera = {0.025, 12, 3, 9500, 255};
  const DaxiPhotonTransfer found = transferOf(curveOf(camera, 24));
  EXPECT_EQ(found.flags, static_cast<uint32_t>(DAXI_PHOTON_TRANSFER_QUANTISED));
  EXPECT_GE(found.readNoise, camera.readNoise);
  EXPECT_NEAR(found.gain, camera.gain, 0.05 * camera.gain);
}

TEST(PhotonTransfer, TellsWhatIsWrong) {
  // A black level in the middle of the noise.
  EXPECT_NE(transferOf(curveOf({0.4, 5, 1, 9500, 4095}, 12)).flags & DAXI_PHOTON_TRANSFER_CLIPPED_DARK, 0u);
  // Never saturated; then the brightest point has the largest variance.
  const DaxiPhotonTransfer dim = transferOf(curveOf({0.4, 5, 100, 9500, 4095}, 12, 0.6));
  EXPECT_EQ(dim.flags, static_cast<uint32_t>(DAXI_PHOTON_TRANSFER_NOT_SATURATED));
  EXPECT_EQ(dim.saturated, 11);
  // A response that bends by 10 % at the full well: 5 % either way of a line, at the most.
  Camera bent = {0.4, 5, 100, 9500, 4095};
  bent.curvature = 0.1;
  const DaxiPhotonTransfer curved = transferOf(curveOf(bent, 24));
  EXPECT_GT(curved.linearityError, 0.7);
  EXPECT_GT(curved.linearitySpan, curved.linearityError);
  auto points = curveOf({0.4, 5, 100, 9500, 4095}, 12);
  for (auto& point : points) point.exposure = 0;
  const DaxiPhotonTransfer unknown = transferOf(points);
  EXPECT_EQ(unknown.flags, static_cast<uint32_t>(DAXI_PHOTON_TRANSFER_NO_LINEARITY));
  EXPECT_EQ(unknown.responsivity, 0);
}

// Numbers without scatter: each quantity is what its formula says.
TEST(PhotonTransfer, EqualsTheFormulas) {
  std::vector<DaxiPhotonTransferPoint> points;
  for (int i = 1; i <= 11; ++i) {
    const double x = 100.0 * i;
    points.push_back({2.0 * i, {20 + x, i < 11 ? 4 + 0.5 * x : 100, 0, 0}, {20, 4, 0.004, 0}});
  }
  const DaxiPhotonTransfer found = transferOf(points);
  EXPECT_NEAR(found.gain, 0.5, 1e-14);
  EXPECT_NEAR(found.gainError, 0, 1e-14);
  EXPECT_EQ(found.gainPoints, 7);
  EXPECT_EQ(found.linearityPoints, 9);
  EXPECT_EQ(found.saturated, 9);
  EXPECT_DOUBLE_EQ(found.saturation, 1000);
  EXPECT_DOUBLE_EQ(found.readNoise, 2 * std::sqrt(4 - 1.0 / 12));
  EXPECT_DOUBLE_EQ(found.dynamicRange, 2000 / (std::sqrt(16.25) + 0.5));
  EXPECT_NEAR(found.responsivity, 50, 1e-9);
  EXPECT_NEAR(found.offset, 0, 1e-9);
  EXPECT_NEAR(found.linearityError, 0, 1e-9);
  DaxiPhotonTransfer result{};
  EXPECT_EQ(DAXI_PhotonTransfer(points.data(), 4, 1.0 / 12, &result), DAX_STS_DEGENERATE);
  points[3].bright.variance = NAN;
  EXPECT_EQ(DAXI_PhotonTransfer(points.data(), 11, 1.0 / 12, &result), DAX_STS_BAD_PARAM);
}

TEST(PhotonTransfer, NoiseOfFrames) {
  // The light rises from frame to frame, and the scene has texture: neither is noise.
  for (const size_t count : {2u, 5u}) {
    std::vector<TestImage<float>> frames;
    std::vector<const float*> pointers;
    for (size_t i = 0; i < count; ++i) frames.push_back(noisyScene<float>({640, 480}, 3, 1, i + 1));
    for (size_t i = 0; i < count; ++i) {
      TestImage<float>& frame = frames[i];
      frame.fill([&](int32_t x, int32_t y) { return frame.at(x, y) + 10 * static_cast<float>(i); });
      pointers.push_back(frame.data());
    }
    DaxiFrameNoise noise{};
    ASSERT_EQ(DAXI_FrameNoise_32f_C1R(pointers.data(), static_cast<int32_t>(count), frames[0].step(), frames[0].size(),
                                      -INFINITY, 120, &noise),
              DAX_STS_OK);
    double sum = 0, white = 0;
    for (const auto& frame : frames) {
      for (int32_t i = 0; i < 640 * 480; ++i)
        sum += frame.at(i % 640, i / 640), white += frame.at(i % 640, i / 640) >= 120;
    }
    const double all = 640.0 * 480 * static_cast<double>(count);
    EXPECT_NEAR(noise.mean, sum / all, 1e-9 * noise.mean);
    EXPECT_NEAR(noise.variance, 9, 0.1);
    EXPECT_EQ(noise.black, 0);
    EXPECT_DOUBLE_EQ(noise.white, white / all);
    frames[1].at(5, 5) = NAN;
    ASSERT_EQ(DAXI_FrameNoise_32f_C1R(pointers.data(), static_cast<int32_t>(count), frames[0].step(), frames[0].size(),
                                      0, 1, &noise),
              DAX_STS_OK);
    EXPECT_TRUE(std::isnan(noise.variance) && std::isnan(noise.mean));
  }
  // The largest numbers: -32768 and 32767 in turn.
  std::vector<TestImage<int16_t>> extremes;
  std::vector<const int16_t*> pointers;
  for (int i = 0; i < 1024; ++i) {
    extremes.emplace_back(DaxiSize{3, 2}).fill([=](int32_t, int32_t) { return i % 2 ? 32767 : -32768; });
    pointers.push_back(extremes.back().data());
  }
  extremes[0].at(1, 1) = 32767, extremes[1].at(1, 1) = -32768;
  DaxiFrameNoise noise{};
  ASSERT_EQ(DAXI_FrameNoise_16s_C1R(pointers.data(), 1024, 3, {3, 2}, -1, 1, &noise), DAX_STS_OK);
  EXPECT_EQ(noise.mean, -0.5);
  // All pixels have the same variance over the frames; that of the means lacks what the swapped pixel does to two of them.
  const double step = 65535, full = step * step / 4 * 1024 / 1023, off = step / 6;
  const double means = full - (2 * (step / 2) * (step / 2) - 2 * (step / 2 - off) * (step / 2 - off)) / 1023;
  EXPECT_NEAR(noise.variance, full - means, 1e-6 * full);
  EXPECT_EQ(noise.black, 0.5);
}

}  // namespace
}  // namespace dax::test
