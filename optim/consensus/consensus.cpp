#include "optim/consensus/consensus.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "frame/check.h"
#include "optim/consensus/sac_sampler.h"
#include "optim/consensus/sac_stop.h"
#include "optim/sparse/msp.h"

static_assert(sizeof(PrmtSacModel) == 40 && sizeof(PrmtSacCfg) == 40 && sizeof(PrmtSacResult) == 296);

namespace dax {
namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();
constexpr int32_t kMaxFits = 10;           // of the last model to its inliers
constexpr int32_t kLocalSampleFactor = 7;  // sizes of a minimal sample (Lebeda, Matas and Chum 2012)
constexpr uint64_t kLocalStream = uint64_t{1} << 62;

class Consensus {
 public:
  Consensus(const SacProblem& problem, const PrmtSacCfg& cfg, PoolThreads on, const SacBuffer& pieces, void* buffer)
      : problem_(problem),
        cfg_(cfg),
        on_(on),
        pieces_(pieces),
        buffer_(buffer),
        isMedian_(cfg.method == PRMT_SAC_LMEDS),
        limit2_(cfg.threshold * cfg.threshold),
        slope_(cfg.method == PRMT_SAC_MSAC ? 1 / limit2_ : 0),
        pools_(problem.n, problem.model.sampleSize, cfg.maxIterations),
        stop_{kNone, problem.n},
        inliers_(pieces.inliers.in(buffer)),
        next_(pieces.next.in(buffer)),
        best_() {
    // Better than none: one inlier, or a median.
    best_.cost = isMedian_ ? kNone : problem.n;
  }

  int32_t run() {
    do {
      const int32_t count = std::min(kSacBatch, cfg_.maxIterations - iterations_);
      bool isImproved = false;
      PRMT_REQUIRE_OK(runBatch(count, &isImproved));
      iterations_ += count;
      if (isImproved) {
        PRMT_REQUIRE_OK(improveLocally());
        stop_ = stopNow();
      }
    } while (iterations_ < cfg_.maxIterations && iterations_ < stop_.needed);
    if (!isFound_) return PRMT_STS_DEGENERATE;
    return fitToInliers();
  }

  void store(PrmtSacResult* result, uint8_t* mask) const {
    const int32_t s = problem_.model.sampleSize;
    *result = {};
    std::copy_n(best_.model, problem_.model.modelDoubles, result->model);
    result->cost = best_.cost;
    result->threshold = std::sqrt(inlierLimit2());
    result->confidence = 1 - elementary::pow(1 - cleanShare(inlierCount_, problem_.n, s), iterations_);
    result->inliers = inlierCount_;
    result->iterations = iterations_;
    result->degenerate = degenerate_;
    if (iterations_ < stop_.needed) result->flags = PRMT_SAC_LIMIT;
    if (!mask) return;
    std::fill_n(mask, problem_.n, uint8_t{0});
    for (int32_t i = 0; i < inlierCount_; ++i) mask[inliers_[i]] = 1;
  }

 private:
  // --- Rating ---

  double* residuals(uint32_t slice) const {
    return pieces_.residuals.in(buffer_) + static_cast<ptrdiff_t>(slice) * pieces_.room;
  }

  int32_t residual2(const double* model, int32_t first, int32_t count, double* r2) const {
    return problem_.model.residual2(model, first, count, problem_.user, r2);
  }

  // The cost of a model, or any number not below `bound` where it is not better.
  int32_t rate(const double* model, double bound, uint32_t slice, double* cost) const {
    return isMedian_ ? rateByMedian(model, bound, residuals(slice), cost)
                     : rateByGain(model, bound, residuals(slice), cost);
  }

  int32_t rateByGain(const double* model, double bound, double* r2, double* cost) const {
    double sum = 0;
    for (int32_t first = 0; first < problem_.n && sum < bound; first += kSacBlock) {
      const int32_t count = std::min(kSacBlock, problem_.n - first);
      double gain = 0;
      PRMT_REQUIRE_OK(problem_.gain ? problem_.gain(model, first, count, limit2_, slope_, problem_.user, r2, &gain)
                                    : gainOf(model, first, count, r2, &gain));
      sum += count - gain;
    }
    *cost = sum;
    return PRMT_STS_OK;
  }

  int32_t gainOf(const double* model, int32_t first, int32_t count, double* r2, double* gain) const {
    PRMT_REQUIRE_OK(residual2(model, first, count, r2));
    for (int32_t i = 0; i < count; ++i) *gain += r2[i] <= limit2_ ? 1 - slope_ * r2[i] : 0;
    return PRMT_STS_OK;
  }

