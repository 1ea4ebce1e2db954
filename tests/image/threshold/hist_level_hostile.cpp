// Counts of a histogram, and a work buffer that most methods share.
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void histogram(Call& c) {
  const int64_t bins = c.number("bins", 2, 65536, 300);
  const int64_t count = bins >= 2 && bins <= 65536 ? bins : -1;
  auto* const counts = static_cast<uint64_t*>(c.array("hist", count));
  for (int64_t v = 0; counts && v < count; ++v) counts[v] = static_cast<uint64_t>(c.random.below(50));
}

void mask(Call& c) {
  const bool isWide = std::string_view(c.function.name).find("16u") != std::string_view::npos;
  c.work("buffer", isWide ? DAXI_ThresholdGlobalBufferSize_16u : DAXI_ThresholdGlobalBufferSize_8u);
}

const Rows rows = {{"DAXI_HistLevel_*", histogram},      {"DAXI_ThresholdKapur_*", mask},
                   {"DAXI_ThresholdYen_*", mask},        {"DAXI_ThresholdLi_*", mask},
                   {"DAXI_ThresholdKittler_*", mask},    {"DAXI_ThresholdIsodata_*", mask},
                   {"DAXI_ThresholdIntermodes_*", mask}, {"DAXI_ThresholdTriangle_*", mask},
                   {"DAXI_ThresholdPercentile_*", mask}, {"DAXI_ThresholdOtsu_*", mask}};

}  // namespace
}  // namespace dax::hostile
