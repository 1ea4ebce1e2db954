// Local thresholds by looking at each pixel of the window.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "daxi/threshold_local.h"
#include "tests/support/filter_scene.h"

namespace dax::oracle {

// The pixels of the window of (x, y); pixel(x, y) is asked for positions inside w x h, in memory for any.
template <class Pixel>
std::vector<long double> windowPixels(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, DaxiSize window,
                                      int32_t border, double value) {
  std::vector<long double> pixels;
  for (int64_t v = y - window.height / 2; v < y - window.height / 2 + window.height; ++v) {
    for (int64_t u = x - window.width / 2; u < x - window.width / 2 + window.width; ++u) {
      const bool isInMemory = border == DAXI_BORDER_IN_MEMORY;
      const auto column = isInMemory ? u : test::walkInside(u, size.width, border);
      const auto row = isInMemory ? v : test::walkInside(v, size.height, border);
      if (column && row) {
        pixels.push_back(static_cast<long double>(pixel(*column, *row)));
      } else if (border == DAXI_BORDER_CONSTANT) {
        pixels.push_back(value);
      }
    }
  }
  return pixels;
}

// The mean of the window of (x, y), weighted by a Gaussian whose deviations are k times its sides.
template <class Pixel>
long double gaussMean(const Pixel& pixel, int64_t x, int64_t y, DaxiSize size, const DaxiThresholdLocalCfg& cfg) {
  const double k = cfg.k == 0 ? 1.0 / 6 : cfg.k;
  const auto side = [k](int32_t n) {
    std::vector<long double> weights;
    for (int32_t i = 0; i < n; ++i) {
      const long double t = (i - n / 2) / (static_cast<long double>(k) * n);
      weights.push_back(std::exp(-t * t / 2));
    }
    return weights;
  };
  const auto across = side(cfg.window.width), down = side(cfg.window.height);
  long double sum = 0, weights = 0;
  for (int32_t j = 0; j < cfg.window.height; ++j) {
    for (int32_t i = 0; i < cfg.window.width; ++i) {
      const int64_t u = x + i - cfg.window.width / 2, v = y + j - cfg.window.height / 2;
      const long double weight = across[static_cast<size_t>(i)] * down[static_cast<size_t>(j)];
      for (const long double p : windowPixels(pixel, u, v, size, {1, 1}, cfg.border, cfg.value)) {
        sum += weight * p, weights += weight;
      }
    }
  }
  return sum / weights;
}

struct WindowMoments {
  long double mean = 0, deviation = 0;
  explicit WindowMoments(const std::vector<long double>& pixels) {
    for (const long double v : pixels) mean += v;
    mean /= static_cast<long double>(pixels.size());
    for (const long double v : pixels) deviation += (v - mean) * (v - mean);
    deviation = std::sqrt(deviation / static_cast<long double>(pixels.size()));
  }
};

struct WolfExtremes {
  long double deviation = 0, least = 0;
};

// How far x lies above the threshold; NaN where nothing is to be set.
inline long double aboveLocal(long double x, const std::vector<long double>& pixels, const DaxiThresholdLocalCfg& cfg,
                              const WolfExtremes& wolf) {
  const WindowMoments m(pixels);
  const long double k = cfg.k, floor = cfg.minDeviation, s = m.deviation;
  switch (cfg.method) {
    case DAXI_LOCAL_MEAN:
      return x - m.mean;
    case DAXI_LOCAL_MEAN_VARIANCE:
      return x - (m.mean + k * std::max(s, floor));
    case DAXI_LOCAL_NIBLACK:
      return x - (m.mean + k * s);
    case DAXI_LOCAL_SAUVOLA:
      return x - m.mean * (1 + k * (s / cfg.r - 1));
    case DAXI_LOCAL_WOLF:
      if (wolf.deviation == 0) return x - m.mean;
      return x - (m.mean - k * (1 - s / wolf.deviation) * (m.mean - wolf.least));
    default: {
      const auto [low, high] = std::minmax_element(pixels.begin(), pixels.end());
      return *high - *low < cfg.minContrast ? NAN : x - (*high + *low) / 2;
    }
  }
}

}  // namespace dax::oracle
