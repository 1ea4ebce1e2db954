// What drawing with cairo needs: surfaces and contexts that free themselves, and failures.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "grey_image.h"

namespace dax::tool {

struct DestroyCairo {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroyCairo>;
using Context = std::unique_ptr<cairo_t, DestroyCairo>;

inline constexpr int kMostSide = 32767;  // of a cairo image

struct Colour {
  double red, green, blue, alpha;
};

inline void setColour(cairo_t* context, const Colour& c) {
  cairo_set_source_rgba(context, c.red, c.green, c.blue, c.alpha);
}

// Throw std::bad_alloc or Failure(kInternal).
void requireCairo(cairo_status_t status);
Surface makeSurface(int width, int height);
Surface toSurface(const GreyImage& image);
std::string encodePng(cairo_surface_t* surface, cairo_t* context);

}  // namespace dax::tool
