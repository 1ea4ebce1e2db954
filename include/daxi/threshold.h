/* Binary thresholding: 8-bit image to mask, 255 set and 0 clear.
 *
 * THE OTSU LEVEL IS THAT OF THE DARK CLASS, and all forms but the in-place one set it with the bright class (src >= t):
 * an image of two grey values becomes white as a whole. Use DAXI_AdpThresholdOtsu_8u_C1IR, which sets src > t.
 *
 * Steps count bytes. Every call reads src and writes dst over `size` pixels; dst may equal src with the same step (each
 * pixel depends on its own source pixel and on the histogram, which is taken first). No work buffer. Thread-safe.
 *
 * Shared checks of two-image calls, in order: src null, size below 1 x 1, srcStep < width -> 0x10000014, 0x1000001a,
 * 0x1000001b; dst null, dstStep < width -> 0x10000014, 0x1000001b. A failed call writes nothing. */
#ifndef DAXI_THRESHOLD_H
#define DAXI_THRESHOLD_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

enum {
  DAXI_THRESHOLD_COPY = 1,   /* polarity 0: dst = src; 1: dst = 255 - src */
  DAXI_THRESHOLD_SINGLE = 2, /* polarity 0: src >= t1; 1: src < t1 */
  DAXI_THRESHOLD_BAND = 3,   /* t1 <= src <= t2, or src < t2 or src > t1 when t2 < t1; either polarity */
  DAXI_THRESHOLD_OTSU = 4,   /* polarity 0: src >= t; 1: src <= t, with t the Otsu level: t itself is set by both */
  DAXI_THRESHOLD_SOFT = 5,   /* soft ramp from softLow to softHigh; polarity 1: as it is, 0: inverted */
  DAXI_THRESHOLD_RELATIVE_SOFT =
      6 /* soft ramp between levels found in the histogram; polarity 1: as it is, 0: inverted */
};

/* Configuration of DAXI_ThresholdBin. Only the fields of the chosen method are read. */
typedef struct DaxiThresholdBinCfg {
  uint32_t method;   /* DAXI_THRESHOLD_... */
  uint32_t polarity; /* 0 or 1 */
  float darkTail;    /* method 6: share of the darkest pixels left below the dark level, r0 in 0..1 */
  float brightTail;  /* method 6: share of the brightest pixels left above the bright level, r1 in 0..1, r0 + r1 <= 1 */
  float lowPos;      /* method 6: position of the low level between dark (0) and bright (1), q0 */
  float highPos;     /* method 6: position of the high level, q0 <= q1 <= 1 */
  uint32_t soft;     /* methods 5 and 6: number of grey levels between 0 and 255, 0..254 */
  int32_t softLow;   /* method 5: 0 <= softLow < softHigh */
  int32_t softHigh;  /* method 5: at most 255 */
  uint32_t t1;       /* methods 2 and 3: 0..255 */
  uint32_t t2;       /* method 3: 0..255 */
} DaxiThresholdBinCfg;

/* Binarises by the method of the configuration.
 *
 * Checks after the shared ones, in order: cfg null -> 0x10000014; polarity > 1 -> 0x10000019; the method's fields
 * outside the ranges above (NaN never passes), or an unknown method -> 0x10000019. */
DAX_API DaxStatus DAXI_ThresholdBin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiThresholdBinCfg* cfg);

/* The same function under a second name; it takes no instruction-set code. */
DAX_API DaxStatus DAXI_ThresholdBin_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiThresholdBinCfg* cfg);

/* As DAXI_ThresholdBin_8u_C1R. LOW AND HIGH ARE OUTPUTS: one byte is written through each, the levels that were
 * applied: the lower and the upper of the band or the ramp, twice the same for a single threshold and for Otsu, 0 and
 * 255 for a copy. One more check, the last: low or high null -> 0x10000014. */
DAX_API DaxStatus DAXI_ThresholdBinV2_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiThresholdBinCfg* cfg, uint8_t* low,
                                             uint8_t* high);

