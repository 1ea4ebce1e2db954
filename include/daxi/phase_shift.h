/* How far one image is moved, or moved, turned and scaled, against another: phase correlation.
 *
 * Shift, b(x) = a(x - d), of src1 (a) and src2 (b), in two steps:
 *
 *   1  Both are taken less their weighted mean and windowed (Hann). The correlation of their spectra, every frequency
 *      divided by its magnitude, is 1 at the shift to whole pixels where the images agree in everything and close to 0
 *      elsewhere (Kuglin and Hines, The phase correlation image alignment method, 1975). Frequencies with less than
 *      1e-10 of the mean energy do not count. The highest value does, the first one in the order of rows of equal ones;
 *      a place beyond half the transform's side is a negative shift.
 *   2  Both are cropped to what they have in common, windowed anew, and correlated without that division, but with a
 *      high pass, (1 - e^-(f / 0.03)^2)^2 of f in cycles a pixel. Newton's method finds the maximum of this correlation,
 *      a function of real numbers, in at most 12 steps of at most half a pixel.
 *
 * Light and contrast may differ, also from part to part. Errors without noise are about 0.001 pixels, with noise of an
 * eighth of the contrast 0.006 in images of 256 x 256. Images of stripes tell nothing of the shift along them.
 *
 * Rotation and scale: the magnitudes of both spectra from 0.04 to 0.5 cycles a pixel, as logarithms over half a turn and
 * over the logarithm of the frequency, are shifted by the angle and the logarithm of the scale, which are found as
 * above (Reddy and Chatterji, An FFT-based technique for translation, rotation and scale-invariant image registration,
 * IEEE Transactions on Image Processing 5, 1996). The first image is then turned and scaled so, and so with half a turn
 * more, and compared with the second one as above. Scales from 1/2 to 2 are found in images that have enough in common;
 * errors are about 0.02 degrees and 0.1 % in images of 256 x 256.
 *
 * Transforms have sides without prime factors above 7; the images are padded with zeros. They are single precision, sums
 * are doubles. The results are the same bits on every machine.
 *
 *   src1, step1, src2, step2   the images, steps in elements; they may be the same
 *   size                       of both
 *   shift, motion              receives the result
 *   buffer                     as many bytes as the query says, aligned as by malloc
 *
 * Forms ending in _MT run on the host's pool; any number works with any pool, results do not depend on it, and pool may
 * be null. Thread-safe for distinct buffers.
 *
 * Checks, in order:
 *   src1, src2, shift, motion or buffer null                                            0x10000014
 *   width or height below 16 or above 8192                                              0x1000001a
 *   step1 < width                                                                       0x1000001b
 *   step2 < width                                                                       0x1000001b
 *   a pixel of src1 that is NaN or infinite                                             0x10000032
 *   src1 flat                                                                           0x10000033
 *   a pixel of src2 that is NaN or infinite                                             0x10000032
 *   src2 flat                                                                           0x10000033
 *   less than a quarter in common, or no maximum where it should be                     0x10000033
 * A failed call writes nothing but the buffer; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_PHASE_SHIFT_H
#define DAXI_PHASE_SHIFT_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* The shift from one image to another. 32 bytes. */
typedef struct DaxiPhaseShift {
  double dx;     /* the second image shows what the first one does, so many pixels further right */
  double dy;     /* and further down */
  double peak;   /* of step 1: 1 for the same image moved around its edges; that of different images is near `second` */
  double second; /* the next value, not within two pixels of the peak */
} DaxiPhaseShift;

/* The similarity from one image to another. 120 bytes. */
typedef struct DaxiPhaseMotion {
  double m[9];   /* takes (x, y, 1) of the first image to the second one */
  double angle;  /* about the centre, from x to y, clockwise on the screen; radians, within -pi..pi */
  double scale;  /* above 1: the second image shows things larger */
  double dx;     /* how far the centre moves to the right */
  double dy;     /* and down */
  double peak;   /* as above, of the first image turned and scaled and the second one */
  double second; /* likewise */
} DaxiPhaseMotion;

/* Bytes of work buffer, of forms ending in _MT too.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 16 or above 8192 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_PhaseShiftBufferSize(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PhaseRotationScaleBufferSize(DaxiSize size, uint64_t* bytes);

/* The shift. */
DAX_API DaxStatus DAXI_PhaseShift_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                         DaxiSize size, DaxiPhaseShift* shift, void* buffer);
DAX_API DaxStatus DAXI_PhaseShift_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src1, int32_t step1,
                                            const uint8_t* src2, int32_t step2, DaxiSize size, DaxiPhaseShift* shift,
                                            void* buffer);
DAX_API DaxStatus DAXI_PhaseShift_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                          DaxiSize size, DaxiPhaseShift* shift, void* buffer);
DAX_API DaxStatus DAXI_PhaseShift_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src1, int32_t step1,
                                             const uint16_t* src2, int32_t step2, DaxiSize size, DaxiPhaseShift* shift,
                                             void* buffer);
DAX_API DaxStatus DAXI_PhaseShift_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                          DaxiSize size, DaxiPhaseShift* shift, void* buffer);
DAX_API DaxStatus DAXI_PhaseShift_32f_C1R_MT(void* pool, uint32_t threads, const float* src1, int32_t step1,
                                             const float* src2, int32_t step2, DaxiSize size, DaxiPhaseShift* shift,
                                             void* buffer);

/* Rotation, scale and shift. */
DAX_API DaxStatus DAXI_PhaseRotationScale_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                                 DaxiSize size, DaxiPhaseMotion* motion, void* buffer);
DAX_API DaxStatus DAXI_PhaseRotationScale_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src1, int32_t step1,
                                                    const uint8_t* src2, int32_t step2, DaxiSize size,
                                                    DaxiPhaseMotion* motion, void* buffer);
DAX_API DaxStatus DAXI_PhaseRotationScale_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2,
                                                  int32_t step2, DaxiSize size, DaxiPhaseMotion* motion, void* buffer);
DAX_API DaxStatus DAXI_PhaseRotationScale_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src1, int32_t step1,
                                                     const uint16_t* src2, int32_t step2, DaxiSize size,
                                                     DaxiPhaseMotion* motion, void* buffer);
DAX_API DaxStatus DAXI_PhaseRotationScale_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                                  DaxiSize size, DaxiPhaseMotion* motion, void* buffer);
DAX_API DaxStatus DAXI_PhaseRotationScale_32f_C1R_MT(void* pool, uint32_t threads, const float* src1, int32_t step1,
                                                     const float* src2, int32_t step2, DaxiSize size,
                                                     DaxiPhaseMotion* motion, void* buffer);

DAX_END_DECLS

#endif
