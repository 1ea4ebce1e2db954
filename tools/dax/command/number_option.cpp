#include "command/number_option.h"

#include "base/text.h"

namespace dax::tool {

std::function<std::string(const std::string& text)> numberOf(double low, double high) {
  return [=](const std::string& text) {
    const auto value = parseNumber(text);
    if (value && *value >= low && *value <= high) return std::string();
    const auto end = [](double number) { return shortest(static_cast<float>(number)); };
    return inQuotes(text) + " is not a number of " + end(low) + ".." + end(high);
  };
}

}  // namespace dax::tool
