#include "prmt/lie.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "frame/math.h"

namespace dax {
namespace {

double squaredNorm(const double* v) {
  return v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
}

void cross(const double* a, const double* b, double* ab) {
  const double x = a[1] * b[2] - a[2] * b[1], y = a[2] * b[0] - a[0] * b[2], z = a[0] * b[1] - a[1] * b[0];
  ab[0] = x, ab[1] = y, ab[2] = z;
}

template <int kSize>
double polynomial(const double (&coefficients)[kSize], double x) {
  double sum = 0;
  for (int k = kSize - 1; k >= 0; --k) sum = sum * x + coefficients[k];
  return sum;
}

// sin t / t, (1 - cos t) / t^2 and (t - sin t) / t^3 of t = |w|.
struct Coefficients {
  explicit Coefficients(const double* w) {
    const double square = squaredNorm(w);
    const double t = std::sqrt(square);
    const SinCos whole = sinCosAny(t), half = sinCosAny(t / 2);
    first = t > 0 ? whole.sine / t : 1;
    const double ratio = t > 0 ? half.sine / t : 0.5;
    second = 2 * ratio * ratio;
    // 1 / 3!, -1 / 5!, ... where the difference would lose digits.
    constexpr double kSeries[] = {1.0 / 6,
                                  -1.0 / 120,
                                  1.0 / 5040,
                                  -1.0 / 362880,
                                  1.0 / 39916800,
                                  -1.0 / 6227020800,
                                  1.0 / 1307674368000,
                                  -1.0 / 355687428096000,
                                  1.0 / 121645100408832000,
                                  -1.0 / 5.109094217170944e19,
                                  1.0 / 2.585201673888498e22,
                                  -1.0 / 1.5511210043330986e25};
    third = square < 4 ? polynomial(kSeries, square) : (t - whole.sine) / (t * square);
  }
  double first, second, third;
};

// (1 - t / 2 cot(t / 2)) / t^2 of t = |w| < 2 pi.
double logCoefficient(const double* w) {
  const double square = squaredNorm(w);
  if (square < 0.25) {
    // |B_2k| / (2k)! with the Bernoulli numbers.
    constexpr double kSeries[] = {1.0 / 12,          1.0 / 720,
                                  1.0 / 30240,       1.0 / 1209600,
                                  1.0 / 47900160,    691.0 / 1307674368000,
                                  1.0 / 74724249600, 3617.0 / 10670622842880000};
    return polynomial(kSeries, square);
  }
  const double t = std::sqrt(square);
  const SinCos half = sinCosAny(t / 2);
  return (1 - t / 2 * half.cosine / half.sine) / square;
}

// I + a [w] + b [w]^2, written with the given number of doubles between rows.
void rodrigues(const double* w, double a, double b, double* matrix, int step) {
  const double square = squaredNorm(w);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) matrix[i * step + j] = b * (w[i] * w[j] - (i == j ? square : 0)) + (i == j ? 1 : 0);
  }
  const auto turn = [&](int i, int j, double value) {
    matrix[i * step + j] -= a * value;
    matrix[j * step + i] += a * value;
  };
  turn(0, 1, w[2]);
  turn(1, 2, w[0]);
  turn(2, 0, w[1]);
}

// Unit quaternion (w, x, y, z) by the largest of its elements, with w >= 0.
void toQuaternion(const double* r, int step, double* q) {
  const double xx = r[0], yy = r[step + 1], zz = r[2 * step + 2];
  const double sizes[4] = {xx + yy + zz, xx - yy - zz, yy - xx - zz, zz - xx - yy};
  const auto k = static_cast<int>(std::max_element(sizes, sizes + 4) - sizes);
  const auto plus = [&](int i, int j) { return r[i * step + j] + r[j * step + i]; };
  const auto minus = [&](int i, int j) { return r[i * step + j] - r[j * step + i]; };
  // Four times the products of element k with all.
  const double products[4][4] = {{1 + sizes[0], minus(2, 1), minus(0, 2), minus(1, 0)},
                                 {minus(2, 1), 1 + sizes[1], plus(0, 1), plus(0, 2)},
                                 {minus(0, 2), plus(0, 1), 1 + sizes[2], plus(1, 2)},
                                 {minus(1, 0), plus(0, 2), plus(1, 2), 1 + sizes[3]}};
  const double* const row = products[k];
  double norm = std::sqrt(row[0] * row[0] + squaredNorm(row + 1));
  if (row[0] < 0) norm = -norm;
  for (int i = 0; i < 4; ++i) q[i] = row[i] / norm;
}

void logRotation(const double* r, int step, double* w) {
  double q[4];
  toQuaternion(r, step, q);
  const double size = std::sqrt(squaredNorm(q + 1));
  const double factor = size > 0 ? 2 * atan2Exact(size, q[0]) / size : 2;
  for (int i = 0; i < 3; ++i) w[i] = factor * q[i + 1];
}

// Upper left 3 x 3 part of a product of matrices whose rows are `step` apart.
void multiplyRotations(const double* a, const double* b, double* ab, int step) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      ab[i * step + j] = a[i * step] * b[j] + a[i * step + 1] * b[step + j] + a[i * step + 2] * b[2 * step + j];
    }
  }
}

