#include "image/convert/lut.h"

#include <algorithm>
#include <cmath>

#include "daxi/lut.h"
#include "frame/numeric/round.h"
#include "image/convert/lut_neon.h"
#include "image/convert/lut_portable.h"

namespace dax {

template <class From, class To>
void lutRow(const From* src, To* dst, int32_t count, const To* table, int32_t isa) {
  usesNeon(isa) ? neon::lutRow(src, dst, count, table) : portable::lutRow(src, dst, count, table);
}

template void lutRow<uint8_t, uint8_t>(const uint8_t*, uint8_t*, int32_t, const uint8_t*, int32_t);
template void lutRow<uint8_t, uint16_t>(const uint8_t*, uint16_t*, int32_t, const uint16_t*, int32_t);
template void lutRow<uint8_t, float>(const uint8_t*, float*, int32_t, const float*, int32_t);
template void lutRow<uint16_t, uint16_t>(const uint16_t*, uint16_t*, int32_t, const uint16_t*, int32_t);

namespace {

constexpr int32_t kMinKnots = 2, kMaxKnots = 256;

template <int kChannels, class From, class To>
DaxStatus lut(const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size, const To* table) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(table, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  applyTable(from, to, size, kChannels, table);
  return DAX_STS_OK;
}

// --- A line through knots ---

struct Knots {
  const double *levels, *values;
  int32_t count;

  // NaN stays.
  double at(double x) const {
    if (!(x >= levels[0])) return std::isnan(x) ? x : values[0];
    if (x >= levels[count - 1]) return values[count - 1];
    const auto i = std::upper_bound(levels, levels + count, x) - levels - 1;
    return values[i] + (x - levels[i]) * (values[i + 1] - values[i]) / (levels[i + 1] - levels[i]);
  }
};

template <class T>
T pixelAt(const Knots& knots, T x) {
  const double value = knots.at(static_cast<double>(x));
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return roundTo<T>(value);
}

DaxStatus checkKnots(const Knots& knots) {
  DAX_REQUIRE(knots.count >= kMinKnots && knots.count <= kMaxKnots, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < knots.count; ++i) {
    DAX_REQUIRE(std::isfinite(knots.levels[i]) && (i == 0 || knots.levels[i] > knots.levels[i - 1]), DAX_STS_BAD_PARAM);
  }
  const bool finite = std::all_of(knots.values, knots.values + knots.count, [](double v) { return std::isfinite(v); });
  DAX_REQUIRE(finite, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <int kChannels, class T>
DaxStatus lutLinear(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double* levels,
                    const double* values, int32_t count) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  const Knots knots{levels, values, count};
  DAX_REQUIRE(levels && values, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, kChannels, from, to));
  DAX_REQUIRE_OK(checkKnots(knots));
  if constexpr (sizeof(T) == 1) {
    T table[kLevels<T>];
    for (int32_t v = 0; v < kLevels<T>; ++v) table[v] = pixelAt(knots, static_cast<T>(v));
    applyTable(from, to, size, kChannels, table);
  } else {
    const auto row = [&](const T* pixels, T* result, int32_t length) {
      for (int32_t x = 0; x < length; ++x) result[x] = pixelAt(knots, pixels[x]);
    };
    forEachRow(size, kChannels, row, from, to);
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_LUT(NAME, FROM, TO, LEVELS, CHANNELS)                                                        \
  DaxStatus DAXI_Lut_##NAME##_C##CHANNELS##R(const FROM* src, int32_t srcStep, TO* dst, int32_t dstStep, \
                                             DaxiSize size, const TO table[LEVELS]) {                    \
    return dax::lut<CHANNELS>(src, srcStep, dst, dstStep, size, table);                                  \
  }
#define DAX_LUT_IN_PLACE(NAME, T, LEVELS, CHANNELS)                                                            \
  DaxStatus DAXI_Lut_##NAME##_C##CHANNELS##IR(T* srcDst, int32_t step, DaxiSize size, const T table[LEVELS]) { \
    return dax::lut<CHANNELS, T>(srcDst, step, srcDst, step, size, table);                                     \
  }
DAX_LUT(8u, uint8_t, uint8_t, 256, 1)
DAX_LUT(8u, uint8_t, uint8_t, 256, 3)
DAX_LUT(8u16u, uint8_t, uint16_t, 256, 1)
DAX_LUT(8u16u, uint8_t, uint16_t, 256, 3)
DAX_LUT(8u32f, uint8_t, float, 256, 1)
DAX_LUT(8u32f, uint8_t, float, 256, 3)
DAX_LUT(16u, uint16_t, uint16_t, 65536, 1)
DAX_LUT(16u, uint16_t, uint16_t, 65536, 3)
DAX_LUT_IN_PLACE(8u, uint8_t, 256, 1)
DAX_LUT_IN_PLACE(8u, uint8_t, 256, 3)
DAX_LUT_IN_PLACE(16u, uint16_t, 65536, 1)
DAX_LUT_IN_PLACE(16u, uint16_t, 65536, 3)
#undef DAX_LUT_IN_PLACE
#undef DAX_LUT

#define DAX_LUT_LINEAR(SUFFIX, T, CHANNELS)                                                                         \
  DaxStatus DAXI_LutLinear_##SUFFIX##_C##CHANNELS##R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,        \
                                                     DaxiSize size, const double* levels, const double* values,     \
                                                     int32_t count) {                                               \
    return dax::lutLinear<CHANNELS>(src, srcStep, dst, dstStep, size, levels, values, count);                       \
  }                                                                                                                 \
  DaxStatus DAXI_LutLinear_##SUFFIX##_C##CHANNELS##IR(T* srcDst, int32_t step, DaxiSize size, const double* levels, \
                                                      const double* values, int32_t count) {                        \
    return dax::lutLinear<CHANNELS, T>(srcDst, step, srcDst, step, size, levels, values, count);                    \
  }
#define DAX_LUT_LINEAR_TYPE(SUFFIX, T) DAX_LUT_LINEAR(SUFFIX, T, 1) DAX_LUT_LINEAR(SUFFIX, T, 3)
DAX_LUT_LINEAR_TYPE(8u, uint8_t)
DAX_LUT_LINEAR_TYPE(16u, uint16_t)
DAX_LUT_LINEAR_TYPE(16s, int16_t)
DAX_LUT_LINEAR_TYPE(32f, float)
#undef DAX_LUT_LINEAR_TYPE
#undef DAX_LUT_LINEAR
