// Drawings of graphs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graph/pose_graph.h"

namespace dax::tool {

// Positions of all vertices and the edges between them, seen from above, or from the side where the graph is in space.
struct GraphView {
  explicit GraphView(const PoseGraph& graph);
  std::vector<double> x, y;
  std::vector<std::pair<int32_t, int32_t>> edges;
};

struct TitledView {
  GraphView view;
  std::string title;
};

// An SVG: the views side by side, each in its own scale.
std::string drawGraphs(const std::vector<TitledView>& views);

}  // namespace dax::tool
