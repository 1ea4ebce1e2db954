// Rows of HSV and HLS and back, any instruction set.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

#include "image/colour/hsv.h"

namespace dax {

// Floats hold the numerators of bytes exactly, and their quotients are farther from halves than the error of one division;
// doubles those of 16 bits.
template <class T>
using HueReal = std::conditional_t<std::is_same_v<T, uint8_t>, float, double>;

template <class T>
constexpr HueReal<T> kFull = std::is_floating_point_v<T> ? 1 : std::numeric_limits<T>::max();

namespace portable {

// So many pixels, channel by channel: compilers turn loops over these into vectors, where they have no branches.
template <class Real>
struct HueBlock {
  static constexpr int32_t kCount = 64;
  Real c[3][kCount];
};

template <class Real>
struct HueTriple {
  Real a, b, c;
};

// In a form that vectors have: no NaN is told from numbers.
template <class Real>
Real larger(Real a, Real b) {
  return a > b ? a : b;
}
template <class Real>
Real smaller(Real a, Real b) {
  return a < b ? a : b;
}

template <class Real>
struct Hue {
  explicit Hue(const HueTriple<Real>& rgb)
      : max(larger(larger(rgb.a, rgb.b), rgb.c)), min(smaller(smaller(rgb.a, rgb.b), rgb.c)), d(max - min) {
    const bool isRed = rgb.a == max, isGreen = rgb.b == max;
    const Real difference = isRed ? rgb.b - rgb.c : isGreen ? rgb.c - rgb.a : rgb.a - rgb.b;
    const Real first = isRed ? 0 : isGreen ? 2 : 4;
    const Real sixths = difference + first * d;
    position = sixths < 0 ? sixths + 6 * d : sixths;
  }

  // Of a turn. Not divided by 0.
  Real of(Real turn) const {
    const Real per = d == 0 ? 1 : 6 * d;
    return turn * position / per;
  }

