#include "image/convert/convert.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

#include "frame/dispatch.h"
#include "frame/op2d.h"
#include "image/convert/convert_neon.h"
#include "image/convert/convert_portable.h"

static_assert(sizeof(DaxiConvertCfg) == 16 && offsetof(DaxiConvertCfg, offset) == 8);

namespace dax {

// How pixels are computed. plain: values as they are. single: in single precision. split: so, with a scale of two parts and no offset. real: in double
// precision, which the results of all others are equal to.
enum class ConvertArithmetic { plain, single, split, real };

namespace {

// To compare two arithmetics over all values of a type pays from so many pixels on.
template <class T>
constexpr int64_t kManyPixels = sizeof(T) == 1 ? 1 << 12 : 1 << 20;

DaxStatus checkConvertCfg(const DaxiConvertCfg& cfg) {
  DAX_REQUIRE(std::isfinite(cfg.scale), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.offset), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

bool isPlain(const DaxiConvertCfg& cfg) {
  return cfg.scale == 1 && cfg.offset == 0;
}

// Whether products with the scale and their sums with the offset are multiples of one unit, and small enough for 24 bits, so
// that single precision holds them exactly. `maxValue`: of whole numbers.
bool isExactInSingle(const DaxiConvertCfg& cfg, double maxValue) {
  int exponent;
  const auto mantissa = static_cast<int64_t>(std::ldexp(std::fabs(std::frexp(cfg.scale, &exponent)), 53));
  if (mantissa == 0 || std::abs(exponent) > 60) return false;
  const int zeros = std::countr_zero(static_cast<uint64_t>(mantissa));
  const double offset = std::ldexp(cfg.offset, 53 - exponent - zeros);
  return std::rint(offset) == offset && maxValue * std::ldexp(mantissa, -zeros) + std::fabs(offset) <= 0x1p24;
}

// Products with powers of two are exact, but for what becomes 0 or saturates anyway.
bool isPowerOfTwo(double scale) {
  int exponent;
  return std::fabs(std::frexp(scale, &exponent)) == 0.5 && std::abs(exponent) <= 60;
}

template <class From, class To>
void elements(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg, ConvertArithmetic arithmetic,
              bool neon) {
  switch (arithmetic) {
    case ConvertArithmetic::plain:
      return neon ? neon::plainRow(src, dst, count) : portable::plainRow(src, dst, count);
    case ConvertArithmetic::single:
      return neon ? neon::linearRow<float>(src, dst, count, cfg) : portable::linearRow<float>(src, dst, count, cfg);
    case ConvertArithmetic::split:
      if constexpr (std::is_same_v<To, float>) {
        return neon ? neon::splitRow(src, dst, count, cfg.scale) : portable::splitRow(src, dst, count, cfg.scale);
      }
      break;
    case ConvertArithmetic::real:
      return neon ? neon::linearRow<double>(src, dst, count, cfg) : portable::linearRow<double>(src, dst, count, cfg);
  }
}

// Whether an arithmetic gives the results of double precision, for all values of a type.
template <class To, class From>
bool isEnough(ConvertArithmetic arithmetic, const DaxiConvertCfg& cfg, bool neon) {
  constexpr int32_t kPart = 256, kMin = std::numeric_limits<From>::min(), kMax = std::numeric_limits<From>::max();
  for (int32_t first = kMin; first < kMax; first += kPart) {
    From values[kPart];
    To results[kPart], expected[kPart];
    for (int32_t i = 0; i < kPart; ++i) values[i] = static_cast<From>(first + i);
    elements(values, results, kPart, cfg, arithmetic, neon);
    elements(values, expected, kPart, cfg, ConvertArithmetic::real, neon);
    const auto same = [](To a, To b) {
      return a == b && std::signbit(static_cast<double>(a)) == std::signbit(static_cast<double>(b));
    };
    if (!std::equal(results, results + kPart, expected, same)) return false;
  }
  return true;
}

template <class From, class To>
ConvertArithmetic arithmeticFor(const DaxiConvertCfg& cfg, int64_t pixels, bool neon) {
  if (isPlain(cfg)) return ConvertArithmetic::plain;
  if constexpr (std::is_same_v<From, float>) {
    return isPowerOfTwo(cfg.scale) && cfg.offset == 0 ? ConvertArithmetic::single : ConvertArithmetic::real;
  } else {
    if (isExactInSingle(cfg, 0x1p16)) return ConvertArithmetic::single;
    if (pixels < kManyPixels<From>) return ConvertArithmetic::real;
    if (isEnough<To, From>(ConvertArithmetic::single, cfg, neon)) return ConvertArithmetic::single;
    const bool maySplit = std::is_same_v<To, float> && sizeof(From) == 1 && cfg.offset == 0;
    return maySplit && isEnough<To, From>(ConvertArithmetic::split, cfg, neon) ? ConvertArithmetic::split
                                                                               : ConvertArithmetic::real;
  }
}

}  // namespace

template <class From, class To>
void convertElements(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg, int32_t isa) {
  elements(src, dst, count, cfg, arithmeticFor<From, To>(cfg, count, usesNeon(isa)), usesNeon(isa));
}

template <class From, class To, int kChannels>
DaxStatus convert(PoolThreads on, const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size,
                  const DaxiConvertCfg* cfg) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  DAX_REQUIRE_OK(checkConvertCfg(*cfg));
  const bool neon = usesNeon(currentIsa());
  const auto arithmetic = arithmeticFor<From, To>(*cfg, int64_t{size.width} * size.height, neon);
  const auto row = [=, settings = *cfg](const From* pixels, To* result, int32_t count) {
    elements(pixels, result, count, settings, arithmetic, neon);
  };
  return forEachRow(on, size, kChannels, row, from, to);
}

template <class From, class To>
void convertFullRangeElements(const From* src, To* dst, int32_t count, int32_t isa) {
  usesNeon(isa) ? neon::fullRangeRow(src, dst, count) : portable::fullRangeRow(src, dst, count);
}

template <class From, class To, int kChannels>
DaxStatus convertFullRange(PoolThreads on, const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  const auto row = [isa = currentIsa()](const From* pixels, To* result, int32_t count) {
    convertFullRangeElements(pixels, result, count, isa);
  };
  return forEachRow(on, size, kChannels, row, from, to);
}

#define DAX_CONVERT_CHANNELS(FROM, TO, CHANNELS)                                                            \
  template DaxStatus convert<FROM, TO, CHANNELS>(PoolThreads, const FROM*, int32_t, TO*, int32_t, DaxiSize, \
                                                 const DaxiConvertCfg*);                                    \
  template DaxStatus convertFullRange<FROM, TO, CHANNELS>(PoolThreads, const FROM*, int32_t, TO*, int32_t, DaxiSize);
#define DAX_CONVERT(FROM, TO)                                                                         \
  DAX_CONVERT_CHANNELS(FROM, TO, 1)                                                                   \
  DAX_CONVERT_CHANNELS(FROM, TO, 3)                                                                   \
  template void convertElements<FROM, TO>(const FROM*, TO*, int32_t, const DaxiConvertCfg&, int32_t); \
  template void convertFullRangeElements<FROM, TO>(const FROM*, TO*, int32_t, int32_t);
#define DAX_CONVERT_FROM(FROM, TO1, TO2, TO3) DAX_CONVERT(FROM, TO1) DAX_CONVERT(FROM, TO2) DAX_CONVERT(FROM, TO3)
DAX_CONVERT_FROM(uint8_t, uint16_t, int16_t, float)
DAX_CONVERT_FROM(uint16_t, uint8_t, int16_t, float)
DAX_CONVERT_FROM(int16_t, uint8_t, uint16_t, float)
DAX_CONVERT_FROM(float, uint8_t, uint16_t, int16_t)
#undef DAX_CONVERT_FROM
#undef DAX_CONVERT
#undef DAX_CONVERT_CHANNELS

}  // namespace dax

DaxStatus DAXI_ConvertDefaultCfg(DaxiConvertCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {1, 0};
  return DAX_STS_OK;
}
