/* From range and depth images to points.
 *
 * With v the value at column c and row r converted to float, and every operation rounded to float in the order written
 * (nothing is fused; the bits of a NaN are not fixed):
 *   Range2XYZ, params = {sx, sy, sz, ox, oy, oz}, a metric grid:
 *     x = c * sx + ox,  y = r * sy + oy,  z = v * sz + oz
 *   Depth2XYZ, params = {a, b, fx, fy, cx, cy}, a pinhole camera:
 *     z = v * a + b,  x = ((c - cx) * z) * (1 / fx),  y = ((r - cy) * z) * (1 / fy)
 *
 * Organized (organized = 1): the point of (c, r) is number r * cols + c, positions of invalid pixels are not written,
 * and the size is {cols, rows}. Unorganized (any other value): valid points are packed in row-major order, exactly 12 *
 * count bytes are written, and the size is {count, 1}.
 *
 * The points go to `buffer`, which holds at least the queried bytes, has an alignment of 4 and overlaps neither values
 * nor mask; *points receives its address. Thread-safe. */
#ifndef DAX3DPCL_RANGE_TO_XYZ_H
#define DAX3DPCL_RANGE_TO_XYZ_H

#include "../dax/types.h"
#include "cloud.h"

DAX_BEGIN_DECLS

typedef struct DAX3DPCL_RANGE_MAP {
  int32_t rows; /* rows come first */
  int32_t cols;
  float params[6]; /* see above */
  void* reserved;  /* not used */
  uint8_t* mask;   /* rows * cols bytes without padding; not 0: valid */
  void* values;    /* rows * cols values of the function's type without padding */
} DAX3DPCL_RANGE_MAP;

/* Bytes of the result: 12 * width * height, rounded up to a multiple of 128. Checks, in order: bytes null ->
 * 0x10000014; a side < 1 -> 0x10000019; does not fit a signed 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_16s32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_32s32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_32f32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_ResultSize_16s32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_ResultSize_32s32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_ResultSize_32f32f(DaxiSize size, uint64_t* bytes);

/* Checks, in order: map, its values, its mask, buffer, points or size null -> 0x10000014; cols < 1 or rows < 1 ->
 * 0x10000019; |sx|, |sy| or |sz| below FLT_MIN (1.1754944e-38; negative pitches mirror) -> 0x10000019. The offsets are
 * not checked. A failed call writes nothing. */
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_32s32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Range2XYZ_32f32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);

/* Checks as above, without the scales; the last check: a <= FLT_EPSILON, fx <= 0 or fy <= 0 -> 0x10000019. b, cx and cy
 * are not checked. */
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_32s32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);
DAX_API DaxStatus DAX3DPCL_PREP_CONVERT_Depth2XYZ_32f32f(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized,
                                                         float** points, DAX3DPCL_CLOUD_SIZE* size);

DAX_END_DECLS

#endif