  Real max, min, d;
  Real position;  // times d, in sixths of a turn
};

// Of a turn, in 0..1.
template <class Real>
Real partOfTurn(Real hue, Real turn) {
  const Real turns = hue / turn;
  return turns - std::floor(turns);
}

// place + n modulo period, for place in 0..period and n below it.
template <class Real>
Real shifted(Real place, Real n, Real period) {
  const Real sum = place + n;
  return sum >= period ? sum - period : sum;
}

template <class Real>
Real held(Real value, Real low, Real high) {
  return std::max(low, std::min(value, high));
}

struct RgbToHsvPixel {
  template <class Real>
  static HueTriple<Real> of(const HueTriple<Real>& rgb, Real full, Real turn) {
    const Hue<Real> hue(rgb);
    const Real per = hue.max == 0 ? 1 : hue.max;
    return {hue.of(turn), full * hue.d / per, hue.max};
  }
};

struct RgbToHlsPixel {
  template <class Real>
  static HueTriple<Real> of(const HueTriple<Real>& rgb, Real full, Real turn) {
    const Hue<Real> hue(rgb);
    const Real sum = hue.max + hue.min, below = sum > full ? 2 * full - sum : sum;
    const Real per = below == 0 ? 1 : below;
    return {hue.of(turn), sum / 2, full * hue.d / per};
  }
};

// v - v s max(0, min(k, 4 - k, 1)) with k = n + h / 60 modulo 6, and n = 5, 3, 1 for red, green, blue.
struct HsvToRgbPixel {
  template <class Real>
  static HueTriple<Real> of(const HueTriple<Real>& hsv, Real full, Real turn) {
    const Real sixths = 6 * partOfTurn(hsv.a, turn), v = hsv.c, depth = v * hsv.b / full;
    const auto channel = [=](Real n) {
      const Real k = shifted<Real>(sixths, n, 6);
      return v - depth * held<Real>(std::min<Real>(k, 4 - k), 0, 1);
    };
    return {channel(5), channel(3), channel(1)};
  }
};

// l - s min(l, 1 - l) max(-1, min(k - 3, 9 - k, 1)) with k = n + h / 30 modulo 12, and n = 0, 8, 4.
struct HlsToRgbPixel {
  template <class Real>
  static HueTriple<Real> of(const HueTriple<Real>& hls, Real full, Real turn) {
    const Real twelfths = 12 * partOfTurn(hls.a, turn), l = hls.b, depth = hls.c * std::min(l, full - l) / full;
    const auto channel = [=](Real n) {
      const Real k = shifted<Real>(twelfths, n, 12);
      return l - depth * held<Real>(std::min<Real>(k - 3, 9 - k), -1, 1);
    };
    return {channel(0), channel(8), channel(4)};
  }
};

template <class Pixel, class Real>
void convertHueBlock(HueBlock<Real>& block, Real full, Real turn) {
  for (int32_t i = 0; i < HueBlock<Real>::kCount; ++i) {
    const HueTriple<Real> to = Pixel::of(HueTriple<Real>{block.c[0][i], block.c[1][i], block.c[2][i]}, full, turn);
    block.c[0][i] = to.a, block.c[1][i] = to.b, block.c[2][i] = to.c;
  }
}

// A hue that was rounded up to the whole turn is 0.
template <class T, class Real>
void wrapHues(Real* hues, Real turn) {
  for (int32_t i = 0; i < HueBlock<Real>::kCount; ++i) {
    const Real level =
        std::is_floating_point_v<T> ? static_cast<Real>(static_cast<T>(hues[i])) : std::nearbyint(hues[i]);
    hues[i] = level >= turn ? 0 : level;
  }
}

// Channel `kFirst` of memory is the first of the block; 2 for blue, green, red.
template <int kFirst, class T, class Real>
void loadHueBlock(const T* src, int32_t count, HueBlock<Real>& block) {
  for (int32_t i = 0; i < count; ++i) {
    block.c[kFirst][i] = src[3 * i], block.c[1][i] = src[3 * i + 1], block.c[2 - kFirst][i] = src[3 * i + 2];
  }
}

template <class T, class Real>
T levelOfHue(Real value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return static_cast<T>(static_cast<int32_t>(std::nearbyint(value)));
}

template <int kFirst, class T, class Real>
void storeHueBlock(const HueBlock<Real>& block, int32_t count, T* dst) {
  for (int32_t i = 0; i < count; ++i) {
    dst[3 * i] = levelOfHue<T>(block.c[kFirst][i]), dst[3 * i + 1] = levelOfHue<T>(block.c[1][i]);
    dst[3 * i + 2] = levelOfHue<T>(block.c[2 - kFirst][i]);
  }
}

template <class Conversion, class T>
void hueRow(const T* src, T* dst, int32_t count, double turnOfHue) {
  using Real = HueReal<T>;
  const auto turn = static_cast<Real>(turnOfHue);
  HueBlock<Real> block = {};
  for (int32_t x = 0, part; x < count; x += part) {
    part = std::min(count - x, HueBlock<Real>::kCount);
    loadHueBlock<Conversion::kFrom>(src + 3 * ptrdiff_t{x}, part, block);
    convertHueBlock<typename Conversion::Pixel>(block, kFull<T>, turn);
    if (Conversion::kMakesHue) wrapHues<T>(block.c[0], turn);
    storeHueBlock<Conversion::kTo>(block, part, dst + 3 * ptrdiff_t{x});
  }
}

}  // namespace portable

template <class Order>
struct ToHsv {
  using Pixel = portable::RgbToHsvPixel;
  static constexpr int kFrom = Order::kRed, kTo = 0;
  static constexpr bool kMakesHue = true;
};
template <class Order>
struct ToHls {
  using Pixel = portable::RgbToHlsPixel;
  static constexpr int kFrom = Order::kRed, kTo = 0;
  static constexpr bool kMakesHue = true;
};
template <class Order>
struct FromHsv {
  using Pixel = portable::HsvToRgbPixel;
  static constexpr int kFrom = 0, kTo = Order::kRed;
  static constexpr bool kMakesHue = false;
};
template <class Order>
struct FromHls {
  using Pixel = portable::HlsToRgbPixel;
  static constexpr int kFrom = 0, kTo = Order::kRed;
  static constexpr bool kMakesHue = false;
};

}  // namespace dax
