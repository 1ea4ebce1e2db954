// No pixels around the image; weights of 3 x 3.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void border(Call& c) {
  c.anyOf("border", {DAXI_BORDER_REPLICATE, DAXI_BORDER_MIRROR, DAXI_BORDER_SYMMETRIC, DAXI_BORDER_CIRCULAR,
                     DAXI_BORDER_CONSTANT, DAXI_BORDER_CLIP});
}

void weights(Call& c) {
  border(c);
  auto* const numbers = static_cast<uint8_t*>(c.array("weights", 9));
  for (int32_t k = 0; numbers && k < 9; ++k) numbers[k] = static_cast<uint8_t>(1 + c.random.below(9));
}

const Rows rows = {{"DAXI_FilterMedian_*", border},
                   {"DAXI_FilterRank_*", border},
                   {"DAXI_FilterMedianWeighted3x3_*", weights},
                   {"DAXI_FilterMedianHybrid5x5_*", border}};

}  // namespace
}  // namespace dax::hostile
