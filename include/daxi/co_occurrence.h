/* Co-occurrence of grey levels (Haralick, Shanmugam, Dinstein, Textural features for image classification, IEEE
 * Transactions on Systems, Man and Cybernetics 3, 1973): how often a pixel of one level lies at some offset from a
 * pixel of another.
 *
 *   counts(i, j) = number of pixels (x, y) of level i such that (x + dx, y + dy) lies in the region and has level j
 * as `levels` rows of `levels` numbers. Symmetric counts are those plus their transpose. The level of a value v is
 *   floor((v - low) levels / (high - low + 1)), of values below low 0, of those above high levels - 1.
 * x grows to the right and y downwards, so that Haralick's 45 degrees are the offset (d, -d).
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   counts          receives levels * levels numbers; CoOccurrence4 four times as many
 *   buffer          at least as many bytes as the query says, aligned as by malloc
 *
 * Forms ending in _MT run on the host's thread pool, in bands of rows, where pool is not null and threads > 1; else on
 * the calling thread. Counts are exact: the same on every machine and for any number of threads. Thread-safe for
 * distinct outputs and buffers.
 *
 * Checks, in order:
 *   src, cfg, counts or buffer null                       0x10000014
 *   width < 1 or height < 1                               0x1000001a
 *   more than 2^31 - 1 pixels                             0x1000001a
 *   srcStep < width                                       0x1000001b
 *   configuration, in the order of its fields             0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_CO_OCCURRENCE_H
#define DAXI_CO_OCCURRENCE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiCoOccurrenceCfg {
  int32_t dx;        /* pixels, default 1; -32767 to 32767; of CoOccurrence4 the distance, 1 to 32767 */
  int32_t dy;        /* pixels, default 0; -32767 to 32767; not used by CoOccurrence4 */
  int32_t levels;    /* 2..256, default 32 */
  int32_t low;       /* default 0; 0 to 255, of 16u to 65535 */
  int32_t high;      /* default 255; low to 255, of 16u to 65535 */
  int32_t symmetric; /* 0 or 1; default 1 */
} DaxiCoOccurrenceCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_CoOccurrenceDefaultCfg(DaxiCoOccurrenceCfg* cfg);

/* Bytes of work buffer for the same arguments; on a pool at most 64 threads run.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; more than 2^31 - 1 pixels
 * -> 0x10000019; the configuration, in the order of its fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_CoOccurrenceBufferSize_8u(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrenceBufferSize_8u_MT(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads,
                                                    uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrenceBufferSize_16u(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrenceBufferSize_16u_MT(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrence4BufferSize_8u(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrence4BufferSize_8u_MT(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrence4BufferSize_16u(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_CoOccurrence4BufferSize_16u_MT(DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t threads,
                                                      uint64_t* bytes);

/* One offset. */
DAX_API DaxStatus DAXI_CoOccurrence_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                           const DaxiCoOccurrenceCfg* cfg, uint32_t* counts, void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t* counts,
                                              void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                            const DaxiCoOccurrenceCfg* cfg, uint32_t* counts, void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t* counts,
                                               void* buffer);

/* The four directions at the distance d = dx, in one pass: the offsets (d, 0), (d, -d), (0, -d), (-d, -d), which are 0,
 * 45, 90 and 135 degrees, one matrix behind the other. */
DAX_API DaxStatus DAXI_CoOccurrence4_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                            const DaxiCoOccurrenceCfg* cfg, uint32_t* counts, void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence4_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t* counts,
                                               void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence4_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                             const DaxiCoOccurrenceCfg* cfg, uint32_t* counts, void* buffer);
DAX_API DaxStatus DAXI_CoOccurrence4_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                DaxiSize size, const DaxiCoOccurrenceCfg* cfg, uint32_t* counts,
                                                void* buffer);

DAX_END_DECLS

#endif
