// The engine of sample consensus, by lines through points of the plane as a model of the caller's.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "prmt.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct Plot {
  std::vector<double> x, y;
  int32_t failingFrom = -1;  // samples that have this datum fail
  int32_t size() const { return static_cast<int32_t>(x.size()); }
};

const Plot& plotOf(const void* user) {
  return *static_cast<const Plot*>(user);
}

// y = a + b x.
int32_t lineThrough(const int32_t* sample, void* user, double* models, int32_t* count) {
  const Plot& p = plotOf(user);
  const auto i = static_cast<size_t>(sample[0]), j = static_cast<size_t>(sample[1]);
  if (sample[0] == p.failingFrom || sample[1] == p.failingFrom) return 1000 + std::min(sample[0], sample[1]);
  *count = p.x[i] == p.x[j] ? 0 : 1;
  models[1] = (p.y[i] - p.y[j]) / (p.x[i] - p.x[j]);
  models[0] = p.y[i] - models[1] * p.x[i];
  return 0;
}

int32_t squares(const double* model, int32_t first, int32_t count, void* user, double* r2) {
  const Plot& p = plotOf(user);
  for (int32_t k = 0; k < count; ++k) {
    const auto i = static_cast<size_t>(first + k);
    const double r = p.y[i] - (model[0] + model[1] * p.x[i]);
    r2[k] = r * r;
  }
  return 0;
}

int32_t regression(const int32_t* indices, int32_t count, void* user, double* model, int32_t* found) {
  const Plot& p = plotOf(user);
  double mx = 0, my = 0, xx = 0, xy = 0;
  for (int32_t k = 0; k < count; ++k) mx += p.x[size_t(indices[k])], my += p.y[size_t(indices[k])];
  mx /= count, my /= count;
  for (int32_t k = 0; k < count; ++k) {
    const double dx = p.x[size_t(indices[k])] - mx;
    xx += dx * dx, xy += dx * (p.y[size_t(indices[k])] - my);
  }
  *found = xx > 0;
  model[1] = xy / xx, model[0] = my - model[1] * mx;
  return 0;
}

constexpr PrmtSacModel kRaw = {2, 1, 2, 0, lineThrough, squares, nullptr};
constexpr PrmtSacModel kFitted = {2, 1, 2, 0, lineThrough, squares, regression};

double uniform(Random& random) {
  return random.below(1 << 24) * 0x1p-24;
}

// Points along y = 3 + x / 2 within `noise`, then others anywhere, mixed by stride unless they are to stay in order.
Plot makePlot(int32_t inliers, int32_t outliers, double noise, uint64_t seed, bool isOrdered = false) {
  Random random(seed);
  const int32_t n = inliers + outliers;
  Plot plot{std::vector<double>(size_t(n)), std::vector<double>(size_t(n))};
  for (int32_t i = 0; i < n; ++i) {
    const auto at = static_cast<size_t>(isOrdered ? i : static_cast<int32_t>(int64_t{i} * 7919 % n));
    plot.x[at] = 100 * uniform(random);
    const double near = 3 + plot.x[at] / 2 + noise * (2 * uniform(random) - 1);
    plot.y[at] = i < inliers ? near : 100 * uniform(random) - 20;
  }
  return plot;
}

struct Found {
  int32_t status;
  PrmtSacResult result;
  std::vector<uint8_t> mask;
};

Found run(const PrmtSacModel& model, Plot& plot, const PrmtSacCfg& cfg, uint32_t threads = 0) {
  uint64_t bytes = 0;
  EXPECT_EQ(PRMT_SAC_RunBufferSize_f64(&model, plot.size(), &cfg, threads, &bytes), 0);
  GuardedBuffer<uint8_t> buffer(bytes);
  Found found{0, {}, std::vector<uint8_t>(plot.x.size(), 7)};
  MockPool pool;
  pool.threads = threads, pool.concurrent = true;
  found.status =
      threads ? PRMT_SAC_Run_f64_MT(&pool, threads, &model, plot.size(), &cfg, &plot, &found.result, found.mask.data(),
                                    buffer.data())
              : PRMT_SAC_Run_f64(&model, plot.size(), &cfg, &plot, &found.result, found.mask.data(), buffer.data());
  return found;
}

PrmtSacCfg settings(int32_t method, double threshold) {
  PrmtSacCfg cfg;
  PRMT_SAC_DefaultCfg(&cfg);
  cfg.method = method, cfg.threshold = threshold;
  return cfg;
}

