/* Local binary patterns (Ojala, Pietikainen, Maenpaa, Multiresolution gray-scale and rotation invariant texture
 * classification, IEEE Transactions on Pattern Analysis and Machine Intelligence 24, 2002): which neighbours of a pixel
 * are at least as bright as it is. They do not change when light does, as long as the order of grey levels stays.
 *
 * P neighbours v(0)..v(P - 1) of a pixel c: the first one to the east, the next ones clockwise on the screen. They are
 * the eight pixels around it, or lie on a circle of radius R, at (R cos a, R sin a) for a = 2 pi k / P. Positions on
 * the circle are rounded to 1/4096 pixel, and values between pixels are bilinear with whole weights w, which add up to
 * 4096. Bit k of the pattern is set where v(k) >= c: where the sum of w (pixel - c) over up to four pixels is at least
 * 0. For integers that is exact, so that an even area sets all bits; for floats differences, products and sums are
 * floats, from the upper left pixel to the lower right one, and NaN clears the bit.
 *
 *   DAXI_LBP_PLAIN      the pattern itself, 0..2^P - 1
 *   DAXI_LBP_ROTATION   the smallest number that turning its bits gives
 *   DAXI_LBP_UNIFORM    the number of bits set, 0..P, where at most two bits differ from the next one around, else
 *                       P + 1
 *
 *   src, srcStep    image, step in elements
 *   dst, dstStep    codes; must not overlap src
 *   size            of the region
 *   counts          receives how often each code occurs, from 0 on; as many numbers as DAXI_LBPCodeCount tells
 *
 * Borders: replicated, the default, mirrored, symmetric, circular, constant, or in memory, where the pixels around the
 * region that circles reach must be there.
 *
 * Forms ending in _MT run on the host's thread pool, in bands of rows, where pool is not null and threads > 1; else on
 * the calling thread. The result does not depend on it, and is the same bits on every machine. Thread-safe for distinct
 * outputs and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg, counts or buffer null               0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_LBP_H
#define DAXI_LBP_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

enum { DAXI_LBP_PLAIN = 0, DAXI_LBP_ROTATION = 1, DAXI_LBP_UNIFORM = 2 };

/* Configuration. 32 bytes. */
typedef struct DaxiLbpCfg {
  int32_t codes;    /* 0..2: DAXI_LBP_PLAIN, the default, to ..._UNIFORM */
  int32_t points;   /* default 8; 4 to 24 of uniform codes, 4 to 16 of others, 4 to 8 of these in 8-bit results */
  double radius;    /* pixels: 0.5..32; 0, the default: the eight pixels around, of 8 points only */
  int32_t border;   /* 0..5: DAXI_BORDER_REPLICATE, the default, to ..._IN_MEMORY */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiLbpCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_LBPDefaultCfg(DaxiLbpCfg* cfg);

/* How many codes there are: 2^P, or P + 2 uniform ones.
 *
 * Checks, in order: cfg or codeCount null -> 0x10000014; the configuration, in the order of its fields -> 0x10000019.
 * Thread-safe. */
DAX_API DaxStatus DAXI_LBPCodeCount(const DaxiLbpCfg* cfg, int32_t* codeCount);

/* The codes as an image. No work buffer. */
DAX_API DaxStatus DAXI_LBP_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                     int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_8u16u_C1R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                     const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_8u16u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                        uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_16u8u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                      int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_32f8u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, uint8_t* dst,
                                        int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_32f16u_C1R(const float* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                      const DaxiLbpCfg* cfg);
DAX_API DaxStatus DAXI_LBP_32f16u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, uint16_t* dst,
                                         int32_t dstStep, DaxiSize size, const DaxiLbpCfg* cfg);

/* How often each code occurs. No work buffer. */
DAX_API DaxStatus DAXI_LBPHistogram_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg,
                                           uint64_t* counts);
DAX_API DaxStatus DAXI_LBPHistogram_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg,
                                            uint64_t* counts);
DAX_API DaxStatus DAXI_LBPHistogram_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, const DaxiLbpCfg* cfg,
                                            uint64_t* counts);

/* Bytes of work buffer of the histograms on a pool, for so many threads: at most 64 run.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; the configuration, in the order of its fields -> 0x10000019.
 * Thread-safe. */
DAX_API DaxStatus DAXI_LBPHistogramBufferSize_8u_MT(const DaxiLbpCfg* cfg, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LBPHistogramBufferSize_16u_MT(const DaxiLbpCfg* cfg, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LBPHistogramBufferSize_32f_MT(const DaxiLbpCfg* cfg, uint32_t threads, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_LBPHistogram_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              DaxiSize size, const DaxiLbpCfg* cfg, uint64_t* counts, void* buffer);
DAX_API DaxStatus DAXI_LBPHistogram_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               DaxiSize size, const DaxiLbpCfg* cfg, uint64_t* counts, void* buffer);
DAX_API DaxStatus DAXI_LBPHistogram_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               DaxiSize size, const DaxiLbpCfg* cfg, uint64_t* counts, void* buffer);

DAX_END_DECLS

#endif
