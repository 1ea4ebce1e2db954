#include "daxi/flat_morphology.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <compare>
#include <optional>
#include <vector>

#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

using Mask = TestImage<uint8_t>;
using Window = std::vector<std::pair<int32_t, int32_t>>;  // offsets from the anchor

template <class T>
struct Flat;
#define DAX_FLAT_TYPE(SUFFIX, TYPE)                                            \
  template <>                                                                  \
  struct Flat<TYPE> {                                                          \
    static constexpr auto kErodeMask = DAXI_GrayErodeMask_##SUFFIX##_C1R_MT;   \
    static constexpr auto kDilateMask = DAXI_GrayDilateMask_##SUFFIX##_C1R_MT; \
    static constexpr auto kMaskSize = DAXI_GrayErodeMaskBufferSize_##SUFFIX;   \
    static constexpr auto kErodeLine = DAXI_GrayErodeLine_##SUFFIX##_C1R_MT;   \
    static constexpr auto kDilateLine = DAXI_GrayDilateLine_##SUFFIX##_C1R_MT; \
    static constexpr auto kLineSize = DAXI_GrayErodeLineBufferSize_##SUFFIX;   \
  };
DAX_FLAT_TYPE(8u, uint8_t)
DAX_FLAT_TYPE(16u, uint16_t)
DAX_FLAT_TYPE(16s, int16_t)
DAX_FLAT_TYPE(32f, float)
#undef DAX_FLAT_TYPE

Window offsetsOf(const Mask& mask, const DaxiFlatMaskCfg& cfg) {
  const DaxiSize size = mask.size();
  const int32_t ax = cfg.anchorX < 0 ? size.width / 2 : cfg.anchorX;
  const int32_t ay = cfg.anchorY < 0 ? size.height / 2 : cfg.anchorY;
  Window window;
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      if (mask.at(x, y)) window.emplace_back(x - ax, y - ay);
    }
  }
  return window;
}

Window offsetsOf(const DaxiFlatLineCfg& cfg) {
  const int32_t m = std::max(std::abs(cfg.dx), std::abs(cfg.dy)), anchor = cfg.anchor < 0 ? m / 2 : cfg.anchor;
  const auto place = [m](int32_t k, int32_t d) {
    return m ? static_cast<int32_t>(std::floor((2.0 * k * d + m) / (2.0 * m))) : 0;
  };
  Window window;
  for (int32_t k = 0; k <= m; ++k) {
    window.emplace_back(place(k, cfg.dx) - place(anchor, cfg.dx), place(k, cfg.dy) - place(anchor, cfg.dy));
  }
  return window;
}

// A region of a larger image.
template <class T>
struct Scene {
  Scene(DaxiSize region, int32_t around, uint64_t seed)
      : size(region), margin(around), image({region.width + 2 * around, region.height + 2 * around}, 3) {
    image.randomize(seed);
  }
  const T* data() const { return &image.at(margin, margin); }

  // The extreme over a window of what map() makes of pixels.
  template <class Map>
  T extreme(int32_t x, int32_t y, const Window& window, bool isErosion, int32_t border, T value, Map map) const {
    std::optional<T> best;
    const auto take = [&](T v) {
      if (!best || (isErosion ? std::strong_order(v, *best) < 0 : std::strong_order(v, *best) > 0)) best = v;
    };
    for (const auto& offset : window) {
      const int32_t sign = isErosion ? 1 : -1, u = x + sign * offset.first, v = y + sign * offset.second;
      if (border == DAXI_BORDER_IN_MEMORY) {
        take(map(image.at(u + margin, v + margin)));
        continue;
      }
      const auto column = walkInside(u, size.width, border), row = walkInside(v, size.height, border);
      if (column && row) {
        take(map(image.at(static_cast<int32_t>(*column) + margin, static_cast<int32_t>(*row) + margin)));
      } else if (border == DAXI_BORDER_CONSTANT) {
        take(map(value));
      }
    }
    if (best) return *best;
    if constexpr (std::is_floating_point_v<T>) {
      return std::bit_cast<T>(isErosion ? 0x7FFFFFFF : 0xFFFFFFFF);
    } else {
      return isErosion ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    }
  }

