// Points for fits, hulls and boxes: many of them equal or in a plane, at times anything.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Real>
void cloud(Call& c) {
  Real* const data = c.reals<Real>("points", 0);
  const Block* const made = c.blockOf("points");
  const bool isWild = c.chance(10);
  for (size_t i = 0; i < made->bytes / sizeof(Real); ++i) {
    if (!isWild && !(std::fabs(data[i]) <= 8000)) data[i] = static_cast<Real>(c.between(-9, 9));
  }
  if (made->bytes > 0 && c.isSpoiled("points")) data[0] = static_cast<Real>(NAN);
}

void points(Call& c) {
  if (c.has("bytes")) return;  // a query
  c.draw("n");
  c.array("points", Call::product({c.integer("n"), 3}));
  if (const Block* const made = c.blockOf("points"))
    made->realBytes == sizeof(float) ? cloud<float>(c) : cloud<double>(c);
  for (const auto& [name, size] : {std::pair{"plane", 4}, {"line", 6}, {"sphere", 4}, {"circle", 7}, {"cylinder", 7}}) {
    if (c.has(name)) c.array(name, size);
  }
  c.worksBeforeFailing = true;
  if (!c.has("triangles")) return;
  const int64_t n = c.integer("n");
  c.array("triangles", n < 4 ? -1 : 6 * n - 12);
  c.array("count", 1);
  const Block* const count = c.blockOf("count");
  const Block* const triangles = c.blockOf("triangles");
  if (count && triangles) {
    c.onlyMeans(triangles->data, [data = count->data] {
      int32_t written = 0;
      std::memcpy(&written, data, sizeof written);
      return size_t{12} * static_cast<size_t>(written);
    });
  }
}

const Rows rows = {{"DAX3D_FIT_*", points}, {"DAX3D_BOX_*", points}, {"DAX3D_HULL_*", points}};

}  // namespace
}  // namespace dax::hostile
