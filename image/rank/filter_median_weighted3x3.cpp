#include <array>
#include <type_traits>
#include <utility>

#include "daxi/filter_median_weighted3x3.h"
#include "frame/check.h"
#include "frame/tiles.h"
#include "image/rank/rank_filter.h"

namespace dax {
namespace {

using Weights3x3 = std::array<uint8_t, 9>;

// Pixels in lanes wide enough for their weights.
template <class Key>
using WeighedKey = std::conditional_t<sizeof(Key) == 1, uint16_t, Key>;

// A piece of three rows and of the columns on either side, in loops that compilers vectorise.
template <class T>
class WeighedRows {
 public:
  static constexpr int32_t kPiece = 256;

  WeighedRows(const RankFilter<T>& filter, int32_t x, int32_t y, int32_t count) {
    for (int32_t k = 0; k < 3; ++k) filter.readRow(int64_t{y} - 1 + k, int64_t{x} - 1, count + 2, lines_[k]);
  }

  // Pixels first..end - 1 of the piece: of each the smallest value that it and smaller ones make up half of the weight.
  void storeMedians(const Weights3x3& weights, int32_t first, int32_t end, T* __restrict dst) const {
    Count weight[9], total = 0;
    for (size_t k = 0; k < 9; ++k) total = static_cast<Count>(total + (weight[k] = weights[k]));
    for (int32_t i = first; i < end; ++i) {
      dst[i] = OrderKey<T>::pixel(static_cast<Key>(median(i, weight, total, std::make_index_sequence<9>())));
    }
  }

 private:
  using Key = typename OrderKey<T>::Key;
  using Wide = WeighedKey<Key>;
  using Count = std::make_unsigned_t<Wide>;
  struct Sums {
    Wide value[9];
    Count upTo[9];  // the weight of a pixel and of all before it in ascending order
  };

  template <size_t... k>
  [[gnu::always_inline]] Wide median(int32_t i, const Count (&weight)[9], Count total,
                                     std::index_sequence<k...>) const {
    Sums sums = {{lines_[k / 3][i + static_cast<int32_t>(k % 3)]...}, {weight[k]...}};
    (weighAfter<k>(sums, weight, std::make_index_sequence<8 - k>()), ...);
    Wide result = std::numeric_limits<Wide>::max();
    ((result = 2 * sums.upTo[k] >= total && sums.value[k] < result ? sums.value[k] : result), ...);
    return result;
  }

  template <size_t a, size_t... k>
  [[gnu::always_inline]] static void weighAfter(Sums& sums, const Count (&weight)[9], std::index_sequence<k...>) {
    (weighPair<a, a + 1 + k>(sums, weight), ...);
  }

  // Of equal pixels the one with the smaller index comes first.
  template <size_t a, size_t b>
  [[gnu::always_inline]] static void weighPair(Sums& sums, const Count (&weight)[9]) {
    const bool inOrder = sums.value[a] <= sums.value[b];
    sums.upTo[b] = static_cast<Count>(sums.upTo[b] + (inOrder ? weight[a] : Count{0}));
    sums.upTo[a] = static_cast<Count>(sums.upTo[a] + (inOrder ? Count{0} : weight[b]));
  }

  Key lines_[3][kPiece + 2];
};

// Without what lies outside the image; the pixel itself where nothing else has a weight.
Weights3x3 clippedWeights(Weights3x3 weights, bool left, bool right, bool above, bool below) {
  uint32_t total = 0;
  for (size_t k = 0; k < 9; ++k) {
    const size_t column = k % 3, row = k / 3;
    const bool isOutside =
        (column == 0 && left) || (column == 2 && right) || (row == 0 && above) || (row == 2 && below);
    if (isOutside) weights[k] = 0;
    total += weights[k];
  }
  if (total == 0) weights[4] = 1;
  return weights;
}

template <class T>
void weightedRow(const RankFilter<T>& filter, const Weights3x3& weights, int32_t y) {
  const auto [width, height] = filter.size;
  T* const dst = rowAt(filter.dst, filter.dstStep, y);
  for (int32_t x = 0, count; x < width; x += count) {
    count = std::min(WeighedRows<T>::kPiece, width - x);
    const WeighedRows<T> rows(filter, x, y, count);
    if (!filter.clips()) {
      rows.storeMedians(weights, 0, count, dst + x);
      continue;
    }
    const bool above = y == 0, below = y == height - 1, left = x == 0, right = x + count == width;
    rows.storeMedians(clippedWeights(weights, false, false, above, below), 0, count, dst + x);
    if (left) rows.storeMedians(clippedWeights(weights, true, width == 1, above, below), 0, 1, dst + x);
    if (right) {
      const Weights3x3 last = clippedWeights(weights, width == 1, true, above, below);
      rows.storeMedians(last, count - 1, count, dst + x);
    }
  }
}

template <class T>
DaxStatus runWeighted(PoolThreads on, const RankFilter<T>& filter, const uint8_t* weights) {
  DAX_REQUIRE(filter.src && filter.dst && weights, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(filter.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(filter.size.width <= std::min(filter.srcStep, filter.dstStep), DAX_STS_BAD_STEP);
  Weights3x3 own;
  std::copy_n(weights, own.size(), own.begin());
  DAX_REQUIRE(std::any_of(own.begin(), own.end(), [](uint8_t weight) { return weight > 0; }), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(filter.border >= DAXI_BORDER_REPLICATE && filter.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  return runRows(on, filter.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) weightedRow(filter, own, y);
  });
}

}  // namespace
}  // namespace dax

#define DAX_MEDIAN_WEIGHTED(SUFFIX, T)                                                                              \
  DaxStatus DAXI_FilterMedianWeighted3x3_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,     \
                                                        DaxiSize size, const uint8_t* weights, int32_t border,      \
                                                        T value) {                                                  \
    return dax::runWeighted<T>({}, {src, srcStep, dst, dstStep, size, {3, 3}, 0, border, value}, weights);          \
  }                                                                                                                 \
  DaxStatus DAXI_FilterMedianWeighted3x3_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src,              \
                                                           int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                                                           const uint8_t* weights, int32_t border, T value) {       \
    return dax::runWeighted<T>({pool, threads}, {src, srcStep, dst, dstStep, size, {3, 3}, 0, border, value},       \
                               weights);                                                                            \
  }
DAX_MEDIAN_WEIGHTED(8u, uint8_t)
DAX_MEDIAN_WEIGHTED(16u, uint16_t)
DAX_MEDIAN_WEIGHTED(16s, int16_t)
DAX_MEDIAN_WEIGHTED(32f, float)
#undef DAX_MEDIAN_WEIGHTED
