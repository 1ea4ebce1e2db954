// Arithmetic of an image and a constant, or another image: one worker for all operations, pixel types and numbers of channels.
#pragma once

#include <cstdint>

#include "image/pixel/element_rows.h"

namespace dax {

struct AddOp;
struct SubOp;
struct MulOp;
struct AbsDiffOp;

// Checks and computes, with the instruction set of the processor. `value` holds a constant for each channel; a source may be
// dst.
template <class Op, class T, int kChannels>
DaxStatus withConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T* value,
                       int32_t scaleFactor);

template <class Op, class T, int kChannels>
DaxStatus withImage(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size,
                    int32_t scaleFactor);

// One row.
template <class Op, Operand kOperand, class T>
void arithmeticRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor, int32_t isa);

}  // namespace dax
