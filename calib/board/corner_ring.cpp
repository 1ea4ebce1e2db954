#include "calib/board/corner_ring.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "frame/rows.h"
#include "geometry/vector2.h"

namespace dax {
namespace {

constexpr double kMinWidth = 25.0 / 360;  // of a sector, by a full turn
constexpr double kUnlikeWidths = 0.11;    // max difference of opposite sectors, by a full turn
constexpr float kUnlikeLevels = 0.5f;     // max difference of opposite sectors, by the contrast
constexpr int32_t kCircleSamples = 32;

// Positions where the samples cross the threshold, in sample intervals, ascending. A count of 5 stands for 5 or more.
struct Changes {
  int32_t count = 0;
  std::array<double, 4> at{};
  bool firstIntoDark = false;
};

Changes findChanges(const float* samples, int32_t count, float level) {
  Changes changes;
  for (int32_t k = 0; k < count; ++k) {
    const float from = samples[k], to = samples[k + 1 < count ? k + 1 : 0];
    if ((from > level) == (to > level)) continue;
    if (changes.count == 4) return {5, {}, false};
    if (changes.count == 0) changes.firstIntoDark = from > level;
    changes.at[static_cast<size_t>(changes.count++)] = k + static_cast<double>(from - level) / (from - to);
  }
  return changes;
}

double sectorWidth(const Changes& c, int32_t sector, int32_t count) {
  const auto i = static_cast<size_t>(sector);
  return (sector < 3 ? c.at[i + 1] - c.at[i] : c.at[0] + count - c.at[3]) / count;
}

bool widthsFit(const Changes& c, int32_t count) {
  std::array<double, 4> width;
  for (int32_t i = 0; i < 4; ++i) width[static_cast<size_t>(i)] = sectorWidth(c, i, count);
  return *std::min_element(width.begin(), width.end()) >= kMinWidth &&
         std::fabs(width[0] - width[2]) <= kUnlikeWidths && std::fabs(width[1] - width[3]) <= kUnlikeWidths;
}

// Mean level of each sector; sector i follows change i.
std::array<float, 4> sectorLevels(const float* samples, int32_t count, const Changes& c) {
  std::array<float, 4> sum{}, number{};
  size_t sector = 3;
  for (int32_t k = 0; k < count; ++k) {
    while (sector == 3 ? k < c.at[3] && k >= c.at[0] : k >= c.at[sector + 1]) sector = (sector + 1) % 4;
    sum[sector] += samples[k];
    number[sector] += 1;
  }
  for (size_t i = 0; i < 4; ++i) sum[i] = number[i] > 0 ? sum[i] / number[i] : 0;
  return sum;
}

DaxiPoint32f directionAt(const DaxiPoint32f* directions, int32_t count, double position) {
  const auto k = static_cast<int32_t>(position);
  const auto f = static_cast<float>(position - k);
  const DaxiPoint32f a = directions[k % count], b = directions[(k + 1) % count];
  return {a.x + f * (b.x - a.x), a.y + f * (b.y - a.y)};
}

CornerEdges edgesOf(const Changes& c, const DaxiPoint32f* directions, int32_t count) {
  const auto at = [&](size_t i) { return directionAt(directions, count, c.at[i]); };
  const DaxiPoint32f even = unit(at(0) - at(2)), odd = unit(at(1) - at(3));
  return c.firstIntoDark ? CornerEdges{even, odd} : CornerEdges{odd, even};
}

// Bilinear interpolation; above[0] is the upper left of the four pixels.
float between(const uint8_t* above, const uint8_t* below, int32_t right, float wx, float wy) {
  const float top = static_cast<float>(above[0]) + wx * static_cast<float>(above[right] - above[0]);
  const float bottom = static_cast<float>(below[0]) + wx * static_cast<float>(below[right] - below[0]);
  return top + wy * (bottom - top);
}

// Bilinear sample; the edge pixels are repeated outside the image.
float bilinear(const uint8_t* src, int32_t srcStep, DaxiSize size, float x, float y) {
  const float fx = std::floor(x), fy = std::floor(y);
  const auto column = [&](float v) { return std::clamp(static_cast<int32_t>(v), 0, size.width - 1); };
  const auto row = [&](float v) {
    return rowAt(src, srcStep, std::clamp(static_cast<int32_t>(v), 0, size.height - 1));
  };
  const int32_t left = column(fx);
  return between(row(fy) + left, row(fy + 1) + left, column(fx + 1) - left, x - fx, y - fy);
}

// The same for x in [0, width - 1) and y in [0, height - 1), where conversion to an integer is the floor.
float bilinearInside(const uint8_t* src, int32_t srcStep, float x, float y) {
  const auto column = static_cast<int32_t>(x), row = static_cast<int32_t>(y);
  const uint8_t* const above = rowAt(src, srcStep, row) + column;
  return between(above, above + srcStep, 1, x - static_cast<float>(column), y - static_cast<float>(row));
}

}  // namespace

RingView viewRing(const float* samples, const DaxiPoint32f* directions, int32_t count, float contrast) {
  RingView view{};
  float sum = 0;
  for (int32_t k = 0; k < count; ++k) sum += samples[k];
  Changes changes = findChanges(samples, count, sum / static_cast<float>(count));
  if (changes.count != 4) return view;
  // The mean of all samples is biased towards the level of the wider sectors: the edges are halfway between the levels.
  std::array<float, 4> level = sectorLevels(samples, count, changes);
  changes = findChanges(samples, count, (level[0] + level[1] + level[2] + level[3]) / 4);
  if (changes.count != 4 || !widthsFit(changes, count)) return view;

  level = sectorLevels(samples, count, changes);
  view.contrast = std::fabs((level[0] + level[2]) - (level[1] + level[3])) / 2;
  const float tolerance = kUnlikeLevels * view.contrast;
  view.corner = view.contrast >= contrast && std::fabs(level[0] - level[2]) <= tolerance &&
                std::fabs(level[1] - level[3]) <= tolerance;
  view.edges = edgesOf(changes, directions, count);
  return view;
}

RingView viewCircle(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre, float radius,
                    float contrast) {
  static constexpr auto kDirections = [] {
    std::array<DaxiPoint32f, kCircleSamples> table{};
    ringDirections(table.data(), kCircleSamples);
    return table;
  }();
  std::array<float, kCircleSamples> samples;
  const float reach = radius + 1;  // allows for rounding
  const bool inside = centre.x >= reach && centre.y >= reach && centre.x + reach < static_cast<float>(size.width - 1) &&
                      centre.y + reach < static_cast<float>(size.height - 1);
  for (size_t k = 0; k < samples.size(); ++k) {
    const float x = centre.x + radius * kDirections[k].x, y = centre.y + radius * kDirections[k].y;
    samples[k] = inside ? bilinearInside(src, srcStep, x, y) : bilinear(src, srcStep, size, x, y);
  }
  return viewRing(samples.data(), kDirections.data(), kCircleSamples, contrast);
}

}  // namespace dax

bool DAXI_Common_around_edge_orit(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f centre, float radius,
                                  float contrast, dax::CornerEdges* edges) {
  for (const float r : {radius, radius / 2}) {
    const dax::RingView view = dax::viewCircle(src, srcStep, size, centre, r, contrast);
    if (!view.corner) continue;
    *edges = view.edges;
    return true;
  }
  return false;
}
