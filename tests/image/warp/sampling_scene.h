// What tests of geometric operations share: noise, and the comparison with the definition.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tests/image/warp/sampling_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {

// Pixels of a type, and the two layouts of an operation: plain, and on a pool.
template <class T, class Cfg>
struct WarpExport {
  DaxStatus (*plain)(const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, DaxiRect, const Cfg*);
  DaxStatus (*pooled)(void*, uint32_t, const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, DaxiRect, const Cfg*);
};

template <class T>
TestImage<T> warpNoise(DaxiSize size, uint64_t seed) {
  TestImage<T> image(size, 2);
  Random random(seed);
  image.fill([&](int32_t, int32_t) {
    const auto level = random.below(1 << 16);
    return std::is_same_v<T, uint8_t> ? level >> 8 : std::is_same_v<T, int16_t> ? level - (1 << 15) : level;
  });
  return image;
}

template <class Cfg>
oracle::Sampling samplingOf(const Cfg& cfg, int bits) {
  return {cfg.interpolation, cfg.border, bits == 16 ? std::nearbyint(cfg.value) : double{static_cast<float>(cfg.value)},
          cfg.cubicA, bits};
}
template <class T>
constexpr int kFraction = std::is_integral_v<T> ? 16 : 24;

using Place = std::array<double, 2>;

// Whether the value found is the exact one, or the one before where nothing was to be written.
template <class T>
bool isLevel(T found, T before, std::optional<double> exact) {
  if (!exact) return sameBits(found, before);
  using Limits = std::numeric_limits<T>;
  const double level =
      std::clamp<double>(*exact, static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max()));
  return std::fabs(found - level) <= (std::is_integral_v<T> ? 0.5 + 1e-6 : std::fabs(level) * 6e-8 + 1e-3);
}

// Whether each channel of a pixel is what the definition says at the place, or at one within `slack` of it.
template <class T>
bool isSampled(const T* found, const T* before, const TestImage<T>& src, int32_t channels, const oracle::Sampling& how,
               Place place, double slack) {
  int32_t explained = 0;
  for (int k = 0; k < 4 && explained != (1 << channels) - 1; ++k) {
    const oracle::Surroundings around(src.size().width / channels, src.size().height, how,
                                      place[0] + (k & 1 ? slack : -slack), place[1] + (k & 2 ? slack : -slack));
    for (int32_t c = 0; c < channels; ++c) {
      const auto pixel = [&](int32_t i, int32_t j) { return src.at(i * channels + c, j); };
      explained |= isLevel(found[c], before[c], around.sampled(pixel)) << c;
    }
  }
  return explained == (1 << channels) - 1;
}

// Runs an operation, plain and on a pool, over a destination with padding, and compares each pixel. positionOf(x, y) of
// absolute indices.
template <class T, class Run, class PositionOf>
void expectSampled(const TestImage<T>& src, int32_t channels, const DaxiRect& rect, const oracle::Sampling& how,
                   const Run& run, const PositionOf& positionOf, double slack = 0x1p-26) {
  TestImage<T> dst({rect.width * channels, rect.height}, 3), tiled(dst.size()), before(dst.size());
  before.randomize(5);
  for (TestImage<T>* const each : {&dst, &tiled}) each->fill([&](int32_t x, int32_t y) { return before.at(x, y); });
  dst.remember();
  MockPool pool;
  ASSERT_EQ(run(nullptr, dst.data(), dst.step()), DAX_STS_OK);
  ASSERT_EQ(run(&pool, tiled.data(), tiled.step()), DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
  for (int32_t y = 0; y < rect.height; ++y) {
    for (int32_t x = 0; x < rect.width; ++x) {
      const Place place = positionOf(rect.x + x, rect.y + y);
      const T* const found = &dst.at(x * channels, y);
      ASSERT_TRUE(isSampled(found, &before.at(x * channels, y), src, channels, how, place, slack))
          << x << ", " << y << " at " << place[0] << ", " << place[1] << ": " << found[0] << ", interpolation "
          << how.interpolation << ", border " << how.border;
    }
  }
}

constexpr int32_t kWarpBorders[] = {DAXI_BORDER_REPLICATE, DAXI_BORDER_MIRROR,   DAXI_BORDER_SYMMETRIC,
                                    DAXI_BORDER_CIRCULAR,  DAXI_BORDER_CONSTANT, DAXI_BORDER_LEAVE};

}  // namespace dax::test
