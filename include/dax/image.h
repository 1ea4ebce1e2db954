/* The library's image record. */
#ifndef DAX_IMAGE_H
#define DAX_IMAGE_H

#include "../zur/image.h"
#include "status.h"

DAX_BEGIN_DECLS

/* A whole image of up to four planes. Steps count the storage units of their plane. */
typedef struct DaxImage {
  uint32_t format; /* image-format code, see DAX_CheckImage */
  int32_t width;   /* pixels per row */
  int32_t height;  /* rows */
  int32_t step[4]; /* row step of each plane */
  void* base[4];   /* start of each plane's buffer */
  void* data[4];   /* start of each plane's pixels */
} DaxImage;

/* Validates a record. Checks, in order: record null -> 0x10000014; format not accepted -> 0x10000007; width below 1,
 * height below 1, or a side that the format halves is odd -> 0x10000008; a step too small, in plane order ->
 * 0x10000009; a base pointer of a used plane null, then a data pointer null -> 0x1000000a; else 0.
 *
 *   formats                            planes  sides         minimum step (w = width)
 *   1..6 9 10 300..319                 1       any           w
 *   100 101                            3       both even     w, w/2, w/2
 *   102 109                            2       both even     w, w
 *   103                                3       width even    w, w/2, w/2
 *   104 106 107                        1       any           2w
 *   105 200 206 210 216                3       any           w, w, w
 *   201 207 211 217                    1       any           3w
 *   202 204 208 212 218                4       any           w, w, w, w
 *   203 205 209 213 219                1       any           4w
 *
 * Thread-safe. */
DAX_API DaxStatus DAX_CheckImage(const DaxImage* image);

/* Builds a library record from the host's: copies format, sides and steps and points base and data of all four planes
 * at the host's planes. Either pointer null -> 0x10000014; any failure of ZUR_CheckImage other than an unknown format
 * -> its library code, 0x10000008, 0x10000009 or 0x1000000a. An unknown format is passed on, so that DAX_CheckImage can judge it. Thread-safe. */
DAX_API DaxStatus DAX_ZurImgToDaxImg(const ZurImage* zurImage, DaxImage* daxImage);

DAX_END_DECLS

#endif
