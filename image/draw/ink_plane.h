// How much of each pixel strokes cover, of many short ones at little cost: each run of a stroke is an outline whose areas are
// exact, and where runs meet a pixel has the largest of their coverages.
//
// A side adds its signed area to the right, as the difference from pixel to pixel of a row; the sums along rows are the
// coverages of a simple outline, whichever way it runs.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include "frame/memory/work_buffer.h"
#include "image/draw/canvas.h"

namespace dax {

// Memory of planes of at most this size.
struct InkBuffer {
  explicit InkBuffer(DaxiSize size)
      : areas(layout.add<float>((static_cast<uint64_t>(size.width) + 1) * static_cast<uint64_t>(size.height))),
        coverages(layout.add<float>(pixelsOf(size))),
        spans(layout.add<int32_t>(2 * static_cast<uint64_t>(size.height))) {}

  BufferLayout layout;
  BufferPiece<float> areas, coverages;
  BufferPiece<int32_t> spans;
};

// Calls use(x, y) for the pixels of Bresenham's line; of two equally near ones that with the smaller coordinate.
template <class Use>
void walkLine(DaxiPoint32s from, DaxiPoint32s to, const Use& use) {
  if (from.y > to.y || (from.y == to.y && from.x > to.x)) std::swap(from, to);
  const int64_t dx = int64_t{to.x} - from.x, dy = int64_t{to.y} - from.y, width = std::abs(dx), way = dx < 0 ? -1 : 1;
  const bool isSteep = dy > width;
  const int64_t steps = isSteep ? dy : width, across = isSteep ? width : dy;
  int64_t x = from.x, y = from.y;
  // Across by (2 i across + rest) / (2 steps); halves go to the lower coordinate, which is the farther one where x falls.
  int64_t rest = isSteep && dx < 0 ? steps : steps - 1;
  for (int64_t i = 0;; ++i) {
    use(x, y);
    if (i == steps) return;
    rest += 2 * across;
    const bool moves = rest >= 2 * steps;
    if (moves) rest -= 2 * steps;
    x += isSteep ? way * moves : way;
    y += isSteep ? 1 : moves;
  }
}

class InkPlane {
 public:
  // window: the part of the image that the plane is for.
  InkPlane(const InkBuffer& layout, void* buffer, const DaxiRect& window)
      : areas_(layout.areas.in(buffer)),
        coverages_(layout.coverages.in(buffer)),
        spans_(layout.spans.in(buffer)),
        window_(window) {
    std::fill_n(areas_, (int64_t{window.width} + 1) * window.height, 0.0F);
    std::fill_n(coverages_, int64_t{window.width} * window.height, 0.0F);
    for (int32_t y = 0; y < window.height; ++y) forget(y);
  }

  // A side of the run's outline, on the image.
  void side(DaxiPoint64f from, DaxiPoint64f to) {
    const double x0 = from.x + 0.5 - window_.x, y0 = from.y + 0.5 - window_.y;
    const double x1 = to.x + 0.5 - window_.x, y1 = to.y + 0.5 - window_.y;
    if (y0 < y1) addSide(x0, y0, x1, y1, 1);
    if (y1 < y0) addSide(x1, y1, x0, y0, -1);
  }

  void endRun() {
    for (int32_t y = top_; y < bottom_; ++y) {
      float* const areas = areas_ + y * (int64_t{window_.width} + 1);
      float* const coverages = coverages_ + int64_t{y} * window_.width;
      const int32_t end = spans_[2 * y + 1];
      float sum = 0;
      for (int32_t x = spans_[2 * y]; x < end; ++x) {
        sum += areas[x];
        areas[x] = 0;
        coverages[x] = std::max(coverages[x], std::min(std::fabs(sum), 1.0F));
      }
      areas[end] = 0;
      forget(y);
    }
    top_ = INT32_MAX, bottom_ = 0;
  }

  void setPixel(int64_t x, int64_t y) {
    x -= window_.x, y -= window_.y;
    if (x >= 0 && y >= 0 && x < window_.width && y < window_.height) coverages_[y * window_.width + x] = 1;
  }

