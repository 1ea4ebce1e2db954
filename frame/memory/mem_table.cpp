#include <cstddef>
#include <span>

#include "dax/memory.h"
#include "frame/check.h"
#include "zur/memory.h"

static_assert(sizeof(ZurMemTabEntry) == 24 && offsetof(ZurMemTabEntry, base) == 16);
static_assert(sizeof(DaxMemTabEntry) == 40 && offsetof(DaxMemTabEntry, base) == 24 &&
              offsetof(DaxMemTabEntry, kind) == 32);
static_assert(sizeof(DaxMemTabEntryV2) == 48 && offsetof(DaxMemTabEntryV2, reserved2) == 40);
static_assert(sizeof(DaxMemTabEntryV3) == 120 && offsetof(DaxMemTabEntryV3, second) == 32 &&
              offsetof(DaxMemTabEntryV3, kind) == 40 && offsetof(DaxMemTabEntryV3, hostContext) == 48);

namespace {

constexpr int32_t kZurOk = 0, kZurNullBase = -3, kZurAlignment = -4, kZurMisaligned = -7, kZurNull = -21,
                  kZurParam = -26;

// Alignment of the table functions is unsigned, of the allocators signed: 2^31 and more become negative and are
// refused.
int32_t asSigned(uint32_t alignment) {
  return static_cast<int32_t>(alignment);
}

// The mask test of the interface, for powers of two; alignment 0 tests against all ones.
bool isAligned(const void* block, uint32_t alignment) {
  return (reinterpret_cast<uintptr_t>(block) & (uintptr_t{alignment} - 1)) == 0;
}

template <class Entry>
std::span<Entry> entries(Entry* table, int32_t count) {
  return {table, static_cast<size_t>(count)};
}

template <class Entry>
DaxStatus checkTable(const Entry* table, int32_t count) {
  DAX_REQUIRE(table, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class Entry>
DaxStatus checkBlock(const Entry& entry, uint32_t alignment) {
  DAX_REQUIRE(entry.base, DAX_STS_MEMTAB_NULL_BASE);
  DAX_REQUIRE(entry.alignment == alignment, DAX_STS_MEMTAB_ALIGNMENT);
  return DAX_STS_OK;
}

DaxStatus checkEntry(const DaxMemTabEntry& entry, uint32_t alignment) {
  DAX_REQUIRE_OK(checkBlock(entry, alignment));
  DAX_REQUIRE(entry.size >= alignment, DAX_STS_MEMTAB_TOO_SMALL);
  DAX_REQUIRE(alignment != 0 && entry.size % alignment == 0, DAX_STS_MEMTAB_SIZE);
  DAX_REQUIRE(isAligned(entry.base, alignment), DAX_STS_MEMTAB_MISALIGNED);
  return DAX_STS_OK;
}

DaxStatus checkEntry(const DaxMemTabEntryV2& entry, uint32_t alignment) {
  DAX_REQUIRE_OK(checkBlock(entry, alignment));
  DAX_REQUIRE(isAligned(entry.base, alignment), DAX_STS_MEMTAB_MISALIGNED);
  return DAX_STS_OK;
}

DaxStatus checkEntry(const DaxMemTabEntryV3& entry, uint32_t alignment) {
  DAX_REQUIRE_OK(checkBlock(entry, alignment));
  DAX_REQUIRE(isAligned(entry.base, alignment), DAX_STS_MEMTAB_MISALIGNED);
  if (entry.kind != DAX_MEMORY_MAPPED) return DAX_STS_OK;
  DAX_REQUIRE(entry.second, DAX_STS_MEMTAB_NULL_BASE);
  DAX_REQUIRE(isAligned(entry.second, alignment), DAX_STS_MEMTAB_MISALIGNED);
  return DAX_STS_OK;
}

template <class Entry>
DaxStatus checkEntries(const Entry* table, int32_t count, uint32_t alignment) {
  DAX_REQUIRE(table && count > 0, DAX_STS_NULL_POINTER);
  for (const Entry& entry : entries(table, count)) {
    if (entry.size != 0) DAX_REQUIRE_OK(checkEntry(entry, alignment));
  }
  return DAX_STS_OK;
}

void clear(DaxMemTabEntryV3& entry) {
  entry.size = 0;
  entry.base = nullptr;
  entry.second = nullptr;
}

}  // namespace

int32_t ZUR_AllocMemTab(ZurMemTabEntry* table, int32_t count) {
  DAX_REQUIRE(table, kZurNull);
  DAX_REQUIRE(count >= 1, kZurParam);
  for (ZurMemTabEntry& entry : entries(table, count)) {
    entry.base = ZUR_Malloc(entry.size, asSigned(entry.alignment));
    DAX_REQUIRE(entry.base || entry.size == 0, kZurNull);
  }
  return kZurOk;
}

int32_t ZUR_FreeMemTab(ZurMemTabEntry* table, int32_t count) {
  DAX_REQUIRE(table, kZurNull);
  DAX_REQUIRE(count >= 1, kZurParam);
  for (ZurMemTabEntry& entry : entries(table, count)) {
    ZUR_Free(entry.base);
    entry.base = nullptr;
  }
  return kZurOk;
}

int32_t ZUR_CheckMemTab(const ZurMemTabEntry* table, int32_t count, uint32_t alignment) {
  DAX_REQUIRE(table && count >= 1, kZurNull);
  for (const ZurMemTabEntry& entry : entries(table, count)) {
    if (entry.size == 0) continue;
    DAX_REQUIRE(entry.base, kZurNullBase);
    DAX_REQUIRE(entry.alignment == alignment, kZurAlignment);
    DAX_REQUIRE(isAligned(entry.base, alignment), kZurMisaligned);
  }
  return kZurOk;
}

DaxStatus DAX_AllocMemTab(DaxMemTabEntry* table, int32_t count) {
  DAX_REQUIRE_OK(checkTable(table, count));
  for (DaxMemTabEntry& entry : entries(table, count)) {
    entry.base = DAX_MemMalloc(entry.size, asSigned(entry.alignment), entry.kind);
    DAX_REQUIRE(entry.base || entry.size == 0, DAX_STS_NO_MEMORY);
  }
  return DAX_STS_OK;
}

DaxStatus DAX_FreeMemTab(DaxMemTabEntry* table, int32_t count) {
  DAX_REQUIRE_OK(checkTable(table, count));
  for (DaxMemTabEntry& entry : entries(table, count)) {
    if (!entry.base) continue;
    DAX_MemFree(entry.base, entry.kind);
    entry.size = 0;
    entry.base = nullptr;
  }
  return DAX_STS_OK;
}

DaxStatus DAX_CheckMemTab(const DaxMemTabEntry* table, int32_t count, uint32_t alignment) {
  return checkEntries(table, count, alignment);
}

DaxStatus DAX_CheckMemTabV2(const DaxMemTabEntryV2* table, int32_t count, uint32_t alignment) {
  return checkEntries(table, count, alignment);
}

DaxStatus DAX_CheckMemTabV3(const DaxMemTabEntryV3* table, int32_t count, uint32_t alignment) {
  return checkEntries(table, count, alignment);
}

DaxStatus DAX_AllocMemTabV3(DaxMemTabEntryV3* table, int32_t count) {
  DAX_REQUIRE_OK(checkTable(table, count));
  for (DaxMemTabEntryV3& entry : entries(table, count)) {
    const bool known = entry.kind == DAX_MEMORY_CPU || entry.kind == DAX_MEMORY_DEVICE;
    DAX_REQUIRE(known || entry.size == 0, DAX_STS_NO_MEMORY);
    entry.base = DAX_MemMalloc(entry.size, asSigned(entry.alignment), static_cast<uint32_t>(entry.kind));
    entry.second = entry.base;
    DAX_REQUIRE(entry.base || entry.size == 0, DAX_STS_NO_MEMORY);
  }
  return DAX_STS_OK;
}

DaxStatus DAX_FreeMemTabV3(DaxMemTabEntryV3* table, int32_t count) {
  DAX_REQUIRE_OK(checkTable(table, count));
  for (DaxMemTabEntryV3& entry : entries(table, count)) {
    if (!entry.base) continue;
    if (entry.kind == DAX_MEMORY_CPU) DAX_CpuMemFree(entry.base);
    if (entry.kind == DAX_MEMORY_DEVICE) DAXCUDA_Free(entry.base);
    clear(entry);
  }
  return DAX_STS_OK;
}

DaxStatus DAX_AllocCpuMemTabV3(DaxMemTabEntryV3* table, int32_t count, const DaxHostAllocator* allocator) {
  DAX_REQUIRE_OK(checkTable(table, count));
  DAX_REQUIRE(allocator && allocator->allocate, DAX_STS_NULL_POINTER);
  for (DaxMemTabEntryV3& entry : entries(table, count)) {
    DAX_REQUIRE(entry.kind == DAX_MEMORY_CPU, DAX_STS_NO_MEMORY);
    DaxMemTabEntryV3 request = entry;
    request.hostContext = allocator->context;
    const DaxStatus status = allocator->allocate(&request, 1);
    entry.base = entry.second = status == DAX_STS_OK ? request.base : nullptr;
    DAX_REQUIRE_OK(status);
  }
  return DAX_STS_OK;
}

DaxStatus DAX_FreeCpuMemTabV3(DaxMemTabEntryV3* table, int32_t count, const DaxHostAllocator* allocator) {
  DAX_REQUIRE_OK(checkTable(table, count));
  DAX_REQUIRE(allocator && allocator->free, DAX_STS_NULL_POINTER);
  for (DaxMemTabEntryV3& entry : entries(table, count)) {
    if (!entry.base) continue;
    DAX_REQUIRE(entry.kind == DAX_MEMORY_CPU, DAX_STS_NO_MEMORY);
    DaxMemTabEntryV3 request = entry;
    request.hostContext = allocator->context;
    DAX_REQUIRE_OK(allocator->free(&request, 1));
    clear(entry);
  }
  return DAX_STS_OK;
}

namespace {

constexpr uint32_t kHostAttribute = 16;
constexpr uint32_t kHostFreeAlignment = 128;
constexpr uint64_t kHostFreeWord = 2;

}  // namespace

void* DAX_Mem_MallocCpuV3(uint64_t size, uint32_t alignment, const DaxHostAllocator* allocator) {
  if (!allocator || !allocator->allocate) return nullptr;
  DaxMemTabEntryV3 request = {};
  request.size = size;
  request.alignment = alignment;
  request.attribute = kHostAttribute;
  request.kind = DAX_MEMORY_CPU;
  request.hostContext = allocator->context;
  return allocator->allocate(&request, 1) == DAX_STS_OK ? request.base : nullptr;
}

DaxStatus DAX_Mem_FreeCpuV3(void* block, uint64_t size, const DaxHostAllocator* allocator) {
  DAX_REQUIRE(allocator && allocator->free, DAX_STS_NULL_POINTER);
  DaxMemTabEntryV3 request = {};
  request.size = size;
  request.alignment = kHostFreeAlignment;
  request.attribute = kHostAttribute;
  request.reserved = kHostFreeWord;
  request.base = request.second = block;
  request.kind = DAX_MEMORY_CPU;
  request.hostContext = allocator->context;
  return allocator->free(&request, 1);
}
