#include "image/draw/row_coverage.h"

#include <cmath>

namespace dax {
namespace {

// Ends closer than this are one; crossings of less are none.
constexpr double kTinyHeight = 0x1p-26, kTinyWidth = 0x1p-30;

int32_t columnOf(double x, const DaxiRect& window) {
  return static_cast<int32_t>(
      std::clamp(std::floor(x + 0.5), window.x - 1.0, static_cast<double>(window.x) + window.width));
}

void makePieces(const RowMemory& memory, const DaxiRect& window, int32_t y, const int32_t* active, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const Edge& edge = memory.edges[active[i]];
    const double top = std::max(edge.y0, y - 0.5), bottom = std::min(edge.y1, y + 0.5);
    const double x0 = edge.winding ? xAt(edge, top) : edge.x0, x1 = edge.winding ? xAt(edge, bottom) : edge.x1;
    const double left = std::min(x0, x1), right = std::max(x0, x1);
    memory.pieces[i] = {top, bottom, left, right, active[i], columnOf(left, window), columnOf(right, window)};
  }
}

bool isFurtherLeft(const Piece& a, const Piece& b) {
  return a.first < b.first || (a.first == b.first && a.edge < b.edge);
}

bool isBefore(const Crossing& a, const Crossing& b) {
  return a.middle < b.middle;
}

// Pieces whose columns overlap, and the pixels that they touch.
class Cluster {
 public:
  Cluster(const RowPaint& paint, const RowMemory& memory, int32_t y, const Piece* pieces, int32_t count,
          int32_t winding, int32_t first, int32_t end)
      : rule_(paint.rule),
        isSimple_(paint.isSimple),
        memory_(memory),
        y_(y),
        pieces_(pieces),
        count_(count),
        winding_(winding),
        first_(first),
        columns_(end - first) {}

  // Coverages of its pixels, in memory.coverage.
  void cover() {
    std::fill_n(memory_.areas, columns_ + 1, 0.0);
    if (isSimple_) {
      addSides();
    } else if (!coverBands()) {
      std::fill_n(memory_.areas, columns_ + 1, 0.0);
      coverSubRows();
    }
    double sum = 0;
    for (int32_t i = 0; i < columns_; ++i) {
      sum += memory_.areas[i];
      memory_.coverage[i] = static_cast<float>(std::min(std::fabs(sum), 1.0));
    }
  }

 private:
  void addSides();
  bool coverBands();
  void coverSubRows();
  int32_t findEnds();
  bool coverBand(double top, double bottom);
  bool coverCrossed(int32_t count, double height);
  void addOrdered(const Crossing* crossings, int32_t count, double height);
  void addSide(double x0, double x1, double height);

