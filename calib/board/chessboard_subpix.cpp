#include "daxi/chessboard_subpix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "calib/board/board_image.h"
#include "calib/board/chessboard_subpix.h"
#include "frame/check.h"
#include "frame/math.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/vector4.h"
#include "image/gradient/sobel.h"

namespace dax {
namespace {

constexpr int32_t kMinHalf = 2, kMaxHalf = 50;
constexpr double kSingular = 1.1920929e-7;  // FLT_EPSILON; a smaller determinant counts as 0
constexpr float kMinCircleContrast = 4;     // grey levels between dark and light on the circle around a corner
// Room for a row, rounded up to whole vectors. The window has up to 101 columns, the patch one more on each side and
// one for the interpolation.
constexpr int32_t kWindowRow = 104, kPatchRow = 112;
constexpr int32_t kBand = 8;  // rows of gradients at a time

constexpr int32_t wholeVectors(int32_t n) {
  return (n + 3) / 4 * 4;
}

struct Source {
  const uint8_t* data;
  int32_t step;
  DaxiSize size;
};

// exp(-i^2 / half^2) for i = -half..half, then zeros.
void fillWeights(float* weights, int32_t half) {
  for (int32_t i = -half; i <= half; ++i) {
    weights[i + half] = static_cast<float>(expOfTable(-static_cast<double>(i * i) / (half * half)));
  }
  std::fill(weights + 2 * half + 1, weights + kWindowRow, 0.0f);
}

struct WindowMask {
  explicit WindowMask(DaxiSize halfWindow) : half(halfWindow) {
    fillWeights(x.data(), half.width);
    fillWeights(y.data(), half.height);
    for (int32_t i = 0; i < kWindowRow; ++i) offset[static_cast<size_t>(i)] = static_cast<float>(i - half.width);
  }
  DaxiSize half;
  alignas(16) std::array<float, kWindowRow> x, y, offset;
};

// Interpolates the rows of the patch around a point from top to bottom.
class PatchRows {
 public:
  PatchRows(const Source& src, DaxiSize half, double x, double y)
      : src_(src),
        left_(static_cast<int32_t>(std::floor(x)) - half.width - 1),
        next_(static_cast<int32_t>(std::floor(y)) - half.height - 1),
        columns_(wholeVectors(2 * half.width + 1) + 4),
        fx_(static_cast<float>(x - std::floor(x))),
        fy_(static_cast<float>(y - std::floor(y))) {
    interpolateAlong(rows_[0].data());
  }

  void write(float* to) {
    const float* const above = rows_[current_].data();
    float* const below = rows_[current_ ^ 1].data();
    interpolateAlong(below);
    for (int32_t x = 0; x < columns_; x += 4) {
      const Float4 a = load4(above + x);
      store4(to + x, a + fy_ * (load4(below + x) - a));
    }
    current_ ^= 1;
  }

 private:
  void interpolateAlong(float* to) {
    const uint8_t* const row = rowAt(src_.data, src_.step, std::clamp(next_++, 0, src_.size.height - 1));
    const bool inside = left_ >= 0 && left_ + columns_ < src_.size.width;
    std::array<uint8_t, kPatchRow + 4> copy;
    if (!inside) gather(row, copy.data());
    const uint8_t* const from = inside ? row + left_ : copy.data();
    for (int32_t x = 0; x < columns_; x += 4) {
      const Float4 a = load4(from + x);
      store4(to + x, a + fx_ * (load4(from + x + 1) - a));
    }
  }

  void gather(const uint8_t* row, uint8_t* to) const {
    for (int32_t x = 0; x <= columns_; ++x) to[x] = row[std::clamp(left_ + x, 0, src_.size.width - 1)];
  }

  const Source& src_;
  int32_t left_, next_, columns_;
  float fx_, fy_;
  int32_t current_ = 0;
  std::array<std::array<float, kPatchRow>, 2> rows_;
};

// The sums of the normal equations, in four lanes. x and y are offsets from the centre.
struct NormalSums {
  Float4 xx{}, xy{}, yy{}, p{}, q{};

