/* Edges by Canny's method (A computational approach to edge detection, IEEE Transactions on Pattern Analysis and Machine
 * Intelligence 8, 1986), as a mask of 255 and 0.
 *
 * 1. Smoothing by DAXI_FilterGauss_8u_C1R, unless sigma is 0.
 * 2. Gradients gx, gy by Sobel's windows, not normalised; their magnitude m is |gx| + |gy|, or sqrt(gx^2 + gy^2), of which
 *    squares are compared. Outside the image pixels are replicated, and m is 0.
 * 3. A pixel is kept where m > low, m is above that of the first of two neighbours and not below that of the second.
 *    They are left and right where |gy| 32768 < 13573 |gx|, above and below where |gx| 32768 < 13573 |gy|, else the
 *    diagonal ones to which the gradient points; the first comes first in raster order.
 * 4. Kept pixels are edges where m > high, and where they are joined with such ones by their eight neighbours.
 * All in integers: the same on every machine.
 *
 * Steps count elements. src and dst must not overlap. The form ending in _MT runs 1. to 3. on the host's pool, in at most
 * `threads` tiles and at most 64; any number works with any pool, the result does not depend on it, and pool may be
 * null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                         0x10000014
 *   width or height below 1 or above 65535               0x1000001a
 *   width above the smaller step                         0x1000001b
 *   configuration, in the order of its fields            0x10000019
 * When a check fails, nothing is written; the _MT form returns the status of the host's parallel-for, unchanged. */
#ifndef DAXI_CANNY_H
#define DAXI_CANNY_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

enum { DAXI_CANNY_L1 = 0, DAXI_CANNY_L2 = 1 };

/* Configuration. 32 bytes. */
typedef struct DaxiCannyCfg {
  double sigma;     /* of the smoothing, pixels: 0.3..100, default 1; 0: none */
  double low;       /* >= 0, default 50 */
  double high;      /* finite, at least low, default 100 */
  int32_t norm;     /* 0..1: DAXI_CANNY_L1, the default, or ..._L2 */
  int32_t aperture; /* 3 or 5, default 3 */
} DaxiCannyCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_CannyDefaultCfg(DaxiCannyCfg* cfg);

/* Bytes of work buffer for the same arguments, for the form ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width or height below 1 or above 65535 -> 0x10000019; the configuration, in the order
 * of its fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_CannyBufferSize_8u(DaxiSize size, const DaxiCannyCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_Canny_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                    const DaxiCannyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Canny_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                       int32_t dstStep, DaxiSize size, const DaxiCannyCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