  // Without anti-aliasing pixels count that are covered by half at least.
  void blend(const Canvas& canvas, const Ink& ink, bool antialias) const {
    for (int32_t y = 0; y < window_.height; ++y) {
      float* const row = coverages_ + int64_t{y} * window_.width;
      if (!antialias) std::transform(row, row + window_.width, row, [](float c) { return c >= 0.5F ? 1.0F : 0.0F; });
      for (int32_t x = 0; x < window_.width; ++x) {
        if (row[x] == 0) continue;
        const int32_t first = x;
        while (x < window_.width && row[x] > 0) ++x;
        canvas.blend(canvas, ink, window_.y + y, window_.x + first, window_.x + x, row + first);
      }
    }
  }

 private:
  void forget(int32_t y) { spans_[2 * y] = window_.width, spans_[2 * y + 1] = 0; }

  // From the upper end to the lower one.
  void addSide(double x0, double y0, double x1, double y1, double sign) {
    if (!(y1 > 0 && y0 < window_.height)) return;
    const double slope = (x1 - x0) / (y1 - y0);
    const double above = std::max(y0, 0.0), below = std::min(y1, static_cast<double>(window_.height));
    const auto first = static_cast<int32_t>(above), end = static_cast<int32_t>(below),
               last = end < below ? end : end - 1;
    top_ = std::min(top_, first), bottom_ = std::max(bottom_, last + 1);
    double y = above, x = x0 + (above - y0) * slope;
    for (int32_t row = first; row <= last; ++row) {
      const double nextY = row < last ? row + 1 : below, nextX = x0 + (nextY - y0) * slope;
      addToRow(row, x, nextX, sign * (nextY - y));
      y = nextY, x = nextX;
    }
  }

  void addToRow(int32_t y, double x0, double x1, double height) {
    double a = std::min(x0, x1), b = std::max(x0, x1);
    if (a >= 0 && a < window_.width) {
      const auto i = static_cast<int32_t>(a);
      if (b <= i + 1) return addToPixel(y, i, height, height * ((a + b) / 2 - i));
    }
    // What lies between other sides and this one still counts.
    if (a >= window_.width) return widen(y, window_.width, window_.width);
    float* const areas = areas_ + y * (int64_t{window_.width} + 1);
    if (a < 0 || b > window_.width) {
      const double perColumn = b > a ? height / (b - a) : 0, left = std::min(b, 0.0) - std::min(a, 0.0);
      const double leftPart = b <= 0 ? height : left * perColumn;
      if (a < 0) areas[0] += static_cast<float>(leftPart), widen(y, 0, 1);
      if (b <= 0) return;
      height -= leftPart + std::max(b - window_.width, 0.0) * perColumn;
      a = std::max(a, 0.0), b = std::min(b, static_cast<double>(window_.width));
    }
    const auto i = std::min(static_cast<int32_t>(a), window_.width - 1);
    if (b <= i + 1) return addToPixel(y, i, height, height * ((a + b) / 2 - i));
    const auto last = std::min(static_cast<int32_t>(b), window_.width - 1);
    const double perColumn = height / (b - a);
    // The first column, the whole ones, and the last one.
    const auto add = [areas](int32_t column, double part, double share) {
      areas[column] += static_cast<float>(part - share);
      areas[column + 1] += static_cast<float>(share);
    };
    const double into = i + 1 - a, beyond = b - last;
    add(i, into * perColumn, into * perColumn * (1 - into / 2));
    for (int32_t k = i + 1; k < last; ++k) add(k, perColumn, perColumn / 2);
    if (last > i) add(last, beyond * perColumn, beyond * perColumn * beyond / 2);
    widen(y, i, last + 2);
  }

  // share: of the next pixel.
  void addToPixel(int32_t y, int32_t x, double height, double share) {
    float* const areas = areas_ + y * (int64_t{window_.width} + 1) + x;
    areas[0] += static_cast<float>(height - share);
    areas[1] += static_cast<float>(share);
    widen(y, x, x + 2);
  }

  // Columns of a row that have areas; those behind the last one do not count.
  void widen(int32_t y, int32_t first, int32_t end) {
    spans_[2 * y] = std::min(spans_[2 * y], first);
    spans_[2 * y + 1] = std::max(spans_[2 * y + 1], std::min(end, window_.width));
  }

  float* areas_;
  float* coverages_;
  int32_t* spans_;  // of a row, of the run: first, end
  DaxiRect window_;
  int32_t top_ = INT32_MAX, bottom_ = 0;
};

}  // namespace dax
