#include "daxi/blob_select_v4.h"

#include "frame/check.h"
#include "measure/blob/blob_check.h"
#include "measure/blob/blob_passes.h"
#include "measure/blob/blob_pool.h"

namespace dax {
namespace {

// Checks a call and fills `common`, to which call.cfg points.
DaxStatus prepare(const SelectCall& call, const uint8_t* image2, int32_t step2, const BlobSelectV4Cfg* cfg,
                  BlobSelectCfg& common) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPointers(call));
  DAX_REQUIRE_OK(checkRegion(call, image2, step2));
  DAX_REQUIRE_OK(DAXI_BlobSelectV4_check_cfg(cfg));
  DAX_REQUIRE_OK(checkDomainCount(call));
  DAXI_BlobSelectV4_transform_cfg(cfg, &common);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_BlobSelectV4_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                   DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                   BlobSelectResult* result, const BlobSelectV4Cfg* cfg, void* buffer) {
  BlobSelectCfg common;
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, &common, buffer, {true, false, cfg}};
  DAX_REQUIRE_OK(dax::prepare(call, image2, step2, cfg, common));
  dax::select(call);
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobSelectV4_8u_C1R_MT(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                      DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                      BlobSelectResult* result, const BlobSelectV4Cfg* cfg, void* buffer,
                                      uint32_t threads, void* pool) {
  BlobSelectCfg common;
  const dax::SelectCall call{gray, grayStep, size, domains, domainCount, result, &common, buffer, {true, false, cfg}};
  DAX_REQUIRE_OK(dax::prepare(call, image2, step2, cfg, common));
  return dax::selectOnPool(call, threads, pool);
}
