#include "model/calipers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "base/library_call.h"
#include "base/text.h"

namespace dax::tool {
namespace {

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kMaxNumber = 1e9;
constexpr float kDefaultStep = 20, kFullStep = 255;

// The members of a region: lengths, then `angles` angles.
template <class R>
struct Kind;

template <>
struct Kind<CaliperBox> {
  static constexpr const char* kName = "box";
  static constexpr const char* kPossible = "sides are 1 to 16777216 pixels, angles -180 to 180 degrees";
  static constexpr std::array kMembers = {&CaliperBox::x, &CaliperBox::y, &CaliperBox::width, &CaliperBox::height,
                                          &CaliperBox::angle};
  static constexpr size_t kAngles = 1;
  static constexpr auto kEdgeBytes = DAXI_CalipEdgeDetectV1BufferSize_8u;
  static constexpr auto kPairBytes = DAXI_CalipEdgePairDetectV1BufferSize_8u;
  static constexpr auto kEdges = DAXI_CalipEdgeDetectV1_8u_C1R;
  static constexpr auto kPairs = DAXI_CalipEdgePairDetectV1_8u_C1R;
};

template <>
struct Kind<CaliperRhomboid> {
  static constexpr const char* kName = "rhomboid";
  static constexpr const char* kPossible =
      "sides are 1 to 16777216 pixels and not parallel, angles -180 to 180 degrees";
  static constexpr std::array kMembers = {&CaliperRhomboid::x,     &CaliperRhomboid::y,
                                          &CaliperRhomboid::width, &CaliperRhomboid::height,
                                          &CaliperRhomboid::angle, &CaliperRhomboid::sideAngle};
  static constexpr size_t kAngles = 2;
  static constexpr auto kEdgeBytes = DAXI_CalipEdgeDetectRhomboidV1BufferSize_8u;
  static constexpr auto kPairBytes = DAXI_CalipEdgePairDetectRhomboidV1BufferSize_8u;
  static constexpr auto kEdges = DAXI_CalipEdgeDetectRhomboidV1_8u_C1R;
  static constexpr auto kPairs = DAXI_CalipEdgePairDetectRhomboidV1_8u_C1R;
};

template <>
struct Kind<CaliperAnnulus> {
  static constexpr const char* kName = "annulus";
  static constexpr const char* kPossible =
      "INNER is at least 0, OUTER at least 1 more, START -180 to 180 degrees, SWEEP at most 360 and 1 pixel or more";
  static constexpr std::array kMembers = {&CaliperAnnulus::x,           &CaliperAnnulus::y,
                                          &CaliperAnnulus::innerRadius, &CaliperAnnulus::outerRadius,
                                          &CaliperAnnulus::startAngle,  &CaliperAnnulus::sweep};
  static constexpr size_t kAngles = 2;
  static constexpr auto kEdgeBytes = DAXI_CalipEdgeDetectAnnulusV1BufferSize_8u;
  static constexpr auto kPairBytes = DAXI_CalipEdgePairDetectAnnulusV1BufferSize_8u;
  static constexpr auto kEdges = DAXI_CalipEdgeDetectAnnulusV1_8u_C1R;
  static constexpr auto kPairs = DAXI_CalipEdgePairDetectAnnulusV1_8u_C1R;
};

template <class R>
constexpr bool isAngle(size_t member) {
  return member + Kind<R>::kAngles >= Kind<R>::kMembers.size();
}

// Adds the possible regions to the message of a call that refuses one.
void checkRegion(DaxStatus status, const auto& region, DaxiSize size) {
  using R = std::decay_t<decltype(region)>;
  std::string what = describe(region);
  if (status == DAX_STS_BAD_ROTATED_RECT) {
    const bool inside = region.x >= 0 && region.y >= 0 && region.x <= static_cast<float>(size.width - 1) &&
                        region.y <= static_cast<float>(size.height - 1);
    what += std::string(" (") + (inside ? Kind<R>::kPossible : "its centre is outside the image") + ")";
  }
  check(status, what.c_str());
}

double meanRadius(const CaliperAnnulus& a) {
  return (double{a.innerRadius} + a.outerRadius) / 2;
}

Sides sides(const CaliperBox& b) {
  return {b.width, b.height};
}
Sides sides(const CaliperRhomboid& r) {
  return {r.width, r.height};
}
Sides sides(const CaliperAnnulus& a) {
  return {double{a.outerRadius} - a.innerRadius, a.sweep * meanRadius(a)};
}

Point skewed(double x, double y, double angle, double sideAngle, double s, double t) {
  return {static_cast<float>(x + s * std::cos(angle) + t * std::cos(sideAngle)),
          static_cast<float>(y + s * std::sin(angle) + t * std::sin(sideAngle))};
}

Point place(const CaliperBox& b, double s, double t) {
  return skewed(b.x, b.y, b.angle, b.angle + std::numbers::pi / 2, s, t);
}
Point place(const CaliperRhomboid& r, double s, double t) {
  return skewed(r.x, r.y, r.angle, r.sideAngle, s, t);
}
Point place(const CaliperAnnulus& a, double s, double t) {
  const double radius = meanRadius(a), angle = a.startAngle + double{a.sweep} / 2 + t / radius;
  return skewed(a.x, a.y, angle, 0, radius + s, 0);
}

template <class Cfg>
Cfg commonCfg(const CaliperSettings& settings) {
  Cfg cfg = {};
  cfg.projection = settings.alongHeight ? DAXI_CALIPER_HORIZONTAL : DAXI_CALIPER_VERTICAL;
  cfg.polarity = settings.polarity;
  cfg.filterHalfWidth = settings.halfWidth;
  cfg.threshold = settings.usedThreshold();
  return cfg;
}

CaliperEdgeCfg edgeCfg(const CaliperSettings& settings) {
  auto cfg = commonCfg<CaliperEdgeCfg>(settings);
  cfg.maxEdges = settings.count;
  cfg.edgeChoice = settings.choice;
  cfg.scoreFlags = DAXI_CALIPER_BY_CONTRAST;
  cfg.contrast = {0, 0, 0, static_cast<float>(kFullStep * settings.stepResponse()), 0, 1};
  return cfg;
}

CaliperEdgePairCfg pairCfg(const CaliperSettings& settings) {
  auto cfg = commonCfg<CaliperEdgePairCfg>(settings);
  cfg.maxPairs = settings.count;
  cfg.pairChoice = settings.choice;
  cfg.scoreFlags = DAXI_CALIPER_PAIR_BY_CONTRAST;
  cfg.contrast = {0, 0, 0, static_cast<float>(2 * kFullStep * settings.stepResponse()), 0, 1};
  if (!settings.expectedWidth) return cfg;
  cfg.scoreFlags |= DAXI_CALIPER_PAIR_BY_SIZE_DIFF_NORM;
  cfg.expectedWidth = *settings.expectedWidth;
  cfg.sizeDiffNorm = {1, 0, 1, 1, 0, 1};
  return cfg;
}

void findEdges(const GreyImage& image, const auto& region, const CaliperSettings& settings, CaliperProfile& profile,
               void* buffer, Caliper& to) {
  const CaliperEdgeCfg cfg = edgeCfg(settings);
  std::vector<CaliperEdge> edges(static_cast<size_t>(settings.count));
  std::vector<DaxiPoint32f> points(edges.size());
  CaliperEdgeResult result{edges.data(), points.data(), 0};
  using R = std::decay_t<decltype(region)>;
  checkRegion(Kind<R>::kEdges(image.pixels.data(), image.step(), image.size, &region, &cfg, &result, &profile, buffer),
              region, image.size);
  for (size_t i = 0; i < static_cast<size_t>(result.count); ++i) to.edges.push_back({edges[i], points[i]});
}

void findPairs(const GreyImage& image, const auto& region, const CaliperSettings& settings, CaliperProfile& profile,
               void* buffer, Caliper& to) {
  const CaliperEdgePairCfg cfg = pairCfg(settings);
  std::vector<CaliperEdgePair> pairs(static_cast<size_t>(settings.count));
  std::vector<DaxiPoint32f> points(2 * pairs.size());
  CaliperEdgePairResult result{pairs.data(), points.data(), 0};
  using R = std::decay_t<decltype(region)>;
  checkRegion(Kind<R>::kPairs(image.pixels.data(), image.step(), image.size, &region, &cfg, &result, &profile, buffer),
              region, image.size);
  for (size_t i = 0; i < static_cast<size_t>(result.count); ++i) {
    to.pairs.push_back({pairs[i], points[2 * i], points[2 * i + 1]});
  }
}

template <class R>
Caliper measureRegion(const GreyImage& image, const R& region, const CaliperSettings& settings) {
  Caliper caliper{region, {}, {}, {}, {}, 0};
  uint64_t bytes = 0;
  checkRegion((settings.pairs ? Kind<R>::kPairBytes : Kind<R>::kEdgeBytes)(&region, &bytes), region, image.size);
  const Memory buffer(bytes);
  // The query has checked the sides; they are rounded up by less than 2.
  const auto [width, height] = sides(region);
  const auto capacity = static_cast<size_t>((settings.alongHeight ? height : width) + 2);
  caliper.profile.resize(capacity);
  caliper.response.resize(capacity);
  CaliperProfile profile{caliper.profile.data(), caliper.response.data(), static_cast<int32_t>(capacity), 0, 0};
  (settings.pairs ? findPairs<R> : findEdges<R>)(image, region, settings, profile, buffer.get(), caliper);
  caliper.profile.resize(static_cast<size_t>(profile.length));
  caliper.response.resize(static_cast<size_t>(profile.length));
  caliper.kernelLength = profile.kernelLength;
  return caliper;
}

// Radians of an angle in degrees, which but for a sweep is reduced to half a turn either way.
template <class R>
double angleOf(size_t member, double degrees) {
  const bool isSweep = std::is_same_v<R, CaliperAnnulus> && member + 1 == Kind<R>::kMembers.size();
  return (isSweep ? degrees : std::remainder(degrees, 360.0)) * kRadians;
}

}  // namespace

template <class R>
std::optional<Region> parseRegion(std::string_view text) {
  const std::vector<std::string_view> parts = split(text, ',');
  if (parts.size() != Kind<R>::kMembers.size()) return std::nullopt;
  R region = {};
  for (size_t i = 0; i < parts.size(); ++i) {
    const std::optional<double> value = parseNumber(parts[i]);
    if (!value || std::fabs(*value) > kMaxNumber) return std::nullopt;
    region.*Kind<R>::kMembers[i] = static_cast<float>(isAngle<R>(i) ? angleOf<R>(i, *value) : *value);
  }
  return region;
}

template std::optional<Region> parseRegion<CaliperBox>(std::string_view);
template std::optional<Region> parseRegion<CaliperRhomboid>(std::string_view);
template std::optional<Region> parseRegion<CaliperAnnulus>(std::string_view);

std::string describe(const Region& region) {
  return std::visit(
      [](const auto& r) {
        using R = std::decay_t<decltype(r)>;
        std::string text = Kind<R>::kName;
        for (size_t i = 0; i < Kind<R>::kMembers.size(); ++i) {
          const double value = r.*Kind<R>::kMembers[i];
          text += i == 0 ? ' ' : ',';
          text += shortest(static_cast<float>(isAngle<R>(i) ? std::round(value / kRadians * 1e4) / 1e4 : value));
        }
        return text;
      },
      region);
}

Region moved(Region region, double dx, double dy) {
  std::visit(
      [&](auto& r) {
        r.x = static_cast<float>(r.x + dx);
        r.y = static_cast<float>(r.y + dy);
      },
      region);
  return region;
}

Point pointOf(const Region& region, double s, double t) {
  return std::visit([&](const auto& r) { return place(r, s, t); }, region);
}

Sides sidesOf(const Region& region) {
  return std::visit([](const auto& r) { return sides(r); }, region);
}

// Half the sum of a kernel's absolute values: 1 for those up to a half width of 5, else of differences of a Gaussian.
double CaliperSettings::stepResponse() const {
  if (halfWidth <= 5) return 1;
  const int h = static_cast<int>(halfWidth);
  const double sigma = 0.16667 * 2 * h;
  const auto gauss = [&](double x) { return std::exp(-x * x / (2 * sigma * sigma)); };
  double sum = 0;
  for (int x = -h; x <= h; ++x) sum += gauss(x);
  return ((gauss(0) + gauss(1)) / 2 - gauss(h)) / sum;
}

float CaliperSettings::usedThreshold() const {
  return threshold.value_or(static_cast<float>(kDefaultStep * stepResponse()));
}

Caliper measureOnce(const GreyImage& image, const Region& region, const CaliperSettings& settings) {
  return std::visit([&](const auto& r) { return measureRegion(image, r, settings); }, region);
}

}  // namespace dax::tool
