// Operations on the bits of pixels.
#pragma once

#include "image/pixel/element_rows.h"

// dst = ~src, which is 255 - src; dst may be src.
extern "C" void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t isa);

namespace dax {

struct AndOp;
struct OrOp;
struct XorOp;
struct LeftShiftOp;
struct RightShiftOp;

template <class Op, class T>
DaxStatus bitsOfImages(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep,
                       DaxiSize size);

template <class Op, class T>
DaxStatus bitsOfConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value);

template <class T>
DaxStatus invertBits(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

template <class Op, class T>
DaxStatus shiftBits(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t count);

// One row.
template <class Op, Operand kOperand, class T>
void bitsRow(const T* a, const T* b, T* dst, int32_t count, int32_t isa);

template <class Op, class T>
void shiftRow(const T* src, T* dst, int32_t width, int32_t count, int32_t isa);

}  // namespace dax
