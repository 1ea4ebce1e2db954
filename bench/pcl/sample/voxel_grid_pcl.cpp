#include <pcl/filters/voxel_grid.h>

#include "bench/pcl/search/surface.h"
#include "bench/support/operation.h"

namespace {

// The peer rounds coordinates down, so the results differ only around zero.
struct Filter {
  explicit Filter(int32_t n) {
    const std::vector<float> points = bench::wavySurface(n);
    for (size_t i = 0; i < points.size(); i += 3) cloud->emplace_back(points[i], points[i + 1], points[i + 2]);
  }

  void run(float leaf) {
    pcl::VoxelGrid<pcl::PointXYZ> grid;
    grid.setInputCloud(cloud);
    grid.setLeafSize(leaf, leaf, leaf);
    grid.filter(result);
  }

  pcl::PointCloud<pcl::PointXYZ>::Ptr cloud = pcl::make_shared<pcl::PointCloud<pcl::PointXYZ>>();
  pcl::PointCloud<pcl::PointXYZ> result;
};

bench::Task prepare(int32_t n, float leaf) {
  const auto filter = std::make_shared<Filter>(n);
  return {[=] { filter->run(leaf); }};
}

const bench::Peer operations[] = {
    {"voxel grid, 100000 points, leaf 1", "pcl", [] { return prepare(bench::kPoints, 1); }},
    {"voxel grid, 100000 points, leaf 0.1", "pcl", [] { return prepare(bench::kPoints, 0.1f); }},
    {"voxel grid, 2000000 points, leaf 1", "pcl", [] { return prepare(bench::scaled(2000000), 1); }},
};

}  // namespace
