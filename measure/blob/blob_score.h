// The score of a blob: how close its features are to the middles of their ranges.
#pragma once

#include "measure/blob/blob_context.h"

extern "C" void DAXI_BlobSelect_blob_score_calculator(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                                      dax::KeptBlobs* kept);