// The definition: the least cost of all pairs.
double leastCost(const Plot& plot, const PrmtSacCfg& cfg) {
  double least = INFINITY;
  const int32_t n = plot.size();
  std::vector<double> r2(size_t(n), 0);
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = i + 1; j < n; ++j) {
      const int32_t sample[] = {i, j};
      double model[2], cost = 0;
      int32_t count = 0;
      lineThrough(sample, const_cast<Plot*>(&plot), model, &count);
      if (count == 0) continue;
      squares(model, 0, n, const_cast<Plot*>(&plot), r2.data());
      if (cfg.method == PRMT_SAC_LMEDS) {
        std::sort(r2.begin(), r2.end());
        cost = r2[size_t(n) / 2];
      } else {
        const double t2 = cfg.threshold * cfg.threshold;
        for (const double r : r2) cost += cfg.method == PRMT_SAC_MSAC ? std::min(r / t2, 1.0) : !(r <= t2);
      }
      least = std::min(least, cost);
    }
  }
  return least;
}

uint64_t spreadSeed(uint64_t k) {
  return k * 0x9E3779B97F4A7C15u;
}

void checkMask(Plot& plot, const Found& found) {
  std::vector<double> r2(plot.x.size());
  squares(found.result.model, 0, plot.size(), &plot, r2.data());
  int32_t inliers = 0;
  for (size_t i = 0; i < r2.size(); ++i) {
    const uint8_t isInlier = r2[i] <= found.result.threshold * found.result.threshold;
    EXPECT_EQ(found.mask[i], isInlier);
    inliers += isInlier;
  }
  EXPECT_EQ(found.result.inliers, inliers);
}

// No seed finds a better one, and of some seeds the best one does.
TEST(Consensus, FindsTheBestPairOfAll) {
  Plot plot = makePlot(8, 22, 0.4, 5);
  for (const size_t i : {3, 4, 7, 11, 20}) plot.x[i] = plot.x[2];  // samples without a model
  for (const int32_t method : {PRMT_SAC_RANSAC, PRMT_SAC_MSAC, PRMT_SAC_LMEDS, PRMT_SAC_PROSAC}) {
    PrmtSacCfg cfg = settings(method, 0.5);
    cfg.localIterations = 0;
    double best = INFINITY;
    int32_t degenerate = 0;
    for (uint64_t k = 0; k < 60; ++k) {
      cfg.seed = spreadSeed(k);
      const Found found = run(kRaw, plot, cfg);
      ASSERT_EQ(found.status, 0);
      best = std::min(best, found.result.cost);
      degenerate += found.result.degenerate;
      checkMask(plot, found);
    }
    // The first data of PROSAC, which here are no better than others, may decide alone.
    const double least = leastCost(plot, cfg);
    EXPECT_GE(best, least - 1e-12) << method;
    if (method != PRMT_SAC_PROSAC) {
      EXPECT_LE(best, least + 1e-12) << method;
    }
    EXPECT_GT(degenerate, 0);
  }
}

TEST(Consensus, ThreadsChangeNothing) {
  Plot plot = makePlot(300, 1100, 0.5, 6);
  for (const int32_t method : {PRMT_SAC_RANSAC, PRMT_SAC_MSAC, PRMT_SAC_LMEDS, PRMT_SAC_PROSAC}) {
    const PrmtSacCfg cfg = settings(method, 0.6);
    const Found alone = run(kFitted, plot, cfg);
    ASSERT_EQ(alone.status, 0);
    for (const uint32_t threads : {1u, 2u, 7u, 40u}) {
      const Found shared = run(kFitted, plot, cfg, threads);
      EXPECT_EQ(std::memcmp(&alone.result, &shared.result, sizeof alone.result), 0) << method << " " << threads;
      EXPECT_EQ(alone.mask, shared.mask);
    }
  }
}

// Of N samples one at least is clean with probability 1 - (1 - w)^N, which 1000 seeds show within three sigma.
TEST(Consensus, SucceedsAsOftenAsTheorySays) {
  Plot plot = makePlot(20, 80, 0, 7);
  const double clean = 20 * 19 / (100.0 * 99);
  for (const int32_t iterations : {10, 40, 64}) {
    PrmtSacCfg cfg = settings(PRMT_SAC_RANSAC, 1e-9);
    cfg.maxIterations = iterations, cfg.localIterations = 0;
    int32_t successes = 0;
    for (uint64_t k = 0; k < 1000; ++k) {
      cfg.seed = spreadSeed(k);
      const Found found = run(kRaw, plot, cfg);
      ASSERT_EQ(found.result.iterations, iterations);
      successes += found.result.inliers >= 20;
    }
    const double expected = 1 - std::pow(1 - clean, iterations);
    EXPECT_NEAR(successes, 1000 * expected, 3 * std::sqrt(1000 * expected * (1 - expected))) << iterations;
  }
}

