#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Rows without padding and few levels, so that there are patches.
template <class Value>
void speckles(Call& c) {
  const DaxiSize size = c.size("size");
  const int64_t count = Call::product({size.width, size.height});
  auto* const src = static_cast<Value*>(c.array("src", count));
  if (const Block* const made = c.block(src)) {
    const int32_t levels = c.pick({2, 3, 30});
    for (size_t i = 0; i < made->bytes / sizeof(Value); ++i) src[i] = static_cast<Value>(10 * c.random.below(levels));
    c.inPlace("dst", "src");
  }
  c.array("dst", count);
  const auto part = [&](int32_t side) { return c.random.below(std::clamp(side, 0, 1000) + 1); };
  for (const char* corner : {"start", "end"}) c.given(corner, DAX3DPCL_PIXEL{part(size.width), part(size.height)});
  c.number("maxDiff", -1, 40), c.number("maxSize", -1, 60);
  c.set("invalid", static_cast<Value>(10 * c.random.below(4)));
}

const Rows rows = {
    {"DAX3DPCL_PREP_FILTER_Speckle_S16", speckles<int16_t>},
    {"DAX3DPCL_PREP_FILTER_Speckle_U16", speckles<uint16_t>},
};

}  // namespace
}  // namespace dax::hostile
