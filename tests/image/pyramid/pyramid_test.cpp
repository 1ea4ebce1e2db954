#include "daxi/pyramid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/image/pyramid/pyramid_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Pyramid;
#define DAX_PYRAMID_EXPORTS(SUFFIX, T, D, DIFFERENCE, SUM)                                                 \
  template <>                                                                                              \
  struct Pyramid<T> {                                                                                      \
    using Difference = D;                                                                                  \
    static constexpr auto kDownBytes = DAXI_PyrDownBufferSize_##SUFFIX;                                    \
    static constexpr auto kUpBytes = DAXI_PyrUpBufferSize_##SUFFIX;                                        \
    static constexpr auto kLaplacianBytes = DAXI_LaplacianBuildBufferSize_##DIFFERENCE;                    \
    static constexpr auto kBuildBytes = DAXI_PyramidBuildBufferSize_##SUFFIX;                              \
    static constexpr auto kModelBytes = DAXI_PyramidBuildModelSize_##SUFFIX##_C1R;                         \
    static constexpr auto kLevels = DAXI_PyramidLevels_##SUFFIX##_C1R;                                     \
    static constexpr auto kBuild = DAXI_PyramidBuild_##SUFFIX##_C1R_MT;                                    \
    static constexpr decltype(&DAXI_PyrDown_##SUFFIX##_C1R_MT) kDown[] = {DAXI_PyrDown_##SUFFIX##_C1R_MT,  \
                                                                          DAXI_PyrDown_##SUFFIX##_C3R_MT}; \
    static constexpr decltype(&DAXI_PyrUp_##SUFFIX##_C1R_MT) kUp[] = {DAXI_PyrUp_##SUFFIX##_C1R_MT,        \
                                                                      DAXI_PyrUp_##SUFFIX##_C3R_MT};       \
    static constexpr decltype(&DAXI_LaplacianBuild_##DIFFERENCE##_C1R_MT) kLaplacian[] = {                 \
        DAXI_LaplacianBuild_##DIFFERENCE##_C1R_MT, DAXI_LaplacianBuild_##DIFFERENCE##_C3R_MT};             \
    static constexpr decltype(&DAXI_LaplacianCollapse_##SUM##_C1R_MT) kCollapse[] = {                      \
        DAXI_LaplacianCollapse_##SUM##_C1R_MT, DAXI_LaplacianCollapse_##SUM##_C3R_MT};                     \
  };
DAX_PYRAMID_EXPORTS(8u, uint8_t, int16_t, 8u16s, 16s8u)
DAX_PYRAMID_EXPORTS(16u, uint16_t, int32_t, 16u32s, 32s16u)
DAX_PYRAMID_EXPORTS(32f, float, float, 32f, 32f)
#undef DAX_PYRAMID_EXPORTS

DaxiSize halfOf(DaxiSize size) {
  return {(size.width + 1) / 2, (size.height + 1) / 2};
}

template <class T>
class Pyramids : public testing::Test {
 protected:
  using P = Pyramid<T>;
  using Difference = typename P::Difference;

  static TestImage<T> noise(DaxiSize size, int32_t channels) {
    TestImage<T> image({size.width * channels, size.height}, 2);
    Random random(static_cast<uint64_t>(size.width));
    image.fill([&](int32_t, int32_t) { return random.below(sizeof(T) == 1 ? 256 : 65536); });
    return image;
  }
  // call(buffer) with as many bytes as query(&bytes) says.
  template <class Query, class Call>
  static void call(const Query& query, const Call& run) {
    uint64_t bytes = 0;
    ASSERT_EQ(query(&bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes, Guard::after);
    ASSERT_EQ(run(buffer.data()), DAX_STS_OK);
  }
  // A sum of the definition that is to be divided by `by`: exact for integers, halves to even.
  static void expectLevel(T value, double sum, double by) {
    if constexpr (std::is_integral_v<T>) {
      ASSERT_EQ(value, std::rint(sum / by));
    } else {
      ASSERT_NEAR(value, sum / by, 0.02);
    }
  }

  TestImage<T> down(const TestImage<T>& src, DaxiSize size, int32_t channels) {
    const DaxiSize half = halfOf(size);
    TestImage<T> dst({half.width * channels, half.height}, 1);
    dst.remember();
    call([&](uint64_t* bytes) { return P::kDownBytes(size, bytes); },
         [&](void* buffer) {
           return P::kDown[channels / 2](&pool_, 3, src.data(), src.step(), dst.data(), dst.step(), size, buffer);
         });
    EXPECT_TRUE(dst.paddingUntouched());
    return dst;
  }
  TestImage<T> up(const TestImage<T>& src, DaxiSize size, DaxiSize twice, int32_t channels) {
    TestImage<T> dst({twice.width * channels, twice.height}, 1);
    dst.remember();
    call([&](uint64_t* bytes) { return P::kUpBytes(size, twice, bytes); },
         [&](void* buffer) {
           return P::kUp[channels / 2](&pool_, 3, src.data(), src.step(), dst.data(), dst.step(), size, twice, buffer);
         });
    EXPECT_TRUE(dst.paddingUntouched());
    return dst;
  }

  void expectDefinition(DaxiSize size, int32_t channels) {
    const TestImage<T> src = noise(size, channels), half = down(src, size, channels);
    const auto channelOf = [&](const TestImage<T>& image, int32_t c) {
      return [&image, channels, c](int32_t i, int32_t j) { return image.at(i * channels + c, j); };
    };
    for (int32_t y = 0; y < half.size().height; ++y) {
      for (int32_t x = 0; x < half.size().width; ++x) {
        const auto pixel = channelOf(src, x % channels);
        ASSERT_NO_FATAL_FAILURE(expectLevel(half.at(x, y), oracle::halved(pixel, size, x / channels, y), 256));
      }
    }
    const TestImage<T> twice = up(half, halfOf(size), size, channels);
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width * channels; ++x) {
        const auto pixel = channelOf(half, x % channels);
        ASSERT_NO_FATAL_FAILURE(expectLevel(twice.at(x, y), oracle::doubled(pixel, halfOf(size), x / channels, y), 64));
      }
    }
    expectLaplacian(src, half, twice, size, channels);
  }

  // The difference from the doubled half; and that it gives the image back.
  void expectLaplacian(const TestImage<T>& src, const TestImage<T>& half, const TestImage<T>& twice, DaxiSize size,
                       int32_t channels) {
    TestImage<Difference> difference(src.size());
    TestImage<T> back(src.size());
    const auto query = [&](uint64_t* bytes) { return P::kLaplacianBytes(size, bytes); };
    call(query, [&](void* buffer) {
      return P::kLaplacian[channels / 2](&pool_, 3, src.data(), src.step(), difference.data(), difference.step(), size,
                                         half.data(), half.step(), buffer);
    });
    call(query, [&](void* buffer) {
      return P::kCollapse[channels / 2](&pool_, 3, difference.data(), difference.step(), back.data(), back.step(), size,
                                        half.data(), half.step(), buffer);
    });
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width * channels; ++x) {
        ASSERT_EQ(difference.at(x, y), static_cast<Difference>(src.at(x, y) - twice.at(x, y)));
        if constexpr (std::is_integral_v<T>) {
          ASSERT_EQ(back.at(x, y), src.at(x, y));
        }
      }
    }
  }

  MockPool pool_;
};
using PyramidTypes = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(Pyramids, PyramidTypes);

// Odd and even sides, down to a single pixel, and wide ones for vectors.
TYPED_TEST(Pyramids, AreTheirDefinition) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {2, 1}, {3, 2}, {4, 5}, {1, 7}, {33, 12}, {36, 13}, {37, 3}, {140, 21}}) {
    for (const int32_t channels : {1, 3}) {
      ASSERT_NO_FATAL_FAILURE(this->expectDefinition(size, channels)) << size.width << " x " << size.height;
    }
  }
}

