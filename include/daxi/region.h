/* Measures of regions: convex hull and enclosing rectangle of domains and of point sets. Integer arithmetic, exact up
 * to the last step and bit-identical on every machine. All functions are thread-safe for distinct outputs. */
#ifndef DAXI_REGION_H
#define DAXI_REGION_H

#include "blob_find.h"
#include "point.h"

DAX_BEGIN_DECLS

/* A rotated rectangle, in pixels and radians: width >= height, the angle that of the long side in (-pi/2, pi/2], of a
 * square's side in (-pi/4, pi/4]. */
typedef struct DaxiRotatedBox {
  float x; /* centre */
  float y;
  float width;
  float height;
  float angle;
} DaxiRotatedBox;

/* Criterion of the best rectangle. */
enum {
  DAXI_BOX_MIN_AREA = 1,     /* of equal ones the last */
  DAXI_BOX_MIN_PERIMETER = 2 /* of equal ones the first */
};

/* Number of points that the hull of a domain needs for work and result, for a region of this height. */
#define DAXI_HULL_POINTS(height) (3 * (size_t)(height) + 1)

/* Convex hull of the pixel centres of a domain, clipped to the region `size`: corners only, starting at the topmost (of
 * these the leftmost) and advancing by increasing angle from x towards y. `points` has room for
 * DAXI_HULL_POINTS(size.height); the first *count are the hull, none where the domain lies outside the region.
 *
 * Checks, in order: a null pointer, or domains without runs -> 0x10000014; a side outside 1..65536 -> 0x1000001a. */
DAX_API DaxStatus _DAXI_DomainConvexHull_ROI(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size,
                                             DaxiPoint32s* points, int32_t* count);

/* The best rectangle around a convex polygon with a side along one of its edges (rotating calipers). The corners are
 * ordered as by _DAXI_DomainConvexHull_ROI, and no three are collinear. One point gives a box of size 0, two points a
 * box of height 0.
 *
 * Checks, in order: a null pointer -> 0x10000014; count < 1 -> 0x1000001a; mode other than 1 and 2 -> 0x10000019; a
 * coordinate beyond +-2^19 -> 0x10000032. */
DAX_API DaxStatus DAXI_REG_EncloseBox(const DaxiPoint32s* points, int32_t count, int32_t mode, DaxiRotatedBox* box);

/* Bytes of work buffer for _DAXI_PtEncloseBox_32s. bytes null -> 0x10000014; count < 1 -> 0x10000019. */
DAX_API DaxStatus _DAXI_PtEncloseBoxBufferSize_32s(int32_t count, uint64_t* bytes);

/* The same rectangle around any points, in any order. `buffer` holds at least the queried bytes and lies at a multiple
 * of 4. Checks as DAXI_REG_EncloseBox, with buffer among the pointers. */
DAX_API DaxStatus _DAXI_PtEncloseBox_32s(const DaxiPoint32s* points, int32_t count, int32_t mode, DaxiRotatedBox* box,
                                         void* buffer);

/* The rectangle around the pixel centres of a domain, clipped to the region. `points` as for the hull. A
 * domain outside the region gives a box of zeros. Checks as the hull, then the mode. */
DAX_API DaxStatus _DAXI_DomainEncloseBox(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size,
                                         int32_t mode, DaxiPoint32s* points, DaxiRotatedBox* box);

/* Share of the rectangle of minimum area that the domain fills: pixels / (width height), at most 1; 1 for one pixel and
 * for none. Checks as the hull. */
DAX_API DaxStatus _DAXI_DomainRectangularity(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size,
                                             DaxiPoint32s* points, float* rectangularity);

DAX_END_DECLS

#endif
