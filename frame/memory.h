// The aligned allocator under both prefixes.
#pragma once

#include <cstdint>

namespace dax {

// Allocates at an address divisible by any positive alignment; null on failure.
void* alignedAlloc(uint64_t size, int32_t alignment);

// Frees a block of alignedAlloc; null is ignored.
void alignedFree(void* block);

}  // namespace dax
