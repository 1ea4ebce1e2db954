// The definition of phase correlation, by sums over all frequencies, in long doubles.
#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "daxi/phase_shift.h"
#include "tests/support/test_image.h"

namespace dax::test {

class PhaseOracle {
 public:
  using Real = long double;
  using Complex = std::complex<Real>;

  template <class T>
  static DaxiPhaseShift shift(const TestImage<T>& a, const TestImage<T>& b) {
    const DaxiSize size = a.size();
    PhaseOracle whole(size);
    whole.compare(a, b, {0, 0}, {0, 0}, size, true);
    const std::vector<Real> at = whole.values();
    const auto count = static_cast<int32_t>(at.size()), w = whole.w_, h = whole.h_;
    const auto value = [&](int32_t i) { return at[static_cast<size_t>(i)]; };
    int32_t best = 0, next = -1;
    for (int32_t i = 1; i < count; ++i) {
      if (value(i) > value(best) + 1e-9) best = i;
    }
    const auto apart = [](int32_t p, int32_t q, int32_t n) { return std::min((p - q + n) % n, (q - p + n) % n); };
    for (int32_t i = 0; i < count; ++i) {
      const bool isNear = apart(i % w, best % w, w) <= 2 && apart(i / w, best / w, h) <= 2;
      if (!isNear && (next < 0 || value(i) > value(next))) next = i;
    }
    const int32_t x = signedPlace(best % w, w), y = signedPlace(best / w, h);
    PhaseOracle part(size);
    part.compare(a, b, {std::max(-x, 0), std::max(-y, 0)}, {std::max(x, 0), std::max(y, 0)},
                 {size.width - std::abs(x), size.height - std::abs(y)}, false);
    const auto [dx, dy] = part.maximum();
    return {static_cast<double>(x + dx), static_cast<double>(y + dy), static_cast<double>(value(best)),
            static_cast<double>(value(next))};
  }

 private:
  struct Point {
    int32_t x, y;
  };

  explicit PhaseOracle(DaxiSize size)
      : w_(smooth(size.width)), h_(smooth(size.height)), product_(static_cast<size_t>(pixels())) {}

  static int32_t smooth(int32_t n) {
    for (;; ++n) {
      int32_t rest = n;
      for (const int32_t p : {2, 3, 5, 7}) {
        while (rest % p == 0) rest /= p;
      }
      if (rest == 1) return n;
    }
  }

  int32_t pixels() const { return w_ * h_; }
  static int32_t signedPlace(int32_t i, int32_t n) { return 2 * i > n ? i - n : i; }
  static Real hann(int32_t i, int32_t n) {
    return 0.5L - 0.5L * std::cos(2 * std::numbers::pi_v<Real> * (i + 0.5L) / n);
  }
  static Complex wave(Real turns) { return std::polar<Real>(1, 2 * std::numbers::pi_v<Real> * turns); }

  template <class T>
  std::vector<Complex> spectrum(const TestImage<T>& image, Point from, DaxiSize size) const {
    Real sum = 0, weight = 0;
    const auto each = [&](auto use) {
      for (int32_t y = 0; y < size.height; ++y) {
        for (int32_t x = 0; x < size.width; ++x) {
          use(x, y, hann(x, size.width) * hann(y, size.height), static_cast<Real>(image.at(from.x + x, from.y + y)));
        }
      }
    };
    each([&](int32_t, int32_t, Real w, Real v) { sum += w * v, weight += w; });
    std::vector<Complex> rows(static_cast<size_t>(w_ * size.height)), all(static_cast<size_t>(pixels()));
    each([&](int32_t x, int32_t y, Real w, Real v) {
      for (int32_t u = 0; u < w_; ++u) {
        rows[static_cast<size_t>(y * w_ + u)] += w * (v - sum / weight) * wave(-Real(1) * u * x / w_);
      }
    });
    for (int32_t v = 0; v < h_; ++v) {
      for (int32_t y = 0; y < size.height; ++y) {
        const Complex turn = wave(-Real(1) * v * y / h_);
        for (int32_t u = 0; u < w_; ++u) {
          all[static_cast<size_t>(v * w_ + u)] += turn * rows[static_cast<size_t>(y * w_ + u)];
        }
      }
    }
    return all;
  }

  template <class T>
  void compare(const TestImage<T>& a, const TestImage<T>& b, Point fromA, Point fromB, DaxiSize size, bool isWhitened) {
    const std::vector<Complex> A = spectrum(a, fromA, size), B = spectrum(b, fromB, size);
    const auto energy = [](const std::vector<Complex>& spectrum) {
      Real sum = 0;
      for (const Complex& each : spectrum) sum += std::norm(each);
      return sum / static_cast<Real>(spectrum.size());
    };
    const Real floor = 1e-10L * std::sqrt(energy(A) * energy(B));
    Real count = 0;
    for (size_t i = 0; i < A.size(); ++i) count += std::abs(B[i] * A[i]) > floor;
    for (size_t i = 0; i < A.size(); ++i) {
      const Complex c = std::abs(B[i] * A[i]) > floor ? B[i] * std::conj(A[i]) : Complex(0);
      const auto u = static_cast<int32_t>(i) % w_, v = static_cast<int32_t>(i) / w_;
      const Real fx = Real(1) * signedPlace(u, w_) / w_, fy = Real(1) * signedPlace(v, h_) / h_;
      const Real pass = 1 - std::exp(-(fx * fx + fy * fy) / (0.03L * 0.03L));
      product_[i] = !isWhitened ? c * pass * pass : c == Complex(0) ? c : c / std::abs(c) / count;
    }
  }

  // The correlation at whole pixels: along columns, then along rows.
  std::vector<Real> values() const {
    std::vector<Complex> columns(product_.size());
    std::vector<Real> all(product_.size());
    const auto index = [&](int32_t x, int32_t y) { return static_cast<size_t>(y * w_ + x); };
    for (int32_t y = 0; y < h_; ++y) {
      for (int32_t v = 0; v < h_; ++v) {
        const Complex turn = wave(Real(1) * y * v / h_);
        for (int32_t u = 0; u < w_; ++u) columns[index(u, y)] += product_[index(u, v)] * turn;
      }
      for (int32_t x = 0; x < w_; ++x) {
        for (int32_t u = 0; u < w_; ++u) all[index(x, y)] += (columns[index(u, y)] * wave(Real(1) * x * u / w_)).real();
      }
    }
    return all;
  }

  Real value(Real x, Real y) const {
    Real sum = 0;
    for (int32_t v = 0; v < h_; ++v) {
      for (int32_t u = 0; u < w_; ++u) {
        const Real turns = x * signedPlace(u, w_) / w_ + y * signedPlace(v, h_) / h_;
        sum += (product_[static_cast<size_t>(v * w_ + u)] * wave(turns)).real();
      }
    }
    return sum;
  }

  // By steps in eight directions, halved where none goes up.
  std::pair<Real, Real> maximum() const {
    Real x = 0, y = 0, best = value(0, 0);
    for (Real step = 0.25L; step > 1e-5L; step /= 2) {
      for (bool moved = true; moved;) {
        moved = false;
        for (int i = 0; i < 9; ++i) {
          const Real nx = x + step * (i % 3 - 1), ny = y + step * (i / 3 - 1), there = value(nx, ny);
          if (there > best) best = there, x = nx, y = ny, moved = true;
        }
      }
    }
    return {x, y};
  }

  int32_t w_, h_;
  std::vector<Complex> product_;
};

}  // namespace dax::test
