// Odd sides of kernels, and no pixels around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Cfg>
void kernel(Call& c) {
  c.filled<Cfg>("cfg", 1, [&](Cfg& cfg) {
    cfg.size = {c.chance(50) ? 0 : 1 + 2 * c.random.below(8), c.chance(50) ? 0 : 1 + 2 * c.random.below(8)};
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_FilterGauss_*", kernel<DaxiGaussCfg>},
                   {"DAXI_FilterGaussBufferSize*", kernel<DaxiGaussCfg>},
                   {"DAXI_LoG*", kernel<DaxiGaussCfg>},
                   {"DAXI_Unsharp_*", kernel<DaxiUnsharpCfg>},
                   {"DAXI_UnsharpBufferSize*", kernel<DaxiUnsharpCfg>}};

}  // namespace
}  // namespace dax::hostile
