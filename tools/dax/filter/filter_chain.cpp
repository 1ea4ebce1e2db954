#include "filter/filter_chain.h"

#include <algorithm>
#include <stdexcept>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

[[noreturn]] void refuse(ExitStatus status, const std::string& message) {
  throw Failure(status, message);
}

ImageFilter parsed(const FilterOption& option, const std::string& value) {
  const std::string name = option.name;
  try {
    if (ImageFilter filter = option.parse(value)) return filter;
  } catch (const std::invalid_argument& error) {
    refuse(ExitStatus::kUsage, name + ": " + error.what());
  }
  refuse(ExitStatus::kUsage, name + ": " + inQuotes(value) + " is not " + option.form);
}

bool isMask(const GreyImage& image) {
  int set = 0;
  return std::all_of(image.pixels.begin(), image.pixels.end(), [&set](int v) {
    if (set == 0) set = v;
    return v == 0 || v == set;
  });
}

AnyImage applyStep(const FilterOption& option, const ImageFilter& filter, const AnyImage& image, const Levels& levels) {
  if (const auto* const values = std::get_if<Grey16Image>(&image)) {
    return filter.onValues ? filter.onValues(*values, levels) : filter.on16(*values);
  }
  const auto& grey = std::get<GreyImage>(image);
  if (option.kind.takes == Content::kMask && !isMask(grey)) {
    refuse(ExitStatus::kRefused,
           std::string(option.name) +
               " takes a mask, of pixels that are 0 and pixels of one other value: put --threshold "
               "or another filter that makes one before it");
  }
  return filter.on8(grey);
}

}  // namespace

// The last filter that decided on the content, if it is that one; else null.
const char* FilterChain::makerOf(Content content) const {
  for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
    const FilterKind& kind = step->option->kind;
    if (kind.leaves != Content::kAny) return kind.leaves == content ? step->option->name : nullptr;
  }
  return nullptr;
}

void FilterChain::add(const FilterOption& option, const std::string& value) {
  const std::string name = option.name;
  const char* const maker = option.kind.takes == Content::kAny    ? nullptr
                            : option.kind.takes == Content::kMask ? makerOf(Content::kGrey)
                                                                  : makerOf(Content::kMask);
  if (maker && option.kind.takes == Content::kMask) {
    refuse(ExitStatus::kUsage, name + " takes a mask, and " + maker +
                                   " leaves grey values: put --threshold or another filter that makes a mask between "
                                   "them");
  }
  if (maker) refuse(ExitStatus::kUsage, name + " takes grey values, and " + maker + " leaves a mask");
  steps_.push_back({&option, value.empty() ? name : name + " " + value, parsed(option, value)});
}

const char* FilterChain::resizing() const {
  const auto step = std::find_if(steps_.begin(), steps_.end(), [](const Step& s) { return !s.option->kind.keepsSize; });
  return step == steps_.end() ? nullptr : step->option->name;
}

bool FilterChain::has16() const {
  for (const Step& step : steps_) {
    if (!step.filter.has16()) return false;
    if (step.option->kind.leaves == Content::kMask) return true;
  }
  return true;
}

AnyImage FilterChain::run(AnyImage image, const Levels& levels, const Watch& watch) const {
  for (const Step& step : steps_) {
    image = applyStep(*step.option, step.filter, image, levels);
    if (watch) watch(step.title, image);
  }
  return image;
}

AnyImage FilterChain::apply(const GreyImage& image, const Watch& watch) const {
  return run(image, {0, 255}, watch);
}

AnyImage FilterChain::apply(const Grey16Image& image, const Levels& levels, const Watch& watch) const {
  return run(image, levels, watch);
}

GreyImage asGrey(const AnyImage& image, const Levels& levels) {
  if (const auto* const grey = std::get_if<GreyImage>(&image)) return *grey;
  const auto& values = std::get<Grey16Image>(image);
  GreyImage grey = makeGreyImage(values.size);
  const int range = std::max(levels.high - levels.low, 1);
  std::transform(values.pixels.begin(), values.pixels.end(), grey.pixels.begin(), [&](int v) {
    return static_cast<uint8_t>((255 * std::clamp(v - levels.low, 0, range) + range / 2) / range);
  });
  return grey;
}

}  // namespace dax::tool
