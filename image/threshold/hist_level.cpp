#include "image/threshold/hist_level.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "frame/numeric/elementary.h"
#include "frame/numeric/rank.h"

namespace dax {

DaxStatus checkLevelCfg(const DaxiHistLevelCfg& cfg) {
  DAX_REQUIRE(cfg.classes >= 2 && cfg.classes <= 4, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.percentile >= 0 && cfg.percentile <= 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkHistogram(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg, HistSums& sums) {
  constexpr uint64_t kMaxPixels = uint64_t{1} << 46;
  DAX_REQUIRE(bins >= 2 && bins <= 65536, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkLevelCfg(*cfg));
  for (int32_t v = 0; v < bins; ++v) {
    if (hist[v] == 0) continue;
    DAX_REQUIRE(hist[v] <= kMaxPixels - sums.n, DAX_STS_BAD_COUNT);
    if (sums.n == 0) sums.first = v;
    sums.last = v;
    sums.add(static_cast<uint64_t>(v), hist[v]);
  }
  return sums.n > 0 ? DAX_STS_OK : DAX_STS_BAD_COUNT;
}

namespace {

struct LevelHistogram {
  const uint64_t* counts;
  int32_t bins;
  const DaxiHistLevelCfg& cfg;
  HistSums all;
};

DaxiHistLevel resultOf(int32_t t, double criterion, uint32_t flags = 0) {
  return {{t, 0, 0}, 1, flags, 0, criterion};
}

// n ln n, and 0 for n = 0.
double timesLog(double n) {
  return n > 0 ? n * log(n) : 0;
}

// The split with the greatest criterion(lower class, upper class).
template <class Criterion>
DaxiHistLevel bestSplit(const LevelHistogram& h, Criterion criterion) {
  HistSums below;
  DaxiHistLevel best = resultOf(h.all.first, 0);
  for (int32_t t = h.all.first; t < h.all.last; ++t) {
    if (h.counts[t] == 0) continue;
    below.add(static_cast<uint64_t>(t), h.counts[t]);
    const double value = criterion(t, below, h.all.without(below));
    if (t == h.all.first || value > best.criterion) best = resultOf(t, value);
  }
  return best;
}

DaxiHistLevel otsuSplit(const LevelHistogram& h) {
  return bestSplit(
      h, [](int32_t, const HistSums& a, const HistSums& b) { return explained(a.n, a.sum) + explained(b.n, b.sum); });
}

DaxiHistLevel kapurSplit(const LevelHistogram& h) {
  double all = 0, below = 0;
  for (int32_t v = h.all.first; v <= h.all.last; ++v) all += timesLog(static_cast<double>(h.counts[v]));
  const auto entropy = [](uint64_t n, double sum) {
    return log(static_cast<double>(n)) - sum / static_cast<double>(n);
  };
  return bestSplit(h, [&](int32_t t, const HistSums& a, const HistSums& b) {
    below += timesLog(static_cast<double>(h.counts[t]));
    return entropy(a.n, below) + entropy(b.n, all - below);
  });
}

DaxiHistLevel yenSplit(const LevelHistogram& h) {
  using Wide = unsigned __int128;
  const auto square = [&](int32_t v) { return Wide{h.counts[v]} * h.counts[v]; };
  Wide all = 0, below = 0;
  for (int32_t v = h.all.first; v <= h.all.last; ++v) all += square(v);
  const auto correlation = [](Wide squares, uint64_t n) {
    return -log(static_cast<double>(squares) / (static_cast<double>(n) * static_cast<double>(n)));
  };
  return bestSplit(h, [&](int32_t t, const HistSums& a, const HistSums& b) {
    below += square(t);
    return correlation(below, a.n) + correlation(all - below, b.n);
  });
}

DaxiHistLevel liSplit(const LevelHistogram& h) {
  const auto origin = static_cast<uint64_t>(h.all.first);
  const auto part = [&](const HistSums& c) {
    const auto sum = static_cast<double>(c.sum - origin * c.n);
    return sum > 0 ? sum * log(sum / static_cast<double>(c.n)) : 0;
  };
  return bestSplit(h, [&](int32_t, const HistSums& a, const HistSums& b) { return part(a) + part(b); });
}

DaxiHistLevel kittlerSplit(const LevelHistogram& h) {
  using Wide = unsigned __int128;
  const auto all = static_cast<double>(h.all.n);
  const auto part = [&](const HistSums& c) {
    const auto n = static_cast<double>(c.n);
    const Wide spread = Wide{c.n} * c.squares - Wide{c.sum} * c.sum;
    const double variance = static_cast<double>(spread) / n / n + 1.0 / 12;
    const double share = n / all;
    return share * log(variance) - 2 * share * log(share);
  };
  DaxiHistLevel best =
      bestSplit(h, [&](int32_t, const HistSums& a, const HistSums& b) { return -(part(a) + part(b)); });
  best.criterion = 1 - best.criterion;
  return best;
}

// The floor of the middle of the means does not fall as t grows, and lies within first..last - 1, so it meets t
// somewhere.
DaxiHistLevel isodataSplit(const LevelHistogram& h) {
  using Wide = unsigned __int128;
  HistSums below;
  for (int32_t t = h.all.first;; ++t) {
    below.add(static_cast<uint64_t>(t), h.counts[t]);
    const HistSums above = h.all.without(below);
    const Wide sums = Wide{below.sum} * above.n + Wide{above.sum} * below.n;
    const Wide counts = 2 * Wide{below.n} * above.n;
    if (t == h.all.last - 1 || sums / counts == static_cast<Wide>(t)) {
      return resultOf(t, static_cast<double>(sums) / static_cast<double>(counts));
    }
  }
}

// Means of three neighbours until two maxima are left.
constexpr int32_t kMaxModeBins = 1024;

struct Modes {
  int32_t count = 0;
  int32_t sum = 0;  // of twice the places of the first two
};

Modes findModes(const double* smooth, int32_t bins) {
  Modes modes;
  for (int32_t v = 0; v < bins;) {
    int32_t end = v + 1;
    while (end < bins && smooth[end] == smooth[v]) ++end;
    const bool rises = v == 0 || smooth[v] > smooth[v - 1], falls = end == bins || smooth[v] > smooth[end];
    if (rises && falls && ++modes.count <= 2) modes.sum += v + end - 1;
    v = end;
  }
  return modes;
}

void smoothOnce(double* smooth, int32_t bins) {
  double before = 0;
  for (int32_t v = 0; v < bins; ++v) {
    const double own = smooth[v], after = v + 1 < bins ? smooth[v + 1] : 0;
    smooth[v] = (before + own + after) / 3;
    before = own;
  }
}

DaxiHistLevel intermodesSplit(const LevelHistogram& h) {
  double smooth[kMaxModeBins];
  Modes modes;
  if (h.bins <= kMaxModeBins) {
    std::transform(h.counts, h.counts + h.bins, smooth, [](uint64_t n) { return static_cast<double>(n); });
    modes = findModes(smooth, h.bins);
    for (int32_t round = 0; round < 1000 && modes.count > 2; ++round) {
      smoothOnce(smooth, h.bins);
      modes = findModes(smooth, h.bins);
    }
  }
  if (modes.count == 2) return resultOf(modes.sum / 4, 0);
  DaxiHistLevel level = otsuSplit(h);
  level.flags |= DAXI_HIST_LEVEL_NO_MODES;
  return level;
}

// Distances from the line are compared by twice the area of the triangle: counts to 2^46, levels to 2^16.
DaxiHistLevel triangleSplit(const LevelHistogram& h) {
  const auto peak = static_cast<int32_t>(std::max_element(h.counts, h.counts + h.bins) - h.counts);
  const bool isRight = h.all.last - peak >= peak - h.all.first;
  const int32_t step = isRight ? 1 : -1, end = isRight ? h.all.last + 1 : h.all.first - 1;
  const auto height = static_cast<int64_t>(h.counts[peak]);
  const auto areaAt = [&](int32_t t) {
    return height * std::abs(end - t) - static_cast<int64_t>(h.counts[t]) * std::abs(end - peak);
  };
  int32_t best = peak;
  for (int32_t t = peak; t != end; t += step) {
    const int64_t area = areaAt(t);
    if (area > areaAt(best) || (area == areaAt(best) && t < best)) best = t;
  }
  return resultOf(isRight ? best : best - 1, static_cast<double>(areaAt(best)));
}

DaxiHistLevel percentileSplit(const LevelHistogram& h) {
  const uint64_t rank = rankOf(h.cfg.percentile, h.all.n);
  uint64_t sum = 0;
  int32_t t = h.all.first - 1;
  while (sum < rank && t < h.all.last) sum += h.counts[++t];
  return resultOf(t, 0);
}

DaxStatus findLevel(DaxiHistLevel (*method)(const LevelHistogram&), const uint64_t* hist, int32_t bins,
                    const DaxiHistLevelCfg* cfg, DaxiHistLevel* level) {
  DAX_REQUIRE(hist && cfg && level, DAX_STS_NULL_POINTER);
  LevelHistogram h = {hist, bins, *cfg, {}};
  DAX_REQUIRE_OK(checkHistogram(hist, bins, cfg, h.all));
  *level = h.all.first == h.all.last ? resultOf(h.all.first, 0, DAXI_HIST_LEVEL_DEGENERATE) : method(h);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_HistLevelDefaultCfg(DaxiHistLevelCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {2, 0, 0.5};
  return DAX_STS_OK;
}

#define DAX_HIST_LEVEL(NAME, METHOD)                                                               \
  DaxStatus DAXI_HistLevel_##NAME(const uint64_t* hist, int32_t bins, const DaxiHistLevelCfg* cfg, \
                                  DaxiHistLevel* level) {                                          \
    return dax::findLevel(dax::METHOD, hist, bins, cfg, level);                                    \
  }
DAX_HIST_LEVEL(Otsu, otsuSplit)
DAX_HIST_LEVEL(Kapur, kapurSplit)
DAX_HIST_LEVEL(Yen, yenSplit)
DAX_HIST_LEVEL(Li, liSplit)
DAX_HIST_LEVEL(Kittler, kittlerSplit)
DAX_HIST_LEVEL(Isodata, isodataSplit)
DAX_HIST_LEVEL(Intermodes, intermodesSplit)
DAX_HIST_LEVEL(Triangle, triangleSplit)
DAX_HIST_LEVEL(Percentile, percentileSplit)
#undef DAX_HIST_LEVEL
