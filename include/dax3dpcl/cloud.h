/* Point clouds.
 *
 * A cloud is a packed array of points, each three 32-bit floats: x, y, z. An organized cloud keeps the grid of its
 * source image: the point of row r and column c is number r * width + c. An unorganized cloud holds valid points only,
 * packed in row-major order. Points have no invalid value: validity is a byte mask beside the range data. */
#ifndef DAX3DPCL_CLOUD_H
#define DAX3DPCL_CLOUD_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Columns and rows of an organized cloud; the number of points and 1 of an unorganized one. */
typedef struct DAX3DPCL_CLOUD_SIZE {
  int32_t width;
  int32_t height;
} DAX3DPCL_CLOUD_SIZE;

typedef struct DAX3DPCL_CLOUD3D {
  int32_t capacity; /* points that fit into the memory */
  int32_t count;    /* points */
  float* points;    /* count triples x, y, z */
} DAX3DPCL_CLOUD3D;

/* Checks a cloud, in order: cloud null, points null -> 0x10000014; count outside 1..maxCount -> 0x10000019; count above
 * capacity, so also a negative capacity -> 0x10000019; else 0. Thread-safe. */
DAX_API DaxStatus DAX3DPCL_UTILS_Check_Cloud3D_32f(const DAX3DPCL_CLOUD3D* cloud, int32_t maxCount);

DAX_END_DECLS

#endif
