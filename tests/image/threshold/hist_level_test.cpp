#include "daxi/hist_level.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Counts = std::vector<uint64_t>;
using Method = decltype(&DAXI_HistLevel_Otsu);

DaxiHistLevel levelOf(Method method, const Counts& hist, double percentile = 0.5) {
  const DaxiHistLevelCfg cfg = {2, 0, percentile};
  DaxiHistLevel level{};
  EXPECT_EQ(method(hist.data(), static_cast<int32_t>(hist.size()), &cfg, &level), DAX_STS_OK);
  return level;
}

// A class of a split, by its levels and their counts, in long double.
struct Part {
  long double n = 0, sum = 0, squares = 0, entropy = 0, own = 0;

  Part(const Counts& hist, size_t first, size_t end, long double origin = 0) {
    for (size_t v = first; v < end; ++v) {
      const auto h = static_cast<long double>(hist[v]), level = static_cast<long double>(v) - origin;
      n += h, sum += h * level, squares += h * level * level, own += h * h;
    }
    for (size_t v = first; v < end; ++v) {
      const long double p = static_cast<long double>(hist[v]) / n;
      if (p > 0) entropy -= p * std::log(p);
    }
  }
  long double variance() const { return squares / n - sum / n * (sum / n) + 1.0L / 12; }
};

size_t lowestOf(const Counts& hist) {
  size_t v = 0;
  while (hist[v] == 0) ++v;
  return v;
}

using Criterion = std::function<long double(const Counts&, size_t t)>;

long double shareLog(const Part& part, long double all) {
  return part.n / all * std::log(part.variance()) - 2 * part.n / all * std::log(part.n / all);
}

const struct {
  const char* name;
  Method method;
  bool isMax;
  Criterion criterion;
} kCriteria[] = {
    {"Otsu", DAXI_HistLevel_Otsu, true,
     [](const Counts& hist, size_t t) {
       const Part a(hist, 0, t + 1), b(hist, t + 1, hist.size());
       return a.sum * a.sum / a.n + b.sum * b.sum / b.n;
     }},
    {"Kapur", DAXI_HistLevel_Kapur, true,
     [](const Counts& hist, size_t t) {
       return Part(hist, 0, t + 1).entropy + Part(hist, t + 1, hist.size()).entropy;
     }},
    {"Yen", DAXI_HistLevel_Yen, true,
     [](const Counts& hist, size_t t) {
       const Part a(hist, 0, t + 1), b(hist, t + 1, hist.size());
       return -std::log(a.own / (a.n * a.n)) - std::log(b.own / (b.n * b.n));
     }},
    {"Li", DAXI_HistLevel_Li, true,
     [](const Counts& hist, size_t t) {
       const auto origin = static_cast<long double>(lowestOf(hist));
       const Part a(hist, 0, t + 1, origin), b(hist, t + 1, hist.size(), origin);
       const auto term = [](const Part& p) { return p.sum > 0 ? p.sum * std::log(p.sum / p.n) : 0; };
       return term(a) + term(b);
     }},
    {"Kittler", DAXI_HistLevel_Kittler, false,
     [](const Counts& hist, size_t t) {
       const Part a(hist, 0, t + 1), b(hist, t + 1, hist.size());
       return 1 + shareLog(a, a.n + b.n) + shareLog(b, a.n + b.n);
     }},
};

Counts randomHistogram(uint64_t seed, size_t bins) {
  Random random(seed);
  Counts hist(bins);
  const double low = random.below(100) / 100.0, high = random.below(100) / 100.0,
               wide = 0.02 + random.below(20) / 100.0;
  for (size_t v = 0; v < bins; ++v) {
    const double x = static_cast<double>(v) / static_cast<double>(bins);
    const double a = (x - low) / wide, b = (x - high) / 0.05;
    hist[v] = static_cast<uint64_t>(3000 * std::exp(-a * a) + 1000 * std::exp(-b * b)) *
              static_cast<uint64_t>(seed % 3 == 0 ? random.below(3) : 1);
  }
  hist[bins / 3] += 1, hist[bins / 2] += 2;
  return hist;
}

// The best split by the definition, in more precision: the same level, or one whose criterion is as good but for 1e-12.
TEST(HistLevel, EqualsTheDefinitions) {
  for (uint64_t seed = 0; seed < 200; ++seed) {
    const Counts hist = randomHistogram(seed, seed % 4 ? 64 : 150);
    for (const auto& each : kCriteria) {
      long double best = 0;
      bool isFound = false;
      size_t bestAt = 0;
      for (size_t t = 0; t + 1 < hist.size(); ++t) {
        if (Part(hist, 0, t + 1).n == 0 || Part(hist, t + 1, hist.size()).n == 0) continue;
        const long double value = each.criterion(hist, t);
        if (isFound && !(each.isMax ? value > best : value < best)) continue;
        best = value, bestAt = t, isFound = true;
      }
      const DaxiHistLevel level = levelOf(each.method, hist);
      EXPECT_NEAR(level.criterion, static_cast<double>(best), 1e-12 * std::abs(static_cast<double>(best)) + 1e-12)
          << each.name << " of " << seed;
      const auto there = static_cast<double>(each.criterion(hist, static_cast<size_t>(level.level[0])));
      EXPECT_NEAR(there, static_cast<double>(best), 1e-12 * std::abs(there) + 1e-12)
          << each.name << " of " << seed << ": " << level.level[0] << " and " << bestAt;
      EXPECT_EQ(level.count, 1);
      EXPECT_EQ(level.flags, 0u);
    }
  }
}

