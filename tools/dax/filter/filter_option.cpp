#include "filter/filter_option.h"

#include <algorithm>
#include <string_view>

namespace dax::tool {
namespace {

std::vector<FilterOption>& registered() {
  static std::vector<FilterOption> options;
  return options;
}

}  // namespace

FilterRegistration::FilterRegistration(const FilterOption& option) {
  std::vector<FilterOption>& all = registered();
  const auto before = [](const FilterOption& a, const FilterOption& b) {
    return std::string_view(a.name) < std::string_view(b.name);
  };
  all.insert(std::upper_bound(all.begin(), all.end(), option, before), option);
}

const std::vector<FilterOption>& filterOptions() {
  return registered();
}

Memory workBuffer(const char* step, SizeQuery query, DaxiSize size) {
  uint64_t bytes;
  check(query(size, &bytes), step);
  return Memory(bytes);
}

}  // namespace dax::tool
