// Filters one after the other.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "filter/filter_option.h"
#include "io/picture.h"

namespace dax::tool {

class FilterChain {
 public:
  // Throws Failure(kUsage) where the value is invalid, or the filter does not go with what those before it leave.
  void add(const FilterOption& option, const std::string& value);

  bool isEmpty() const { return steps_.empty(); }
  // The first filter that changes the size; null: none.
  const char* resizing() const;
  // Whether it works on the values of a picture of 16 bits, up to the first mask.
  bool has16() const;

  // Called with each step's title and result.
  using Watch = std::function<void(const std::string& title, const AnyImage& image)>;

  // Both throw Failure(kRefused). Of values: `levels` are black and white to filters that must know.
  AnyImage apply(const GreyImage& image, const Watch& watch) const;
  AnyImage apply(const Grey16Image& image, const Levels& levels, const Watch& watch) const;

 private:
  struct Step {
    const FilterOption* option;
    std::string title;
    ImageFilter filter;
  };

  const char* makerOf(Content content) const;
  AnyImage run(AnyImage image, const Levels& levels, const Watch& watch) const;

  std::vector<Step> steps_;
};

// Of 16 bits with the levels as black and white.
GreyImage asGrey(const AnyImage& image, const Levels& levels);

}  // namespace dax::tool
