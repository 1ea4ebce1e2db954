// Exponential and natural logarithm of floats.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

struct ExpOp;
struct LnOp;

// Checks and computes; src may be dst. In bands of rows on the host's pool, if there is one and threads > 1.
template <class Op>
DaxStatus elementary32f(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                        DaxiSize size);

}  // namespace dax
