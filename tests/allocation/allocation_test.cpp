// Memory that runs out at every point of the functions that allocate: the call fails with the status for it, writes
// nothing that the contract does not name, keeps no memory, and works again afterwards.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

#include "dax/memory.h"
#include "dax3dpcl/range_file.h"
#include "daxi/blob_find.h"
#include "fuzz/memory_file.h"
#include "tests/allocation/failing_malloc.h"
#include "tests/pcl/record/range_sample.h"
#include "tests/support/test_image.h"
#include "zur/memory.h"

namespace dax::test {
namespace {

// One function that allocates. `call` returns whether it succeeded, and checks what it left; `release` frees what a
// call has made, a failed one too.
struct Scenario {
  const char* name;
  std::function<bool()> call;
  std::function<void()> release;
};

// A mask of enough runs that the arrays of a model grow several times.
const TestImage<uint8_t>& grains() {
  static TestImage<uint8_t> image({301, 203});
  return image.fill([](int32_t x, int32_t y) { return (x % 2) & (y % 3 != 0); });
}

constexpr auto kUntouched = static_cast<uintptr_t>(0x5A5A5A5A5A5A5A50u);

// Labels into `*model`; a failure leaves both pointers as they were.
template <class Find>
bool labels(Find find, DaxiBlobModel** model, const TestImage<uint8_t>& image) {
  auto* const before = reinterpret_cast<const DaxiDomainList*>(kUntouched);
  DaxiBlobModel* const modelBefore = *model;
  const DaxiDomainList* domains = before;
  auto* const pixels = const_cast<uint8_t*>(image.data());
  const DaxStatus status = find(pixels, image.step(), image.size(), 4, model, &domains);
  if (status == DAX_STS_OK) {
    EXPECT_EQ(domains->domainCount, 150u * 68u);
    return true;
  }
  EXPECT_EQ(status, static_cast<DaxStatus>(DAX_STS_NO_MEMORY));
  EXPECT_EQ(domains, before);
  EXPECT_EQ(*model, modelBefore);
  return false;
}

// --- Range records ---

DAX3D_RANGE_V4 made;

void releaseMade() {
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&made);
  for (void*& owner : made.colour.owner) {
    ZUR_Free(owner);
    owner = nullptr;
  }
}

// Makes a record by `call`; a failure leaves it as it was.
template <class Make>
bool makes(Make call) {
  DAX3D_RANGE_V4 before;
  std::memset(static_cast<void*>(&before), 0, sizeof before);
  std::memset(static_cast<void*>(&made), 0, sizeof made);
  const DaxStatus status = call();
  if (status == DAX_STS_OK) return true;
  EXPECT_EQ(status, static_cast<DaxStatus>(DAX_STS_NO_MEMORY));
  EXPECT_EQ(std::memcmp(&made, &before, sizeof made), 0);
  return false;
}

// A failed read leaves what it had read, and slots that say no more than there is.
bool readsFile() {
  static const RangeSample sample(40, 30, DAX3D_RANGE_WITH_MASK, 200);
  static fuzz::MemoryFile file;
  static const DaxStatus written = DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(file.path().c_str(), &sample.record);
  EXPECT_EQ(written, DAX_STS_OK);
  made = {};
  const DaxStatus status = DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &made);
  for (const DAX3D_IMAGE_SLOT* slot : {&made.range, &made.mask, &made.colour}) {
    EXPECT_EQ(slot->owner[0], slot->image.plane[0]);
    EXPECT_TRUE(slot->owner[0] || slot->image.height == 0 || slot->image.step[0] == 0);
  }
  EXPECT_TRUE(status == DAX_STS_OK || status == DAX_STS_NO_MEMORY);
  return status == DAX_STS_OK;
}

std::vector<Scenario> rangeScenarios() {
  return {
      {"DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4",
       [] {
         static const RangeSample sample(40, 30, DAX3D_RANGE_WITH_MASK, 200);
         return makes([] { return DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(&sample.record, &made); });
       },
       releaseMade},
      {"DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4",
       [] {
         static const RangeSample sample(40, 30);
         return makes([] {
           return DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4(sample.values.data(), 40, sample.colour.data(), 120,
                                                               {40, 30}, {40, 30}, 0.5f, nullptr, &made);
         });
       },
       releaseMade},
      {"DAX3DPCL_UTILS_READ_RANGE_V4", readsFile, releaseMade},
  };
}

