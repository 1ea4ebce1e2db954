#include "dax/memory.h"

#include <cstdlib>
#include <cstring>

#include "frame/memory/cleared.h"
#include "zur/memory.h"

namespace {

// Serves both prefixes. The allocator's address is stored in the eight bytes before the result, which may be unaligned.
void* alignedAlloc(uint64_t size, int32_t alignment, bool cleared = false) {
  if (size == 0 || alignment <= 0) return nullptr;
  uint64_t total;
  if (__builtin_add_overflow(size, static_cast<uint64_t>(alignment) + sizeof(void*), &total)) return nullptr;
  void* const start = cleared ? std::calloc(total, 1) : std::malloc(total);
  if (!start) return nullptr;

  const uintptr_t first = reinterpret_cast<uintptr_t>(start) + sizeof(void*);
  const uintptr_t past = first % static_cast<uintptr_t>(alignment);
  const uintptr_t skip = past == 0 ? 0 : static_cast<uintptr_t>(alignment) - past;
  char* const block = static_cast<char*>(start) + sizeof(void*) + skip;
  std::memcpy(block - sizeof(void*), &start, sizeof(void*));
  return block;
}

void alignedFree(void* block) {
  if (!block) return;
  void* start;
  std::memcpy(&start, static_cast<char*>(block) - sizeof(void*), sizeof(void*));
  std::free(start);
}

}  // namespace

void* dax::mallocCleared(uint64_t size, int32_t alignment) {
  return alignedAlloc(size, alignment, true);
}

void* ZUR_Malloc(uint64_t size, int32_t alignment) {
  return alignedAlloc(size, alignment);
}

void ZUR_Free(void* block) {
  alignedFree(block);
}

void* DAX_CpuMemMalloc(uint64_t size, int32_t alignment) {
  return alignedAlloc(size, alignment);
}

void DAX_CpuMemFree(void* block) {
  alignedFree(block);
}

void* DAXCUDA_Malloc() {
  return nullptr;
}

void DAXCUDA_Free(void*) {}

void* DAX_MemMalloc(uint64_t size, int32_t alignment, uint32_t kind) {
  if (kind == DAX_MEMORY_CPU) return DAX_CpuMemMalloc(size, alignment);
  if (kind == DAX_MEMORY_DEVICE) return DAXCUDA_Malloc();
  return nullptr;
}

void DAX_MemFree(void* block, uint32_t kind) {
  if (kind == DAX_MEMORY_CPU) DAX_CpuMemFree(block);
  if (kind == DAX_MEMORY_DEVICE) DAXCUDA_Free(block);
}
