// The library's image filters by their names on the command line. Each is a file of this folder that registers itself.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/library_call.h"
#include "io/grey_image.h"

namespace dax::tool {

// Throws Failure(kRefused) if the library refuses the call.
using ImageFilter = std::function<GreyImage(const GreyImage&)>;

struct FilterOption {
  const char* name;       // "--mean"
  const char* valueName;  // "WxH"; null: takes none
  const char* form;       // description of valid values
  const char* help;
  bool keepsSize;
  // Null for an invalid value.
  ImageFilter (*parse)(std::string_view value);
};

// In the order of their names.
const std::vector<FilterOption>& filterOptions();

// Adds a filter before main() starts.
struct FilterRegistration {
  explicit FilterRegistration(const FilterOption& option);
};

// filter(src, srcStep, dst, dstStep, size, arguments...) on an image, for what `step` names.
template <class Filter, class... Arguments>
ImageFilter plainFilter(const char* step, Filter filter, Arguments... arguments) {
  return [=](const GreyImage& image) {
    GreyImage result = makeGreyImage(image.size);
    check(filter(image.pixels.data(), image.step(), result.pixels.data(), result.step(), image.size, arguments...),
          step);
    return result;
  };
}

using SizeQuery = DaxStatus (*)(DaxiSize size, uint64_t* bytes);
Memory workBuffer(const char* step, SizeQuery query, DaxiSize size);

// The same with a work buffer as the last argument.
template <class Filter, class... Arguments>
ImageFilter bufferedFilter(const char* step, SizeQuery query, Filter filter, Arguments... arguments) {
  return [=](const GreyImage& image) {
    const Memory buffer = workBuffer(step, query, image.size);
    return plainFilter(step, filter, arguments..., buffer.get())(image);
  };
}

}  // namespace dax::tool
