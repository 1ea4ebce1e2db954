// Points that codes can hold, no pixels around the image, and arrays whose lengths follow from configurations.
#include <algorithm>
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

bool isCalled(const Call& c, const char* part) {
  return std::string_view(c.function.name).find(part) != std::string_view::npos;
}

const DaxiLbpCfg* patterns(Call& c) {
  const bool isNarrow = isCalled(c, "DAXI_LBP_") && isCalled(c, "8u_C1R");
  return c.filled<DaxiLbpCfg>("cfg", 1, [&](DaxiLbpCfg& cfg) {
    // Not more than the memory of so many threads allows.
    cfg.points = 4 + c.random.below(isNarrow ? 5 : isCalled(c, "Histogram") ? 7 : 13);
    cfg.radius = c.chance(30) ? 0 : 0.5 + c.random.below(40) * 0.1;
    if (cfg.radius == 0) cfg.points = 8;
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

void pattern(Call& c) {
  patterns(c);
}

void histogram(Call& c) {
  const DaxiLbpCfg* const cfg = patterns(c);
  int32_t count = 0;
  c.array("counts", cfg && DAXI_LBPCodeCount(cfg, &count) == DAX_STS_OK ? count : -1);
}

const DaxiCoOccurrenceCfg* pairs(Call& c) {
  const bool isWide = isCalled(c, "16u"), isFour = isCalled(c, "Occurrence4");
  return c.filled<DaxiCoOccurrenceCfg>("cfg", 1, [&](DaxiCoOccurrenceCfg& cfg) {
    cfg.dx = isFour ? 1 + c.random.below(5) : c.random.below(9) - 4, cfg.dy = c.random.below(9) - 4;
    cfg.levels = c.chance(10) && !isCalled(c, "_MT") ? 256 : 2 + c.random.below(30);
    cfg.high = cfg.low = c.random.below(isWide ? 60000 : 250);
    cfg.high += c.random.below((isWide ? 65536 : 256) - cfg.low);
  });
}

void pairBuffer(Call& c) {
  pairs(c);
}

void pairCounts(Call& c) {
  const DaxiCoOccurrenceCfg* const cfg = pairs(c);
  const bool isValid = cfg && cfg->levels >= 2 && cfg->levels <= 256;
  c.array("counts", isValid ? int64_t{cfg->levels} * cfg->levels * (isCalled(c, "Occurrence4") ? 4 : 1) : -1);
}

void features(Call& c) {
  const int64_t levels = c.number("levels", 2, 256, 20);
  const int64_t cells = levels >= 2 && levels <= 256 ? levels * levels : -1;
  auto* const counts = static_cast<uint32_t*>(c.array("counts", cells));
  c.array("features", 1);
  const int32_t greatest = c.chance(10) ? 1 : 50;
  for (int64_t i = 0; counts && i < cells; ++i) counts[i] = static_cast<uint32_t>(c.random.below(greatest));
}

void energy(Call& c) {
  c.filled<DaxiLawsEnergyCfg>("cfg", 1, [&](DaxiLawsEnergyCfg& cfg) {
    cfg.window = {1 + c.random.below(12), 1 + c.random.below(12)};
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_LBP_*", pattern},
                   {"DAXI_LBPCodeCount", pattern},
                   {"DAXI_LBPHistogramBufferSize*", pattern},
                   {"DAXI_LBPHistogram_*", histogram},
                   {"DAXI_CoOccurrenceBufferSize*", pairBuffer},
                   {"DAXI_CoOccurrence4BufferSize*", pairBuffer},
                   {"DAXI_CoOccurrence_*", pairCounts},
                   {"DAXI_CoOccurrence4_*", pairCounts},
                   {"DAXI_HaralickFeatures", features},
                   {"DAXI_LawsEnergy_*", energy},
                   {"DAXI_LawsEnergyBufferSize*", energy}};

}  // namespace
}  // namespace dax::hostile
