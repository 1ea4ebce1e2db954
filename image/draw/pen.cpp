#include "image/draw/pen.h"

#include <utility>

#include "image/draw/thin_line.h"

namespace dax {
namespace {

// Turns that leave a gap narrower than this have no join.
constexpr double kNoGap = 0x1p-20, kNoLength = 1e-9;

double scalarProduct(DaxiPoint64f a, DaxiPoint64f b) {
  return a.x * b.x + a.y * b.y;
}

double crossProduct(DaxiPoint64f a, DaxiPoint64f b) {
  return a.x * b.y - a.y * b.x;
}

uint64_t sumOfProducts(uint64_t a, uint64_t b, uint64_t c, uint64_t d) {
  uint64_t first, second, sum;
  const bool isTooMuch = __builtin_mul_overflow(a, b, &first) || __builtin_mul_overflow(c, d, &second) ||
                         __builtin_add_overflow(first, second, &sum);
  constexpr uint64_t kTooMuch = uint64_t{1} << 62;
  return isTooMuch ? kTooMuch : std::min(sum, kTooMuch);
}

}  // namespace

uint64_t strokeEdges(DaxiSize size, uint64_t points, uint64_t polylines, const DaxiStroke& stroke) {
  if (isThin(stroke)) return sumOfProducts(points, 1, polylines, 1);
  const double half = stroke.width / 2;
  const auto halfTurn = static_cast<uint64_t>(maxArcPoints(size, 0, chordCount(half, std::numbers::pi)));
  const uint64_t segment = 4, join = stroke.join == DAXI_JOIN_ROUND ? halfTurn + 2 : 4;
  const uint64_t caps = stroke.cap == DAXI_CAP_ROUND ? 2 * (halfTurn + 2) + 8 : 8;
  return sumOfProducts(points, segment + join, polylines, caps);
}

void addDisc(Drawing& drawing, DaxiPoint64f centre, double radius) {
  const Arc arc = {centre, {1, 0}, radius, radius, 0, 0, kTurn, chordCount(radius, kTurn)};
  DaxiPoint64f last{};
  bool isFirst = true;
  walkArc(arc, windowOf(drawing.window(), 0), [&](DaxiPoint64f p) {
    if (!isFirst) drawing.side(last, p);
    isFirst = false;
    last = p;
  });
}

Pen::Pen(Drawing& drawing, const DaxiStroke& stroke, bool mayBeThin)
    : drawing_(drawing), stroke_(stroke), half_(stroke.width / 2), isThin_(mayBeThin && isThin(stroke)) {}

void Pen::moveTo(DaxiPoint64f point) {
  finish();
  first_ = last_ = point;
  state_ = State::point;
}

void Pen::lineTo(DaxiPoint64f point) {
  const DaxiPoint64f step = point - last_;
  const double length = std::sqrt(scalarProduct(step, step));
  if (!(length > kNoLength)) return;
  const DaxiPoint64f way = {step.x / length, step.y / length};
  if (state_ == State::point) firstWay_ = way;
  if (state_ == State::line) join(last_, lastWay_, way);
  segment(last_, point, way);
  last_ = point;
  lastWay_ = way;
  state_ = State::line;
}

void Pen::close() {
  lineTo(first_);
  if (state_ == State::line) join(first_, lastWay_, firstWay_);
  if (state_ == State::point) dot();
  state_ = State::idle;
}

void Pen::finish() {
  if (state_ == State::point) dot();
  if (state_ == State::line) {
    cap(first_, -1 * firstWay_);
    cap(last_, lastWay_);
  }
  state_ = State::idle;
}

// Shapes run from x to y around their inside, so that none takes anything from another.
void Pen::segment(DaxiPoint64f from, DaxiPoint64f to, DaxiPoint64f way) {
  if (isThin_) return drawing_.thinLine(nearestPixel(from), nearestPixel(to));
  const DaxiPoint64f n = half_ * turned(way);
  drawing_.side(from - n, to - n);
  drawing_.side(to - n, to + n);
  drawing_.side(to + n, from + n);
  drawing_.side(from + n, from - n);
}

// Fills the gap on the outer side of a turn.
void Pen::join(DaxiPoint64f at, DaxiPoint64f before, DaxiPoint64f after) {
  if (isThin_) return;
  const double sine = crossProduct(before, after), cosine = scalarProduct(before, after);
  if (cosine > 0 && std::fabs(sine) * half_ < kNoGap) return;
  const double side = sine > 0 ? -half_ : half_;
  DaxiPoint64f from = side * turned(before), to = side * turned(after);
  if (sine <= 0) std::swap(from, to);
  if (stroke_.join == DAXI_JOIN_ROUND) return sector(at, from, to, std::fabs(elementary::atan2(sine, cosine)));
  drawing_.side(at, at + from);
  // A miter is 1 / cos(turn / 2) widths long, and cos^2(turn / 2) = (1 + cosine) / 2.
  if (stroke_.join == DAXI_JOIN_MITER && stroke_.miterLimit * stroke_.miterLimit * (1 + cosine) >= 2) {
    const DaxiPoint64f tip = at + 1 / (1 + cosine) * (from + to);
    drawing_.side(at + from, tip);
    drawing_.side(tip, at + to);
  } else {
    drawing_.side(at + from, at + to);
  }
  drawing_.side(at + to, at);
}

// From `at + from` over an angle towards y to `at + to`, and back through `at`.
void Pen::sector(DaxiPoint64f at, DaxiPoint64f from, DaxiPoint64f to, double angle) {
  const Arc arc = {at, 1 / half_ * from, half_, half_, 0, 0, angle, chordCount(half_, angle)};
  DaxiPoint64f last = at;
  walkArc(arc, windowOf(drawing_.window(), 0), [&](DaxiPoint64f p) {
    drawing_.side(last, p);
    last = p;
  });
  drawing_.side(last, at + to);
  drawing_.side(at + to, at);
}

void Pen::cap(DaxiPoint64f at, DaxiPoint64f outwards) {
  if (isThin_ || stroke_.cap == DAXI_CAP_BUTT) return;
  if (stroke_.cap == DAXI_CAP_SQUARE) return segment(at, at + half_ * outwards, outwards);
  const DaxiPoint64f n = half_ * turned(outwards);
  sector(at, -1 * n, n, std::numbers::pi);
}

void Pen::dot() {
  if (isThin_) return drawing_.thinLine(nearestPixel(last_), nearestPixel(last_));
  if (stroke_.cap == DAXI_CAP_ROUND) return addDisc(drawing_, last_, half_);
  if (stroke_.cap == DAXI_CAP_SQUARE) segment(last_ - DaxiPoint64f{half_, 0}, last_ + DaxiPoint64f{half_, 0}, {1, 0});
}

}  // namespace dax