  int32_t rateByMedian(const double* model, double bound, double* r2, double* cost) const {
    const int32_t n = problem_.n, middle = n / 2;
    *cost = kNone;
    int32_t above = 0;
    for (int32_t first = 0; first < n; first += kSacBlock) {
      const int32_t count = std::min(kSacBlock, n - first);
      PRMT_REQUIRE_OK(residual2(model, first, count, r2 + first));
      for (int32_t i = first; i < first + count; ++i) {
        const bool isBelow = r2[i] < bound;
        above += isBelow ? 0 : 1;
        if (!(r2[i] <= kNone)) r2[i] = kNone;
      }
      if (above >= n - middle) return PRMT_STS_OK;
    }
    std::nth_element(r2, r2 + middle, r2 + n);
    *cost = r2[middle];
    return PRMT_STS_OK;
  }

  // --- A batch of iterations ---

  int32_t runBatch(int32_t count, bool* isImproved) {
    SacPool pools[kSacBatch];
    const bool isProgressive = cfg_.method == PRMT_SAC_PROSAC;
    for (int32_t i = 0; i < count; ++i) pools[i] = isProgressive ? pools_.next(stop_.pool) : SacPool{problem_.n, false};
    SacBest* const best = pieces_.best.in(buffer_);
    for (uint32_t slice = 0; slice < pieces_.slices; ++slice) best[slice] = {}, best[slice].cost = best_.cost;

    PRMT_REQUIRE_OK(static_cast<int32_t>(overSlices(count, [&](int32_t first, int32_t end, uint32_t slice) {
      for (int32_t i = first; i < end && !best[slice].status; ++i) {
        best[slice].status = iterate(static_cast<uint64_t>(iterations_ + i), pools[i], slice, &best[slice]);
      }
    })));
    return take(best, isImproved);
  }

  template <class Body>
  DaxStatus overSlices(int32_t count, Body&& body) const {
    if (pieces_.slices < 2) {
      body(0, count, 0u);
      return DAX_STS_OK;
    }
    return runTiles(on_.pool, pieces_.slices, count, 1, [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
      body(first, end, slice);
      return DAX_STS_OK;
    });
  }

  int32_t iterate(uint64_t iteration, const SacPool& pool, uint32_t slice, SacBest* best) const {
    const PrmtSacModel& model = problem_.model;
    double* const models = pieces_.models.in(buffer_) + static_cast<ptrdiff_t>(slice) * modelRoom();
    int32_t sample[kSacMaxSample], count = 0;
    pool.draw(Pcg32(cfg_.seed, iteration), model.sampleSize, sample);
    PRMT_REQUIRE_OK(model.solve(sample, problem_.user, models, &count));
    DAX_REQUIRE(count >= 0 && count <= model.maxModels, PRMT_STS_BAD_PARAM);
    best->degenerate += count == 0;
    for (int32_t k = 0; k < count; ++k) {
      const double* const candidate = models + k * model.modelDoubles;
      double cost;
      PRMT_REQUIRE_OK(rate(candidate, best->cost, slice, &cost));
      if (cost < best->cost) best->cost = cost, std::copy_n(candidate, model.modelDoubles, best->model);
    }
    return PRMT_STS_OK;
  }

  int32_t modelRoom() const { return problem_.model.maxModels * problem_.model.modelDoubles; }

  // Slices ascend with the iterations, so that the first of equal models wins.
  int32_t take(const SacBest* best, bool* isImproved) {
    for (uint32_t slice = 0; slice < pieces_.slices; ++slice) {
      PRMT_REQUIRE_OK(best[slice].status);
      degenerate_ += best[slice].degenerate;
      if (best[slice].cost < best_.cost) best_ = best[slice], *isImproved = isFound_ = true;
    }
    return PRMT_STS_OK;
  }

  // --- Inliers and fits ---

  double inlierLimit2() const {
    if (!isMedian_) return limit2_;
    const double sigma = 1.4826 * (1 + 5.0 / (problem_.n - problem_.model.sampleSize)) * std::sqrt(best_.cost);
    return std::max(limit2_, (2.5 * sigma) * (2.5 * sigma));
  }

