// Least and greatest pixel of the window around each pixel, both over the same window.
#pragma once

#include <cstdint>

#include "daxi/gray_morphology.h"
#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/window/window_reach.h"

namespace dax {

template <class T>
struct GrayRect;
#define DAX_GRAY_RECT(SUFFIX, T)                                          \
  template <>                                                             \
  struct GrayRect<T> {                                                    \
    static constexpr auto kBytes = DAXI_GrayErodeRectBufferSize_##SUFFIX; \
    static constexpr auto kMin = DAXI_GrayErodeRect_##SUFFIX##_C1R_MT;    \
    static constexpr auto kMax = DAXI_GrayDilateRect_##SUFFIX##_C1R_MT;   \
  };
DAX_GRAY_RECT(8u, uint8_t)
DAX_GRAY_RECT(16u, uint16_t)
DAX_GRAY_RECT(32f, float)
#undef DAX_GRAY_RECT

struct WindowAndBorder {
  DaxiSize window;
  int32_t border;
  double value;

  // A dilation turns its window.
  DaxiGrayMorphologyCfg gray(bool isMin) const {
    const WindowReach x(window.width), y(window.height);
    return {window, isMin ? x.before : x.after, isMin ? y.before : y.after, 1, border, value};
  }
};

template <class T>
struct WindowExtremesBuffer {
  WindowExtremesBuffer(DaxiSize size, const WindowAndBorder& at) {
    const DaxiGrayMorphologyCfg cfg = at.gray(true);
    uint64_t bytes = 0;
    status = GrayRect<T>::kBytes(size, &cfg, &bytes);
    least = layout.add<T>(pixelsOf(size));
    greatest = layout.add<T>(pixelsOf(size));
    work = layout.add<uint8_t>(bytes);
  }
  DaxStatus store(uint64_t* bytes) const { return status ? status : layout.store(bytes); }

  DaxStatus status;
  BufferLayout layout;
  BufferPiece<T> least{}, greatest{};  // images without gaps
  BufferPiece<uint8_t> work{};
};

// Calls use(y, least, greatest) for all rows, on the pool where there is one.
template <class T, class Use>
DaxStatus runWindowExtremes(PoolThreads on, const T* src, int32_t srcStep, DaxiSize size, const WindowAndBorder& at,
                            void* buffer, Use use) {
  const WindowExtremesBuffer<T> pieces(size, at);
  T *const least = pieces.least.in(buffer), *const greatest = pieces.greatest.in(buffer);
  void* const work = pieces.work.in(buffer);
  const DaxiGrayMorphologyCfg min = at.gray(true), max = at.gray(false);
  DAX_REQUIRE_OK(GrayRect<T>::kMin(on.pool, on.threads, src, srcStep, least, size.width, size, &min, work));
  DAX_REQUIRE_OK(GrayRect<T>::kMax(on.pool, on.threads, src, srcStep, greatest, size.width, size, &max, work));
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) use(y, rowAt(least, size.width, y), rowAt(greatest, size.width, y));
  });
}

}  // namespace dax