  DaxiSize size;
  int32_t margin;
  TestImage<T> image;
};

// call(dst, step, buffer) against the definition.
template <class T, class Call, class Expected>
void expectEqual(const Scene<T>& scene, uint64_t bytes, Call call, Expected expectedAt) {
  TestImage<T> dst(scene.size, 2), expected(scene.size);
  expected.fill(expectedAt);
  dst.remember();
  GuardedBuffer<uint8_t> buffer(bytes);
  ASSERT_EQ(call(dst.data(), dst.step(), buffer.data()), DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, expected));
  ASSERT_TRUE(dst.paddingUntouched());
}

Mask randomMask(Random& random, int32_t maxSide) {
  Mask mask({1 + random.below(maxSide), 1 + random.below(maxSide)}, 1);
  const int32_t density = 1 + random.below(4);
  mask.fill([&](int32_t, int32_t) { return random.below(5) < density; });
  mask.at(random.below(mask.size().width), random.below(mask.size().height)) = 255;
  return mask;
}

DaxiFlatMaskCfg randomCfg(Random& random, DaxiSize mask, int32_t border) {
  return {random.below(mask.width + 1) - 1, random.below(mask.height + 1) - 1, border, 0,
          static_cast<double>(random.below(200))};
}

const auto itself = [](auto pixel) { return pixel; };

template <class>
class FlatMorphology : public testing::Test {};
using FlatPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(FlatMorphology, FlatPixels);

TYPED_TEST(FlatMorphology, MasksOfAnyShape) {
  using T = TypeParam;
  Random random(3);
  for (int32_t round = 0; round < 70; ++round) {
    const Mask mask = randomMask(random, 9);
    const DaxiFlatMaskCfg cfg = randomCfg(random, mask.size(), round % 7);
    const Scene<T> scene({1 + random.below(round % 5 ? 70 : 700), 1 + random.below(12)},
                         cfg.border == DAXI_BORDER_IN_MEMORY ? 9 : 0, static_cast<uint64_t>(round));
    const bool isErosion = round % 2;
    const auto function = isErosion ? Flat<T>::kErodeMask : Flat<T>::kDilateMask;
    uint64_t bytes = 0;
    ASSERT_EQ(Flat<T>::kMaskSize(scene.size, mask.data(), mask.step(), mask.size(), &cfg, &bytes), DAX_STS_OK);
    MockPool pool;
    expectEqual(
        scene, bytes,
        [&](T* dst, int32_t step, void* buffer) {
          return function(&pool, 1 + round % 3, scene.data(), scene.image.step(), dst, step, scene.size, mask.data(),
                          mask.step(), mask.size(), &cfg, buffer);
        },
        [&](int32_t x, int32_t y) {
          return scene.extreme(x, y, offsetsOf(mask, cfg), isErosion, cfg.border, static_cast<T>(cfg.value), itself);
        });
  }
}

TYPED_TEST(FlatMorphology, LinesAtAnyAngle) {
  using T = TypeParam;
  Random random(5);
  for (int32_t round = 0; round < 60; ++round) {
    DaxiFlatLineCfg cfg = {random.below(41) - 20, random.below(41) - 20, -1, round % 7, 50};
    if (round % 10 == 0) cfg.dy = 0;
    cfg.anchor = random.below(std::max(std::abs(cfg.dx), std::abs(cfg.dy)) + 2) - 1;
    const Scene<T> scene({1 + random.below(60), 1 + random.below(30)}, cfg.border == DAXI_BORDER_IN_MEMORY ? 21 : 0,
                         static_cast<uint64_t>(round));
    const bool isErosion = round % 2;
    const auto function = isErosion ? Flat<T>::kErodeLine : Flat<T>::kDilateLine;
    uint64_t bytes = 0;
    ASSERT_EQ(Flat<T>::kLineSize(scene.size, &cfg, &bytes), DAX_STS_OK);
    expectEqual(
        scene, bytes,
        [&](T* dst, int32_t step, void* buffer) {
          return function(nullptr, 1, scene.data(), scene.image.step(), dst, step, scene.size, &cfg, buffer);
        },
        [&](int32_t x, int32_t y) {
          return scene.extreme(x, y, offsetsOf(cfg), isErosion, cfg.border, static_cast<T>(cfg.value), itself);
        });
  }
}

