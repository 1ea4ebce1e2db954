#include "pcl/normal/normals.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/memory/work_buffer.h"
#include "pcl/normal/normals_plane.h"
#include "pcl/search/kdtree_nearest.h"

namespace dax {
namespace {

struct NormalBuffer {
  explicit NormalBuffer(int32_t k)
      : indices(layout.add<uint32_t>(static_cast<uint32_t>(k))),
        distances(layout.add<float>(static_cast<uint32_t>(k))),
        gathered(layout.add<float>(uint64_t{3} * static_cast<uint32_t>(k))) {}
  BufferLayout layout;
  BufferPiece<uint32_t> indices;
  BufferPiece<float> distances, gathered;
};

constexpr DAX3DPCL_NORMAL kDefaultNormal{0, 0, 1, 0};

// Estimates the normals one by one, with the neighbourhood in the caller's buffer.
class NormalEstimator {
 public:
  NormalEstimator(const float* points, DAX3DPCL_KDTREE& tree, int32_t k, float radius, void* buffer)
      : points_(points), tree_(tree), stack_(tree.boxStack), radiusSquared_(radius * radius), isa_(currentIsa()) {
    const NormalBuffer at(k);
    tree_.index = nullptr;
    call_ = {nullptr, 1, k, at.indices.in(buffer), at.distances.in(buffer), FLT_MAX};
    gathered_ = at.gathered.in(buffer);
  }

  DAX3DPCL_NORMAL at(int32_t i) {
    DAX3DPCL_NORMAL normal = kDefaultNormal;
    const int32_t count = gather(points_ + ptrdiff_t{3} * i);
    if (count > 2) fitNormal(covariance(gathered_, count), normal);
    return normal;
  }

 private:
  // Copies the neighbours within the radius from the tree; returns their number.
  int32_t gather(const float* point) {
    const int32_t found = search(point);
    for (int32_t i = 0; i < found; ++i) {
      std::memcpy(gathered_ + ptrdiff_t{3} * i, tree_.row(call_.indices[i]), 3 * sizeof(float));
    }
    return found;
  }

  // The k neighbours of the previous point bound the search: the k nearest ones are not farther away than the farthest
  // of these. The margin of 0.1 % covers rounding; if fewer than k points are found, the search is repeated with the
  // radius.
  int32_t search(const float* point) {
    call_.queries = point;
    const float all = std::min(FLT_MAX, radiusSquared_);
    call_.limit = gatheredCount_ == call_.k ? std::min(all, farthestGathered(point) * 1.001f + FLT_MIN) : all;
    int32_t found = searchNearest(tree_, call_, stack_, isa_);
    if (found < call_.k && call_.limit < all) {
      call_.limit = all;
      found = searchNearest(tree_, call_, stack_, isa_);
    }
    gatheredCount_ = found;
    return found;
  }

  float farthestGathered(const float* point) const {
    float farthest = 0;
    for (const float *p = gathered_, *const end = p + ptrdiff_t{3} * gatheredCount_; p < end; p += 3) {
      const float x = p[0] - point[0], y = p[1] - point[1], z = p[2] - point[2];
      farthest = std::max(farthest, x * x + y * y + z * z);
    }
    return farthest;
  }

  int32_t gatheredCount_ = 0;
  const float* points_;
  KdView tree_;
  void* stack_;
  float radiusSquared_;
  int32_t isa_;
  KdNearestCall call_;
  float* gathered_;
};

}  // namespace
}  // namespace dax

DaxStatus _DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(int32_t k, uint64_t* bytes) {
  return dax::NormalBuffer(k).layout.store(bytes);
}

void _DAX3DPCL_FEATURE_NORM_PCAEstimate(const float* points, int32_t n, DAX3DPCL_KDTREE* tree, int32_t k,
                                        const float* viewpoint, DAX3DPCL_NORMAL* normals, void* buffer, float radius) {
  dax::NormalEstimator estimate(points, *tree, k, radius, buffer);
  // In tree order consecutive searches visit the same nodes and points, which are then in the cache.
  const int32_t inTree = tree->root ? tree->pointCount : 0;
  for (int32_t j = 0; j < n; ++j) {
    const int32_t i = j < inTree ? static_cast<int32_t>(tree->index[j]) : j;
    normals[i] = estimate.at(i);
    if (viewpoint) _DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(normals + i, points + ptrdiff_t{3} * i, viewpoint);
  }
}

int32_t _DAX3DPCL_FEATURE_NORM_Compute_32f(const float* points, int32_t count, DAX3DPCL_NORMAL* normal) {
  return dax::fitNormal(dax::covariance(points, count), *normal);
}

void _DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(DAX3DPCL_NORMAL* normal, const float* point,
                                                   const float* viewpoint) {
  const float x = viewpoint[0] - point[0], y = viewpoint[1] - point[1], z = viewpoint[2] - point[2];
  if (!(x * normal->nx + y * normal->ny + z * normal->nz < 0)) return;
  normal->nx = -normal->nx;
  normal->ny = -normal->ny;
  normal->nz = -normal->nz;
}

DaxStatus DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(int32_t n, int32_t k, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 3 && k >= 3, DAX_STS_BAD_PARAM);
  return _DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(k, bytes);
}

DaxStatus DAX3DPCL_FEATURE_NORM_PCAEstimate(const float* points, int32_t n, DAX3DPCL_KDTREE* tree, int32_t k,
                                            const float* viewpoint, DAX3DPCL_NORMAL* normals, void* buffer,
                                            float radius) {
  DAX_REQUIRE(points && tree && buffer && normals, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 3 && radius >= FLT_EPSILON && k >= 3, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(!tree->root || (tree->dimension == 3 && tree->pointCount <= n), DAX_STS_BAD_PARAM);
  _DAX3DPCL_FEATURE_NORM_PCAEstimate(points, n, tree, k, viewpoint, normals, buffer, radius);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_FEATURE_NORM_Compute_32f(const float* points, int32_t count, DAX3DPCL_NORMAL* normal,
                                            int32_t* estimated) {
  DAX_REQUIRE(points && normal && estimated, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 4, DAX_STS_BAD_PARAM);
  *estimated = _DAX3DPCL_FEATURE_NORM_Compute_32f(points, count, normal);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(DAX3DPCL_NORMAL* normal, const float* point,
                                                       const float* viewpoint) {
  DAX_REQUIRE(normal && point && viewpoint, DAX_STS_NULL_POINTER);
  _DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(normal, point, viewpoint);
  return DAX_STS_OK;
}
