// Blocks, tables of them, the host's allocator, and the layouts of work buffers.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "dax/memory.h"
#include "frame/memory/arena.h"
#include "frame/memory/work_buffer.h"
#include "zur.h"

namespace dax::test {
namespace {

TEST(AlignedMemory, AnyAlignmentAnySize) {
  for (const int32_t alignment : {1, 2, 3, 7, 24, 100, 4096, 1 << 20}) {
    for (uint64_t size = 1; size <= 300; size += 13) {
      auto* const block = static_cast<uint8_t*>(ZUR_Malloc(size, alignment));
      ASSERT_NE(block, nullptr);
      EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % static_cast<uintptr_t>(alignment), 0u) << alignment;
      std::memset(block, 0x5A, size);
      // The allocator's address lies before the block.
      uintptr_t start;
      std::memcpy(&start, block - 8, sizeof(start));
      const auto skip = reinterpret_cast<uintptr_t>(block) - start;
      EXPECT_TRUE(start % 16 == 0 && skip >= 8 && skip < 8 + static_cast<uintptr_t>(alignment)) << alignment;
      ZUR_Free(block);
    }
  }
  for (const uint64_t size : {UINT64_MAX, UINT64_MAX - 7, UINT64_MAX - 135, uint64_t{1} << 62}) {
    EXPECT_EQ(DAX_CpuMemMalloc(size, 128), nullptr) << size;
  }
  EXPECT_EQ(ZUR_Malloc(0, 8), nullptr);
  EXPECT_EQ(ZUR_Malloc(8, 0), nullptr);
  EXPECT_EQ(ZUR_Malloc(8, -8), nullptr);
  EXPECT_EQ(DAX_MemMalloc(16, 16, 2), nullptr);
  EXPECT_EQ(DAX_MemMalloc(16, 16, 6), nullptr);
  EXPECT_EQ(DAXCUDA_Malloc(), nullptr);
  ZUR_Free(nullptr);
  DAX_MemFree(nullptr, 1);
}

// Tables whose third entry cannot be had: the code, the earlier entries kept, all freed afterwards, twice without harm.
template <class Entry, class Alloc, class Free, class Status>
void expectTableLife(Alloc alloc, Free release, Status shortage) {
  Entry table[4] = {};
  for (Entry& entry : table) {
    entry.size = 256, entry.alignment = 64;
    if constexpr (requires { entry.kind; }) entry.kind = DAX_MEMORY_CPU;
  }
  table[1].size = 0;
  table[1].base = &table;  // stale
  table[2].size = uint64_t{1} << 62;
  table[3].base = &table;  // never reached
  EXPECT_EQ(alloc(table, 4), shortage);
  EXPECT_EQ(table[3].base, &table);
  table[3].base = nullptr;
  EXPECT_NE(table[0].base, nullptr);
  EXPECT_EQ(table[1].base, nullptr);
  EXPECT_EQ(table[2].base, nullptr);
  if constexpr (requires { Entry{}.second; }) {
    EXPECT_EQ(table[0].second, table[0].base);
  }
  EXPECT_EQ(release(table, 4), Status{0});
  EXPECT_EQ(table[0].base, nullptr);
  EXPECT_EQ(release(table, 4), Status{0});
  table[0].size = 256, table[0].alignment = 0x80000000u;  // negative as a signed number
  EXPECT_EQ(alloc(table, 1), shortage);
}

TEST(MemoryTables, AllocationAndRelease) {
  expectTableLife<ZurMemTabEntry>(ZUR_AllocMemTab, ZUR_FreeMemTab, int32_t{-21});
  expectTableLife<DaxMemTabEntry>(DAX_AllocMemTab, DAX_FreeMemTab, DaxStatus{DAX_STS_NO_MEMORY});
  expectTableLife<DaxMemTabEntryV3>(DAX_AllocMemTabV3, DAX_FreeMemTabV3, DaxStatus{DAX_STS_NO_MEMORY});

  ZurMemTabEntry zur = {64, 8, nullptr};
  EXPECT_EQ(ZUR_AllocMemTab(&zur, 1), 0);
  EXPECT_EQ(ZUR_FreeMemTab(&zur, 1), 0);
  EXPECT_EQ(zur.size, 64u);  // the platform's release keeps the size

  for (const uint32_t kind : {2u, 3u, 0u}) {
    DaxMemTabEntry dax = {16, 16, 0, nullptr, kind};
    EXPECT_EQ(DAX_AllocMemTab(&dax, 1), DAX_STS_NO_MEMORY);
    DaxMemTabEntryV3 v3 = {};
    v3.alignment = 16, v3.kind = kind;
    EXPECT_EQ(DAX_AllocMemTabV3(&v3, 1), DAX_STS_OK);  // no bytes
    v3.size = 16;
    EXPECT_EQ(DAX_AllocMemTabV3(&v3, 1), DAX_STS_NO_MEMORY);
  }
}

TEST(MemoryTables, Checks) {
  alignas(128) static char block[512];
  struct Case {
    uint64_t size;
    uint32_t alignment;
    void* base;
    uint32_t asked;
    int32_t zur;
    DaxStatus dax, v2;
  };
  const Case cases[] = {
      {256, 128, block, 128, 0, 0, 0},
      {0, 1, nullptr, 128, 0, 0, 0},
      {256, 128, nullptr, 128, -3, DAX_STS_MEMTAB_NULL_BASE, DAX_STS_MEMTAB_NULL_BASE},
      {256, 64, block, 128, -4, DAX_STS_MEMTAB_ALIGNMENT, DAX_STS_MEMTAB_ALIGNMENT},
      {64, 128, block, 128, 0, DAX_STS_MEMTAB_TOO_SMALL, 0},
      {192, 128, block, 128, 0, DAX_STS_MEMTAB_SIZE, 0},
      {256, 128, block + 64, 128, -7, DAX_STS_MEMTAB_MISALIGNED, DAX_STS_MEMTAB_MISALIGNED},
      {256, 0, block, 0, -7, DAX_STS_MEMTAB_SIZE, DAX_STS_MEMTAB_MISALIGNED},
  };
  for (const Case& c : cases) {
    const ZurMemTabEntry zur = {c.size, c.alignment, c.base};
    const DaxMemTabEntry dax = {c.size, c.alignment, 0, c.base, 1};
    const DaxMemTabEntryV2 v2[2] = {{0, 0, 0, nullptr, 1, 0}, {c.size, c.alignment, 0, c.base, 1, 0}};
    DaxMemTabEntryV3 v3 = {};
    v3.size = c.size, v3.alignment = c.alignment, v3.base = c.base, v3.kind = 1;
    EXPECT_EQ(ZUR_CheckMemTab(&zur, 1, c.asked), c.zur) << &c - cases;
    EXPECT_EQ(DAX_CheckMemTab(&dax, 1, c.asked), c.dax) << &c - cases;
    EXPECT_EQ(DAX_CheckMemTabV2(v2, 2, c.asked), c.v2) << &c - cases;
    EXPECT_EQ(DAX_CheckMemTabV3(&v3, 1, c.asked), c.v2) << &c - cases;
  }
  DaxMemTabEntryV3 mapped = {};
  mapped.size = 256, mapped.alignment = 128, mapped.base = block, mapped.kind = DAX_MEMORY_MAPPED;
  EXPECT_EQ(DAX_CheckMemTabV3(&mapped, 1, 128), DAX_STS_MEMTAB_NULL_BASE);
  mapped.second = block + 1;
  EXPECT_EQ(DAX_CheckMemTabV3(&mapped, 1, 128), DAX_STS_MEMTAB_MISALIGNED);
  mapped.second = block + 128;
  EXPECT_EQ(DAX_CheckMemTabV3(&mapped, 1, 128), DAX_STS_OK);
}

// A host allocator that writes down what it is asked.
struct Host {
  std::vector<DaxMemTabEntryV3> requests;
  size_t failAt = SIZE_MAX;
  bool forgetsBase = false;
  char memory[64];

