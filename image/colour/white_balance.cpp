#include "daxi/white_balance.h"

#include <algorithm>
#include <limits>
#include <type_traits>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/rank.h"
#include "frame/numeric/total_order.h"
#include "frame/rows.h"

namespace dax {
namespace {

template <class T>
constexpr T kSaturated = std::is_floating_point_v<T> ? T{1} : std::numeric_limits<T>::max();

// Calls row-wise: use(pixel) for each that counts.
template <class T, class Use>
void forUnsaturated(const T* row, int32_t width, Use use) {
  for (ptrdiff_t x = 0; x < 3 * ptrdiff_t{width}; x += 3) {
    const T* const at = row + x;
    if (at[0] < kSaturated<T> && at[1] < kSaturated<T> && at[2] < kSaturated<T>) use(at);
  }
}

// Levels are multiples of the smallest float, and sums of numbers below 1 or of integers: no ratio is infinite.
DaxStatus storeGains(const double (&levels)[3], double* gains) {
  DAX_REQUIRE(levels[0] > 0 && levels[1] > 0 && levels[2] > 0, DAX_STS_DEGENERATE);
  gains[0] = levels[1] / levels[0];
  gains[1] = 1;
  gains[2] = levels[1] / levels[2];
  return DAX_STS_OK;
}

template <class T>
DaxStatus grayWorld(const T* src, int32_t srcStep, DaxiSize size, double* gains) {
  using Sum = std::conditional_t<std::is_floating_point_v<T>, double, uint64_t>;
  DAX_REQUIRE(gains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkImage(src, srcStep, size, 3));
  Sum sums[3] = {};
  for (int32_t y = 0; y < size.height; ++y) {
    Sum row[3] = {};
    forUnsaturated(rowAt(src, srcStep, y), size.width, [&](const T* at) {
      for (int k = 0; k < 3; ++k) row[k] += static_cast<Sum>(at[k]);
    });
    for (int k = 0; k < 3; ++k) sums[k] += row[k];
  }
  return storeGains({static_cast<double>(sums[0]), static_cast<double>(sums[1]), static_cast<double>(sums[2])}, gains);
}

// Levels are found by 16 of their ordered bits at a time.
template <class T>
struct LevelOrder {
  static constexpr int kRounds = sizeof(T) == 4 ? 2 : 1;
  static constexpr uint32_t kBins = sizeof(T) == 1 ? 256 : 65536;
};

template <class T>
struct PatchBuffer {
  PatchBuffer() : counts(layout.add<uint64_t>(3 * LevelOrder<T>::kBins)) {}
  BufferLayout layout;
  BufferPiece<uint64_t> counts;
};

// The bin in which the element of a rank lies; what is left of the rank is that within the bin.
uint32_t binOfRank(const uint64_t* counts, uint64_t& rank) {
  uint32_t bin = 0;
  for (; counts[bin] < rank; ++bin) rank -= counts[bin];
  return bin;
}

template <class T>
DaxStatus whitePatch(const T* src, int32_t srcStep, DaxiSize size, double percentile, double* gains, void* buffer) {
  using Order = LevelOrder<T>;
  DAX_REQUIRE(gains && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkImage(src, srcStep, size, 3));
  DAX_REQUIRE(percentile >= 0 && percentile <= 1, DAX_STS_BAD_PARAM);
  uint64_t* const counts = PatchBuffer<T>().counts.in(buffer);
  uint64_t ranks[3] = {};
  uint32_t keys[3] = {};
  for (int round = 0; round < Order::kRounds; ++round) {
    std::fill_n(counts, 3 * Order::kBins, uint64_t{0});
    const int shift = 16 * (Order::kRounds - 1 - round);
    uint64_t count = 0;
    for (int32_t y = 0; y < size.height; ++y) {
      forUnsaturated(rowAt(src, srcStep, y), size.width, [&](const T* at) {
        ++count;
        for (uint32_t k = 0; k < 3; ++k) {
          const uint32_t key = orderedBits(at[k]);
          if (round == 0 || key >> 16 == keys[k]) ++counts[k * Order::kBins + (key >> shift) % Order::kBins];
        }
      });
    }
    DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
    for (uint32_t k = 0; k < 3; ++k) {
      if (round == 0) ranks[k] = rankOf(percentile, count);
      keys[k] = keys[k] << 16 | binOfRank(counts + k * Order::kBins, ranks[k]);
    }
  }
  const auto level = [&](int k) { return static_cast<double>(fromOrderedBits<T>(keys[k])); };
  return storeGains({level(0), level(1), level(2)}, gains);
}

}  // namespace
}  // namespace dax

#define DAX_WHITE_BALANCE(SUFFIX, T)                                                                        \
  DaxStatus DAXI_GrayWorld_##SUFFIX##_C3R(const T* src, int32_t srcStep, DaxiSize size, double gains[3]) {  \
    return dax::grayWorld(src, srcStep, size, gains);                                                       \
  }                                                                                                         \
  DaxStatus DAXI_WhitePatchBufferSize_##SUFFIX##_C3R(uint64_t* bytes) {                                     \
    DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);                                                               \
    return dax::PatchBuffer<T>().layout.store(bytes);                                                       \
  }                                                                                                         \
  DaxStatus DAXI_WhitePatch_##SUFFIX##_C3R(const T* src, int32_t srcStep, DaxiSize size, double percentile, \
                                           double gains[3], void* buffer) {                                 \
    return dax::whitePatch(src, srcStep, size, percentile, gains, buffer);                                  \
  }
DAX_WHITE_BALANCE(8u, uint8_t)
DAX_WHITE_BALANCE(16u, uint16_t)
DAX_WHITE_BALANCE(32f, float)
#undef DAX_WHITE_BALANCE
