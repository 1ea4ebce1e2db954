#include "image/colour/hsv.h"

#include "image/colour/colour_rows.h"
#include "image/colour/hsv_neon.h"
#include "image/colour/hsv_portable.h"

namespace dax {

template <class Conversion, class T>
DaxStatus convertHue(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                     int32_t hue180) {
  const Interleaved<3, const T> from{src, srcStep};
  const Interleaved<3, T> to{dst, dstStep};
  DAX_REQUIRE_OK(checkConversion(from, to, size));
  DAX_REQUIRE(hue180 == 0 || hue180 == 1, DAX_STS_BAD_PARAM);
  const double turn = std::is_same_v<T, float> ? 360 : hue180 == 1 ? 180 : kFull<T> + 1;
  auto* const row = usesNeon(currentIsa()) ? neon::hueRow<Conversion, T> : portable::hueRow<Conversion, T>;
  return convertRows(on, from, to, size, [=](const T* s, T* d, int32_t count) { row(s, d, count, turn); });
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
