// The head of every JSON result.
#pragma once

#include <nlohmann/json.hpp>

#include "io/picture.h"

namespace dax::tool {

// Version, date, command line, units of lengths and angles.
nlohmann::ordered_json runJson(const char* lengthUnit = "pixel");

// Name, sides, depth and levels of a picture.
nlohmann::ordered_json pictureJson(const std::string& file, const Picture& picture);

}  // namespace dax::tool
