#include "space/align/pair_sums.h"

#include <algorithm>
#include <cstddef>

namespace dax {
namespace {

typedef double TwoDoubles __attribute__((vector_size(16)));

constexpr int32_t kBlock = 1024;

// Sums over points less a shift; points of even number in the first lane, of odd number in the second.
struct TwoSums {
  TwoDoubles weight, from[3], to[3], cross[9], fromSquare, toSquare;
};

// Inlined, so that the sums stay in registers.
template <bool kPlain>
[[gnu::always_inline]] inline void addPoints(TwoSums& sums, const TwoDoubles* from, const TwoDoubles* to,
                                             TwoDoubles weight) {
  TwoDoubles weighted[3];
  for (int i = 0; i < 3; ++i) {
    weighted[i] = kPlain ? from[i] : weight * from[i];
    sums.from[i] += weighted[i];
    sums.to[i] += kPlain ? to[i] : weight * to[i];
    for (int k = 0; k < 3; ++k) sums.cross[3 * i + k] += weighted[i] * to[k];
  }
  sums.fromSquare += weighted[0] * from[0] + weighted[1] * from[1] + weighted[2] * from[2];
  const TwoDoubles square = to[0] * to[0] + to[1] * to[1] + to[2] * to[2];
  sums.toSquare += kPlain ? square : weight * square;
}

double both(TwoDoubles v) {
  return v[0] + v[1];
}

Vector3 both(const TwoDoubles* v) {
  return {both(v[0]), both(v[1]), both(v[2])};
}

PairMoments momentsOf(const TwoSums& sums, double weight, const Vector3& fromShift, const Vector3& toShift) {
  PairMoments m{weight,
                fromShift,
                toShift,
                {{both(sums.cross), both(sums.cross + 3), both(sums.cross + 6)}},
                both(sums.fromSquare),
                both(sums.toSquare)};
  if (!(weight > 0)) return m;
  const Vector3 from = both(sums.from), to = both(sums.to);
  const Vector3 fromOffset = (1 / weight) * from, toOffset = (1 / weight) * to;
  m.fromMean = fromShift + fromOffset;
  m.toMean = toShift + toOffset;
  m.cross.rows[0] = m.cross.rows[0] - fromOffset.x * to;
  m.cross.rows[1] = m.cross.rows[1] - fromOffset.y * to;
  m.cross.rows[2] = m.cross.rows[2] - fromOffset.z * to;
  m.fromSquare -= dot(fromOffset, from);
  m.toSquare -= dot(toOffset, to);
  return m;
}

template <class T>
Vector3 pointAt(const T* points, int32_t i, double factor) {
  const ptrdiff_t at = ptrdiff_t{3} * i;
  return {double{points[at]} * factor, double{points[at + 1]} * factor, double{points[at + 2]} * factor};
}

// kPlain: all factors and weights are 1.
template <bool kPlain, class T>
PairMoments blockMoments(const PairedPoints<T>& points, int32_t first, int32_t end) {
  const auto factor = [](double f) { return kPlain ? 1 : f; };
  const auto weightAt = [&](int32_t i) {
    return points.weights ? double{points.weights[i]} * factor(points.weightFactor) : 1;
  };
  int32_t shift = first;
  while (!kPlain && shift + 1 < end && weightAt(shift) == 0) ++shift;
  const Vector3 fromShift = pointAt(points.from, shift, factor(points.fromFactor));
  const Vector3 toShift = pointAt(points.to, shift, factor(points.toFactor));
  TwoSums sums{};
  // Both points of a pair of lanes, less the shift.
  const auto load = [](const T* all, int32_t i, int32_t next, double scale, const Vector3& less, TwoDoubles* lanes) {
    const ptrdiff_t one = ptrdiff_t{3} * i, other = ptrdiff_t{3} * next;
    const double origin[3] = {less.x, less.y, less.z};
    for (int k = 0; k < 3; ++k) lanes[k] = TwoDoubles{double{all[one + k]}, double{all[other + k]}} * scale - origin[k];
  };
  const auto add = [&](int32_t i, int32_t next, TwoDoubles weight) {
    TwoDoubles from[3], to[3];
    load(points.from, i, next, factor(points.fromFactor), fromShift, from);
    load(points.to, i, next, factor(points.toFactor), toShift, to);
    if (!kPlain) sums.weight += weight;
    addPoints<kPlain>(sums, from, to, weight);
  };
  for (int32_t i = first; i < end; i += 2) {
    // Beside the last of an odd number the shift itself, which adds nothing.
    const bool isPair = i + 1 < end;
    const int32_t next = isPair ? i + 1 : shift;
    add(i, next, kPlain ? TwoDoubles{} : TwoDoubles{weightAt(i), isPair ? weightAt(next) : 0});
  }
  return momentsOf(sums, kPlain ? end - first : both(sums.weight), fromShift, toShift);
}

// Of both sets together (T. F. Chan, G. H. Golub, R. J. LeVeque, The American Statistician 37(3), 1983).
PairMoments merged(const PairMoments& a, const PairMoments& b) {
  const double weight = a.weight + b.weight;
  if (!(a.weight > 0 && b.weight > 0)) {  // squares without weight are 0, or tell of numbers that are not finite
    PairMoments m = a.weight > 0 ? a : b;
    m.weight = weight;
    m.fromSquare = a.fromSquare + b.fromSquare;
    m.toSquare = a.toSquare + b.toSquare;
    return m;
  }
  const double share = b.weight / weight, factor = a.weight * share;
  const Vector3 from = b.fromMean - a.fromMean, to = b.toMean - a.toMean;
  PairMoments m = a;
  m.weight = weight;
  m.fromMean = a.fromMean + share * from;
  m.toMean = a.toMean + share * to;
  m.cross.rows[0] = a.cross.rows[0] + b.cross.rows[0] + (factor * from.x) * to;
  m.cross.rows[1] = a.cross.rows[1] + b.cross.rows[1] + (factor * from.y) * to;
  m.cross.rows[2] = a.cross.rows[2] + b.cross.rows[2] + (factor * from.z) * to;
  m.fromSquare = a.fromSquare + b.fromSquare + factor * dot(from, from);
  m.toSquare = a.toSquare + b.toSquare + factor * dot(to, to);
  return m;
}

// Pairwise: as the digits of a binary counter carry.
template <bool kPlain, class T>
PairMoments allMoments(const PairedPoints<T>& points) {
  PairMoments open[32] = {};
  int depth = 0;
  uint32_t blocks = 0;
  for (int64_t first = 0; first < points.count; first += kBlock) {
    const auto end = static_cast<int32_t>(std::min<int64_t>(first + kBlock, points.count));
    open[depth++] = blockMoments<kPlain>(points, static_cast<int32_t>(first), end);
    ++blocks;
    for (uint32_t carry = blocks; carry % 2 == 0; carry /= 2, --depth) {
      open[depth - 2] = merged(open[depth - 2], open[depth - 1]);
    }
  }
  for (; depth > 1; --depth) open[depth - 2] = merged(open[depth - 2], open[depth - 1]);
  return open[0];
}

}  // namespace

template <class T>
PairMoments pairMoments(const PairedPoints<T>& points) {
  const bool isPlain = !points.weights && points.fromFactor == 1 && points.toFactor == 1 && points.weightFactor == 1;
  return isPlain ? allMoments<true>(points) : allMoments<false>(points);
}

template PairMoments pairMoments(const PairedPoints<float>& points);
template PairMoments pairMoments(const PairedPoints<double>& points);

}  // namespace dax
