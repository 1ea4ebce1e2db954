/* The host's image record. */
#ifndef ZUR_IMAGE_H
#define ZUR_IMAGE_H

#include "../dax/api.h"

DAX_BEGIN_DECLS

/* A whole image of up to four planes. Steps count the storage units of their plane. */
typedef struct ZurImage {
  uint32_t format; /* image-format code, see ZUR_CheckImage */
  int32_t width;   /* pixels per row */
  int32_t height;  /* rows */
  int32_t step[4]; /* row step of each plane */
  void* plane[4];  /* start of each plane */
} ZurImage;

/* Validates a record and returns a platform code. Checks, in order: record null -> -21; format not accepted -> -8;
 * width below 1, height below 1, or a side that the format halves is odd -> -9; a step too small, in plane order ->
 * -10; the pointer of a used plane null -> -11; else 0.
 *
 *   formats          planes  sides         smallest step (w = width)
 *   1 2 3 300..307   1       any           w
 *   100 101          3       both even     w, w/2, w/2
 *   102              2       both even     w, w
 *   103              3       width even    w, w/2, w/2
 *   104 106 107      1       any           2w
 *   105 200          3       any           w, w, w
 *   201              1       any           3w
 *   202 204          4       any           w, w, w, w
 *   203 205          1       any           4w
 *
 * Thread-safe. */
DAX_API int32_t ZUR_CheckImage(const ZurImage* image);

DAX_END_DECLS

#endif
