#include "frame/cpu_feature.h"

int32_t _DAX_GetCpuFeatureV2(DaxCpuFeature* feature) {
  *feature = {};
  feature->neon = DAX_HAVE_NEON;
  return feature->neon == 1 ? DAX_ISA_NEON : DAX_ISA_PORTABLE;
}
