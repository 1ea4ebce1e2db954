// Grey erosion and dilation by rectangles, for other files of the library and for tests.
#pragma once

#include <cstdint>

#include "daxi/gray_morphology.h"
#include "frame/tiles.h"

namespace dax {

template <class T>
struct GrayImage {
  const T* src;
  int32_t step;
  DaxiSize size;
};

// A checked erosion (`smaller`) or dilation.
template <class T>
DaxStatus grayExtreme(PoolThreads on, bool smaller, const GrayImage<T>& image, const DaxiGrayMorphologyCfg& cfg, T* dst,
                      int32_t dstStep, void* buffer);

}  // namespace dax
