// A round pen for many short strokes: smooth runs of a polyline are one outline, which has far fewer sides than outlines of
// every segment and join.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "daxi/point.h"
#include "frame/math.h"

namespace dax {

// How far outlines may stay from those of true discs, pixels.
inline constexpr double kPenError = 1.0 / 16;

// Calls sink.side(from, to) for the sides of outlines whose union is what the pen covers, and sink.endRun() after each
// outline; all run the same way around their inside. What it calls depends on the points alone.
template <class Sink>
class RoundPen {
 public:
  RoundPen(double width, Sink& sink) : sink_(sink), half_(width / 2) {
    // Chords of a half disc: the arrow of one is half (1 - cos(angle / 2)).
    const double quarterRoot = std::sqrt(kPenError / (2 * half_));  // sin(angle / 4)
    const double angle = quarterRoot < 0.7 ? 4 * quarterRoot : 2.8;
    chords_ = static_cast<int32_t>(std::ceil(std::numbers::pi / angle));
    turn_ = sinCosExact(std::numbers::pi / chords_);
  }

  void moveTo(DaxiPoint64f point) {
    finish();
    last_ = point;
  }

  void lineTo(DaxiPoint64f point) {
    const double dx = point.x - last_.x, dy = point.y - last_.y, length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 1e-9)) return;
    const Segment next = {last_, {dx / length, dy / length}, length};
    if (!isDown_) {
      begin(next);
    } else if (isSmooth(segment_, next)) {
      // Where the sides of both segments meet.
      const DaxiPoint64f a = segment_.way, b = next.way;
      const double share = half_ / (1 + a.x * b.x + a.y * b.y);
      advance({-share * (a.y + b.y), share * (a.x + b.x)});
    } else {
      end();
      begin(next);
      isWhole_ = false;
    }
    segment_ = next, last_ = point, isDown_ = true;
  }

  // Ends a stroke that is back at its start, without ends where it goes on smoothly.
  void close() {
    if (isDown_ && isWhole_ && isSmooth(segment_, first_)) {
      advance(leftOf(segment_));
      sink_.side(left_, firstLeft_);
      sink_.side(firstRight_, right_);
      sink_.endRun();
      isDown_ = false;
    }
    finish();
  }

  // Ends the last stroke.
  void finish() {
    if (isDown_) end();
    isDown_ = false, isWhole_ = true;
  }

 private:
  struct Segment {
    DaxiPoint64f from;
    DaxiPoint64f way;  // of length 1
    double length;
  };

  // Whether the corner where the sides meet stays close to the disc, and on the inner side within the segments. With the
  // turn t between them 2 / (1 + cosine) is 1 / cos(t / 2)^2, and (1 - cosine) / (1 + cosine) is tan(t / 2)^2.
  bool isSmooth(const Segment& a, const Segment& b) const {
    const double cosine = a.way.x * b.way.x + a.way.y * b.way.y, reach = half_ + kPenError;
    const double inner = std::min(a.length, b.length) / 2;
    return cosine > 0.5 && half_ * half_ * 2 <= reach * reach * (1 + cosine) &&
           half_ * half_ * (1 - cosine) <= inner * inner * (1 + cosine);
  }

  DaxiPoint64f leftOf(const Segment& s) const { return {-half_ * s.way.y, half_ * s.way.x}; }

  void begin(const Segment& s) {
    const DaxiPoint64f n = leftOf(s);
    first_ = s;
    firstLeft_ = left_ = {s.from.x + n.x, s.from.y + n.y};
    firstRight_ = right_ = {s.from.x - n.x, s.from.y - n.y};
  }

  void end() {
    const DaxiPoint64f n = leftOf(segment_), start = leftOf(first_);
    advance(n);
    halfDisc(last_, n, left_, right_);
    halfDisc(first_.from, {-start.x, -start.y}, firstRight_, firstLeft_);
    sink_.endRun();
  }

  // To the last point, with n from there to the left.
  void advance(DaxiPoint64f n) {
    const DaxiPoint64f left = {last_.x + n.x, last_.y + n.y}, right = {last_.x - n.x, last_.y - n.y};
    sink_.side(left_, left);
    sink_.side(right, right_);
    left_ = left, right_ = right;
  }

  // From centre + n by half a turn from y to x.
  void halfDisc(DaxiPoint64f centre, DaxiPoint64f n, DaxiPoint64f from, DaxiPoint64f to) {
    for (int32_t i = 1; i < chords_; ++i) {
      n = {turn_.cosine * n.x + turn_.sine * n.y, turn_.cosine * n.y - turn_.sine * n.x};
      const DaxiPoint64f next = {centre.x + n.x, centre.y + n.y};
      sink_.side(from, next);
      from = next;
    }
    sink_.side(from, to);
  }

  Sink& sink_;
  double half_;  // of the width
  int32_t chords_;
  SinCos turn_{};
  bool isDown_ = false;
  bool isWhole_ = true;  // the stroke is one run so far
  DaxiPoint64f last_{};
  Segment segment_{}, first_{};    // the last one, and the run's first one
  DaxiPoint64f left_{}, right_{};  // ends of the sides
  DaxiPoint64f firstLeft_{}, firstRight_{};
};

}  // namespace dax
