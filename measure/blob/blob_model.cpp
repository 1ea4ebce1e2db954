#include "measure/blob/blob_model.h"

#include <algorithm>
#include <cstdlib>
#include <type_traits>

#include "frame/check.h"
#include "frame/rows.h"
#include "measure/blob/blob_label.h"
#include "measure/blob/blob_scan.h"

namespace dax {
namespace {

// An array of trivially copyable records that can grow but not shrink.
template <class T>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  // Makes room for at least `count` records; grows by doubling. Returns false, and changes nothing, when memory runs
  // out.
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

// Scans row by row, and before each row makes room for the most runs that it can have.
bool scanInto(DaxiBlobModel& model, const uint8_t* src, int32_t srcStep, DaxiSize size, RunJoiner<false>& joiner) {
  const auto maxRuns = static_cast<uint64_t>(MaskScan::maxRuns(size.width));
  return withKernel<MaskScan>(currentIsa(), [&](auto bits64) {
    for (int32_t y = 0; y < size.height; ++y) {
      if (!model.runs.reserve(joiner.count() + maxRuns)) return false;
      if (!model.parents.reserve(joiner.labels().count() + maxRuns)) return false;
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
  // At least one, because the arrays of a list are never null.
  if (!model.domains.reserve(std::max(domainCount, 1u))) return false;
  chainRuns(model.runs.data(), joiner.count(), joiner.labels(), model.domains.data(), domainCount);
  model.list = {model.runs.data(), model.domains.data(), joiner.count(), domainCount, size};
  return true;
}

// The model is trivial: zeroed memory is an empty one.
DaxiBlobModel* newModel() {
  return static_cast<DaxiBlobModel*>(std::calloc(1, sizeof(DaxiBlobModel)));
}

}  // namespace

void destroyModel(DaxiBlobModel* model) {
  if (!model) return;
  model->runs.release();
  model->parents.release();
  model->domains.release();
  std::free(model);
}

DaxStatus labelIntoModel(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                         DaxiBlobModel** model, const DaxiDomainList** domains) {
  DaxiBlobModel* const target = *model ? *model : newModel();
  if (!target || !label(*target, src, srcStep, size, connectivity)) {
    if (target != *model) destroyModel(target);
    return DAX_STS_NO_MEMORY;
  }
  *model = target;
  *domains = &target->list;
  return DAX_STS_OK;
}

DaxStatus labelIntoNewModel(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                            DaxiBlobModel** model, const DaxiDomainList** domains) {
  DaxiBlobModel* created = nullptr;
  DAX_REQUIRE_OK(labelIntoModel(src, srcStep, size, connectivity, &created, domains));
  created->parents.release();
  *model = created;
  return DAX_STS_OK;
}

}  // namespace dax
