#include "image/colour/gray.h"

#include <cmath>

#include "daxi/colour.h"
#include "frame/dispatch.h"
#include "frame/numeric/round.h"
#include "image/colour/colour_rows.h"
#include "image/colour/gray_neon.h"
#include "image/colour/gray_portable.h"

namespace dax {
namespace {

template <class T>
T grayLevel(double value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return roundTo<T>(value);
}

}  // namespace

template <class T>
void grayRow601(const T* rgb, T* gray, int32_t count, int32_t isa) {
  (usesNeon(isa) ? neon::grayRow<Bt601Gray, RgbOrder, T> : portable::grayRow<Bt601Gray, RgbOrder, T>)(rgb, gray, count);
}

template <class Order, class T>
DaxStatus grayByStandard(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t standard) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<1, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE(standard == DAXI_COLOUR_BT601 || standard == DAXI_COLOUR_BT709, DAX_STS_BAD_PARAM);
  const bool neonRuns = usesNeon(currentIsa());
  auto* row = neonRuns ? neon::grayRow<Bt601Gray, Order, T> : portable::grayRow<Bt601Gray, Order, T>;
  if (standard == DAXI_COLOUR_BT709) row = portable::grayRow<Bt709Gray, Order, T>;
  return convertRows({}, from, to, size, row);
}

template <class T>
DaxStatus grayByWeights(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double* weights) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<1, T> to{dst, dstStep};
  DAX_REQUIRE(weights, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  const double w0 = weights[0], w1 = weights[1], w2 = weights[2];
  DAX_REQUIRE(std::isfinite(w0) && std::isfinite(w1) && std::isfinite(w2), DAX_STS_BAD_PARAM);
  return convertRows({}, from, to, size, [=](const T* s, T* d, int32_t count) {
    for (ptrdiff_t x = 0; x < count; ++x) {
      d[x] = grayLevel<T>((w0 * s[3 * x] + w1 * s[3 * x + 1]) + w2 * s[3 * x + 2]);
    }
  });
}

template <class T>
DaxStatus grayToColour(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  const Interleaved<1, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  return convertRows({}, from, to, size, [](const T* s, T* d, int32_t count) {
    for (ptrdiff_t x = 0; x < count; ++x) d[3 * x] = d[3 * x + 1] = d[3 * x + 2] = s[x];
  });
}

#define DAX_GRAY(T)                                                                                  \
  template DaxStatus grayByStandard<RgbOrder, T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t); \
  template DaxStatus grayByStandard<BgrOrder, T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t); \
  template DaxStatus grayByWeights<T>(const T*, int32_t, T*, int32_t, DaxiSize, const double*);      \
  template DaxStatus grayToColour<T>(const T*, int32_t, T*, int32_t, DaxiSize);                      \
  template void grayRow601<T>(const T*, T*, int32_t, int32_t);
DAX_GRAY(uint8_t)
DAX_GRAY(uint16_t)
DAX_GRAY(float)
#undef DAX_GRAY

}  // namespace dax