// All levels lie where the table says, each half of the one before.
TYPED_TEST(Pyramids, LevelsOfABuiltPyramid) {
  using Exports = Pyramid<TypeParam>;
  constexpr DaxiSize kSize = {93, 50};
  constexpr int32_t kCount = 8;
  DaxiPyramidLevel levels[kCount];
  uint64_t bytes = 0;
  ASSERT_EQ(Exports::kLevels(kSize, kCount, levels), DAX_STS_OK);
  ASSERT_EQ(Exports::kModelBytes(kSize, kCount, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> model(bytes, Guard::after);
  const TestImage<TypeParam> src = this->noise(kSize, 1);
  this->call([&](uint64_t* need) { return Exports::kBuildBytes(kSize, kCount, need); },
             [&](void* buffer) {
               return Exports::kBuild(nullptr, 0, src.data(), src.step(), kSize, kCount, model.data(), buffer);
             });
  std::vector<TestImage<TypeParam>> made;
  made.push_back(this->down(src, kSize, 1));
  for (int32_t k = 0; k < kCount; ++k) {
    const DaxiPyramidLevel& level = levels[k];
    const TestImage<TypeParam>& expected = made.back();
    ASSERT_EQ(level.size.width, expected.size().width);
    ASSERT_EQ(level.size.height, expected.size().height);
    for (int32_t y = 0; y < level.size.height; ++y) {
      const uint8_t* const row =
          model.data() + level.offset + static_cast<size_t>(y) * static_cast<size_t>(level.step) * sizeof(TypeParam);
      ASSERT_EQ(std::memcmp(row, expected.row(y), static_cast<size_t>(level.size.width) * sizeof(TypeParam)), 0) << k;
    }
    made.push_back(this->down(expected, level.size, 1));
  }
}

}  // namespace
}  // namespace dax::test
