/* How values between pixels are found, for operations that take it as a parameter. */
#ifndef DAXI_INTERPOLATION_H
#define DAXI_INTERPOLATION_H

#include "../dax/api.h"

/* DaxiInterpolation. Pixel centres are integers; nearest rounds halves up. */
enum {
  DAXI_INTERPOLATION_NEAREST = 0,
  DAXI_INTERPOLATION_LINEAR = 1,
  DAXI_INTERPOLATION_CUBIC = 2,
  DAXI_INTERPOLATION_LANCZOS3 = 3,
  DAXI_INTERPOLATION_AREA = 4
};

#endif
