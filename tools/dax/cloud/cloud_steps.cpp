#include "cloud/cloud_steps.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>

#include "base/failure.h"
#include "dax/threadpool.h"
#include "dax3dpcl/kdtree_v2.h"
#include "dax3dpcl/normals.h"
#include "dax3dpcl/voxel_grid.h"

namespace dax::tool {
namespace {

constexpr int32_t kLeafSize = 10;
constexpr size_t kBlock = 16384;  // points searched between two updates of the counter

int32_t pointCount(const Cloud& cloud) {
  if (cloud.size() <= static_cast<size_t>(std::numeric_limits<int32_t>::max()))
    return static_cast<int32_t>(cloud.size());
  throw Failure(ExitStatus::kRefused, "the cloud has too many points");
}

// A tree over a cloud, and the stacks of the threads that search it.
class Tree {
 public:
  Tree(const Cloud& cloud, const Workers& workers)
      : workers_(workers), count_(pointCount(cloud)), block_(treeBytes()), stack_(stackBytes()) {
    uint64_t bytes = 0;
    check(DAX3DPCL_SEARCH_KDTREE_Build_V2_BufferSize_Inner(count_, 3, &bytes), "tree");
    const Memory scratch(bytes);
    check(DAX3DPCL_SEARCH_KDTREE_BuildIndex_V2_Inner(tree(), cloud.points.data(), count_, 3, kLeafSize, scratch.get()),
          "tree");
  }

  // Returns the number of neighbours in each row.
  int search(const float* queries, int32_t queryCount, int k, uint32_t* indices, float* distances) const {
    int32_t found = 0;
    check(DAX3DPCL_KDTREE_KNearestSearch_MT(workers_.pool, workers_.count, tree(), queries, queryCount, 3, k, indices,
                                            distances, &found, stack_.get()),
          "search");
    return found;
  }

 private:
  DAX3DPCL_KDTREE_V2* tree() const { return static_cast<DAX3DPCL_KDTREE_V2*>(block_.get()); }

  uint64_t treeBytes() const {
    uint64_t bytes = 0;
    check(DAX3DPCL_SEARCH_KDTREE_V2_BufferSize_Inner(count_, 3, &bytes), "tree");
    return bytes;
  }

  uint64_t stackBytes() const {
    uint64_t bytes = 0;
    check(DAX3DPCL_SEARCH_KDTREE_KNearestSearch_V2_mt_BufferSize_Inner(count_, workers_.count, &bytes), "search");
    return bytes;
  }

