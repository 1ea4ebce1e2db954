// The library's image filters by their names on the command line.
#pragma once

#include <functional>
#include <span>
#include <string_view>

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

std::span<const FilterOption> filterOptions();

}  // namespace dax::tool
