// Pixels as integers of the same order: signed ones to compare, unsigned ones to count. Floats are ordered as by IEEE
// 754 totalOrder: the magnitude bits of negative ones are inverted.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

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

// As unsigned integers, and back.
inline uint8_t orderedBits(uint8_t v) {
  return v;
}
inline uint16_t orderedBits(uint16_t v) {
  return v;
}
inline uint16_t orderedBits(int16_t v) {
  return static_cast<uint16_t>(static_cast<uint16_t>(v) ^ 0x8000u);
}
inline uint32_t orderedBits(float v) {
  const auto bits = std::bit_cast<uint32_t>(v);
  return bits ^ (bits >> 31 ? ~uint32_t{0} : uint32_t{1} << 31);
}
template <class T>
T fromOrderedBits(uint32_t key) {
  if constexpr (std::is_same_v<T, float>)
    return std::bit_cast<float>(key ^ (key >> 31 ? uint32_t{1} << 31 : ~uint32_t{0}));
  else if constexpr (std::is_signed_v<T>)
    return static_cast<T>(static_cast<int32_t>(key) - 0x8000);
  else
    return static_cast<T>(key);
}

}  // namespace dax
