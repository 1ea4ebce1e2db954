// Stages of blob selection. An orchestrator runs them in order; each can be called and tested by itself.
#pragma once

#include "daxi/blob_select_v4.h"
#include "frame/memory/work_buffer.h"
#include "measure/blob/contour.h"
#include "measure/blob/enclose_box.h"

namespace dax {

// What sets the versions of selection apart.
struct SelectRules {
  bool countsOutside;         // filter 0x800 acts
  bool basicOnly;             // no features beyond area, rect and centroid
  const BlobSelectV4Cfg* v4;  // ranges of area in whole pixels, or null
};
inline constexpr SelectRules kFirstRules{false, false, nullptr};
inline constexpr SelectRules kFastRules{false, true, nullptr};
inline constexpr SelectRules kThirdRules{true, false, nullptr};

// A call after its checks.
struct SelectCall {
  const uint8_t* gray;
  int32_t grayStep;
  DaxiSize size;
  const DaxiDomainList* domains;
  int32_t domainCount;
  BlobSelectResult* result;
  const BlobSelectCfg* cfg;
  void* buffer;
  SelectRules rules;
};

// What the stages read, and the scratch memory that feature calculators use.
struct SelectContext {
  const BlobSelectCfg& cfg;
  const SelectRules& rules;
  const uint8_t* gray;
  int32_t grayStep;
  DaxiSize size;
  const DaxiDomainList& domains;
  DomainBitmap bitmap;
  DaxiPoint32s* hull;

  DomainView view(const DaxiDomain& domain) const { return viewDomain(domains, domain, size); }
  DomainView view(const BlobInfo& blob) const { return view(*blob.domain); }
};

// What the features of one domain need.
struct FeatureScratch {
  FeatureScratch(BufferLayout& layout, DaxiSize size)
      : bitmap(layout.add<uint8_t>(DomainBitmap::bytes(size))),
        hull(layout.add<DaxiPoint32s>(DAXI_HULL_POINTS(size.height))) {}
  BufferPiece<uint8_t> bitmap;
  BufferPiece<DaxiPoint32s> hull;
};

// A context over a scratch in `buffer`. Its bitmap must be clear before features are calculated.
SelectContext makeContext(const SelectCall& call, const FeatureScratch& at, void* buffer);

// The work buffer: room to order 20000 records, then a candidate record, then what the features need.
struct SelectScratch {
  explicit SelectScratch(DaxiSize size)
      : order(layout.add<BlobInfo*>(DAXI_BLOB_MAX_COUNT)), candidate(layout.add<BlobInfo>(1)), features(layout, size) {}
  BufferLayout layout;
  BufferPiece<BlobInfo*> order;
  BufferPiece<BlobInfo> candidate;
  FeatureScratch features;
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

// The order of ranks by a sort key: better blobs first, equal ones by label. A NaN, which only records of a caller's
// own can hold, ranks last.
struct Ranking {
  uint32_t key;
  bool descending;

  bool operator()(const BlobInfo& a, const BlobInfo& b) const;
  bool operator()(const BlobInfo* a, const BlobInfo* b) const { return (*this)(*a, *b); }
};

// Which blobs are kept when more pass than there is room for. Without an order these are the largest.
Ranking keepRanking(const BlobSelectCfg& cfg);

// The blobs kept so far.
struct KeptBlobs {
  BlobInfo* array;
  int32_t count;
};

// A full set of kept blobs as a heap, whose root is the one that ranks last.
class KeptHeap {
 public:
  KeptHeap() = default;
  KeptHeap(const KeptBlobs& kept, const Ranking& ranking, BlobInfo** order);
  // Takes the candidate in place of the root where it ranks before it. Candidates come by ascending label, so that this
  // asks for a strictly better key.
  void offer(const BlobInfo& candidate);

 private:
  Ranking ranking_ = {};
  BlobInfo** order_ = nullptr;
  BlobInfo** end_ = nullptr;
};

// Sorts by the configuration; `order` has room for all kept blobs.
void sortKept(const BlobSelectCfg& cfg, KeptBlobs& kept, BlobInfo** order, BlobInfo& spare);

// Measures area, rect, centroid; sets domain, label and class.
void calculateBasicFeatures(const SelectContext& context, const DaxiDomain& domain, BlobInfo& blob);

// Computes the feature groups of a blob that are not done yet.
void completeFeatures(const SelectContext& context, uint32_t done, BlobInfo& blob);

// The last stages: sorts, scores, and writes the result.
void finishSelect(const SelectCall& call, const SelectScratch& at, KeptBlobs& kept);

// Runs the stages on this thread.
void select(const SelectCall& call);

// Runs the features on the host's pool where there is one; returns the host's status.
DaxStatus selectOnPool(const SelectCall& call, uint32_t threads, void* pool);

// The checks of a call, in two halves: what comes before the check of the configuration, and what comes after.
DaxStatus checkPointers(const SelectCall& call);
DaxStatus checkRegion(const SelectCall& call, const uint8_t* image2, int32_t step2);
DaxStatus checkDomainCount(const SelectCall& call);
DaxStatus checkSelect(const SelectCall& call, const uint8_t* image2, int32_t step2);

}  // namespace dax

extern "C" {

DaxStatus DAXI_BlobSelect_check_cfg(const BlobSelectCfg* cfg);

// Feature calculators. They need the basic features.
void DAXI_BlobSelect_calculate_circularity(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_circularity_and_contourlen(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_principal_axis_angle(const dax::SelectContext* context, BlobInfo* blob);
void DAXI_BlobSelect_calculate_base_on_box(const dax::SelectContext* context, BlobInfo* blob);

// Outside pixels, stored in the record; whether they are within the limit. Without and with a mask.
bool DAXI_BlobSelect_by_out_pixel_num_roi_rect(const dax::SelectContext* context, BlobInfo* blob);
bool DAXI_BlobSelect_by_out_pixel_num_mask_img(const dax::SelectContext* context, BlobInfo* blob);

void DAXI_BlobSelect_create_cascade_filter(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                           dax::Cascade* cascade);

// The fourth version's configuration as one of the first: areas as floats, everything else as it stands; and its check.
void DAXI_BlobSelectV4_transform_cfg(const BlobSelectV4Cfg* cfg, BlobSelectCfg* common);
DaxStatus DAXI_BlobSelectV4_check_cfg(const BlobSelectV4Cfg* cfg);

// First pass: keeps blobs that pass, in label order, until maxCount are kept; returns the first label not examined.
int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept);

// Second pass, over the labels from `next` on: a blob that passes and ranks before the worst of the kept replaces it.
void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate);

// Computes the groups that the cascade did not.
void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept);

void DAXI_BlobSelect_blob_score_calculator(const BlobSelectCfg* cfg, const dax::SelectRules* rules,
                                           dax::KeptBlobs* kept);
}