  // The inliers of the best model.
  int32_t collect(int32_t* indices, int32_t* found) const {
    const double limit2 = inlierLimit2();
    double* const r2 = residuals(0);
    int32_t size = 0;
    for (int32_t first = 0; first < problem_.n; first += kSacBlock) {
      const int32_t count = std::min(kSacBlock, problem_.n - first);
      PRMT_REQUIRE_OK(residual2(best_.model, first, count, r2));
      for (int32_t i = 0; i < count; ++i) {
        if (r2[i] <= limit2) indices[size++] = first + i;
      }
    }
    *found = size;
    return PRMT_STS_OK;
  }

  // Fits a model that starts as `model`; false where the data determine none.
  int32_t refit(const int32_t* indices, int32_t count, double* model, bool* isFitted) const {
    int32_t found = 1;
    *isFitted = false;
    if (!problem_.model.refit || count < problem_.model.sampleSize) return PRMT_STS_OK;
    PRMT_REQUIRE_OK(problem_.model.refit(indices, count, problem_.user, model, &found));
    *isFitted = found != 0;
    return PRMT_STS_OK;
  }

  int32_t improveLocally() {
    PRMT_REQUIRE_OK(collect(inliers_, &inlierCount_));
    const int32_t s = problem_.model.sampleSize;
    for (int32_t i = 0; i < cfg_.localIterations && problem_.model.refit; ++i) {
      const int32_t size = std::min(inlierCount_ / 2, kLocalSampleFactor * s);
      if (size < s) return PRMT_STS_OK;
      PRMT_REQUIRE_OK(improveFrom(size));
    }
    return PRMT_STS_OK;
  }

  // A fit to `size` random inliers, then to the inliers of that fit; taken if it is better.
  int32_t improveFrom(int32_t size) {
    int32_t subset[kLocalSampleFactor * kSacMaxSample];
    Pcg32 random(cfg_.seed, kLocalStream + localDraws_++);
    drawSubset(random, inlierCount_, size, subset);
    std::sort(subset, subset + size);
    for (int32_t i = 0; i < size; ++i) subset[i] = inliers_[subset[i]];

    const SacBest before = best_;
    bool isFitted = false, isBetter = false;
    PRMT_REQUIRE_OK(refit(subset, size, best_.model, &isFitted));
    int32_t count = 0;
    if (isFitted) {
      PRMT_REQUIRE_OK(rate(best_.model, kNone, 0, &best_.cost));
      PRMT_REQUIRE_OK(collect(next_, &count));
      PRMT_REQUIRE_OK(refit(next_, count, best_.model, &isFitted));
    }
    if (isFitted) PRMT_REQUIRE_OK(takeIfBetter(before.cost, &isBetter));
    if (!isBetter) best_ = before;
    return isBetter ? collect(inliers_, &inlierCount_) : PRMT_STS_OK;
  }

  int32_t takeIfBetter(double than, bool* isBetter) {
    PRMT_REQUIRE_OK(rate(best_.model, than, 0, &best_.cost));
    *isBetter = best_.cost < than;
    return PRMT_STS_OK;
  }

  int32_t fitToInliers() {
    PRMT_REQUIRE_OK(collect(inliers_, &inlierCount_));
    for (int32_t i = 0; i < kMaxFits; ++i) {
      const SacBest before = best_;
      bool isFitted;
      PRMT_REQUIRE_OK(refit(inliers_, inlierCount_, best_.model, &isFitted));
      if (isFitted) PRMT_REQUIRE_OK(rate(best_.model, kNone, 0, &best_.cost));
      const bool isKept = isFitted && best_.cost <= before.cost;
      if (!isKept) {
        best_ = before;
        return PRMT_STS_OK;
      }
      int32_t count;
      PRMT_REQUIRE_OK(collect(next_, &count));
      const bool isSame = count == inlierCount_ && std::equal(next_, next_ + count, inliers_);
      std::swap(inliers_, next_);
      inlierCount_ = count;
      if (isSame) return PRMT_STS_OK;
    }
    return PRMT_STS_OK;
  }

  SacStop stopNow() const {
    const int32_t s = problem_.model.sampleSize;
    return cfg_.method == PRMT_SAC_PROSAC ? stopOfPrefixes(cfg_.confidence, inliers_, inlierCount_, problem_.n, s)
                                          : stopOfAll(cfg_.confidence, inlierCount_, problem_.n, s);
  }

