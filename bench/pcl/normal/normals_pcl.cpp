#include <pcl/features/normal_3d.h>
#include <pcl/search/kdtree.h>

#include "bench/pcl/search/surface.h"
#include "bench/support/operation.h"

namespace {

struct Estimation {
  pcl::PointCloud<pcl::PointXYZ>::Ptr cloud = pcl::make_shared<pcl::PointCloud<pcl::PointXYZ>>();
  pcl::PointCloud<pcl::Normal> normals;

  Estimation() {
    const std::vector<float> points = bench::wavySurface(bench::kPoints);
    for (size_t i = 0; i < points.size(); i += 3) cloud->emplace_back(points[i], points[i + 1], points[i + 2]);
  }

  void run() {
    pcl::NormalEstimation<pcl::PointXYZ, pcl::Normal> estimation;
    estimation.setInputCloud(cloud);
    estimation.setSearchMethod(pcl::make_shared<pcl::search::KdTree<pcl::PointXYZ>>());
    estimation.setKSearch(bench::kNeighbours);
    estimation.setViewPoint(0, 0, 100);
    estimation.compute(normals);
  }
};

const bench::Peer normals{"tree and normals of 100000 points", "pcl", [] {
                            const auto estimation = std::make_shared<Estimation>();
                            return bench::Task{[=] { estimation->run(); }};
                          }};

}  // namespace
