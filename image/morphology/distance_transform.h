// Exact distance transforms of masks.
#pragma once

#include <cstdint>

#include "daxi/distance_transform.h"
#include "frame/tiles.h"

namespace dax {

DaxStatus distanceBufferSize(DaxiSize size, int32_t metric, uint64_t* bytes);

// To: int32_t or float.
template <class To>
DaxStatus distanceTransform(PoolThreads on, const uint8_t* src, int32_t srcStep, To* dst, int32_t dstStep,
                            DaxiSize size, int32_t metric, void* buffer);

}  // namespace dax
