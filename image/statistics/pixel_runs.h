// The pixels of a region that a mask chooses, or all of them, in raster order, as runs that lie side by side in memory: so
// that kernels know neither masks nor channels.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>

#include "frame/op2d.h"

namespace dax {

// Runs are no longer than this.
inline constexpr int32_t kMaxRun = 16384;

// Without data: all pixels.
using MaskPlane = Plane<const uint8_t>;

// Null pointers, then the size, then the smallest step.
template <bool kMasked, class... T>
DaxStatus checkSources(DaxiSize size, int32_t channels, MaskPlane mask, Plane<T>... sources) {
  DAX_REQUIRE((... && sources.data) && (!kMasked || mask.data), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min({sources.step...}), channels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(!kMasked || rowFits(size.width, mask.step), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

inline const uint8_t* maskRow(MaskPlane mask, int32_t y) {
  return mask.data ? rowAt(mask.data, mask.step, y) : nullptr;
}

// Copies the first of each kChannels elements, of `count` pixels those that are chosen, and returns their number.
template <int32_t kChannels, class T>
int32_t gather(const T* from, const uint8_t* mask, int32_t count, T* to) {
  if (!mask) {
    for (int32_t i = 0; i < count; ++i) to[i] = from[i * kChannels];
    return count;
  }
  int32_t found = 0;
  for (int32_t i = 0; i < count; ++i) {
    to[found] = from[i * kChannels];
    found += mask[i] != 0;
  }
  return found;
}

// Calls visit(run of the first row, ..., length) for `width` pixels.
template <int32_t kChannels, class Visit, class... T>
void forEachRunOfRow(int32_t width, const Visit& visit, const uint8_t* mask, const T*... rows) {
  if (kChannels == 1 && !mask) {
    for (int32_t x = 0, count; x < width; x += count) {
      count = std::min(width - x, kMaxRun);
      visit((rows + x)..., count);
    }
    return;
  }
  constexpr int32_t kGathered = 512;
  std::tuple<std::array<T, kGathered>...> runs;
  for (int32_t x = 0, count; x < width; x += count) {
    count = std::min(width - x, kGathered);
    const uint8_t* const chosen = mask ? mask + x : nullptr;
    int32_t found = 0;
    std::apply(
        [&](auto&... run) {
          ((found = gather<kChannels>(rows + int64_t{x} * kChannels, chosen, count, run.data())), ...);
          if (found > 0) visit(run.data()..., found);
        },
        runs);
  }
}

// The same for a region; `channel` is the first element of a pixel that counts.
template <int32_t kChannels, class Visit, class... T>
void forEachRun(DaxiSize size, int32_t channel, const Visit& visit, MaskPlane mask, Plane<const T>... planes) {
  if (kChannels == 1 && !mask.data) {
    forEachRow(
        size, 1, [&](const T*... rows, int32_t count) { forEachRunOfRow<1>(count, visit, nullptr, rows...); },
        planes...);
    return;
  }
  for (int32_t y = 0; y < size.height; ++y) {
    forEachRunOfRow<kChannels>(size.width, visit, maskRow(mask, y), (rowAt(planes.data, planes.step, y) + channel)...);
  }
}

}  // namespace dax
