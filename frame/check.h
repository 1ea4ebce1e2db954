// Argument checks: the one control-flow macro of the library and the predicates that need care.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "dax/status.h"
#include "dax/types.h"

// Returns `code` from the enclosing function unless the condition holds. Conditions are written in the accept form
// (v >= lo && v <= hi), so that a NaN is refused.
#define DAX_REQUIRE(condition, code) \
  do {                               \
    if (!(condition)) return (code); \
  } while (false)

// Returns the status of another check unless it is DAX_STS_OK.
#define DAX_REQUIRE_OK(check)                                                            \
  do {                                                                                   \
    if (const DaxStatus requiredStatus = (check); requiredStatus) return requiredStatus; \
  } while (false)

namespace dax {

inline bool atLeast(DaxiSize size, int32_t min) {
  return size.width >= min && size.height >= min;
}

inline bool atMost(DaxiSize size, int32_t max) {
  return size.width <= max && size.height <= max;
}

// Steps count elements; 3 * width needs more than 32 bits.
inline bool rowFits(int32_t width, int32_t step, int32_t channels = 1) {
  return int64_t{width} * channels <= step;
}

// An image argument: pointer, then size, then step.
inline DaxStatus checkImage(const void* image, int32_t step, DaxiSize size, int32_t channels = 1) {
  DAX_REQUIRE(image, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step, channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// A source and a destination of one size, the source first.
inline DaxStatus checkImagePair(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE_OK(checkImage(src, srcStep, size));
  return checkImage(dst, dstStep, size);
}

}  // namespace dax
