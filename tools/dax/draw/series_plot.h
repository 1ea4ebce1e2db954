// Plots of measured series.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dax::tool {

struct Series {
  std::string name;  // of the legend
  std::vector<double> x, y;
  bool hasDots = true, hasLine = false;
};

struct PlotTitles {
  std::string_view plot, x, y;
};

// An SVG of at most four series, of which one has points at least. Both axes begin at 0 or below.
std::string drawSeries(const PlotTitles& titles, const std::vector<Series>& series);

}  // namespace dax::tool
