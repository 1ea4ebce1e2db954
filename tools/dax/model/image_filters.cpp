#include "model/image_filters.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/library_call.h"
#include "base/text.h"
#include "daxi/copy_border.h"
#include "daxi/erode3x3.h"
#include "daxi/filter_box.h"
#include "daxi/filter_mean.h"
#include "daxi/filter_median3x3.h"

namespace dax::tool {
namespace {

constexpr int kMaxMaskSide = 255, kMaxSide = 65535, kMaxRadius = 1000, kMaxIterations = 1000000;
constexpr int kMaxBorder = 10000;

using SizeQuery = DaxStatus (*)(DaxiSize size, uint64_t* bytes);

Memory workBuffer(const char* step, SizeQuery query, DaxiSize size) {
  uint64_t bytes;
  check(query(size, &bytes), step);
  return Memory(bytes);
}

std::optional<DaxiSize> parseMask(std::string_view text, int maxSide) {
  const auto sides = parseIntegerPair(text, 'x', 1, maxSide);
  if (!sides) return std::nullopt;
  return DaxiSize{sides->first, sides->second};
}

// Calls filter(src, srcStep, dst, dstStep, size, argument, work buffer) on an image; `step` names it in messages.
template <class Filter, class Argument>
ImageFilter withBuffer(const char* step, SizeQuery query, Filter filter, Argument argument) {
  return [=](const GreyImage& image) {
    const Memory buffer = workBuffer(step, query, image.size);
    GreyImage result = makeGreyImage(image.size);
    check(filter(image.pixels.data(), image.step(), result.pixels.data(), result.step(), image.size, argument,
                 buffer.get()),
          step);
    return result;
  };
}

ImageFilter parseMean(std::string_view text) {
  const auto mask = parseMask(text, kMaxMaskSide);
  return mask ? withBuffer("mean", DAXI_FilterMeanBufferSize_8u, DAXI_FilterMean_8u_C1R, *mask) : nullptr;
}

ImageFilter parseMeanInside(std::string_view text) {
  const auto mask = parseMask(text, kMaxSide);
  return mask ? withBuffer("mean", DAXI_FilterMeanIntBufferSize_8u, DAXI_FilterMeanInt_8u_C1R, *mask) : nullptr;
}

ImageFilter parseErode(std::string_view text) {
  const auto count = parseInteger(text, 1, kMaxIterations);
  return count ? withBuffer("erosion", DAXI_Erode3x3BufferSize_8u, DAXI_Erode3x3_8u_C1R, *count) : nullptr;
}

ImageFilter parseBox(std::string_view text) {
  const auto radius = parseInteger(text, 1, kMaxRadius);
  if (!radius) return nullptr;
  return [radius = *radius](const GreyImage& image) {
    const Memory buffer = workBuffer("box sum", DAXI_FilterBoxBufferSize_8u32s, image.size);
    std::vector<int32_t> sums(image.pixels.size());
    check(DAXI_FilterBox_8u32s_C1R(image.pixels.data(), image.step(), sums.data(), image.step(), image.size, radius,
                                   buffer.get()),
          "box sum");
    GreyImage result = makeGreyImage(image.size);
    const int32_t pixels = (2 * radius + 1) * (2 * radius + 1);
    std::transform(sums.begin(), sums.end(), result.pixels.begin(),
                   [pixels](int32_t sum) { return static_cast<uint8_t>((sum + pixels / 2) / pixels); });
    return result;
  };
}

ImageFilter parseMedian(std::string_view) {
  return [](const GreyImage& image) {
    GreyImage result = makeGreyImage(image.size);
    check(
        DAXI_FilterMedian3x3_8u_C1R(image.pixels.data(), image.step(), result.pixels.data(), result.step(), image.size),
        "median");
    return result;
  };
}

using CopyBorder = decltype(&DAXI_CopyReplicateBorder_8u_C1R);

// copy(..., grey) for a border of one grey value, else copy(...).
template <class Copy, class... Grey>
ImageFilter border(int width, Copy copy, Grey... grey) {
  return [=](const GreyImage& image) {
    GreyImage result = makeGreyImage({image.size.width + 2 * width, image.size.height + 2 * width});
    check(copy(image.pixels.data(), image.step(), image.size, result.pixels.data(), result.step(), result.size, width,
               static_cast<uint32_t>(width), grey...),
          "border");
    return result;
  };
}

ImageFilter constantBorder(std::string_view text) {
  const auto pair = splitPair(text, ':');
  const auto width = parseInteger(pair ? pair->first : text, 0, kMaxBorder);
  const auto grey = pair ? parseInteger(pair->second, 0, 255) : 0;
  if (!width || !grey) return nullptr;
  return border(*width, DAXI_CopyConstBorder_8u_C1R, static_cast<uint8_t>(*grey));
}

ImageFilter parseBorder(std::string_view text) {
  struct Rule {
    std::string_view name;
    CopyBorder copy;
  };
  const std::array rules = {
      Rule{"replicate", DAXI_CopyReplicateBorder_8u_C1R}, Rule{"mirror", DAXI_CopyMirrorBorder_8u_C1R},
      Rule{"symmetric", DAXI_CopySymmetricBorder_8u_C1R}, Rule{"circular", DAXI_CopyCircularBorder_8u_C1R}};
  const auto pair = splitPair(text, ':');
  if (!pair) return nullptr;
  if (pair->first == "constant") return constantBorder(pair->second);
  const auto* rule = std::find_if(rules.begin(), rules.end(), [&](const Rule& r) { return r.name == pair->first; });
  const auto width = parseInteger(pair->second, 0, kMaxBorder);
  if (rule == rules.end() || !width) return nullptr;
  return border(*width, rule->copy);
}

constexpr std::array kFilterOptions = {
    FilterOption{"--mean", "WxH", "WxH with sides of 1..255",
                 "mean of W x H pixels, sides of 1..255; the image goes on\n"
                 "mirrored beyond its edges",
                 true, parseMean},
    FilterOption{"--mean-inside", "WxH", "WxH with sides of 1..65535",
                 "mean of those of W x H pixels that lie in the image", true, parseMeanInside},
    FilterOption{"--box", "R", "R of 1..1000, which makes 2 R + 1 pixels each way",
                 "sum over squares of 2 R + 1 pixels, R in 1..1000, drawn as\n"
                 "a share of their area: nothing is added beyond the edges,\n"
                 "so they come out darker",
                 true, parseBox},
    FilterOption{"--median3", nullptr, nullptr, "median of 3 x 3 pixels: removes specks, keeps edges", true,
                 parseMedian},
    FilterOption{"--erode", "N", "N of 1..1000000",
                 "N one-sided erosions of a mask (pixels above 0 are set):\n"
                 "each takes the last pixel of the runs along rows, then\n"
                 "along columns; what is one pixel wide stays",
                 true, parseErode},
    FilterOption{"--border", "RULE:N",
                 "RULE:N with N of 0..10000, by replicate, mirror, symmetric, circular or constant",
                 "N pixels more on every side, 0..10000, by a RULE: replicate\n"
                 "(aa|abc), mirror (cb|abc), symmetric (ba|abc), circular\n"
                 "(bc|abc), or constant:N:GREY (constant:N is black)",
                 false, parseBorder},
};

}  // namespace

std::span<const FilterOption> filterOptions() {
  return kFilterOptions;
}

}  // namespace dax::tool
