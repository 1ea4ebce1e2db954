#include "graph/graph_plot.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"
#include "draw/panel.h"

namespace dax::tool {
namespace {

constexpr double kSide = 460, kGap = 30, kTop = 50;

void drawView(std::string& svg, const TitledView& titled, double left) {
  const GraphView& view = titled.view;
  const Interval x = widened(rangeOf(view.x)), y = widened(rangeOf(view.y));
  const double scale = kSide / std::max(x.length(), y.length());
  const double right = left + (kSide - scale * x.length()) / 2, down = kTop + (kSide + scale * y.length()) / 2;
  const auto place = [&](int32_t v) {
    const auto i = static_cast<size_t>(v);
    return fixed(right + (view.x[i] - x.low) * scale, 1) + " " + fixed(down - (view.y[i] - y.low) * scale, 1);
  };
  svg += "<text x='" + plotNumber(left) + "' y='30'>" + escapeHtml(titled.title) + "</text>\n";
  // Consecutive poses as one line, all others on top of it, lighter.
  std::string way, loops;
  int32_t end = -1;
  for (const auto& [from, to] : view.edges) {
    if (to == from + 1) {
      way += from == end ? " L" + place(to) : " M" + place(from) + " L" + place(to);
      end = to;
    } else {
      loops += " M" + place(from) + " L" + place(to);
    }
  }
  svg += "<path class='loops' d='" + loops + "'/>\n<path class='way' d='" + way + "'/>\n";
}

}  // namespace

GraphView::GraphView(const PoseGraph& pose) {
  const PrgoGraph& graph = pose.graph();
  std::unordered_map<int64_t, int32_t> index;
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const PrgoVertex& vertex = graph.vertices[v];
    const bool isSpatial = vertex.type == PRGO_VERTEX_SE3 || vertex.type == PRGO_VERTEX_POINT3;
    const double* const p = vertex.estimate;
    index[vertex.id] = v;
    x.push_back(isSpatial ? 0.87 * p[0] + 0.5 * p[1] : p[0]);
    y.push_back(isSpatial ? 0.94 * p[2] + 0.34 * (0.87 * p[1] - 0.5 * p[0]) : p[1]);
  }
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    const PrgoEdge& edge = graph.edges[e];
    if (edge.type != PRGO_EDGE_PRIOR) edges.emplace_back(index[edge.vertices[0]], index[edge.vertices[1]]);
  }
}

std::string drawGraphs(const std::vector<TitledView>& views) {
  const double width = static_cast<double>(views.size()) * (kSide + kGap) + kGap;
  std::string svg =
      "<svg xmlns='http://www.w3.org/2000/svg' width='" + plotNumber(width) + "' height='" +
      plotNumber(kTop + kSide + kGap) +
      "'>\n<style>text { font: 14px sans-serif; fill: #333 } path { fill: none; stroke-width: .8 }\n"
      ".way { stroke: #1f6fb2 } .loops { stroke: #c0392b; stroke-opacity: .35; stroke-width: .5 }</style>\n"
      "<rect width='100%' height='100%' fill='white'/>\n";
  double left = kGap;
  for (const TitledView& view : views) {
    drawView(svg, view, left);
    left += kSide + kGap;
  }
  return svg + "</svg>\n";
}

}  // namespace dax::tool
