#include "report/caliper_listing.h"

#include <algorithm>
#include <cmath>

#include "base/columns.h"
#include "base/text.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

const char* polarityName(const CaliperEdge& edge) {
  return edge.polarity == DAXI_CALIPER_DARK_TO_LIGHT ? "dark to light" : "light to dark";
}

// Edges and pairs are numbered within their caliper.
Fields numbered(size_t caliper, size_t result) {
  return {std::to_string(caliper + 1), std::to_string(result + 1)};
}

Fields joined(Fields a, const Fields& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Json pointJson(const DaxiPoint32f& point) {
  return {{"x", decimal(point.x)}, {"y", decimal(point.y)}};
}

Json edgeJson(const CaliperEdge& edge, const DaxiPoint32f& point) {
  Json json{{"polarity", edge.polarity == DAXI_CALIPER_DARK_TO_LIGHT ? "dark-to-light" : "light-to-dark"},
            {"position", decimal(edge.position)}};
  json.update(pointJson(point));
  json["peak"] = decimal(edge.peak);
  json["grey"] = decimal(edge.gray);
  json["index"] = edge.index;
  return json;
}

Json pairJson(const FoundPair& found) {
  const CaliperEdgePair& pair = found.pair;
  return {{"width", decimal(pair.width)},
          {"position", decimal(pair.position)},
          {"contrast", decimal(pair.contrast)},
          {"score", decimal(pair.score)},
          {"first", edgeJson(pair.first, found.first)},
          {"second", edgeJson(pair.second, found.second)}};
}

Json numbersJson(const std::vector<float>& values) {
  Json json = Json::array();
  for (const float value : values) json.push_back(decimal(value));
  return json;
}

}  // namespace

std::string imageTitle(const std::string& file, DaxiSize size) {
  return file + ": " + std::to_string(size.width) + " x " + std::to_string(size.height);
}

void writeEdges(std::ostream& out, const std::vector<Caliper>& calipers) {
  std::vector<Fields> lines{{"caliper", "edge", "position", "x", "y", "polarity", "contrast", "score"}};
  for (size_t c = 0; c < calipers.size(); ++c) {
    for (size_t e = 0; e < calipers[c].edges.size(); ++e) {
      const auto& [edge, point] = calipers[c].edges[e];
      lines.push_back(
          joined(numbered(c, e), {fixed(edge.position, 3), fixed(point.x, 3), fixed(point.y, 3), polarityName(edge),
                                  fixed(std::fabs(edge.peak), 1), fixed(edge.score, 3)}));
    }
  }
  out << calipers.size() << (calipers.size() == 1 ? " caliper, " : " calipers, ") << lines.size() - 1
      << (lines.size() == 2 ? " edge\n" : " edges\n");
  if (lines.size() > 1) writeColumns(out, lines);
}

void writePairs(std::ostream& out, const std::vector<Caliper>& calipers) {
  std::vector<Fields> lines{{"caliper", "pair", "width", "position", "x1", "y1", "x2", "y2", "contrast", "score"}};
  for (size_t c = 0; c < calipers.size(); ++c) {
    for (size_t p = 0; p < calipers[c].pairs.size(); ++p) {
      const auto& [pair, first, second] = calipers[c].pairs[p];
      lines.push_back(joined(numbered(c, p),
                             {fixed(pair.width, 3), fixed(pair.position, 3), fixed(first.x, 3), fixed(first.y, 3),
                              fixed(second.x, 3), fixed(second.y, 3), fixed(pair.contrast, 1), fixed(pair.score, 3)}));
    }
  }
  out << calipers.size() << (calipers.size() == 1 ? " caliper, " : " calipers, ") << lines.size() - 1
      << (lines.size() == 2 ? " pair\n" : " pairs\n");
  if (lines.size() == 1) return;
  writeColumns(out, lines);
  const WidthSpread spread = spreadOf(calipers);
  out << "widths of the best pairs of " << spread.count << ": mean " << fixed(spread.mean, 3) << ", standard deviation "
      << fixed(spread.deviation, 3) << ", " << fixed(spread.min, 3) << " to " << fixed(spread.max, 3) << " px\n";
}

Json toJson(const Caliper& caliper, const CaliperSettings& settings, bool profile) {
  Json json{{"region", describe(caliper.region)},
            {"length", caliper.profile.size()},
            {"kernel_length", caliper.kernelLength},
            {"threshold", decimal(settings.usedThreshold())}};
  Json& results = json[settings.pairs ? "pairs" : "edges"] = Json::array();
  for (const FoundPair& pair : caliper.pairs) results.push_back(pairJson(pair));
  for (const auto& [edge, point] : caliper.edges) {
    results.push_back(edgeJson(edge, point));
    results.back()["score"] = decimal(edge.score);
  }
  if (!profile) return json;
  json["profile"] = numbersJson(caliper.profile);
  json["response"] = numbersJson(caliper.response);
  return json;
}

WidthSpread spreadOf(const std::vector<Caliper>& calipers) {
  std::vector<double> widths;
  for (const Caliper& caliper : calipers) {
    if (!caliper.pairs.empty()) widths.push_back(caliper.pairs.front().pair.width);
  }
  if (widths.empty()) return {};
  const auto n = static_cast<double>(widths.size());
  double sum = 0, squares = 0;
  for (const double width : widths) sum += width;
  for (const double width : widths) squares += (width - sum / n) * (width - sum / n);
  const auto [min, max] = std::minmax_element(widths.begin(), widths.end());
  return {widths.size(), sum / n, std::sqrt(squares / std::max(n - 1, 1.0)), *min, *max};
}

}  // namespace dax::tool
