// Images mirrored, transposed and turned by quarters: pixels of so many bytes that are only moved.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "daxi/rotate.h"
#include "frame/tiles.h"

namespace dax {

// One image, or the three planes of one, whose pixels are `channels` elements of `elementBytes`.
template <class Void>
struct MovedPlanes {
  Void* data[3];
  int32_t step;
  int32_t count;
  int32_t channels;
  int32_t elementBytes;

  bool isThere() const {
    return std::all_of(data, data + count, [](const void* plane) { return plane != nullptr; });
  }
};
using MovedFrom = MovedPlanes<const void>;
using MovedTo = MovedPlanes<void>;

template <class Void, class T>
MovedPlanes<Void> movedPlanes(T* image, int32_t step, int32_t channels) {
  return {{image}, step, 1, channels, sizeof(T)};
}
template <class Void, class T>
MovedPlanes<Void> movedPlanes(T* const* planes, int32_t step, int32_t count) {
  MovedPlanes<Void> made{{}, step, count, 1, sizeof(T)};
  if (planes) std::copy_n(planes, count, made.data);
  return made;
}

DaxStatus mirrorPixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size, int32_t axis);
DaxStatus mirrorPixels(const MovedTo& image, DaxiSize size, int32_t axis);
DaxStatus transposePixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size);
DaxStatus transposePixels(const MovedTo& image, DaxiSize size);
DaxStatus rotatePixels(PoolThreads on, const MovedFrom& src, const MovedTo& dst, DaxiSize size, int32_t quarters);
DaxStatus rotatePixels(const MovedTo& image, DaxiSize size, int32_t quarters);

// The exports; Src is const T* or const T* const*, Dst T* or T* const*.
#define DAX_MOVING(NAME, PIXELS)                                                                                    \
  template <class T, int kChannels, class Src, class Dst, class... Parameter>                                       \
  DaxStatus NAME(PoolThreads on, Src src, int32_t srcStep, Dst dst, int32_t dstStep, DaxiSize size,                 \
                 Parameter... parameter) {                                                                          \
    return PIXELS(on, movedPlanes<const void>(src, srcStep, kChannels), movedPlanes<void>(dst, dstStep, kChannels), \
                  size, parameter...);                                                                              \
  }                                                                                                                 \
  template <class T, int kChannels, class Image, class... Parameter>                                                \
  DaxStatus NAME##InPlace(PoolThreads, Image image, int32_t step, DaxiSize size, Parameter... parameter) {          \
    return PIXELS(movedPlanes<void>(image, step, kChannels), size, parameter...);                                   \
  }
DAX_MOVING(mirror, mirrorPixels)
DAX_MOVING(transpose, transposePixels)
DAX_MOVING(rotateQuarters, rotatePixels)
#undef DAX_MOVING

}  // namespace dax
