#include <pcl/sample_consensus/ransac.h>
#include <pcl/sample_consensus/sac_model_plane.h>

#include <cstdio>
#include <memory>

#include "bench/optim/consensus/plane_scene.h"
#include "bench/support/operation.h"

namespace {

struct Search {
  pcl::PointCloud<pcl::PointXYZ>::Ptr cloud = pcl::make_shared<pcl::PointCloud<pcl::PointXYZ>>();
  pcl::Indices inliers;

  Search() {
    const std::vector<float> points = bench::planeScene();
    for (size_t i = 0; i < points.size(); i += 3) cloud->emplace_back(points[i], points[i + 1], points[i + 2]);
  }
  ~Search() { std::fprintf(stderr, "inliers %zu\n", inliers.size()); }

  // As its users call it: the model, its inliers, the fit to them and the inliers of that.
  void run() {
    const auto model = pcl::make_shared<pcl::SampleConsensusModelPlane<pcl::PointXYZ>>(cloud);
    pcl::RandomSampleConsensus<pcl::PointXYZ> search(model, bench::kPlaneThreshold);
    search.setProbability(0.99);
    search.computeModel();
    Eigen::VectorXf plane, fitted;
    search.getModelCoefficients(plane);
    search.getInliers(inliers);
    model->optimizeModelCoefficients(inliers, plane, fitted);
    model->selectWithinDistance(fitted, bench::kPlaneThreshold, inliers);
  }
};

const bench::Peer ransac{bench::kPlaneTitle, "pcl", [] {
                           const auto search = std::make_shared<Search>();
                           return bench::Task{[=] { search->run(); }};
                         }};

}  // namespace
