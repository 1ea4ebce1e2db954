#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

#include "dax/image.h"
#include "dax/memory.h"
#include "zur.h"

namespace dax::test {
namespace {

// --- Image records ---

// A format by its least steps as functions of the width; 'e' in parity: the side must be even.
struct Format {
  std::vector<int> steps;  // in half widths
  const char* parity;
};

// Written from the documented tables, one code at a time.
std::map<uint32_t, Format> formats(bool library) {
  std::map<uint32_t, Format> result;
  const auto add = [&](std::initializer_list<uint32_t> codes, std::vector<int> steps, const char* parity = "--") {
    for (const uint32_t code : codes) result[code] = {steps, parity};
  };
  add({1, 2, 3}, {2});
  add({100, 101}, {2, 1, 1}, "ee");
  add({102}, {2, 2}, "ee");
  add({103}, {2, 1, 1}, "e-");
  add({104, 106, 107}, {4});
  add({105, 200}, {2, 2, 2});
  add({201}, {6});
  add({202, 204}, {2, 2, 2, 2});
  add({203, 205}, {8});
  for (uint32_t code = 300; code <= 307; ++code) add({code}, {2});
  if (!library) return result;
  add({4, 5, 6, 9, 10}, {2});
  add({109}, {2, 2}, "ee");
  add({206, 210, 216}, {2, 2, 2});
  add({207, 211, 217}, {6});
  add({208, 212, 218}, {2, 2, 2, 2});
  add({209, 213, 219}, {8});
  for (uint32_t code = 308; code <= 319; ++code) add({code}, {2});
  return result;
}

// One record of each kind with the same contents.
struct Records {
  ZurImage zur = {};
  DaxImage dax = {};
  void set(uint32_t format, int32_t width, int32_t height, const std::vector<int>& steps) {
    static char pixel;
    zur = {format, width, height, {}, {}};
    dax = {format, width, height, {}, {}, {}};
    for (size_t i = 0; i < steps.size(); ++i) {
      zur.step[i] = dax.step[i] = width * steps[i] / 2;
      zur.plane[i] = dax.base[i] = dax.data[i] = &pixel;
    }
  }
};

TEST(ImageRecords, EveryCodeAgainstTheTables) {
  const auto platform = formats(false), library = formats(true);
  std::vector<uint32_t> codes = {UINT32_MAX, 0x80000001u};
  for (uint32_t code = 0; code <= 400; ++code) codes.push_back(code);
  for (const uint32_t code : codes) {
    const bool inPlatform = platform.count(code) != 0, inLibrary = library.count(code) != 0;
    const Format format = inLibrary ? library.at(code) : Format{{2}, "--"};
    const auto expectAll = [&](const Records& r, int32_t zurCode, DaxStatus daxCode, const char* what) {
      EXPECT_EQ(ZUR_CheckImage(&r.zur), inPlatform ? zurCode : -8) << code << " " << what;
      EXPECT_EQ(DAX_CheckImage(&r.dax), inLibrary ? daxCode : DaxStatus{DAX_STS_IMAGE_FORMAT}) << code << " " << what;
    };
    Records r;
    r.set(code, 6, 4, format.steps);
    expectAll(r, 0, DAX_STS_OK, "good");
    r.set(code, 0, 4, format.steps);
    expectAll(r, -9, DAX_STS_IMAGE_SIZE, "no columns");
    r.set(code, 6, -1, format.steps);
    expectAll(r, -9, DAX_STS_IMAGE_SIZE, "no rows");
    r.set(code, 7, 4, format.steps);
    const bool oddWidth = format.parity[0] == 'e', oddHeight = format.parity[1] == 'e';
    expectAll(r, oddWidth ? -9 : 0, oddWidth ? DaxStatus{DAX_STS_IMAGE_SIZE} : DaxStatus{DAX_STS_OK}, "odd width");
    r.set(code, 6, 5, format.steps);
    expectAll(r, oddHeight ? -9 : 0, oddHeight ? DaxStatus{DAX_STS_IMAGE_SIZE} : DaxStatus{DAX_STS_OK}, "odd height");
    for (size_t i = 0; i < format.steps.size(); ++i) {
      r.set(code, 6, 4, format.steps);
      --r.zur.step[i], --r.dax.step[i];
      r.zur.plane[i] = r.dax.base[i] = nullptr;  // the step comes first
      expectAll(r, -10, DAX_STS_IMAGE_STEP, "step");
      ++r.zur.step[i], ++r.dax.step[i];
      expectAll(r, -11, DAX_STS_IMAGE_NULL_PLANE, "plane");
      r.dax.base[i] = r.dax.data[i];
      r.zur.plane[i] = r.dax.base[i];
      r.dax.data[i] = nullptr;
      EXPECT_EQ(DAX_CheckImage(&r.dax),
                inLibrary ? DaxStatus{DAX_STS_IMAGE_NULL_PLANE} : DaxStatus{DAX_STS_IMAGE_FORMAT});
    }
  }
  Records wide;  // four times the width does not fit 32 bits
  wide.set(203, 6, 4, {8});
  wide.zur.width = wide.dax.width = 0x40000000;
  EXPECT_EQ(ZUR_CheckImage(&wide.zur), -10);
  EXPECT_EQ(DAX_CheckImage(&wide.dax), DAX_STS_IMAGE_STEP);
}

TEST(ImageRecords, Conversion) {
  Records r;
  r.set(202, 6, 4, {2, 2, 2, 2});
  DaxImage image = {};
  ASSERT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_OK);
  EXPECT_EQ(std::memcmp(&image, &r.dax, sizeof(image)), 0);
  r.zur.format = 0;  // tolerated here, refused by the library's check
  ASSERT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_OK);
  EXPECT_EQ(DAX_CheckImage(&image), DAX_STS_IMAGE_FORMAT);
  r.zur.format = 202, r.zur.step[3] = 1;
  EXPECT_EQ(DAX_ZurImgToDaxImg(&r.zur, &image), DAX_STS_IMAGE_STEP);
  EXPECT_EQ(image.format, 0u);
}

// --- Memory ---

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
    v3.size = 16, v3.alignment = 16, v3.kind = kind;
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

}  // namespace
}  // namespace dax::test
