// The library's image filters, by the names that they have on the command line.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "io/grey_image.h"

namespace dax::tool {

// Throws Failure(kRefused) where the library refuses.
using ImageFilter = std::function<GreyImage(const GreyImage&)>;

struct FilterOption {
  const char* name;       // "--mean"
  const char* valueName;  // "WxH"; null: takes none
  const char* form;       // what a value must be
  const char* help;
  bool keepsSize;
  // Null for a value that is none.
  ImageFilter (*parse)(std::string_view value);
};

std::span<const FilterOption> filterOptions();

}  // namespace dax::tool
