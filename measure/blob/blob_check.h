// The checks of a selection's arguments, and the configuration of the fourth version in terms of the others.
#pragma once

#include "measure/blob/blob_context.h"

namespace dax {

// All checks of a call, in the documented order.
DaxStatus checkSelect(const SelectCall& call, const uint8_t* image2, int32_t step2);

// Parts of it: two that precede the check of the configuration, and the last one.
DaxStatus checkPointers(const SelectCall& call);
DaxStatus checkRegion(const SelectCall& call, const uint8_t* image2, int32_t step2);
DaxStatus checkDomainCount(const SelectCall& call);

// Whether flags and sort key name basic features only.
DaxStatus checkBasicOnly(const BlobSelectCfg& cfg);

}  // namespace dax

extern "C" {

DaxStatus DAXI_BlobSelect_check_cfg(const BlobSelectCfg* cfg);
DaxStatus DAXI_BlobSelectV4_check_cfg(const BlobSelectV4Cfg* cfg);

// The fourth version's configuration in the form of the first: its range of areas as floats, all else unchanged.
void DAXI_BlobSelectV4_transform_cfg(const BlobSelectV4Cfg* cfg, BlobSelectCfg* common);
}