  void addRow(const float* gx, const float* gy, const WindowMask& mask, int32_t row) {
    Float4 rowXx{}, rowXy{}, rowYy{}, rowXxx{}, rowXyx{};
    for (int32_t i = 0; i < 2 * mask.half.width + 1; i += 4) {
      const Float4 u = load4(gx + i), v = load4(gy + i), w = load4(mask.x.data() + i),
                   x = load4(mask.offset.data() + i);
      const Float4 wu = w * u, uu = wu * u, uv = wu * v;
      rowXx += uu;
      rowXy += uv;
      rowYy += w * v * v;
      rowXxx += uu * x;
      rowXyx += uv * x;
    }
    const float w = mask.y[static_cast<size_t>(row)], y = static_cast<float>(row - mask.half.height);
    rowXy *= w;
    rowYy *= w;
    xx += w * rowXx;
    xy += rowXy;
    yy += rowYy;
    p += w * rowXxx + y * rowXy;
    q += w * rowXyx + y * rowYy;
  }
};

NormalSums sumWindow(const Source& src, const WindowMask& mask, double x, double y) {
  const DaxiSize window{2 * mask.half.width + 1, 2 * mask.half.height + 1};
  alignas(16) std::array<float, (kBand + 2) * kPatchRow> patch;
  alignas(16) std::array<float, kBand * kWindowRow> gx, gy;
  PatchRows rows(src, mask.half, x, y);
  rows.write(patch.data());
  rows.write(patch.data() + kPatchRow);
  NormalSums sums;
  for (int32_t first = 0; first < window.height; first += kBand) {
    const DaxiSize band{wholeVectors(window.width), std::min(kBand, window.height - first)};
    for (int32_t i = 0; i < band.height; ++i) rows.write(patch.data() + (i + 2) * kPatchRow);
    _DAXI_FilterSobelHori_32f_C1R(patch.data(), kPatchRow, gx.data(), kWindowRow, band);
    _DAXI_FilterSobelVert_32f_C1R(patch.data(), kPatchRow, gy.data(), kWindowRow, band);
    for (int32_t i = 0; i < band.height; ++i) {
      sums.addRow(gx.data() + i * kWindowRow, gy.data() + i * kWindowRow, mask, first + i);
    }
    if (first + kBand < window.height)
      std::memcpy(patch.data(), patch.data() + kBand * kPatchRow, 2 * kPatchRow * sizeof(float));
  }
  return sums;
}

bool within(double v, double low, double high) {
  return v >= low && v <= high;
}

// Whether the patch around a point overlaps the image. Only then may coordinates be converted to integers.
bool reachesImage(const Source& src, DaxiSize half, double x, double y) {
  return within(x, -half.width - 2, src.size.width + half.width + 1) &&
         within(y, -half.height - 2, src.size.height + half.height + 1);
}

double total(Float4 v) {
  return static_cast<double>(sum4(v));
}

// Moves a point to the corner; returns false and leaves it unchanged when there is none. `mayReturn`: whether an
// estimate that has left the window around the start may come back into it.
bool refineCorner(const Source& src, const WindowMask& mask, DaxiPoint32f& point, int32_t maxIter, double epsilon,
                  bool mayReturn) {
  const DaxiPoint32f start = point;
  double x = static_cast<double>(start.x), y = static_cast<double>(start.y), shift2 = HUGE_VAL;
  const auto isNear = [&] {
    return std::fabs(x - static_cast<double>(start.x)) <= mask.half.width &&
           std::fabs(y - static_cast<double>(start.y)) <= mask.half.height;
  };
  for (int32_t i = 0; i < maxIter && !(shift2 < epsilon); ++i) {
    if (!reachesImage(src, mask.half, x, y)) return false;
    const NormalSums s = sumWindow(src, mask, x, y);
    const auto xx = total(s.xx), xy = total(s.xy), yy = total(s.yy), p = total(s.p), q = total(s.q);
    const double determinant = xx * yy - xy * xy;
    if (!(std::fabs(determinant) >= kSingular)) return false;
    const double dx = (yy * p - xy * q) / determinant, dy = (xx * q - xy * p) / determinant;
    x += dx;
    y += dy;
    shift2 = dx * dx + dy * dy;
    if (!mayReturn && !isNear()) return false;
  }
  if (isNear()) point = {static_cast<float>(x), static_cast<float>(y)};
  return isNear();
}

bool isHalfWindow(DaxiSize half) {
  return atLeast(half, kMinHalf) && atMost(half, kMaxHalf);
}

DaxStatus check(const uint8_t* src, int32_t srcStep, DaxiSize size, const DaxiPoint32f* corners, int32_t count,
                DaxiSize halfWindow, int32_t maxIter, const DaxiPoint32f* refined, float epsilon) {
  DAX_REQUIRE(src && corners && refined, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, kMinBoardSide), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(isHalfWindow(halfWindow) && count >= 1 && epsilon > 0 && maxIter >= 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus bufferSize(DaxiSize halfWindow, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isHalfWindow(halfWindow), DAX_STS_BAD_PARAM);
  const int32_t patch = (2 * halfWindow.width + 5) * (2 * halfWindow.height + 5);
  const uint64_t n{static_cast<uint32_t>(patch)};
  BufferLayout layout;
  for (int32_t i = 0; i < 11; ++i) layout.add<float>(n);
  for (int32_t i = 0; i < 2; ++i) layout.add<uint8_t>(n);
  return layout.store(bytes);
}

}  // namespace
}  // namespace dax

void _DAXI_ChessboardCornerGetSubpix_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                            const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                            int32_t maxIter, DaxiPoint32f* refined, float epsilon) {
  const dax::WindowMask mask(halfWindow);
  const dax::Source source{src, srcStep, size};
  for (int32_t i = 0; i < count; ++i) {
    refined[i] = corners[i];
    dax::refineCorner(source, mask, refined[i], maxIter, static_cast<double>(epsilon), true);
  }
}

