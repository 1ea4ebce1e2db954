#include "model/threshold_method.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "base/library_call.h"
#include "base/text.h"
#include "daxi/threshold_global.h"
#include "daxi/threshold_local.h"

namespace dax::tool {
namespace {

template <class Pixel>
using ByLevel = DaxStatus (*)(const Pixel*, int32_t, uint8_t*, int32_t, DaxiSize, const DaxiThresholdGlobalCfg*,
                              DaxiHistLevel*, void*);

struct GlobalMethod {
  std::string_view name;
  ByLevel<uint8_t> on8;
  ByLevel<uint16_t> on16;
};

// Otsu's, too: with two classes.
constexpr GlobalMethod kGlobal[] = {
    {"otsu", DAXI_ThresholdOtsuMulti_8u_C1R, DAXI_ThresholdOtsuMulti_16u_C1R},
    {"kapur", DAXI_ThresholdKapur_8u_C1R, DAXI_ThresholdKapur_16u_C1R},
    {"yen", DAXI_ThresholdYen_8u_C1R, DAXI_ThresholdYen_16u_C1R},
    {"li", DAXI_ThresholdLi_8u_C1R, DAXI_ThresholdLi_16u_C1R},
    {"kittler", DAXI_ThresholdKittler_8u_C1R, DAXI_ThresholdKittler_16u_C1R},
    {"isodata", DAXI_ThresholdIsodata_8u_C1R, DAXI_ThresholdIsodata_16u_C1R},
    {"intermodes", DAXI_ThresholdIntermodes_8u_C1R, DAXI_ThresholdIntermodes_16u_C1R},
    {"triangle", DAXI_ThresholdTriangle_8u_C1R, DAXI_ThresholdTriangle_16u_C1R},
    {"percentile", DAXI_ThresholdPercentile_8u_C1R, DAXI_ThresholdPercentile_16u_C1R},
};
// In the order of their numbers.
constexpr std::array<std::string_view, 7> kLocal = {"mean", "mean-variance", "niblack", "sauvola",
                                                    "wolf", "bernsen",       "gauss"};

const GlobalMethod* findGlobal(std::string_view name) {
  const auto* const found = std::ranges::find(kGlobal, name, &GlobalMethod::name);
  return found == std::end(kGlobal) ? nullptr : found;
}

ThresholdMethod parseGlobal(std::string_view name, std::string_view settings) {
  ThresholdMethod method{std::string(name), -1, {}, {}};
  if (name == "percentile") {
    method.number = parseNumber(settings);
    if (!method.number || *method.number < 0 || *method.number > 100) {
      throw std::invalid_argument("percentile takes a share in percent, such as percentile:20");
    }
  } else if (!settings.empty()) {
    throw std::invalid_argument(std::string(name) + " takes no numbers");
  }
  return method;
}

ThresholdMethod parseLocal(std::string_view name, int local, std::string_view settings) {
  ThresholdMethod method{std::string(name), local, {31, 31}, {}};
  if (settings.empty()) return method;
  const auto parts = splitPair(settings, ',');
  const auto side = parseInteger(parts ? parts->first : settings, 1, 32767);
  if (parts) method.number = parseNumber(parts->second);
  if (!side || (parts && !method.number)) {
    throw std::invalid_argument(inQuotes(settings) + " is not W or W,N with a window of 1..32767 pixels");
  }
  method.window = {*side, *side};
  return method;
}

// --- Calls, by type of pixel ---

template <class Pixel>
struct LocalCalls;
template <>
struct LocalCalls<uint8_t> {
  static constexpr double kUnit = 1;
  static constexpr auto defaults = DAXI_ThresholdLocalDefaultCfg_8u;
  static constexpr auto bytes = DAXI_ThresholdLocalBufferSize_8u;
  static constexpr auto threshold = DAXI_ThresholdLocal_8u_C1R;
};
template <>
struct LocalCalls<uint16_t> {
  static constexpr double kUnit = 256;
  static constexpr auto defaults = DAXI_ThresholdLocalDefaultCfg_16u;
  static constexpr auto bytes = DAXI_ThresholdLocalBufferSize_16u8u;
  static constexpr auto threshold = DAXI_ThresholdLocal_16u8u_C1R;
};

template <class Pixel>
MethodMask applyLocal(const ThresholdMethod& method, const PixelImage<Pixel>& image, bool dark, double unit) {
  using Calls = LocalCalls<Pixel>;
  const char* const step = "threshold";
  DaxiThresholdLocalCfg cfg;
  check(Calls::defaults(method.local, &cfg), step);
  const double scale = unit / Calls::kUnit;
  cfg.r *= scale, cfg.offset *= scale, cfg.minDeviation *= scale, cfg.minContrast *= scale;
  cfg.window = method.window, cfg.mode = dark ? DAXI_LOCAL_DARK : DAXI_LOCAL_LIGHT;
  if (method.number) {
    const double inGreys = *method.number * unit;
    if (method.local == DAXI_LOCAL_MEAN || method.local == DAXI_LOCAL_GAUSS) cfg.offset = inGreys;
    if (method.local == DAXI_LOCAL_BERNSEN) cfg.minContrast = inGreys;
    if (method.local != DAXI_LOCAL_GAUSS) cfg.k = *method.number;
  }
  uint64_t bytes;
  check(Calls::bytes(image.size, &cfg, &bytes), step);
  const Memory buffer(bytes);
  MethodMask result{makeGreyImage(image.size), {}, ""};
  check(Calls::threshold(image.pixels.data(), image.step(), result.mask.pixels.data(), image.step(), image.size, &cfg,
                         buffer.get()),
        step);
  return result;
}

std::string noteOn(const DaxiHistLevel& level) {
  if (level.flags & DAXI_HIST_LEVEL_DEGENERATE) return "all pixels have one grey value, which nothing parts";
  if (level.flags & DAXI_HIST_LEVEL_NO_MODES) return "the histogram has no two maxima, the level is otsu's";
  return "";
}

template <class Pixel>
MethodMask applyGlobal(const ThresholdMethod& method, ByLevel<Pixel> byLevel, const PixelImage<Pixel>& image,
                       bool dark) {
  const char* const step = "threshold";
  DaxiThresholdGlobalCfg cfg;
  check(DAXI_ThresholdGlobalDefaultCfg(&cfg), step);
  cfg.polarity = dark ? DAXI_POLARITY_DARK : DAXI_POLARITY_BRIGHT;
  cfg.level.percentile = method.number.value_or(50) / 100;
  uint64_t bytes;  // Otsu's need is the greatest
  check(
      sizeof(Pixel) == 1 ? DAXI_ThresholdOtsuMultiBufferSize_8u(&bytes) : DAXI_ThresholdOtsuMultiBufferSize_16u(&bytes),
      step);
  const Memory buffer(bytes);
  MethodMask result{makeGreyImage(image.size), {}, ""};
  DaxiHistLevel level;
  check(byLevel(image.pixels.data(), image.step(), result.mask.pixels.data(), image.step(), image.size, &cfg, &level,
                buffer.get()),
        step);
  result.levels.assign(level.level, level.level + level.count);
  result.note = noteOn(level);
  return result;
}

}  // namespace

std::optional<ThresholdMethod> parseThresholdMethod(std::string_view text) {
  const auto pair = splitPair(text, ':');
  const std::string_view name = pair ? pair->first : text, settings = pair ? pair->second : std::string_view();
  const auto local = std::ranges::find(kLocal, name);
  if (pair && settings.empty()) return std::nullopt;
  if (local != kLocal.end()) return parseLocal(name, static_cast<int>(local - kLocal.begin()), settings);
  if (findGlobal(name)) return parseGlobal(name, settings);
  return std::nullopt;
}

std::vector<ThresholdMethod> allThresholdMethods() {
  std::vector<ThresholdMethod> methods;
  for (const GlobalMethod& global : kGlobal) {
    if (global.name != "percentile") methods.push_back({std::string(global.name), -1, {}, {}});
  }
  for (size_t i = 0; i < kLocal.size(); ++i) {
    methods.push_back({std::string(kLocal[i]), static_cast<int>(i), {31, 31}, {}});
  }
  return methods;
}

namespace {

// Intermodes takes 1024 levels at most: of the values' range in 255 steps.
MethodMask applyIn255Steps(const ThresholdMethod& method, const Grey16Image& image, int range, bool dark) {
  GreyImage grey = makeGreyImage(image.size);
  std::transform(image.pixels.begin(), image.pixels.end(), grey.pixels.begin(),
                 [range](int v) { return static_cast<uint8_t>(255 * v / range); });
  MethodMask result = applyGlobal(method, findGlobal(method.name)->on8, grey, dark);
  for (int& level : result.levels) level = ((level + 1) * range - 1) / 255;
  return result;
}

}  // namespace

MethodMask applyThresholdMethod(const ThresholdMethod& method, const Picture& picture, bool dark) {
  const GlobalMethod* const global = findGlobal(method.name);
  if (!picture.hasValues()) {
    return method.local >= 0 ? applyLocal(method, picture.grey, dark, 1)
                             : applyGlobal(method, global->on8, picture.grey, dark);
  }
  const auto [low, high] = picture.levels.value_or(Levels{0, picture.maxValue});
  Grey16Image above = picture.values;
  for (uint16_t& v : above.pixels) v = static_cast<uint16_t>(std::clamp<int>(v, low, high) - low);
  if (method.local >= 0) return applyLocal(method, above, dark, (high - low + 1) / 256.0);
  MethodMask result = method.name == "intermodes" ? applyIn255Steps(method, above, std::max(high - low, 1), dark)
                                                  : applyGlobal(method, global->on16, above, dark);
  for (int& level : result.levels) level += low;
  return result;
}

}  // namespace dax::tool
