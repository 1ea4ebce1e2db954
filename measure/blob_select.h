// Stages of blob selection. An orchestrator runs them in order; each can be called and tested by itself.
#pragma once

#include "daxi/blob_select.h"
#include "frame/work_buffer.h"
#include "measure/contour.h"
#include "measure/enclose_box.h"

namespace dax {

// The work buffer: room to order 20000 records, then a candidate record, then what the features of one domain need.
struct SelectScratch {
  explicit SelectScratch(DaxiSize size);
  BufferLayout layout;
  BufferPiece<BlobInfo*> order;
  BufferPiece<BlobInfo> candidate;
  BufferPiece<uint8_t> bitmap;
  BufferPiece<PointI32> hull;
};

// What the stages read, and the scratch memory that feature calculators use.
struct SelectContext {
  const BlobSelectCfg& cfg;
  const uint8_t* gray;
  int32_t grayStep;
  DaxiSize size;
  const DaxiDomainList& domains;
  DomainBitmap bitmap;
  PointI32* hull;

  DomainView view(const DaxiDomain& domain) const { return viewDomain(domains, domain, size); }
  DomainView view(const BlobInfo& blob) const { return view(*blob.domain); }
};

// Feature groups, as the bits that say which of them a cascade computes.
enum FeatureGroup : uint32_t {
  kBasicFeatures = 0x7,
  kContourLength = 0x8,
  kCircularity = 0x10,
  kPrincipalAngle = 0x100,
  kBoxFeatures = 0xEE0
};

// One step of the cascade: computes features, or tests one; false refuses the blob.
using CascadeStep = bool (*)(const SelectContext& context, BlobInfo& blob);

// The steps that the flags and the sort key ask for, in their fixed order, and the groups they compute.
struct Cascade {
  static constexpr int kMostSteps = 16;
  CascadeStep steps[kMostSteps];
  int count = 0;
  uint32_t done = kBasicFeatures;

  void test(CascadeStep step) { steps[count++] = step; }
  void compute(CascadeStep step, uint32_t groups) {
    steps[count++] = step;
    done |= groups;
  }
  bool accepts(const SelectContext& context, BlobInfo& blob) const;
};

// The order of ranks by a sort key: better blobs first, equal ones by label.
struct Ranking {
  uint32_t key;
  bool descending;

  bool operator()(const BlobInfo& a, const BlobInfo& b) const;
  bool operator()(const BlobInfo* a, const BlobInfo* b) const { return (*this)(*a, *b); }
};

// The blobs kept so far.
struct KeptBlobs {
  BlobInfo* array;
  int32_t count;
};

// Measures area, rect, centroid; sets domain, label and class.
void calculateBasicFeatures(const SelectContext& context, const DaxiDomain& domain, BlobInfo& blob);

}  // namespace dax

extern "C" {

DaxStatus DAXI_BlobSelect_check_cfg(const BlobSelectCfg* cfg);

// Feature calculators. They need the basic features.
void DAXI_BlobSelect_calculate_circularity(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_circularity_and_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_principal_axis_angle(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_base_on_box(const dax::SelectContext* context, BlobInfo* blob);

void DAXI_BlobSelect_create_cascade_filter(const BlobSelectCfg* cfg, dax::Cascade* cascade);

// First pass: keeps blobs that pass, in label order, until maxCount are kept; returns the first label not examined.
int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept);

// Second pass, over the labels from `next` on: a blob that passes and ranks before the worst of the kept replaces it.
void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate);

// Computes the groups that the cascade did not.
void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept);

void DAXI_BlobSelect_blob_score_calculator(const BlobSelectCfg* cfg, dax::KeptBlobs* kept);
}
