#include "optim/factor/closed_form.h"

namespace dax {
namespace {

double minor2(const Rows& a, int32_t i, int32_t k, int32_t p, int32_t q) {
  return a.row(i)[p] * a.row(k)[q] - a.row(i)[q] * a.row(k)[p];
}

double adjugate2(const Rows& a, double* to) {
  to[0] = a.row(1)[1], to[1] = -a.row(0)[1], to[2] = -a.row(1)[0], to[3] = a.row(0)[0];
  return minor2(a, 0, 1, 0, 1);
}

double adjugate3(const Rows& a, double* to) {
  for (int32_t i = 0; i < 3; ++i) {
    for (int32_t j = 0; j < 3; ++j) to[3 * i + j] = minor2(a, (j + 1) % 3, (j + 2) % 3, (i + 1) % 3, (i + 2) % 3);
  }
  return a.row(0)[0] * to[0] + a.row(0)[1] * to[3] + a.row(0)[2] * to[6];
}

// By the minors of the upper and of the lower two rows (Laplace).
double adjugate4(const Rows& a, double* to) {
  double upper[6], lower[6];
  for (int32_t p = 0, k = 0; p < 4; ++p) {
    for (int32_t q = p + 1; q < 4; ++q, ++k) upper[k] = minor2(a, 0, 1, p, q), lower[k] = minor2(a, 2, 3, p, q);
  }
  // Pairs in the order 01 02 03 12 13 23. The cofactors of a row r take the minors of the other pair of rows and the
  // other row of its own pair.
  const auto fill = [&](int32_t row, const double* other, const double* m, double sign) {
    to[row] = sign * (other[1] * m[5] - other[2] * m[4] + other[3] * m[3]);
    to[4 + row] = -sign * (other[0] * m[5] - other[2] * m[2] + other[3] * m[1]);
    to[8 + row] = sign * (other[0] * m[4] - other[1] * m[2] + other[3] * m[0]);
    to[12 + row] = -sign * (other[0] * m[3] - other[1] * m[1] + other[2] * m[0]);
  };
  fill(0, a.row(1), lower, 1), fill(1, a.row(0), lower, -1);
  fill(2, a.row(3), upper, 1), fill(3, a.row(2), upper, -1);
  return (upper[0] * lower[5] - upper[1] * lower[4] + upper[2] * lower[3]) +
         (upper[3] * lower[2] - upper[4] * lower[1] + upper[5] * lower[0]);
}

}  // namespace

double adjugate(const Rows& a, double* to) {
  switch (a.rows) {
    case 2:
      return adjugate2(a, to);
    case 3:
      return adjugate3(a, to);
    case 4:
      return adjugate4(a, to);
    default:
      to[0] = 1;
      return a.row(0)[0];
  }
}

bool isFarFromSingular(const Rows& a, double determinant) {
  double squares = 0x1p-40;
  for (int32_t i = 0; i < a.rows; ++i) {
    double square = 0;
    for (int32_t j = 0; j < a.cols; ++j) square += a.row(i)[j] * a.row(i)[j];
    squares *= square;
  }
  // Squares of nothing tell nothing.
  return squares > 1e-280 && determinant * determinant >= squares;
}

}  // namespace dax
