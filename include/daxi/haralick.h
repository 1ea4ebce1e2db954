/* The fourteen features of a texture that Haralick, Shanmugam and Dinstein compute from the co-occurrence of grey
 * levels (Textural features for image classification, IEEE Transactions on Systems, Man and Cybernetics 3, 1973).
 *
 * p(i, j) are the counts divided by their sum, for levels i, j = 1..levels; px and py their sums over j and over i,
 * px+y(k) and px-y(k) the sums of all p(i, j) with i + j = k and with |i - j| = k. Entropies are in bits, 0 log 0 being
 * 0: HX, HY of px and py, HXY of p. Q(i, j) = sum over k of p(i, k) p(j, k) / (px(i) py(k)), for the levels that occur.
 *
 * Features are within 1e-9, relative to 1 where they are smaller; the second information measure within 1e-7 near 0.
 * They are the same bits on every machine. The time grows with the third power of the number of levels that occur: 32
 * take some 0.1 ms, 256 some 50 ms. Thread-safe for distinct outputs and buffers. */
#ifndef DAXI_HARALICK_H
#define DAXI_HARALICK_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* 112 bytes, f1 to f14 in the paper's order. */
typedef struct DaxiHaralickFeatures {
  double angularSecondMoment; /* sum of p^2 */
  double contrast;            /* sum of k^2 px-y(k) */
  double correlation;         /* sum of (i - mx) (j - my) p / (sx sy), with means and deviations; 1 where sx sy = 0 */
  double sumOfSquares;        /* sum of (i - mx)^2 p: the variance */
  double inverseDifference;   /* sum of p / (1 + (i - j)^2) */
  double sumAverage;          /* sum of k px+y(k) */
  double sumVariance;         /* sum of (k - sumAverage)^2 px+y(k); the paper prints f8, meaning f6 */
  double sumEntropy;          /* - sum of px+y log2 px+y */
  double entropy;             /* HXY = - sum of p log2 p */
  double differenceVariance;  /* the variance of px-y */
  double differenceEntropy;   /* - sum of px-y log2 px-y */
  double informationMeasure1; /* (HXY - HX - HY) / max(HX, HY); 0 where HX = HY = 0 */
  double informationMeasure2; /* sqrt(1 - exp(-2 ln 2 (HX + HY - HXY))) */
  double maximalCorrelation;  /* sqrt of the second largest eigenvalue of Q; 0 where one level occurs */
} DaxiHaralickFeatures;

/* Bytes of work buffer.
 *
 * Checks, in order: bytes null -> 0x10000014; levels outside 2..256 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_HaralickFeaturesBufferSize(int32_t levels, uint64_t* bytes);

/* counts: levels * levels numbers, as DAXI_CoOccurrence_8u_C1R writes them; buffer: at least as many bytes as the query
 * says, aligned as by malloc.
 *
 * Checks, in order: counts, features or buffer null -> 0x10000014; levels outside 2..256 -> 0x10000019; all counts are
 * 0 -> 0x10000033. A failed call writes nothing. */
DAX_API DaxStatus DAXI_HaralickFeatures(const uint32_t* counts, int32_t levels, DaxiHaralickFeatures* features,
                                        void* buffer);

DAX_END_DECLS

#endif
