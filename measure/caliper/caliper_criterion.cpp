#include "measure/caliper/caliper_criterion.h"

#include "frame/math.h"

namespace dax {

bool isCriterion(const CaliperCriterion& c) {
  return c.mode <= 1 && c.x0 <= c.x1 && c.x1 <= c.x2 && c.y0 >= 0 && c.y0 <= c.y1 && c.y1 <= 1 && c.y1 >= kCaliperSlack;
}

float criterionFactor(const CaliperCriterion& c, float v) {
  const float slack = v + kCaliperSlack;
  if (c.mode == 0) {
    if (slack < c.x0) return 0;
    if (slack < c.x1) return c.y0;
    if (!(slack < c.x2)) return c.y1;
    const float s = (c.y1 - c.y0) / (c.x2 - c.x1 + kCaliperSlack);
    return s * v + (c.y0 - c.x1 * s);
  }
  if (slack < c.x0) return c.y1;
  if (slack < c.x1) {
    const float s = (c.y1 - c.y0) / (c.x1 - c.x0 + kCaliperSlack);
    return (c.x0 * s + c.y1) - s * v;
  }
  return slack < c.x2 ? c.y0 : 0;
}

float geometricMean(float product, uint32_t flags) {
  const int active = __builtin_popcount(flags);
  return active > 1 ? static_cast<float>(rootExact(product, active)) : product;
}

}  // namespace dax
