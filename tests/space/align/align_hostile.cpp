// Paired points: random ones, mostly tame, with weights that are not below 0, or none.
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

template <class Real>
void tame(Call& c, const char* name, bool isWeight) {
  Real* const data = c.reals<Real>(name, 0);
  const Block* const made = c.blockOf(name);
  const bool isWild = c.chance(10);
  for (size_t i = 0; i < made->bytes / sizeof(Real); ++i) {
    if (!isWild && !(std::fabs(data[i]) <= 8000)) data[i] = static_cast<Real>(c.between(-9, 9));
    if (isWeight) data[i] = std::fabs(data[i]) + Real{0.5};
  }
  if (made->bytes > 0 && c.isSpoiled(name)) data[0] = isWeight && c.chance(50) ? Real{-1} : static_cast<Real>(NAN);
}

void tameArray(Call& c, const char* name, int64_t count, bool isWeight) {
  c.array(name, count);
  const Block* const made = c.blockOf(name);
  if (!made) return;
  made->realBytes == sizeof(float) ? tame<float>(c, name, isWeight) : tame<double>(c, name, isWeight);
}

void pairs(Call& c) {
  c.number("n", 3, INT32_MAX, 3 + c.random.below(60));
  const int64_t coordinates = Call::product({c.integer("n"), 3});
  tameArray(c, "from", coordinates, false);
  tameArray(c, "to", coordinates, false);
  if (c.isRound() || c.chance(50)) return c.set<void*>("weights", nullptr);
  tameArray(c, "weights", c.integer("n"), true);
}

const Rows rows = {{"DAX3D_ALIGN_*", pairs}};

}  // namespace
}  // namespace dax::hostile
