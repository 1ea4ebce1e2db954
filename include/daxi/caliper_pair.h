/* Pairs of edges: stripes, gaps and widths.
 *
 * A pair caliper measures a region like a caliper (caliper.h), finds the edges of both polarities, and combines any two
 * edges in the order of the profile whose polarities match: `polarity` 1 dark to light and then light to dark, 2 the
 * reverse, 3 any. Pairs are ordered by their first edges, pairs with the same first edge by the distance of the second.
 *
 *   width     distance of the two positions      contrast  sum of the two |peak|
 *   position  middle of the two positions        gray      sum of the two grays
 *
 * Criteria, with E the expected width; factors as for single edges, multiplied in this order:
 *   0x1    contrast         contrast
 *   0x200  gray             gray
 *   0x2    position         |position|
 *   0x8    positionNorm     |position| / E
 *   0x4    positionNeg      position
 *   0x10   positionNormNeg  position / E
 *   0x20   sizeNorm         width / E
 *   0x40   sizeDiffNorm     |width - E| / E
 *   0x80   sizeDiffAsym     (width - E) / E, with the ramp sizeDiffBelow below 0, else with sizeDiffAbove
 *   0x100  straddle         1 where one edge lies on either side of the centre (or on it), else 0
 * With k > 1 active criteria the score is the k-th root of the product. Of the pairs with a score of at least minScore
 * the best `maxPairs` are returned, highest first; equal scores are ordered by the index of the first, then the second
 * edge. With pairChoice k >= 1 only the k-th pair in the order above, or the last where there are fewer, is returned,
 * without scoring (score 1). Time grows with the square of the number of edges.
 *
 * Checks as DAXI_CalipEdgeDetect_8u_C1R, with these differences in the configuration: maxPairs instead of maxEdges; the
 * criteria in the order above, for sizeDiffAsym both ramps; flags 0 or above 1023; with a flag of 0xF8, expectedWidth <
 * 1.1920929e-7; minScore < 0. Members and size queries correspond one to one. */
#ifndef DAXI_CALIPER_PAIR_H
#define DAXI_CALIPER_PAIR_H

#include "caliper.h"

DAX_BEGIN_DECLS

/* Criteria of pairs, for CaliperEdgePairCfg.scoreFlags. */
enum {
  DAXI_CALIPER_PAIR_BY_CONTRAST = 0x1,
  DAXI_CALIPER_PAIR_BY_POSITION = 0x2,
  DAXI_CALIPER_PAIR_BY_POSITION_NEG = 0x4,
  DAXI_CALIPER_PAIR_BY_POSITION_NORM = 0x8,
  DAXI_CALIPER_PAIR_BY_POSITION_NORM_NEG = 0x10,
  DAXI_CALIPER_PAIR_BY_SIZE_NORM = 0x20,
  DAXI_CALIPER_PAIR_BY_SIZE_DIFF_NORM = 0x40,
  DAXI_CALIPER_PAIR_BY_SIZE_DIFF_ASYM = 0x80,
  DAXI_CALIPER_PAIR_BY_STRADDLE = 0x100,
  DAXI_CALIPER_PAIR_BY_GRAY = 0x200
};

/* A pair. 88 bytes. The scores of its edges are 1. */
typedef struct CaliperEdgePair {
  CaliperEdge first;
  CaliperEdge second;
  float width;    /* pixels */
  float position; /* pixels from the centre of the profile */
  float contrast;
  float gray;
  float score;
  uint32_t reserved; /* 0 */
} CaliperEdgePair;

typedef struct CaliperEdgePairCfg {
  uint32_t projection;      /* 1 vertical, 0 horizontal */
  uint32_t polarity;        /* 1..3 */
  uint32_t filterHalfWidth; /* 1..50 */
  int32_t maxPairs;         /* >= 1 */
  float threshold;          /* of the response, >= -1.1920929e-7 */
  int32_t pairChoice;       /* k >= 1: the k-th pair only; else all */
  int32_t isa;              /* instruction-set code of the _IS members; others ignore it */
  uint32_t reserved;        /* ignored */
  uint32_t scoreFlags;      /* criteria; at least one */
  float expectedWidth;      /* E, pixels */
  CaliperCriterion contrast;
  CaliperCriterion position;
  CaliperCriterion positionNeg;
  CaliperCriterion positionNorm;
  CaliperCriterion positionNormNeg;
  CaliperCriterion sizeNorm;
  CaliperCriterion sizeDiffNorm;
  CaliperCriterion sizeDiffBelow;
  CaliperCriterion sizeDiffAbove;
  CaliperCriterion straddle;
  CaliperCriterion gray;
  float minScore; /* >= 0 */
} CaliperEdgePairCfg;

/* The pairs found. The caller provides the arrays, with room for `maxPairs`; a call writes `count`. */
typedef struct CaliperEdgePairResult {
  CaliperEdgePair* pairs;
  DaxiPoint32f* points; /* in the image: two for each pair, of its first and its second edge; may be null */
  int32_t count;
} CaliperEdgePairResult;

