#include "daxi/reconstruct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>
#include <limits>
#include <memory>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Reconstruct;
#define DAX_RECONSTRUCT_TYPE(SUFFIX, TYPE)                                   \
  template <>                                                                \
  struct Reconstruct<TYPE> {                                                 \
    static constexpr auto kSize = DAXI_ReconstructDilateBufferSize_##SUFFIX; \
    static constexpr auto kDilate = DAXI_ReconstructDilate_##SUFFIX##_C1R;   \
    static constexpr auto kErode = DAXI_ReconstructErode_##SUFFIX##_C1R;     \
    static constexpr auto kFillHoles = DAXI_FillHoles_##SUFFIX##_C1R;        \
    static constexpr auto kClearBorder = DAXI_ClearBorder_##SUFFIX##_C1R;    \
    static constexpr auto kHMaxima = DAXI_HMaxima_##SUFFIX##_C1R;            \
    static constexpr auto kHMinima = DAXI_HMinima_##SUFFIX##_C1R;            \
    static constexpr auto kMaxima = DAXI_RegionalMaxima_##SUFFIX##_C1R;      \
    static constexpr auto kMinima = DAXI_RegionalMinima_##SUFFIX##_C1R;      \
  };
DAX_RECONSTRUCT_TYPE(8u, uint8_t)
DAX_RECONSTRUCT_TYPE(16u, uint16_t)
DAX_RECONSTRUCT_TYPE(32f, float)
#undef DAX_RECONSTRUCT_TYPE

template <class T>
T lower(T a, T b) {
  return std::strong_order(a, b) < 0 ? a : b;
}

template <class T>
T higher(T a, T b) {
  return std::strong_order(a, b) < 0 ? b : a;
}

// Calls use(u, v) for the neighbours inside.
template <class Use>
void forNeighbours(DaxiSize size, int32_t x, int32_t y, int32_t connectivity, Use use) {
  for (int32_t v = std::max(y - 1, 0); v <= std::min(y + 1, size.height - 1); ++v) {
    for (int32_t u = std::max(x - 1, 0); u <= std::min(x + 1, size.width - 1); ++u) {
      const int32_t steps = std::abs(u - x) + std::abs(v - y);
      if (steps == 1 || (steps == 2 && connectivity == 8)) use(u, v);
    }
  }
}

// Steps of dilation below the mask, or erosion above it, until nothing changes.
template <class T>
void reconstructSlowly(TestImage<T>& marker, const TestImage<T>& mask, int32_t connectivity, bool isErosion) {
  const auto grow = [&](T a, T b) { return isErosion ? lower(a, b) : higher(a, b); };
  const auto clamp = [&](T a, T b) { return isErosion ? higher(a, b) : lower(a, b); };
  marker.fill([&](int32_t x, int32_t y) { return clamp(marker.at(x, y), mask.at(x, y)); });
  for (bool changed = true; changed;) {
    changed = false;
    marker.fill([&](int32_t x, int32_t y) {
      T value = marker.at(x, y);
      forNeighbours(marker.size(), x, y, connectivity,
                    [&](int32_t u, int32_t v) { value = grow(value, marker.at(u, v)); });
      value = clamp(value, mask.at(x, y));
      changed |= !sameBits(value, marker.at(x, y));
      return value;
    });
  }
}

template <class T>
class Reconstruction : public testing::Test {
 protected:
  static constexpr T kHighest =
      std::is_floating_point_v<T> ? std::numeric_limits<T>::infinity() : std::numeric_limits<T>::max();
  static constexpr T kLowest = std::is_floating_point_v<T> ? -std::numeric_limits<T>::infinity() : T{0};

  // Few levels make plateaus; a random walk along rows makes hills.
  void draw(int32_t round) {
    const int32_t levels = round % 3 == 0 ? 3 : 200;
    int32_t walk = 50;
    src_.fill([&](int32_t, int32_t) {
      walk = std::clamp(walk + random_.below(21) - 10, 0, 199);
      return round % 2 ? walk % levels : random_.below(levels);
    });
  }

  template <class Call>
  void expectEqual(Call call, const TestImage<T>& expected) {
    TestImage<T> dst(src_.size(), 1);
    ASSERT_EQ(call(dst.data(), dst.step(), work()), DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, expected));
  }

  void* work() {
    uint64_t bytes = 0;
    EXPECT_EQ(Reconstruct<T>::kSize(src_.size(), 8, &bytes), DAX_STS_OK);
    buffer_ = std::make_unique<GuardedBuffer<uint8_t>>(bytes);
    return buffer_->data();
  }

  Random random_{6};
  TestImage<T> src_{{23, 17}, 2};
  std::unique_ptr<GuardedBuffer<uint8_t>> buffer_;
};
using ReconstructPixels = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(Reconstruction, ReconstructPixels);