  const SacProblem& problem_;
  const PrmtSacCfg& cfg_;
  PoolThreads on_;
  const SacBuffer& pieces_;
  void* buffer_;
  bool isMedian_;
  double limit2_;
  double slope_;
  ProgressivePools pools_;
  SacStop stop_;
  int32_t* inliers_;
  int32_t* next_;
  SacBest best_;
  bool isFound_ = false;
  int32_t inlierCount_ = 0;
  int32_t iterations_ = 0;
  int32_t degenerate_ = 0;
  uint64_t localDraws_ = 0;
};

int32_t checkModel(const PrmtSacModel& model) {
  DAX_REQUIRE(model.sampleSize >= 1 && model.sampleSize <= kSacMaxSample, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(model.maxModels >= 1 && model.maxModels <= kSacMaxModels, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(model.modelDoubles >= 1 && model.modelDoubles <= PRMT_SAC_MODEL_DOUBLES, PRMT_STS_BAD_PARAM);
  return PRMT_STS_OK;
}

int32_t check(const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg, const void* result) {
  DAX_REQUIRE(model && model->solve && model->residual2 && cfg && result, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(checkModel(*model));
  return checkSac(model->sampleSize, n, *cfg);
}

int32_t run(PoolThreads on, const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg, void* user,
            PrmtSacResult* result, uint8_t* inlierMask, void* buffer) {
  DAX_REQUIRE(buffer, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(check(model, n, cfg, result));
  const SacBuffer pieces(*model, n, *cfg, hasPool(on.pool, on.threads) ? on.threads : 1);
  return runSac({*model, user, nullptr, n}, *cfg, on, pieces, buffer, result, inlierMask);
}

}  // namespace

SacBuffer::SacBuffer(const PrmtSacModel& model, int32_t n, const PrmtSacCfg& cfg, uint32_t threads)
    : slices(std::clamp(threads, 1u, kSacSlices)), room(cfg.method == PRMT_SAC_LMEDS ? n : std::min(n, kSacBlock)) {
  inliers = layout.add<int32_t>(static_cast<uint64_t>(n));
  next = layout.add<int32_t>(static_cast<uint64_t>(n));
  residuals = layout.add<double>(uint64_t{slices} * static_cast<uint64_t>(room));
  models = layout.add<double>(uint64_t{slices} * static_cast<uint64_t>(model.maxModels * model.modelDoubles));
  best = layout.add<SacBest>(slices);
}

int32_t checkSac(int32_t sampleSize, int32_t n, const PrmtSacCfg& cfg) {
  const bool isMedian = cfg.method == PRMT_SAC_LMEDS;
  DAX_REQUIRE(n >= (isMedian ? 2 : 1) * sampleSize, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.method >= PRMT_SAC_RANSAC && cfg.method <= PRMT_SAC_PROSAC, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.maxIterations >= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.threshold >= 1e-150 && cfg.threshold <= 1e150, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.confidence >= 0 && cfg.confidence <= 0.999999999999, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.localIterations >= 0 && cfg.localIterations <= 1000, PRMT_STS_BAD_PARAM);
  return PRMT_STS_OK;
}

int32_t runSac(const SacProblem& problem, const PrmtSacCfg& cfg, PoolThreads on, const SacBuffer& pieces, void* buffer,
               PrmtSacResult* result, uint8_t* inlierMask) {
  Consensus consensus(problem, cfg, on, pieces, buffer);
  PRMT_REQUIRE_OK(consensus.run());
  consensus.store(result, inlierMask);
  return PRMT_STS_OK;
}

}  // namespace dax

int32_t PRMT_SAC_DefaultCfg(PrmtSacCfg* cfg) {
  DAX_REQUIRE(cfg, PRMT_STS_NULL_POINTER);
  *cfg = {PRMT_SAC_MSAC, 10000, 1, 0.99, 1, 10, 0};
  return PRMT_STS_OK;
}

int32_t PRMT_SAC_RunBufferSize_f64(const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg, uint32_t threads,
                                   uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::check(model, n, cfg, bytes));
  const dax::SacBuffer pieces(*model, n, *cfg, threads);
  return pieces.layout.store(bytes) == DAX_STS_OK ? PRMT_STS_OK : PRMT_STS_BUFFER_OVERFLOW;
}

int32_t PRMT_SAC_Run_f64(const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg, void* user, PrmtSacResult* result,
                         uint8_t* inlierMask, void* buffer) {
  return dax::run({}, model, n, cfg, user, result, inlierMask, buffer);
}

int32_t PRMT_SAC_Run_f64_MT(void* pool, uint32_t threads, const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg,
                            void* user, PrmtSacResult* result, uint8_t* inlierMask, void* buffer) {
  return dax::run({pool, threads}, model, n, cfg, user, result, inlierMask, buffer);
}
