// What lines and letters are drawn with.
#pragma once

#include "drawing.h"
#include "grey_image.h"

namespace dax::tool {

struct Ink {
  double red, green, blue, alpha;
};

inline void setInk(cairo_t* context, const Ink& ink) {
  cairo_set_source_rgba(context, ink.red, ink.green, ink.blue, ink.alpha);
}

Surface toSurface(const GreyImage& image);

}  // namespace dax::tool
