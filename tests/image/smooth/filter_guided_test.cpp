#include "daxi/filter_guided.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Guided;
#define DAX_GUIDED(SUFFIX, T)                                                       \
  template <>                                                                       \
  struct Guided<T> {                                                                \
    static constexpr auto kBytes = DAXI_FilterGuidedBufferSize_##SUFFIX;            \
    static constexpr auto kPooledBytes = DAXI_FilterGuidedBufferSize_##SUFFIX##_MT; \
    static constexpr auto kPlain = DAXI_FilterGuided_##SUFFIX##_C1R;                \
    static constexpr auto kPooled = DAXI_FilterGuided_##SUFFIX##_C1R_MT;            \
  };
DAX_GUIDED(8u, uint8_t)
DAX_GUIDED(16u, uint16_t)
DAX_GUIDED(32f, float)
#undef DAX_GUIDED

struct Plane {
  DaxiSize size;
  std::vector<long double> values;
  Plane(DaxiSize s) : size(s), values(static_cast<size_t>(s.width) * static_cast<size_t>(s.height)) {}
  long double& at(int32_t x, int32_t y) {
    return values[static_cast<size_t>(y) * static_cast<size_t>(size.width) + static_cast<size_t>(x)];
  }
};

template <class Value>
long double windowMean(DaxiSize size, int32_t radius, int32_t x, int32_t y, Value value) {
  long double sum = 0, n = 0;
  for (int32_t v = std::max(y - radius, 0); v <= std::min(y + radius, size.height - 1); ++v) {
    for (int32_t u = std::max(x - radius, 0); u <= std::min(x + radius, size.width - 1); ++u) sum += value(u, v), ++n;
  }
  return sum / n;
}

// The definition, on pixels that are picked before, and means that are interpolated afterwards.
template <class T>
Plane guidedByDefinition(const TestImage<T>& src, const TestImage<T>& guide, const DaxiFilterGuidedCfg& cfg) {
  const int32_t s = cfg.subsample, radius = s == 1 ? cfg.radius : std::max(cfg.radius / s, 1);
  std::vector<int32_t> xs, ys;
  for (int32_t x = std::min(s / 2, src.size().width - 1); x < src.size().width; x += s) xs.push_back(x);
  for (int32_t y = std::min(s / 2, src.size().height - 1); y < src.size().height; y += s) ys.push_back(y);
  const DaxiSize size = {static_cast<int32_t>(xs.size()), static_cast<int32_t>(ys.size())};
  const auto I = [&](int32_t x, int32_t y) {
    return static_cast<long double>(guide.at(xs[static_cast<size_t>(x)], ys[static_cast<size_t>(y)]));
  };
  const auto p = [&](int32_t x, int32_t y) {
    return static_cast<long double>(src.at(xs[static_cast<size_t>(x)], ys[static_cast<size_t>(y)]));
  };
  Plane a(size), b(size), meanA(size), meanB(size);
  const auto each = [&](auto use) {
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) use(x, y);
    }
  };
  each([&](int32_t x, int32_t y) {
    const auto mean = [&](auto value) { return windowMean(size, radius, x, y, value); };
    const long double mI = mean(I), mp = mean(p);
    const long double cov = mean([&](int32_t u, int32_t v) { return (I(u, v) - mI) * (p(u, v) - mp); });
    const long double var = mean([&](int32_t u, int32_t v) { return (I(u, v) - mI) * (I(u, v) - mI); });
    a.at(x, y) = var + cfg.eps == 0 ? 0 : cov / (var + cfg.eps);
    b.at(x, y) = mp - a.at(x, y) * mI;
  });
  each([&](int32_t x, int32_t y) {
    meanA.at(x, y) = windowMean(size, radius, x, y, [&](int32_t u, int32_t v) { return a.at(u, v); });
    meanB.at(x, y) = windowMean(size, radius, x, y, [&](int32_t u, int32_t v) { return b.at(u, v); });
  });
  const auto interpolated = [&](Plane& plane, int32_t x, int32_t y) {
    const auto place = [&](int32_t i, int32_t n) {
      return std::clamp<long double>(static_cast<long double>(i - s / 2) / s, 0, n - 1);
    };
    const long double u = place(x, size.width), v = place(y, size.height);
    const auto left = static_cast<int32_t>(u), top = static_cast<int32_t>(v);
    const int32_t right = std::min(left + 1, size.width - 1), bottom = std::min(top + 1, size.height - 1);
    const long double f = u - left, g = v - top;
    return (1 - g) * ((1 - f) * plane.at(left, top) + f * plane.at(right, top)) +
           g * ((1 - f) * plane.at(left, bottom) + f * plane.at(right, bottom));
  };
  Plane result(src.size());
  for (int32_t y = 0; y < src.size().height; ++y) {
    for (int32_t x = 0; x < src.size().width; ++x) {
      result.at(x, y) =
          interpolated(meanA, x, y) * static_cast<long double>(guide.at(x, y)) + interpolated(meanB, x, y);
    }
  }
  return result;
}

