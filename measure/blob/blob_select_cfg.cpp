// The check of a selection's configuration.
#include <cstddef>

#include "frame/check.h"
#include "measure/blob/blob_select.h"

static_assert(sizeof(BlobInfo) == 160 && offsetof(BlobInfo, domain) == 88 && offsetof(BlobInfo, label) == 96 &&
              offsetof(BlobInfo, cls) == 120);
static_assert(sizeof(BlobSelectCfg) == 184 && offsetof(BlobSelectCfg, sortOrder) == 108 &&
              offsetof(BlobSelectCfg, mask) == 168 && offsetof(BlobSelectCfg, outsideLimit) == 180);

namespace dax {
namespace {

// Bounds that a range must keep when its filter is on.
struct RangeRule {
  uint32_t flag;
  float min, max;
  float least, most;
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
    DAX_REQUIRE(rule.least <= rule.min && rule.min <= rule.max && rule.max <= rule.most, DAX_STS_BAD_PARAM);
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

}  // namespace
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
