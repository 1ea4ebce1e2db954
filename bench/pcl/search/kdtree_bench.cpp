#include "dax3dpcl/kdtree_v2.h"

#include "bench/pcl/search/surface.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using Memory = std::unique_ptr<uint8_t[]>;

template <class Query, class... Arguments>
Memory allocate(Query query, Arguments... arguments) {
  uint64_t bytes = 0;
  bench::require(query(arguments..., &bytes));
  return Memory(new uint8_t[bytes]);
}

struct Tree {
  std::vector<float> points = bench::wavySurface(bench::kPoints);
  Memory block = allocate(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, bench::kPoints, 3);
  Memory buildStack = allocate(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize, bench::kPoints, 3);
  Memory searchStack = allocate(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_BufferSize, bench::kPoints);

  Tree() { build(); }
  DAX3DPCL_KDTREE_V2* tree() const { return reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block.get()); }
  void build() {
    bench::require(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree(), points.data(), bench::kPoints, 3, bench::kLeafSize,
                                                        buildStack.get()));
  }
};

bench::Task prepareBuild() {
  const auto tree = std::make_shared<Tree>();
  return {[=] { tree->build(); }};
}

// The k nearest neighbours of each query; any exact search finds the same distances.
bench::Task prepareNearest(std::vector<float> queries, int32_t k) {
  const auto tree = std::make_shared<Tree>();
  const auto indices =
      std::make_shared<std::vector<uint32_t>>(static_cast<size_t>(bench::kPoints) * static_cast<size_t>(k));
  const auto distances = std::make_shared<std::vector<float>>(indices->size());
  return {[=] {
            int32_t count;
            bench::require(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2(tree->tree(), queries.data(), bench::kPoints, 3, k,
                                                                    indices->data(), distances->data(), &count,
                                                                    tree->searchStack.get()));
          },
          [=] { return bench::digest(distances->data(), distances->size() * sizeof(float)); }};
}

bench::Task prepareRadius() {
  constexpr int32_t kMax = 1000;
  const auto tree = std::make_shared<Tree>();
  const auto indices = std::make_shared<std::vector<uint32_t>>(kMax);
  const auto distances = std::make_shared<std::vector<float>>(kMax);
  const auto total = std::make_shared<uint64_t>();
  return {[=] {
            *total = 0;
            for (size_t i = 0; i < static_cast<size_t>(bench::kPoints); ++i) {
              int32_t count;
              bench::require(DAX3DPCL_SEARCH_KDTREE_RNearestSearch_V2(tree->tree(), &tree->points[3 * i], 3, kMax,
                                                                      indices->data(), distances->data(), &count,
                                                                      tree->searchStack.get(), bench::kRadius));
              *total += static_cast<uint64_t>(count);
            }
          },
          [=] { return *total; }};
}

constexpr size_t kCloudBytes = size_t{bench::kUsualPoints} * 12;

const bench::Own build{"tree of 100000 points", kCloudBytes, prepareBuild};
const bench::Own nearest{"16 nearest of every point", kCloudBytes,
                         [] { return prepareNearest(bench::wavySurface(bench::kPoints), bench::kNeighbours); }};
const bench::Own shifted{"nearest of every point, shifted", kCloudBytes,
                         [] { return prepareNearest(bench::shifted(bench::wavySurface(bench::kPoints)), 1); }};
const bench::Own radius{"all within radius 1 of every point", kCloudBytes, prepareRadius};

}  // namespace
