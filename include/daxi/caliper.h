/* Calipers: positions of edges across a narrow region, to a fraction of a pixel.
 *
 * The region is sampled into a profile along its search direction; every value is the mean of the samples across it.
 * The profile is filtered with a derivative of a Gaussian. Local extrema of the response beyond a contrast threshold
 * are the edges, which are scored by criteria and ranked.
 *
 * THE COST IS THAT OF ALL SAMPLES, width' * height', WITHOUT A LIMIT: about a second for 1e8, hours for 1e7 by 1e7.
 * Check the sides of regions that come from elsewhere. A region that reaches beyond the image is sampled from repeated
 * edge pixels. STRIPES NARROWER THAN ABOUT 1.25 filterHalfWidth + 2 PIXELS READ TOO WIDE: 1 pixel reads 2.1 with half
 * width 1, 2.3 with 2 and 2.7 with 3; 3 pixels read 3.1 with 2 and 3.7 with 4.
 *
 * Regions. With round2(v) = floor(v + 0.5) and up to the next even number (no further for a height of 1), a region has
 *   width' = round2(width) columns and height' = round2(height) rows of samples, one pixel apart.
 *   Box: the direction of columns is u = (cos angle, sin angle), that of rows v = (-sin angle, cos angle).
 *   Rhomboid: u by `angle`, v by `sideAngle`; the two need not be perpendicular.
 *   Annulus sector: columns along the radius, outwards, width = outerRadius - innerRadius; rows along the arc,
 *     height = sweep * (innerRadius + outerRadius) / 2, in steps of 1 / mean radius radians; they are rounded like a
 *     box's. The middle of the sector is at the mean radius and at the angle start + sweep / 2.
 * Projection 1 (vertical) searches along the columns: profile sample j = 0..width' - 1 lies at j - width' / 2 from the
 * centre, and its rows k at k - (height' - 1) / 2. Projection 0 (horizontal) searches along the rows: sample k lies at
 * k - height' / 2, its columns j at j - (width' - 1) / 2. So in an annulus projection 1 searches radially, 0 along the
 * arc. n is the length of the profile.
 *
 * Samples are bilinear, at positions rounded to 1/2048 pixel and clamped to the image (which repeats the edge
 * pixels); values are rounded to 1/256 grey level. A position on the profile is in pixels from the
 * centre, and its image point centre + position * direction; in an annulus it is radius - mean radius, or the length of
 * the arc at the mean radius.
 *
 * Masked forms (C1RM): samples to which a pixel with mask 0 contributes are excluded from the mean of their profile
 * value. A profile value without samples takes the value of the nearest one that has some (of two equally near ones
 * that of lower index), and is not an edge.
 *
 * Filter. K = 2 * filterHalfWidth + 1, or where the profile is shorter the largest odd length up to n, at least 3.
 *   response(i) = sum over k of kernel(k) * profile(i - h + k), h = (K - 1) / 2, with the end values repeated.
 * It is positive where the profile falls, negative where it rises. The kernels of K = 3 to 11 are fixed; their positive
 * side sums to 1, so that the peak response to a step is its height. Longer kernels are central differences (one-sided
 * at the ends), times 0.5, of a Gaussian of sigma 0.16667 (K - 1) whose sum is 1. Their positive side sums to 0.186 for
 * K = 13 down to 0.024 for K = 101, and the threshold must be lower in proportion. Positions do not depend on this
 * scale.
 *
 * Edges, for i = 1..n - 2, with response r, threshold t, e = 1.1920929e-7:
 *   2, light to dark: t - r(i) < e, r(i) - r(i-1) > e, r(i+1) - r(i) < e
 *   1, dark to light: r(i) + t < e, r(i) - r(i-1) < e, r(i+1) - r(i) > e
 * With polarity 3 both are tested, 2 first. With a, b, c = r(i-1), r(i), r(i+1) and d = 2 b - (a + c), the offset is
 * (c - a) / 2 / d, or 0 where |d| <= 0.001; the position is i - n / 2 + offset, the peak b + (c - a) / 4 * offset.
 *
 * Score: the product of the factors of the active criteria, and with k > 1 of them its k-th root. Of a value v with
 * v' = v + e:
 *   mode 0, rising:  v' < x0: 0;  < x1: y0;  < x2: from y0 up to y1;  else y1
 *   mode 1, falling: v' < x0: y1; < x1: from y1 down to y0;  < x2: y0;  else 0
 * Edges with a score of at least `minScore` are sorted by it, highest first; edges whose scores differ by at most
 * 1.1920929e-7 by index. The first `maxEdges` are returned. With edgeChoice k >= 1 only the k-th edge along the
 * profile, or the last where there are fewer, is returned, without scoring (score 1).
 *
 * Samples and their sums are integers; all other arithmetic is single precision in the order of the formulas. Results
 * are bit-identical on every machine, with any instruction set and number of threads. Thread-safe. Steps count
 * elements.
 *
 * Checks, in order:
 *   src, mask, region, cfg, result or profile (V1), an array of the last two but
 *   points, or buffer null                                                            0x10000014
 *   width < 1 or height < 1 of the image                                              0x1000001a
 *   width above a step                                                                0x1000001b
 *   the configuration, in this order: maxEdges < 1; threshold < -1.1920929e-7; filterHalfWidth not 1..50; polarity not
 *   1..3; projection > 1; of each active criterion in the order 0x1, 0x200, 0x2, 0x4: mode > 1, or not
 *   x0 <= x1 <= x2, 0 <= y0 <= y1, 1.1920929e-7 <= y1 <= 1; flags 0, above 1023 or with bits of 0x1F8;
 *   minScore < 0                                                                      0x10000019
 *   region impossible: not as its record says, such as angles in degrees, or centre
 *   outside the image                                                                 0x1000002d
 *   V1: capacity of the profile arrays below n; V2: number of regions < 1             0x10000019
 *   _IS: isa of the configuration negative                                            0x1000001c
 * A failed call writes nothing but the buffer. A NaN fails these checks. Regions may extend beyond the image. */
