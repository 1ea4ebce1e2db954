#include "compare/ssim.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace dax::tool {
namespace {

constexpr int kReach = 5, kSide = 2 * kReach + 1;
constexpr double kSigma = 1.5, kK1 = 0.01, kK2 = 0.03;

std::array<double, kSide> gaussWeights() {
  std::array<double, kSide> weights;
  double sum = 0;
  for (int i = 0; i < kSide; ++i) {
    const double x = (i - kReach) / kSigma;
    sum += weights[static_cast<size_t>(i)] = std::exp(-x * x / 2);
  }
  for (double& weight : weights) weight /= sum;
  return weights;
}

// Weighted means of x, y, x^2, y^2 and x y.
using Means = std::array<double, 5>;

void addTo(Means& sums, double weight, const Means& values) {
  for (size_t i = 0; i < sums.size(); ++i) sums[i] += weight * values[i];
}

class Similarity {
 public:
  Similarity(const float* first, const float* second, DaxiSize size, double white)
      : first_(first), second_(second), size_(size), origin_(*first), c1_(kK1 * white), c2_(kK2 * white) {
    c1_ *= c1_;
    c2_ *= c2_;
    values_.resize(static_cast<size_t>(size.width));
    for (auto& row : rows_) row.resize(columns());
  }

  double mean() {
    double sum = 0;
    for (int32_t y = 0; y < size_.height; ++y) {
      weighRow(y);
      if (y + 1 >= kSide) sum += sumOfRow(y + 1 - kSide);
    }
    return sum / static_cast<double>(columns()) / (size_.height - kSide + 1);
  }

 private:
  size_t columns() const { return static_cast<size_t>(size_.width) - 2 * kReach; }

  // Variances are differences of squares, which are small near the origin.
  Means valuesAt(size_t i) const {
    const double x = first_[i] - origin_, y = second_[i] - origin_;
    return {x, y, x * x, y * y, x * y};
  }

  // The means along row y, kept until they are kSide rows old.
  void weighRow(int32_t y) {
    const size_t start = static_cast<size_t>(y) * static_cast<size_t>(size_.width);
    for (size_t x = 0; x < values_.size(); ++x) values_[x] = valuesAt(start + x);
    std::vector<Means>& row = rows_[static_cast<size_t>(y % kSide)];
    for (size_t x = 0; x < row.size(); ++x) {
      row[x] = {};
      for (size_t k = 0; k < kSide; ++k) addTo(row[x], weights_[k], values_[x + k]);
    }
  }

  // Of the windows that begin at row y.
  double sumOfRow(int32_t y) const {
    double sum = 0;
    for (size_t x = 0; x < columns(); ++x) {
      Means means = {};
      for (int32_t k = 0; k < kSide; ++k) {
        addTo(means, weights_[static_cast<size_t>(k)], rows_[static_cast<size_t>((y + k) % kSide)][x]);
      }
      sum += similarity(means);
    }
    return sum;
  }

  // (2 mx my + C1)(2 sxy + C2) / ((mx^2 + my^2 + C1)(sx^2 + sy^2 + C2))
  double similarity(const Means& means) const {
    const auto [x, y, xx, yy, xy] = means;
    const double mx = x + origin_, my = y + origin_;
    return (2 * mx * my + c1_) * (2 * (xy - x * y) + c2_) /
           ((mx * mx + my * my + c1_) * (xx - x * x + yy - y * y + c2_));
  }

  const float* first_;
  const float* second_;
  DaxiSize size_;
  double origin_;
  double c1_, c2_;
  std::array<double, kSide> weights_ = gaussWeights();
  std::vector<Means> values_;  // of the pixels of a row
  std::array<std::vector<Means>, kSide> rows_;
};

}  // namespace

std::optional<double> structuralSimilarity(const float* first, const float* second, DaxiSize size, double white) {
  if (size.width < kSide || size.height < kSide) return std::nullopt;
  return Similarity(first, second, size, white).mean();
}

}  // namespace dax::tool
