#include "optim/factor/hessenberg.h"

#include <cmath>

#include "optim/factor/householder.h"

namespace dax {
namespace {

// Rows and columns are scaled by powers of two until their sums of magnitudes, without the diagonal, agree within a factor of 2.
void balance(const Rows& a) {
  const int32_t n = a.rows;
  bool changed = true;
  for (int round = 0; changed && round < 100; ++round) {
    changed = false;
    for (int32_t k = 0; k < n; ++k) {
      double row = 0, column = 0;
      for (int32_t j = 0; j < n; ++j) {
        if (j == k) continue;
        row += std::fabs(a.row(k)[j]), column += std::fabs(a.row(j)[k]);
      }
      if (!(row > 0x1p-900 && column > 0x1p-900)) continue;
      double factor = 1;
      const double before = row + column;
      while (column < row / 2 && factor < 0x1p500) column *= 2, row /= 2, factor *= 2;
      while (column >= row * 2 && factor > 0x1p-500) column /= 2, row *= 2, factor /= 2;
      if (!(row + column < 0.95 * before)) continue;
      changed = true;
      for (int32_t j = 0; j < n; ++j) a.row(k)[j] /= factor;
      for (int32_t j = 0; j < n; ++j) a.row(j)[k] *= factor;
    }
  }
}

// Zeros below the first subdiagonal, by reflections from both sides.
void reduceToHessenberg(const Rows& a, double* v, double* product) {
  const int32_t n = a.rows;
  for (int32_t k = 0; k + 2 < n; ++k) {
    const int32_t rest = n - k - 1;
    for (int32_t i = 0; i < rest; ++i) v[i] = a.row(k + 1 + i)[k];
    double tau;
    const double beta = makeReflection(v, rest, &tau);
    a.row(k + 1)[k] = beta;
    for (int32_t i = 1; i < rest; ++i) a.row(k + 1 + i)[k] = 0;
    if (tau == 0) continue;
    std::fill_n(product, rest, 0.0);
    for (int32_t i = 0; i < rest; ++i) addScaled(product, tau * v[i], a.row(k + 1 + i) + k + 1, rest);
    for (int32_t i = 0; i < rest; ++i) addScaled(a.row(k + 1 + i) + k + 1, -v[i], product, rest);
    for (int32_t i = 0; i < n; ++i) {
      double* const row = a.row(i) + k + 1;
      addScaled(row, -tau * inner(row, v, rest), v, rest);
    }
  }
}

// Double-shift QR on a Hessenberg matrix from the bottom up (Golub and Van Loan 2013, 7.5).
class Francis {
 public:
  Francis(const Rows& h, double* real, double* imaginary) : h_(h), real_(real), imaginary_(imaginary) {}

  bool run() {
    constexpr int kMaxRounds = 60;
    int32_t last = h_.rows - 1;
    for (int round = 0; last >= 0;) {
      const int32_t first = blockOf(last);
      if (first == last) {
        real_[last] = at(last, last), imaginary_[last] = 0;
        --last, round = 0;
      } else if (first + 1 == last) {
        pair(first);
        last -= 2, round = 0;
      } else {
        if (round == kMaxRounds) return false;
        shiftedStep(first, last, ++round);
      }
    }
    return true;
  }

 private:
  double& at(int32_t i, int32_t j) const { return h_.row(i)[j]; }

  // The first row of the block that ends at `last`; what is nothing below the diagonal becomes 0.
  int32_t blockOf(int32_t last) const {
    int32_t i = last;
    for (; i > 0; --i) {
      double beside = std::fabs(at(i, i)) + std::fabs(at(i - 1, i - 1));
      if (beside == 0) beside = 1;
      if (std::fabs(at(i, i - 1)) <= 0x1p-53 * beside) {
        at(i, i - 1) = 0;
        break;
      }
    }
    return i;
  }

  void pair(int32_t i) {
    const double a = at(i, i), b = at(i, i + 1), c = at(i + 1, i), d = at(i + 1, i + 1);
    const double half = (a - d) / 2, square = half * half + b * c;
    if (square >= 0) {
      // The larger one without cancellation, the other one by the product.
      const double root = half + (half < 0 ? -std::sqrt(square) : std::sqrt(square));
      real_[i] = d + root;
      real_[i + 1] = root != 0 ? d - b * c / root : d;
      imaginary_[i] = imaginary_[i + 1] = 0;
    } else {
      real_[i] = real_[i + 1] = d + half;
      imaginary_[i] = std::sqrt(-square), imaginary_[i + 1] = -imaginary_[i];
    }
  }

  void shiftedStep(int32_t first, int32_t last, int round) {
    // The shifts are the eigenvalues of the last two rows; differences first, since all may be nearly equal.
    const double corner = at(first, first);
    double one = at(last, last) - corner, other = at(last - 1, last - 1) - corner;
    double beside = at(last, last - 1) * at(last - 1, last);
    if (round % 10 == 0) {
      // Another pair, where the usual one turns in a circle.
      const double size = std::fabs(at(last, last - 1)) + std::fabs(at(last - 1, last - 2));
      one = other = one + 0.75 * size, beside = -0.4375 * size * size;
    }
    double x = (one * other - beside) / at(first + 1, first) + at(first, first + 1);
    double y = (at(first + 1, first + 1) - corner) - one - other;
    double z = at(first + 2, first + 1);
    for (int32_t k = first; k < last; ++k) {
      const int32_t size = std::min(3, last - k + 1);
      double v[3] = {x, y, z};
      scaleToOne(v, size);
      double tau;
      const double beta = makeReflection(v, size, &tau);
      if (k > first) {
        at(k, k - 1) = beta * scale_;
        for (int32_t i = 1; i < size; ++i) at(k + i, k - 1) = 0;
      }
      if (tau != 0) reflect(v, tau, size, k, first, last);
      x = at(k + 1, k), y = k + 2 <= last ? at(k + 2, k) : 0, z = k + 3 <= last ? at(k + 3, k) : 0;
    }
  }

  // Products of shifts may be far below 1.
  void scaleToOne(double* v, int32_t size) {
    Magnitude magnitude;
    magnitude.add(v, size);
    const PowerOfTwo up(-magnitude.exponent());
    for (int32_t i = 0; i < size; ++i) v[i] = up(v[i]);
    scale_ = PowerOfTwo(magnitude.exponent())(1);
  }

  void reflect(const double* v, double tau, int32_t size, int32_t k, int32_t first, int32_t last) {
    for (int32_t j = k; j <= last; ++j) {
      double sum = 0;
      for (int32_t i = 0; i < size; ++i) sum += v[i] * at(k + i, j);
      for (int32_t i = 0; i < size; ++i) at(k + i, j) -= tau * sum * v[i];
    }
    for (int32_t i = first; i <= std::min(k + 3, last); ++i) {
      double sum = 0;
      for (int32_t j = 0; j < size; ++j) sum += v[j] * at(i, k + j);
      for (int32_t j = 0; j < size; ++j) at(i, k + j) -= tau * sum * v[j];
    }
  }

  const Rows& h_;
  double *real_, *imaginary_;
  double scale_ = 1;
};

}  // namespace

bool eigenGeneral(const Rows& a, double* real, double* imaginary, double* work) {
  balance(a);
  reduceToHessenberg(a, work, work + a.rows);
  return Francis(a, real, imaginary).run();
}

}  // namespace dax
