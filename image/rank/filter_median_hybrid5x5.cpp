#include "daxi/filter_median_hybrid5x5.h"

#include <cstdlib>

#include "frame/check.h"
#include "frame/tiles.h"
#include "image/rank/rank_filter.h"
#include "image/rank/sorting_network.h"

namespace dax {
namespace {

constexpr int32_t kHybridReach = 2;

template <class Key>
struct HybridOrder {
  static Key min(Key a, Key b) { return a < b ? a : b; }
  static Key max(Key a, Key b) { return a > b ? a : b; }
};

// A piece of five rows and of the columns on either side, in loops that compilers vectorise.
template <class T>
class HybridRows {
 public:
  static constexpr int32_t kPiece = 256;

  HybridRows(const RankFilter<T>& filter, int32_t x, int32_t y, int32_t count) {
    for (int32_t k = 0; k < 5; ++k) {
      filter.readRow(int64_t{y} + k - kHybridReach, int64_t{x} - kHybridReach, count + 2 * kHybridReach, lines_[k]);
    }
  }

  void storeMedians(int32_t count, T* __restrict dst) const {
    const auto &a = lines_[0], &b = lines_[1], &c = lines_[2], &d = lines_[3], &e = lines_[4];
    for (int32_t i = 0; i < count; ++i) {
      const Key centre = c[i + 2];
      const Key upright = median({c[i], c[i + 1], centre, c[i + 3], c[i + 4], a[i + 2], b[i + 2], d[i + 2], e[i + 2]});
      const Key diagonal = median({a[i], b[i + 1], centre, d[i + 3], e[i + 4], a[i + 4], b[i + 3], d[i + 1], e[i]});
      const Key low = Order::min(upright, diagonal), high = Order::max(upright, diagonal);
      dst[i] = OrderKey<T>::pixel(Order::max(low, Order::min(high, centre)));
    }
  }

 private:
  using Key = typename OrderKey<T>::Key;
  using Order = HybridOrder<Key>;
  using Network = SortingNetwork<Order, Key>;

  [[gnu::always_inline]] static Key median(const typename Network::template List<9>& keys) {
    return Network::sorted(keys)[4];
  }

  Key lines_[5][kPiece + 2 * kHybridReach];
};

// The median of those pixels of a cross that lie inside the image; (dx, dy) is a step along one arm, the others are turned
// from it.
template <class T>
typename OrderKey<T>::Key clippedArms(const RankFilter<T>& filter, int64_t x, int64_t y, int32_t dx, int32_t dy) {
  typename OrderKey<T>::Key keys[4 * kHybridReach + 1];
  int32_t count = 0;
  const auto add = [&](int64_t column, int64_t row) {
    if (column < 0 || column >= filter.size.width || row < 0 || row >= filter.size.height) return;
    keys[count++] = OrderKey<T>::of(filter.src[row * filter.srcStep + column]);
  };
  add(x, y);
  for (int32_t k = 1; k <= kHybridReach; ++k) {
    add(x + k * dx, y + k * dy), add(x - k * dx, y - k * dy);
    add(x - k * dy, y + k * dx), add(x + k * dy, y - k * dx);
  }
  std::nth_element(keys, keys + count / 2, keys + count);
  return keys[count / 2];
}

template <class T>
T clippedHybrid(const RankFilter<T>& filter, int32_t x, int32_t y) {
  const auto centre = OrderKey<T>::of(rowAt(filter.src, filter.srcStep, y)[x]);
  const auto upright = clippedArms(filter, x, y, 1, 0), diagonal = clippedArms(filter, x, y, 1, 1);
  return OrderKey<T>::pixel(std::max(std::min(upright, diagonal), std::min(std::max(upright, diagonal), centre)));
}

template <class T>
void hybridRow(const RankFilter<T>& filter, int32_t y) {
  const auto [width, height] = filter.size;
  T* const dst = rowAt(filter.dst, filter.dstStep, y);
  for (int32_t x = 0, count; x < width; x += count) {
    count = std::min(HybridRows<T>::kPiece, width - x);
    HybridRows<T>(filter, x, y, count).storeMedians(count, dst + x);
  }
  if (!filter.clips()) return;
  const bool isInside = y >= kHybridReach && y < height - kHybridReach;
  const int32_t left = isInside ? std::min(kHybridReach, width) : width, right = std::max(left, width - kHybridReach);
  for (int32_t x = 0; x < left; ++x) dst[x] = clippedHybrid(filter, x, y);
  for (int32_t x = right; x < width; ++x) dst[x] = clippedHybrid(filter, x, y);
}

template <class T>
DaxStatus runHybrid(PoolThreads on, const RankFilter<T>& filter) {
  DAX_REQUIRE(filter.src && filter.dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(filter.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(filter.size.width <= std::min(filter.srcStep, filter.dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(filter.border >= DAXI_BORDER_REPLICATE && filter.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  return runRows(on, filter.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) hybridRow(filter, y);
  });
}

}  // namespace
}  // namespace dax

#define DAX_MEDIAN_HYBRID(SUFFIX, T)                                                                                  \
  DaxStatus DAXI_FilterMedianHybrid5x5_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,         \
                                                      DaxiSize size, int32_t border, T value) {                       \
    return dax::runHybrid<T>({}, {src, srcStep, dst, dstStep, size, {5, 5}, 0, border, value});                       \
  }                                                                                                                   \
  DaxStatus DAXI_FilterMedianHybrid5x5_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, \
                                                         T* dst, int32_t dstStep, DaxiSize size, int32_t border,      \
                                                         T value) {                                                   \
    return dax::runHybrid<T>({pool, threads}, {src, srcStep, dst, dstStep, size, {5, 5}, 0, border, value});          \
  }
DAX_MEDIAN_HYBRID(8u, uint8_t)
DAX_MEDIAN_HYBRID(16u, uint16_t)
DAX_MEDIAN_HYBRID(16s, int16_t)
DAX_MEDIAN_HYBRID(32f, float)
#undef DAX_MEDIAN_HYBRID
