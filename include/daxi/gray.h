/* Grey from colour, and colour from grey.
 *
 * Steps count elements. Source and destination must not overlap. No work buffer. Thread-safe. The results are the same bits on
 * every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image or the array of weights null                     0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   a step below a row, three times the width for colour      0x1000001b
 *   standard other than 0 and 1                               0x10000019
 *   a weight that is not finite                               0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_GRAY_H
#define DAXI_GRAY_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "colour.h"

DAX_BEGIN_DECLS

/* Grey by the weights of DAXI_COLOUR_BT601 or ..._BT709, from red, green, blue. Integers: exact, halves rounded up, as
 * (299 R + 587 G + 114 B + 500) div 1000 or (2126 R + 7152 G + 722 B + 5000) div 10000. 32f: (wr R + wg G) + wb B in single
 * precision. */
DAX_API DaxStatus DAXI_RGBToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard);
DAX_API DaxStatus DAXI_RGBToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t standard);
DAX_API DaxStatus DAXI_RGBToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, int32_t standard);

/* The same from blue, green, red. */
DAX_API DaxStatus DAXI_BGRToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard);
DAX_API DaxStatus DAXI_BGRToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t standard);
DAX_API DaxStatus DAXI_BGRToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, int32_t standard);

/* Grey by the caller's weights, finite: (w0 c0 + w1 c1) + w2 c2 of the channels in double precision, rounded half to even and
 * saturated; 32f: rounded to single precision. */
DAX_API DaxStatus DAXI_ColourToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const double weights[3]);
DAX_API DaxStatus DAXI_ColourToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const double weights[3]);
DAX_API DaxStatus DAXI_ColourToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const double weights[3]);

/* Each pixel three times, which is grey in any order of the channels. */
DAX_API DaxStatus DAXI_GrayToRGB_8u_C1C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size);
DAX_API DaxStatus DAXI_GrayToRGB_16u_C1C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_GrayToRGB_32f_C1C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size);

DAX_END_DECLS

#endif
