// Ranking blobs by a sort key: the heap of the best, and the final order.
#pragma once

#include "measure/blob/blob_context.h"

namespace dax {

// The order of ranks by a sort key: better blobs first, equal ones by label. A NaN ranks last; only records that the
// caller has filled can hold one.
struct Ranking {
  uint32_t key;
  bool descending;

  bool operator()(const BlobInfo& a, const BlobInfo& b) const;
  bool operator()(const BlobInfo* a, const BlobInfo* b) const { return (*this)(*a, *b); }
};

// Which blobs are kept when more pass than there is room for. Without a sort order these are the largest.
Ranking keepRanking(const BlobSelectCfg& cfg);

// A full set of kept blobs as a heap whose root is the blob that ranks last.
class KeptHeap {
 public:
  KeptHeap() = default;
  KeptHeap(const KeptBlobs& kept, const Ranking& ranking, BlobInfo** order);
  // Replaces the root by the candidate where the candidate ranks before it. Candidates come by ascending label: of
  // equal keys the earlier blob stays.
  void offer(const BlobInfo& candidate);

 private:
  Ranking ranking_ = {};
  BlobInfo** order_ = nullptr;
  BlobInfo** end_ = nullptr;
};

// Sorts as configured; `order` has room for all kept blobs.
void sortKept(const BlobSelectCfg& cfg, KeptBlobs& kept, BlobInfo** order, BlobInfo& spare);

}  // namespace dax
