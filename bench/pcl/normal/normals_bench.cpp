#include "dax3dpcl/normals.h"

#include <cfloat>

#include "bench/pcl/search/surface.h"
#include "bench/support/operation.h"

namespace {

using Memory = std::unique_ptr<uint8_t[]>;

Memory allocate(DaxStatus (*query)(int32_t, int32_t, uint64_t*), int32_t second) {
  uint64_t bytes = 0;
  bench::require(query(bench::kPoints, second, &bytes));
  return Memory(new uint8_t[bytes]);
}

struct Estimation {
  std::vector<float> points = bench::wavySurface(bench::kPoints);
  Memory block = allocate(DAX3DPCL_SEARCH_KDTREE_BufferSize, 3);
  Memory buffer = allocate(DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize, bench::kNeighbours);
  std::vector<DAX3DPCL_NORMAL> normals = std::vector<DAX3DPCL_NORMAL>(bench::kPoints);

  void run() {
    auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE*>(block.get());
    const float above[3] = {0, 0, 100};
    bench::require(DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points.data(), bench::kPoints, 3, bench::kLeafSize));
    bench::require(DAX3DPCL_FEATURE_NORM_PCAEstimate(points.data(), bench::kPoints, tree, bench::kNeighbours, above,
                                                     normals.data(), buffer.get(), 1e9f));
  }
};

const bench::Own normals{"tree and normals of 100000 points", bench::kUsualPoints * sizeof(DAX3DPCL_NORMAL), [] {
                           const auto estimation = std::make_shared<Estimation>();
                           return bench::Task{[=] { estimation->run(); }};
                         }};

}  // namespace
