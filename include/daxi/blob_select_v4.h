/* Fourth version of blob selection: ranges of area in whole pixels, optionally by class. */
#ifndef DAXI_BLOB_SELECT_V4_H
#define DAXI_BLOB_SELECT_V4_H

#include "blob_select.h"

DAX_BEGIN_DECLS

/* Configuration. The fields of `common` have the same meaning as in the third version; its area range is not read.
 *
 * The area filter (flag 0x1) truncates the area to a whole number n. With min <= max it accepts min <= n <= max. A
 * range with min > max is inverted: it accepts n > min or n < max, both ends exclusive. */
typedef struct BlobSelectV4Cfg {
  BlobSelectCfg common;
  int32_t areaMin; /* the range of all blobs where perClass is 0 */
  int32_t areaMax;
  uint32_t perClass; /* not 0: the range of a blob is that of its class; a class above 255 is rejected */
  uint32_t reserved;
  int32_t classAreaMin[256]; /* by class */
  int32_t classAreaMax[256];
} BlobSelectV4Cfg;

/* Selects blobs. Arguments, work buffer (DAXI_BlobSelectV3BufferSize_8u, and its _MT form) and checks as in
 * DAXI_BlobSelectV3_8u_C1R; all ranges of area are valid. The score uses the range that the blob was tested against. */
DAX_API DaxStatus DAXI_BlobSelectV4_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                           DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                           BlobSelectResult* result, const BlobSelectV4Cfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_BlobSelectV4_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2,
                                              int32_t step2, DaxiSize size, const DaxiDomainList* domains,
                                              int32_t domainCount, BlobSelectResult* result, const BlobSelectV4Cfg* cfg,
                                              void* buffer, uint32_t threads, void* pool);

DAX_END_DECLS

#endif
