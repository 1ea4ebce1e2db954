/* Colour and grey from images of sensors with a Bayer pattern.
 *
 * `phase` names the pattern by the 2 x 2 pixels at the top left of the image as it is passed, row by row; of a part of an image
 * it is what DAXI_BayerPhaseAt says. The result is red, green, blue. For blue, green, red pass 3 - phase, which swaps red and
 * blue. Where a window reaches beyond the image, the image goes on mirrored about its outermost row or column
 * (DAXI_BORDER_MIRROR), which keeps the pattern.
 *
 * Bilinear: a missing colour is the mean of its two or four nearest samples, (a + b + 1) >> 1 or (a + b + c + d + 2) >> 2.
 *
 * MHC: Malvar, He, Cutler, High-quality linear interpolation for demosaicing of Bayer-patterned color images, ICASSP 2004: the
 * same, corrected by the second differences of the colour that is there, in windows of 5 x 5. Their coefficients times 16 are
 * integers; sums are rounded, (sum + 8) >> 4, and saturated.
 *
 * Grey is that of DAXI_RGBToGray (BT.601) from the colours, to the same bits.
 *
 * Steps count elements. src and dst must not overlap. No work buffer. Thread-safe. The forms that end in _MT run on the host's
 * pool, in at most `threads` tiles of rows, with the same result; pool may be null, and they return the host's status.
 *
 * Checks, in order:
 *   src null or dst null                                      0x10000014
 *   width < 2 or height < 2                                   0x1000001a
 *   a step below a row, three times the width for colour      0x1000001b
 *   phase outside 0..3                                         0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_BAYER_H
#define DAXI_BAYER_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* DaxiBayerPhase: bit 0 is the column, bit 1 the row of the first red pixel. */
enum { DAXI_BAYER_RGGB = 0, DAXI_BAYER_GRBG = 1, DAXI_BAYER_GBRG = 2, DAXI_BAYER_BGGR = 3 };

/* *phaseAt is the phase of the part of an image that begins at column x and row y.
 * Checks, in order: phaseAt null -> 0x10000014; phase outside 0..3 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_BayerPhaseAt(int32_t phase, int32_t x, int32_t y, int32_t* phaseAt);

/* Colour, bilinear. */
DAX_API DaxStatus DAXI_BayerBilinear_8u_C1C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinear_8u_C1C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinear_16u_C1C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinear_16u_C1C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);

/* Colour by MHC. */
DAX_API DaxStatus DAXI_BayerMHC_8u_C1C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHC_8u_C1C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHC_16u_C1C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHC_16u_C1C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);

/* Grey from bilinear colour. */
DAX_API DaxStatus DAXI_BayerBilinearToGray_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinearToGray_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                     uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinearToGray_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                   DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerBilinearToGray_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                      int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                      int32_t phase);

/* Grey from MHC colour. */
DAX_API DaxStatus DAXI_BayerMHCToGray_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHCToGray_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHCToGray_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, int32_t phase);
DAX_API DaxStatus DAXI_BayerMHCToGray_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t phase);

DAX_END_DECLS

#endif
