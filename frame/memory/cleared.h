// Zeroed memory that ZUR_Free releases.
#pragma once

#include <cstdint>

namespace dax {

// As ZUR_Malloc, with all bytes 0. Pages of large blocks are not committed before they are touched.
void* mallocCleared(uint64_t size, int32_t alignment);

}  // namespace dax
