// Instruction sets at run time.
#pragma once

#include <cstdint>

#include "dax/api.h"
#include "dax/types.h"

// 32 feature flags, each 0 or 1. Flags without a name are zero.
struct DaxCpuFeature {
  uint32_t neon;
  uint32_t reserved[31];
};

// Fills the record and returns the instruction-set code: DAX_ISA_NEON where the library was built with NEON kernels,
// else DAX_ISA_PORTABLE. Keeps no state.
extern "C" int32_t _DAX_GetCpuFeatureV2(DaxCpuFeature* feature);

namespace dax {

// The code for entry points that take none.
inline int32_t currentIsa() {
  DaxCpuFeature feature;
  return _DAX_GetCpuFeatureV2(&feature);
}

// Whether a worker given this code runs its NEON kernel. False at compile time where there are none.
inline bool usesNeon([[maybe_unused]] int32_t isa) {
#if DAX_HAVE_NEON
  return isa == DAX_ISA_NEON;
#else
  return false;
#endif
}

}  // namespace dax
