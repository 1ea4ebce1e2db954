// Features of single blobs.
#pragma once

#include "measure/blob/blob_context.h"

namespace dax {

// Feature groups as bits, which say what a cascade has computed.
enum FeatureGroup : uint32_t {
  kBasicFeatures = 0x7,
  kContourLength = 0x8,
  kCircularity = 0x10,
  kPrincipalAngle = 0x100,
  kBoxFeatures = 0xEE0
};

// Measures area, rect and centroid; sets domain, label and class.
void calculateBasicFeatures(const SelectContext& context, const DaxiDomain& domain, BlobInfo& blob);

// Computes the feature groups of a blob that are not in `done`.
void completeFeatures(const SelectContext& context, uint32_t done, BlobInfo& blob);

}  // namespace dax

extern "C" {

// Feature calculators. They need the basic features.
void DAXI_BlobSelect_calculate_circularity(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_circularity_and_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_principal_axis_angle(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_base_on_box(const dax::SelectContext* context, BlobInfo* blob);

// Store the number of outside pixels in the record; return whether it is within the limit. Without and with a mask.
bool DAXI_BlobSelect_by_out_pixel_num_roi_rect(const dax::SelectContext* context, BlobInfo* blob);
bool DAXI_BlobSelect_by_out_pixel_num_mask_img(const dax::SelectContext* context, BlobInfo* blob);
}
