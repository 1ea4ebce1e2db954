#include "report/line_listing.h"

#include <algorithm>
#include <array>

#include "base/columns.h"
#include "base/text.h"

namespace dax::tool {
namespace {

constexpr Ink kLineColour{1.0, 0.72, 0.20, 1}, kInlierColour{0.16, 0.90, 0.62, 1}, kOutlierColour{0.95, 0.30, 0.25, 1};

// "0.9701 x + 0.2425 y - 123.400 = 0"
std::string equation(const DaxiLine& line) {
  const auto term = [](float value, int decimals) {
    return (value < 0 ? " - " : " + ") + fixed(value < 0 ? -value : value, decimals);
  };
  return fixed(line.a, 6) + " x" + term(line.b, 6) + " y" + term(line.c, 3) + " = 0";
}

void cross(AnnotatedPicture& picture, const DaxiPoint32f& at, const Ink& colour) {
  constexpr float kArm = 2.5;
  const std::array falling = {Point{at.x - kArm, at.y - kArm}, Point{at.x + kArm, at.y + kArm}};
  const std::array rising = {Point{at.x - kArm, at.y + kArm}, Point{at.x + kArm, at.y - kArm}};
  picture.line(falling, false, colour, 1.6);
  picture.line(rising, false, colour, 1.6);
}

}  // namespace

void writeLine(std::ostream& out, const FittedLine& fitted, size_t calipers) {
  const auto inliers = std::count_if(fitted.points.begin(), fitted.points.end(), [](auto& p) { return p.inlier; });
  out << calipers << (calipers == 1 ? " caliper, " : " calipers, ") << fitted.points.size() << " edges, " << inliers
      << " of them on the line\nline: " << equation(fitted.line) << ", direction " << fixed(fitted.degrees, 3)
      << " degrees, rms " << fixed(fitted.rms, 3) << " px, of all edges " << fixed(fitted.rmsOfAll, 3) << " px\n";
  std::vector<Fields> lines{{"caliper", "x", "y", "distance", "weight", "on the line"}};
  for (const LinePoint& p : fitted.points) {
    lines.push_back({std::to_string(p.caliper + 1), fixed(p.point.x, 3), fixed(p.point.y, 3), fixed(p.distance, 3),
                     fixed(p.weight, 3), p.inlier ? "yes" : "no"});
  }
  writeColumns(out, lines);
}

nlohmann::ordered_json toJson(const FittedLine& fitted) {
  nlohmann::ordered_json json{{"a", decimal(fitted.line.a)},
                              {"b", decimal(fitted.line.b)},
                              {"c", decimal(fitted.line.c)},
                              {"degrees", fitted.degrees},
                              {"rms", fitted.rms},
                              {"rms_all", fitted.rmsOfAll},
                              {"points", nlohmann::ordered_json::array()}};
  for (const LinePoint& p : fitted.points) {
    json["points"].push_back({{"caliper", p.caliper + 1},
                              {"x", decimal(p.point.x)},
                              {"y", decimal(p.point.y)},
                              {"distance", p.distance},
                              {"weight", decimal(p.weight)},
                              {"inlier", p.inlier}});
  }
  return json;
}

void drawLine(AnnotatedPicture& picture, const FittedLine& fitted, DaxiSize size) {
  // Width + height to both sides of the point nearest to the centre of the image: beyond its borders.
  const auto [a, b, c] = fitted.line;
  const float x = static_cast<float>(size.width) / 2, y = static_cast<float>(size.height) / 2;
  const float distance = a * x + b * y + c, reach = 2 * (x + y);
  const Point foot{x - distance * a, y - distance * b};
  const std::array ends = {Point{foot.x - reach * b, foot.y + reach * a},
                           Point{foot.x + reach * b, foot.y - reach * a}};
  picture.line(ends, false, kLineColour, 2);
  for (const LinePoint& p : fitted.points) cross(picture, p.point, p.inlier ? kInlierColour : kOutlierColour);
}

}  // namespace dax::tool
