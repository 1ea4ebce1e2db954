// Surfaces to draw on with cairo.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "draw/ink.h"
#include "io/colour_image.h"
#include "io/grey_image.h"

namespace dax::tool {

struct DestroyDrawing {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroyDrawing>;
using Context = std::unique_ptr<cairo_t, DestroyDrawing>;

inline void setInk(cairo_t* context, const Ink& ink) {
  cairo_set_source_rgba(context, ink.red, ink.green, ink.blue, ink.alpha);
}

// Throws std::bad_alloc or Failure(kInternal) if the status is an error.
void require(cairo_status_t status);

inline constexpr int kMaxDrawingSide = 32767;
Surface makeSurface(int width, int height);
Surface toSurface(const GreyImage& image);

// The pixels of an image of at most kMaxDrawingSide to the upper left, on a surface that is as large or larger.
void paint(const ColourImage& image, const Surface& surface);

std::string toPng(const Surface& surface);

}  // namespace dax::tool
