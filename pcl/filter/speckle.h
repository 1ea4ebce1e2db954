// The speckle filter with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax3dpcl/speckle.h"

namespace dax {

// T: uint16_t or int16_t.
template <class T>
void filterSpeckles(DaxiSize size, const T* src, T* dst, DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end, int32_t maxDiff,
                    int32_t maxSize, T invalid, void* buffer, int32_t isa);

}  // namespace dax
