/* Grey values stretched to a range.
 *
 * low and high are the values of ranks max(1, ceil(pLow n)) and max(1, ceil(pHigh n)) among the n finite pixels in ascending order: 0
 * and 1 give the minimum and the maximum. A pixel becomes, in double precision,
 *   outLow + (src - low) * (outHigh - outLow) / (high - low)
 * with src held to low..high, rounded half to even and saturated; of 32f rounded once. Where high = low, all pixels become outLow.
 * Infinities become the ends of the range, NaN 0 in integers and NaN in floats.
 *
 * C1R has one channel; C1IR works in place. Between images of one type dst may be src with the same step; else they must not
 * overlap. Steps count elements. No work buffer. Thread-safe for distinct destinations. The results are the same bits on every
 * machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image or cfg null                  0x10000014
 *   width < 1 or height < 1               0x1000001a
 *   width above the smallest step         0x1000001b
 *   configuration, in the order of its
 *   fields; then pLow > pHigh             0x10000019
 *   no pixel finite                       0x10000033
 * A failed call writes nothing. */
#ifndef DAXI_NORMALISE_H
#define DAXI_NORMALISE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 32 bytes. */
typedef struct DaxiNormaliseCfg {
  double pLow;    /* >= 0 and no more than pHigh, default 0: share of the pixels at or below low */
  double pHigh;   /* at most 1, default 1: share of the pixels at or below high */
  double outLow;  /* finite, default 0: what low becomes */
  double outHigh; /* finite, default 255: what high becomes; may be below outLow */
} DaxiNormaliseCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_NormaliseDefaultCfg(DaxiNormaliseCfg* cfg);

/* dst = src stretched. */
DAX_API DaxStatus DAXI_Normalise_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16s8u_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16s32f_C1R(const int16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         const DaxiNormaliseCfg* cfg);
DAX_API DaxStatus DAXI_Normalise_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, const DaxiNormaliseCfg* cfg);

DAX_END_DECLS

#endif
