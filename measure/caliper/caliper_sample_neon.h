// NEON twin of sampling 8-bit images.
#pragma once

#include <cstring>
#include <utility>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "measure/caliper/caliper_sample_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Eight samples. Each lane of `top` and `bottom` holds two neighbouring pixels, the left one in the low byte; fx and fy
// are the fractions of the positions.
inline uint16x8_t interpolate(uint16x8_t top, uint16x8_t bottom, uint16x8_t fx, uint16x8_t fy) {
  const uint16x8_t one = vdupq_n_u16(kOnePixel), low = vdupq_n_u16(255);
  const uint16x8_t gx = vsubq_u16(one, fx), gy = vsubq_u16(one, fy);
  const auto across = [&](uint16x4_t pixels, uint16x4_t lowByte, uint16x4_t left, uint16x4_t right) {
    return vmlal_u16(vmull_u16(vand_u16(pixels, lowByte), left), vshr_n_u16(pixels, 8), right);
  };
  const auto down = [](uint32x4_t above, uint32x4_t below, uint16x4_t up, uint16x4_t lower) {
    return vrshrn_n_u32(vmlaq_u32(vmulq_u32(above, vmovl_u16(up)), below, vmovl_u16(lower)), kRoundingBits);
  };
  const auto half = [&](uint16x4_t t, uint16x4_t b, uint16x4_t x0, uint16x4_t x1, uint16x4_t y0, uint16x4_t y1) {
    const uint16x4_t lowByte = vget_low_u16(low);
    return down(across(t, lowByte, x0, x1), across(b, lowByte, x0, x1), y0, y1);
  };
  return vcombine_u16(half(vget_low_u16(top), vget_low_u16(bottom), vget_low_u16(gx), vget_low_u16(fx),
                           vget_low_u16(gy), vget_low_u16(fy)),
                      half(vget_high_u16(top), vget_high_u16(bottom), vget_high_u16(gx), vget_high_u16(fx),
                           vget_high_u16(gy), vget_high_u16(fy)));
}

// Fractions of eight positions, advancing by eight. The lanes hold the fraction bits of the track in their upper bits.
class Fractions {
 public:
  Fractions(int64_t start, int64_t step) : step_(vdupq_n_u32(upper(8 * step))) {
    for (int lane = 0; lane < 4; ++lane) {
      first_[lane] = upper(start + lane * step);
      first_[lane + 4] = upper(start + (lane + 4) * step);
    }
    low_ = vld1q_u32(first_), high_ = vld1q_u32(first_ + 4);
  }
  uint16x8_t next() {
    const uint16x8_t bits = vcombine_u16(vshrn_n_u32(low_, 16), vshrn_n_u32(high_, 16));
    low_ = vaddq_u32(low_, step_), high_ = vaddq_u32(high_, step_);
    return vshrq_n_u16(bits, 16 - kPositionBits);
  }

 private:
  static uint32_t upper(int64_t position) { return static_cast<uint32_t>(position) << (32 - kTrackBits); }
  uint32_t first_[8];
  uint32x4_t step_, low_, high_;
};

// Whether a position and its right and lower neighbours lie in the image.
inline bool inside(const SampleTrack& track, int32_t j, DaxiSize size) {
  const int64_t x = track.positionX(j) >> kPositionBits, y = track.positionY(j) >> kPositionBits;
  return x >= 0 && x < size.width - 1 && y >= 0 && y < size.height - 1;
}

template <int kLane>
void loadPair(const uint8_t* pixels, int32_t step, uint16x8_t& top, uint16x8_t& bottom) {
  uint16_t pair;
  std::memcpy(&pair, pixels, 2);
  top = vsetq_lane_u16(pair, top, kLane);
  std::memcpy(&pair, pixels + step, 2);
  bottom = vsetq_lane_u16(pair, bottom, kLane);
}

inline void sampleRow(const uint8_t* pixels, int32_t step, DaxiSize size, const SampleTrack& track, int32_t count,
                      uint16_t* out) {
  Fractions fractionsX(track.x, track.dx), fractionsY(track.y, track.dy);
  int64_t x = track.x, y = track.y;
  int32_t j = 0;
  for (; j <= count - 8; j += 8) {
    const uint16x8_t fx = fractionsX.next(), fy = fractionsY.next();
    // Positions lie on a straight line: if both ends are inside, all are.
    if (!inside(track, j, size) || !inside(track, j + 7, size)) {
      portable::sampleRow(pixels, step, size, track, j, j + 8, out);
      x += 8 * track.dx, y += 8 * track.dy;
      continue;
    }
    uint16x8_t top = vdupq_n_u16(0), bottom = top;
    const auto load = [&]<int kLane>(std::integral_constant<int, kLane>) {
      loadPair<kLane>(pixels + (y >> kTrackBits) * step + (x >> kTrackBits), step, top, bottom);
      x += track.dx, y += track.dy;
    };
    [&]<int... kLanes>(std::integer_sequence<int, kLanes...>) {
      (load(std::integral_constant<int, kLanes>()), ...);
    }
    (std::make_integer_sequence<int, 8>());
    vst1q_u16(out + j, interpolate(top, bottom, fx, fy));
  }
  portable::sampleRow(pixels, step, size, track, j, count, out);
}

}  // namespace dax::neon
#endif