/* The same function under a second name; it takes no instruction-set code. */
DAX_API DaxStatus DAXI_ThresholdBinV2_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdBinCfg* cfg, uint8_t* low,
                                                uint8_t* high);

/* Otsu's threshold: the level t that maximises the between-class variance of the histogram (N. Otsu, IEEE Trans. SMC
 * 9(1), 1979), the lowest such level on ties, 0 for an image of one grey value. Sets pixels with src >= t.
 *
 * With p[i] = count / pixels in single precision and sums in ascending order: mean = sum i p[i]; w = sum p[0..i],
 * m = sum i p[i] up to i, variance(i) = (mean w - m)^2 / (w - w^2 + 1.1920929e-7). The search ends before a level at
 * which rounding has brought w above 1, to 1.0000001 or more. */
DAX_API DaxStatus DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               DaxiSize size);

/* The same with an instruction-set code; checked last: isa < 0 -> 0x1000001c. */
DAX_API DaxStatus DAXI_AdpThresholdOtsu_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, int32_t isa);

/* In place, and strict: sets pixels with src > t. Checks its one image. */
DAX_API DaxStatus DAXI_AdpThresholdOtsu_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size);

/* Soft binarisation: 0 at and below `low`, 255 at and above `high`, and between them a rising ramp of `soft` grey
 * levels: step k = floor((src - low) (soft + 1) / (high - low) + 1/2), value = round(255 k / (soft + 1)), in exact
 * integers. soft = 0 is a hard threshold halfway, soft = 254 the full ramp.
 *
 * Last check: soft > 254, or not 0 <= low < high <= 255 -> 0x10000019. */
DAX_API DaxStatus DAXI_ThresholdSoftBin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               DaxiSize size, int32_t low, int32_t high, uint32_t soft);

/* As DAXI_ThresholdSoftBin_8u_C1R, but a weight 0..1: k / (soft + 1) in single precision. dstStep counts floats; dst
 * must not overlap src. */
DAX_API DaxStatus DAXI_ThresholdSoftBin_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                  DaxiSize size, int32_t low, int32_t high, uint32_t soft);

/* Soft binarisation between levels found in the histogram. The dark level a is the lowest level at which the share of
 * pixels at or below it exceeds darkTail (255 when none does), the bright level b the highest at which the share of
 * pixels at or above it exceeds brightTail (0 when none does). With la = a + trunc(lowPos (b - a)) and lb = a +
 * trunc(highPos (b - a)), products in single precision, the ramp runs from min(la, lb) to max(la, lb); equal levels are
 * a hard threshold (255 at and above the level).
 *
 * Last check: not (0 <= darkTail <= 1, 0 <= brightTail <= 1, darkTail + brightTail <= 1 as a float sum, lowPos >= 0,
 * highPos <= 1, lowPos <= highPos, soft < 255) -> 0x10000019. */
DAX_API DaxStatus DAXI_ThresholdRelativeSoft_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                    DaxiSize size, float darkTail, float brightTail, float lowPos,
                                                    float highPos, uint32_t soft);

/* As DAXI_ThresholdRelativeSoft_8u_C1R, but a weight 0..1. dstStep counts floats; dst must not overlap src. */
DAX_API DaxStatus DAXI_ThresholdRelativeSoft_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                       DaxiSize size, float darkTail, float brightTail, float lowPos,
                                                       float highPos, uint32_t soft);

/* Inverts an image: dst = 255 - src. Shared checks only. NEON kernel where the library has one. */
DAX_API DaxStatus DAXI_ThresholdBin_0to255_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                                       int32_t dstStep, DaxiSize size);

/* In place; checks its one image. */
DAX_API DaxStatus DAXI_ThresholdBin_0to255_8u_C1IR_NEON(uint8_t* srcDst, int32_t step, DaxiSize size);

/* 255 where src < low or src > high, else 0. Shared checks only. */
DAX_API DaxStatus DAXI_ThresholdBin_out_range_is_255_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                                          int32_t dstStep, DaxiSize size, uint8_t low, uint8_t high);

DAX_END_DECLS

#endif
