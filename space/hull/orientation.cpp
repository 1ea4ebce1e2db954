#include "space/hull/orientation.h"

#include <initializer_list>

#include "frame/numeric/double_double.h"

namespace dax {
namespace {

// An exact number: a sum of doubles that do not overlap, in ascending order, without zeros. J. R. Shewchuk, Adaptive
// Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates, Discrete & Computational Geometry 18, 1997.
template <int kCapacity>
class Expansion {
 public:
  void add(double value) {
    int kept = 0;
    for (int i = 0; i < count_; ++i) {
      const DoubleDouble sum = twoSum(value, parts_[i]);
      value = sum.high;
      if (sum.low != 0) parts_[kept++] = sum.low;
    }
    if (value != 0) parts_[kept++] = value;
    count_ = kept;
  }
  void addProduct(double a, double b) {
    const DoubleDouble product = twoProduct(a, b);
    add(product.low);
    add(product.high);
  }
  // sign a b.
  template <int k>
  void addProduct(const Expansion<k>& a, const DoubleDouble& b, double sign) {
    for (int i = 0; i < a.count(); ++i) {
      addProduct(a[i], sign * b.high);
      addProduct(a[i], sign * b.low);
    }
  }
  int count() const { return count_; }
  double operator[](int i) const { return parts_[i]; }
  int sign() const { return count_ == 0 ? 0 : parts_[count_ - 1] > 0 ? 1 : -1; }

 private:
  double parts_[kCapacity];
  int count_ = 0;
};

// A vector of exact differences.
struct ExactDifference {
  ExactDifference(const Vector3& p, const Vector3& from)
      : x(twoSum(p.x, -from.x)), y(twoSum(p.y, -from.y)), z(twoSum(p.z, -from.z)) {}
  DoubleDouble x, y, z;
};

// a b - c d.
Expansion<16> minorOf(const DoubleDouble& a, const DoubleDouble& b, const DoubleDouble& c, const DoubleDouble& d) {
  Expansion<16> minor;
  for (const double high : {a.low, a.high}) {
    minor.addProduct(high, b.low);
    minor.addProduct(high, b.high);
  }
  for (const double high : {c.low, c.high}) {
    minor.addProduct(-high, d.low);
    minor.addProduct(-high, d.high);
  }
  return minor;
}

int exactOrientation(const Vector3& a, const Vector3& b, const Vector3& c, const Vector3& d) {
  const ExactDifference u(b, a), v(c, a), w(d, a);
  Expansion<192> volume;
  volume.addProduct(minorOf(u.y, v.z, u.z, v.y), w.x, 1);
  volume.addProduct(minorOf(u.z, v.x, u.x, v.z), w.y, 1);
  volume.addProduct(minorOf(u.x, v.y, u.y, v.x), w.z, 1);
  return volume.sign();
}

}  // namespace

int orientation(const Vector3& a, const Vector3& b, const Vector3& c, const Vector3& d) {
  const Vector3 u = b - a, v = c - a, w = d - a;
  const double yz = u.y * v.z, zy = u.z * v.y, zx = u.z * v.x, xz = u.x * v.z, xy = u.x * v.y, yx = u.y * v.x;
  const double volume = (yz - zy) * w.x + (zx - xz) * w.y + (xy - yx) * w.z;
  const double sizes = (std::fabs(yz) + std::fabs(zy)) * std::fabs(w.x) +
                       (std::fabs(zx) + std::fabs(xz)) * std::fabs(w.y) +
                       (std::fabs(xy) + std::fabs(yx)) * std::fabs(w.z);
  // Shewchuk's bound of the rounding of this formula: (7 + 56 e) e, e = 2^-53.
  constexpr double kBound = (7 + 56 * 0x1p-53) * 0x1p-53;
  if (std::fabs(volume) > kBound * sizes) return volume > 0 ? 1 : -1;
  return exactOrientation(a, b, c, d);
}

bool areCollinear(const Vector3& a, const Vector3& b, const Vector3& c) {
  const ExactDifference u(b, a), v(c, a);
  return minorOf(u.y, v.z, u.z, v.y).sign() == 0 && minorOf(u.z, v.x, u.x, v.z).sign() == 0 &&
         minorOf(u.x, v.y, u.y, v.x).sign() == 0;
}

}  // namespace dax
