/* Points of the image plane, x to the right, y down; pixel centres lie at integer coordinates. */
#ifndef DAXI_POINT_H
#define DAXI_POINT_H

#include <stdint.h>

typedef struct DaxiPoint16s {
  int16_t x;
  int16_t y;
} DaxiPoint16s;

typedef struct DaxiPoint32s {
  int32_t x;
  int32_t y;
} DaxiPoint32s;

typedef struct DaxiPoint32f {
  float x;
  float y;
} DaxiPoint32f;

typedef struct DaxiPoint64f {
  double x;
  double y;
} DaxiPoint64f;

#endif