void _DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                               const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                               int32_t maxIter, DaxiPoint32f* refined, float epsilon,
                                               dax::CornerEdges* edges, uint8_t* isCorner) {
  const dax::WindowMask mask(halfWindow);
  const dax::Source source{src, srcStep, size};
  const auto radius = static_cast<float>(std::min(halfWindow.width, halfWindow.height));
  for (int32_t i = 0; i < count; ++i) {
    const DaxiPoint32f start = corners[i];
    DaxiPoint32f at = start;
    dax::CornerEdges found{};
    const bool corner = dax::refineCorner(source, mask, at, maxIter, static_cast<double>(epsilon), false) &&
                        dax::reachesImage(source, halfWindow, static_cast<double>(at.x), static_cast<double>(at.y)) &&
                        DAXI_Common_around_edge_orit(src, srcStep, size, at, radius, dax::kMinCircleContrast, &found);
    refined[i] = corner ? at : start;
    if (edges) edges[i] = found;
    if (isCorner) isCorner[i] = corner;
  }
}

DaxStatus DAXI_ChessboardCornerGetSubpixBufferSize_8u(DaxiSize halfWindow, uint64_t* bytes) {
  return dax::bufferSize(halfWindow, bytes);
}

DaxStatus DAXI_ChessboardCornerGetSubpixBufferSize_8u_v2(DaxiSize halfWindow, uint64_t* bytes) {
  return dax::bufferSize(halfWindow, bytes);
}

DaxStatus DAXI_ChessboardCornerGetSubpix_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                                int32_t maxIter, DaxiPoint32f* refined, float epsilon) {
  DAX_REQUIRE_OK(dax::check(src, srcStep, size, corners, count, halfWindow, maxIter, refined, epsilon));
  _DAXI_ChessboardCornerGetSubpix_8u_C1R(src, srcStep, size, corners, count, halfWindow, maxIter, refined, epsilon);
  return DAX_STS_OK;
}

DaxStatus DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                                   int32_t maxIter, DaxiPoint32f* refined, float epsilon) {
  DAX_REQUIRE_OK(dax::check(src, srcStep, size, corners, count, halfWindow, maxIter, refined, epsilon));
  _DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(src, srcStep, size, corners, count, halfWindow, maxIter, refined, epsilon,
                                            nullptr, nullptr);
  return DAX_STS_OK;
}
