// The list of pixel types: families with many types expand X(suffix, C type).
#pragma once

#include "dax/types.h"

// Types whose pixels are one real number.
#define DAX_SCALAR_PIXEL_TYPES(X) \
  X(8u, uint8_t)                  \
  X(16u, uint16_t)                \
  X(16s, int16_t)                 \
  X(32s, int32_t)                 \
  X(32u, uint32_t)                \
  X(32f, float)                   \
  X(64f, double)

#define DAX_PIXEL_TYPES(X)  \
  DAX_SCALAR_PIXEL_TYPES(X) \
  X(32fc, DaxComplex32f)    \
  X(64fc, DaxComplex64f)