/* Work-buffer needs, as for single edges. */
DAX_API DaxStatus DAXI_CalipEdgePairDetectBufferSize_8u(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectBufferSize_16s(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1BufferSize_8u(const CaliperBox* box, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidBufferSize_8u(const CaliperRhomboid* rhomboid, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidV1BufferSize_8u(const CaliperRhomboid* rhomboid, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusBufferSize_8u(const CaliperAnnulus* annulus, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusV1BufferSize_8u(const CaliperAnnulus* annulus, uint64_t* bytes);

DAX_API DaxStatus DAXI_CalipEdgePairDetectV2BufferSize_8u(const CaliperBox* boxes, int32_t count, uint32_t threads,
                                                          uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidV2BufferSize_8u(const CaliperRhomboid* rhomboids, int32_t count,
                                                                  uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusV2BufferSize_8u(const CaliperAnnulus* annuli, int32_t count,
                                                                 uint32_t threads, uint64_t* bytes);

/* Box. _IS members take the instruction set from the configuration, NEON members use NEON where the library has it (and
 * the portable kernels elsewhere), the others detect the processor. Results are the same. */
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                  const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                  CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                     const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                     CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                       const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                       CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size,
                                                   const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                   CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                   int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                   const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                   void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1RM_IS(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                      int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                      const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                      void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetect_8u_C1RM_NEON(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                        int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                        const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                        void* buffer);

/* V1: the same, with profile and response. */
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                    const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                    CaliperEdgePairResult* result, CaliperProfile* profile,
                                                    void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                       const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                       CaliperEdgePairResult* result, CaliperProfile* profile,
                                                       void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         const CaliperBox* box, const CaliperEdgePairCfg* cfg,
                                                         CaliperEdgePairResult* result, CaliperProfile* profile,
                                                         void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                     int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                     const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                     CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1RM_IS(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                        int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                        const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                        CaliperProfile* profile, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV1_8u_C1RM_NEON(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                          int32_t maskStep, DaxiSize size, const CaliperBox* box,
                                                          const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                          CaliperProfile* profile, void* buffer);

/* V2: many boxes with one configuration, results[i] for boxes[i]. They are shared out to `pool` where it is not null,
 * threads > 1 and the host exports one; otherwise one after the other, with the same result. `threads` is the number of
 * shares, as in the query of the buffer, and need not be the number of the pool's workers. */
DAX_API DaxStatus DAXI_CalipEdgePairDetectV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                    const CaliperBox* boxes, int32_t count,
                                                    const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* results,
                                                    void* buffer, uint32_t threads, void* pool);
DAX_API DaxStatus DAXI_CalipEdgePairDetectV2_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         const CaliperBox* boxes, int32_t count,
                                                         const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* results,
                                                         void* buffer, uint32_t threads, void* pool);

/* Rhomboid, as the members for boxes. */
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboid_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                          const CaliperRhomboid* rhomboid,
                                                          const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                          void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboid_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                           int32_t maskStep, DaxiSize size,
                                                           const CaliperRhomboid* rhomboid,
                                                           const CaliperEdgePairCfg* cfg, CaliperEdgePairResult* result,
                                                           void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                            const CaliperRhomboid* rhomboid,
                                                            const CaliperEdgePairCfg* cfg,
                                                            CaliperEdgePairResult* result, CaliperProfile* profile,
                                                            void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                             int32_t maskStep, DaxiSize size,
                                                             const CaliperRhomboid* rhomboid,
                                                             const CaliperEdgePairCfg* cfg,
                                                             CaliperEdgePairResult* result, CaliperProfile* profile,
                                                             void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectRhomboidV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                            const CaliperRhomboid* rhomboids, int32_t count,
                                                            const CaliperEdgePairCfg* cfg,
                                                            CaliperEdgePairResult* results, void* buffer,
                                                            uint32_t threads, void* pool);

/* Annulus sector, as the members for boxes. */
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulus_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         const CaliperAnnulus* annulus, const CaliperEdgePairCfg* cfg,
                                                         CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulus_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                          int32_t maskStep, DaxiSize size,
                                                          const CaliperAnnulus* annulus, const CaliperEdgePairCfg* cfg,
                                                          CaliperEdgePairResult* result, void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusV1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                           const CaliperAnnulus* annulus, const CaliperEdgePairCfg* cfg,
                                                           CaliperEdgePairResult* result, CaliperProfile* profile,
                                                           void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusV1_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                            int32_t maskStep, DaxiSize size,
                                                            const CaliperAnnulus* annulus,
                                                            const CaliperEdgePairCfg* cfg,
                                                            CaliperEdgePairResult* result, CaliperProfile* profile,
                                                            void* buffer);
DAX_API DaxStatus DAXI_CalipEdgePairDetectAnnulusV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                           const CaliperAnnulus* annuli, int32_t count,
                                                           const CaliperEdgePairCfg* cfg,
                                                           CaliperEdgePairResult* results, void* buffer,
                                                           uint32_t threads, void* pool);

DAX_END_DECLS

#endif
