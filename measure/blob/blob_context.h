// A call of blob selection as its stages see it.
#pragma once

#include "daxi/blob_select_v4.h"
#include "daxi/region.h"
#include "frame/memory/work_buffer.h"
#include "measure/region/contour.h"
#include "measure/region/domain_runs.h"

namespace dax {

// Differences between the versions of selection.
struct SelectRules {
  bool countsOutside;         // whether filter 0x800 acts
  bool basicOnly;             // no features but area, rect and centroid
  const BlobSelectV4Cfg* v4;  // ranges of area in whole pixels, or null
};
inline constexpr SelectRules kFirstRules{false, false, nullptr};
inline constexpr SelectRules kFastRules{false, true, nullptr};
inline constexpr SelectRules kThirdRules{true, false, nullptr};

// The arguments of a call.
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

// Input of the stages, and the scratch memory of the feature calculators.
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

// Scratch memory for the features of one domain.
struct FeatureScratch {
  FeatureScratch(BufferLayout& layout, DaxiSize size)
      : bitmap(layout.add<uint8_t>(DomainBitmap::bytes(size))),
        hull(layout.add<DaxiPoint32s>(DAXI_HULL_POINTS(size.height))) {}
  BufferPiece<uint8_t> bitmap;
  BufferPiece<DaxiPoint32s> hull;
};

// The work buffer: room to order 20000 records, a candidate record, and the scratch of the features.
struct SelectScratch {
  explicit SelectScratch(DaxiSize size)
      : order(layout.add<BlobInfo*>(DAXI_BLOB_MAX_COUNT)), candidate(layout.add<BlobInfo>(1)), features(layout, size) {}
  BufferLayout layout;
  BufferPiece<BlobInfo*> order;
  BufferPiece<BlobInfo> candidate;
  FeatureScratch features;
};

// A context over a scratch in `buffer`. Its bitmap must be cleared before features are calculated.
inline SelectContext makeContext(const SelectCall& call, const FeatureScratch& at, void* buffer) {
  const DomainBitmap bitmap(at.bitmap.in(buffer), call.size);
  return {*call.cfg, call.rules, call.gray, call.grayStep, call.size, *call.domains, bitmap, at.hull.in(buffer)};
}

// The blobs kept so far.
struct KeptBlobs {
  BlobInfo* array;
  int32_t count;
};

}  // namespace dax
