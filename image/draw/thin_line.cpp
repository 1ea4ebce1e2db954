#include "image/draw/thin_line.h"

#include <cmath>

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

}  // namespace

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
