// Sorting networks: comparisons that do not depend on the values, the same text for numbers and for vectors of them, for
// which `Order` has min(a, b) and max(a, b). Compilers leave out what no result depends on, so that a median costs less
// than the network that it is taken from.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

// Instrumented, a large network all in one takes minutes to be compiled.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define DAX_NETWORK_INLINE
#else
#define DAX_NETWORK_INLINE __attribute__((always_inline))
#endif

namespace dax {

template <class Order, class V>
struct SortingNetwork {
  template <size_t n>
  using List = std::array<V, n>;

  // Two sorted lists as one: Batcher's odd-even merge (Knuth, The Art of Computer Programming, volume 3, 5.3.4).
  template <size_t m, size_t n>
  DAX_NETWORK_INLINE static List<m + n> merge(const List<m>& a, const List<n>& b) {
    if constexpr (m == 0) {
      return b;
    } else if constexpr (n == 0) {
      return a;
    } else if constexpr (m == 1 && n == 1) {
      return {Order::min(a[0], b[0]), Order::max(a[0], b[0])};
    } else {
      return join(merge(everySecond<0>(a), everySecond<0>(b)), merge(everySecond<1>(a), everySecond<1>(b)));
    }
  }

  template <size_t n>
  DAX_NETWORK_INLINE static List<n> sorted(const List<n>& list) {
    if constexpr (n < 2) {
      return list;
    } else {
      constexpr size_t half = n / 2;
      return merge(sorted(part<0, half>(list)), sorted(part<half, n - half>(list)));
    }
  }

  template <size_t first, size_t count, size_t n>
  DAX_NETWORK_INLINE static List<count> part(const List<n>& list) {
    return pick(list, std::make_index_sequence<count>(), [](size_t i) { return first + i; });
  }

  // The value of a rank among those of two sorted lists.
  template <size_t rank, size_t m, size_t n>
  DAX_NETWORK_INLINE static V select(const List<m>& a, const List<n>& b) {
    // If i of the rank + 1 smallest are of a, the larger of a[i - 1] and b[rank - i] is the value; for any other i it
    // is not smaller.
    constexpr size_t first = rank < n ? 0 : rank + 1 - n, last = std::min(m, rank + 1);
    return selectFrom<rank, first>(a, b, std::make_index_sequence<last - first>());
  }

 private:
  template <size_t n, size_t... i, class Index>
  DAX_NETWORK_INLINE static List<sizeof...(i)> pick(const List<n>& list, std::index_sequence<i...>,
                                                    [[maybe_unused]] Index index) {
    return {list[index(i)]...};
  }

  template <size_t offset, size_t n>
  DAX_NETWORK_INLINE static List<(n + 1 - offset) / 2> everySecond(const List<n>& list) {
    return pick(list, std::make_index_sequence<(n + 1 - offset) / 2>(), [](size_t i) { return offset + 2 * i; });
  }

  // Element i of the merged list: even[0], then comparisons of odd[k] with even[k + 1], then what is left of either.
  template <size_t i, size_t m, size_t n>
  DAX_NETWORK_INLINE static V joined(const List<m>& even, const List<n>& odd) {
    constexpr size_t pair = (i + 1) / 2;  // of odd[pair - 1] and even[pair]
    if constexpr (pair == 0) {
      return even[0];
    } else if constexpr (pair >= m) {
      return odd[pair - 1];
    } else if constexpr (pair > n) {
      return even[pair];
    } else {
      return i % 2 ? Order::min(odd[pair - 1], even[pair]) : Order::max(odd[pair - 1], even[pair]);
    }
  }

  template <size_t m, size_t n>
  DAX_NETWORK_INLINE static List<m + n> join(const List<m>& even, const List<n>& odd) {
    return [&]<size_t... i>(std::index_sequence<i...>) DAX_NETWORK_INLINE {
      return List<m + n>{joined<i>(even, odd)...};
    }
    (std::make_index_sequence<m + n>());
  }

  template <size_t rank, size_t i, size_t m, size_t n>
  DAX_NETWORK_INLINE static V candidate(const List<m>& a, const List<n>& b) {
    if constexpr (i == 0) {
      return b[rank];
    } else if constexpr (i == rank + 1) {
      return a[rank];
    } else {
      return Order::max(a[i - 1], b[rank - i]);
    }
  }

  template <size_t rank, size_t first, size_t m, size_t n, size_t... i>
  DAX_NETWORK_INLINE static V selectFrom(const List<m>& a, const List<n>& b, std::index_sequence<i...>) {
    V result = candidate<rank, first>(a, b);
    ((result = Order::min(result, candidate<rank, first + 1 + i>(a, b))), ...);
    return result;
  }
};

}  // namespace dax