TEST(Consensus, StopsWhenItIsSure) {
  // All are inliers: one batch. None are: the limit, which is told.
  Plot clean = makePlot(500, 0, 0, 8), noise = makePlot(2, 5000, 0, 9);
  const PrmtSacCfg cfg = settings(PRMT_SAC_RANSAC, 1e-6);
  const Found sure = run(kFitted, clean, cfg), unsure = run(kFitted, noise, cfg);
  EXPECT_EQ(sure.result.iterations, 64);
  EXPECT_EQ(sure.result.confidence, 1);
  EXPECT_EQ(sure.result.flags, 0u);
  EXPECT_EQ(unsure.result.iterations, 10000);
  EXPECT_LT(unsure.result.confidence, 0.1);
  EXPECT_EQ(unsure.result.flags, uint32_t{PRMT_SAC_LIMIT});
  // 10 % inliers: ln 0.01 / ln(1 - 0.0099) = 463, to the next batch.
  Plot some = makePlot(100, 900, 0, 10);
  const Found found = run(kRaw, some, settings(PRMT_SAC_RANSAC, 1e-6));
  EXPECT_EQ(found.result.iterations, 512);
  EXPECT_GE(found.result.confidence, 0.99);
}

TEST(Consensus, LocalFitsFindTheInliersOfNoisyData) {
  Plot plot = makePlot(400, 1600, 0.5, 11);
  PrmtSacCfg cfg = settings(PRMT_SAC_RANSAC, 0.5);
  cfg.localIterations = 0;
  const Found plain = run(kRaw, plot, cfg);
  cfg.localIterations = 10;
  const Found local = run(kFitted, plot, cfg);
  EXPECT_GT(local.result.inliers, plain.result.inliers);
  EXPECT_GT(local.result.inliers, 390);
  EXPECT_NEAR(local.result.model[0], 3, 0.1);
  EXPECT_NEAR(local.result.model[1], 0.5, 0.002);
}

TEST(Consensus, MedianNeedsNoThreshold) {
  Plot plot = makePlot(600, 400, 0.5, 12);
  const Found found = run(kFitted, plot, settings(PRMT_SAC_LMEDS, 1e-3));
  EXPECT_NEAR(found.result.model[1], 0.5, 0.003);
  EXPECT_GT(found.result.threshold, 0.3);
  EXPECT_GT(found.result.inliers, 560);
  // A threshold above stays.
  EXPECT_EQ(run(kFitted, plot, settings(PRMT_SAC_LMEDS, 4)).result.threshold, 4);
}

TEST(Consensus, GoodDataFirstAreFoundEarly) {
  Plot plot = makePlot(100, 1900, 0, 13, true);
  const Found ordered = run(kFitted, plot, settings(PRMT_SAC_PROSAC, 1e-6));
  const Found uniformly = run(kFitted, plot, settings(PRMT_SAC_RANSAC, 1e-6));
  EXPECT_EQ(ordered.result.iterations, 64);
  EXPECT_GT(uniformly.result.iterations, 1000);
  EXPECT_GE(ordered.result.inliers, 100);
  // Bad data first: it ends with the samples of all.
  std::reverse(plot.x.begin(), plot.x.end()), std::reverse(plot.y.begin(), plot.y.end());
  EXPECT_GE(run(kFitted, plot, settings(PRMT_SAC_PROSAC, 1e-6)).result.inliers, 100);
}

TEST(Consensus, FailuresSaySo) {
  Plot plot = makePlot(50, 50, 0.1, 14);
  const PrmtSacCfg cfg = settings(PRMT_SAC_MSAC, 0.2);
  // Whatever the threads, the callback's status of the lowest iteration; nothing is written.
  plot.failingFrom = 17;
  const int32_t alone = run(kFitted, plot, cfg).status;
  EXPECT_GE(alone, 1000);
  for (const uint32_t threads : {2u, 9u}) {
    const Found found = run(kFitted, plot, cfg, threads);
    EXPECT_EQ(found.status, alone);
    EXPECT_EQ(found.result.inliers, 0);
    EXPECT_EQ(found.mask[0], 7);
  }
  plot.failingFrom = -1;
  std::fill(plot.x.begin(), plot.x.end(), 4.0);
  EXPECT_EQ(run(kFitted, plot, cfg).status, PRMT_STS_DEGENERATE);
  std::fill(plot.y.begin(), plot.y.end(), NAN);
  for (int32_t i = 0; i < 100; ++i) plot.x[size_t(i)] = i;
  EXPECT_EQ(run(kFitted, plot, cfg).status, PRMT_STS_DEGENERATE);
}

}  // namespace
}  // namespace dax::test
