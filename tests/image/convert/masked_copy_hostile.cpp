// The mask has one channel, however many the image has.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void masked(Call& c) {
  c.image("mask", "maskStep", c.size("size"));
}

const Rows rows = {{"DAXI_Copy_*", masked}, {"DAXI_Set_*", masked}};

}  // namespace
}  // namespace dax::hostile