TEST(BinaryMorphology, ErodeDilateAndHitOrMiss) {
  Random random(8);
  for (int32_t round = 0; round < 90; ++round) {
    Mask hit = randomMask(random, 4), miss(hit.size());
    miss.fill([&](int32_t x, int32_t y) { return hit.at(x, y) == 0 && random.below(2); });
    const DaxiFlatMaskCfg cfg = randomCfg(random, hit.size(), round % 7);
    Scene<uint8_t> scene({1 + random.below(60), 1 + random.below(12)}, 5, static_cast<uint64_t>(round));
    const int32_t density = 1 + random.below(8);
    scene.image.fill([&](int32_t, int32_t) { return random.below(9) < density ? 1 + random.below(255) : 0; });
    const auto extremeAt = [&](int32_t x, int32_t y, const Mask& mask, bool isErosion, bool isSet) {
      return scene.extreme(x, y, offsetsOf(mask, cfg), isErosion, cfg.border, static_cast<uint8_t>(cfg.value),
                           [&](uint8_t pixel) { return static_cast<uint8_t>((pixel != 0) == isSet ? 255 : 0); });
    };
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_HitOrMissBufferSize_8u(scene.size, hit.data(), hit.step(), miss.data(), miss.step(), hit.size(),
                                          &cfg, &bytes),
              DAX_STS_OK);
    const auto dilate = round % 3 == 0 ? DAXI_DilateMask_8u_C1R : DAXI_ErodeMask_8u_C1R;
    expectEqual(
        scene, bytes,
        [&](uint8_t* dst, int32_t step, void* buffer) {
          if (round % 3 == 2) {
            return DAXI_HitOrMiss_8u_C1R(scene.data(), scene.image.step(), dst, step, scene.size, hit.data(),
                                         hit.step(), miss.data(), miss.step(), hit.size(), &cfg, buffer);
          }
          return dilate(scene.data(), scene.image.step(), dst, step, scene.size, hit.data(), hit.step(), hit.size(),
                        &cfg, buffer);
        },
        [&](int32_t x, int32_t y) {
          const uint8_t own = extremeAt(x, y, hit, round % 3 != 0, true);
          return round % 3 == 2 ? std::min(own, extremeAt(x, y, miss, true, false)) : own;
        });
  }
}

TEST(BinaryMorphology, MasksOfHitOrMissAreApartAndNotBothEmpty) {
  const uint8_t one[] = {1, 0}, other[] = {0, 1}, none[] = {0, 0}, src[4] = {};
  uint8_t dst[4];
  DaxiFlatMaskCfg cfg;
  ASSERT_EQ(DAXI_FlatMaskDefaultCfg(&cfg), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(1 << 16);
  const auto run = [&](const uint8_t* hit, const uint8_t* miss) {
    return DAXI_HitOrMiss_8u_C1R(src, 4, dst, 4, {4, 1}, hit, 2, miss, 2, {2, 1}, &cfg, buffer.data());
  };
  EXPECT_EQ(run(one, other), DAX_STS_OK);
  EXPECT_EQ(run(none, other), DAX_STS_OK);
  EXPECT_EQ(run(one, one), DAX_STS_BAD_PARAM);
  EXPECT_EQ(run(none, none), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
