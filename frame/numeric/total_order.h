// Pixels as integers of the same order. Floats are ordered as by IEEE 754 totalOrder: the magnitude bits of negative
// ones are inverted.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

namespace dax {

template <class T>
struct OrderKey {
  using Key = T;
  static Key of(T pixel) { return pixel; }
  static T pixel(Key key) { return key; }
};

template <class T, class Integer>
struct FloatOrderKey {
  using Key = Integer;
  static Key flip(Key bits) {
    return static_cast<Key>(bits ^ ((bits >> (8 * sizeof(Key) - 1)) & std::numeric_limits<Key>::max()));
  }
  static Key of(T pixel) { return flip(std::bit_cast<Key>(pixel)); }
  static T pixel(Key key) { return std::bit_cast<T>(flip(key)); }
};
template <>
struct OrderKey<float> : FloatOrderKey<float, int32_t> {};
template <>
struct OrderKey<double> : FloatOrderKey<double, int64_t> {};

}  // namespace dax
