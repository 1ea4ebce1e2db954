// The library's image filters by their names on the command line. Each is a file of this folder that registers itself.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/library_call.h"
#include "io/grey_image.h"

namespace dax::tool {

// A filter of 8-bit images and, where the library has one, of 16-bit images. Both throw Failure(kRefused) if the library
// refuses the call.
struct ImageFilter {
  std::function<GreyImage(const GreyImage&)> on8;
  std::function<Grey16Image(const Grey16Image&)> on16;

  explicit operator bool() const { return on8 != nullptr; }
};

struct FilterOption {
  const char* name;       // "--mean"
  const char* valueName;  // "WxH"; null: takes none
  const char* form;       // description of valid values
  const char* help;
  bool keepsSize;
  // Empty for an invalid value.
  ImageFilter (*parse)(std::string_view value);
};

// In the order of their names.
const std::vector<FilterOption>& filterOptions();

// Adds a filter before main() starts.
struct FilterRegistration {
  explicit FilterRegistration(const FilterOption& option);
};

// filter(src, srcStep, dst, dstStep, size, arguments...) on an image, for what `step` names.
template <class Pixel, class Filter, class... Arguments>
auto plainFilter(const char* step, Filter filter, Arguments... arguments) {
  return [=](const PixelImage<Pixel>& image) {
    auto result = makeImage<Pixel>(image.size);
    check(filter(image.pixels.data(), image.step(), result.pixels.data(), result.step(), image.size, arguments...),
          step);
    return result;
  };
}

using SizeQuery = DaxStatus (*)(DaxiSize size, uint64_t* bytes);
Memory workBuffer(const char* step, SizeQuery query, DaxiSize size);

// The same with a work buffer as the last argument.
template <class Pixel, class Filter, class... Arguments>
auto bufferedFilter(const char* step, SizeQuery query, Filter filter, Arguments... arguments) {
  return [=](const PixelImage<Pixel>& image) {
    const Memory buffer = workBuffer(step, query, image.size);
    return plainFilter<Pixel>(step, filter, arguments..., buffer.get())(image);
  };
}

}  // namespace dax::tool
