// Exponential and natural logarithm of floats.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"
#include "frame/tiles.h"

namespace dax {

struct ExpOp;
struct LnOp;

// Checks and computes; src may be dst. In bands of rows on the host's pool, if there is one.
template <class Op>
DaxStatus elementary32f(PoolThreads on, const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);

}  // namespace dax
