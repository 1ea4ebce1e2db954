/* Shape and grey values of blobs, beside the records of selection: holes, convexity, Feret diameters and others.
 *
 * All features are of the pixels of a domain as the labelling has them, lengths of pixel centres: a blob of one pixel
 * has diameters of 0. */
#ifndef DAXI_BLOB_SHAPE_H
#define DAXI_BLOB_SHAPE_H

#include "blob_find.h"

DAX_BEGIN_DECLS

/* 40 bytes. */
typedef struct DaxiBlobShape {
  int32_t eulerNumber;      /* 1 - holes */
  int32_t holes;            /* regions of the background that the blob encloses */
  float convexity;          /* pixels / pixels whose centres lie in the convex hull, above 0, at most 1 */
  float maxFeret;           /* greatest distance of two pixels */
  float minFeret;           /* least distance of two parallel lines that enclose the blob */
  float feretAngle;         /* direction of maxFeret, radians from x towards y in (-pi/2, pi/2] */
  float equivalentDiameter; /* of the circle of the same area: 2 sqrt(pixels / pi) */
  float eccentricity;       /* of the ellipse of the same second moments: 0 circle, 1 line */
  float meanGray;
  uint8_t minGray;
  uint8_t maxGray;
  uint16_t reserved; /* 0 */
} DaxiBlobShape;

/* Bytes of work buffer for labellings of this size.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..65536 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BlobShapeBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Measures the domains labels[0], ..., labels[count - 1], or all where labels is null: then count is their number.
 *
 *   gray, grayStep   grey image, step in bytes
 *   size             its size, at least that of the labelled mask
 *   connectivity     4 or 8, as of the labelling (any other value means 8): holes are joined by the other one
 *   shapes           receives count records
 *   buffer           at least the queried bytes, aligned as by malloc
 *
 * Checks, in order:
 *   domains (or the arrays inside), shapes or buffer null                       0x10000014
 *   gray null, size below 1 x 1, grayStep < width                               0x10000014, 0x1000001a, 0x1000001b
 *   size smaller than the labelled mask, or a side above 65536                  0x1000001a
 *   count below 0; without labels: not the number of domains; a label of none   0x10000019
 * A failed call writes nothing. Thread-safe for distinct outputs and buffers. */
DAX_API DaxStatus DAXI_BlobShape_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size,
                                        const DaxiDomainList* domains, int32_t connectivity, const uint32_t* labels,
                                        int32_t count, DaxiBlobShape* shapes, void* buffer);

DAX_END_DECLS

#endif
