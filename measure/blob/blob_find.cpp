// Labelling into the caller's memory, and the exports of all forms of labelling.
#include "measure/blob/blob_find.h"

#include <algorithm>
#include <cstddef>

#include "frame/check.h"
#include "frame/rows.h"
#include "measure/blob/blob_label.h"
#include "measure/blob/blob_model.h"
#include "measure/blob/blob_scan.h"
#include "measure/region/domain_runs.h"

static_assert(sizeof(DomainRun) == 16 && offsetof(DomainRun, cls) == 6 && offsetof(DomainRun, next) == 12);
static_assert(sizeof(DaxiDomain) == 24 && sizeof(DaxiDomainList) == 32);

namespace dax {
namespace {

// The largest number of pixels no two of which touch.
uint64_t maxDomains(DaxiSize size, int32_t connectivity) {
  const auto w = static_cast<uint64_t>(size.width), h = static_cast<uint64_t>(size.height);
  return isFourConnected(connectivity) ? (w * h + 1) / 2 : ((w + 1) / 2) * ((h + 1) / 2);
}

// Upper bound of the labels. A run that touches no run above gets a new label. Labels of joined domains are not reused,
// so that there can be more labels than domains.
uint64_t maxLabels(DaxiSize size, int32_t connectivity) {
  const auto longSide = static_cast<uint64_t>(std::max(size.width, size.height)) + 1;
  const auto shortSide = static_cast<uint64_t>(std::min(size.width, size.height));
  if (shortSide == 1) return longSide / 2 + 1;
  const uint64_t area = shortSide * longSide;
  return isFourConnected(connectivity) ? area / 2 + 1 : (longSide + area) / 4 + 1;
}

template <class Scan>
const DaxiDomainList* findDomains(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                  const FindNeed& need, void* model, void* buffer, int32_t isa) {
  const FindModel at(need);
  DomainRun* const runs = at.runs.in(model);
  DaxiDomain* const domains = at.domains.in(model);
  RunJoiner<Scan::kClasses> joiner(runs, FindScratch(need).parents.in(buffer), connectivity);
  withKernel<Scan>(isa, [&](auto bits64) {
    for (int32_t y = 0; y < size.height; ++y) {
      joiner.beginRow(y);
      Scan::scanRow(rowAt(src, srcStep, y), size.width, bits64, joiner);
    }
  });
  const uint32_t domainCount = joiner.labels().number();
  chainRuns(runs, joiner.count(), joiner.labels(), domains, domainCount);

  DaxiDomainList* const list = at.list.in(model);
  *list = {runs, domains, joiner.count(), domainCount, size};
  return list;
}

}  // namespace

FindNeed maskNeed(DaxiSize size, int32_t connectivity) {
  const auto rows = static_cast<uint64_t>(size.height);
  return {rows * static_cast<uint64_t>(MaskScan::maxRuns(size.width)), maxLabels(size, connectivity),
          maxDomains(size, connectivity)};
}

FindNeed classNeed(DaxiSize size) {
  const uint64_t pixels = pixelsOf(size);
  return {pixels, pixels, pixels};
}

FindModel::FindModel(const FindNeed& need)
    : list(layout.add<DaxiDomainList>(1)),
      runs(layout.add<DomainRun>(need.runs)),
      domains(layout.add<DaxiDomain>(need.domains)) {}

FindScratch::FindScratch(const FindNeed& need) : parents(layout.add<uint32_t>(need.labels)) {}

const DaxiDomainList* findClassDomains(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, void* buffer, int32_t isa) {
  return findDomains<ClassScan>(src, srcStep, size, connectivity, classNeed(size), model, buffer, isa);
}

namespace {

// The largest run index is DAXI_RUN_END - 1.
bool classesFit(DaxiSize size) {
  return sidesFitRuns(size) && classNeed(size).runs < DAXI_RUN_END;
}

DaxStatus checkQuery(bool sizeFits, const uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sizeFits, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

using Find = const DaxiDomainList* (*)(const uint8_t*, int32_t, DaxiSize, int32_t, void*, void*, int32_t);

DaxStatus find(Find worker, const uint8_t* src, int32_t step, DaxiSize size, bool sizeFits, int32_t connectivity,
               void* model, const DaxiDomainList** domains, void* buffer, int32_t isa) {
  DAX_REQUIRE(src && model && domains && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sizeFits, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isa >= 0, DAX_STS_BAD_ISA);
  *domains = worker(src, step, size, connectivity, model, buffer, isa);
  return DAX_STS_OK;
}

DaxStatus findMask(const uint8_t* src, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                   const DaxiDomainList** domains, void* buffer, int32_t isa) {
  return find(_DAXI_FindDomain_8u_C1R, src, step, size, sidesFitRuns(size), connectivity, model, domains, buffer, isa);
}

DaxStatus findClasses(const uint8_t* src, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                      const DaxiDomainList** domains, void* buffer, int32_t isa) {
  return find(findClassDomains, src, step, size, classesFit(size), connectivity, model, domains, buffer, isa);
}

DaxStatus checkModel(const uint8_t* src, int32_t step, DaxiSize size, DaxiBlobModel** model,
                     const DaxiDomainList** domains) {
  DAX_REQUIRE(src && model && domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sidesFitRuns(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

DaxStatus destroy(DaxiBlobModel** model) {
  DAX_REQUIRE(model, DAX_STS_NULL_POINTER);
  destroyModel(*model);
  *model = nullptr;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

const DaxiDomainList* _DAXI_FindDomain_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                              void* model, void* buffer, int32_t isa) {
  const dax::FindNeed need = dax::maskNeed(size, connectivity);
  return dax::findDomains<dax::MaskScan>(src, srcStep, size, connectivity, need, model, buffer, isa);
}

DaxStatus DAXI_BlobFindModelSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(dax::sidesFitRuns(size), bytes));
  return dax::FindModel(dax::maskNeed(size, connectivity)).layout.store(bytes);
}

DaxStatus DAXI_BlobFindBufferSize_8u(DaxiSize size, int32_t connectivity, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(dax::sidesFitRuns(size), bytes));
  return dax::FindScratch(dax::maskNeed(size, connectivity)).layout.store(bytes);
}

DaxStatus DAXI_BlobFindMultiClsModelSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(dax::classesFit(size), bytes));
  return dax::FindModel(dax::classNeed(size)).layout.store(bytes);
}

DaxStatus DAXI_BlobFindMultiClsBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkQuery(dax::classesFit(size), bytes));
  return dax::FindScratch(dax::classNeed(size)).layout.store(bytes);
}

