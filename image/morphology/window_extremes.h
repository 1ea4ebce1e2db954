// Images of the least and of the greatest pixel of the window around each pixel: the erosion and the dilation by it.
#pragma once

#include <cstdint>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/morphology/gray_morphology.h"
#include "image/window/window_reach.h"

namespace dax {

struct WindowAndBorder {
  DaxiSize window;
  int32_t border;
  double value;

  // A dilation turns its window; both are to have the same.
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
    status = grayBufferSize<T, false>(size, &cfg, &bytes);
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
  const GrayImage<T> image = {src, srcStep, size};
  DAX_REQUIRE_OK(grayExtreme(on, true, image, at.gray(true), least, size.width, work));
  DAX_REQUIRE_OK(grayExtreme(on, false, image, at.gray(false), greatest, size.width, work));
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) use(y, rowAt(least, size.width, y), rowAt(greatest, size.width, y));
  });
}

}  // namespace dax
