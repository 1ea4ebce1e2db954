#include "pcl/search/kdtree.h"

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "pcl/search/kdtree_build.h"
#include "pcl/search/kdtree_nearest.h"

namespace dax {
namespace {

// Sets all pointers but the root from the address of the block.
void placePieces(DAX3DPCL_KDTREE& tree) {
  const KdLayout at(tree.pointCount, std::max(tree.dimension, 0));
  tree.points = at.points.in(&tree);
  tree.work = at.work.in(&tree);
  tree.index = at.index.in(&tree);
  tree.rootBox = at.rootBox.in(&tree);
  tree.nodes = at.nodes.in(&tree);
  tree.boxStack = at.boxStack.in(&tree);
}

}  // namespace

void buildKdTree(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d, int32_t leafSize, int32_t isa) {
  startRecord(tree, n, d, leafSize);
  placePieces(*tree);
  if (d < 1 || leafSize < 1) return;
  const KdBuild build{tree->points, tree->index, tree->rootBox, tree->nodes, tree->boxStack, maxNodes(n), n, d,
                      leafSize};
  tree->nodeCount = buildTree(build, points, isa);
  tree->root = tree->nodes;
}

}  // namespace dax

DaxStatus _DAX3DPCL_SEARCH_KDTREE_BufferSize(int32_t n, int32_t d, uint64_t* bytes) {
  return dax::KdLayout(n, d).layout.store(bytes);
}

void _DAX3DPCL_SEARCH_KDTREE_BuildIndex(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d,
                                        int32_t leafSize) {
  dax::buildKdTree(tree, points, n, d, leafSize, dax::currentIsa());
}

void _DAX3DPCL_SEARCH_KDTREE_KNearestSearch(DAX3DPCL_KDTREE* tree, const float* queries, int32_t queryCount, int32_t,
                                            int32_t k, uint32_t* indices, float* distances, int32_t* count) {
  const dax::KdView view(*tree);
  dax::searchNearest(view, {queries, queryCount, k, indices, distances}, tree->boxStack, dax::currentIsa());
  *count = dax::nearestCount(view, k);
}

void _DAX3DPCL_SEARCH_KDTREE_HandleRerange(DAX3DPCL_KDTREE* tree) {
  const dax::KdNode* const oldRoot = tree->root;
  if (!oldRoot) return;
  dax::placePieces(*tree);
  if (oldRoot != tree->nodes) tree->root = dax::rebaseNodes(tree->nodes, tree->nodeCount, oldRoot);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_BufferSize(int32_t n, int32_t d, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && d >= 1, DAX_STS_BAD_PARAM);
  return _DAX3DPCL_SEARCH_KDTREE_BufferSize(n, d, bytes);
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_BuildIndex(DAX3DPCL_KDTREE* tree, const float* points, int32_t n, int32_t d,
                                            int32_t leafSize) {
  DAX_REQUIRE(tree && points, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && d >= 1 && leafSize >= 1, DAX_STS_BAD_PARAM);
  _DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points, n, d, leafSize);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_KNearestSearch(DAX3DPCL_KDTREE* tree, const float* queries, int32_t queryCount,
                                                int32_t d, int32_t k, uint32_t* indices, float* distances,
                                                int32_t* count) {
  DAX_REQUIRE(tree && queries && indices && distances && count, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(d >= 1 && k >= 1 && queryCount >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!tree->root || tree->dimension == d, DAX_STS_BAD_PARAM);
  _DAX3DPCL_SEARCH_KDTREE_KNearestSearch(tree, queries, queryCount, d, k, indices, distances, count);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_SEARCH_KDTREE_HandleRerange(DAX3DPCL_KDTREE* tree) {
  DAX_REQUIRE(tree, DAX_STS_NULL_POINTER);
  _DAX3DPCL_SEARCH_KDTREE_HandleRerange(tree);
  return DAX_STS_OK;
}
