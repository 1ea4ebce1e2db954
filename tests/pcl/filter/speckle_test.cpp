#include "pcl/filter/speckle.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/pcl/filter/speckle_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Window = oracle::SpeckleWindow;

template <class>
class Speckle : public testing::Test {};
using Types = testing::Types<uint16_t, int16_t>;
TYPED_TEST_SUITE(Speckle, Types);

// In memory of exactly the queried size, out of place and in place, with every kernel.
template <class T>
void expectFiltered(const std::vector<T>& image, DaxiSize size, const Window& w, int32_t maxDiff, int32_t maxSize,
                    T invalid) {
  const std::vector<T> expected = oracle::withoutSpeckles(image, size.width, size.height, w, maxDiff, maxSize, invalid);
  uint64_t bytes = 0;
  ASSERT_EQ(DAX3DPCL_PREP_FILTER_Speckle_BufferSize(size, &bytes), DAX_STS_OK);
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " diff " << maxDiff << " size " << maxSize
                                    << " code " << isa);
    const Guard guard = kGuards[isa ? 1 : 0];
    GuardedBuffer<uint8_t> buffer(bytes, guard);
    GuardedBuffer<T> src(image.size(), guard), dst(image.size(), guard);
    std::copy(image.begin(), image.end(), src.begin());
    filterSpeckles<T>(size, src.data(), dst.data(), {w.x0, w.y0}, {w.x1, w.y1}, maxDiff, maxSize, invalid,
                      buffer.data(), isa);
    ASSERT_TRUE(std::equal(dst.begin(), dst.end(), expected.begin()));
    std::memset(buffer.data(), 0xFF, bytes);
    filterSpeckles<T>(size, src.data(), src.data(), {w.x0, w.y0}, {w.x1, w.y1}, maxDiff, maxSize, invalid,
                      buffer.data(), isa);
    ASSERT_TRUE(std::equal(src.begin(), src.end(), expected.begin())) << "in place";
  }
}

// Few levels, so that there are regions of all sizes; some at the ends of the type, where differences are largest.
template <class T>
std::vector<T> levels(DaxiSize size, uint64_t seed, int32_t count) {
  Random random(seed);
  std::vector<T> image(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
  for (T& value : image) {
    const int32_t level = random.below(count);
    value = static_cast<T>(level == 0 ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max() - 3 * level);
  }
  return image;
}

TYPED_TEST(Speckle, RandomImagesOfManySizes) {
  const DaxiSize sizes[] = {{1, 1},  {1, 70},  {70, 1},  {2, 2},   {63, 5},   {64, 4},   {65, 7},
                            {16, 8}, {127, 3}, {128, 9}, {129, 6}, {200, 11}, {191, 20}, {320, 30}};
  for (const DaxiSize& size : sizes) {
    for (const int32_t count : {2, 3, 6}) {
      const auto image = levels<TypeParam>(size, static_cast<uint64_t>(size.width * count), count);
      const TypeParam invalid = image[image.size() / 2];
      const Window whole = {0, 0, size.width, size.height};
      for (const int32_t maxDiff : {INT32_MIN, -1, 0, 1, 3, 4, 65535, 65536, INT32_MAX}) {
        for (const int32_t maxSize : {1, 2, 7, 40}) expectFiltered(image, size, whole, maxDiff, maxSize, invalid);
      }
    }
  }
}

TYPED_TEST(Speckle, WindowsInsideTheImage) {
  const DaxiSize size{150, 40};
  const auto image = levels<TypeParam>(size, 7, 3);
  const Window windows[] = {{10, 5, 140, 35},  {0, 0, 1, 40},    {149, 0, 150, 40}, {70, 0, 71, 1},
                            {64, 39, 128, 40}, {20, 20, 20, 30}, {40, 30, 20, 10},  {INT32_MAX, 0, 150, 40}};
  for (const Window& window : windows) expectFiltered<TypeParam>(image, size, window, 4, 30, image[0]);
}

TEST(SpeckleRegions, SpiralsCombsAndSteps) {
  const DaxiSize size{130, 67};
  std::vector<uint16_t> comb(size_t{130} * 67), snake(comb.size()), steps(comb.size());
  for (int32_t y = 0; y < 67; ++y) {
    for (int32_t x = 0; x < 130; ++x) {
      const size_t i = static_cast<size_t>(y * 130 + x);
      comb[i] = x % 2 == 0 || y == 66 ? 9 : 0;  // teeth that meet in the last row
      snake[i] = y % 2 == 0 || x == (y % 4 == 1 ? 129 : 0) ? 9 : 0;
      steps[i] = static_cast<uint16_t>(100 + 10 * x + 10 * y);
    }
  }
  for (const auto* image : {&comb, &snake, &steps}) {
    const auto pixels = static_cast<int32_t>(std::count_if(image->begin(), image->end(), [](int v) { return v != 0; }));
    // Exactly the region's size is cleared, one less is kept; a difference equal to the limit does not connect.
    for (const int32_t maxDiff : {10, 11}) {
      for (const int32_t maxSize : {1, pixels - 1, pixels}) {
        expectFiltered<uint16_t>(*image, size, {0, 0, 130, 67}, maxDiff, maxSize, 0);
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
