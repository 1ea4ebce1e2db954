#include "measure/blob/blob_score.h"

#include <cfloat>
#include <cmath>
#include <numbers>

namespace dax {
namespace {

// The contribution of a feature to the score: 1 at the middle of the range, decreasing linearly on both sides.
struct ScoreTerm {
  uint32_t flag;
  float value;
  float min, max;
  float weight;
};

float score(const ScoreTerm& term, float shift = 0) {
  const float reference = 2 / (term.min + term.max + shift + FLT_EPSILON);
  return term.weight * (1 - std::fabs((term.value + shift * 0.5f) * reference - 1));
}

// The range that the area was tested against.
DaxiRange areaRange(const BlobSelectCfg& c, const SelectRules& rules, const BlobInfo& b) {
  if (!rules.v4 || rules.v4->perClass == 0 || b.cls > 255) return c.area;
  return {static_cast<float>(rules.v4->classAreaMin[b.cls]), static_cast<float>(rules.v4->classAreaMax[b.cls])};
}

void scoreBlob(const BlobSelectCfg& c, const SelectRules& rules, BlobInfo& b) {
  const DaxiRange area = areaRange(c, rules, b);
  constexpr float kPi = std::numbers::pi_v<float>;
  const ScoreTerm terms[] = {
      {DAXI_BLOB_BY_AREA, b.area, area.min, area.max, c.areaWeight},
      {DAXI_BLOB_BY_PERIMETER, b.perimeter, c.perimeter.min, c.perimeter.max, c.perimeterWeight},
      {DAXI_BLOB_BY_SHORT_AXIS, b.shortAxis, c.shortAxis.min, c.shortAxis.max, c.shortAxisWeight},
      {DAXI_BLOB_BY_LONG_AXIS, b.longAxis, c.longAxis.min, c.longAxis.max, c.longAxisWeight},
      {DAXI_BLOB_BY_CIRCULARITY, b.circularity, c.circularity.min, c.circularity.max, c.circularityWeight},
      {DAXI_BLOB_BY_RECTANGULARITY, b.rectangularity, c.rectangularity.min, c.rectangularity.max,
       c.rectangularityWeight},
      {DAXI_BLOB_BY_CENTRAL_BIAS, b.centralBias, c.centralBias.min, c.centralBias.max, c.centralBiasWeight},
      {DAXI_BLOB_BY_AXIS_RATIO, b.axisRatio, c.axisRatio.min, c.axisRatio.max, c.axisRatioWeight},
      {DAXI_BLOB_BY_BOX_ANGLE, b.boxAngle, c.boxAngle.min, c.boxAngle.max, c.boxAngle.weight},
      {DAXI_BLOB_BY_RECT_WIDTH, static_cast<float>(b.rectWidth), c.rectWidth.min, c.rectWidth.max, c.rectWidth.weight},
      {DAXI_BLOB_BY_RECT_HEIGHT, static_cast<float>(b.rectHeight), c.rectHeight.min, c.rectHeight.max,
       c.rectHeight.weight},
  };
  float sum = 0, weights = 0;
  for (const ScoreTerm& term : terms) {
    if ((c.flags & term.flag) == 0) continue;
    // Angles are shifted by pi/2 so that they are not negative.
    sum += score(term, term.flag == DAXI_BLOB_BY_BOX_ANGLE ? kPi : 0);
    weights += term.weight;
  }
  if (weights > 0) b.score = sum / weights;
}

}  // namespace
}  // namespace dax

void DAXI_BlobSelect_blob_score_calculator(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                           dax::KeptBlobs* kept) {
  for (int32_t i = 0; i < kept->count; ++i) dax::scoreBlob(*cfg, *rules, kept->array[i]);
}