template <class T>
void checkGuided(const TestImage<T>& src, const TestImage<T>& guide, const DaxiFilterGuidedCfg& cfg) {
  using F = Guided<T>;
  const DaxiSize size = src.size();
  Plane expected = guidedByDefinition(src, guide, cfg);
  TestImage<T> dst(size, 2), again(size);
  uint64_t bytes = 0, pooledBytes = 0;
  ASSERT_EQ(F::kBytes(size, &cfg, &bytes), DAX_STS_OK);
  ASSERT_EQ(F::kPooledBytes(size, &cfg, 3, &pooledBytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes), slices(pooledBytes);
  dst.remember();
  ASSERT_EQ(
      F::kPlain(src.data(), src.step(), guide.data(), guide.step(), dst.data(), dst.step(), size, &cfg, buffer.data()),
      DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  constexpr double kMax = std::is_floating_point_v<T> ? 1e30 : double{std::numeric_limits<T>::max()};
  const double tolerance = std::is_floating_point_v<T> ? 1e-3 : sizeof(T) == 1 ? 0.501 : 0.55;
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      const double value =
          std::clamp(static_cast<double>(expected.at(x, y)), std::is_floating_point_v<T> ? -1e30 : 0, kMax);
      ASSERT_NEAR(static_cast<double>(dst.at(x, y)), value, tolerance)
          << x << ", " << y << " radius " << cfg.radius << " subsample " << cfg.subsample << " eps " << cfg.eps;
    }
  }
  MockPool pool;
  ASSERT_EQ(F::kPooled(&pool, 3, src.data(), src.step(), guide.data(), guide.step(), again.data(), again.step(), size,
                       &cfg, slices.data()),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, again)) << "on a pool";
}

template <class>
class FilterGuided : public testing::Test {};
using Greys = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(FilterGuided, Greys);

TYPED_TEST(FilterGuided, EqualsTheDefinition) {
  Random random(4);
  const double unit = sizeof(TypeParam) == 2 ? 200 : 1;
  for (int32_t round = 0; round < 24; ++round) {
    const DaxiSize size = {1 + random.below(round % 4 ? 40 : 3), 1 + random.below(round % 4 ? 24 : 3)};
    const DaxiFilterGuidedCfg cfg = {round % 8 == 7 ? 150 : 1 + random.below(6), round % 3 ? 1 : 1 + random.below(8),
                                     round % 5 ? unit * unit * (1 + random.below(500)) : 0};
    TestImage<TypeParam> src(size, 1), guide(size, 2);
    src.fill([&](int32_t x, int32_t) { return unit * ((x / 5 % 2 ? 150 : 40) + random.below(60)); });
    guide.fill([&](int32_t x, int32_t y) { return unit * (((x + y) / 7 % 2 ? 150 : 40) + random.below(60)); });
    if (cfg.eps > 0) {
      ASSERT_NO_FATAL_FAILURE(checkGuided(src, guide, cfg));
    }
    ASSERT_NO_FATAL_FAILURE(checkGuided(src, src, cfg));
  }
}

// Even images stay as they are without eps, too; a NaN reaches no further than two windows.
TEST(FilterGuidedFloats, FlatImagesAndNaN) {
  const DaxiFilterGuidedCfg cfg = {2, 1, 0};
  TestImage<float> src({30, 20}), dst({30, 20});
  src.fill([](int32_t, int32_t) { return 100; });
  src.at(10, 10) = std::numeric_limits<float>::quiet_NaN();
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_FilterGuidedBufferSize_32f(src.size(), &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  ASSERT_EQ(DAXI_FilterGuided_32f_C1R(src.data(), 30, src.data(), 30, dst.data(), 30, src.size(), &cfg, buffer.data()),
            DAX_STS_OK);
  for (int32_t y = 0; y < 20; ++y) {
    for (int32_t x = 0; x < 30; ++x) {
      const bool isNear = std::abs(x - 10) <= 4 && std::abs(y - 10) <= 4;
      ASSERT_EQ(isNear, std::isnan(dst.at(x, y))) << x << ", " << y;
      if (!isNear) {
        ASSERT_EQ(dst.at(x, y), 100);
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
