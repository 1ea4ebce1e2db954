#include "daxi/haralick.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "image/texture/singular_value.h"

static_assert(sizeof(DaxiHaralickFeatures) == 14 * sizeof(double));

namespace dax {
namespace {

struct HaralickBuffer {
  explicit HaralickBuffer(uint64_t levels)
      : rows(layout.add<uint64_t>(levels)),
        columns(layout.add<uint64_t>(levels)),
        sums(layout.add<uint64_t>(2 * levels + 1)),
        differences(layout.add<uint64_t>(levels)),
        matrix(layout.add<double>(levels * levels)),
        room(layout.add<double>(SecondSingularValue::kRoom * levels)) {}
  BufferLayout layout;
  BufferPiece<uint64_t> rows, columns, sums, differences;
  BufferPiece<double> matrix, room;
};

// Counts by some number from 0 on, which is that of a level, of a sum of two or of a difference.
struct CountsBy {
  const uint64_t* counts;
  int32_t length;
  double total;

  template <class Term>
  double mean(Term term) const {
    double sum = 0;
    for (int32_t k = 0; k < length; ++k) sum += term(k) * static_cast<double>(counts[k]);
    return sum / total;
  }
  double mean() const {
    return mean([](int32_t k) { return k; });
  }
  double meanSquare(double about) const {
    return mean([=](int32_t k) { return (k - about) * (k - about); });
  }
};

// Adds up c ln c; the entropy of counts is ln N less the N-th part of that.
class EntropySum {
 public:
  template <class Count>
  void add(Count count) {
    const auto c = static_cast<double>(count);
    if (count > 1) sum_ += c * elementary::log(c);
    occupied_ += count > 0;
  }
  // In nats; exactly 0 where all is in one count.
  double entropy(double total) const { return occupied_ > 1 ? elementary::log(total) - sum_ / total : 0; }

 private:
  double sum_ = 0;
  int32_t occupied_ = 0;
};

double entropyOf(const CountsBy& of) {
  EntropySum sum;
  for (int32_t k = 0; k < of.length; ++k) sum.add(of.counts[k]);
  return sum.entropy(of.total);
}

class HaralickMatrix {
 public:
  HaralickMatrix(const uint32_t* counts, int32_t levels, void* buffer)
      : counts_(counts), levels_(levels), at_(static_cast<uint64_t>(levels)), buffer_(buffer) {
    uint64_t *const rows = at_.rows.in(buffer), *const columns = at_.columns.in(buffer);
    uint64_t *const sums = at_.sums.in(buffer), *const differences = at_.differences.in(buffer);
    std::fill_n(rows, levels, uint64_t{0});
    std::fill_n(columns, levels, uint64_t{0});
    std::fill_n(sums, 2 * levels + 1, uint64_t{0});
    std::fill_n(differences, levels, uint64_t{0});
    for (int32_t i = 0; i < levels; ++i) {
      for (int32_t j = 0; j < levels; ++j) {
        const uint32_t count = at(i, j);
        rows[i] += count, columns[j] += count;
        sums[i + j + 2] += count, differences[std::abs(i - j)] += count;
      }
    }
  }

  void compute(uint64_t all, DaxiHaralickFeatures& f) const {
    const auto total = static_cast<double>(all);
    const CountsBy x{at_.rows.in(buffer_), levels_, total}, y{at_.columns.in(buffer_), levels_, total};
    // Levels are 1..levels in the paper, so that sums are 2..2 levels.
    const CountsBy sums{at_.sums.in(buffer_), 2 * levels_ + 1, total};
    const CountsBy differences{at_.differences.in(buffer_), levels_, total};
    const double meanX = x.mean(), meanY = y.mean(), varianceX = x.meanSquare(meanX);
    double squares = 0, product = 0;
    EntropySum entropy;
    for (int32_t i = 0; i < levels_; ++i) {
      for (int32_t j = 0; j < levels_; ++j) {
        const double p = at(i, j) / total;
        squares += p * p;
        product += (i - meanX) * (j - meanY) * p;
        entropy.add(at(i, j));
      }
    }
    const double hx = entropyOf(x), hy = entropyOf(y), hxy = entropy.entropy(total);
    const double shared = std::max(hx + hy - hxy, 0.0);
    f.angularSecondMoment = squares;
    f.contrast = differences.meanSquare(0);
    f.correlation = hx == 0 || hy == 0 ? 1 : product / std::sqrt(varianceX * y.meanSquare(meanY));
    f.sumOfSquares = varianceX;
    f.inverseDifference = differences.mean([](int32_t k) { return 1 / (1 + static_cast<double>(k) * k); });
    f.sumAverage = sums.mean();
    f.sumVariance = sums.meanSquare(f.sumAverage);
    f.sumEntropy = entropyOf(sums) / std::numbers::ln2;
    f.entropy = hxy / std::numbers::ln2;
    f.differenceVariance = differences.meanSquare(differences.mean());
    f.differenceEntropy = entropyOf(differences) / std::numbers::ln2;
    f.informationMeasure1 = hx == 0 && hy == 0 ? 0 : (0 - shared) / std::max(hx, hy);
    f.informationMeasure2 = std::sqrt(1 - elementary::exp(-2 * shared));
    f.maximalCorrelation = maximalCorrelation();
  }

 private:
  uint32_t at(int32_t i, int32_t j) const { return counts_[static_cast<int64_t>(i) * levels_ + j]; }

  // Q is similar to B B^T for B(i, j) = p(i, j) / sqrt(px(i) py(j)), whose singular values are the roots of Q's
  // eigenvalues. Levels that do not occur add only zeros to these.
  double maximalCorrelation() const {
    const uint64_t *const rows = at_.rows.in(buffer_), *const columns = at_.columns.in(buffer_);
    double* const b = at_.matrix.in(buffer_);
    const auto occurs = [&](int32_t k) { return rows[k] + columns[k] > 0; };
    int32_t n = 0;
    for (int32_t k = 0; k < levels_; ++k) n += occurs(k);
    double* to = b;
    for (int32_t i = 0; i < levels_; ++i) {
      for (int32_t j = 0; j < levels_; ++j) {
        if (!occurs(i) || !occurs(j)) continue;
        const double mass = static_cast<double>(rows[i]) * static_cast<double>(columns[j]);
        *to++ = at(i, j) == 0 ? 0 : at(i, j) / std::sqrt(mass);
      }
    }
    return SecondSingularValue(b, n, at_.room.in(buffer_)).compute();
  }

  const uint32_t* counts_;
  int32_t levels_;
  HaralickBuffer at_;
  void* buffer_;
};

bool isLevelCount(int32_t levels) {
  return levels >= 2 && levels <= 256;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_HaralickFeaturesBufferSize(int32_t levels, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isLevelCount(levels), DAX_STS_BAD_PARAM);
  return dax::HaralickBuffer(static_cast<uint64_t>(levels)).layout.store(bytes);
}

DaxStatus DAXI_HaralickFeatures(const uint32_t* counts, int32_t levels, DaxiHaralickFeatures* features, void* buffer) {
  DAX_REQUIRE(counts && features && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isLevelCount(levels), DAX_STS_BAD_PARAM);
  uint64_t total = 0;
  for (int32_t i = 0; i < levels * levels; ++i) total += counts[i];
  DAX_REQUIRE(total > 0, DAX_STS_DEGENERATE);
  dax::HaralickMatrix(counts, levels, buffer).compute(total, *features);
  return DAX_STS_OK;
}
