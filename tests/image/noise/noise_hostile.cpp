// Limits that leave windows to measure.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void limits(Call& c) {
  c.real("low", -1e39, 10);
  c.real("high", 20, 1e39);
  c.worksBeforeFailing = true;  // whether any window counts is known when they have been looked at
}

const Rows rows = {{"DAXI_NoiseImmerkaer_*", limits}, {"DAXI_NoiseMad_*", limits}};

}  // namespace
}  // namespace dax::hostile
