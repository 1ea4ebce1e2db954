#include "image/draw/drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "image/draw/row_coverage.h"
#include "image/draw/thin_line.h"

namespace dax {
namespace {

// A row of -1 for nothing.
int32_t rowWithin(double row, const DaxiRect& window) {
  return static_cast<int32_t>(std::clamp(row, window.y - 1.0, static_cast<double>(window.y) + window.height));
}

// The edges that reach each row, from the first row to the last.
class ActiveEdges {
 public:
  // `heads` has a place for each of the rows; the lists run in the order of the edges.
  ActiveEdges(Edge* edges, int32_t count, int32_t* heads, int32_t* active)
      : edges_(edges), heads_(heads), active_(active) {
    for (int32_t i = 0; i < count; ++i) {
      firstRow_ = std::min(firstRow_, edges[i].firstRow);
      lastRow_ = std::max(lastRow_, edges[i].lastRow);
    }
    std::fill_n(heads, lastRow_ - firstRow_ + 1, -1);
    for (int32_t i = count - 1; i >= 0; --i) {
      int32_t& head = heads[edges[i].firstRow - firstRow_];
      edges[i].next = head;
      head = i;
    }
  }

  int32_t firstRow() const { return firstRow_; }
  int32_t lastRow() const { return lastRow_; }

  // Whoever reads the edges of a row may change their order.
  int32_t enter(int32_t y) {
    int32_t kept = 0;
    for (int32_t i = 0; i < count_; ++i) {
      if (edges_[active_[i]].lastRow >= y) active_[kept++] = active_[i];
    }
    for (int32_t i = heads_[y - firstRow_]; i >= 0; i = edges_[i].next) active_[kept++] = i;
    return count_ = kept;
  }

 private:
  Edge* edges_;
  int32_t* heads_;
  int32_t* active_;
  int32_t firstRow_ = INT32_MAX, lastRow_ = INT32_MIN;
  int32_t count_ = 0;
};

}  // namespace

DrawBuffer::DrawBuffer(DaxiSize size, uint64_t edgeCount)
    : capacity(edgeCount),
      edges(layout.add<Edge>(edgeCount)),
      pieces(layout.add<Piece>(edgeCount)),
      crossings(layout.add<Crossing>(2 * edgeCount)),
      ends(layout.add<double>(2 * edgeCount + kMaxEnds)),
      heads(layout.add<int32_t>(static_cast<uint64_t>(size.height))),
      active(layout.add<int32_t>(edgeCount)),
      areas(layout.add<double>(static_cast<uint64_t>(size.width) + 1)),
      coverage(layout.add<float>(static_cast<uint64_t>(size.width))) {}

DaxStatus DrawBuffer::store(uint64_t* bytes) const {
  DAX_REQUIRE(isPossible(), DAX_STS_BUFFER_OVERFLOW);
  return layout.store(bytes);
}

Drawing::Drawing(const Canvas& canvas, const DrawBuffer& layout, void* buffer)
    : canvas_(canvas), layout_(layout), buffer_(buffer), window_{0, 0, canvas.size.width, canvas.size.height} {}

// More edges than were announced are counted, so that `paint` notices.
void Drawing::add(const Edge& edge) {
  if (edge.firstRow > edge.lastRow) return;
  if (layout_.isPossible() && count_ < layout_.capacity) layout_.edges.in(buffer_)[count_] = edge;
  ++count_;
}

void Drawing::side(DaxiPoint64f from, DaxiPoint64f to) {
  const bool isDown = from.y <= to.y;
  const DaxiPoint64f a = isDown ? from : to, b = isDown ? to : from;
  farRight_ = std::max({farRight_, a.x, b.x});
  if (std::min(a.x, b.x) >= static_cast<double>(window_.x) + window_.width - 0.5) return;
  // Rows whose squares the side enters.
  const double top = std::floor(a.y + 0.5), bottom = std::ceil(b.y + 0.5) - 1;
  const double slope = a.y < b.y ? (b.x - a.x) / (b.y - a.y) : 0;
  const int32_t winding = a.y < b.y ? (isDown ? 1 : -1) : 0;
  add({a.x, a.y, b.x, b.y, slope, std::max(rowWithin(top, window_), window_.y),
       std::min(rowWithin(bottom, window_), window_.y + window_.height - 1), winding, -1});
}

void Drawing::thinLine(DaxiPoint32s from, DaxiPoint32s to) {
  isThin_ = true;
  if (std::pair(from.y, from.x) > std::pair(to.y, to.x)) std::swap(from, to);
  farRight_ = std::max({farRight_, static_cast<double>(from.x), static_cast<double>(to.x)});
  add({static_cast<double>(from.x), static_cast<double>(from.y), static_cast<double>(to.x), static_cast<double>(to.y),
       0, std::max(rowWithin(from.y, window_), window_.y),
       std::min(rowWithin(to.y, window_), window_.y + window_.height - 1), 0, -1});
}

DaxStatus Drawing::paint(const DaxiStroke& stroke, FillRule rule) {
  DAX_REQUIRE(layout_.isPossible() && count_ <= layout_.capacity, DAX_STS_BUFFER_OVERFLOW);
  const auto count = static_cast<int32_t>(std::exchange(count_, 0));
  if (count == 0 || !(farRight_ >= window_.x - 0.5)) return DAX_STS_OK;
  Edge* const edges = layout_.edges.in(buffer_);
  int32_t* const active = layout_.active.in(buffer_);
  ActiveEdges rows(edges, count, layout_.heads.in(buffer_), active);
  const RowMemory memory = {edges,
                            layout_.pieces.in(buffer_),
                            layout_.crossings.in(buffer_),
                            layout_.ends.in(buffer_),
                            layout_.areas.in(buffer_),
                            layout_.coverage.in(buffer_)};
  const RowPaint paint = {canvas_, inkOf(stroke), window_, rule, isSimple_};
  const auto paintRow = isThin_ ? paintThinRow : stroke.antialias ? paintCoveredRow : paintRowOfCentres;
  for (int32_t y = rows.firstRow(); y <= rows.lastRow(); ++y) {
    if (const int32_t n = rows.enter(y)) paintRow(paint, memory, y, active, n);
  }
  return DAX_STS_OK;
}

}  // namespace dax
