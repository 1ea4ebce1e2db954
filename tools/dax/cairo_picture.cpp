#include "cairo_picture.h"

#include <cstdint>
#include <new>

#include "failure.h"

namespace dax::tool {
namespace {

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

void requireCairo(cairo_status_t status) {
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  if (status != CAIRO_STATUS_SUCCESS) {
    throw Failure(ExitStatus::kInternal, std::string("picture: ") + cairo_status_to_string(status));
  }
}

Surface makeSurface(int width, int height) {
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  requireCairo(cairo_surface_status(surface.get()));
  return surface;
}

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

std::string encodePng(cairo_surface_t* surface, cairo_t* context) {
  std::string bytes;
  requireCairo(cairo_status(context));
  requireCairo(cairo_surface_write_to_png_stream(surface, append, &bytes));
  return bytes;
}

}  // namespace dax::tool
