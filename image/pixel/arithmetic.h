// Arithmetic of an image and a constant: one worker for all operations, pixel types and numbers of channels.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

struct AddOp;
struct SubOp;
struct MulOp;
struct AbsDiffOp;

// Checks and computes, with the instruction set of the processor. `value` holds a constant for each channel; src may be
// dst.
template <class Op, class T, int kChannels>
DaxStatus withConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T* value,
                       int32_t scaleFactor);

// The worker below the checks.
template <class Op, class T>
void constantRows(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize elements, const T* pattern,
                  int32_t scaleFactor, int32_t isa);

inline constexpr int32_t kNoScaleFactor = 0;  // of floats

// Constants lie in a pattern of so many elements, a multiple of three and of every vector.
constexpr int32_t kPatternLength = 48;

}  // namespace dax
