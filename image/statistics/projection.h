// Sums of rows and of columns: one worker each for all pixel types.
#pragma once

#include <cstdint>

#include "dax/status.h"
#include "dax/types.h"

namespace dax {

// The tables' workers take a mask; here is none.
template <class T>
DaxStatus projectRows(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                      double* sums);

template <class T>
DaxStatus projectColumns(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                         double* sums);

}  // namespace dax