TYPED_TEST(Reconstruction, MarkersGrowUntilNothingChanges) {
  using T = TypeParam;
  for (int32_t round = 0; round < 40; ++round) {
    this->draw(round);
    TestImage<T> marker(this->src_.size(), 3);
    marker.fill([&](int32_t x, int32_t y) {
      return this->random_.below(4) ? this->src_.at(x, y) / 2 : this->random_.below(200);
    });
    if (std::is_floating_point_v<T> && round % 5 == 0) marker.randomize(static_cast<uint64_t>(round));
    const int32_t connectivity = round % 4 < 2 ? 4 : 8;
    TestImage<T> expected(marker.size());
    expected.fill([&](int32_t x, int32_t y) { return marker.at(x, y); });
    const bool isErosion = round % 8 < 4;
    reconstructSlowly(expected, this->src_, connectivity, isErosion);
    const auto function = isErosion ? Reconstruct<T>::kErode : Reconstruct<T>::kDilate;
    this->expectEqual(
        [&](T* dst, int32_t step, void* buffer) {
          return function(marker.data(), marker.step(), this->src_.data(), this->src_.step(), dst, step, marker.size(),
                          connectivity, buffer);
        },
        expected);
  }
}

TYPED_TEST(Reconstruction, HolesEdgesAndHeights) {
  using T = TypeParam;
  const TestImage<T>& src = this->src_;
  const DaxiSize size = src.size();
  const auto isEdge = [&](int32_t x, int32_t y) {
    return x == 0 || y == 0 || x == size.width - 1 || y == size.height - 1;
  };
  for (int32_t round = 0; round < 24; ++round) {
    this->draw(round);
    const int32_t connectivity = round % 4 < 2 ? 4 : 8;
    const auto run = [&](auto function) {
      return [&, function](T* dst, int32_t step, void* buffer) {
        return function(src.data(), src.step(), dst, step, size, connectivity, buffer);
      };
    };
    TestImage<T> expected(size);
    expected.fill([&](int32_t x, int32_t y) { return isEdge(x, y) ? src.at(x, y) : this->kHighest; });
    reconstructSlowly(expected, src, 12 - connectivity, true);
    this->expectEqual(run(Reconstruct<T>::kFillHoles), expected);

    expected.fill([&](int32_t x, int32_t y) { return isEdge(x, y) ? src.at(x, y) : this->kLowest; });
    reconstructSlowly(expected, src, connectivity, false);
    expected.fill([&](int32_t x, int32_t y) { return src.at(x, y) - expected.at(x, y); });
    this->expectEqual(run(Reconstruct<T>::kClearBorder), expected);

    for (const bool isMinima : {false, true}) {
      const T h = static_cast<T>(1 + this->random_.below(60));
      expected.fill([&](int32_t x, int32_t y) {
        if (isMinima) return src.at(x, y) > this->kHighest - h ? this->kHighest : static_cast<T>(src.at(x, y) + h);
        return src.at(x, y) < this->kLowest + h ? this->kLowest : static_cast<T>(src.at(x, y) - h);
      });
      reconstructSlowly(expected, src, connectivity, isMinima);
      const auto function = isMinima ? Reconstruct<T>::kHMinima : Reconstruct<T>::kHMaxima;
      this->expectEqual(
          [&](T* dst, int32_t step, void* buffer) {
            return function(src.data(), src.step(), dst, step, size, h, connectivity, buffer);
          },
          expected);
    }
  }
}

// A pixel is of a maximum when no path of its value leads beside a higher one: found by repeating.
TYPED_TEST(Reconstruction, RegionalExtrema) {
  using T = TypeParam;
  const TestImage<T>& src = this->src_;
  for (int32_t round = 0; round < 24; ++round) {
    this->draw(round);
    if (round == 0) this->src_.fill([](int32_t, int32_t) { return 7; });
    const int32_t connectivity = round % 4 < 2 ? 4 : 8;
    const bool isMinima = round % 8 < 4;
    TestImage<uint8_t> expected(src.size()), dst(src.size(), 1);
    expected.fill([](int32_t, int32_t) { return 255; });
    for (bool changed = true; changed;) {
      changed = false;
      expected.fill([&](int32_t x, int32_t y) {
        uint8_t own = expected.at(x, y);
        forNeighbours(src.size(), x, y, connectivity, [&](int32_t u, int32_t v) {
          const T mine = src.at(x, y), other = src.at(u, v);
          if ((isMinima ? other < mine : other > mine) || (other == mine && expected.at(u, v) == 0)) own = 0;
        });
        changed |= own != expected.at(x, y);
        return own;
      });
    }
    const auto function = isMinima ? Reconstruct<T>::kMinima : Reconstruct<T>::kMaxima;
    ASSERT_EQ(function(src.data(), src.step(), dst.data(), dst.step(), src.size(), connectivity, this->work()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, expected)) << round;
  }
}

}  // namespace
}  // namespace dax::test