#ifndef DAXI_CALIPER_H
#define DAXI_CALIPER_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "point.h"

DAX_BEGIN_DECLS

/* Possible: 1 <= width, height <= 16777216; centre within 0..image width - 1, 0..image height - 1; angle within
 * -3.1415927..3.1415927. */
typedef struct CaliperBox {
  float x; /* centre, pixels */
  float y;
  float width; /* pixels */
  float height;
  float angle; /* of the width, radians, from x towards y */
} CaliperBox;

/* Possible: as a box, both angles in its range, and the sine of the angle between the sides at least 0.01. */
typedef struct CaliperRhomboid {
  float x;
  float y;
  float width;
  float height;
  float angle;     /* of the side `width` */
  float sideAngle; /* of the side `height` */
} CaliperRhomboid;

/* Possible: centre and start angle as a box's; innerRadius >= 0; width and height, as stated above, within
 * 1..16777216; 0 < sweep <= 6.2831855. */
typedef struct CaliperAnnulus {
  float x;
  float y;
  float innerRadius; /* pixels */
  float outerRadius;
  float startAngle; /* radians */
  float sweep;      /* radians, from x towards y */
} CaliperAnnulus;

enum { DAXI_CALIPER_HORIZONTAL = 0, DAXI_CALIPER_VERTICAL = 1 };

/* Polarities. */
enum { DAXI_CALIPER_DARK_TO_LIGHT = 1, DAXI_CALIPER_LIGHT_TO_DARK = 2, DAXI_CALIPER_ANY = 3 };

/* Criteria of single edges, for CaliperEdgeCfg.scoreFlags. */
enum {
  DAXI_CALIPER_BY_CONTRAST = 0x1, /* |peak response| */
  DAXI_CALIPER_BY_DISTANCE = 0x2, /* |position| */
  DAXI_CALIPER_BY_OFFSET = 0x4,   /* position */
  DAXI_CALIPER_BY_GRAY = 0x200    /* gray */
};

/* An edge. 32 bytes. */
typedef struct CaliperEdge {
  uint32_t polarity; /* 1 dark to light, 2 light to dark */
  float score;
  float position;    /* pixels from the centre of the profile */
  float peak;        /* response at the position */
  float gray;        /* profile at the index */
  float response;    /* response at the index */
  int32_t index;     /* of the profile */
  uint32_t reserved; /* 0 */
} CaliperEdge;

/* A ramp: x0 <= x1 <= x2 in units of the value, y0 <= y1 in 0..1. */
typedef struct CaliperCriterion {
  uint32_t mode; /* 0 rising, 1 falling */
  float x0;
  float x1;
  float x2;
  float y0;
  float y1;
} CaliperCriterion;

typedef struct CaliperEdgeCfg {
  uint32_t projection;      /* 1 vertical, 0 horizontal */
  uint32_t polarity;        /* 1..3 */
  uint32_t filterHalfWidth; /* 1..50 */
  int32_t maxEdges;         /* >= 1 */
  float threshold;          /* of the response, >= -1.1920929e-7 */
  int32_t edgeChoice;       /* k >= 1: the k-th edge only; else all */
  int32_t isa;              /* instruction-set code of the _IS members; others ignore it */
  uint32_t reserved;        /* ignored */
  uint32_t scoreFlags;      /* criteria; at least one, even with an edge choice */
  CaliperCriterion contrast;
  CaliperCriterion distance;
  CaliperCriterion offset;
  CaliperCriterion gray;
  float minScore; /* >= 0 */
} CaliperEdgeCfg;

/* The edges found. The caller provides the arrays, with room for `maxEdges`; a call writes `count`. */
typedef struct CaliperEdgeResult {
  CaliperEdge* edges;
  DaxiPoint32f* points; /* of the edges in the image; may be null */
  int32_t count;
} CaliperEdgeResult;

/* Profile and response, for plots. The caller provides the arrays and their capacity, at least n; a call writes
 * `length` = n and the length of the kernel it has used. */
typedef struct CaliperProfile {
  float* profile;
  float* response;
  int32_t capacity;
  int32_t length;
  int32_t kernelLength;
} CaliperProfile;

