#include "image/warp/warp.h"

#include <bit>
#include <cmath>

#include "frame/numeric/elementary.h"

namespace dax {
namespace {

// Whether a row's terms stay below 2^30 at every corner of the destination.
bool fitsFixed(const double* row, DaxiSize size) {
  const double sides[3] = {std::max(size.width - 1.0, 1.0), std::max(size.height - 1.0, 1.0), 1};
  double sum = 0;
  for (int i = 0; i < 3; ++i) sum += std::fabs(row[i]) * sides[i];
  return sum < 0x1p30;
}

// first, first + step, ...: `count` numbers, and up to seven more, which may wrap.
void countUp(int64_t first, int64_t step, int32_t count, int64_t* to) {
  constexpr int32_t kLanes = 8;
  static_assert(kChunk % kLanes == 0);
  const auto delta = static_cast<uint64_t>(step);
  uint64_t ahead[kLanes], start = static_cast<uint64_t>(first);
  for (uint64_t k = 0; k < kLanes; ++k) ahead[k] = k * delta;
  for (int32_t i = 0; i < count; i += kLanes, start += kLanes * delta) {
    for (int k = 0; k < kLanes; ++k) to[i + k] = static_cast<int64_t>(start + ahead[k]);
  }
}

// 0 for a negative number: what is divided by it lies nowhere. (Bits, so that there are vectors for it.)
double positivePart(double value) {
  const auto bits = std::bit_cast<int64_t>(value);
  return std::bit_cast<double>(bits & ~(bits >> 63));
}

}  // namespace

AffineWalk::AffineWalk(const double* back, DaxiSize dstSize)
    : isFixed_(fitsFixed(back, dstSize) && fitsFixed(back + 3, dstSize)) {
  std::copy_n(back, 6, real_);
  if (!isFixed_) return;
  for (int i = 0; i < 6; ++i) fixed_[i] = static_cast<int64_t>(std::rint(back[i] * 0x1p32));
}

void AffineWalk::row(int32_t y, Positions& at) const {
  if (isFixed_) {
    countUp(fixed_[0] * x_ + (fixed_[1] * y + fixed_[2]), fixed_[0], count_, at.x);
    countUp(fixed_[3] * x_ + (fixed_[4] * y + fixed_[5]), fixed_[3], count_, at.y);
    return;
  }
  const double* const m = real_;
  const auto place = [=, this](int32_t i) {
    const double x = x_ + i;
    return RealPosition<double>{m[0] * x + (m[1] * y + m[2]), m[3] * x + (m[4] * y + m[5])};
  };
  fixPositions(count_, place, at);
}

void PerspectiveWalk::row(int32_t y, Positions& at) const {
  const double* const m = back_;
  const double u = m[1] * y + m[2], v = m[4] * y + m[5], w = m[7] * y + m[8];
  const auto place = [=, this](int32_t i) {
    const double x = x_ + i, denominator = positivePart(m[6] * x + w);
    return RealPosition<double>{(m[0] * x + u) / denominator, (m[3] * x + v) / denominator};
  };
  fixPositions(count_, place, at);
}

void rotationBack(double angle, DaxiSize srcSize, DaxiSize dstSize, double (&back)[6]) {
  const auto [s, c] = elementary::sinCos(angle);
  const double toX = (dstSize.width - 1) / 2.0, toY = (dstSize.height - 1) / 2.0;
  const double rows[6] = {c,  s, (srcSize.width - 1) / 2.0 - (c * toX + s * toY),
                          -s, c, (srcSize.height - 1) / 2.0 - (c * toY - s * toX)};
  std::copy_n(rows, 6, back);
}

}  // namespace dax
