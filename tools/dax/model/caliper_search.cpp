#include "model/caliper_search.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

constexpr double kMaxSamples = 1e8;     // about a second
constexpr double kMaxSide = 16777216;   // beyond it the library refuses
constexpr int32_t kEveryPair = 100000;  // among which the k-th is counted

bool byPlace(const FoundPair& a, const FoundPair& b) {
  return std::tuple(a.pair.first.index, a.pair.second.index) < std::tuple(b.pair.first.index, b.pair.second.index);
}

bool byScore(const FoundPair& a, const FoundPair& b) {
  return a.pair.score != b.pair.score ? a.pair.score > b.pair.score : byPlace(a, b);
}

// Pairs of both polarities: the best, or the k-th along the profile.
Caliper searchOpposite(const GreyImage& image, const Region& region, const CaliperSettings& settings) {
  CaliperSettings each = settings;
  each.choice = 0;
  if (settings.choice > 0) each.count = kEveryPair;
  each.polarity = DAXI_CALIPER_DARK_TO_LIGHT;
  Caliper both = measureOnce(image, region, each);
  each.polarity = DAXI_CALIPER_LIGHT_TO_DARK;
  const Caliper other = measureOnce(image, region, each);
  std::vector<FoundPair>& pairs = both.pairs;
  pairs.insert(pairs.end(), other.pairs.begin(), other.pairs.end());
  std::sort(pairs.begin(), pairs.end(), settings.choice > 0 ? byPlace : byScore);
  if (settings.choice > 0 && !pairs.empty()) {
    FoundPair chosen = pairs[std::min(pairs.size(), static_cast<size_t>(settings.choice)) - 1];
    chosen.pair.score = 1;
    pairs.assign(1, chosen);
  }
  pairs.resize(std::min(pairs.size(), static_cast<size_t>(settings.count)));
  return both;
}

Caliper searchOnce(const GreyImage& image, const Region& region, const CaliperSettings& settings) {
  const bool isOpposite = settings.pairs && settings.polarity == DAXI_CALIPER_ANY && !settings.staircase;
  Caliper caliper = isOpposite ? searchOpposite(image, region, settings) : measureOnce(image, region, settings);
  std::erase_if(caliper.edges, [](const FoundEdge& edge) { return !(edge.edge.score > 0); });
  std::erase_if(caliper.pairs, [](const FoundPair& pair) { return !(pair.pair.score > 0); });
  return caliper;
}

// Whether an edge of the second sampling is one of the first.
bool isSame(const CaliperEdge& one, const CaliperEdge& other) {
  return one.polarity == other.polarity && std::fabs(other.position + 0.5F - one.position) < 0.75F;
}

DaxiPoint32f middle(const DaxiPoint32f& a, const DaxiPoint32f& b) {
  return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

void average(CaliperEdge& one, const CaliperEdge& other) {
  one.position = (one.position + other.position + 0.5F) / 2;
}

void average(FoundEdge& one, const FoundEdge& other) {
  average(one.edge, other.edge);
  one.point = middle(one.point, other.point);
}

void average(FoundPair& one, const FoundPair& other) {
  average(one.pair.first, other.pair.first);
  average(one.pair.second, other.pair.second);
  one.first = middle(one.first, other.first);
  one.second = middle(one.second, other.second);
  one.pair.width = one.pair.second.position - one.pair.first.position;
  one.pair.position = (one.pair.first.position + one.pair.second.position) / 2;
}

bool isSame(const FoundEdge& one, const FoundEdge& other) {
  return isSame(one.edge, other.edge);
}
bool isSame(const FoundPair& one, const FoundPair& other) {
  return isSame(one.pair.first, other.pair.first) && isSame(one.pair.second, other.pair.second);
}

template <class Found>
void averageAll(std::vector<Found>& ones, const std::vector<Found>& others) {
  for (Found& one : ones) {
    const auto other = std::find_if(others.begin(), others.end(), [&](const Found& o) { return isSame(one, o); });
    if (other != others.end()) average(one, *other);
  }
}

template <class R>
void shift(R& region, double angle) {
  region.x = static_cast<float>(region.x + 0.5 * std::cos(angle));
  region.y = static_cast<float>(region.y + 0.5 * std::sin(angle));
}

constexpr double kRightAngle = 1.5707963267948966;

void shiftHalf(CaliperBox& box, bool alongHeight) {
  shift(box, alongHeight ? box.angle + kRightAngle : double{box.angle});
}
void shiftHalf(CaliperRhomboid& rhomboid, bool alongHeight) {
  shift(rhomboid, alongHeight ? rhomboid.sideAngle : rhomboid.angle);
}
void shiftHalf(CaliperAnnulus& annulus, bool alongHeight) {
  if (alongHeight) {
    annulus.startAngle += 1 / (annulus.innerRadius + annulus.outerRadius);
    annulus.startAngle = static_cast<float>(std::remainder(annulus.startAngle, 4 * kRightAngle));
  } else {
    annulus.innerRadius += 0.5F;
    annulus.outerRadius += 0.5F;
  }
}

Region halfPixelOn(const Region& region, bool alongHeight) {
  Region result = region;
  std::visit([alongHeight](auto& r) { shiftHalf(r, alongHeight); }, result);
  return result;
}

}  // namespace

Caliper measure(const GreyImage& image, const Region& region, const CaliperSettings& settings) {
  const Sides extent = sidesOf(region);
  if (extent.width * extent.height > kMaxSamples && extent.width <= kMaxSide && extent.height <= kMaxSide) {
    throw Failure(ExitStatus::kRefused, describe(region) + ": of " + fixed(extent.width * extent.height, 0) +
                                            " samples; at most 100000000 are taken");
  }
  Caliper caliper = searchOnce(image, region, settings);
  if (!settings.fine) return caliper;
  const Caliper other = searchOnce(image, halfPixelOn(region, settings.alongHeight), settings);
  averageAll(caliper.edges, other.edges);
  averageAll(caliper.pairs, other.pairs);
  return caliper;
}

std::vector<Caliper> measureAll(const GreyImage& image, const std::vector<Region>& regions,
                                const CaliperSettings& settings) {
  std::vector<Caliper> calipers;
  calipers.reserve(regions.size());
  for (const Region& region : regions) calipers.push_back(measure(image, region, settings));
  return calipers;
}

}  // namespace dax::tool
