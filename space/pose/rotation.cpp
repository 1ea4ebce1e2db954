#include "dax3d/rotation.h"

#include <numbers>

#include "frame/check.h"
#include "geometry/finite.h"
#include "geometry/quaternion.h"

namespace dax {
namespace {

// Three letters: capitals turn about axes that turn along.
struct EulerOrder {
  int axes[3];
  bool intrinsic;
};

bool readOrder(const char* text, EulerOrder& order) {
  for (int k = 0; k < 3; ++k) {
    const char letter = text[k];
    const bool capital = letter >= 'X' && letter <= 'Z';
    if (!capital && !(letter >= 'x' && letter <= 'z')) return false;
    if (k > 0 && capital != order.intrinsic) return false;
    order.intrinsic = capital;
    order.axes[k] = letter - (capital ? 'X' : 'x');
    if (k > 0 && order.axes[k] == order.axes[k - 1]) return false;
  }
  return text[3] == '\0';
}

Quaternion aboutAxis(int axis, double angle) {
  const SinCos half = elementary::sinCos(angle / 2);
  return {half.cosine, {axis == 0 ? half.sine : 0, axis == 1 ? half.sine : 0, axis == 2 ? half.sine : 0}};
}

double wrapped(double angle) {
  constexpr double kPi = std::numbers::pi;
  return angle > kPi ? angle - 2 * kPi : angle <= -kPi ? angle + 2 * kPi : angle;
}

// E. Bernardes and S. Viollet, PLOS ONE 17(11), 2022, for axes that stay: turning the quaternion by a quarter about the
// middle axis makes an order of three axes one of two, whose angles are sums and differences of arguments of complex
// numbers.
struct HalfAngles {
  double sum, difference, middle;
  bool isLockedAtZero, isLockedAtEnd;
};

HalfAngles halfAngles(const Quaternion& q, int first, int middle, int third, double sign, bool isProper) {
  const double v[3] = {q.v.x, q.v.y, q.v.z};
  double a = q.w, b = v[first], c = v[middle], d = sign * v[third];
  if (!isProper) {
    a = q.w - v[middle], b = v[first] + sign * v[third];
    c = v[middle] + q.w, d = sign * v[third] - v[first];
  }
  const double ends = std::sqrt(a * a + b * b), other = std::sqrt(c * c + d * d);
  constexpr double kLock = 1e-12;
  return {elementary::atan2(b, a), elementary::atan2(d, c), 2 * elementary::atan2(other, ends), other < kLock,
          ends < kLock};
}

// Angles about axes[0], axes[1] and axes[2], in the order of the letters. True where the outer axes coincide.
bool eulerAngles(const Quaternion& q, const EulerOrder& order, double* angles) {
  // Axes that turn along are axes that stay, in the opposite order.
  const int firstLetter = order.intrinsic ? 2 : 0;
  const int i = order.axes[firstLetter], j = order.axes[1];
  const bool isProper = i == order.axes[2 - firstLetter];
  const int k = 3 - i - j;
  const double sign = (j - i + 3) % 3 == 1 ? 1 : -1;
  const HalfAngles half = halfAngles(q, i, j, k, sign, isProper);
  double first = half.sum - half.difference, third = half.sum + half.difference;
  const bool isLocked = half.isLockedAtZero || half.isLockedAtEnd;
  if (isLocked) {
    double& kept = order.intrinsic ? third : first;
    kept = half.isLockedAtZero ? 2 * half.sum : (order.intrinsic ? 2 : -2) * half.difference;
    (order.intrinsic ? first : third) = 0;
  }
  angles[firstLetter] = wrapped(first) + 0.0;
  angles[1] = isProper ? half.middle : half.middle - std::numbers::pi / 2;
  angles[2 - firstLetter] = wrapped(isProper ? third : sign * third) + 0.0;
  return isLocked;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_ROT_FromQuat_f64(const double quaternion[4], double rotation[9]) {
  DAX_REQUIRE(quaternion && rotation, DAX_STS_NULL_POINTER);
  Quaternion q{quaternion[0], load3(quaternion + 1)};
  DAX_REQUIRE(std::isfinite(q.w) && isFinite(q.v), DAX_STS_DATA_RANGE);
  const double largest = std::fmax(std::fabs(q.w), safeLength(q.v));
  DAX_REQUIRE(largest > 0, DAX_STS_BAD_PARAM);
  if (!(largest > 0x1p-400 && largest < 0x1p400)) q = (largest >= 1 ? 0x1p-600 : 0x1p600) * q;
  storeMatrix33(matrixOf(unit(q)), rotation);
  return DAX_STS_OK;
}

DaxStatus DAX3D_ROT_ToQuat_f64(const double rotation[9], double quaternion[4]) {
  DAX_REQUIRE(rotation && quaternion, DAX_STS_NULL_POINTER);
  const Matrix33 matrix = loadMatrix33(rotation);
  DAX_REQUIRE(isRotation(matrix), DAX3D_STS_NO_ROTATION);
  const Quaternion q = quaternionOf(matrix);
  quaternion[0] = q.w;
  store3(q.v, quaternion + 1);
  return DAX_STS_OK;
}

DaxStatus DAX3D_ROT_FromRotVec_f64(const double rotVec[3], double rotation[9]) {
  DAX_REQUIRE(rotVec && rotation, DAX_STS_NULL_POINTER);
  const Vector3 v = load3(rotVec);
  DAX_REQUIRE(isFinite(v) && std::isfinite(safeLength(v)), DAX_STS_DATA_RANGE);
  storeMatrix33(matrixOf(exponentialOf(v)), rotation);
  return DAX_STS_OK;
}

DaxStatus DAX3D_ROT_ToRotVec_f64(const double rotation[9], double rotVec[3]) {
  DAX_REQUIRE(rotation && rotVec, DAX_STS_NULL_POINTER);
  const Matrix33 matrix = loadMatrix33(rotation);
  DAX_REQUIRE(isRotation(matrix), DAX3D_STS_NO_ROTATION);
  store3(logarithmOf(quaternionOf(matrix)), rotVec);
  return DAX_STS_OK;
}

DaxStatus DAX3D_ROT_FromEuler_f64(const double angles[3], const char* order, double rotation[9]) {
  DAX_REQUIRE(angles && order && rotation, DAX_STS_NULL_POINTER);
  EulerOrder axes{};
  DAX_REQUIRE(readOrder(order, axes), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFinite(load3(angles)), DAX_STS_DATA_RANGE);
  Quaternion q = aboutAxis(axes.axes[0], angles[0]);
  for (int k = 1; k < 3; ++k) {
    const Quaternion next = aboutAxis(axes.axes[k], angles[k]);
    q = axes.intrinsic ? q * next : next * q;
  }
  storeMatrix33(matrixOf(q), rotation);
  return DAX_STS_OK;
}

DaxStatus DAX3D_ROT_ToEuler_f64(const double rotation[9], const char* order, double angles[3], int32_t* locked) {
  DAX_REQUIRE(rotation && order && angles && locked, DAX_STS_NULL_POINTER);
  EulerOrder axes{};
  DAX_REQUIRE(readOrder(order, axes), DAX_STS_BAD_PARAM);
  const Matrix33 matrix = loadMatrix33(rotation);
  DAX_REQUIRE(isRotation(matrix), DAX3D_STS_NO_ROTATION);
  *locked = eulerAngles(quaternionOf(matrix), axes, angles);
  return DAX_STS_OK;
}
