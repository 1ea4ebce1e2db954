#include "pcl/search/kdtree_v2.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "pcl/search/kdtree_build.h"
#include "pcl/search/kdtree_walk.h"

namespace dax {
namespace {

// The offsets do not depend on the number of nodes.
void placePieces(DAX3DPCL_KDTREE_V2& tree) {
  const KdLayoutV2 at(tree.pointCount, std::max(tree.dimension, 0), 1);
  tree.points = at.points.in(&tree);
  tree.index = at.index.in(&tree);
  tree.rootBox = at.rootBox.in(&tree);
  tree.nodes = at.nodes.in(&tree);
}

DaxStatus treeSize(int32_t n, int32_t d, uint64_t nodes, uint64_t* bytes) {
  return KdLayoutV2(n, d, nodes).layout.store(bytes);
}

DaxStatus buildStackSize(int32_t d, uint64_t boxes, uint64_t* bytes) {
  BufferLayout layout;
  addRows<float>(layout, 2 * boxes, d);
  return layout.store(bytes);
}

DaxStatus searchStackSize(uint64_t entries, uint32_t threads, uint64_t* bytes) {
  BufferLayout one, all;
  one.add<KdPending>(entries);
  all.addSlices(one.total(), threads);
  return all.store(bytes);
}

using SizeQuery = DaxStatus (*)(int32_t, int32_t, uint64_t*);
DaxStatus checkedSize(int32_t n, int32_t d, uint64_t* bytes, SizeQuery query) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && d >= 1, DAX_STS_BAD_PARAM);
  return query(n, d, bytes);
}

using StackQuery = DaxStatus (*)(int32_t, uint32_t, uint64_t*);
DaxStatus checkedStackSize(int32_t n, uint32_t threads, uint64_t* bytes, StackQuery query) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && threads >= 1 && threads <= 64, DAX_STS_BAD_PARAM);
  return query(n, threads, bytes);
}

DaxStatus checkBuild(const DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d, int32_t leafSize,
                     const void* stack) {
  DAX_REQUIRE(tree && points && stack, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && d >= 1 && leafSize >= 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace

void buildKdTreeV2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, void* stack,
                   uint64_t room, int32_t isa) {
  startRecord(tree, n, d, leafSize);
  placePieces(*tree);
  if (d < 1 || leafSize < 1) return;
  const KdBuild build{tree->points, tree->index, tree->rootBox, tree->nodes, static_cast<float*>(stack), room, n, d,
                      leafSize};
  tree->nodeCount = buildTree(build, points, isa);
  tree->root = tree->nodes;
}

}  // namespace dax

DaxStatus _DAX3DPCL_SEARCH_KDTREE_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes) {
  return dax::treeSize(n, d, dax::maxNodes(n), bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes) {
  return dax::treeSize(n, d, dax::innerNodes(n), bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize(int32_t n, int32_t d, uint64_t* bytes) {
  return dax::buildStackSize(d, dax::maxNodes(n), bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner(int32_t n, int32_t d, uint64_t* bytes) {
  return dax::buildStackSize(d, dax::innerNodes(n), bytes);
}

void _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d,
                                           int32_t leafSize, void* stack) {
  dax::buildKdTreeV2(tree, points, n, d, leafSize, stack, dax::maxNodes(n), dax::currentIsa());
}

void _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d,
                                                 int32_t leafSize, void* stack) {
  dax::buildKdTreeV2(tree, points, n, d, leafSize, stack, dax::innerNodes(n), dax::currentIsa());
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(int32_t n, uint64_t* bytes) {
  return dax::searchStackSize(dax::maxNodes(n), 1, bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner(int32_t n, uint64_t* bytes) {
  return dax::searchStackSize(dax::innerNodes(n), 1, bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(int32_t n, uint32_t threads, uint64_t* bytes) {
  return dax::searchStackSize(dax::maxNodes(n), threads, bytes);
}

DaxStatus _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(int32_t n, uint32_t threads, uint64_t* bytes) {
  return dax::searchStackSize(dax::innerNodes(n), threads, bytes);
}

void _DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(DAX3DPCL_KDTREE_V2* tree) {
  const dax::KdNode* const oldRoot = tree->root;
  if (!oldRoot) return;
  dax::placePieces(*tree);
  if (oldRoot != tree->nodes) tree->root = dax::rebaseNodes(tree->nodes, tree->nodeCount, oldRoot);
}

#define DAX_KDTREE_SIZE(NAME)                                        \
  DaxStatus DAX3DPCL_##NAME(int32_t n, int32_t d, uint64_t* bytes) { \
    return dax::checkedSize(n, d, bytes, _DAX3DPCL_##NAME);          \
  }
DAX_KDTREE_SIZE(SEARCH_KDTREE_V2_BufferSize)
DAX_KDTREE_SIZE(SEARCH_KDTREE_V2_BufferSize_Inner)
DAX_KDTREE_SIZE(SEARCH_KDTREE_Build_V2_BufferSize)
DAX_KDTREE_SIZE(SEARCH_KDTREE_Build_V2_BufferSize_Inner)
#undef DAX_KDTREE_SIZE

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize(int32_t n, uint64_t* bytes) {
  return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(n, 1, bytes);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize_Inner(int32_t n, uint64_t* bytes) {
  return DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(n, 1, bytes);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize(int32_t n, uint32_t threads, uint64_t* bytes) {
  return dax::checkedStackSize(n, threads, bytes, _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(int32_t n, uint32_t threads, uint64_t* bytes) {
  return dax::checkedStackSize(n, threads, bytes, _DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n, int32_t d,
                                               int32_t leafSize, void* stack) {
  DAX_REQUIRE_OK(dax::checkBuild(tree, points, n, d, leafSize, stack));
  _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree, points, n, d, leafSize, stack);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(DAX3DPCL_KDTREE_V2* tree, const float* points, int32_t n,
                                                     int32_t d, int32_t leafSize, void* stack) {
  DAX_REQUIRE_OK(dax::checkBuild(tree, points, n, d, leafSize, stack));
  _DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(tree, points, n, d, leafSize, stack);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(DAX3DPCL_KDTREE_V2* tree) {
  DAX_REQUIRE(tree, DAX_STS_NULL_POINTER);
  _DAX3DPCL_SEARCH_KDTREE_HandleRerange_V2(tree);
  return DAX_STS_OK;
}
