/* Filters that weaken or keep parts of spectra: notches against what repeats itself, such as weave and printing screens,
 * and bands of frequencies.
 *
 * A spectrum of a picture of `width` columns has these, or the columns 0..width / 2 that transforms of real pictures
 * give; which one, size.width tells (of width 2 both are the same). Frequency 0 lies in the first pixel, is never
 * changed, so that the mean of the picture stays, and column u means u - width where u > width / 2; rows likewise.
 * Filters are real and symmetric, so what they make of spectra of real pictures are such spectra.
 *
 * Weights are computed in double precision. dst may equal src with the same step; else they must not overlap. Steps
 * count elements. Forms ending in _MT run on the host's thread pool, in bands of ceil(height / threads) rows, where pool
 * is not null and threads > 1; the result does not depend on it, and is the same bits on every machine. Thread-safe for
 * distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, notches, cfg or buffer null                                     0x10000014
 *   width < 1 or height < 1 of size                                           0x1000001a
 *   size.width above the smaller step                                         0x1000001b
 *   width below 1, or size.width neither width nor width / 2 + 1              0x10000019
 *   count outside 1..1024                                                     0x10000019
 *   notches in their order, or the configuration, in the order of fields      0x10000019
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_SPECTRUM_FILTER_H
#define DAXI_SPECTRUM_FILTER_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* A place in the spectrum, in columns and rows; they may be negative, and count modulo the sides. 24 bytes. */
typedef struct DaxiNotch {
  double u;     /* finite */
  double v;     /* finite */
  double sigma; /* 1e-3..1e6 columns and rows */
} DaxiNotch;

/* A ring of frequencies. 24 bytes. */
typedef struct DaxiBandCfg {
  double centre;    /* 0..1 periods a pixel, default 0 */
  double sigma;     /* 1e-9..1e6 periods a pixel, default 0.05 */
  int32_t keep;     /* 1, the default: keeps the band; 0: takes it away */
  int32_t reserved; /* not read */
} DaxiBandCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_BandDefaultCfg(DaxiBandCfg* cfg);

/* Bytes of work buffer of SpectrumNotch.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 of size -> 0x10000019; count outside 1..1024 ->
 * 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_SpectrumNotchBufferSize(DaxiSize size, int32_t count, uint64_t* bytes);

/* dst = src times 1 - exp(-d^2 / 2 sigma^2) for each of `count` notches at (u, v) and at (-u, -v), d the distance in
 * columns and rows, modulo the sides. */
DAX_API DaxStatus DAXI_SpectrumNotch_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxComplex32f* dst,
                                              int32_t dstStep, DaxiSize size, int32_t width, const DaxiNotch* notches,
                                              int32_t count, void* buffer);
DAX_API DaxStatus DAXI_SpectrumNotch_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src,
                                                 int32_t srcStep, DaxComplex32f* dst, int32_t dstStep, DaxiSize size,
                                                 int32_t width, const DaxiNotch* notches, int32_t count, void* buffer);
DAX_API DaxStatus DAXI_SpectrumNotch_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxComplex64f* dst,
                                              int32_t dstStep, DaxiSize size, int32_t width, const DaxiNotch* notches,
                                              int32_t count, void* buffer);
DAX_API DaxStatus DAXI_SpectrumNotch_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src,
                                                 int32_t srcStep, DaxComplex64f* dst, int32_t dstStep, DaxiSize size,
                                                 int32_t width, const DaxiNotch* notches, int32_t count, void* buffer);

/* dst = src times g = exp(-(f - centre)^2 / 2 sigma^2), or times 1 - g, f the frequency in periods a pixel, the square
 * root of (u / width)^2 + (v / height)^2. With centre 0 it is a low pass, or a high pass that keeps the mean. */
DAX_API DaxStatus DAXI_SpectrumBand_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxComplex32f* dst,
                                             int32_t dstStep, DaxiSize size, int32_t width, const DaxiBandCfg* cfg);
DAX_API DaxStatus DAXI_SpectrumBand_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                                DaxComplex32f* dst, int32_t dstStep, DaxiSize size, int32_t width,
                                                const DaxiBandCfg* cfg);
DAX_API DaxStatus DAXI_SpectrumBand_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxComplex64f* dst,
                                             int32_t dstStep, DaxiSize size, int32_t width, const DaxiBandCfg* cfg);
DAX_API DaxStatus DAXI_SpectrumBand_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                                DaxComplex64f* dst, int32_t dstStep, DaxiSize size, int32_t width,
                                                const DaxiBandCfg* cfg);

DAX_END_DECLS

#endif
