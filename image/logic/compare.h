// Comparisons, whose results are masks: 255 where they hold, else 0.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

template <class T>
DaxStatus compareImages(const T* src1, int32_t step1, const T* src2, int32_t step2, uint8_t* dst, int32_t dstStep,
                        DaxiSize size, int32_t op);

template <class T>
DaxStatus compareConstant(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, T value,
                          int32_t op);

DaxStatus compareImagesEps(const float* src1, int32_t step1, const float* src2, int32_t step2, uint8_t* dst,
                           int32_t dstStep, DaxiSize size, double eps);

DaxStatus compareConstantEps(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                             float value, double eps);

// One row by DAXI_COMPARE_...
template <Operand kOperand, class T>
void compareRow(const T* a, const T* b, uint8_t* dst, int32_t count, int32_t op, int32_t isa);

// One row: |a - b| <= eps.
template <Operand kOperand>
void compareEpsRow(const float* a, const float* b, uint8_t* dst, int32_t count, double eps, int32_t isa);

}  // namespace dax
