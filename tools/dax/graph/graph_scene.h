// Graphs of simulated drives with noise.
#pragma once

#include <string_view>

#include "graph/pose_graph.h"

namespace dax::tool {

inline constexpr const char* kGraphKinds = "ring, manhattan, garage, sphere, torus";

struct GraphScene {
  std::string kind;
  int poses = 0;
  double shift = 0.05;  // standard deviations of measurements, in units of the way between two poses, and radians
  double turn = 0.01;
  int seed = 1;
};

// The estimates are the measurements from pose to pose, chained up. Throws Failure(kUsage) for a kind that there is not.
PoseGraph makeGraph(const GraphScene& scene);

}  // namespace dax::tool
