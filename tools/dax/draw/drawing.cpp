#include "draw/drawing.h"

#include <cstdint>
#include <cstring>
#include <new>

#include "base/failure.h"

namespace dax::tool {
namespace {

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

void require(cairo_status_t status) {
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  if (status != CAIRO_STATUS_SUCCESS) {
    throw Failure(ExitStatus::kInternal, std::string("picture: ") + cairo_status_to_string(status));
  }
}

Surface makeSurface(int width, int height) {
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  require(cairo_surface_status(surface.get()));
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

void paint(const ColourImage& image, const Surface& surface) {
  cairo_surface_flush(surface.get());
  unsigned char* row = cairo_image_surface_get_data(surface.get());
  for (int32_t y = 0; y < image.size.height; ++y, row += cairo_image_surface_get_stride(surface.get())) {
    for (int32_t x = 0; x < image.size.width; ++x) {
      const Colour& c = image.at(x, y);
      const uint32_t pixel = uint32_t{c.red} << 16 | uint32_t{c.green} << 8 | c.blue;
      std::memcpy(row + ptrdiff_t{4} * x, &pixel, sizeof pixel);
    }
  }
  cairo_surface_mark_dirty(surface.get());
}

std::string toPng(const Surface& surface) {
  std::string bytes;
  require(cairo_surface_write_to_png_stream(surface.get(), append, &bytes));
  return bytes;
}

}  // namespace dax::tool
