/* Photon transfer: the gain of a camera and its noise, from how the noise of its images grows with light. Light comes in
 * whole electrons, whose number varies as a Poisson process does; so the variance of an image over time grows by as many
 * grey levels as one electron makes, the gain K. Quantities are those that EMVA 1288 defines (Standard for
 * Characterization of Image Sensors and Cameras).
 *
 * Take two frames or more of an evenly lit plane at each of several exposures up to saturation, two of the same exposure
 * time without light for each, or for all, tell what each is by FrameNoise, and give the points to PhotonTransfer. */
#ifndef DAXI_PHOTON_TRANSFER_H
#define DAXI_PHOTON_TRANSFER_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* What frames of one scene and one exposure are like. 32 bytes. */
typedef struct DaxiFrameNoise {
  double mean;     /* over all pixels and frames; finite */
  double variance; /* over time, with that of rounding; finite, >= 0 */
  double black;    /* share of the pixels at or below the limit `low`; 0..1 */
  double white;    /* share of the pixels at or above the limit `high`; 0..1 */
} DaxiFrameNoise;

/* Mean and variance over time of frames. The variance is the mean over the pixels of the variance over the N frames
 * (divided by N - 1), less that of the means of the frames: of two frames half the mean square difference minus half the
 * squared mean difference. All pixels count; NaN gives NaN. A variance that rounding makes negative is 0.
 *
 *   frames       pointers to the frames
 *   frameCount   how many, 2..1024
 *   step         of each frame, in elements
 *   size         of the region
 *   low, high    the limits of what the camera tells, such as 0 and 4095 of 12 bits; infinities are possible
 *   noise        receives the result
 *
 * Sums of integers are exact, floats are doubles added in raster order; the results are the same bits on every machine.
 * Thread-safe.
 *
 * Checks, in order:
 *   frames or noise null                  0x10000014
 *   frameCount outside 2..1024            0x10000019
 *   a frame null                          0x10000014
 *   width < 1 or height < 1               0x1000001a
 *   step < width                          0x1000001b
 *   not low < high                        0x10000019
 * A failed call writes nothing. */
DAX_API DaxStatus DAXI_FrameNoise_8u_C1R(const uint8_t* const* frames, int32_t frameCount, int32_t step, DaxiSize size,
                                         double low, double high, DaxiFrameNoise* noise);
DAX_API DaxStatus DAXI_FrameNoise_16u_C1R(const uint16_t* const* frames, int32_t frameCount, int32_t step,
                                          DaxiSize size, double low, double high, DaxiFrameNoise* noise);
DAX_API DaxStatus DAXI_FrameNoise_16s_C1R(const int16_t* const* frames, int32_t frameCount, int32_t step, DaxiSize size,
                                          double low, double high, DaxiFrameNoise* noise);
DAX_API DaxStatus DAXI_FrameNoise_32f_C1R(const float* const* frames, int32_t frameCount, int32_t step, DaxiSize size,
                                          double low, double high, DaxiFrameNoise* noise);

enum {
  DAXI_PHOTON_TRANSFER_QUANTISED = 1,     /* the variance in the dark is less than 2.88 times that of rounding (0.24):
                                             the read noise is at most what is told, and the gain off by some per cent */
  DAXI_PHOTON_TRANSFER_CLIPPED_DARK = 2,  /* over 0.5 % of the dark pixels are black: the black level is too low, and
                                             the variance in the dark too small */
  DAXI_PHOTON_TRANSFER_NOT_SATURATED = 4, /* no point is brighter than that of the largest variance: saturation, and
                                             what follows from it, is at least what is told */
  DAXI_PHOTON_TRANSFER_NO_LINEARITY = 8   /* fewer than 3 different exposures from 5 to 95 % of saturation */
};

/* A point of the curve. 72 bytes. */
typedef struct DaxiPhotonTransferPoint {
  double exposure;       /* proportional to the light, in any unit; finite, >= 0. 0 where it is not known */
  DaxiFrameNoise bright; /* of frames with this exposure */
  DaxiFrameNoise dark;   /* of frames without light, of the same exposure time */
} DaxiPhotonTransferPoint;

/* What the curve tells. 112 bytes. x is bright.mean - dark.mean of a point, y bright.variance - dark.variance. */
typedef struct DaxiPhotonTransfer {
  double gain;           /* K, grey levels per electron: sum x y / sum x^2 over points with 0 <= x <= 0.7 saturation */
  double gainError;      /* its standard error, from the scatter of these points */
  double readNoise;      /* electrons: sqrt(dark.variance - that of rounding) / K, of the point with the least mean */
  double darkLevel;      /* dark.mean of this point */
  double saturation;     /* x where bright.variance is largest, the first of several */
  double fullWell;       /* electrons: saturation / K */
  double dynamicRange;   /* fullWell / (sqrt(dark.variance / K^2 + 1/4) + 1/2), which divides by the light of SNR 1 */
  double maxSnr;         /* sqrt(fullWell) */
  double responsivity;   /* the line x = offset + responsivity * exposure with the least sum of squares of relative */
  double offset;         /* errors, over points with an exposure and 0.05 to 0.95 of saturation */
  double linearityError; /* per cent: the mean magnitude of (x - line) / line of these points; of the line 0 */
  double linearitySpan;  /* half of their largest minus their least, per cent; these four are 0 with NO_LINEARITY */
  int32_t saturated;     /* the number of the point of saturation, from 0 */
  int32_t gainPoints;    /* how many points tell the gain, at least 5 */
  int32_t linearityPoints; /* how many tell the line */
  uint32_t flags;          /* DAXI_PHOTON_TRANSFER_... */
} DaxiPhotonTransfer;

/* Evaluates a curve.
 *
 *   points        `count` points, in any order
 *   count         how many
 *   quantisation  the variance of rounding, in squared grey levels: 1/12 for values in steps of 1, 0 for floats
 *   result        receives what the curve tells
 *
 * Doubles, added in the order of the points; the results are the same bits on every machine. Thread-safe.
 *
 * Checks, in order:
 *   points or result null                                        0x10000014
 *   count < 1                                                    0x10000001
 *   points, in their order, by field                             0x10000019
 *   quantisation < 0, or not finite                              0x10000019
 *   fewer than 5 points tell the gain, or it is not above 0      0x10000033
 * A failed call writes nothing. */
DAX_API DaxStatus DAXI_PhotonTransfer(const DaxiPhotonTransferPoint* points, int32_t count, double quantisation,
                                      DaxiPhotonTransfer* result);

DAX_END_DECLS

#endif
