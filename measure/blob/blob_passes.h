// Selection on the calling thread.
#pragma once

#include "measure/blob/blob_cascade.h"

namespace dax {

// Runs all stages.
void select(const SelectCall& call);

// The last stages: sorts, scores, and writes the result.
void finishSelect(const SelectCall& call, const SelectScratch& at, KeptBlobs& kept);

}  // namespace dax

extern "C" {

// First pass: keeps blobs that pass, in label order, until maxCount are kept; returns the first label not examined.
int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept);

// Second pass, from label `next` on: a blob that passes and ranks before the worst of the kept blobs replaces it.
void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate);

// Computes the feature groups that the cascade did not.
void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept);
}
