// Arrays whose lengths follow from the number of bins.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

int64_t binsOf(Call& c) {
  const int64_t bins = c.number("bins", 1, 65536, 300);
  return bins >= 1 && bins <= 65536 ? bins : -1;
}

bool ofFloats(const Call& c) {
  return std::string_view(c.function.name).find("32f") != std::string_view::npos;
}

void even(Call& c) {
  c.array("counts", binsOf(c));
  if (ofFloats(c)) {
    const double low = c.real("low", -5, 5);
    c.real("high", std::isfinite(low) ? low + 0.1 : 1, std::isfinite(low) ? low + 50 : 50);
  } else {
    const int64_t low = std::clamp<int64_t>(c.number("low", -50, 200), -50, 200);
    c.number("high", low + 1, low + 300);
  }
}

void range(Call& c) {
  const int64_t bins = binsOf(c), count = bins < 0 ? -1 : bins + 1;
  c.array("counts", bins);
  if (ofFloats(c)) {
    std::vector<double> edges;
    for (int64_t i = 0; i < count; ++i) edges.push_back(static_cast<double>(3 * i - 40));
    c.around("edges", edges);
    return;
  }
  auto* const edges = static_cast<int32_t*>(c.array("edges", count));
  if (!edges || count < 0) return;
  for (int64_t i = 0; i < count; ++i) edges[i] = static_cast<int32_t>(3 * i - 40);
  if (c.isSpoiled("edges")) edges[c.between(1, bins)] = INT32_MIN;
}

const Rows rows = {{"DAXI_HistogramEven_*", even}, {"DAXI_HistogramRange_*", range}};

}  // namespace
}  // namespace dax::hostile
