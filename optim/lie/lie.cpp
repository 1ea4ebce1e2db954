#include "prmt/lie.h"

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "frame/math.h"
#include "geometry/vector3.h"

namespace dax {
namespace {

template <int kSize>
double polynomial(const double (&coefficients)[kSize], double x) {
  double sum = 0;
  for (int k = kSize - 1; k >= 0; --k) sum = sum * x + coefficients[k];
  return sum;
}

// sin t / t, (1 - cos t) / t^2 and (t - sin t) / t^3 of t = |w|.
struct Coefficients {
  explicit Coefficients(const Vector3& w) {
    const double square = dot(w, w);
    const double t = std::sqrt(square);
    const SinCos whole = sinCosAny(t), half = sinCosAny(t / 2);
    first = t > 0 ? whole.sine / t : 1;
    const double ratio = t > 0 ? half.sine / t : 0.5;
    second = 2 * ratio * ratio;
    // t - sin t loses digits for small t. 1 / 3! - t^2 / 5! + ...: twelve terms reach double precision for t < 2.
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
double logCoefficient(const Vector3& w) {
  const double square = dot(w, w);
  if (square < 0.25) {
    // |B_2k| / (2k)! with the Bernoulli numbers B: eight terms reach double precision for t < 1/2.
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

// I + a [w] + b [w]^2, with [w] v = w x v, to rows that lie `step` doubles apart.
void rodrigues(const Vector3& axis, double a, double b, double* matrix, int step) {
  const double w[3] = {axis.x, axis.y, axis.z};
  const double square = dot(axis, axis);
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

// Unit quaternion (w, x, y, z) with w >= 0, computed from its largest element (Shepperd 1978).
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
  double norm = std::sqrt(row[0] * row[0] + dot(load3(row + 1), load3(row + 1)));
  if (row[0] < 0) norm = -norm;
  for (int i = 0; i < 4; ++i) q[i] = row[i] / norm;
}

Vector3 logRotation(const double* r, int step) {
  double q[4];
  toQuaternion(r, step, q);
  const Vector3 imaginary = load3(q + 1);
  const double size = length(imaginary);
  return (size > 0 ? 2 * atan2Exact(size, q[0]) / size : 2) * imaginary;
}

// Upper left 3 x 3 part of a product of matrices whose rows are `step` apart.
void multiplyRotations(const double* a, const double* b, double* ab, int step) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      ab[i * step + j] = a[i * step] * b[j] + a[i * step + 1] * b[step + j] + a[i * step + 2] * b[2 * step + j];
    }
  }
}

Vector3 translationOf(const double* motion) {
  return {motion[3], motion[7], motion[11]};
}

// Completes a motion that has its rotation.
void setTranslation(const Vector3& t, double* motion) {
  motion[3] = t.x, motion[7] = t.y, motion[11] = t.z;
  motion[12] = motion[13] = motion[14] = 0;
  motion[15] = 1;
}

// Product of the 3 x 3 matrix with rows `step` apart and v.
Vector3 rotated(const double* matrix, int step, const Vector3& v) {
  return {dot(load3(matrix), v), dot(load3(matrix + step), v), dot(load3(matrix + 2 * step), v)};
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
  const dax::Vector3 axis = dax::load3(w);
  const dax::Coefficients c(axis);
  dax::rodrigues(axis, c.first, c.second, rotation, 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SO3_Log_f64(const double* rotation, double* w) {
  DAX_REQUIRE(rotation && w, PRMT_STS_NULL_POINTER);
  dax::store3(dax::logRotation(rotation, 3), w);
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
  const dax::Vector3 axis = dax::load3(w);
  dax::rodrigues(axis, 0.5, dax::logCoefficient(axis), jacobian, 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Exp_f64(const double* twist, double* motion) {
  DAX_REQUIRE(twist && motion, PRMT_STS_NULL_POINTER);
  const dax::Vector3 v = dax::load3(twist), w = dax::load3(twist + 3);
  const dax::Coefficients c(w);
  double mix[9];
  dax::rodrigues(w, c.second, c.third, mix, 3);
  dax::rodrigues(w, c.first, c.second, motion, 4);
  dax::setTranslation(dax::rotated(mix, 3, v), motion);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Log_f64(const double* motion, double* twist) {
  DAX_REQUIRE(motion && twist, PRMT_STS_NULL_POINTER);
  const dax::Vector3 t = dax::translationOf(motion), w = dax::logRotation(motion, 4);
  const dax::Vector3 once = cross(w, t), twice = cross(w, once);
  dax::store3(t - 0.5 * once + dax::logCoefficient(w) * twice, twist);
  dax::store3(w, twist + 3);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Compose_f64(const double* a, const double* b, double* ab) {
  DAX_REQUIRE(a && b && ab, PRMT_STS_NULL_POINTER);
  double product[16];
  dax::multiplyRotations(a, b, product, 4);
  dax::setTranslation(dax::rotated(a, 4, dax::translationOf(b)) + dax::translationOf(a), product);
  std::copy_n(product, 16, ab);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Inverse_f64(const double* motion, double* inverse) {
  DAX_REQUIRE(motion && inverse, PRMT_STS_NULL_POINTER);
  double result[16];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) result[4 * i + j] = motion[4 * j + i];
  }
  dax::setTranslation(dax::rotated(result, 4, -dax::translationOf(motion)), result);
  std::copy_n(result, 16, inverse);
  return PRMT_STS_OK;
}

int32_t PRMT_SE3_Update_f64(double* twist, const double* step) {
  return dax::update(twist, step, PRMT_SE3_Exp_f64, PRMT_SE3_Compose_f64, PRMT_SE3_Log_f64);
}
