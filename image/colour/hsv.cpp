#include "image/colour/hsv.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "image/colour/colour_rows.h"

namespace dax {
namespace {

// Floats hold the numerators of bytes exactly, and their quotients are farther from halves than the error of one division;
// doubles those of 16 bits.
template <class T>
using HueReal = std::conditional_t<std::is_same_v<T, uint8_t>, float, double>;

template <class T>
constexpr HueReal<T> kFull = std::is_floating_point_v<T> ? 1 : std::numeric_limits<T>::max();

// Compilers turn loops over these into vectors: they have no branches, and no division by 0.
template <class Real>
struct Hue {
  Hue(Real red, Real green, Real blue)
      : max(std::max(std::max(red, green), blue)), min(std::min(std::min(red, green), blue)), d(max - min) {
    const bool isRed = red == max, isGreen = green == max;
    const Real difference = isRed ? green - blue : isGreen ? blue - red : red - green;
    const Real sixths = difference + (isRed ? 0 : isGreen ? 2 : 4) * d;
    position = sixths < 0 ? sixths + 6 * d : sixths;
  }

  // Of a turn.
  Real of(Real turn) const { return turn * position / (d == 0 ? 1 : 6 * d); }

  Real max, min, d;
  Real position;  // times d, in sixths of a turn
};

template <class T, class Real>
T levelOf(Real value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return static_cast<T>(static_cast<int32_t>(std::nearbyint(value)));
}

// A rounded hue may be the whole turn, which is 0.
template <class T, class Real>
T hueLevel(Real value, Real turn) {
  const Real level = std::is_floating_point_v<T> ? static_cast<Real>(static_cast<T>(value)) : std::nearbyint(value);
  return levelOf<T>(level >= turn ? 0 : level);
}

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

}  // namespace

template <class Order>
struct ToHsv {
  template <class T, class Real>
  static void pixel(const T* from, T* to, Real turn) {
    const Hue<Real> hue(from[Order::kRed], from[1], from[Order::kBlue]);
    const Real s = kFull<T> * hue.d / (hue.max == 0 ? 1 : hue.max);
    to[0] = hueLevel<T>(hue.of(turn), turn), to[1] = levelOf<T>(s), to[2] = levelOf<T>(hue.max);
  }
};

template <class Order>
struct ToHls {
  template <class T, class Real>
  static void pixel(const T* from, T* to, Real turn) {
    const Hue<Real> hue(from[Order::kRed], from[1], from[Order::kBlue]);
    const Real sum = hue.max + hue.min, below = sum > kFull<T> ? 2 * kFull<T> - sum : sum;
    const Real s = kFull<T> * hue.d / (below == 0 ? 1 : below);
    to[0] = hueLevel<T>(hue.of(turn), turn), to[1] = levelOf<T>(sum / 2), to[2] = levelOf<T>(s);
  }
};

// v - v s max(0, min(k, 4 - k, 1)) with k = n + h / 60 modulo 6, and n = 5, 3, 1 for red, green, blue.
template <class Order>
struct FromHsv {
  template <class T, class Real>
  static void pixel(const T* from, T* to, Real turn) {
    const Real sixths = 6 * partOfTurn<Real>(from[0], turn), v = from[2], depth = v * from[1] / kFull<T>;
    const auto channel = [=](Real n) {
      const Real k = shifted<Real>(sixths, n, 6);
      return levelOf<T>(v - depth * std::max<Real>(0, std::min(std::min<Real>(k, 4 - k), Real{1})));
    };
    to[Order::kRed] = channel(5), to[1] = channel(3), to[Order::kBlue] = channel(1);
  }
};

// l - s min(l, 1 - l) max(-1, min(k - 3, 9 - k, 1)) with k = n + h / 30 modulo 12, and n = 0, 8, 4.
template <class Order>
struct FromHls {
  template <class T, class Real>
  static void pixel(const T* from, T* to, Real turn) {
    const Real twelfths = 12 * partOfTurn<Real>(from[0], turn), l = from[1];
    const Real depth = from[2] * std::min(l, kFull<T> - l) / kFull<T>;
    const auto channel = [=](Real n) {
      const Real k = shifted<Real>(twelfths, n, 12);
      return levelOf<T>(l - depth * std::max<Real>(-1, std::min(std::min<Real>(k - 3, 9 - k), Real{1})));
    };
    to[Order::kRed] = channel(0), to[1] = channel(8), to[Order::kBlue] = channel(4);
  }
};

template <class Conversion, class T>
void hueRow(const T* src, T* dst, int32_t count, double turn) {
  const auto ofTurn = static_cast<HueReal<T>>(turn);
  for (ptrdiff_t x = 0; x < 3 * ptrdiff_t{count}; x += 3) Conversion::pixel(src + x, dst + x, ofTurn);
}

template <class Conversion, class T>
DaxStatus convertHue(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                     int32_t hue180) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE(hue180 == 0 || hue180 == 1, DAX_STS_BAD_PARAM);
  const double turn = std::is_same_v<T, float> ? 360 : hue180 == 1 ? 180 : kFull<T> + 1;
  return convertRows(on, from, to, size,
                     [=](const T* s, T* d, int32_t count) { hueRow<Conversion>(s, d, count, turn); });
}

#define DAX_HUE_TYPE(CONVERSION, T) \
  template DaxStatus convertHue<CONVERSION, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, int32_t);
#define DAX_HUE(CONVERSION)          \
  DAX_HUE_TYPE(CONVERSION, uint8_t)  \
  DAX_HUE_TYPE(CONVERSION, uint16_t) \
  DAX_HUE_TYPE(CONVERSION, float)
#define DAX_HUE_ORDER(ORDER) \
  DAX_HUE(ToHsv<ORDER>)      \
  DAX_HUE(FromHsv<ORDER>)    \
  DAX_HUE(ToHls<ORDER>)      \
  DAX_HUE(FromHls<ORDER>)
DAX_HUE_ORDER(RgbOrder)
DAX_HUE_ORDER(BgrOrder)
#undef DAX_HUE_ORDER
#undef DAX_HUE
#undef DAX_HUE_TYPE

}  // namespace dax
