// Rows of integral images.
#pragma once

#include <cstdint>

namespace dax {

struct Itself {
  template <class D>
  static D of(D value) {
    return value;
  }
};
struct Squared {
  template <class D>
  static D of(D value) {
    return value * value;
  }
};

namespace portable {

// dst[i] = above[i] + the sum up to pixel i, to which `before` belongs.
template <class Map, class T, class D>
void integralRow(const T* src, const D* above, D* dst, int32_t width, D before = 0) {
  for (int32_t x = 0; x < width; ++x) {
    before += Map::of(static_cast<D>(src[x]));
    dst[x] = above[x] + before;
  }
}

inline void integralOfBytes(const uint8_t* src, const uint32_t* above, uint32_t* dst, int32_t width) {
  integralRow<Itself>(src, above, dst, width);
}

}  // namespace portable
}  // namespace dax
