#include "draw/caliper_overlay.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace dax::tool {
namespace {

constexpr Ink kRegionColour{0.36, 0.68, 0.95, 0.95};
constexpr Ink kEdgeColour{0.16, 0.90, 0.62, 1};
constexpr Ink kWidthColour{1.0, 0.72, 0.20, 1};
constexpr int kArcPieces = 180;  // of a full ring 2 degrees each, within 0.1 pixels of it up to a radius of 650
constexpr size_t kMaxLabels = 100;

// A line of the region's grid between two points.
struct GridLine {
  double s0, t0, s1, t1;
};

std::vector<Point> points(const Region& region, const std::vector<GridLine>& lines) {
  std::vector<Point> result;
  const int pieces = std::holds_alternative<CaliperAnnulus>(region) ? kArcPieces : 1;
  for (const GridLine& line : lines) {
    for (int i = 0; i <= pieces; ++i) {
      const double part = static_cast<double>(i) / pieces;
      result.push_back(pointOf(region, line.s0 + part * (line.s1 - line.s0), line.t0 + part * (line.t1 - line.t0)));
    }
  }
  return result;
}

class CaliperDrawing {
 public:
  CaliperDrawing(AnnotatedPicture& picture, const Caliper& caliper, bool alongHeight)
      : picture_(picture), caliper_(caliper), alongHeight_(alongHeight) {
    const auto [width, height] = sidesOf(caliper.region);
    along_ = (alongHeight ? height : width) / 2;
    across_ = (alongHeight ? width : height) / 2;
  }

  void outline() {
    lines({{-along_, -across_, along_, -across_},
           {along_, -across_, along_, across_},
           {along_, across_, -along_, across_},
           {-along_, across_, -along_, -across_}},
          kRegionColour, 1);
    const double head = std::min({4.0, along_, across_});
    lines({{along_ - head, -head, along_, 0}, {along_, 0, along_ - head, head}}, kRegionColour, 1);
  }

  void edge(double position) { lines({{position, -across_, position, across_}}, kEdgeColour, 1.6); }

  void width(const CaliperEdgePair& pair) {
    edge(pair.first.position);
    edge(pair.second.position);
    lines({{pair.first.position, 0, pair.second.position, 0}}, kWidthColour, 1.2);
  }

  // Around the region.
  Rect bounds() const {
    const std::vector<Point> corners =
        points(caliper_.region, swapped({{-along_, -across_, along_, -across_}, {along_, across_, -along_, across_}}));
    const auto [left, right] =
        std::minmax_element(corners.begin(), corners.end(), [](auto& a, auto& b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(corners.begin(), corners.end(), [](auto& a, auto& b) { return a.y < b.y; });
    return {left->x, top->y, right->x - left->x, bottom->y - top->y};
  }

 private:
  // Lines given as along and across, as columns and rows.
  std::vector<GridLine> swapped(std::vector<GridLine> lines) const {
    if (!alongHeight_) return lines;
    for (GridLine& line : lines) line = {line.t0, line.s0, line.t1, line.s1};
    return lines;
  }

  void lines(const std::vector<GridLine>& lines, const Ink& colour, double width) {
    picture_.line(points(caliper_.region, swapped(lines)), false, colour, width);
  }

  AnnotatedPicture& picture_;
  const Caliper& caliper_;
  bool alongHeight_;
  double along_;
  double across_;
};

}  // namespace

void drawCalipers(AnnotatedPicture& picture, const std::vector<Caliper>& calipers, bool alongHeight) {
  for (const Caliper& caliper : calipers) CaliperDrawing(picture, caliper, alongHeight).outline();
  for (const Caliper& caliper : calipers) {
    CaliperDrawing drawing(picture, caliper, alongHeight);
    for (const FoundEdge& found : caliper.edges) drawing.edge(found.edge.position);
    if (!caliper.pairs.empty()) drawing.width(caliper.pairs.front().pair);
    picture.keepFree(drawing.bounds());
  }
  for (size_t i = 0; i < std::min(calipers.size(), kMaxLabels); ++i) {
    const Caliper& caliper = calipers[i];
    const std::string number = std::to_string(i + 1);
    picture.label(CaliperDrawing(picture, caliper, alongHeight).bounds(),
                  caliper.pairs.empty() ? number : number + "  " + fixed(caliper.pairs.front().pair.width, 2));
  }
}

}  // namespace dax::tool