std::vector<Scenario> scenarios() {
  static DaxiBlobModel* model;
  static ZurMemTabEntry zur[5];
  static DaxMemTabEntry table[5];
  static DaxMemTabEntryV3 tableV3[5];
  static void* block;
  const auto pristine = [](auto& entries) {
    for (auto& entry : entries) {
      entry = {};
      entry.size = 256, entry.alignment = 64;
      if constexpr (requires { entry.kind; }) entry.kind = DAX_MEMORY_CPU;
    }
  };
  return {
      {"DAXI_BlobFindV2", [] { return model = nullptr, labels(DAXI_BlobFindV2_8u_C1R, &model, grains()); },
       [] { DAXI_BlobFindV2DestroyModel_8u(&model); }},
      {"DAXI_BlobFindV3 into a new model",
       [] { return model = nullptr, labels(DAXI_BlobFindV3_8u_C1IR, &model, grains()); },
       [] { DAXI_BlobFindV3DestroyModel_8u(&model); }},
      {"ZUR_AllocMemTab",
       [=] {
         pristine(zur);
         const int32_t status = ZUR_AllocMemTab(zur, 5);
         EXPECT_TRUE(status == 0 || status == -21);
         return status == 0;
       },
       [] { ZUR_FreeMemTab(zur, 5); }},
      {"DAX_AllocMemTab",
       [=] {
         pristine(table);
         const DaxStatus status = DAX_AllocMemTab(table, 5);
         EXPECT_TRUE(status == DAX_STS_OK || status == DAX_STS_NO_MEMORY);
         return status == DAX_STS_OK;
       },
       [] { DAX_FreeMemTab(table, 5); }},
      {"DAX_AllocMemTabV3",
       [=] {
         pristine(tableV3);
         const DaxStatus status = DAX_AllocMemTabV3(tableV3, 5);
         EXPECT_TRUE(status == DAX_STS_OK || status == DAX_STS_NO_MEMORY);
         return status == DAX_STS_OK;
       },
       [] { DAX_FreeMemTabV3(tableV3, 5); }},
      {"ZUR_Malloc", [] { return (block = ZUR_Malloc(1000, 128)) != nullptr; }, [] { ZUR_Free(block); }},
      {"DAX_CpuMemMalloc", [] { return (block = DAX_CpuMemMalloc(1000, 48)) != nullptr; },
       [] { DAX_CpuMemFree(block); }},
      {"DAX_MemMalloc", [] { return (block = DAX_MemMalloc(1000, 16, DAX_MEMORY_CPU)) != nullptr; },
       [] { DAX_MemFree(block, DAX_MEMORY_CPU); }},
  };
}

TEST(Allocation, FailsCleanlyAtEveryPoint) {
  std::vector<Scenario> all = scenarios();
  for (Scenario& scenario : rangeScenarios()) all.push_back(std::move(scenario));
  for (const Scenario& scenario : all) {
    SCOPED_TRACE(scenario.name);
    failAllocation(-1);
    ASSERT_TRUE(scenario.call());
    const int64_t allocations = allocationsTried();
    scenario.release();
    ASSERT_GE(allocations, 1);
    ASSERT_EQ(liveBlocks(), 0);
    for (int64_t k = 0; k < allocations; ++k) {
      failAllocation(k);
      EXPECT_FALSE(scenario.call()) << "allocation " << k;
      scenario.release();
      EXPECT_EQ(liveBlocks(), 0) << "allocation " << k;
    }
    failAllocation(-1);
    EXPECT_TRUE(scenario.call());
    scenario.release();
    EXPECT_EQ(liveBlocks(), 0);
  }
}

// A model that is kept from image to image survives a failure at any point of a larger image.
TEST(Allocation, KeptModelSurvives) {
  const TestImage<uint8_t>& image = grains();
  const DaxiDomainList* domains = nullptr;
  const uint8_t pixel = 1;
  for (int64_t k = 0;; ++k) {
    DaxiBlobModel* model = nullptr;
    failAllocation(-1);
    ASSERT_EQ(DAXI_BlobFindV2_8u_C1R(&pixel, 1, {1, 1}, 4, &model, &domains), DAX_STS_OK);
    failAllocation(k);
    const bool fails = !labels(DAXI_BlobFindV3_8u_C1IR, &model, image);
    failAllocation(-1);
    EXPECT_TRUE(labels(DAXI_BlobFindV3_8u_C1IR, &model, image)) << "allocation " << k;
    DAXI_BlobFindV3DestroyModel_8u(&model);
    EXPECT_EQ(liveBlocks(), 0);
    if (!fails) {
      EXPECT_GT(k, 5);
      break;
    }
  }
}

}  // namespace
}  // namespace dax::test
