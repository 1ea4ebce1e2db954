// Grey erosion and dilation by rectangles, and what is made of them.
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

enum class GrayOperation { erode, dilate, open, close, gradient, topHat, blackHat };

template <GrayOperation operation, class T>
DaxStatus grayOperation(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                        const DaxiGrayMorphologyCfg* cfg, void* buffer);

// isCompound: of operations that need an image between two passes.
template <class T, bool isCompound>
DaxStatus grayBufferSize(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);

struct Smaller;
struct Larger;

template <class Order, class T>
DaxStatus grayExtreme3x3(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

}  // namespace dax
