// Criteria: factors of the score.
#pragma once

#include <cfloat>
#include <cstdint>

#include "daxi/caliper.h"

namespace dax {

constexpr float kCaliperSlack = FLT_EPSILON;  // e of the contract

bool isCriterion(const CaliperCriterion& criterion);

// The factor of a criterion for a value; and the same where its flag is set, else 1.
float criterionFactor(const CaliperCriterion& criterion, float value);
inline float factorIfActive(uint32_t flags, uint32_t flag, const CaliperCriterion& criterion, float value) {
  return flags & flag ? criterionFactor(criterion, value) : 1.0f;  // inline: of a dozen criteria few are active
}

// The geometric mean of the factors of all criteria whose flags are set, from their product.
float geometricMean(float product, uint32_t flags);

// Whether the fields that configurations of single edges and of pairs have in common are in their ranges.
template <class Cfg>
bool isEdgeSearch(const Cfg& cfg) {
  return cfg.threshold >= -kCaliperSlack && cfg.filterHalfWidth >= 1 && cfg.filterHalfWidth <= 50 &&
         cfg.polarity >= 1 && cfg.polarity <= 3 && cfg.projection <= 1 && cfg.minScore >= 0;
}

}  // namespace dax
