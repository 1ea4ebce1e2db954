/* Sum of two images. */
#ifndef DAXI_ADD_H
#define DAXI_ADD_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = src1 + src2, saturated to 0..255. The destination may be one of the sources (same step).
 *
 * Checks, in order: a null image -> 0x10000014; width < 1 or height < 1 -> 0x1000001a; width above the smallest of
 * the three steps (bytes) -> 0x1000001b; isa < 0 -> 0x1000001c. Thread-safe. */
DAX_API DaxStatus DAXI_Add_8u_C1RSfs_IS(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                        uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa);

DAX_END_DECLS

#endif
