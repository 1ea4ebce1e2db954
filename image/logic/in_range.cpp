#include "image/logic/in_range.h"

#include "image/logic/in_range_neon.h"
#include "image/logic/in_range_portable.h"

namespace dax {

template <class T, int kChannels>
void inRangeRow(const T* src, uint8_t* dst, int32_t width, const T* low, const T* high, int32_t isa) {
  usesNeon(isa) ? neon::inRangeRow<T, kChannels>(src, dst, width, low, high)
                : portable::inRangeRow<T, kChannels>(src, dst, width, low, high);
}

template <class T, int kChannels>
DaxStatus inRange(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, const T* low,
                  const T* high) {
  DAX_REQUIRE(src && dst && low && high, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep, kChannels) && rowFits(size.width, dstStep), DAX_STS_BAD_STEP);
  const int32_t isa = currentIsa();
  for (int32_t y = 0; y < size.height; ++y) {
    inRangeRow<T, kChannels>(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), size.width, low, high, isa);
  }
  return DAX_STS_OK;
}

#define DAX_IN_RANGE_CHANNELS(T, CHANNELS)                                                                     \
  template DaxStatus inRange<T, CHANNELS>(const T*, int32_t, uint8_t*, int32_t, DaxiSize, const T*, const T*); \
  template void inRangeRow<T, CHANNELS>(const T*, uint8_t*, int32_t, const T*, const T*, int32_t);
#define DAX_IN_RANGE(T)       \
  DAX_IN_RANGE_CHANNELS(T, 1) \
  DAX_IN_RANGE_CHANNELS(T, 3)
DAX_IN_RANGE(uint8_t)
DAX_IN_RANGE(uint16_t)
DAX_IN_RANGE(int16_t)
DAX_IN_RANGE(float)
#undef DAX_IN_RANGE
#undef DAX_IN_RANGE_CHANNELS

}  // namespace dax
