#include "io/colour_image.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace dax::tool {

Colour heightColour(double share) {
  // Nine even stops of the map "viridis".
  constexpr std::array<Colour, 9> kStops = {{{68, 1, 84},
                                             {71, 44, 122},
                                             {59, 81, 139},
                                             {44, 113, 142},
                                             {33, 144, 141},
                                             {39, 173, 129},
                                             {92, 200, 99},
                                             {170, 220, 50},
                                             {253, 231, 37}}};
  const double place = std::clamp(share, 0.0, 1.0) * (kStops.size() - 1);
  const size_t stop = std::min(static_cast<size_t>(place), kStops.size() - 2);
  const double part = place - static_cast<double>(stop);
  const auto mix = [&](uint8_t a, uint8_t b) { return static_cast<uint8_t>(std::lround(a + part * (b - a))); };
  const Colour &a = kStops[stop], &b = kStops[stop + 1];
  return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue)};
}

}  // namespace dax::tool
