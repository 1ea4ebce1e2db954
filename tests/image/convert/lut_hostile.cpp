// Knots ascend.
#include <cmath>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void knots(Call& c) {
  const int64_t count = c.number("count", 2, 256, 9);
  auto* const levels = c.reals<double>("levels", count);
  c.reals<double>("values", count);
  if (!c.block(levels) || count < 1) return;
  double at = static_cast<double>(c.between(-300, 300));
  for (int64_t i = 0; i < count; ++i) levels[i] = at += static_cast<double>(c.between(1, 400)) / 8;
  if (c.isSpoiled("levels"))
    levels[c.random.below(static_cast<int32_t>(count))] = c.pick<double>({NAN, INFINITY, -INFINITY});
}

const Rows rows = {{"DAXI_LutLinear_*", knots}};

}  // namespace
}  // namespace dax::hostile
