#include "ink.h"

namespace dax::tool {

Surface toSurface(const GreyImage& image) {
  Surface surface = makeSurface(image.size.width, image.size.height);
  unsigned char* pixels = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < image.size.height; ++y) {
    auto* row = reinterpret_cast<uint32_t*>(pixels + static_cast<ptrdiff_t>(y) * stride);
    const uint8_t* source = image.row(y);
    for (int x = 0; x < image.size.width; ++x) row[x] = source[x] * 0x010101U;
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

}  // namespace dax::tool