/* Bytes of work buffer, for either projection; proportional to the larger of width' and height'. The same for masked
 * and unmasked, _IS and NEON members.
 *
 * Checks, in order: region or bytes null -> 0x10000014; region impossible in any image -> 0x1000002d. */
DAX_API DaxStatus DAXI_CalipEdgeDetectBufferSize_8u(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectBufferSize_16s(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1BufferSize_8u(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidBufferSize_8u(const CaliperRhomboid* rhomboid, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidV1BufferSize_8u(const CaliperRhomboid* rhomboid, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusBufferSize_8u(const CaliperAnnulus* annulus, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusV1BufferSize_8u(const CaliperAnnulus* annulus, uint64_t* bytes);

/* Bytes for many regions: for each thread (0 counts as 1) those of the region that needs most.
 *
 * Checks, in order: regions or bytes null -> 0x10000014; count < 1 -> 0x10000019; a region impossible in any image ->
 * 0x1000002d; too large for 64 bits -> 0x10000015. */
DAX_API DaxStatus DAXI_CalipEdgeDetectV2BufferSize_8u(const CaliperBox* boxes, int32_t count, uint32_t threads,
                                                      uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidV2BufferSize_8u(const CaliperRhomboid* rhomboids, int32_t count,
                                                              uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusV2BufferSize_8u(const CaliperAnnulus* annuli, int32_t count,
                                                             uint32_t threads, uint64_t* bytes);

/* Box. _IS members take the instruction set from the configuration, NEON members use NEON where the library has it (and
 * the portable kernels elsewhere), the others detect the processor. Results are the same. */
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const CaliperBox* box,
                                              const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                 const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                                 CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                                   CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size,
                                               const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                               CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                               int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                               const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1RM_IS(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                  int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                  const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetect_8u_C1RM_NEON(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                    int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                    const CaliperEdgeCfg* cfg, CaliperEdgeResult* result, void* buffer);

/* V1: the same, with profile and response. */
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                                CaliperEdgeResult* result, CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                                   CaliperEdgeResult* result, CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                     const CaliperBox* box, const CaliperEdgeCfg* cfg,
                                                     CaliperEdgeResult* result, CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                 int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                 const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                 CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1RM_IS(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                    int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                    const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                    CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectV1_8u_C1RM_NEON(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                      int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                      const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                      CaliperProfile* profile, void* buffer);

/* V2: many boxes with one configuration, results[i] for boxes[i]. They run on `pool` where it is not null, threads > 1
 * and the host exports one; otherwise one after the other, with the same result. `threads` is the number of shares, as
 * in the query of the buffer, and need not be the number of the pool's workers. */
DAX_API DaxStatus DAXI_CalipEdgeDetectV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                const CaliperBox* boxes, int32_t count, const CaliperEdgeCfg* cfg,
                                                CaliperEdgeResult* results, void* buffer, uint32_t threads, void* pool);
DAX_API DaxStatus DAXI_CalipEdgeDetectV2_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                     const CaliperBox* boxes, int32_t count, const CaliperEdgeCfg* cfg,
                                                     CaliperEdgeResult* results, void* buffer, uint32_t threads,
                                                     void* pool);

/* Rhomboid, as the members for boxes. */
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboid_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                      const CaliperRhomboid* rhomboid, const CaliperEdgeCfg* cfg,
                                                      CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboid_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                       int32_t maskStep, DaxiSize size, const CaliperRhomboid* rhomboid,
                                                       const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                       void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                        const CaliperRhomboid* rhomboid, const CaliperEdgeCfg* cfg,
                                                        CaliperEdgeResult* result, CaliperProfile* profile,
                                                        void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                         int32_t maskStep, DaxiSize size,
                                                         const CaliperRhomboid* rhomboid, const CaliperEdgeCfg* cfg,
                                                         CaliperEdgeResult* result, CaliperProfile* profile,
                                                         void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectRhomboidV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                        const CaliperRhomboid* rhomboids, int32_t count,
                                                        const CaliperEdgeCfg* cfg, CaliperEdgeResult* results,
                                                        void* buffer, uint32_t threads, void* pool);

/* Annulus sector, as the members for boxes. */
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulus_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                     const CaliperAnnulus* annulus, const CaliperEdgeCfg* cfg,
                                                     CaliperEdgeResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulus_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                      int32_t maskStep, DaxiSize size, const CaliperAnnulus* annulus,
                                                      const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                      void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                       const CaliperAnnulus* annulus, const CaliperEdgeCfg* cfg,
                                                       CaliperEdgeResult* result, CaliperProfile* profile,
                                                       void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                        int32_t maskStep, DaxiSize size, const CaliperAnnulus* annulus,
                                                        const CaliperEdgeCfg* cfg, CaliperEdgeResult* result,
                                                        CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgeDetectAnnulusV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                       const CaliperAnnulus* annuli, int32_t count,
                                                       const CaliperEdgeCfg* cfg, CaliperEdgeResult* results,
                                                       void* buffer, uint32_t threads, void* pool);

DAX_END_DECLS

#endif
