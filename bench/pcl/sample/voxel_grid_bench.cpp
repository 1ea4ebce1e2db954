#include "dax3dpcl/voxel_grid.h"

#include "bench/pcl/search/surface.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

struct Grid {
  explicit Grid(int32_t n) : points(bench::wavySurface(n)), box{points[0], points[1], points[2]} {
    std::copy_n(box, 3, box + 3);
    for (size_t i = 0; i < points.size(); ++i) {
      box[i % 3] = std::min(box[i % 3], points[i]);
      box[i % 3 + 3] = std::max(box[i % 3 + 3], points[i]);
    }
    uint64_t resultBytes = 0, workBytes = 0;
    bench::require(DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(n, &resultBytes));
    bench::require(DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(n, &workBytes));
    result.resize(resultBytes);
    work.resize(workBytes);
    cloud = {n, n, points.data()};
  }

  void run(float leaf) {
    bench::require(DAX3DPCL_PREP_SAMPLE_VoxelGrid(&cloud, box, &out, result.data(), work.data(), leaf, leaf, leaf));
  }

  std::vector<float> points;
  float box[6];
  std::vector<uint8_t> result, work;
  DAX3DPCL_CLOUD3D cloud = {}, *out = nullptr;
};

bench::Task prepare(int32_t n, float leaf) {
  const auto grid = std::make_shared<Grid>(n);
  return {[=] { grid->run(leaf); }};
}

const bench::Own operations[] = {
    {"voxel grid, 100000 points, leaf 1", bench::kUsualPoints* size_t{12}, [] { return prepare(bench::kPoints, 1); }},
    {"voxel grid, 100000 points, leaf 0.1", bench::kUsualPoints* size_t{12},
     [] { return prepare(bench::kPoints, 0.1f); }},
    {"voxel grid, 2000000 points, leaf 1", size_t{24000000}, [] { return prepare(bench::scaled(2000000), 1); }},
};

}  // namespace
