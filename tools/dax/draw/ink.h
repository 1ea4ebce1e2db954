#pragma once

namespace dax::tool {

// A colour of pictures and plots, components and opacity in 0..1.
struct Ink {
  double red, green, blue, alpha;
};

}  // namespace dax::tool