  Workers workers_;
  int32_t count_;
  Memory block_;
  Memory stack_;
};

// Calls use(i) for i of 0..total - 1 on the pool; `use` must not throw.
template <class Use>
void onPool(const Workers& workers, int32_t total, const Use& use) {
  struct Tiles {
    const Use& use;
    int32_t total, size;
  } tiles = {use, total, std::max(1, total / (4 * static_cast<int32_t>(workers.count)))};
  const DaxTileFunction tile = [](void* context, uint32_t first, int32_t /*bound*/, uint32_t /*worker*/) -> DaxStatus {
    const Tiles& t = *static_cast<const Tiles*>(context);
    const auto begin = static_cast<int32_t>(first);
    for (int32_t i = begin; i < std::min(t.total, begin + t.size); ++i) t.use(i);
    return DAX_STS_OK;
  };
  check(DAX_THREADPOOL_Compute1DTiled(workers.pool, tile, &tiles, total, tiles.size), "pool");
}

// The normal of one point, from the neighbours in `row`.
DAX3DPCL_NORMAL normalOf(const Cloud& cloud, const float* point, std::span<const uint32_t> row,
                         std::span<const float> distances, const NormalSettings& settings,
                         std::atomic<size_t>& missing) {
  std::array<float, size_t{3} * kMaxNeighbours> near;
  int32_t count = 0;
  for (size_t i = 0; i < row.size() && distances[i] < settings.radius * settings.radius; ++i) {
    // From the point itself, since the sums of floats lose as many digits as the neighbourhood is far from 0.
    const float* const neighbour = cloud.points.data() + size_t{3} * row[i];
    std::transform(neighbour, neighbour + 3, point, near.data() + 3 * count++, std::minus<>());
  }
  DAX3DPCL_NORMAL normal = {0, 0, 1, 0};
  int32_t estimated = 0;
  DAX3DPCL_FEATURE_NORM_Compute_32f(near.data(), count, &normal, &estimated);
  if (estimated == 0) {
    normal = {0, 0, 1, 0};
    ++missing;
  }
  if (settings.viewpoint) DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(&normal, point, &settings.viewpoint->x);
  return normal;
}

}  // namespace

void forNeighbours(const Cloud& cloud, int k, const Workers& workers,
                   const std::function<void(const Neighbours& block)>& use) {
  const Tree tree(cloud, workers);
  std::vector<uint32_t> indices(std::min(kBlock, cloud.size()) * k);
  std::vector<float> distances(indices.size());
  Progress progress(cloud.size(), "points");
  for (size_t first = 0; first < cloud.size(); first += kBlock) {
    const size_t count = std::min(kBlock, cloud.size() - first);
    const int found =
        tree.search(cloud.points.data() + 3 * first, static_cast<int32_t>(count), k, indices.data(), distances.data());
    use({first, found, {indices.data(), count * k}, {distances.data(), count * k}});
    progress.advance(count);
  }
}

size_t estimateNormals(Cloud& cloud, const NormalSettings& settings, const Workers& workers) {
  std::atomic<size_t> missing = 0;
  std::vector<float> normals(4 * cloud.size());
  const size_t k = settings.k;
  forNeighbours(cloud, settings.k, workers, [&](const Neighbours& block) {
    onPool(workers, static_cast<int32_t>(block.indices.size() / k), [&](int32_t i) {
      const size_t row = k * i, point = block.first + i;
      const DAX3DPCL_NORMAL normal =
          normalOf(cloud, cloud.points.data() + 3 * point, block.indices.subspan(row, block.found),
                   block.distances.subspan(row, block.found), settings, missing);
      const float values[] = {normal.nx, normal.ny, normal.nz, normal.curvature};
      std::copy_n(values, 4, normals.data() + 4 * point);
    });
  });
  cloud.normals = std::move(normals);
  return missing;
}

Cloud downsample(const Cloud& cloud, const DAX3D_VECTOR_32F& leaf) {
  const int32_t count = pointCount(cloud);
  const DAX3DPCL_CLOUD3D source = {count, count, const_cast<float*>(cloud.points.data())};
  uint64_t workBytes = 0, resultBytes = 0;
  check(DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(count, &workBytes), "voxel grid");
  check(DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(count, &resultBytes), "voxel grid");
  const Memory work(workBytes), result(resultBytes);
  const Box box = boxOf(cloud);
  const float corners[] = {box.low[0], box.low[1], box.low[2], box.high[0], box.high[1], box.high[2]};
  DAX3DPCL_CLOUD3D* thinned = nullptr;
  const DaxStatus status =
      DAX3DPCL_PREP_SAMPLE_VoxelGrid(&source, corners, &thinned, result.get(), work.get(), leaf.x, leaf.y, leaf.z);
  check(status,
        status == DAX_STS_BAD_PARAM ? "voxel grid of more than 2147483647 cells (--leaf too small)" : "voxel grid");
  Cloud sampled;
  sampled.origin = cloud.origin;
  sampled.isWide = cloud.isWide;
  sampled.points.assign(thinned->points, thinned->points + ptrdiff_t{3} * thinned->count);
  return sampled;
}

double usualSpacing(const Cloud& cloud) {
  constexpr size_t kSamples = 4096;
  constexpr int kNeighbours = 8;  // some may coincide with the point
  const Tree tree(cloud, {});
  std::vector<float> spacings;
  std::array<uint32_t, kNeighbours> indices;
  std::array<float, kNeighbours> distances;
  const size_t step = std::max<size_t>(1, cloud.size() / kSamples);
  for (size_t i = 0; i < cloud.size(); i += step) {
    const int found = tree.search(cloud.points.data() + 3 * i, 1, kNeighbours, indices.data(), distances.data());
    float* const end = distances.data() + found;
    float* const other = std::find_if(distances.data(), end, [](float square) { return square > 0; });
    if (other != end) spacings.push_back(std::sqrt(*other));
  }
  if (spacings.empty()) return 0;
  const auto middle = spacings.begin() + static_cast<ptrdiff_t>(spacings.size() / 2);
  std::nth_element(spacings.begin(), middle, spacings.end());
  return *middle;
}

Box boxOf(const Cloud& cloud) {
  Box box;
  std::copy_n(cloud.points.data(), 3, box.low);
  std::copy_n(cloud.points.data(), 3, box.high);
  for (size_t i = 3; i < cloud.points.size(); ++i) {
    box.low[i % 3] = std::min(box.low[i % 3], cloud.points[i]);
    box.high[i % 3] = std::max(box.high[i % 3], cloud.points[i]);
  }
  return box;
}

}  // namespace dax::tool
