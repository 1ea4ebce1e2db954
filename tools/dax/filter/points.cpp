#include <algorithm>
#include <limits>

#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class Pixel>
PixelImage<Pixel> inverted(const PixelImage<Pixel>& image) {
  PixelImage<Pixel> result = image;
  for (Pixel& pixel : result.pixels) pixel = static_cast<Pixel>(std::numeric_limits<Pixel>::max() - pixel);
  return result;
}

const FilterRegistration invert({"--invert", nullptr, nullptr, "white less each pixel", kPoints, [](std::string_view) {
                                   return ImageFilter{inverted<uint8_t>, inverted<uint16_t>};
                                 }});

}  // namespace
}  // namespace dax::tool
