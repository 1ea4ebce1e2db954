#include "model/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace dax::tool {
namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();
constexpr double kRadian = std::numbers::pi / 180;
// Replaces a missing upper end: above every feature, and the sum of two is finite.
constexpr float kHuge = 1e30F;

// Range and weight are two members, or one for the newer filters.
template <DaxiRange BlobSelectCfg::*kRange, float BlobSelectCfg::*kWeight>
constexpr Filter filter(std::string_view name, uint32_t flag, double max, int dimension, const char* help) {
  return {name,
          flag,
          0,
          max,
          1,
          dimension,
          help,
          [](BlobSelectCfg& cfg, DaxiRange range) { cfg.*kRange = range; },
          [](BlobSelectCfg& cfg) -> float& { return cfg.*kWeight; }};
}

template <DaxiWeightedRange BlobSelectCfg::*kMember>
constexpr Filter filter(std::string_view name, uint32_t flag, double min, double max, double unit, int dimension,
                        const char* help) {
  return {name,
          flag,
          min,
          max,
          unit,
          dimension,
          help,
          [](BlobSelectCfg& cfg, DaxiRange range) {
            (cfg.*kMember).min = range.min;
            (cfg.*kMember).max = range.max;
          },
          [](BlobSelectCfg& cfg) -> float& { return (cfg.*kMember).weight; }};
}

using Cfg = BlobSelectCfg;
constexpr std::array kFilters = {
    filter<&Cfg::area, &Cfg::areaWeight>("area", DAXI_BLOB_BY_AREA, kNone, 2, "pixels"),
    filter<&Cfg::perimeter, &Cfg::perimeterWeight>("perimeter", DAXI_BLOB_BY_PERIMETER, kNone, 1,
                                                   "length of the outer boundary, pixels"),
    filter<&Cfg::longAxis, &Cfg::longAxisWeight>("long-axis", DAXI_BLOB_BY_LONG_AXIS, kNone, 1,
                                                 "long side of the rotated box, pixels"),
    filter<&Cfg::shortAxis, &Cfg::shortAxisWeight>("short-axis", DAXI_BLOB_BY_SHORT_AXIS, kNone, 1,
                                                   "short side of the rotated box, pixels"),
    filter<&Cfg::axisRatio, &Cfg::axisRatioWeight>("axis-ratio", DAXI_BLOB_BY_AXIS_RATIO, 1, 0,
                                                   "short side / long side, 0..1"),
    filter<&Cfg::boxAngle>("box-angle", DAXI_BLOB_BY_BOX_ANGLE, -90, 90, kRadian, 0,
                           "direction of the long side, degrees from x towards y, -90..90"),
    filter<&Cfg::circularity, &Cfg::circularityWeight>("circularity", DAXI_BLOB_BY_CIRCULARITY, 1, 0,
                                                       "area / area of the circle around the blob, 0..1"),
    filter<&Cfg::rectangularity, &Cfg::rectangularityWeight>("rectangularity", DAXI_BLOB_BY_RECTANGULARITY, 1, 0,
                                                             "area / area of the rotated box, 0..1"),
    filter<&Cfg::centralBias, &Cfg::centralBiasWeight>("central-bias", DAXI_BLOB_BY_CENTRAL_BIAS, kNone, 1,
                                                       "distance of box centre and centroid, pixels"),
    filter<&Cfg::rectWidth>("rect-width", DAXI_BLOB_BY_RECT_WIDTH, 0, kNone, 1, 1,
                            "width of the upright rectangle, pixels"),
    filter<&Cfg::rectHeight>("rect-height", DAXI_BLOB_BY_RECT_HEIGHT, 0, kNone, 1, 1,
                             "height of the upright rectangle, pixels"),
};

constexpr std::array kSortKeys = {
    SortKey{"area", DAXI_BLOB_KEY_AREA},
    SortKey{"perimeter", DAXI_BLOB_KEY_PERIMETER},
    SortKey{"circularity", DAXI_BLOB_KEY_CIRCULARITY},
    SortKey{"rectangularity", DAXI_BLOB_KEY_RECTANGULARITY},
    SortKey{"axis-ratio", DAXI_BLOB_KEY_AXIS_RATIO},
    SortKey{"x", DAXI_BLOB_KEY_CENTROID_X},
    SortKey{"y", DAXI_BLOB_KEY_CENTROID_Y},
    SortKey{"box-angle", DAXI_BLOB_KEY_BOX_ANGLE},
    SortKey{"long-axis", DAXI_BLOB_KEY_BOX_WIDTH},
    SortKey{"short-axis", DAXI_BLOB_KEY_BOX_HEIGHT},
    SortKey{"rect-x", DAXI_BLOB_KEY_RECT_X},
    SortKey{"rect-y", DAXI_BLOB_KEY_RECT_Y},
    SortKey{"principal-angle", DAXI_BLOB_KEY_PRINCIPAL_ANGLE},
};

}  // namespace

std::span<const Filter> filters() {
  return kFilters;
}

const Filter* findFilter(std::string_view name) {
  const auto* found = std::find_if(kFilters.begin(), kFilters.end(), [&](const Filter& f) { return f.name == name; });
  return found == kFilters.end() ? nullptr : found;
}

bool activate(BlobSelectCfg& cfg, const Filter& filter, const OpenRange& range, double scale) {
  const double low = range.min.value_or(filter.min);
  const double high = range.max.value_or(filter.max);
  if (low < filter.min || high > filter.max || low > high) return false;
  const double unit = filter.unit * std::pow(scale, filter.dimension);
  const auto inUnits = [&](double v) { return static_cast<float>(std::min<double>(v * unit, kHuge)); };
  cfg.flags |= filter.flag;
  filter.setRange(cfg, {inUnits(low), inUnits(high)});
  filter.weight(cfg) = high == kNone ? 0 : 1;
  return true;
}

bool isScored(const BlobSelectCfg& cfg) {
  BlobSelectCfg copy = cfg;
  return std::any_of(kFilters.begin(), kFilters.end(),
                     [&](const Filter& f) { return (cfg.flags & f.flag) != 0 && f.weight(copy) > 0; });
}

std::span<const SortKey> sortKeys() {
  return kSortKeys;
}

}  // namespace dax::tool
