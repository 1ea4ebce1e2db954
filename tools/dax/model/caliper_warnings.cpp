#include "model/caliper_warnings.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace dax::tool {
namespace {

bool reachesBeyond(const Region& region, DaxiSize size) {
  constexpr int kSteps = 64;  // rings are round
  const Sides sides = sidesOf(region);
  for (int i = 0; i <= kSteps; ++i) {
    const double t = (static_cast<double>(i) / kSteps - 0.5) * sides.height;
    for (const double s : {-sides.width / 2, sides.width / 2}) {
      const Point p = pointOf(region, s, t);
      if (!(p.x >= -0.5 && p.y >= -0.5 && p.x <= size.width - 0.5 && p.y <= size.height - 0.5)) return true;
    }
  }
  return false;
}

// The least width that a kernel measures without bias.
double minWidth(uint32_t halfWidth) {
  return 1.25 * halfWidth + 2;
}

std::string narrowWarning(const std::vector<Caliper>& calipers, const CaliperSettings& settings) {
  double narrowest = minWidth(settings.halfWidth);
  size_t count = 0;
  for (const Caliper& caliper : calipers) {
    for (const FoundPair& pair : caliper.pairs) {
      count += pair.pair.width < minWidth(settings.halfWidth);
      narrowest = std::min(narrowest, static_cast<double>(pair.pair.width));
    }
  }
  if (count == 0) return {};
  const auto fitting = static_cast<int>(std::floor((narrowest - 2) / 1.25));
  const std::string advice = fitting >= 1 && fitting < static_cast<int>(settings.halfWidth)
                                 ? "--half-width " + std::to_string(fitting) + " would do"
                                 : "no half width would do";
  return std::to_string(count) + (count == 1 ? " width is" : " widths are") +
         " narrower than the kernel and too large: " + "widths from " + fixed(minWidth(settings.halfWidth), 1) +
         " px on are unbiased; " + advice;
}

}  // namespace

std::vector<std::string> warningsOf(DaxiSize size, const std::vector<Caliper>& calipers,
                                    const CaliperSettings& settings) {
  std::vector<std::string> warnings;
  std::string first;
  size_t beyond = 0;
  for (const Caliper& caliper : calipers) {
    if (!reachesBeyond(caliper.region, size)) continue;
    if (++beyond == 1) first = describe(caliper.region);
  }
  if (beyond > 0) {
    const std::string others = beyond > 1 ? " and " + std::to_string(beyond - 1) + " more" : "";
    warnings.push_back(first + others + ": beyond the picture, where the edge pixels are repeated");
  }
  if (std::string narrow = narrowWarning(calipers, settings); !narrow.empty()) warnings.push_back(std::move(narrow));
  return warnings;
}

}  // namespace dax::tool
