// Checks of numbers on the command line.
#pragma once

#include <functional>
#include <string>

namespace dax::tool {

// Accepts finite numbers of low..high; the parser's own check of a range accepts NaN.
std::function<std::string(const std::string& text)> numberOf(double low, double high);

}  // namespace dax::tool
