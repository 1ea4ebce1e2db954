// Discrete cosine transforms.
#pragma once

#include "daxi/cosine.h"
#include "frame/tiles.h"

namespace dax {

template <class T>
DaxStatus dct(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const void* model,
              uint64_t modelBytes, void* buffer);
template <class T>
DaxStatus idct(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const void* model,
               uint64_t modelBytes, void* buffer);

}  // namespace dax
