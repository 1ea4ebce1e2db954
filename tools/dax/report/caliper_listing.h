// Edges and pairs of calipers as a table or JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "model/calipers.h"

namespace dax::tool {

// "parts.png: 640 x 480"
std::string imageTitle(const std::string& file, DaxiSize size);

void writeEdges(std::ostream& out, const std::vector<Caliper>& calipers);

// With statistics of the widths of the best pairs.
void writePairs(std::ostream& out, const std::vector<Caliper>& calipers);

nlohmann::ordered_json toJson(const Caliper& caliper, const CaliperSettings& settings, bool profile);

// Mean, standard deviation, minimum and maximum of the widths of each caliper's best pair.
struct WidthSpread {
  size_t count;
  double mean, deviation, min, max;
};
WidthSpread spreadOf(const std::vector<Caliper>& calipers);

}  // namespace dax::tool
