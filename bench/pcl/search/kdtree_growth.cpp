// Scaling of the KD-tree and the normals: with the number of points, a thousand to two million, with the number of
// neighbours, and on the host's pool. Prints the tables of docs/performance.md, one of them, or one row. Native only.
//
// usage: kdtree_growth [pool | points [N] | neighbours [K]]
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/pcl/search/surface.h"
#include "bench/support/operation.h"
#include "bench/support/stopwatch.h"
#include "dax3dpcl.h"
#include "daxhost.h"

namespace {

using bench::fastest;
using bench::require;
using Memory = std::unique_ptr<uint8_t[]>;
constexpr int32_t kRounds = 3, kPooledRounds = 15;

template <class Query, class... Arguments>
Memory allocate(Query query, Arguments... arguments) {
  uint64_t bytes = 0;
  require(query(arguments..., &bytes));
  return Memory(new uint8_t[bytes]);
}

// A tree of the second generation and memory for the results of a search for all its points.
class Scene {
 public:
  Scene(int32_t n, int32_t k, uint32_t threads)
      : n_(n),
        points_(bench::wavySurface(n)),
        shifted_(bench::shifted(points_)),
        block_(allocate(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize, n, 3)),
        buildStack_(allocate(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize, n, 3)),
        stacks_(allocate(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize, n, threads)),
        indices_(static_cast<size_t>(n) * static_cast<size_t>(k)),
        distances_(indices_.size()),
        counts_(static_cast<size_t>(n)) {
    build();
  }

  void build() {
    require(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2(tree(), points_.data(), n_, 3, bench::kLeafSize, buildStack_.get()));
  }
  void nearest(int32_t k, void* pool = nullptr, uint32_t threads = 1) { search(points_, k, pool, threads); }
  void shifted() { search(shifted_, 1, nullptr, 1); }
  void radius(int32_t max, void* pool = nullptr, uint32_t threads = 1) {
    require(DAX3DPCL_KDTREE_RNearestSearch_MT(pool, threads, tree(), points_.data(), n_, 3, max, indices_.data(),
                                              distances_.data(), counts_.data(), stacks_.get(), bench::kRadius));
  }

 private:
  DAX3DPCL_KDTREE_V2* tree() const { return reinterpret_cast<DAX3DPCL_KDTREE_V2*>(block_.get()); }
  void search(const std::vector<float>& queries, int32_t k, void* pool, uint32_t threads) {
    require(DAX3DPCL_KDTREE_KNearestSearch_MT(pool, threads, tree(), queries.data(), n_, 3, k, indices_.data(),
                                              distances_.data(), counts_.data(), stacks_.get()));
  }

  int32_t n_;
  std::vector<float> points_, shifted_;
  Memory block_, buildStack_, stacks_;
  std::vector<uint32_t> indices_;
  std::vector<float> distances_;
  std::vector<int32_t> counts_;
};

double normals(int32_t n) {
  const std::vector<float> points = bench::wavySurface(n);
  const Memory block = allocate(DAX3DPCL_SEARCH_KDTREE_BufferSize, n, 3);
  const Memory buffer = allocate(DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize, n, bench::kNeighbours);
  std::vector<DAX3DPCL_NORMAL> found(static_cast<size_t>(n));
  auto* const tree = reinterpret_cast<DAX3DPCL_KDTREE*>(block.get());
  return fastest(kRounds, [&] {
    require(DAX3DPCL_SEARCH_KDTREE_BuildIndex(tree, points.data(), n, 3, bench::kLeafSize));
    require(DAX3DPCL_FEATURE_NORM_PCAEstimate(points.data(), n, tree, bench::kNeighbours, nullptr, found.data(),
                                              buffer.get(), 1e9f));
  });
}

// Row 0: all rows.
void printGrowth(int32_t row) {
  bench::printHead(
      {"points", "build ms", "build ns", "16 nearest ns", "nearest, shifted ns", "radius 1 ns", "normals ns"});
  for (const int32_t n : {1000, 10000, 100000, 500000, 2000000}) {
    if (row != 0 && row != n) continue;
    constexpr int32_t kMax = 64;
    Scene scene(n, kMax, 1);
    const double perPoint = 1e6 / n, build = fastest(kRounds, [&] { scene.build(); });
    const double nearest = fastest(kRounds, [&] { scene.nearest(bench::kNeighbours); });
    const double shifted = fastest(kRounds, [&] { scene.shifted(); });
    const double radius = fastest(kRounds, [&] { scene.radius(kMax); });
    std::printf("| %d | %.2f | %.0f | %.0f | %.0f | %.0f | %.0f |\n", n, build, build * perPoint, nearest * perPoint,
                shifted * perPoint, radius * perPoint, normals(n) * perPoint);
  }
}

void printNeighbours(int32_t row) {
  bench::printHead({"k", "ns / query", "ns / neighbour"});
  for (const int32_t k : {1, 4, 16, 32, 64, 65, 256, 1024, 4096}) {
    if (row != 0 && row != k) continue;
    Scene scene(10000, k, 1);
    const double time = fastest(kRounds, [&] { scene.nearest(k); }) * 1e6 / 10000;
    std::printf("| %d | %.0f | %.1f |\n", k, time, time / k);
  }
}

void printPool() {
  const uint32_t threads = std::max(std::thread::hardware_concurrency(), 1u);
  void* const pool = DAXHOST_CreatePool(threads);
  Scene scene(bench::kPoints, 64, threads);
  bench::printPoolHead(threads);
  bench::printPooled(
      "16 nearest of every point", kPooledRounds, [&] { scene.nearest(bench::kNeighbours); },
      [&] { scene.nearest(bench::kNeighbours, pool, threads); });
  bench::printPooled(
      "all within radius 1 of every point", kPooledRounds, [&] { scene.radius(64); },
      [&] { scene.radius(64, pool, threads); });
  DAXHOST_DestroyPool(pool);
}

}  // namespace

int main(int argc, char** argv) {
  const auto wanted = [&](const char* table) { return bench::wanted(argc, argv, table); };
  const int32_t row = argc > 2 ? std::atoi(argv[2]) : 0;
  if (wanted("pool")) printPool();
  if (wanted("points")) printGrowth(row);
  if (wanted("neighbours")) printNeighbours(row);
}
