// Labels of which most are open.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void markers(Call& c) {
  c.draw("size");
  auto* const labels = static_cast<int32_t*>(c.image("labels", "labelsStep", c.get<DaxiSize>("size")));
  if (const Block* const made = c.block(labels)) {
    for (size_t i = 0; i < made->bytes / sizeof(int32_t); ++i) labels[i] = c.chance(90) ? 0 : c.random.below(9) - 3;
  }
}

const Rows rows = {{"DAXI_Watershed_*", markers}};

}  // namespace
}  // namespace dax::hostile
