#include "image/draw/thin_line.h"

#include <cmath>
#include <utility>

#include "frame/numeric/round.h"

namespace dax {
namespace {

__extension__ using Int128 = __int128;

// floor((a b + c) / d) for |a| <= 2^34, 0 <= b, c <= 2^33, 0 < d <= 2^34: the quotient of doubles is off by 1 at most.
int64_t floorRatio(int64_t a, int64_t b, int64_t c, int64_t d) {
  const Int128 exact = static_cast<Int128>(a) * b + c;
  const double near = static_cast<double>(a) * static_cast<double>(b) + static_cast<double>(c);
  auto ratio = static_cast<int64_t>(std::floor(near / static_cast<double>(d)));
  while (static_cast<Int128>(ratio) * d > exact) --ratio;
  while (static_cast<Int128>(ratio + 1) * d <= exact) ++ratio;
  return ratio;
}

// floor((a b + c) / d) for one a after the other.
class SteppedRatio {
 public:
  // Each step adds `step` to a; |step| b < 2^35.
  SteppedRatio(int64_t a, int64_t b, int64_t c, int64_t d, int64_t step) : divisor_(d), value_(floorRatio(a, b, c, d)) {
    rest_ = static_cast<int64_t>(static_cast<Int128>(a) * b + c - static_cast<Int128>(value_) * d);
    const int64_t change = step * b;
    stepValue_ = change / d - (change % d < 0);
    stepRest_ = change - stepValue_ * d;
  }

  int64_t value() const { return value_; }

  void advance() {
    value_ += stepValue_;
    rest_ += stepRest_;
    if (rest_ >= divisor_) rest_ -= divisor_, ++value_;
  }

 private:
  int64_t divisor_, value_, rest_, stepValue_, stepRest_;
};

}  // namespace

DaxiPoint32s nearestPixel(DaxiPoint64f point) {
  return {roundTo<int32_t>(std::floor(point.x + 0.5)), roundTo<int32_t>(std::floor(point.y + 0.5))};
}

Run thinRun(const Edge& line, int32_t y) {
  const auto x0 = static_cast<int64_t>(line.x0), x1 = static_cast<int64_t>(line.x1);
  const auto y0 = static_cast<int64_t>(line.y0), dy = static_cast<int64_t>(line.y1) - y0;
  const int64_t dx = x1 < x0 ? x0 - x1 : x1 - x0, way = x1 < x0 ? -1 : 1, down = y - y0;
  if (dy == 0) return {x0, x1};
  if (dx < dy) {
    // x0 + ceil(s - 1/2), s = way down dx / dy.
    const int64_t x = x0 - floorRatio(-2 * way * down, dx, dy, 2 * dy);
    return {x, x};
  }
  // Step k lies in the row where (2 down - 1) dx < 2 k dy <= (2 down + 1) dx.
  const int64_t first = std::max<int64_t>(floorRatio(2 * down - 1, dx, 0, 2 * dy) + 1, 0);
  const int64_t last = std::min(floorRatio(2 * down + 1, dx, 0, 2 * dy), dx);
  return way > 0 ? Run{x0 + first, x0 + last} : Run{x0 - last, x0 - first};
}

void drawThinLine(const Canvas& canvas, const Ink& ink, DaxiPoint32s from, DaxiPoint32s to) {
  if (std::pair(from.y, from.x) > std::pair(to.y, to.x)) std::swap(from, to);
  const int64_t x0 = from.x, x1 = to.x, dy = int64_t{to.y} - from.y;
  const int64_t dx = x1 < x0 ? x0 - x1 : x1 - x0, way = x1 < x0 ? -1 : 1;
  const int32_t top = std::max(from.y, 0), bottom = std::min(to.y, canvas.size.height - 1);
  if (top > bottom) return;
  const auto blend = [&](int32_t y, int64_t first, int64_t last) {
    const int64_t begin = std::max<int64_t>(first, 0), end = std::min<int64_t>(last + 1, canvas.size.width);
    if (begin < end) canvas.blend(canvas, ink, y, static_cast<int32_t>(begin), static_cast<int32_t>(end), nullptr);
  };
  if (dy == 0) return blend(top, x0, x1);
  const int64_t down = int64_t{top} - from.y;
  if (dx < dy) {  // as thinRun
    SteppedRatio back(-2 * way * down, dx, dy, 2 * dy, -2 * way);
    for (int32_t y = top; y <= bottom; ++y, back.advance()) blend(y, x0 - back.value(), x0 - back.value());
    return;
  }
  SteppedRatio lastOf(2 * down - 1, dx, 0, 2 * dy, 2);
  for (int32_t y = top; y <= bottom; ++y) {
    const int64_t first = std::max<int64_t>(lastOf.value() + 1, 0);
    lastOf.advance();
    const int64_t last = std::min(lastOf.value(), dx);
    way > 0 ? blend(y, x0 + first, x0 + last) : blend(y, x0 - last, x0 - first);
  }
}

void paintThinRow(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count) {
  const int64_t begin = paint.window.x, end = begin + paint.window.width;
  int32_t n = 0;
  for (int32_t i = 0; i < count; ++i) {
    const Run run = thinRun(memory.edges[active[i]], y);
    const int64_t first = std::max(run.first, begin), last = std::min(run.last, end - 1);
    if (first > last) continue;
    memory.pieces[n++] = {0, 0, 0, 0, active[i], static_cast<int32_t>(first), static_cast<int32_t>(last)};
  }
  sortNearlySorted(memory.pieces, n, [](const Piece& a, const Piece& b) { return a.first < b.first; });
  for (int32_t i = 0; i < n;) {
    const int32_t first = memory.pieces[i].first;
    int32_t last = memory.pieces[i].last;
    while (++i < n && memory.pieces[i].first <= last + 1) last = std::max(last, memory.pieces[i].last);
    paint.canvas.blend(paint.canvas, paint.ink, y, first, last + 1, nullptr);
  }
}

}  // namespace dax
