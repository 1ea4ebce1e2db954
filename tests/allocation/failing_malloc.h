// The C library's allocator as the library's objects see it: it can fail at a chosen call, and counts what is not freed.
// Linked with --wrap (tests/allocation/CMakeLists.txt).
#pragma once

#include <cstdint>

namespace dax::test {

// From now on the allocation number `failing` (0, 1, ...) fails; none for -1. Counts start again.
void failAllocation(int64_t failing);
int64_t allocationsTried();
// Blocks that the library holds.
int64_t liveBlocks();

}  // namespace dax::test
