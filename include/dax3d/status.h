/* Status codes that only geometry in space has, beside those of dax/status.h. */
#ifndef DAX3D_STATUS_H
#define DAX3D_STATUS_H

#include "../dax/status.h"

enum {
  DAX3D_STS_APART = 0x10000203,      /* boxes, or segment and plane, do not meet */
  DAX3D_STS_PARALLEL = 0x10000204,   /* line is parallel to the plane */
  DAX3D_STS_NO_ROTATION = 0x1000030e /* rotation is not orthonormal */
};

#endif
