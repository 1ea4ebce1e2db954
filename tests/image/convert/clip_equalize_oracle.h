// Equalised histograms by definition, pixel by pixel, with fractions of whole numbers.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

#include "daxi/clip_equalize.h"
#include "tests/support/test_image.h"

namespace dax::oracle {

// Nearest integer, halves to even.
inline int64_t nearestQuotient(int64_t n, int64_t d) {
  int64_t q = n / d;
  const int64_t twice = 2 * (n - q * d);
  if (twice > d || (twice == d && q % 2 != 0)) ++q;
  return q;
}

inline int64_t mirrored(int64_t i, int64_t n) {
  while (i < 0 || i >= n) i = n == 1 ? 0 : i < 0 ? -i : 2 * n - 2 - i;
  return i;
}

template <class T>
T equalized(const test::TestImage<T>& image, T value) {
  int64_t upTo = 0, lowest = 0, all = 0;
  T least = std::numeric_limits<T>::max();
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = 0; x < image.size().width; ++x) {
      const T v = image.at(x, y);
      lowest = v < least ? 1 : lowest + (v == least);
      least = std::min(least, v);
      upTo += v <= value;
      ++all;
    }
  }
  if (lowest == all) return value;
  return static_cast<T>(nearestQuotient((upTo - lowest) * std::numeric_limits<T>::max(), all - lowest));
}

// What a tile makes of each level.
template <class T>
std::vector<int64_t> tileMap(const test::TestImage<T>& image, DaxiSize tile, int32_t tileX, int32_t tileY,
                             const DaxiClipEqualizeCfg& cfg) {
  constexpr int64_t kLevelCount = int64_t{std::numeric_limits<T>::max()} + 1;
  const int64_t area = int64_t{tile.width} * tile.height;
  std::vector<int64_t> counts(static_cast<size_t>(cfg.bins)), map(static_cast<size_t>(kLevelCount));
  for (int32_t j = 0; j < tile.height; ++j) {
    for (int32_t i = 0; i < tile.width; ++i) {
      const auto x = static_cast<int32_t>(mirrored(int64_t{tileX} * tile.width + i, image.size().width));
      const auto y = static_cast<int32_t>(mirrored(int64_t{tileY} * tile.height + j, image.size().height));
      ++counts[static_cast<size_t>(image.at(x, y) * int64_t{cfg.bins} / kLevelCount)];
    }
  }
  const double limit = std::max(1.0, std::floor(cfg.clip * static_cast<double>(area) / cfg.bins));
  int64_t excess = 0;
  for (int64_t& count : counts) {
    if (static_cast<double>(count) <= limit) continue;
    excess += count - static_cast<int64_t>(limit);
    count = static_cast<int64_t>(limit);
  }
  for (int64_t& count : counts) count += excess / cfg.bins;
  const int64_t rest = excess % cfg.bins;
  for (int64_t i = 0; i < rest; ++i) ++counts[static_cast<size_t>(i * (cfg.bins / rest))];
  std::partial_sum(counts.begin(), counts.end(), counts.begin());
  for (size_t v = 0; v < map.size(); ++v) {
    map[v] = nearestQuotient(counts[v * counts.size() / map.size()] * std::numeric_limits<T>::max(), area);
  }
  return map;
}

// Weights of the tiles along one axis at x, in units of 1 / (2 tile).
inline std::vector<int64_t> weightsOfTiles(int32_t x, int32_t tile, int32_t tiles) {
  std::vector<int64_t> weights(static_cast<size_t>(tiles));
  for (int32_t i = -1; i <= tiles; ++i) {
    const int64_t distance = std::abs(2 * int64_t{x} - ((2 * int64_t{i} + 1) * tile - 1));
    const int32_t held = std::clamp(i, 0, tiles - 1);
    if (distance < 2 * int64_t{tile}) weights[static_cast<size_t>(held)] += 2 * int64_t{tile} - distance;
  }
  return weights;
}

template <class T>
test::TestImage<T> clipEqualized(const test::TestImage<T>& image, const DaxiClipEqualizeCfg& cfg) {
  const DaxiSize size = image.size();
  const DaxiSize tile = {(size.width + cfg.tilesX - 1) / cfg.tilesX, (size.height + cfg.tilesY - 1) / cfg.tilesY};
  std::vector<std::vector<int64_t>> maps;
  for (int32_t i = 0; i < cfg.tilesX * cfg.tilesY; ++i)
    maps.push_back(tileMap(image, tile, i % cfg.tilesX, i / cfg.tilesX, cfg));
  test::TestImage<T> result(size);
  result.fill([&](int32_t x, int32_t y) {
    const std::vector<int64_t> across = weightsOfTiles(x, tile.width, cfg.tilesX),
                               down = weightsOfTiles(y, tile.height, cfg.tilesY);
    int64_t sum = 0;
    for (size_t i = 0; i < maps.size(); ++i)
      sum += across[i % across.size()] * down[i / across.size()] * maps[i][image.at(x, y)];
    return nearestQuotient(sum, 4 * int64_t{tile.width} * tile.height);
  });
  return result;
}

}  // namespace dax::oracle
