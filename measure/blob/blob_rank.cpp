#include "measure/blob/blob_rank.h"

#include <algorithm>
#include <cmath>

namespace dax {
namespace {

float floatKey(const BlobInfo& blob, uint32_t key) {
  switch (key) {
    case DAXI_BLOB_KEY_PERIMETER:
      return blob.perimeter;
    case DAXI_BLOB_KEY_CIRCULARITY:
      return blob.circularity;
    case DAXI_BLOB_KEY_RECTANGULARITY:
      return blob.rectangularity;
    case DAXI_BLOB_KEY_CENTROID_X:
      return blob.centroidX;
    case DAXI_BLOB_KEY_CENTROID_Y:
      return blob.centroidY;
    case DAXI_BLOB_KEY_BOX_ANGLE:
      return blob.boxAngle;
    case DAXI_BLOB_KEY_BOX_WIDTH:
      return blob.boxWidth;
    case DAXI_BLOB_KEY_BOX_HEIGHT:
      return blob.boxHeight;
    case DAXI_BLOB_KEY_PRINCIPAL_ANGLE:
      return blob.principalAngle;
    case DAXI_BLOB_KEY_AXIS_RATIO:
      return blob.axisRatio;
    default:
      return blob.area;
  }
}

template <class Key>
bool ranksBefore(Key a, Key b, bool descending, uint32_t labelA, uint32_t labelB) {
  if (a < b) return !descending;
  if (a > b) return descending;
  const bool nanA = std::isnan(a), nanB = std::isnan(b);
  return nanA == nanB ? labelA < labelB : nanB;
}

// Moves every record to its slot, one cycle of the permutation after the other. order[i] points to the record that
// belongs into slot i; for a slot that is done it points to the slot itself.
void applyOrder(BlobInfo* array, BlobInfo** order, int32_t count, BlobInfo& spare) {
  for (int32_t start = 0; start < count; ++start) {
    if (order[start] == array + start) continue;
    spare = array[start];
    ptrdiff_t slot = start;
    while (order[slot] != array + start) {
      const ptrdiff_t from = order[slot] - array;
      array[slot] = array[from];
      order[slot] = array + slot;
      slot = from;
    }
    array[slot] = spare;
    order[slot] = array + slot;
  }
}

void pointToAll(const KeptBlobs& kept, BlobInfo** order) {
  for (int32_t i = 0; i < kept.count; ++i) order[i] = kept.array + i;
}

}  // namespace

bool Ranking::operator()(const BlobInfo& a, const BlobInfo& b) const {
  switch (key) {
    case DAXI_BLOB_KEY_RECT_X:
      return ranksBefore(a.rectX, b.rectX, descending, a.label, b.label);
    case DAXI_BLOB_KEY_RECT_Y:
      return ranksBefore(a.rectY, b.rectY, descending, a.label, b.label);
    default:
      return ranksBefore(floatKey(a, key), floatKey(b, key), descending, a.label, b.label);
  }
}

Ranking keepRanking(const BlobSelectCfg& cfg) {
  if (cfg.sortOrder == DAXI_BLOB_UNSORTED) return {DAXI_BLOB_KEY_AREA, true};
  return {cfg.sortKey, cfg.sortOrder == DAXI_BLOB_DESCENDING};
}

KeptHeap::KeptHeap(const KeptBlobs& kept, const Ranking& ranking, BlobInfo** order)
    : ranking_(ranking), order_(order), end_(order + kept.count) {
  pointToAll(kept, order);
  std::make_heap(order_, end_, ranking_);
}

void KeptHeap::offer(const BlobInfo& candidate) {
  if (!ranking_(candidate, *order_[0])) return;
  std::pop_heap(order_, end_, ranking_);
  *end_[-1] = candidate;
  std::push_heap(order_, end_, ranking_);
}

void sortKept(const BlobSelectCfg& cfg, KeptBlobs& kept, BlobInfo** order, BlobInfo& spare) {
  if (cfg.sortOrder == DAXI_BLOB_UNSORTED) return;
  pointToAll(kept, order);
  std::sort(order, order + kept.count, keepRanking(cfg));
  applyOrder(kept.array, order, kept.count, spare);
}

}  // namespace dax
