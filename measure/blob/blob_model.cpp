// Labelling into memory of the library's own, which grows with what the image holds.
#include <cstdlib>
#include <type_traits>

#include "frame/check.h"
#include "frame/rows.h"
#include "measure/blob/blob_find.h"
#include "measure/blob/blob_label.h"
#include "measure/blob/blob_scan.h"
#include "measure/blob/domain_runs.h"

namespace dax {
namespace {

// An array of records without constructors that can be made longer, and not shorter.
template <class T>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  // Makes room for at least `count`; grows by doubling. False, and nothing changed, when memory is short.
  bool reserve(uint64_t count) {
    if (count <= capacity_) return true;
    uint64_t bytes;
    const uint64_t capacity = std::max(count, capacity_ * 2);
    if (__builtin_mul_overflow(capacity, uint64_t{sizeof(T)}, &bytes)) return false;
    void* const moved = std::realloc(static_cast<void*>(data_), bytes);
    if (!moved) return false;
    data_ = static_cast<T*>(moved);
    capacity_ = capacity;
    return true;
  }

  void release() {
    std::free(static_cast<void*>(data_));
    data_ = nullptr;
    capacity_ = 0;
  }

  T* data() const { return data_; }

 private:
  T* data_ = nullptr;
  uint64_t capacity_ = 0;
};

}  // namespace
}  // namespace dax

struct DaxiBlobModel {
  dax::GrowingArray<DomainRun> runs;
  dax::GrowingArray<uint32_t> parents;
  dax::GrowingArray<DaxiDomain> domains;
  DaxiDomainList list;
};

namespace dax {
namespace {

// Row by row, with room for the worst of the next row.
bool scanInto(DaxiBlobModel& model, const uint8_t* src, int32_t srcStep, DaxiSize size, RunJoiner<false>& joiner) {
  const auto mostRuns = static_cast<uint64_t>(MaskScan::mostRuns(size.width));
  return withKernel<MaskScan>(currentIsa(), [&](auto bits64) {
    for (int32_t y = 0; y < size.height; ++y) {
      if (!model.runs.reserve(joiner.count() + mostRuns)) return false;
      if (!model.parents.reserve(joiner.labels().count() + mostRuns)) return false;
      joiner.moveTo(model.runs.data(), model.parents.data());
      joiner.beginRow(y);
      MaskScan::scanRow(rowAt(src, srcStep, y), size.width, bits64, joiner);
    }
    return true;
  });
}

bool label(DaxiBlobModel& model, const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity) {
  RunJoiner<false> joiner(nullptr, nullptr, connectivity);
  if (!scanInto(model, src, srcStep, size, joiner)) return false;
  const uint32_t domainCount = joiner.labels().number();
  // One at least, since lists have no null arrays.
  if (!model.domains.reserve(std::max(domainCount, 1u))) return false;
  chainRuns(model.runs.data(), joiner.count(), joiner.labels(), model.domains.data(), domainCount);
  model.list = {model.runs.data(), model.domains.data(), joiner.count(), domainCount, size};
  return true;
}

// The model is a plain record, so that the C library's memory will do.
DaxiBlobModel* newModel() {
  return static_cast<DaxiBlobModel*>(std::calloc(1, sizeof(DaxiBlobModel)));
}

void destroy(DaxiBlobModel* model) {
  if (!model) return;
  model->runs.release();
  model->parents.release();
  model->domains.release();
  std::free(model);
}

DaxStatus check(const uint8_t* src, int32_t step, DaxiSize size, DaxiBlobModel** model,
                const DaxiDomainList** domains) {
  DAX_REQUIRE(src && model && domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sidesFitRuns(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// Labels into `*model`, or into a new one where that is null, which is then stored.
DaxStatus labelInto(const uint8_t* src, int32_t step, DaxiSize size, int32_t connectivity, DaxiBlobModel** model,
                    const DaxiDomainList** domains) {
  DaxiBlobModel* const target = *model ? *model : newModel();
  if (!target || !label(*target, src, step, size, connectivity)) {
    if (target != *model) destroy(target);
    return DAX_STS_NO_MEMORY;
  }
  *model = target;
  *domains = &target->list;
  return DAX_STS_OK;
}

DaxStatus destroyModel(DaxiBlobModel** model) {
  DAX_REQUIRE(model, DAX_STS_NULL_POINTER);
  destroy(*model);
  *model = nullptr;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_BlobFindV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                 DaxiBlobModel** model, const DaxiDomainList** domains) {
  DAX_REQUIRE_OK(dax::check(src, srcStep, size, model, domains));
  DaxiBlobModel* created = nullptr;
  DAX_REQUIRE_OK(dax::labelInto(src, srcStep, size, connectivity, &created, domains));
  created->parents.release();
  *model = created;
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobFindV2_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                  DaxiBlobModel** model, const DaxiDomainList** domains) {
  return DAXI_BlobFindV2_8u_C1R(srcDst, step, size, connectivity, model, domains);
}

DaxStatus DAXI_BlobFindV3_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                  DaxiBlobModel** model, const DaxiDomainList** domains) {
  DAX_REQUIRE_OK(dax::check(srcDst, step, size, model, domains));
  return dax::labelInto(srcDst, step, size, connectivity, model, domains);
}

DaxStatus DAXI_BlobFindV2DestroyModel_8u(DaxiBlobModel** model) {
  return dax::destroyModel(model);
}

DaxStatus DAXI_BlobFindV3DestroyModel_8u(DaxiBlobModel** model) {
  return dax::destroyModel(model);
}
