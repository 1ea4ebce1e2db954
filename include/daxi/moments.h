/* Moments of the grey values of a region: raw, central and normalised ones, and Hu's invariants.
 *
 * Coordinates count from the region's corner, pixel centres at integers. Integers: raw moments are exact before they
 * are rounded to double; central ones are exact about the integer point next to the centroid, so that they do not
 * change by a bit when what is in the image is shifted. Floats: doubles, about that point in a second pass; of a row,
 * the sum of four lanes (0 + 2) + (1 + 3), column x in lane x modulo 4, rows from top to bottom.
 *
 * _MT: the rows are summed up on the host's thread pool, in bands of ceil(height / threads), where pool is not null and
 * threads > 1; else on the calling thread. The result does not depend on it. Returns the status of the host's
 * parallel-for, unchanged.
 *
 * The results are the same bits on every machine. */
#ifndef DAXI_MOMENTS_H
#define DAXI_MOMENTS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* 264 bytes. v is the value of pixel (x, y), p + q = 2 or 3. */
typedef struct DaxiMoments {
  double m00, m10, m01, m20, m11, m02, m30, m21, m12, m03; /* mpq = sum x^p y^q v */
  double x, y;                                             /* the centroid, m10 / m00 and m01 / m00 */
  double mu20, mu11, mu02, mu30, mu21, mu12, mu03;         /* mupq = sum (x - centroid)^p (y - centroid)^q v */
  double nu20, nu11, nu02, nu30, nu21, nu12, nu03;         /* nupq = mupq / m00^(1 + (p + q) / 2) */
  double
      hu[7]; /* invariant under shifts, turns and scale; a mirror image changes the sign of the last. Hu, Visual pattern
                   recognition by moment invariants, IRE Transactions on Information Theory 8, 1962 */
} DaxiMoments;

/* Measures a region.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   moments         receives the moments
 *   buffer          as many bytes as the query says, aligned as by malloc; forms without _MT need none
 *
 * Checks, in order:
 *   a pointer but pool null                       0x10000014
 *   width or height outside 1..1048576            0x1000001a
 *   srcStep < width                               0x1000001b
 *   m00 not above 0, or not finite                0x10000033
 * A failed call has written nothing but the buffer. Thread-safe for distinct outputs and buffers. */
DAX_API DaxStatus DAXI_Moments_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiMoments* moments);
DAX_API DaxStatus DAXI_Moments_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, DaxiMoments* moments);
DAX_API DaxStatus DAXI_Moments_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, DaxiMoments* moments);
DAX_API DaxStatus DAXI_Moments_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         DaxiSize size, DaxiMoments* moments, void* buffer);
DAX_API DaxStatus DAXI_Moments_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          DaxiSize size, DaxiMoments* moments, void* buffer);
DAX_API DaxStatus DAXI_Moments_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                          DaxiSize size, DaxiMoments* moments, void* buffer);

/* Bytes of work buffer for regions of this size.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..1048576 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_MomentsBufferSize_8u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MomentsBufferSize_16u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MomentsBufferSize_32f_MT(DaxiSize size, uint64_t* bytes);

DAX_END_DECLS

#endif
