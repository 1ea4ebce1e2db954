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

// Whether a pixel is what the definition says at the place, or at one within `slack` of it.
template <class T, class Pixel>
bool isSampled(T found, T before, const Pixel& pixel, DaxiSize size, const oracle::Sampling& how, Place place,
               double slack) {
  for (int i = 0; i < 4; ++i) {
    const auto exact = oracle::sampled(pixel, size.width, size.height, how, place[0] + (i & 1 ? slack : -slack),
                                       place[1] + (i & 2 ? slack : -slack));
    if (!exact) {
      if (sameBits(found, before)) return true;
      continue;
    }
    using Limits = std::numeric_limits<T>;
    const double level =
        std::clamp<double>(*exact, static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max()));
    if (std::fabs(found - level) <= (std::is_integral_v<T> ? 0.5 + 1e-6 : std::fabs(level) * 6e-8 + 1e-3)) return true;
  }
  return false;
}

// Runs an operation, plain and on a pool, over a destination with padding, and compares each pixel. positionOf(x, y) of
// absolute indices.
template <class T, class Run, class PositionOf>
void expectSampled(const TestImage<T>& src, int32_t channels, const DaxiRect& rect, const oracle::Sampling& how,
                   const Run& run, const PositionOf& positionOf, double slack = 0x1p-26) {
  const DaxiSize size = {src.size().width / channels, src.size().height};
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
    for (int32_t x = 0; x < rect.width * channels; ++x) {
      const auto pixel = [&](int32_t i, int32_t j) { return src.at(i * channels + x % channels, j); };
      const Place place = positionOf(rect.x + x / channels, rect.y + y);
      ASSERT_TRUE(isSampled(dst.at(x, y), before.at(x, y), pixel, size, how, place, slack))
          << x << ", " << y << " at " << place[0] << ", " << place[1] << ": " << dst.at(x, y) << ", interpolation "
          << how.interpolation << ", border " << how.border;
    }
  }
}

constexpr int32_t kWarpBorders[] = {DAXI_BORDER_REPLICATE, DAXI_BORDER_MIRROR,   DAXI_BORDER_SYMMETRIC,
                                    DAXI_BORDER_CIRCULAR,  DAXI_BORDER_CONSTANT, DAXI_BORDER_LEAVE};

}  // namespace dax::test
