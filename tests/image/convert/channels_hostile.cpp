// Orders of channels, each one of the source's, or -1.
#include <string_view>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void ordered(Call& c) {
  const std::string_view name = c.function.name;
  const bool fromFour = name.find("_C4") != std::string_view::npos;
  const bool toFour = name.find("C4R") != std::string_view::npos || name.find("C4IR") != std::string_view::npos;
  const int32_t from = fromFour ? 4 : 3, to = toFour ? 4 : 3;
  auto* const order = static_cast<int32_t*>(c.array("order", to));
  if (!c.block(order)) return;
  for (int32_t i = 0; i < to; ++i) order[i] = static_cast<int32_t>(c.between(-1, from - 1));
  if (c.isSpoiled("order")) order[c.random.below(to)] = c.pick({-2, from, INT32_MAX, INT32_MIN});
}

void picked(Call& c) {
  c.number("channel", 0, std::string_view(c.function.name).find("_C4") != std::string_view::npos ? 3 : 2);
}

const Rows rows = {{"DAXI_SwapChannels_*", ordered}, {"DAXI_PickChannel_*", picked}};

}  // namespace
}  // namespace dax::hostile