DaxStatus DAXI_BlobFind_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity, void* model,
                               const DaxiDomainList** domains, void* buffer) {
  return dax::findMask(src, srcStep, size, connectivity, model, domains, buffer, dax::currentIsa());
}

DaxStatus DAXI_BlobFind_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                                const DaxiDomainList** domains, void* buffer) {
  return dax::findMask(srcDst, step, size, connectivity, model, domains, buffer, dax::currentIsa());
}

DaxStatus DAXI_BlobFind_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                                   const DaxiDomainList** domains, void* buffer, int32_t isa) {
  return dax::findMask(srcDst, step, size, connectivity, model, domains, buffer, isa);
}

DaxStatus DAXI_BlobFindMultiCls_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                       void* model, const DaxiDomainList** domains, void* buffer) {
  return dax::findClasses(src, srcStep, size, connectivity, model, domains, buffer, dax::currentIsa());
}

DaxStatus DAXI_BlobFindMultiCls_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity, void* model,
                                        const DaxiDomainList** domains, void* buffer) {
  return dax::findClasses(srcDst, step, size, connectivity, model, domains, buffer, dax::currentIsa());
}

DaxStatus DAXI_BlobFindMultiCls_8u_C1IR_IS(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                           void* model, const DaxiDomainList** domains, void* buffer, int32_t isa) {
  return dax::findClasses(srcDst, step, size, connectivity, model, domains, buffer, isa);
}

DaxStatus DAXI_BlobFindV2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t connectivity,
                                 DaxiBlobModel** model, const DaxiDomainList** domains) {
  DAX_REQUIRE_OK(dax::checkModel(src, srcStep, size, model, domains));
  return dax::labelIntoNewModel(src, srcStep, size, connectivity, model, domains);
}

DaxStatus DAXI_BlobFindV2_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                  DaxiBlobModel** model, const DaxiDomainList** domains) {
  return DAXI_BlobFindV2_8u_C1R(srcDst, step, size, connectivity, model, domains);
}

DaxStatus DAXI_BlobFindV3_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t connectivity,
                                  DaxiBlobModel** model, const DaxiDomainList** domains) {
  DAX_REQUIRE_OK(dax::checkModel(srcDst, step, size, model, domains));
  return dax::labelIntoModel(srcDst, step, size, connectivity, model, domains);
}

DaxStatus DAXI_BlobFindV2DestroyModel_8u(DaxiBlobModel** model) {
  return dax::destroy(model);
}

DaxStatus DAXI_BlobFindV3DestroyModel_8u(DaxiBlobModel** model) {
  return dax::destroy(model);
}

uint32_t _DAXI_DomainCount(const DaxiDomainList* domains) {
  return domains ? domains->domainCount : 0;
}

const DaxiDomain* _DAXI_SelectDomainIndex(const DaxiDomainList* domains, uint32_t label) {
  return label < _DAXI_DomainCount(domains) ? domains->domains + label : nullptr;
}
