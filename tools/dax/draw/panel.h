// A panel of a plot: axes with ticks, dots and lines in an SVG.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dax::tool {

// A number as a plot shows it.
std::string plotNumber(double value);

struct Interval {
  double low, high;
  double length() const { return high - low; }
};

// Of numbers of which there are some.
Interval rangeOf(const std::vector<double>& values);
Interval both(const Interval& a, const Interval& b);
// With a margin; never empty.
Interval widened(const Interval& range);

class Panel {
 public:
  static constexpr double kWidth = 900, kLeft = 90, kRight = 20, kInner = kWidth - kLeft - kRight;

  Panel(double top, double height, const Interval& x, const Interval& y) : top_(top), height_(height), x_(x), y_(y) {}

  double left(double x) const { return kLeft + (x - x_.low) / x_.length() * kInner; }
  double down(double y) const { return top_ + (y_.high - y) / y_.length() * height_; }

  void axes(std::string& svg, std::string_view xTitle, std::string_view yTitle) const;
  // kind: the class of the style sheet. Of several thousand points only every k-th is drawn.
  void dots(std::string& svg, const std::vector<double>& x, const std::vector<double>& y, std::string_view kind) const;
  void line(std::string& svg, const std::vector<double>& x, const std::vector<double>& y, std::string_view kind) const;

 private:
  double top_, height_;
  Interval x_, y_;
};

}  // namespace dax::tool
