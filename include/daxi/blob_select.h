/* Blob selection: measures the domains of a labelling, filters, ranks and scores them.
 *
 * For each domain, in label order, selection computes the basic features and then runs a cascade of range filters. The
 * cascade stops at the first filter that rejects the blob, and computes a feature only when a filter or the sort key
 * needs it. At most `maxCount` blobs are kept, the best by the sort key (with flags 0, the first ones). For the kept
 * blobs all remaining features are computed; then they are sorted and scored.
 *
 * Coordinates: pixel centres are integers, x to the right, y down. Features of a blob, with pixels as points:
 *
 *   area            pixels; in gray mode the sum of gray values / 255
 *   rect            upright rectangle of the runs; width and height count pixels
 *   centroid        mean of the pixels, as sum * (1 / area) in single precision; in gray mode weighted by gray value,
 *                   and (0, 0) when the weights sum to 0
 *   perimeter       length of the outer boundary through pixel centres: 1 for a straight step, 1.4142135 for a diagonal
 *                   one. Holes do not count. An a x b rectangle has 2(a - 1) + 2(b - 1)
 *   circularity     area / pi / R^2, at most 1. R is the distance from the centroid to the farthest run end; or to the
 *                   farthest contour point, when the contour is traced for perimeter and circularity at once: with both
 *                   filters on, with one of them on and the perimeter as sort key, or when neither filter nor sort key
 *                   asks for one of them. Both give the same where the region does not cut the blob
 *   principalAngle  1/2 atan2(2 Sxy, Sxx - Syy) of the second moments of the pixels about the centroid, radians
 *   box             rectangle of minimum area around the pixel centres, with a side along an edge of their convex hull
 *                   (of equal ones the last, starting at the topmost, then leftmost centre and advancing by increasing
 *                   angle from x towards y). boxWidth >= boxHeight; boxAngle is the direction of the long side in
 *                   (-pi/2, pi/2], of a square's side in (-pi/4, pi/4]. A row of pixels has boxHeight 0
 *   rectangularity  area / (boxWidth boxHeight), at most 1
 *   axisRatio       boxHeight / boxWidth, 1 when both are 0
 *   centralBias     distance of box centre and centroid
 *
 * A blob of area <= 1 has perimeter, circularity and rectangularity 1 and principal angle 0.
 *
 * Domains are clipped to the region `size`. A domain outside the region has area 0 and an upright rectangle of size 0.
 * Where clipping cuts a domain into pieces, the contour is that of the piece with the first pixel; its length is 0 when
 * this piece is a single pixel.
 *
 * Results are bit-identical on every machine and with any instruction set. */
#ifndef DAXI_BLOB_SELECT_H
#define DAXI_BLOB_SELECT_H

#include "blob_find.h"

DAX_BEGIN_DECLS

/* Maximum of maxCount. */
#define DAXI_BLOB_MAX_COUNT 20000

/* Filters, for BlobSelectCfg.flags. */
enum {
  DAXI_BLOB_BY_AREA = 0x1,
  DAXI_BLOB_BY_PERIMETER = 0x2,
  DAXI_BLOB_BY_SHORT_AXIS = 0x4,
  DAXI_BLOB_BY_LONG_AXIS = 0x8,
  DAXI_BLOB_BY_CIRCULARITY = 0x10,
  DAXI_BLOB_BY_RECTANGULARITY = 0x20,
  DAXI_BLOB_BY_CENTRAL_BIAS = 0x40,
  DAXI_BLOB_BY_AXIS_RATIO = 0x80,
  DAXI_BLOB_BY_BOX_ANGLE = 0x100,
  DAXI_BLOB_BY_RECT_WIDTH = 0x200,
  DAXI_BLOB_BY_RECT_HEIGHT = 0x400,
  DAXI_BLOB_BY_OUTSIDE_PIXELS = 0x800, /* from the third version on; without effect before */
  DAXI_BLOB_FLAGS_MAX = 0x1FFFF        /* higher values are refused */
};

/* Sort order, for BlobSelectCfg.sortOrder. */
enum { DAXI_BLOB_ASCENDING = 1, DAXI_BLOB_DESCENDING = 2, DAXI_BLOB_UNSORTED = 3 };

