#include <cstdio>
#include <cstdlib>
#include <memory>

#include "bench/optim/consensus/plane_scene.h"
#include "bench/support/operation.h"
#include "prmt.h"

namespace {

struct Search {
  std::vector<float> points = bench::planeScene();
  PrmtSacCfg cfg;
  PrmtSacResult result;
  std::vector<uint8_t> mask = std::vector<uint8_t>(bench::kPlanePoints), buffer;

  explicit Search(int32_t method) {
    PRMT_SAC_DefaultCfg(&cfg);
    cfg.method = method, cfg.threshold = bench::kPlaneThreshold;
    uint64_t bytes = 0;
    if (PRMT_SAC_ShapeBufferSize(bench::kPlanePoints, &cfg, 1, &bytes)) std::abort();
    buffer.resize(bytes);
  }
  ~Search() { std::fprintf(stderr, "inliers %d, iterations %d\n", result.inliers, result.iterations); }

  void run() {
    const int32_t status =
        PRMT_SAC_Plane_f32(points.data(), 3, bench::kPlanePoints, &cfg, &result, mask.data(), buffer.data());
    if (status) std::abort();
  }
};

const bench::Own ransac{bench::kPlaneTitle, 0, [] {
                          const auto search = std::make_shared<Search>(PRMT_SAC_RANSAC);
                          return bench::Task{[=] { search->run(); }};
                        }};

}  // namespace
