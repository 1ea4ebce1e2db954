#include "pcl/search/kdtree_v2_search.h"

#include <algorithm>
#include <cfloat>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/tiles.h"
#include "pcl/search/kdtree_nearest.h"
#include "pcl/search/kdtree_radius.h"
#include "pcl/search/kdtree_walk.h"

namespace dax {
namespace {

DaxStatus checkNearest(const DAX3DPCL_KDTREE_V2* tree, const KdNearestCall& call, int32_t d, const int32_t* count,
                       const void* stack) {
  DAX_REQUIRE(tree && call.queries && call.indices && call.distances && count && stack, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(d >= 1 && call.k >= 1 && call.queryCount >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!tree->root || tree->dimension == d, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkRadius(const DAX3DPCL_KDTREE_V2* tree, const KdRadiusCall& call, int32_t d, int32_t queryCount,
                      const int32_t* count, const void* stack) {
  DAX_REQUIRE(tree && call.query && call.indices && call.distances && count && stack, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(d >= 1 && call.maxResults >= 1 && queryCount >= 1 && call.radius >= -FLT_EPSILON, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!tree->root || tree->dimension == d, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// One stack per worker. There are fewer pending regions than points, so slices of that many entries fit both kinds of
// buffer.
class WorkerStacks {
 public:
  WorkerStacks(void* buffer, int32_t pointCount) : buffer_(static_cast<char*>(buffer)) {
    BufferLayout one;
    one.add<KdPending>(static_cast<uint32_t>(pointCount));
    bytes_ = one.total();
  }
  void* of(uint32_t worker) const { return buffer_ + worker * bytes_; }

 private:
  char* buffer_;
  uint64_t bytes_;
};

// The rows first..end - 1 of a search.
KdNearestCall rowsOf(const KdNearestCall& call, int32_t d, int32_t first, int32_t end) {
  const ptrdiff_t row = ptrdiff_t{first} * call.k;
  return {
      call.queries + ptrdiff_t{first} * d, end - first, call.k, call.indices + row, call.distances + row, call.limit};
}

KdRadiusCall rowOf(const KdRadiusCall& call, int32_t d, int32_t i) {
  const ptrdiff_t row = ptrdiff_t{i} * call.maxResults;
  return {call.query + ptrdiff_t{i} * d, call.maxResults, call.indices + row,
          call.distances + row,          call.radius,     call.mask};
}

// Runs a tile function over all queries: on the pool if there is one, else as a single tile.
template <class Tile>
DaxStatus overQueries(void* pool, uint32_t threads, int32_t queryCount, const Tile& tile) {
  if (!hasPool(pool, threads)) return tile(0, queryCount, 0);
  return runTiles(pool, threads, queryCount, 1, tile);
}

// Point numbers in ascending order of distance, ties by number.
void sortByDistance(const uint32_t* indices, const float* distances, int32_t count, uint32_t* list) {
  for (int32_t i = 0; i < count; ++i) list[i] = static_cast<uint32_t>(i);
  std::sort(list, list + count, [=](uint32_t a, uint32_t b) {
    if (distances[a] != distances[b]) return distances[a] < distances[b];
    return indices[a] < indices[b];
  });
  for (int32_t i = 0; i < count; ++i) list[i] = indices[list[i]];
}

}  // namespace
}  // namespace dax

void _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* queries, int32_t queryCount,
                                               int32_t, int32_t k, uint32_t* indices, float* distances, int32_t* count,
                                               void* stack) {
  const dax::KdView view(*tree);
  dax::searchNearest(view, {queries, queryCount, k, indices, distances}, stack, dax::currentIsa());
  *count = dax::nearestCount(view, k);
}

void _DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t,
                                               int32_t maxResults, uint32_t* indices, float* distances, int32_t* count,
                                               void* stack, float radius) {
  const dax::KdRadiusCall call{query, maxResults, indices, distances, radius, nullptr};
  *count = dax::searchRadius(dax::KdView(*tree), call, stack, dax::currentIsa());
}

void _DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t,
                                                   int32_t maxResults, uint32_t* indices, float* distances,
                                                   int32_t* count, void* stack, float radius, const uint8_t* mask,
                                                   uint32_t* list) {
  const dax::KdRadiusCall call{query, maxResults, indices, distances, radius, mask};
  *count = dax::searchRadius(dax::KdView(*tree), call, stack, dax::currentIsa());
  dax::sortByDistance(indices, distances, *count, list);
}

DaxStatus _DAX3DPCL_KDTREE_KNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t k,
                                             uint32_t* indices, float* distances, int32_t* count, void* stack) {
  const dax::KdView view(*tree);
  const dax::KdNearestCall call{queries, queryCount, k, indices, distances};
  const dax::WorkerStacks stacks(stack, view.pointCount);
  const auto tile = [&](int32_t first, int32_t end, uint32_t worker) -> DaxStatus {
    dax::searchNearest(view, dax::rowsOf(call, d, first, end), stacks.of(worker), dax::currentIsa());
    return DAX_STS_OK;
  };
  DAX_REQUIRE_OK(dax::overQueries(pool, threads, queryCount, tile));
  *count = dax::nearestCount(view, k);
  return DAX_STS_OK;
}

DaxStatus _DAX3DPCL_KDTREE_RNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                             const float* queries, int32_t queryCount, int32_t d, int32_t maxResults,
                                             uint32_t* indices, float* distances, int32_t* counts, void* stack,
                                             float radius) {
  const dax::KdView view(*tree);
  const dax::KdRadiusCall call{queries, maxResults, indices, distances, radius, nullptr};
  const dax::WorkerStacks stacks(stack, view.pointCount);
  const auto tile = [&](int32_t first, int32_t end, uint32_t worker) -> DaxStatus {
    for (int32_t i = first; i < end; ++i) {
      counts[i] = dax::searchRadius(view, dax::rowOf(call, d, i), stacks.of(worker), dax::currentIsa());
    }
    return DAX_STS_OK;
  };
  return dax::overQueries(pool, threads, queryCount, tile);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* queries,
                                                   int32_t queryCount, int32_t d, int32_t k, uint32_t* indices,
                                                   float* distances, int32_t* count, void* stack) {
  DAX_REQUIRE_OK(dax::checkNearest(tree, {queries, queryCount, k, indices, distances}, d, count, stack));
  _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(tree, queries, queryCount, d, k, indices, distances, count, stack);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t d,
                                                   int32_t maxResults, uint32_t* indices, float* distances,
                                                   int32_t* count, void* stack, float radius) {
  DAX_REQUIRE_OK(dax::checkRadius(tree, {query, maxResults, indices, distances, radius, nullptr}, d, 1, count, stack));
  _DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(tree, query, d, maxResults, indices, distances, count, stack, radius);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(const DAX3DPCL_KDTREE_V2* tree, const float* query, int32_t d,
                                                       int32_t maxResults, uint32_t* indices, float* distances,
                                                       int32_t* count, void* stack, float radius, const uint8_t* mask,
                                                       uint32_t* list) {
  DAX_REQUIRE(mask && list, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkRadius(tree, {query, maxResults, indices, distances, radius, mask}, d, 1, count, stack));
  _DAX3DPCL_SEARCH_KDTREE_RNearestSearchMask_V2(tree, query, d, maxResults, indices, distances, count, stack, radius,
                                                mask, list);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_KDTREE_KNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                            const float* queries, int32_t queryCount, int32_t d, int32_t k,
                                            uint32_t* indices, float* distances, int32_t* count, void* stack) {
  DAX_REQUIRE_OK(dax::checkNearest(tree, {queries, queryCount, k, indices, distances}, d, count, stack));
  return _DAX3DPCL_KDTREE_KNearestSearch_MT(pool, threads, tree, queries, queryCount, d, k, indices, distances, count,
                                            stack);
}

DaxStatus DAX3DPCL_KDTREE_RNearestSearch_MT(void* pool, uint32_t threads, const DAX3DPCL_KDTREE_V2* tree,
                                            const float* queries, int32_t queryCount, int32_t d, int32_t maxResults,
                                            uint32_t* indices, float* distances, int32_t* counts, void* stack,
                                            float radius) {
  DAX_REQUIRE_OK(
      dax::checkRadius(tree, {queries, maxResults, indices, distances, radius, nullptr}, d, queryCount, counts, stack));
  return _DAX3DPCL_KDTREE_RNearestSearch_MT(pool, threads, tree, queries, queryCount, d, maxResults, indices, distances,
                                            counts, stack, radius);
}
