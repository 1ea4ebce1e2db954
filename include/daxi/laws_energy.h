/* Texture energy by Laws (Rapid texture identification, SPIE 238, 1980): how strongly a window of the image varies in
 * one of 25 ways.
 *
 *   dst(x, y) = mean of |F| over the window around (x, y),
 *   F(x, y)   = sum over i, j = -2..2 of across(i) down(j) src(x + i, y + j)
 * where across and down are two of
 *   level  L5   1  4  6  4  1        edge    E5  -1 -2  0  2  1       spot  S5  -1  0  2  0 -1
 *   wave   W5  -1  2  0 -2  1        ripple  R5   1 -4  6 -4  1
 * Only L5 by L5 depends on the brightness; it is what others are divided by to be independent of contrast. A texture's
 * energies by L5 and E5 in both orders tell its direction, their mean does not.
 *
 * The windows of means end at the edges of the image, even ones reach one pixel further to the left, or up; outside the
 * image F takes pixels as `border` says. 8u and 16u: exact sums, whose quotient is rounded to double, then to single
 * precision. 32f: F is computed in floats, columns first, its mean as DAXI_LocalMean_32f_C1R.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel does not depend on the window. Forms ending
 * in _MT run on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on
 * it, and pool may be null. The results are the same bits on every machine. Thread-safe for distinct destinations and
 * buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_LAWS_ENERGY_H
#define DAXI_LAWS_ENERGY_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

enum { DAXI_LAWS_L5 = 0, DAXI_LAWS_E5 = 1, DAXI_LAWS_S5 = 2, DAXI_LAWS_W5 = 3, DAXI_LAWS_R5 = 4 };

/* Configuration. 32 bytes. */
typedef struct DaxiLawsEnergyCfg {
  int32_t across;   /* 0..4: along rows, DAXI_LAWS_L5, the default, to ..._R5 */
  int32_t down;     /* 0..4: along columns, the same; default DAXI_LAWS_E5 */
  DaxiSize window;  /* 15 x 15 by default; sides 1..32767, together with those of the image at most 2^31 - 1 */
  int32_t border;   /* 0..5: DAXI_BORDER_REPLICATE, the default, to ..._IN_MEMORY */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiLawsEnergyCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_LawsEnergyDefaultCfg(DaxiLawsEnergyCfg* cfg);

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_8u32f(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_8u32f_MT(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_16u32f(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_16u32f_MT(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint32_t threads,
                                                      uint64_t* bytes);
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_32f(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LawsEnergyBufferSize_32f_MT(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint32_t threads,
                                                   uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_LawsEnergy_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiLawsEnergyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LawsEnergy_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size, const DaxiLawsEnergyCfg* cfg,
                                               void* buffer);
DAX_API DaxStatus DAXI_LawsEnergy_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiLawsEnergyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LawsEnergy_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiLawsEnergyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LawsEnergy_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          const DaxiLawsEnergyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LawsEnergy_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, const DaxiLawsEnergyCfg* cfg,
                                             void* buffer);

DAX_END_DECLS

#endif
