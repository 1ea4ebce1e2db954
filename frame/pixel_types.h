// The pixel types, once. X(suffix, C type) is expanded by the families that come in many types.
#pragma once

#include "dax/types.h"

// The types whose pixels are one number.
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
