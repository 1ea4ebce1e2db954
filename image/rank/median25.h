// The median of 25 values that come as five sorted columns, by comparisons alone: the same text for numbers and for
// vectors of them, for which `Order` has min(a, b) and max(a, b).
//
// With the ranks of the columns as rows, sort every row: then rows and columns ascend, and an element that has 13 above
// it or 13 below it is not the median. That leaves 13 on three diagonals:
//
//      .   .   .  low mid
//      .   .  low mid high
//      .  low mid high .
//     low mid high .   .
//     mid high .   .   .
//
// Of the four low ones all but the largest have seven of the 13 above them, of the four high ones all but the smallest
// seven below. So the median is that of seven: the largest low, the five middle ones, the smallest high.
//
// Two windows that are one column apart share four columns, whose rows are sorted once.
#pragma once

#include <algorithm>

namespace dax {

template <class Order, class V>
struct Median25 {
  static V min(V a, V b) { return Order::min(a, b); }
  static V max(V a, V b) { return Order::max(a, b); }
  static void sort(V& a, V& b) {
    const V low = min(a, b);
    b = max(a, b);
    a = low;
  }
  static V clamp(V v, V low, V high) { return min(max(v, low), high); }

  struct Sorted4 {
    V v0, v1, v2, v3;
  };

  static Sorted4 sorted(V a, V b, V c, V d) {
    sort(a, b), sort(c, d), sort(a, c), sort(b, d), sort(b, c);
    return {a, b, c, d};
  }

  // What is known of a window after some of its rows.
  struct Window {
    V low, high, mid[5];
    V median() {
      // The second to fourth of the middle ones, by the network of nine comparators for five values.
      V* const m = mid;
      sort(m[0], m[1]), sort(m[3], m[4]), sort(m[2], m[4]), sort(m[2], m[3]), sort(m[1], m[4]);
      sort(m[0], m[3]), sort(m[0], m[2]), sort(m[1], m[3]), sort(m[1], m[2]);
      const V u = min(low, high), v = max(low, high);
      return min(m[3], min(max(m[2], u), max(m[1], v)));
    }
  };

  // Takes rank k of the columns: four that all windows share, and one more of each. All ranks, in ascending order.
  template <int k>
  static void addRow(const Sorted4& s, V fifth, Window& w) {
    if constexpr (k == 0) {  // the two largest
      w.low = clamp(fifth, s.v2, s.v3);
      w.mid[0] = max(fifth, s.v3);
    } else if constexpr (k == 1) {
      w.low = max(w.low, clamp(fifth, s.v1, s.v2));
      w.mid[1] = clamp(fifth, s.v2, s.v3);
      w.high = max(fifth, s.v3);
    } else if constexpr (k == 2) {
      w.low = max(w.low, clamp(fifth, s.v0, s.v1));
      w.mid[2] = clamp(fifth, s.v1, s.v2);
      w.high = min(w.high, clamp(fifth, s.v2, s.v3));
    } else if constexpr (k == 3) {
      w.low = max(w.low, min(fifth, s.v0));
      w.mid[3] = clamp(fifth, s.v0, s.v1);
      w.high = min(w.high, clamp(fifth, s.v1, s.v2));
    } else {  // the two smallest
      w.mid[4] = min(fifth, s.v0);
      w.high = min(w.high, clamp(fifth, s.v0, s.v1));
    }
  }

  // Five values in ascending order, from four sorted ones and another.
  static void insert(const Sorted4& s, V fifth, V (&column)[5]) {
    column[0] = min(fifth, s.v0);
    column[1] = clamp(fifth, s.v0, s.v1);
    column[2] = clamp(fifth, s.v1, s.v2);
    column[3] = clamp(fifth, s.v2, s.v3);
    column[4] = max(fifth, s.v3);
  }
};

}  // namespace dax