  FillRule rule_;
  bool isSimple_;
  const RowMemory& memory_;
  int32_t y_;
  const Piece* pieces_;
  int32_t count_;
  int32_t winding_;  // to the left
  int32_t first_, columns_;
  int64_t comparisons_ = 0;
};

// Outlines that do not overlap: whichever way they run, each pixel's sum is its area or the negative of it.
void Cluster::addSides() {
  memory_.areas[0] += winding_;
  for (int32_t i = 0; i < count_; ++i) {
    const Piece& piece = pieces_[i];
    const Edge& edge = memory_.edges[piece.edge];
    const double height = (piece.bottom - piece.top) * edge.winding;
    if (height != 0) addSide(xAt(edge, piece.top), xAt(edge, piece.bottom), height);
  }
}

// The heights at which bands begin and end.
int32_t Cluster::findEnds() {
  double* const ends = memory_.ends;
  int32_t count = 0;
  ends[count++] = y_ - 0.5;
  ends[count++] = y_ + 0.5;
  for (int32_t i = 0; i < count_; ++i) {
    if (pieces_[i].top > y_ - 0.5) ends[count++] = pieces_[i].top;
    if (pieces_[i].bottom < y_ + 0.5) ends[count++] = pieces_[i].bottom;
  }
  sortNearlySorted(ends, count, [](double a, double b) { return a < b; });
  int32_t kept = 1;
  for (int32_t i = 1; i < count; ++i) {
    if (ends[i] - ends[kept - 1] > kTinyHeight) ends[kept++] = ends[i];
  }
  if (kept > 1) ends[kept - 1] = y_ + 0.5;
  return kept;
}

bool Cluster::coverBands() {
  const int32_t ends = findEnds();
  if (ends > kMaxBands) return false;
  for (int32_t i = 0; i + 1 < ends; ++i) {
    if (!coverBand(memory_.ends[i], memory_.ends[i + 1])) return false;
  }
  return true;
}

bool Cluster::coverBand(double top, double bottom) {
  const double middle = (top + bottom) / 2;
  Crossing* const crossings = memory_.crossings;
  int32_t count = 0;
  for (int32_t i = 0; i < count_; ++i) {
    const Piece& piece = pieces_[i];
    if (!(piece.top < middle && middle < piece.bottom)) continue;
    const Edge& edge = memory_.edges[piece.edge];
    if (edge.winding == 0) continue;
    const double x0 = xAt(edge, std::max(top, piece.top)), x1 = xAt(edge, std::min(bottom, piece.bottom));
    crossings[count++] = {x0, x1, (x0 + x1) / 2, edge.winding};
  }
  sortNearlySorted(crossings, count, isBefore);
  for (int32_t i = 1; i < count; ++i) {
    const Crossing &a = crossings[i - 1], &b = crossings[i];
    if (a.x0 - b.x0 > kTinyWidth || a.x1 - b.x1 > kTinyWidth) return coverCrossed(count, bottom - top);
  }
  addOrdered(crossings, count, bottom - top);
  return true;
}

// A band in which edges cross: cut once more where they do. False where that is too much.
bool Cluster::coverCrossed(int32_t count, double height) {
  comparisons_ += int64_t{count} * count;
  if (comparisons_ > kMaxComparisons) return false;
  const Crossing* const all = memory_.crossings;
  double* const cuts = memory_.ends + 2 * int64_t{count_} + 2;
  int32_t n = 0;
  for (int32_t i = 0; i < count; ++i) {
    for (int32_t j = i + 1; j < count; ++j) {
      const double above = all[i].x0 - all[j].x0, below = all[i].x1 - all[j].x1;
      if (!(above > kTinyWidth || below > kTinyWidth)) continue;
      if (n == kMaxCrossings) return false;
      cuts[n++] = std::clamp(above / (above - below), 0.0, 1.0);
    }
  }
  std::sort(cuts, cuts + n);
  cuts[n] = 1;
  comparisons_ += int64_t{n} * count;
  if (comparisons_ > kMaxComparisons) return false;
  Crossing* const part = memory_.crossings + count;
  double from = 0;
  for (int32_t k = 0; k <= n; ++k) {
    const double to = cuts[k];
    if (!(to - from > kTinyHeight)) continue;
    for (int32_t i = 0; i < count; ++i) {
      const double run = all[i].x1 - all[i].x0, x0 = all[i].x0 + run * from, x1 = all[i].x0 + run * to;
      part[i] = {x0, x1, (x0 + x1) / 2, all[i].winding};
    }
    sortNearlySorted(part, count, isBefore);
    addOrdered(part, count, height * (to - from));
    from = to;
  }
  return true;
}

void Cluster::coverSubRows() {
  constexpr int32_t kSubRows = 64;
  Crossing* const crossings = memory_.crossings;
  for (int32_t k = 0; k < kSubRows; ++k) {
    const double y = y_ - 0.5 + (k + 0.5) / kSubRows;
    int32_t count = 0;
    for (int32_t i = 0; i < count_; ++i) {
      const Edge& edge = memory_.edges[pieces_[i].edge];
      if (!(edge.y0 <= y && y < edge.y1)) continue;
      const double x = xAt(edge, y);
      crossings[count++] = {x, x, x, edge.winding};
    }
    sortNearlySorted(crossings, count, isBefore);
    addOrdered(crossings, count, 1.0 / kSubRows);
  }
}

// Edges from left to right in a band.
void Cluster::addOrdered(const Crossing* crossings, int32_t count, double height) {
  int32_t winding = winding_;
  bool wasInside = isInside(rule_, winding);
  if (wasInside) memory_.areas[0] += height;
  for (int32_t i = 0; i < count; ++i) {
    winding += crossings[i].winding;
    const bool isNow = isInside(rule_, winding);
    if (isNow != wasInside) addSide(crossings[i].x0, crossings[i].x1, isNow ? height : -height);
    wasInside = isNow;
  }
}

// The area to the right of a side that goes from x0 to x1 over this height, less for sides on the right: of pixel i the
// sum of areas[0..i].
void Cluster::addSide(double x0, double x1, double height) {
  double* const areas = memory_.areas;
  double a = std::min(x0, x1) - (first_ - 0.5), b = std::max(x0, x1) - (first_ - 0.5);
  if (b <= 0) {
    areas[0] += height;
    return;
  }
  if (a >= columns_) return;
  const double perColumn = b > a ? height / (b - a) : 0;
  if (a < 0) {
    areas[0] += -a * perColumn;
    height -= -a * perColumn;
    a = 0;
  }
  if (b > columns_) {
    height -= (b - columns_) * perColumn;
    b = columns_;
  }
  const auto i = static_cast<int32_t>(a);
  if (b <= i + 1) {
    const double share = height * ((a + b) / 2 - i);
    areas[i] += height - share;
    areas[i + 1] += share;
    return;
  }
  const auto last = std::min(static_cast<int32_t>(b), columns_ - 1);
  for (int32_t k = i; k <= last; ++k) {
    const double from = std::max(a, static_cast<double>(k)), to = std::min(b, k + 1.0);
    const double part = (to - from) * perColumn, share = part * ((from + to) / 2 - k);
    areas[k] += part - share;
    areas[k + 1] += share;
  }
}

}  // namespace

