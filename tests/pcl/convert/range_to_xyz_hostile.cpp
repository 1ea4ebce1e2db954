#include <cmath>

#include "dax3dpcl.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void spoil(Call& c, DAX3DPCL_RANGE_MAP& map) {
  switch (c.random.below(3)) {
    case 0:
      (c.chance(50) ? map.rows : map.cols) = c.pick({0, -1, INT32_MIN});
      break;
    case 1:
      map.params[c.random.below(6)] = static_cast<float>(std::clamp(c.hostileReal(), -1e38, 1e38));
      break;
    default:
      c.chance(50) ? map.values = nullptr : map.mask = nullptr;
  }
}

template <class Value, bool isDepth>
void toPoints(Call& c) {
  const int32_t rows = 1 + c.random.below(20), cols = 1 + c.random.below(30);
  if (auto* const map = c.record<DAX3DPCL_RANGE_MAP>("map")) {
    const float range[6] = {0.1f, -0.2f, 0.3f, 1, 2, 3}, pinhole[6] = {0.5f, 1, 300, 310, 12, 9};
    map->rows = rows, map->cols = cols;
    std::copy_n(isDepth ? pinhole : range, 6, map->params);
    map->mask = c.elements<uint8_t>("mask", rows * cols, Role::input);
    c.fillMask(map->mask, static_cast<size_t>(rows * cols));
    map->values = c.elements<Value>("values", rows * cols, Role::input);
    if (c.isSpoiled("map")) spoil(c, *map);
  }
  uint64_t bytes = 0;
  DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_16s32f({cols, rows}, &bytes);
  c.set("buffer", c.isSpoiled("buffer") ? nullptr : c.memory("buffer", static_cast<int64_t>(bytes), Role::output, 4));
  if (Block* const block = c.blockOf("buffer")) block->realBytes = sizeof(float);
  c.anyOf("organized", {0, 1});
  c.array("points", 1);
}

const Rows rows = {
    {"DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f", toPoints<int16_t, false>},
    {"DAX3DPCL_PREP_CONVERT_Range2XYZ_32s32f", toPoints<int32_t, false>},
    {"DAX3DPCL_PREP_CONVERT_Range2XYZ_32f32f", toPoints<float, false>},
    {"DAX3DPCL_PREP_CONVERT_Depth2XYZ_16s32f", toPoints<int16_t, true>},
    {"DAX3DPCL_PREP_CONVERT_Depth2XYZ_32s32f", toPoints<int32_t, true>},
    {"DAX3DPCL_PREP_CONVERT_Depth2XYZ_32f32f", toPoints<float, true>},
};

}  // namespace
}  // namespace dax::hostile
