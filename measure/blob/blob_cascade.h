// The cascade of a selection: which features are computed and which ranges tested, in which order.
#pragma once

#include "measure/blob/blob_features.h"

namespace dax {

// One step of the cascade: computes features or tests one; false rejects the blob.
using CascadeStep = bool (*)(const SelectContext& context, BlobInfo& blob);

// The steps that the flags and the sort key require, in their fixed order, and the groups that they compute.
struct Cascade {
  static constexpr int kMaxSteps = 16;
  CascadeStep steps[kMaxSteps];
  int count = 0;
  uint32_t done = kBasicFeatures;

  void test(CascadeStep step) { steps[count++] = step; }
  void compute(CascadeStep step, uint32_t groups) {
    steps[count++] = step;
    done |= groups;
  }
  bool accepts(const SelectContext& context, BlobInfo& blob) const;
};

}  // namespace dax

extern "C" void DAXI_BlobSelect_create_cascade_filter(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                                      dax::Cascade* cascade);
