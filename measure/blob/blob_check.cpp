#include "measure/blob/blob_check.h"

#include <cstddef>

#include "frame/check.h"

static_assert(sizeof(BlobInfo) == 160 && offsetof(BlobInfo, domain) == 88 && offsetof(BlobInfo, label) == 96 &&
              offsetof(BlobInfo, cls) == 120);
static_assert(sizeof(BlobSelectCfg) == 184 && offsetof(BlobSelectCfg, sortOrder) == 108 &&
              offsetof(BlobSelectCfg, mask) == 168 && offsetof(BlobSelectCfg, outsideLimit) == 180);
static_assert(sizeof(BlobSelectV4Cfg) == 184 + 16 + 2048 && offsetof(BlobSelectV4Cfg, classAreaMin) == 200);

namespace dax {
namespace {

// A range and the bounds that it must keep when its filter is on.
struct RangeRule {
  uint32_t flag;
  float min, max;
  float lower, upper;
};

bool isWeight(float weight) {
  return weight >= 0 && weight <= 1;
}

DaxStatus checkRanges(const BlobSelectCfg& c) {
  const float inf = __builtin_inff();
  const RangeRule rules[] = {
      {DAXI_BLOB_BY_AREA, c.area.min, c.area.max, 0, inf},
      {DAXI_BLOB_BY_PERIMETER, c.perimeter.min, c.perimeter.max, 0, inf},
      {DAXI_BLOB_BY_SHORT_AXIS, c.shortAxis.min, c.shortAxis.max, 0, inf},
      {DAXI_BLOB_BY_LONG_AXIS, c.longAxis.min, c.longAxis.max, 0, inf},
      {DAXI_BLOB_BY_CIRCULARITY, c.circularity.min, c.circularity.max, 0, 1},
      {DAXI_BLOB_BY_RECTANGULARITY, c.rectangularity.min, c.rectangularity.max, 0, 1},
      {DAXI_BLOB_BY_AXIS_RATIO, c.axisRatio.min, c.axisRatio.max, 0, 1},
      {DAXI_BLOB_BY_CENTRAL_BIAS, c.centralBias.min, c.centralBias.max, 0, inf},
      {DAXI_BLOB_BY_BOX_ANGLE, c.boxAngle.min, c.boxAngle.max, -inf, inf},
      {DAXI_BLOB_BY_RECT_WIDTH, c.rectWidth.min, c.rectWidth.max, -inf, inf},
      {DAXI_BLOB_BY_RECT_HEIGHT, c.rectHeight.min, c.rectHeight.max, -inf, inf},
  };
  for (const RangeRule& rule : rules) {
    if ((c.flags & rule.flag) == 0) continue;
    DAX_REQUIRE(rule.lower <= rule.min && rule.min <= rule.max && rule.max <= rule.upper, DAX_STS_BAD_PARAM);
  }
  return DAX_STS_OK;
}

DaxStatus checkWeights(const BlobSelectCfg& c) {
  for (const float weight :
       {c.areaWeight, c.perimeterWeight, c.shortAxisWeight, c.longAxisWeight, c.axisRatioWeight, c.circularityWeight,
        c.rectangularityWeight, c.centralBiasWeight, c.boxAngle.weight, c.rectWidth.weight, c.rectHeight.weight}) {
    DAX_REQUIRE(isWeight(weight), DAX_STS_BAD_PARAM);
  }
  return DAX_STS_OK;
}

constexpr uint32_t kBasicFlags = DAXI_BLOB_BY_AREA | DAXI_BLOB_BY_RECT_WIDTH | DAXI_BLOB_BY_RECT_HEIGHT;

bool isBasicKey(uint32_t key) {
  return key == DAXI_BLOB_KEY_AREA || key == DAXI_BLOB_KEY_CENTROID_X || key == DAXI_BLOB_KEY_CENTROID_Y ||
         key == DAXI_BLOB_KEY_RECT_X || key == DAXI_BLOB_KEY_RECT_Y;
}

}  // namespace

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

DaxStatus checkBasicOnly(const BlobSelectCfg& cfg) {
  DAX_REQUIRE((cfg.flags & ~kBasicFlags) == 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isBasicKey(cfg.sortKey), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_BlobSelect_check_cfg(const BlobSelectCfg* cfg) {
  DAX_REQUIRE(cfg->maxCount >= 1 && cfg->maxCount <= DAXI_BLOB_MAX_COUNT, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->flags <= DAXI_BLOB_FLAGS_MAX, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkRanges(*cfg));
  DAX_REQUIRE((cfg->flags & DAXI_BLOB_BY_OUTSIDE_PIXELS) == 0 || cfg->outsideLimit >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkWeights(*cfg));
  DAX_REQUIRE(cfg->sortOrder >= DAXI_BLOB_ASCENDING && cfg->sortOrder <= DAXI_BLOB_UNSORTED, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg->sortKey >= DAXI_BLOB_KEY_AREA && cfg->sortKey <= DAXI_BLOB_KEY_AXIS_RATIO, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!cfg->mask || cfg->maskStep >= 0, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

void DAXI_BlobSelectV4_transform_cfg(const BlobSelectV4Cfg* cfg, BlobSelectCfg* common) {
  *common = cfg->common;
  common->area = {static_cast<float>(cfg->areaMin), static_cast<float>(cfg->areaMax)};
}

// Every range of areas is valid, even an inverted one.
DaxStatus DAXI_BlobSelectV4_check_cfg(const BlobSelectV4Cfg* cfg) {
  BlobSelectCfg common = cfg->common;
  common.area = {0, 0};
  return DAXI_BlobSelect_check_cfg(&common);
}