void finishMotion(double* motion) {
  motion[12] = motion[13] = motion[14] = 0;
  motion[15] = 1;
}

void rotate(const double* motion, const double* v, double* to, int toStep) {
  for (int i = 0; i < 3; ++i) {
    to[i * toStep] = motion[4 * i] * v[0] + motion[4 * i + 1] * v[1] + motion[4 * i + 2] * v[2];
  }
}

// v <- Log(Exp(v) Exp(step)) in either group.
int32_t update(double* v, const double* step, int32_t (*exp)(const double*, double*),
               int32_t (*compose)(const double*, const double*, double*), int32_t (*log)(const double*, double*)) {
  DAX_REQUIRE(v && step, PRMT_STS_NULL_POINTER);
  double element[16], move[16];
  exp(v, element);
  exp(step, move);
  compose(element, move, element);
  return log(element, v);
}

}  // namespace
}  // namespace dax

int32_t PRMT_SO3_Exp_f64(const double* w, double* rotation) {
  DAX_REQUIRE(w && rotation, PRMT_STS_NULL_POINTER);
  const double copy[3] = {w[0], w[1], w[2]};
  const dax::Coefficients c(copy);
  dax::rodrigues(copy, c.first, c.second, rotation, 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SO3_Log_f64(const double* rotation, double* w) {
  DAX_REQUIRE(rotation && w, PRMT_STS_NULL_POINTER);
  dax::logRotation(rotation, 3, w);
  return PRMT_STS_OK;
}

int32_t PRMT_SO3_Compose_f64(const double* a, const double* b, double* ab) {
  DAX_REQUIRE(a && b && ab, PRMT_STS_NULL_POINTER);
  double product[9];
  dax::multiplyRotations(a, b, product, 3);
  std::copy_n(product, 9, ab);
  return PRMT_STS_OK;
}

int32_t PRMT_SO3_Inverse_f64(const double* rotation, double* inverse) {
  DAX_REQUIRE(rotation && inverse, PRMT_STS_NULL_POINTER);
  double transposed[9];
  for (int i = 0; i < 9; ++i) transposed[i] = rotation[i % 3 * 3 + i / 3];
  std::copy_n(transposed, 9, inverse);
  return PRMT_STS_OK;
}

int32_t PRMT_SO3_Update_f64(double* w, const double* step) {
  return dax::update(w, step, PRMT_SO3_Exp_f64, PRMT_SO3_Compose_f64, PRMT_SO3_Log_f64);
}

int32_t PRMT_SO3_LogJacobian_f64(const double* w, double* jacobian) {
  DAX_REQUIRE(w && jacobian, PRMT_STS_NULL_POINTER);
  const double copy[3] = {w[0], w[1], w[2]};
  dax::rodrigues(copy, 0.5, dax::logCoefficient(copy), jacobian, 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Exp_f64(const double* twist, double* motion) {
  DAX_REQUIRE(twist && motion, PRMT_STS_NULL_POINTER);
  double copy[6], mix[16];
  std::copy_n(twist, 6, copy);
  const dax::Coefficients c(copy + 3);
  dax::rodrigues(copy + 3, c.second, c.third, mix, 4);
  dax::rodrigues(copy + 3, c.first, c.second, motion, 4);
  dax::rotate(mix, copy, motion + 3, 4);
  dax::finishMotion(motion);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Log_f64(const double* motion, double* twist) {
  DAX_REQUIRE(motion && twist, PRMT_STS_NULL_POINTER);
  const double t[3] = {motion[3], motion[7], motion[11]};
  double once[3], twice[3], w[3];
  dax::logRotation(motion, 4, w);
  dax::cross(w, t, once);
  dax::cross(w, once, twice);
  const double factor = dax::logCoefficient(w);
  for (int i = 0; i < 3; ++i) twist[i] = t[i] - 0.5 * once[i] + factor * twice[i];
  std::copy_n(w, 3, twist + 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Compose_f64(const double* a, const double* b, double* ab) {
  DAX_REQUIRE(a && b && ab, PRMT_STS_NULL_POINTER);
  const double t[3] = {b[3], b[7], b[11]};
  double product[16];
  dax::multiplyRotations(a, b, product, 4);
  dax::rotate(a, t, product + 3, 4);
  for (int i = 0; i < 3; ++i) product[4 * i + 3] += a[4 * i + 3];
  dax::finishMotion(product);
  std::copy_n(product, 16, ab);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Inverse_f64(const double* motion, double* inverse) {
  DAX_REQUIRE(motion && inverse, PRMT_STS_NULL_POINTER);
  const double t[3] = {-motion[3], -motion[7], -motion[11]};
  double result[16];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) result[4 * i + j] = motion[4 * j + i];
  }
  dax::rotate(result, t, result + 3, 4);
  dax::finishMotion(result);
  std::copy_n(result, 16, inverse);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Update_f64(double* twist, const double* step) {
  return dax::update(twist, step, PRMT_SE3_Exp_f64, PRMT_SE3_Compose_f64, PRMT_SE3_Log_f64);
}
