#include "daxi/blob_select.h"

#include <algorithm>

#include "frame/check.h"
#include "measure/blob/blob_check.h"
#include "measure/blob/blob_passes.h"
#include "measure/blob/blob_pool.h"
#include "measure/blob/blob_rank.h"

DaxStatus DAXI_BlobSelectBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::sidesFitRuns(size), DAX_STS_BAD_PARAM);
  return dax::SelectScratch(size).layout.store(bytes);
}

DaxStatus DAXI_BlobSelectV3BufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return DAXI_BlobSelectBufferSize_8u(size, bytes);
}

DaxStatus DAXI_BlobSelect_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                 DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                 BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer) {
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, cfg, buffer, dax::kFirstRules};
  DAX_REQUIRE_OK(dax::checkSelect(call, image2, step2));
  dax::select(call);
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobSelectV3_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                   DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                   BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer) {
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, cfg, buffer, dax::kThirdRules};
  DAX_REQUIRE_OK(dax::checkSelect(call, image2, step2));
  dax::select(call);
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobSelectV2_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size, const DaxiDomainList* domains,
                                   BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer) {
  const auto count = static_cast<int32_t>(_DAXI_DomainCount(domains));
  const dax::SelectCall call{gray, grayStep, size, domains, count, result, cfg, buffer, dax::kFirstRules};
  DAX_REQUIRE_OK(dax::checkPointers(call));
  DAX_REQUIRE_OK(dax::checkRegion(call, gray, grayStep));
  DAX_REQUIRE_OK(DAXI_BlobSelect_check_cfg(cfg));
  dax::select(call);
  return DAX_STS_OK;
}

DaxStatus DAXI_FastBlobSelect_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size,
                                     const DaxiDomainList* domains, int32_t domainCount, BlobSelectResult* result,
                                     const BlobSelectCfg* cfg, void* buffer) {
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, cfg, buffer, dax::kFastRules};
  DAX_REQUIRE_OK(dax::checkPointers(call));
  DAX_REQUIRE_OK(dax::checkRegion(call, gray, grayStep));
  DAX_REQUIRE_OK(DAXI_BlobSelect_check_cfg(cfg));
  DAX_REQUIRE_OK(dax::checkBasicOnly(*cfg));
  DAX_REQUIRE_OK(dax::checkDomainCount(call));
  dax::select(call);
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobSelectBufferSize_8u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::sidesFitRuns(size), DAX_STS_BAD_PARAM);
  if (threads < 2) return DAXI_BlobSelectBufferSize_8u(size, bytes);
  return dax::poolBufferSize(size, threads, bytes);
}

DaxStatus DAXI_BlobSelectV3BufferSize_8u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes) {
  return DAXI_BlobSelectBufferSize_8u_MT(size, threads, bytes);
}

DaxStatus DAXI_BlobSelect_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                    DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                    BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer, uint32_t threads,
                                    void* pool) {
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, cfg, buffer, dax::kFirstRules};
  DAX_REQUIRE_OK(dax::checkSelect(call, image2, step2));
  return dax::selectOnPool(call, threads, pool);
}

DaxStatus DAXI_BlobSelectV3_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                      DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                      BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer,
                                      uint32_t threads, void* pool) {
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, cfg, buffer, dax::kThirdRules};
  DAX_REQUIRE_OK(dax::checkSelect(call, image2, step2));
  return dax::selectOnPool(call, threads, pool);
}

DaxStatus DAXI_BlobSort(BlobInfo* blobs, int32_t count, uint32_t sortKey, uint32_t sortOrder) {
  DAX_REQUIRE(blobs, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(sortKey >= DAXI_BLOB_KEY_AREA && sortKey <= DAXI_BLOB_KEY_AXIS_RATIO, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(sortOrder >= DAXI_BLOB_ASCENDING && sortOrder <= DAXI_BLOB_UNSORTED, DAX_STS_BAD_PARAM);
  if (sortOrder == DAXI_BLOB_UNSORTED) return DAX_STS_OK;
  std::sort(blobs, blobs + count, dax::Ranking{sortKey, sortOrder == DAXI_BLOB_DESCENDING});
  return DAX_STS_OK;
}
