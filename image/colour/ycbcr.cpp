#include "image/colour/ycbcr.h"

#include <limits>
#include <utility>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/numeric/round.h"
#include "image/colour/colour_rows.h"
#include "image/colour/ycbcr_neon.h"
#include "image/colour/ycbcr_portable.h"

namespace dax {
namespace {

struct LumaWeights {
  explicit LumaWeights(int32_t standard)
      : red(standard == DAXI_COLOUR_BT709 ? 0.2126 : 0.299), blue(standard == DAXI_COLOUR_BT709 ? 0.0722 : 0.114) {}
  double red, blue;
};

// A level v of 0..1 is stored as low + span v; a difference in -0.5..0.5 as center + swing v.
struct YCbCrLevels {
  double low, span, center, swing;
};

// In levels of 8 bits, of which others are multiples but for the centre of the full range.
YCbCrLevels byteLevels(int32_t range) {
  return range == DAXI_COLOUR_FULL ? YCbCrLevels{0, 255, 128, 255} : YCbCrLevels{16, 219, 128, 224};
}

template <class T>
YCbCrLevels levelsOf(int32_t range) {
  if constexpr (std::is_same_v<T, uint16_t>) {
    if (range == DAXI_COLOUR_FULL) return {0, 65535, 32768, 65535};
    return {16 * 256.0, 219 * 256.0, 128 * 256.0, 224 * 256.0};
  } else if constexpr (std::is_same_v<T, float>) {
    if (range == DAXI_COLOUR_FULL) return {0, 1, 0.5, 1};
    return {16 / 255.0, 219 / 255.0, 128 / 255.0, 224 / 255.0};
  } else {
    return byteLevels(range);
  }
}

template <class T>
constexpr double kMaxOf = std::is_floating_point_v<T> ? 1.0 : std::numeric_limits<T>::max();

// From red, green, blue.
ColourMatrix encoding(int32_t standard, const YCbCrLevels& to, double max) {
  const auto [kr, kb] = LumaWeights(standard);
  const double y = to.span / max, cb = to.swing / max / (2 * (1 - kb)), cr = to.swing / max / (2 * (1 - kr));
  const double kg = 1 - kr - kb;
  return {{{kr * y, kg * y, kb * y, to.low},
           {-kr * cb, -kg * cb, (1 - kb) * cb, to.center},
           {(1 - kr) * cr, -kg * cr, -kb * cr, to.center}}};
}

// To red, green, blue.
ColourMatrix decoding(int32_t standard, const YCbCrLevels& from, double max) {
  const auto [kr, kb] = LumaWeights(standard);
  const double y = max / from.span, c = 2 * max / from.swing, kg = 1 - kr - kb;
  ColourMatrix by = {
      {{y, 0, c * (1 - kr), 0}, {y, -c * kb * (1 - kb) / kg, -c * kr * (1 - kr) / kg, 0}, {y, c * (1 - kb), 0, 0}}};
  for (auto& row : by.m) row[3] = -(row[0] * from.low + (row[1] + row[2]) * from.center);
  return by;
}

int32_t fixedYCbCr(double value) {
  return roundTo<int32_t>(value * (1 << kYCbCrBits));
}

}  // namespace

// The coefficients of green make grey exactly grey: those of Y sum to that of the span, those of Cb and Cr to 0.
YCbCrEncoder::YCbCrEncoder(int32_t standard, int32_t range) {
  const ColourMatrix by = encoding(standard, byteLevels(range), 255);
  for (int k = 0; k < 3; ++k) {
    const int32_t sum = k == 0 ? fixedYCbCr(byteLevels(range).span / 255) : 0;
    c[k][0] = fixedYCbCr(by.m[k][0]), c[k][2] = fixedYCbCr(by.m[k][2]), c[k][1] = sum - c[k][0] - c[k][2];
    bias[k] = fixedYCbCr(by.m[k][3]) + kYCbCrHalf;
  }
}

YCbCrDecoder::YCbCrDecoder(int32_t standard, int32_t range) {
  const YCbCrLevels from = byteLevels(range);
  const ColourMatrix by = decoding(standard, from, 255);
  y = fixedYCbCr(by.m[0][0]), redCr = fixedYCbCr(by.m[0][2]), blueCb = fixedYCbCr(by.m[2][1]);
  greenCb = fixedYCbCr(-by.m[1][1]), greenCr = fixedYCbCr(-by.m[1][2]);
  bias = kYCbCrHalf - fixedYCbCr(from.low * by.m[0][0]);
}

template <class Order, class T>
DaxStatus encodeYCbCr(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      int32_t standard, int32_t range) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE_OK(checkYCbCr(standard, range));
  if constexpr (std::is_same_v<T, uint8_t>) {
    const YCbCrEncoder by(standard, range);
    auto* const row = usesNeon(currentIsa()) ? neon::encodeYCbCrRow<Order> : portable::encodeYCbCrRow<Order>;
    return convertRows(on, from, to, size, [&](const T* s, T* d, int32_t count) { row(s, d, count, by); });
  } else {
    ColourMatrix by = encoding(standard, levelsOf<T>(range), kMaxOf<T>);
    if (Order::kRed == 2) {
      for (auto& row : by.m) std::swap(row[0], row[2]);
    }
    return timesMatrix(on, from, to, size, by);
  }
}

template <class Order, class T>
DaxStatus decodeYCbCr(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      int32_t standard, int32_t range) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE_OK(checkYCbCr(standard, range));
  if constexpr (std::is_same_v<T, uint8_t>) {
    const YCbCrDecoder by(standard, range);
    auto* const row = usesNeon(currentIsa()) ? neon::decodeYCbCrRow<Order> : portable::decodeYCbCrRow<Order>;
    return convertRows(on, from, to, size, [&](const T* s, T* d, int32_t count) { row(s, d, count, by); });
  } else {
    ColourMatrix by = decoding(standard, levelsOf<T>(range), kMaxOf<T>);
    if (Order::kRed == 2) std::swap(by.m[0], by.m[2]);
    return timesMatrix(on, from, to, size, by);
  }
}

#define DAX_YCBCR(ORDER, T)                                                                                          \
  template DaxStatus encodeYCbCr<ORDER, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, int32_t, int32_t); \
  template DaxStatus decodeYCbCr<ORDER, T>(PoolThreads, const T*, int32_t, T*, int32_t, DaxiSize, int32_t, int32_t);
#define DAX_YCBCR_ORDER(ORDER) DAX_YCBCR(ORDER, uint8_t) DAX_YCBCR(ORDER, uint16_t) DAX_YCBCR(ORDER, float)
DAX_YCBCR_ORDER(RgbOrder)
DAX_YCBCR_ORDER(BgrOrder)
#undef DAX_YCBCR_ORDER
#undef DAX_YCBCR

}  // namespace dax