  static DaxStatus serve(DaxMemTabEntryV3* request, uint32_t count) {
    Host& host = *static_cast<Host*>(request->hostContext);
    EXPECT_EQ(count, 1u);
    host.requests.push_back(*request);
    if (host.requests.size() - 1 == host.failAt) return 0x10000999;
    if (!host.forgetsBase) request->base = host.memory;
    return DAX_STS_OK;
  }
  DaxHostAllocator allocator() { return {serve, serve, this}; }
};

TEST(HostAllocator, RequestsAndFailures) {
  Host host;
  const DaxHostAllocator allocator = host.allocator();
  DaxMemTabEntryV3 table[3] = {};
  for (int i = 0; i < 3; ++i) table[i].size = static_cast<uint64_t>(i) * 8, table[i].alignment = 8, table[i].kind = 1;
  // The request is the entry as it stands, with the host's context.
  table[1].base = &table, table[1].second = &host, table[1].attribute = 5, table[1].reserved2[7] = 9;
  host.failAt = 2;
  EXPECT_EQ(DAX_AllocCpuMemTabV3(table, 3, &allocator), 0x10000999u);
  ASSERT_EQ(host.requests.size(), 3u);  // the entry of size 0 included
  DaxMemTabEntryV3 expected = table[1];
  expected.base = &table, expected.second = &host, expected.hostContext = &host;
  EXPECT_EQ(std::memcmp(&host.requests[1], &expected, sizeof(expected)), 0);
  EXPECT_EQ(table[1].base, host.memory);
  EXPECT_EQ(table[1].second, host.memory);
  EXPECT_EQ(table[2].base, nullptr);

  host.requests.clear(), host.failAt = 1;
  EXPECT_EQ(DAX_FreeCpuMemTabV3(table, 3, &allocator), 0x10000999u);
  EXPECT_EQ(table[0].base, nullptr);
  EXPECT_EQ(table[1].base, host.memory);
  host.failAt = SIZE_MAX;
  EXPECT_EQ(DAX_FreeCpuMemTabV3(table, 3, &allocator), DAX_STS_OK);
  EXPECT_EQ(table[1].size, 0u);
  EXPECT_EQ(table[1].second, nullptr);

  host.forgetsBase = true;
  table[0].base = &table, table[1].kind = 2, table[1].base = table[2].base = host.memory;
  EXPECT_EQ(DAX_AllocCpuMemTabV3(table, 3, &allocator), DAX_STS_NO_MEMORY);
  EXPECT_EQ(table[0].base, &table);
  EXPECT_EQ(table[0].second, &table);
  // The refused entry and those after it keep what they hold.
  EXPECT_EQ(table[1].base, host.memory);
  EXPECT_EQ(table[2].base, host.memory);
  table[0] = table[1];
  EXPECT_EQ(DAX_FreeCpuMemTabV3(table, 1, &allocator), DAX_STS_NO_MEMORY);
  const DaxHostAllocator empty = {};
  EXPECT_EQ(DAX_FreeCpuMemTabV3(table, 1, &empty), DAX_STS_NULL_POINTER);
}

TEST(HostAllocator, SingleBlocks) {
  Host host;
  const DaxHostAllocator allocator = host.allocator();
  EXPECT_EQ(DAX_Mem_MallocCpuV3(40, 32, &allocator), host.memory);
  EXPECT_EQ(DAX_Mem_FreeCpuV3(host.memory, 40, &allocator), DAX_STS_OK);
  ASSERT_EQ(host.requests.size(), 2u);
  const DaxMemTabEntryV3 &asked = host.requests[0], &freed = host.requests[1];
  EXPECT_EQ(asked.size, 40u);
  EXPECT_EQ(asked.alignment, 32u);
  EXPECT_EQ(asked.attribute, 16u);
  EXPECT_EQ(asked.kind, 1u);
  EXPECT_EQ(asked.reserved, 0u);
  EXPECT_EQ(freed.alignment, 128u);
  EXPECT_EQ(freed.attribute, 16u);
  EXPECT_EQ(freed.reserved, 2u);
  EXPECT_EQ(freed.base, host.memory);
  EXPECT_EQ(freed.second, host.memory);
  host.failAt = 2;
  EXPECT_EQ(DAX_Mem_MallocCpuV3(40, 32, &allocator), nullptr);
  EXPECT_EQ(DAX_Mem_MallocCpuV3(40, 32, nullptr), nullptr);
}

// Pieces start at multiples of 128 bytes; sizes that do not fit a signed 64-bit integer are refused, wrapped ones too.
TEST(BufferLayout, AddsUpAndRefusesOverflow) {
  uint64_t bytes = 5;
  BufferLayout layout;
  const BufferPiece<uint32_t> a = layout.add<uint32_t>(33);
  const BufferPiece<uint8_t> b = layout.add<uint8_t>(1);
  EXPECT_EQ(a.offset, 0u);
  EXPECT_EQ(b.offset, 256u);
  ASSERT_EQ(layout.store(&bytes), DAX_STS_OK);
  EXPECT_EQ(bytes, 384u);
  for (const uint64_t count : {uint64_t{1} << 60, uint64_t{1600000000} * 1600000000, UINT64_MAX}) {
    BufferLayout large;
    large.add<uint64_t>(count);
    EXPECT_EQ(large.store(&bytes), DAX_STS_BUFFER_OVERFLOW) << count;
    EXPECT_EQ(bytes, 384u);
  }
}

// Lasting pieces from the start, temporary ones from the end, and how much would have been enough.
TEST(Arena, TakesFromBothEnds) {
  alignas(128) char memory[1024 + 100];
  for (const bool measures : {false, true}) {
    Arena arena(measures ? nullptr : memory, measures ? 0 : sizeof memory);
    const auto offset = [&](const void* piece) { return static_cast<const char*>(piece) - memory; };
    const auto expectAt = [&](const void* piece, ptrdiff_t at) {
      EXPECT_TRUE(measures ? !piece : offset(piece) == at) << at;
    };
    expectAt(arena.take<char>(1), 0);
    expectAt(arena.take<double>(17), 128);
    const uint64_t mark = arena.mark();
    {
      const Arena::Scope scope(arena);
      expectAt(arena.borrow<float>(33), 1024 - 256);
      expectAt(arena.take<char>(256), 384);
      expectAt(arena.borrow<char>(128), 1024 - 384);
      EXPECT_EQ(arena.needed(), 1024u);
      EXPECT_EQ(arena.fits(), !measures);
    }
    arena.release(mark);
    expectAt(arena.borrow<char>(1), 1024 - 128);
    expectAt(arena.take<char>(1), 384);
    EXPECT_EQ(arena.needed(), 1024u);
    EXPECT_EQ(arena.take<char>(385), nullptr);
    EXPECT_EQ(arena.needed(), 1152u);
    EXPECT_FALSE(arena.fits() || arena.overflows());
  }
  // Sizes beyond 64 bits, or beyond 63 with all that is taken.
  for (const uint64_t count : {UINT64_MAX, UINT64_MAX / 8, uint64_t{1} << 61, uint64_t{1} << 60}) {
    Arena arena(memory, sizeof memory);
    EXPECT_EQ(arena.take<double>(count), nullptr);
    EXPECT_TRUE(arena.overflows()) << count;
  }
  Arena large(nullptr, 0);
  large.take<char>((uint64_t{1} << 63) - 128);
  EXPECT_FALSE(large.overflows());
  large.borrow<char>(1);
  EXPECT_TRUE(large.overflows());
}

}  // namespace
}  // namespace dax::test
