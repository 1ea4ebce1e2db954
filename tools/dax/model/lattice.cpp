#include "model/lattice.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dax::tool {
namespace {

// Sorts; of numbers that differ by rounding only the first stays.
void reduce(std::vector<double>& numbers, double rounding) {
  std::sort(numbers.begin(), numbers.end());
  double last = numbers.front();
  const auto isRepeated = [&](double v) {
    if (v - last <= rounding) return true;
    last = v;
    return false;
  };
  numbers.erase(std::remove_if(numbers.begin() + 1, numbers.end(), isRepeated), numbers.end());
}

// The least gap, refined over ever longer distances on both sides of it, so that no step is miscounted.
double pitchOf(const std::vector<double>& numbers) {
  size_t min = 1;
  for (size_t i = 2; i < numbers.size(); ++i) {
    if (numbers[i] - numbers[i - 1] < numbers[min] - numbers[min - 1]) min = i;
  }
  double pitch = numbers[min] - numbers[min - 1];
  for (size_t i = min; i < numbers.size(); ++i) {
    const double distance = numbers[i] - numbers[min - 1];
    pitch = distance / std::round(distance / pitch);
  }
  for (size_t i = min; i-- > 0;) {
    const double distance = numbers.back() - numbers[i];
    pitch = distance / std::round(distance / pitch);
  }
  return pitch;
}

std::optional<Lattice> latticeUpTo(double rounding, std::vector<double> numbers, double maxSteps) {
  reduce(numbers, rounding);
  const double start = numbers.front();
  if (numbers.size() == 1) return Lattice{start, 0, 0};
  const double pitch = pitchOf(numbers);
  const double steps = std::round((numbers.back() - start) / pitch);
  if (!(pitch > 8 * rounding && steps <= maxSteps)) return std::nullopt;
  const bool fits = std::all_of(numbers.begin(), numbers.end(), [&](double v) {
    const double place = start + pitch * std::round((v - start) / pitch);
    return std::abs(v - place) <= 2 * rounding + 1e-4 * pitch;
  });
  return fits ? std::optional<Lattice>({start, pitch, steps}) : std::nullopt;
}

}  // namespace

std::optional<Lattice> latticeOf(std::vector<double> numbers, double maxSteps) {
  const auto [low, high] = std::minmax_element(numbers.begin(), numbers.end());
  constexpr double kRounding = 2 * double{std::numeric_limits<float>::epsilon()};
  const double relative = kRounding * (*high - *low);
  const double absolute = kRounding * std::max(std::abs(*low), std::abs(*high));
  const auto lattice = latticeUpTo(relative, numbers, maxSteps);
  return lattice ? lattice : latticeUpTo(absolute, std::move(numbers), maxSteps);
}

}  // namespace dax::tool
