#include "measure/blob/blob_cascade.h"

namespace dax {
namespace {

constexpr float kSlack = 1e-5f;  // of both ends of a range, as documented

template <class Range>
bool inRange(float value, const Range& range) {
  return value >= range.min - kSlack && value <= range.max + kSlack;
}

// Tests a feature against its range.
template <auto feature, auto range>
bool test(const SelectContext& context, BlobInfo& blob) {
  return inRange(static_cast<float>(blob.*feature), context.cfg.*range);
}
constexpr CascadeStep kTestArea = test<&BlobInfo::area, &BlobSelectCfg::area>;
constexpr CascadeStep kTestPerimeter = test<&BlobInfo::perimeter, &BlobSelectCfg::perimeter>;
constexpr CascadeStep kTestShortAxis = test<&BlobInfo::shortAxis, &BlobSelectCfg::shortAxis>;
constexpr CascadeStep kTestLongAxis = test<&BlobInfo::longAxis, &BlobSelectCfg::longAxis>;
constexpr CascadeStep kTestAxisRatio = test<&BlobInfo::axisRatio, &BlobSelectCfg::axisRatio>;
constexpr CascadeStep kTestCircularity = test<&BlobInfo::circularity, &BlobSelectCfg::circularity>;
constexpr CascadeStep kTestRectangularity = test<&BlobInfo::rectangularity, &BlobSelectCfg::rectangularity>;
constexpr CascadeStep kTestCentralBias = test<&BlobInfo::centralBias, &BlobSelectCfg::centralBias>;
constexpr CascadeStep kTestBoxAngle = test<&BlobInfo::boxAngle, &BlobSelectCfg::boxAngle>;
constexpr CascadeStep kTestRectWidth = test<&BlobInfo::rectWidth, &BlobSelectCfg::rectWidth>;
constexpr CascadeStep kTestRectHeight = test<&BlobInfo::rectHeight, &BlobSelectCfg::rectHeight>;

bool inAreaRange(int64_t area, int32_t min, int32_t max) {
  return min <= max ? area >= min && area <= max : area > min || area < max;
}

// Areas are below 2^33 and so fit a 64-bit integer.
bool testWholeArea(const SelectContext& c, BlobInfo& b) {
  const auto area = static_cast<int64_t>(b.area);
  const BlobSelectV4Cfg& v4 = *c.rules.v4;
  if (v4.perClass == 0) return inAreaRange(area, v4.areaMin, v4.areaMax);
  return b.cls < 256 && inAreaRange(area, v4.classAreaMin[b.cls], v4.classAreaMax[b.cls]);
}

bool testOutsidePixels(const SelectContext& c, BlobInfo& b) {
  return c.cfg.mask ? DAXI_BlobSelect_by_out_pixel_num_mask_img(&c, &b)
                    : DAXI_BlobSelect_by_out_pixel_num_roi_rect(&c, &b);
}

// A calculator as a step that accepts every blob.
template <auto calculate>
bool compute(const SelectContext& context, BlobInfo& blob) {
  calculate(&context, &blob);
  return true;
}
constexpr CascadeStep kComputeCircularity = compute<DAXI_BlobSelect_calculate_circularity>;
constexpr CascadeStep kComputeContour = compute<DAXI_BlobSelect_calculate_contourlen>;
constexpr CascadeStep kComputeBoth = compute<DAXI_BlobSelect_calculate_circularity_and_contourlen>;
constexpr CascadeStep kComputePrincipalAngle = compute<DAXI_BlobSelect_calculate_principal_axis_angle>;
constexpr CascadeStep kComputeBox = compute<DAXI_BlobSelect_calculate_base_on_box>;

void addBasicTests(uint32_t flags, const SelectRules& rules, Cascade& cascade) {
  if (flags & DAXI_BLOB_BY_AREA) cascade.test(rules.v4 ? testWholeArea : kTestArea);
  if (flags & DAXI_BLOB_BY_RECT_WIDTH) cascade.test(kTestRectWidth);
  if (flags & DAXI_BLOB_BY_RECT_HEIGHT) cascade.test(kTestRectHeight);
}

// Circularity is measured on the contour where the contour is traced anyway to rank or test by both, else on the runs.
void addContourSteps(uint32_t flags, uint32_t key, Cascade& cascade) {
  const bool byPerimeter = flags & DAXI_BLOB_BY_PERIMETER, byCircularity = flags & DAXI_BLOB_BY_CIRCULARITY;
  const bool ranksByPerimeter = key == DAXI_BLOB_KEY_PERIMETER, ranksByCircularity = key == DAXI_BLOB_KEY_CIRCULARITY;
  if ((byPerimeter && byCircularity) || ((byPerimeter || byCircularity) && ranksByPerimeter)) {
    cascade.compute(kComputeBoth, kContourLength | kCircularity);
    if (byPerimeter) cascade.test(kTestPerimeter);
    if (byCircularity) cascade.test(kTestCircularity);
    return;
  }
  if (byPerimeter || ranksByPerimeter) cascade.compute(kComputeContour, kContourLength);
  if (byPerimeter) cascade.test(kTestPerimeter);
  if (byCircularity || ranksByCircularity) cascade.compute(kComputeCircularity, kCircularity);
  if (byCircularity) cascade.test(kTestCircularity);
}

constexpr uint32_t kBoxFlags = DAXI_BLOB_BY_SHORT_AXIS | DAXI_BLOB_BY_LONG_AXIS | DAXI_BLOB_BY_RECTANGULARITY |
                               DAXI_BLOB_BY_CENTRAL_BIAS | DAXI_BLOB_BY_AXIS_RATIO | DAXI_BLOB_BY_BOX_ANGLE;

bool isBoxKey(uint32_t key) {
  return key == DAXI_BLOB_KEY_RECTANGULARITY || key == DAXI_BLOB_KEY_BOX_ANGLE || key == DAXI_BLOB_KEY_BOX_WIDTH ||
         key == DAXI_BLOB_KEY_BOX_HEIGHT || key == DAXI_BLOB_KEY_AXIS_RATIO;
}

void addBoxSteps(uint32_t flags, uint32_t key, Cascade& cascade) {
  if ((flags & kBoxFlags) == 0 && !isBoxKey(key)) return;
  cascade.compute(kComputeBox, kBoxFeatures);
  if (flags & DAXI_BLOB_BY_SHORT_AXIS) cascade.test(kTestShortAxis);
  if (flags & DAXI_BLOB_BY_LONG_AXIS) cascade.test(kTestLongAxis);
  if (flags & DAXI_BLOB_BY_AXIS_RATIO) cascade.test(kTestAxisRatio);
  if (flags & DAXI_BLOB_BY_RECTANGULARITY) cascade.test(kTestRectangularity);
  if (flags & DAXI_BLOB_BY_CENTRAL_BIAS) cascade.test(kTestCentralBias);
  if (flags & DAXI_BLOB_BY_BOX_ANGLE) cascade.test(kTestBoxAngle);
}

}  // namespace

bool Cascade::accepts(const SelectContext& context, BlobInfo& blob) const {
  for (int i = 0; i < count; ++i) {
    if (!steps[i](context, blob)) return false;
  }
  return true;
}

}  // namespace dax

void DAXI_BlobSelect_create_cascade_filter(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                           dax::Cascade* cascade) {
  dax::addBasicTests(cfg->flags, *rules, *cascade);
  if (rules->basicOnly) return;
  dax::addContourSteps(cfg->flags, cfg->sortKey, *cascade);
  if (cfg->sortKey == DAXI_BLOB_KEY_PRINCIPAL_ANGLE) {
    cascade->compute(dax::kComputePrincipalAngle, dax::kPrincipalAngle);
  }
  dax::addBoxSteps(cfg->flags, cfg->sortKey, *cascade);
  if (rules->countsOutside && (cfg->flags & DAXI_BLOB_BY_OUTSIDE_PIXELS)) cascade->test(dax::testOutsidePixels);
}
