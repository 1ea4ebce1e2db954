#include <nanoflann.hpp>

#include "bench/pcl/search/surface.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

struct Cloud {
  std::vector<float> points = bench::wavySurface(bench::kPoints);

  size_t kdtree_get_point_count() const { return bench::kPoints; }
  float kdtree_get_pt(size_t i, size_t axis) const { return points[3 * i + axis]; }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

using Index = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<float, Cloud>, Cloud, 3, uint32_t>;

struct Tree {
  Cloud cloud;
  Index index{3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(bench::kLeafSize)};

  // In newer versions the constructor builds the tree, so construction is not measured.
  Tree() { build(); }
  void build() { index.buildIndex(); }
};

bench::Task prepareBuild() {
  const auto tree = std::make_shared<Tree>();
  return {[=] { tree->build(); }};
}

bench::Task prepareNearest(std::vector<float> queries, size_t k) {
  const auto tree = std::make_shared<Tree>();
  const auto indices = std::make_shared<std::vector<uint32_t>>(bench::kPoints * k);
  const auto distances = std::make_shared<std::vector<float>>(indices->size());
  return {[=] {
            for (size_t i = 0; i < static_cast<size_t>(bench::kPoints); ++i) {
              tree->index.knnSearch(&queries[3 * i], k, &(*indices)[i * k], &(*distances)[i * k]);
            }
          },
          [=] { return bench::digest(distances->data(), distances->size() * sizeof(float)); }};
}

bench::Task prepareRadius() {
  const auto tree = std::make_shared<Tree>();
  const auto found = std::make_shared<std::vector<std::pair<uint32_t, float>>>();
  const auto total = std::make_shared<uint64_t>();
  return {[=] {
            nanoflann::SearchParams unsorted;
            unsorted.sorted = false;
            *total = 0;
            for (size_t i = 0; i < static_cast<size_t>(bench::kPoints); ++i) {
              *total += tree->index.radiusSearch(&tree->cloud.points[3 * i], bench::kRadius * bench::kRadius, *found,
                                                 unsorted);
            }
          },
          [=] { return *total; }};
}

const bench::Peer build{"tree of 100000 points", "nanoflann", prepareBuild};
const bench::Peer nearest{"16 nearest of every point", "nanoflann",
                          [] { return prepareNearest(bench::wavySurface(bench::kPoints), bench::kNeighbours); }};
const bench::Peer shifted{"nearest of every point, shifted", "nanoflann",
                          [] { return prepareNearest(bench::shifted(bench::wavySurface(bench::kPoints)), 1); }};
const bench::Peer radius{"all within radius 1 of every point", "nanoflann", prepareRadius};

}  // namespace