void paintCoveredRow(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count) {
  const int32_t end = paint.window.x + paint.window.width;
  const Piece* const pieces = memory.pieces;
  makePieces(memory, paint.window, y, active, count);
  sortNearlySorted(memory.pieces, count, isFurtherLeft);
  int32_t winding = 0, done = paint.window.x;
  const auto fill = [&](int32_t until) {
    if (isInside(paint.rule, winding) && done < until) {
      paint.canvas.blend(paint.canvas, paint.ink, y, done, until, nullptr);
    }
    done = std::max(done, until);
  };
  for (int32_t i = 0; i < count;) {
    int32_t j = i, last = pieces[i].last, after = winding;
    for (; j < count && (j == i || pieces[j].first <= last); ++j) {
      const Edge& edge = memory.edges[pieces[j].edge];
      last = std::max(last, pieces[j].last);
      if (edge.y0 <= y && y < edge.y1) after += edge.winding;
      active[j] = pieces[j].edge;
    }
    fill(std::min(pieces[i].first, end));
    const int32_t first = std::max(pieces[i].first, paint.window.x), past = std::min(last + 1, end);
    if (first < past) {
      Cluster(paint, memory, y, pieces + i, j - i, winding, first, past).cover();
      paint.canvas.blend(paint.canvas, paint.ink, y, first, past, memory.coverage);
      done = past;
    }
    winding = after;
    i = j;
  }
  fill(end);
}

void paintRowOfCentres(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count) {
  Crossing* const crossings = memory.crossings;
  int32_t n = 0;
  for (int32_t i = 0; i < count; ++i) {
    const Edge& edge = memory.edges[active[i]];
    if (!(edge.y0 <= y && y < edge.y1)) continue;
    const double x = xAt(edge, y);
    crossings[n++] = {x, x, x, edge.winding};
  }
  sortNearlySorted(crossings, n, isBefore);
  const int32_t begin = paint.window.x, end = begin + paint.window.width;
  const auto firstFrom = [&](double x) {
    return static_cast<int32_t>(std::clamp(std::ceil(x), static_cast<double>(begin), static_cast<double>(end)));
  };
  int32_t winding = 0, from = begin;
  for (int32_t i = 0; i <= n; ++i) {
    const int32_t x = i < n ? firstFrom(crossings[i].middle) : end;
    if (isInside(paint.rule, winding) && from < x) paint.canvas.blend(paint.canvas, paint.ink, y, from, x, nullptr);
    from = x;
    if (i < n) winding += crossings[i].winding;
  }
}

}  // namespace dax
