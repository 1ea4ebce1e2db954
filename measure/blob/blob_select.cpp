#include "measure/blob/blob_select.h"

#include <algorithm>

#include "frame/check.h"

namespace dax {

SelectContext makeContext(const SelectCall& call, const FeatureScratch& at, void* buffer) {
  const DomainBitmap bitmap(at.bitmap.in(buffer), call.size);
  return {*call.cfg, call.rules, call.gray, call.grayStep, call.size, *call.domains, bitmap, at.hull.in(buffer)};
}

void finishSelect(const SelectCall& call, const SelectScratch& at, KeptBlobs& kept) {
  sortKept(*call.cfg, kept, at.order.in(call.buffer), *at.candidate.in(call.buffer));
  DAXI_BlobSelect_blob_score_calculator(call.cfg, &call.rules, &kept);
  call.result->count = static_cast<uint32_t>(kept.count);
  call.result->domains = call.domains;
}

void select(const SelectCall& call) {
  const SelectScratch at(call.size);
  const SelectContext context = makeContext(call, at.features, call.buffer);
  context.bitmap.clear(call.size);
  Cascade cascade;
  DAXI_BlobSelect_create_cascade_filter(call.cfg, &call.rules, &cascade);

  KeptBlobs kept{call.result->array, 0};
  const int32_t next = DAXI_BlobSelect_1(&context, &cascade, call.domainCount, &kept);
  if (call.cfg->flags != 0 && next < call.domainCount) {
    DAXI_BlobSelect_2(&context, &cascade, next, call.domainCount, &kept, at.order.in(call.buffer),
                      at.candidate.in(call.buffer));
  }
  DAXI_BlobSelect_blob_info_calculator(&context, cascade.done, &kept);
  finishSelect(call, at, kept);
}

DaxStatus checkPointers(const SelectCall& call) {
  DAX_REQUIRE(call.domains && call.domains->runs && call.domains->domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(call.result && call.result->array && call.cfg && call.buffer, DAX_STS_NULL_POINTER);
  return DAX_STS_OK;
}

DaxStatus checkRegion(const SelectCall& call, const uint8_t* image2, int32_t step2) {
  DAX_REQUIRE_OK(checkImage(call.gray, call.grayStep, call.size));
  DAX_REQUIRE_OK(checkImage(image2, step2, call.size));
  DAX_REQUIRE(atMost(call.size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

DaxStatus checkDomainCount(const SelectCall& call) {
  DAX_REQUIRE(call.domainCount >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(static_cast<uint32_t>(call.domainCount) <= _DAXI_DomainCount(call.domains), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkSelect(const SelectCall& call, const uint8_t* image2, int32_t step2) {
  DAX_REQUIRE_OK(checkPointers(call));
  DAX_REQUIRE_OK(checkRegion(call, image2, step2));
  DAX_REQUIRE_OK(DAXI_BlobSelect_check_cfg(call.cfg));
  return checkDomainCount(call);
}

namespace {

constexpr uint32_t kBasicFlags = DAXI_BLOB_BY_AREA | DAXI_BLOB_BY_RECT_WIDTH | DAXI_BLOB_BY_RECT_HEIGHT;

bool isBasicKey(uint32_t key) {
  return key == DAXI_BLOB_KEY_AREA || key == DAXI_BLOB_KEY_CENTROID_X || key == DAXI_BLOB_KEY_CENTROID_Y ||
         key == DAXI_BLOB_KEY_RECT_X || key == DAXI_BLOB_KEY_RECT_Y;
}

DaxStatus checkBasicOnly(const BlobSelectCfg& cfg) {
  DAX_REQUIRE((cfg.flags & ~kBasicFlags) == 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isBasicKey(cfg.sortKey), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept) {
  int32_t label = 0;
  while (label < domainCount && kept->count < context->cfg.maxCount) {
    BlobInfo& blob = kept->array[kept->count];
    dax::calculateBasicFeatures(*context, context->domains.domains[label++], blob);
    if (cascade->accepts(*context, blob)) ++kept->count;
  }
  return label;
}

void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate) {
  dax::KeptHeap heap(*kept, dax::keepRanking(context->cfg), order);
  *candidate = {};
  for (int32_t label = next; label < domainCount; ++label) {
    dax::calculateBasicFeatures(*context, context->domains.domains[label], *candidate);
    if (cascade->accepts(*context, *candidate)) heap.offer(*candidate);
  }
}

void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept) {
  if (context->rules.basicOnly) return;
  for (int32_t i = 0; i < kept->count; ++i) dax::completeFeatures(*context, done, kept->array[i]);
}

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
