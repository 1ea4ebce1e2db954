// What the twins of the Bayer kernels share: the pattern, and the formulas in terms of the samples around a pair of pixels.
#pragma once

#include <cstdint>

namespace dax {

// A row of the pattern has green at every other pixel, and one other colour, its own.
struct BayerRow {
  BayerRow(int32_t phase, int32_t y)
      : own((phase >> 1 & 1) == (y & 1) ? 0 : 2), column(own == 0 ? phase & 1 : (phase & 1) ^ 1) {}
  int32_t own;     // channel of its own colour: 0 red, 2 blue
  int32_t column;  // of its first pixel of its own colour
};

// The pixels of a pair: the left one has a sample of the row's own colour, the right one of green.
template <class V>
struct BayerPixel {
  V own, green, other;
};
template <class V>
struct BayerPair {
  BayerPixel<V> left, right;
};

// Ops::average of two and of four; window.at(dy, dx) is the sample dx columns to the right of the left pixel, in row dy.
struct BayerBilinear {
  static constexpr int kReach = 1;

  template <class Ops, class Window>
  static auto pair(const Window& w) {
    using V = decltype(w.at(0, 0));
    const BayerPixel<V> left = {w.at(0, 0), Ops::average(w.at(0, -1), w.at(0, 1), w.at(-1, 0), w.at(1, 0)),
                                Ops::average(w.at(-1, -1), w.at(-1, 1), w.at(1, -1), w.at(1, 1))};
    const BayerPixel<V> right = {Ops::average(w.at(0, 0), w.at(0, 2)), w.at(0, 1),
                                 Ops::average(w.at(-1, 1), w.at(1, 1))};
    return BayerPair<V>{left, right};
  }
};

// Samples are wide signed numbers; Ops::sixteenth rounds and saturates the sums.
struct BayerMhc {
  static constexpr int kReach = 2;

  template <class Ops, class Window>
  static auto pair(const Window& w) {
    const auto plus = (w.at(0, -1) + w.at(0, 1)) + (w.at(-1, 0) + w.at(1, 0));
    const auto farther = (w.at(0, -2) + w.at(0, 2)) + (w.at(-2, 0) + w.at(2, 0));
    const auto corners = (w.at(-1, -1) + w.at(-1, 1)) + (w.at(1, -1) + w.at(1, 1));
    const auto own = w.at(0, 0), four = own * 4;
    const auto green = Ops::sixteenth((four + plus * 2 - farther) * 2);
    const auto other = Ops::sixteenth((four + corners) * 4 - four - farther * 3);

    const auto center = w.at(0, 1) * 10;
    const auto alongX = w.at(0, -1) + w.at(0, 3), alongY = w.at(-2, 1) + w.at(2, 1);
    const auto greens = (w.at(-1, 0) + w.at(-1, 2)) + (w.at(1, 0) + w.at(1, 2));
    const auto inRow = (w.at(0, 0) + w.at(0, 2)) * 8, inColumn = (w.at(-1, 1) + w.at(1, 1)) * 8;
    const auto rightOwn = Ops::sixteenth(center + inRow + alongY - (alongX + greens) * 2);
    const auto rightOther = Ops::sixteenth(center + inColumn + alongX - (alongY + greens) * 2);
    using V = decltype(Ops::sixteenth(own));
    return BayerPair<V>{{Ops::same(own), green, other}, {rightOwn, Ops::same(w.at(0, 1)), rightOther}};
  }
};

}  // namespace dax
