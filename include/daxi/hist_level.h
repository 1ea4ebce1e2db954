/* Levels that split a histogram in classes.
 *
 * hist[v] counts the pixels of level v, v in 0..bins - 1. A level t has the class 0 of levels <= t and the class 1 of
 * levels > t. Only splits without an empty class count, and the lowest of equally good ones wins. n_k is the number of
 * pixels of class k, s_k the sum of their levels, h the count of a level.
 *
 *   Otsu         the greatest sum of s_k^2 / n_k over both classes, which is the greatest variance between them (Otsu
 *                1979)
 *   Kapur        the greatest sum of the entropies of both classes, ln n_k - sum of h ln h / n_k (Kapur, Sahoo, Wong
 *                1985)
 *   Yen          the greatest -ln(sum of (h / n_0)^2) - ln(sum of (h / n_1)^2), each over its class (Yen, Chang, Chang
 *                1995)
 *   Li           the least cross entropy: the greatest sum of s_k ln(s_k / n_k), levels counted from the lowest
 *                occupied one; all splits are looked at, since the usual iteration depends on its start (Li, Lee 1993)
 *   Kittler      the least 1 + sum of p_k ln(v_k) - 2 sum of p_k ln(p_k), p_k being shares, v_k variances and 1/12,
 *                that of a bin (Kittler, Illingworth 1986)
 *   Isodata      the lowest t with t <= (m_0 + m_1) / 2 < t + 1, m_k being the means of the classes (Ridler, Calvard
 *                1978)
 *   Intermodes   the middle of the two maxima that are left when means of three neighbours are taken as often as it
 *                needs, 1000 times at most (Prewitt, Mendelsohn 1966); the middle of a plateau is its maximum. Without
 *                two maxima, or with more than 1024 bins, that of Otsu, and the flag NO_MODES
 *   Triangle     the bin farthest from the line between the highest bin, the lowest of several, and the first bin
 *                beyond the longer tail, of equal ones the right one (Zack, Rogers, Latt 1977); of a left tail the bin
 *                before it
 *   Percentile   the lowest level up to which the given share of the pixels lies
 *   OtsuMulti    Otsu's criterion for 2 to 4 classes, over all splits
 *
 * Sums of integers are exact; criteria are evaluated in double precision, with the logarithm of this library: the same
 * on every machine. DAXI_AdpThresholdOtsu (threshold.h) has a criterion in single precision: of 6000 histograms of two
 * hills it took another level in 13, up to 15 levels away, with a variance between the classes that was smaller by at
 * most 2e-7 of it.
 *
 * A histogram of one occupied level v is no error: the level is v, and the flag DEGENERATE is set.
 *
 * Checks, in order:
 *   hist, cfg, level (OtsuMulti: or buffer) null              0x10000014
 *   bins outside 2..65536                                     0x10000019
 *   configuration, in the order of its fields                 0x10000019
 *   no pixel, or more than 2^46                               0x10000001
 * A failed call writes nothing. Thread-safe. */
#ifndef DAXI_HIST_LEVEL_H
#define DAXI_HIST_LEVEL_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

enum {
  DAXI_HIST_LEVEL_DEGENERATE = 1, /* one occupied level */
  DAXI_HIST_LEVEL_NO_MODES = 2,   /* Intermodes: no two maxima, the level is Otsu's */
  DAXI_HIST_LEVEL_DARK = 8,       /* masks (threshold_global.h): the dark class was set */
  DAXI_HIST_LEVEL_FEWER = 4       /* OtsuMulti: fewer occupied levels than classes */
};

/* Configuration. 16 bytes. */
typedef struct DaxiHistLevelCfg {
  int32_t classes;   /* of OtsuMulti: 2..4, default 2 */
  int32_t reserved;  /* not read */
  double percentile; /* of Percentile: 0..1, default 0.5, the lower median */
} DaxiHistLevelCfg;

/* A result. 32 bytes. */
typedef struct DaxiHistLevel {
  int32_t level[3];  /* ascending; those from `count` on are 0 */
  int32_t count;     /* of levels: one less than classes, at least 1 */
  uint32_t flags;    /* DAXI_HIST_LEVEL_... */
  uint32_t reserved; /* 0 */
  double criterion;  /* as above at the level; 0 where there is none */
} DaxiHistLevel;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_HistLevelDefaultCfg(DaxiHistLevelCfg* cfg);

DAX_API DaxStatus DAXI_HistLevel_Otsu(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                      DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Kapur(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                       DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Yen(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                     DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Li(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                    DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Kittler(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                         DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Isodata(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                         DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Intermodes(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                            DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Triangle(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                          DaxiHistLevel* level);
DAX_API DaxStatus DAXI_HistLevel_Percentile(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                            DaxiHistLevel* level);

/* Bytes of work buffer of OtsuMulti. Checks, in order: bytes null -> 0x10000014; bins outside 2..65536 -> 0x10000019.
 */
DAX_API DaxStatus DAXI_HistLevelBufferSize_OtsuMulti(int32_t bins, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. Time grows with bins times their logarithm.
 */
DAX_API DaxStatus DAXI_HistLevel_OtsuMulti(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg,
                                           DaxiHistLevel* level, void* buffer);

DAX_END_DECLS

#endif
