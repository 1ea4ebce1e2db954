/* Red, green, blue, or grey, from the YUV formats that cameras send, eight bits a sample.
 *
 * NV12, NV21, I420: a plane of Y, and chroma of half the width and height, rounded up: one plane of pairs U, V (NV12) or V, U
 * (NV21), or one plane each. YUYV, UYVY: pairs of pixels in four bytes, Y0 U Y1 V or U Y0 V Y1; of an odd width the last pair
 * is there, and its second Y is not used. U is Cb, V is Cr. A pixel has the chroma of its pair, or of its 2 x 2 pixels
 * (nearest), and is decoded as by DAXI_YCbCrToRGB_8u_C3R, with its standard and range (DAXI_COLOUR_BT601, DAXI_COLOUR_VIDEO and
 * so on). Grey is Y, in full range as it is, in video range (Y - 16) 255 / 219 rounded and saturated.
 *
 * Steps count bytes. Sources and dst must not overlap. No work buffer. Thread-safe. The forms that end in _MT run on the host's
 * pool, in at most `threads` tiles of rows, with the same result; pool may be null, and they return the host's status.
 *
 * Checks, in order:
 *   an image null                                                          0x10000014
 *   width < 1 or height < 1                                                0x1000001a
 *   a step below a row                                                     0x1000001b
 *   standard other than 0 and 1                                            0x10000019
 *   range other than 0 and 1                                               0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_YUV_H
#define DAXI_YUV_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "colour.h"

DAX_BEGIN_DECLS

/* Semiplanar. */
DAX_API DaxStatus DAXI_NV12ToRGB_8u_P2C3R(const uint8_t* y, int32_t yStep, const uint8_t* uv, int32_t uvStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_NV12ToRGB_8u_P2C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* uv, int32_t uvStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_NV12ToBGR_8u_P2C3R(const uint8_t* y, int32_t yStep, const uint8_t* uv, int32_t uvStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_NV12ToBGR_8u_P2C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* uv, int32_t uvStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_NV21ToRGB_8u_P2C3R(const uint8_t* y, int32_t yStep, const uint8_t* vu, int32_t vuStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_NV21ToRGB_8u_P2C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* vu, int32_t vuStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_NV21ToBGR_8u_P2C3R(const uint8_t* y, int32_t yStep, const uint8_t* vu, int32_t vuStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_NV21ToBGR_8u_P2C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* vu, int32_t vuStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t standard, int32_t range);

/* Planar. */
DAX_API DaxStatus DAXI_I420ToRGB_8u_P3C3R(const uint8_t* y, int32_t yStep, const uint8_t* u, int32_t uStep,
                                          const uint8_t* v, int32_t vStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_I420ToRGB_8u_P3C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* u, int32_t uStep, const uint8_t* v, int32_t vStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_I420ToBGR_8u_P3C3R(const uint8_t* y, int32_t yStep, const uint8_t* u, int32_t uStep,
                                          const uint8_t* v, int32_t vStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_I420ToBGR_8u_P3C3R_MT(void* pool, uint32_t threads, const uint8_t* y, int32_t yStep,
                                             const uint8_t* u, int32_t uStep, const uint8_t* v, int32_t vStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);

/* Packed. */
DAX_API DaxStatus DAXI_YUYVToRGB_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YUYVToRGB_8u_C2C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_YUYVToBGR_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YUYVToBGR_8u_C2C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_UYVYToRGB_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_UYVYToRGB_8u_C2C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_UYVYToBGR_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_UYVYToBGR_8u_C2C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);

/* Grey from a plane of Y, or from packed pairs. */
DAX_API DaxStatus DAXI_YToGray_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t range);
DAX_API DaxStatus DAXI_YUYVToGray_8u_C2C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t range);
DAX_API DaxStatus DAXI_UYVYToGray_8u_C2C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, int32_t range);

DAX_END_DECLS

#endif
