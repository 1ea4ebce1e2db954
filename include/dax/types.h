/* Value types shared by every image family. */
#ifndef DAX_TYPES_H
#define DAX_TYPES_H

#include <stdint.h>

/* Size of an image region in pixels. Passed by value. */
typedef struct DaxiSize {
  int32_t width;
  int32_t height;
} DaxiSize;

/* Rectangle of whole pixels: columns x..x + width - 1, rows y..y + height - 1. */
typedef struct DaxiRect {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
} DaxiRect;

/* One pixel of a 32fc image. */
typedef struct DaxComplex32f {
  float re;
  float im;
} DaxComplex32f;

/* One pixel of a 64fc image. */
typedef struct DaxComplex64f {
  double re;
  double im;
} DaxComplex64f;

/* Instruction-set codes: the last argument of entry points that end in _IS; the others choose for themselves.
 * DAX_ISA_NEON selects the NEON kernels, any other non-negative code the portable ones. Both give the same result to
 * the last bit. */
enum { DAX_ISA_PORTABLE = 0, DAX_ISA_NEON = 100 };

#endif
