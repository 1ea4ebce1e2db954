#include "image/warp/warp.h"

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

}  // namespace

AffineWalk::AffineWalk(const double* back, DaxiSize dstSize)
    : isFixed_(fitsFixed(back, dstSize) && fitsFixed(back + 3, dstSize)) {
  std::copy_n(back, 6, real_);
  if (!isFixed_) return;
  for (int i = 0; i < 6; ++i) fixed_[i] = static_cast<int64_t>(std::rint(back[i] * 0x1p32));
}

void AffineWalk::row(int32_t y, Positions& at) const {
  if (isFixed_) {
    const int64_t startX = fixed_[0] * x_ + (fixed_[1] * y + fixed_[2]);
    const int64_t startY = fixed_[3] * x_ + (fixed_[4] * y + fixed_[5]);
    const int64_t stepX = fixed_[0], stepY = fixed_[3];
    for (int32_t i = 0; i < count_; ++i) {
      at.x[i] = startX + stepX * i;
      at.y[i] = startY + stepY * i;
    }
    return;
  }
  for (int32_t i = 0; i < count_; ++i) {
    const double x = x_ + i;
    at.x[i] = fixedPosition(real_[0] * x + (real_[1] * y + real_[2]));
    at.y[i] = fixedPosition(real_[3] * x + (real_[4] * y + real_[5]));
  }
}

void PerspectiveWalk::row(int32_t y, Positions& at) const {
  const double* const m = back_;
  const double u = m[1] * y + m[2], v = m[4] * y + m[5], w = m[7] * y + m[8];
  for (int32_t i = 0; i < count_; ++i) {
    const double x = x_ + i;
    const double denominator = m[6] * x + w;
    const bool isSeen = denominator > 0;
    at.x[i] = isSeen ? fixedPosition((m[0] * x + u) / denominator) : kNowhere;
    at.y[i] = isSeen ? fixedPosition((m[3] * x + v) / denominator) : kNowhere;
  }
}

void rotationBack(double angle, DaxiSize srcSize, DaxiSize dstSize, double (&back)[6]) {
  const auto [s, c] = elementary::sinCos(angle);
  const double toX = (dstSize.width - 1) / 2.0, toY = (dstSize.height - 1) / 2.0;
  const double rows[6] = {c,  s, (srcSize.width - 1) / 2.0 - (c * toX + s * toY),
                          -s, c, (srcSize.height - 1) / 2.0 - (c * toY - s * toX)};
  std::copy_n(rows, 6, back);
}

}  // namespace dax
