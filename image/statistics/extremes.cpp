#include "image/statistics/extremes.h"

#include "frame/dispatch.h"
#include "image/statistics/extremes_neon.h"
#include "image/statistics/extremes_portable.h"
#include "image/statistics/pixel_runs.h"

namespace dax {
namespace {

// The extremes of a channel, and the first row that has each.
template <class T>
struct RowsOfLimits {
  Limits<T> value = Limits<T>::none();
  int32_t minY = 0, maxY = 0;
};

template <int32_t kChannels, class T>
RowsOfLimits<T> limitsOfRegion(Plane<const T> src, MaskPlane mask, DaxiSize size, int32_t channel, int32_t isa) {
  const auto ofRun = usesNeon(isa) ? neon::limitsOfRun<T> : portable::limitsOfRun<T>;
  RowsOfLimits<T> found;
  for (int32_t y = 0; y < size.height; ++y) {
    const auto visit = [&](const T* run, int32_t count) {
      const Limits<T> own = ofRun(run, count);
      if (own.min < found.value.min) found.value.min = own.min, found.minY = y;
      if (own.max > found.value.max) found.value.max = own.max, found.maxY = y;
    };
    forEachRunOfRow<kChannels>(size.width, visit, maskRow(mask, y), rowAt(src.data, src.step, y) + channel);
  }
  return found;
}

// The first chosen pixel of a value from a row on; x is -1 where there is none: all is NaN, or nothing is chosen.
template <int32_t kChannels, class T>
DaxiPoint32s placeOf(T value, int32_t firstY, Plane<const T> src, MaskPlane mask, DaxiSize size, int32_t channel) {
  for (int32_t y = firstY; y < size.height; ++y) {
    const T* const row = rowAt(src.data, src.step, y) + channel;
    const uint8_t* const chosen = maskRow(mask, y);
    for (int32_t x = 0; x < size.width; ++x) {
      if (row[int64_t{x} * kChannels] == value && (!chosen || chosen[x])) return {x, y};
    }
  }
  return {-1, -1};
}

}  // namespace

template <int32_t kChannels, class T>
DaxStatus findMinMax(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* min,
                     T* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt, int32_t isa) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DaxiPoint32s places[2][kChannels];
  for (int32_t c = 0; c < kChannels; ++c) {
    const auto found = limitsOfRegion<kChannels>(from, chosen, size, c, isa);
    places[0][c] = placeOf<kChannels>(found.value.min, found.minY, from, chosen, size, c);
    places[1][c] = placeOf<kChannels>(found.value.max, found.maxY, from, chosen, size, c);
    DAX_REQUIRE(places[0][c].x >= 0, DAX_STS_DEGENERATE);
  }
  const auto at = [&](DaxiPoint32s place, int32_t c) {  // which has the sign of a zero
    return rowAt(src, srcStep, place.y)[int64_t{place.x} * kChannels + c];
  };
  for (int32_t c = 0; c < kChannels; ++c) {
    min[c] = at(places[0][c], c);
    max[c] = at(places[1][c], c);
    if (minAt) minAt[c] = places[0][c];
    if (maxAt) maxAt[c] = places[1][c];
  }
  return DAX_STS_OK;
}

template <class T, int32_t kChannels, bool kMasked>
DaxStatus minMaxOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* min, T* max,
                   DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  DAX_REQUIRE(min && max, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, kChannels, MaskPlane{mask, maskStep}, Plane{src, srcStep}));
  return findMinMax<kChannels>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt, currentIsa());
}

template <class T>
uint64_t countInRange(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T low,
                      T high, int32_t isa) {
  const auto ofRun = usesNeon(isa) ? neon::countWithin<T> : portable::countWithin<T>;
  uint64_t found = 0;
  const auto add = [&](const T* run, int32_t length) { found += static_cast<uint64_t>(ofRun(run, length, low, high)); };
  forEachRun<1>(size, 0, add, MaskPlane{mask, maskStep}, Plane{src, srcStep});
  return found;
}

template <class T, bool kMasked>
DaxStatus countInRangeOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T low,
                         T high, uint64_t* count) {
  DAX_REQUIRE(count, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, 1, MaskPlane{mask, maskStep}, Plane{src, srcStep}));
  *count = countInRange(src, srcStep, mask, maskStep, size, low, high, currentIsa());
  return DAX_STS_OK;
}

#define DAX_MIN_MAX_CHANNELS(T, CHANNELS)                                                                       \
  template DaxStatus minMaxOf<T, CHANNELS, false>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T*, T*, \
                                                  DaxiPoint32s*, DaxiPoint32s*);                                \
  template DaxStatus minMaxOf<T, CHANNELS, true>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T*, T*,  \
                                                 DaxiPoint32s*, DaxiPoint32s*);                                 \
  template DaxStatus findMinMax<CHANNELS, T>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T*, T*,      \
                                             DaxiPoint32s*, DaxiPoint32s*, int32_t);
#define DAX_MIN_MAX_TYPE(T)                                                                                           \
  DAX_MIN_MAX_CHANNELS(T, 1)                                                                                          \
  DAX_MIN_MAX_CHANNELS(T, 3)                                                                                          \
  template uint64_t countInRange<T>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T, T, int32_t);             \
  template DaxStatus countInRangeOf<T, false>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T, T, uint64_t*); \
  template DaxStatus countInRangeOf<T, true>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T, T, uint64_t*);
DAX_MIN_MAX_TYPE(uint8_t)
DAX_MIN_MAX_TYPE(uint16_t)
DAX_MIN_MAX_TYPE(int16_t)
DAX_MIN_MAX_TYPE(float)
#undef DAX_MIN_MAX_TYPE
#undef DAX_MIN_MAX_CHANNELS

}  // namespace dax
