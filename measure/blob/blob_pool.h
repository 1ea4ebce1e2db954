// Selection on the host's thread pool.
#pragma once

#include "measure/blob/blob_context.h"

namespace dax {

// Computes features on the pool, or runs all stages on this thread where there is none; returns the host's status. The
// result is that of select() byte for byte.
DaxStatus selectOnPool(const SelectCall& call, uint32_t threads, void* pool);

// Bytes of work buffer for at least two threads.
DaxStatus poolBufferSize(DaxiSize size, uint32_t threads, uint64_t* bytes);

}  // namespace dax

extern "C" {

// Tiles. `job` is the selection in progress. The first two measure the domains first..end - 1 of its block and record
// which of them pass; the third completes its kept blobs first..end - 1.
DaxStatus DAXI_BlobSelect_cal_blob_props_tile(const void* job, int32_t first, int32_t end, uint32_t slice);
DaxStatus DAXI_BlobSelectV4_cal_blob_props_tile(const void* job, int32_t first, int32_t end, uint32_t slice);
DaxStatus DAXI_BlobSelect_blob_info_calculator_tile(const void* job, int32_t first, int32_t end, uint32_t slice);
}
