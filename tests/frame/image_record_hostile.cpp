// Image records: nobody follows their pointers.
#include <cstddef>

#include "dax.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Record, class Planes>
void fillRecord(Call& c, Record& record, Planes planes) {
  record.format = static_cast<uint32_t>(
      c.chance(80) ? c.pick({1, 2, 3, 100, 101, 102, 103, 104, 105, 106, 107, 200, 201, 202, 203, 204, 205, 300, 307})
                   : c.random.below(330));
  record.width = 2 * static_cast<int32_t>(c.between(1, 100));
  record.height = 2 * static_cast<int32_t>(c.between(1, 100));
  for (int32_t& step : record.step) step = 4 * record.width + c.random.below(9);
  for (int32_t i = 0; i < 4; ++i) planes(i, c.memory("plane", -1, Role::input));
}

void checkImage(Call& c) {
  auto* const record = c.record<DaxImage>("image");
  if (!record) return;
  fillRecord(c, *record, [&](int32_t i, void* plane) { record->base[i] = record->data[i] = plane; });
  c.spoilWord("image", record, 0, offsetof(DaxImage, base));
  if (c.isSpoiled("image", 30)) record->data[c.random.below(4)] = nullptr;
}

void zurImage(Call& c) {
  const char* const name = c.function.arguments[0].name;
  if (auto* const record = c.record<ZurImage>(name)) {
    fillRecord(c, *record, [&](int32_t i, void* plane) { record->plane[i] = plane; });
    c.spoilWord(name, record, 0, offsetof(ZurImage, plane));
    if (c.isSpoiled(name, 30)) record->plane[c.random.below(4)] = nullptr;
  }
  if (c.has("daxImage")) c.array("daxImage", 1);
}

const Rows rows = {{"DAX_CheckImage", checkImage}, {"ZUR_CheckImage", zurImage}, {"DAX_ZurImgToDaxImg", zurImage}};

}  // namespace
}  // namespace dax::hostile
