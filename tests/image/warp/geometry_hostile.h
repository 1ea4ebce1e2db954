// Arguments that rows of geometric operations share: a rectangle of the destination, and matrices of all tempers.
#pragma once

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {

inline int32_t channelsOf(const Call& c) {
  return std::string_view(c.function.name).find("C3") != std::string_view::npos ? 3 : 1;
}

// Source, size of the whole destination, part of it, and its memory.
inline void partOfResult(Call& c) {
  c.draw("src");
  const auto to = c.size("dstSize");
  const auto within = [&](int32_t side, int32_t& start, int32_t& length) {
    length = 1 + c.random.below(std::clamp(side, 1, 1000));
    start = c.random.below(std::clamp(side, 1, 1000) - length + 1);
  };
  DaxiRect part = {0, 0, to.width, to.height};
  if (c.chance(50)) within(to.width, part.x, part.width), within(to.height, part.y, part.height);
  part = c.given("dstRect", part);
  c.image("dst", "dstStep", {part.width, part.height}, channelsOf(c));
}

template <class Cfg>
void anySampling(Call& c, Cfg& cfg) {
  cfg.border = c.pick({0, 1, 2, 3, 4, 7});
  cfg.value = c.chance(80) ? static_cast<double>(c.between(-300, 300)) / 4 : 1e300;
  cfg.cubicA = c.chance(80) ? -0.5 : 1e200;
}

// Near the identity, far from it, or wild.
inline void anyMatrix(Call& c, double* m, bool isAffine) {
  const double scale = c.pick({1.0, 1.0, 1e-3, 1e5, 1e150});
  for (int i = 0; i < 9; ++i) m[i] = static_cast<double>(c.between(-1000, 1000)) / 512 * scale;
  for (const int i : {2, 5}) m[i] *= 20;
  for (const int i : {6, 7}) m[i] /= 64;
  m[0] += 3 * scale, m[4] += 3 * scale, m[8] += 3 * scale;
  if (isAffine) m[6] = m[7] = 0, m[8] = 1;
}

}  // namespace dax::hostile