// Counts times 7 change nothing, and shifted levels move the level.
TEST(HistLevel, FollowsScalesAndShifts) {
  for (const Method method : {DAXI_HistLevel_Otsu, DAXI_HistLevel_Kapur, DAXI_HistLevel_Yen, DAXI_HistLevel_Kittler,
                              DAXI_HistLevel_Isodata, DAXI_HistLevel_Triangle, DAXI_HistLevel_Percentile}) {
    for (uint64_t seed = 1; seed < 20; seed += 3) {
      const Counts hist = randomHistogram(seed, 256);
      Counts shifted(300);
      for (size_t v = 0; v < 256; ++v) shifted[v + 40] = 7 * hist[v];
      EXPECT_EQ(levelOf(method, shifted).level[0], levelOf(method, hist).level[0] + 40);
    }
  }
}

TEST(HistLevel, ByHand) {
  // Means 1 and 8 of the classes at 4: the middle 4.5.
  EXPECT_EQ(levelOf(DAXI_HistLevel_Isodata, {0, 10, 0, 0, 0, 0, 0, 0, 10}).level[0], 4);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Intermodes, {0, 9, 0, 0, 0, 9, 9, 0}).level[0], 3);
  // Peak 100 at 1, tail to 6: the line from (1, 100) to (7, 0) is farthest from bin 2.
  EXPECT_EQ(levelOf(DAXI_HistLevel_Triangle, {0, 100, 3, 3, 3, 3, 3}).level[0], 2);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Triangle, {3, 3, 3, 3, 3, 100, 0}).level[0], 3);
  const Counts flat(100, 1);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Percentile, flat, 0.07).level[0], 6);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Percentile, flat, 0).level[0], 0);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Percentile, flat, 1).level[0], 99);
  const DaxiHistLevel uniform = levelOf(DAXI_HistLevel_Intermodes, flat);
  EXPECT_EQ(uniform.flags, uint32_t{DAXI_HIST_LEVEL_NO_MODES});
  EXPECT_EQ(uniform.level[0], 49);
  for (const Method method : {DAXI_HistLevel_Otsu, DAXI_HistLevel_Triangle, DAXI_HistLevel_Intermodes}) {
    const DaxiHistLevel level = levelOf(method, {0, 0, 5, 0});
    EXPECT_EQ(level.level[0], 2);
    EXPECT_EQ(level.flags, uint32_t{DAXI_HIST_LEVEL_DEGENERATE});
  }
}

DaxiHistLevel multi(const Counts& hist, int32_t classes) {
  const DaxiHistLevelCfg cfg = {classes, 0, 0.5};
  const auto bins = static_cast<int32_t>(hist.size());
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_HistLevelBufferSize_OtsuMulti(bins, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  DaxiHistLevel level{};
  EXPECT_EQ(DAXI_HistLevel_OtsuMulti(hist.data(), bins, &cfg, &level, buffer.data()), DAX_STS_OK);
  return level;
}

TEST(HistLevel, SeveralClasses) {
  for (uint64_t seed = 0; seed < 24; ++seed) {
    const Counts hist = randomHistogram(seed, 28);
    const auto value = [&](size_t a, size_t b, size_t c) {
      long double sum = 0;
      for (const auto& [first, end] : {std::pair{size_t{0}, a}, {a, b}, {b, c}, {c, hist.size()}}) {
        const Part part(hist, first, end);
        if (part.n > 0) sum += part.sum * part.sum / part.n;
      }
      return static_cast<double>(sum);
    };
    double best2 = 0, best3 = 0, best4 = 0;
    for (size_t a = 1; a < 28; ++a) {
      best2 = std::max(best2, value(a, a, a));
      for (size_t b = a; b < 28; ++b) {
        best3 = std::max(best3, value(a, b, b));
        for (size_t c = b; c < 28; ++c) best4 = std::max(best4, value(a, b, c));
      }
    }
    EXPECT_EQ(multi(hist, 2).level[0], levelOf(DAXI_HistLevel_Otsu, hist).level[0]);
    EXPECT_NEAR(multi(hist, 2).criterion, best2, 1e-12 * best2);
    EXPECT_NEAR(multi(hist, 3).criterion, best3, 1e-12 * best3);
    const DaxiHistLevel four = multi(hist, 4);
    EXPECT_NEAR(four.criterion, best4, 1e-12 * best4);
    const auto place = [&](int i) { return static_cast<size_t>(four.level[i]) + 1; };
    EXPECT_NEAR(value(place(0), place(1), place(2)), best4, 1e-12 * best4);
  }
  const DaxiHistLevel two = multi({0, 4, 0, 0, 4}, 4);
  EXPECT_EQ(two.count, 1);
  EXPECT_EQ(two.level[0], 1);
  EXPECT_EQ(two.flags, uint32_t{DAXI_HIST_LEVEL_FEWER});
}

// Counts at the limit do not wrap; one more is refused.
TEST(HistLevel, LargestCounts) {
  const uint64_t half = uint64_t{1} << 45;
  Counts hist(65536);
  hist[65535] = hist[60000] = half;
  EXPECT_EQ(levelOf(DAXI_HistLevel_Otsu, hist).level[0], 60000);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Kittler, hist).level[0], 60000);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Isodata, hist).level[0], 62767);
  EXPECT_EQ(levelOf(DAXI_HistLevel_Triangle, hist).level[0], 60001);
  ++hist[0];
  const DaxiHistLevelCfg cfg = {2, 0, 0.5};
  DaxiHistLevel level{};
  EXPECT_EQ(DAXI_HistLevel_Otsu(hist.data(), 65536, &cfg, &level), DAX_STS_BAD_COUNT);
}

}  // namespace
}  // namespace dax::test