/* Sort keys, for BlobSelectCfg.sortKey. */
enum {
  DAXI_BLOB_KEY_AREA = 1,
  DAXI_BLOB_KEY_PERIMETER = 2,
  DAXI_BLOB_KEY_CIRCULARITY = 3,
  DAXI_BLOB_KEY_RECTANGULARITY = 4,
  DAXI_BLOB_KEY_CENTROID_X = 5,
  DAXI_BLOB_KEY_CENTROID_Y = 6,
  DAXI_BLOB_KEY_BOX_ANGLE = 7,
  DAXI_BLOB_KEY_BOX_WIDTH = 8,
  DAXI_BLOB_KEY_BOX_HEIGHT = 9,
  DAXI_BLOB_KEY_RECT_X = 10,
  DAXI_BLOB_KEY_RECT_Y = 11,
  DAXI_BLOB_KEY_PRINCIPAL_ANGLE = 12,
  DAXI_BLOB_KEY_AXIS_RATIO = 13
};

/* A blob. 160 bytes. Reserved fields, and fields that a call does not compute, are undefined afterwards: records are
 * moved as a whole when they are ranked. */
typedef struct BlobInfo {
  float area;
  int32_t rectX;      /* pixels */
  int32_t rectY;      /* pixels */
  int32_t rectWidth;  /* pixels */
  int32_t rectHeight; /* pixels */
  float centroidX;    /* pixels */
  float centroidY;    /* pixels */
  float perimeter;    /* pixels */
  float circularity;  /* 0..1 */
  float boxX;         /* box centre, pixels */
  float boxY;
  float boxWidth;        /* long side, pixels */
  float boxHeight;       /* short side, pixels */
  float boxAngle;        /* radians */
  float shortAxis;       /* = boxHeight */
  float longAxis;        /* = boxWidth */
  float axisRatio;       /* 0..1 */
  float rectangularity;  /* 0..1 */
  float centralBias;     /* pixels */
  float principalAngle;  /* radians */
  uint32_t borderPixels; /* written where filter 0x800 acts */
  float score;           /* written when the weights of the active filters sum to more than 0 */
  const DaxiDomain* domain;
  uint32_t label;
  uint32_t reserved[5];
  uint32_t cls; /* class of the domain's head run */
  uint32_t reserved2[9];
} BlobInfo;

/* A range that a filter accepts. Both ends are inclusive, with a slack of 1e-5. */
typedef struct DaxiRange {
  float min;
  float max;
} DaxiRange;

/* A range that a filter accepts, with the weight of the feature in the score. */
typedef struct DaxiWeightedRange {
  float min;
  float max;
  float weight; /* 0..1 */
} DaxiWeightedRange;

/* Configuration. 184 bytes. A range is used and checked only when its filter is among the flags; the weights are always
 * checked.
 *
 * Score: each active filter with range [a, b] and weight w adds w (1 - |2 v / (a + b + 1.1920929e-7) - 1|); for the box
 * angle v is angle + pi/2 and pi is added to a + b. The sum is divided by the sum of the active weights.
 * A score is 1 in the middle of all ranges and unbounded outside them. A range that is infinite, or whose ends add up
 * to 0, makes the score meaningless. */
typedef struct BlobSelectCfg {
  uint32_t grayMode; /* 0: binary features; else area and centroid are weighted by the gray image */
  int32_t maxCount;  /* maximum number of blobs kept, 1..20000 */
  uint32_t flags;    /* DAXI_BLOB_BY_..., ored; at most 0x1FFFF */
  DaxiRange area;    /* 0 <= min <= max, as the next three */
  DaxiRange perimeter;
  DaxiRange shortAxis;
  DaxiRange longAxis;
  DaxiRange axisRatio; /* 0 <= min <= max <= 1, as the next two */
  DaxiRange circularity;
  DaxiRange rectangularity;
  DaxiRange centralBias; /* 0 <= min <= max */
  float areaWeight;      /* 0..1, as all weights */
  float perimeterWeight;
  float shortAxisWeight;
  float longAxisWeight;
  float axisRatioWeight;
  float circularityWeight;
  float rectangularityWeight;
  float centralBiasWeight;
  uint32_t sortOrder; /* DAXI_BLOB_ASCENDING, ... */
  uint32_t sortKey;   /* DAXI_BLOB_KEY_... */
  uint32_t reserved[4];
  DaxiWeightedRange boxAngle; /* radians; min <= max, as the next two */
  DaxiWeightedRange rectWidth;
  DaxiWeightedRange rectHeight;
  const uint8_t* mask;  /* optional, for filter 0x800: covers the region; pixels with 0 are outside */
  int32_t maskStep;     /* bytes; at least 0 when there is a mask */
  int32_t outsideLimit; /* at least 0 when flag 0x800 is set */
} BlobSelectCfg;

/* Result. The caller sets `array` to room for maxCount records; selection writes `count` and `domains`. */
typedef struct BlobSelectResult {
  BlobInfo* array;
  uint32_t count;
  const DaxiDomainList* domains;
} BlobSelectResult;

