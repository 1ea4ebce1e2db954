#include "filter/filter_option.h"

#include <algorithm>
#include <string_view>
#include <utility>

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
    const auto key = [](const FilterOption& o) { return std::pair(o.kind.group, std::string_view(o.name)); };
    return key(a) < key(b);
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
