// The library's image filters by their names on the command line. Each is a file of this folder that registers itself.
#pragma once

#include <functional>
#include <string_view>
#include <variant>
#include <vector>

#include "base/library_call.h"
#include "io/grey_image.h"
#include "io/picture.h"

namespace dax::tool {

using AnyImage = std::variant<GreyImage, Grey16Image>;

// A filter of 8-bit images and, where the library has one, of 16-bit images; masks that it makes have 8 bits. All throw
// Failure(kRefused) if the library refuses the call.
struct ImageFilter {
  std::function<GreyImage(const GreyImage&)> on8 = {};
  std::function<AnyImage(const Grey16Image&)> on16 = {};
  std::function<AnyImage(const Grey16Image&, const Levels&)> onValues = {};  // for on16, where black and white matter

  explicit operator bool() const { return on8 != nullptr; }
  bool has16() const { return on16 || onValues; }
};

// What a filter takes or leaves. A mask has pixels of 0 and of one other value.
enum class Content { kAny, kGrey, kMask };

// Headings of the help, in its order.
inline constexpr const char* kFilterGroups[] = {"Smooth and sharpen",
                                                "Edges and blobs",
                                                "By size, of masks too",
                                                "Regions, of masks too",
                                                "By height, of grey values",
                                                "From grey values to a mask",
                                                "Of masks",
                                                "Others"};

struct FilterKind {
  int group;
  Content takes;
  Content leaves;  // any: what it took
  bool keepsSize = true;
};

inline constexpr FilterKind kSmoothing = {0, Content::kAny, Content::kGrey}, kRanks = {0, Content::kAny, Content::kAny},
                            kEdges = {1, Content::kAny, Content::kGrey}, kOutlines = {1, Content::kAny, Content::kMask},
                            kSizes = {2, Content::kAny, Content::kAny}, kRegions = {3, Content::kAny, Content::kAny},
                            kHeights = {4, Content::kGrey, Content::kGrey},
                            kExtrema = {4, Content::kGrey, Content::kMask},
                            kBinarising = {5, Content::kGrey, Content::kMask},
                            kMasks = {6, Content::kMask, Content::kMask},
                            kMeasures = {6, Content::kMask, Content::kGrey},
                            kPoints = {7, Content::kAny, Content::kAny},
                            kFrames = {7, Content::kAny, Content::kAny, false};

struct FilterOption {
  const char* name;       // "--mean"
  const char* valueName;  // "WxH"; null: takes none
  const char* form;       // description of valid values
  const char* help;
  FilterKind kind;
  // Empty for an invalid value; may throw std::invalid_argument that says what is wrong with it.
  ImageFilter (*parse)(std::string_view value);
};

// In the order of their groups, and in these of their names.
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

// The same of a filter whose need depends on its configuration.
template <class Pixel, class Cfg, class Query, class Filter>
auto configuredFilter(const char* step, Query query, Filter filter, const Cfg& cfg) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, &cfg, &bytes), step);
    const Memory buffer(bytes);
    return plainFilter<Pixel>(step, filter, &cfg, buffer.get())(image);
  };
}

}  // namespace dax::tool