/* Bytes of work buffer for DAXI_BlobSelect_8u_C1R with this region size, whatever the configuration.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..65536 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BlobSelectBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Selects blobs.
 *
 *   gray, grayStep     gray image, step in bytes; read in gray mode
 *   image2, step2      second image; checked but not read in this version
 *   size               region, sides 1..65536
 *   domains            result of a labelling
 *   domainCount        number of domains to examine, in label order: 1..number of domains
 *   result             result->array is the caller's; on success count and domains are written
 *   cfg                configuration
 *   buffer             work buffer, at least DAXI_BlobSelectBufferSize_8u bytes, aligned as by malloc
 *
 * Blobs with equal sort keys are ordered by ascending label in both orders. DAXI_BLOB_UNSORTED keeps the blobs of
 * largest area in the order in which they were found; a blob that replaced another one has its place.
 *
 * Checks, in order:
 *   domains (or the arrays inside), result, result->array, cfg or buffer null   0x10000014
 *   gray null, size below 1 x 1, grayStep < width                               0x10000014, 0x1000001a, 0x1000001b
 *   image2 null, step2 < width                                                  0x10000014, 0x1000001b
 *   a side above 65536                                                          0x1000001a
 *   maxCount, flags, ranges of the set flags, outside limit, weights, sort order, sort key, mask step   0x10000019
 *   domainCount < 1 or above the number of domains                              0x10000019
 * When a check fails, nothing is written. Records beyond result->count may be used as scratch. Thread-safe for distinct
 * results and buffers. */
DAX_API DaxStatus DAXI_BlobSelect_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                         DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                         BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer);

/* As DAXI_BlobSelect_8u_C1R for all domains, without the second image. For a list without domains it
 * succeeds with no blobs. */
DAX_API DaxStatus DAXI_BlobSelectV2_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size,
                                           const DaxiDomainList* domains, BlobSelectResult* result,
                                           const BlobSelectCfg* cfg, void* buffer);

/* Selection by area and upright rectangle only, without contour and box. Writes area, rect, centroid, domain, label,
 * class and score; the other fields are not changed. Filters, order and ties as DAXI_BlobSelect_8u_C1R, without the
 * second image. The work buffer is the same. Checked after the configuration: flags other than area, rect width and
 * rect height, or sort keys other than area, centroid and rect -> 0x10000019. */
DAX_API DaxStatus DAXI_FastBlobSelect_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size,
                                             const DaxiDomainList* domains, int32_t domainCount,
                                             BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer);

/* Third version: adds filter 0x800, the last of the cascade. It stores the number of outside pixels of a blob in
 * borderPixels and accepts the blob when there are at most outsideLimit. With a mask these are the blob's pixels at
 * which the mask is 0. Without a mask they are the pixels on the border of the region: every pixel in the first and the
 * last row, and in other rows one for a run that starts in the first column and one for a run that ends in the last.
 * Otherwise as DAXI_BlobSelect_8u_C1R. */
DAX_API DaxStatus DAXI_BlobSelectV3BufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_BlobSelectV3_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                           DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                           BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer);

/* On the host's pool; the result is that of the single-threaded form byte for byte. `threads` is the number of shares
 * of the work, any number with any pool; with fewer than 2, or with pool null, the call runs on the calling thread. The
 * work buffer has the size that the _MT query returns for the same number of threads. The calls return the host's
 * status; where that is a failure, the records of the result are undefined. Checks as the single-threaded forms; a size
 * above 2^63 - 1 -> 0x10000015. */
DAX_API DaxStatus DAXI_BlobSelectBufferSize_8u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_BlobSelect_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                            DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                            BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer,
                                            uint32_t threads, void* pool);
DAX_API DaxStatus DAXI_BlobSelectV3BufferSize_8u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_BlobSelectV3_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2,
                                              int32_t step2, DaxiSize size, const DaxiDomainList* domains,
                                              int32_t domainCount, BlobSelectResult* result, const BlobSelectCfg* cfg,
                                              void* buffer, uint32_t threads, void* pool);

/* Sorts records by a key, ascending or descending (DAXI_BLOB_UNSORTED: not at all); equal keys by label, ascending, NaN
 * last.
 *
 * Checks, in order: blobs null -> 0x10000014; count < 0, or key or order unknown -> 0x10000019. Thread-safe for
 * distinct records. */
DAX_API DaxStatus DAXI_BlobSort(BlobInfo* blobs, int32_t count, uint32_t sortKey, uint32_t sortOrder);

DAX_END_DECLS

#endif
