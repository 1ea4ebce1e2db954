// Medians of small square windows by networks, vectors of neighbouring windows at a time: columns are sorted once for all
// windows that they belong to, pairs of columns merged once, and windows made of pairs (Adams, Fast median filters using
// separable sorting networks, ACM Transactions on Graphics 40, 2021).
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "image/rank/rank_filter.h"
#include "image/rank/sorting_network.h"

namespace dax {

// Lanes: those of frame/lanes.h for the key.
template <class Lanes, class T, int32_t side>
class MedianNetwork {
 public:
  explicit MedianNetwork(const RankFilter<T>& filter) : filter_(filter) {}

  // Windows of this part are full.
  void run(const DaxiRect& part) {
    for (int32_t x = 0; x < part.width; x += std::min(kPiece, part.width - x)) {
      runPiece(part.x + x, std::min(kPiece, part.width - x), part.y, part.y + part.height);
    }
  }

 private:
  using Key = typename OrderKey<T>::Key;
  using Vector = typename Lanes::Vector;
  using Network = SortingNetwork<Lanes, Vector>;
  template <size_t n>
  using List = typename Network::template List<n>;
  static constexpr int32_t kCount = Lanes::kCount;
  static constexpr int32_t kReach = side / 2;
  static constexpr bool kStoresFours = side > 7;
  static constexpr int32_t kPiece = (kStoresFours ? 128 : 256) / static_cast<int32_t>(sizeof(Key));
  // Vectors that begin at the last windows of a piece may end beyond their columns.
  static constexpr int32_t kRoom = kPiece + (2 * kReach + kCount - 1) / kCount * kCount + kCount;
  static constexpr size_t kSide = side, kMiddle = kSide * kSide / 2;

  void runPiece(int32_t x, int32_t count, int32_t first, int32_t end) {
    const auto read = [&](int32_t y) {
      // The order of the rows does not matter, so a row takes the place of the one that it drops.
      filter_.readRow(y, x - kReach, count + 2 * kReach, rows_[(y % side + side) % side]);
    };
    for (int32_t y = first - kReach; y < first + kReach; ++y) read(y);
    for (int32_t y = first; y < end; ++y) {
      read(y + kReach);
      for (int32_t i = 0; i < count + 2 * kReach; i += kCount) sortColumns(i);
      for (int32_t i = 0; i < count + 2 * kReach - 1; i += kCount) mergePairs(i);
      for (int32_t i = 0; kStoresFours && i < count + 2 * kReach - 3; i += kCount) storeFours(i);
      T* const dst = rowAt(filter_.dst, filter_.dstStep, y) + x;
      for (int32_t i = 0; i < count; i += kCount) storeMedians(i, std::min(kCount, count - i), dst + i);
    }
  }

  template <size_t n>
  DAX_NETWORK_INLINE static List<n> load(const Key (&lists)[n][kRoom], int32_t at) {
    return [&]<size_t... k>(std::index_sequence<k...>) DAX_NETWORK_INLINE {
      return List<n>{Lanes::load(lists[k] + at)...};
    }
    (std::make_index_sequence<n>());
  }

  template <size_t n>
  DAX_NETWORK_INLINE static void store(Key (&lists)[n][kRoom], int32_t at, const List<n>& list) {
    [&]<size_t... k>(std::index_sequence<k...>) DAX_NETWORK_INLINE {
      (Lanes::store(lists[k] + at, list[k]), ...);
    }
    (std::make_index_sequence<n>());
  }

  void sortColumns(int32_t at) { store(columns_, at, Network::sorted(load(rows_, at))); }
  void mergePairs(int32_t at) { store(pairs_, at, Network::merge(load(columns_, at), load(columns_, at + 1))); }

  // Of four columns; stored where two of them make a window, else merged only as far as a median needs it.
  void storeFours(int32_t at) {
    if constexpr (kStoresFours) store(fours_, at, mergedFour(at));
  }
  DAX_NETWORK_INLINE List<4 * kSide> mergedFour(int32_t at) const {
    return Network::merge(load(pairs_, at), load(pairs_, at + 2));
  }

  void storeMedians(int32_t at, int32_t count, T* dst) const {
    Key keys[kCount];
    T medians[kCount];
    Lanes::store(keys, median(at));
    for (int32_t i = 0; i < kCount; ++i) medians[i] = OrderKey<T>::pixel(keys[i]);
    if (count == kCount) {
      std::memcpy(dst, medians, sizeof medians);
    } else {
      std::copy_n(medians, count, dst);
    }
  }

  Vector median(int32_t at) const {
    const List<kSide> last = load(columns_, at + side - 1);
    if constexpr (side == 3) {
      return Network::template select<kMiddle>(load(pairs_, at), last);
    } else if constexpr (side == 5) {
      return Network::template select<kMiddle>(mergedFour(at), last);
    } else if constexpr (side == 7) {
      return withLast(mergedFour(at), load(pairs_, at + 4), last);
    } else {
      static_assert(side == 9);
      return withLast(load(fours_, at), load(fours_, at + 4), last);
    }
  }

  // Of the pixels before the last column only as many around the middle matter as that has, and one more.
  template <size_t m, size_t n>
  DAX_NETWORK_INLINE static Vector withLast(const List<m>& a, const List<n>& b, const List<kSide>& last) {
    // A pixel that has more than half of the window on one side of it in its own list is not the median.
    constexpr size_t dropped = m > kMiddle ? m - 1 - kMiddle : 0;
    const auto rest = Network::merge(Network::template part<dropped, m - 2 * dropped>(a), b);
    return Network::template select<kSide>(Network::template part<kMiddle - dropped - kSide, kSide + 1>(rest), last);
  }

  const RankFilter<T>& filter_;
  alignas(16) Key rows_[kSide][kRoom]{};
  alignas(16) Key columns_[kSide][kRoom]{};
  alignas(16) Key pairs_[2 * kSide][kRoom]{};
  alignas(16) Key fours_[kStoresFours ? 4 * kSide : 1][kRoom]{};
};

}  // namespace dax
