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
inline constexpr double kPenError = 1.0 / 32;

// Calls sink.side(from, to) for the sides of outlines whose union is what the pen covers; all run the same way around their
// inside. What it calls depends on the points alone.
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
    const DaxiPoint64f way = {dx / length, dy / length};
    if (!isDown_) {
      begin(way);
    } else if (isSmooth(way, length)) {
      // Where the sides of both segments meet.
      const double share = half_ / (1 + way_.x * way.x + way_.y * way.y);
      advance({-share * (way_.y + way.y), share * (way_.x + way.x)});
    } else {
      end();
      begin(way);
    }
    way_ = way, length_ = length, last_ = point, isDown_ = true;
  }

  // Ends the last stroke.
  void finish() {
    if (isDown_) end();
    isDown_ = false;
  }

 private:
  // Whether the corner where the sides meet stays close to the disc, and on the inner side within the segments. With the
  // turn t between them 2 / (1 + cosine) is 1 / cos(t / 2)^2, and (1 - cosine) / (1 + cosine) is tan(t / 2)^2.
  bool isSmooth(DaxiPoint64f way, double length) const {
    const double cosine = way_.x * way.x + way_.y * way.y, reach = half_ + kPenError;
    const double inner = std::min(length, length_) / 2;
    return cosine > 0.5 && half_ * half_ * 2 <= reach * reach * (1 + cosine) &&
           half_ * half_ * (1 - cosine) <= inner * inner * (1 + cosine);
  }

  void begin(DaxiPoint64f way) {
    const DaxiPoint64f n = {-half_ * way.y, half_ * way.x};
    left_ = {last_.x + n.x, last_.y + n.y}, right_ = {last_.x - n.x, last_.y - n.y};
    halfDisc({-n.x, -n.y}, right_, left_);
  }

  void end() {
    const DaxiPoint64f n = {-half_ * way_.y, half_ * way_.x};
    advance(n);
    halfDisc(n, left_, right_);
  }

  // To the last point, with n from there to the left.
  void advance(DaxiPoint64f n) {
    const DaxiPoint64f left = {last_.x + n.x, last_.y + n.y}, right = {last_.x - n.x, last_.y - n.y};
    sink_.side(left_, left);
    sink_.side(right, right_);
    left_ = left, right_ = right;
  }

  // From last_ + n by half a turn from y to x.
  void halfDisc(DaxiPoint64f n, DaxiPoint64f from, DaxiPoint64f to) {
    for (int32_t i = 1; i < chords_; ++i) {
      n = {turn_.cosine * n.x + turn_.sine * n.y, turn_.cosine * n.y - turn_.sine * n.x};
      const DaxiPoint64f next = {last_.x + n.x, last_.y + n.y};
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
  DaxiPoint64f last_{};
  DaxiPoint64f way_{};  // of the last segment
  double length_ = 0;
  DaxiPoint64f left_{}, right_{};  // ends of the sides
};

}  // namespace dax
