#include "draw/fit_plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "base/text.h"

namespace dax::tool {
namespace {

constexpr double kWidth = 900, kLeft = 90, kRight = 20;
constexpr size_t kMaxPoints = 5000;

std::string shortNumber(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

struct Interval {
  double low, high;
  double length() const { return high - low; }
};

Interval rangeOf(const Values& values) {
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  return {*low, *high};
}

Interval both(const Interval& a, const Interval& b) {
  return {std::min(a.low, b.low), std::max(a.high, b.high)};
}

// Range with a margin; never empty.
Interval widened(const Interval& range) {
  const double margin = range.length() > 0 ? 0.05 * range.length() : std::max(1e-3 * std::fabs(range.low), 1e-300);
  return {range.low - margin, range.high + margin};
}

// The spacing of about `count` ticks: 1, 2 or 5 times a power of ten.
double tickStep(const Interval& range, int count) {
  const double raw = range.length() / count, power = std::pow(10, std::floor(std::log10(raw)));
  return power * (raw < 1.5 * power ? 1 : raw < 3.5 * power ? 2 : raw < 7.5 * power ? 5 : 10);
}

class Panel {
 public:
  Panel(double top, double height, const Interval& x, const Interval& y) : top_(top), height_(height), x_(x), y_(y) {}

  double left(double x) const { return kLeft + (x - x_.low) / x_.length() * (kWidth - kLeft - kRight); }
  double down(double y) const { return top_ + (y_.high - y) / y_.length() * height_; }

  void axes(std::string& svg, std::string_view xTitle, std::string_view yTitle) const {
    svg += "<g class='axes'>\n";
    forEachTick(x_, 8, [&](double at) {
      segment(svg, left(at), top_, left(at), top_ + height_);
      text(svg, left(at), top_ + height_ + 16, "middle", shortNumber(at));
    });
    forEachTick(y_, height_ > 200 ? 6 : 3, [&](double at) {
      segment(svg, kLeft, down(at), kWidth - kRight, down(at));
      text(svg, kLeft - 6, down(at) + 4, "end", shortNumber(at));
    });
    text(svg, (kLeft + kWidth - kRight) / 2, top_ + height_ + 34, "middle", xTitle);
    svg += "<text transform='translate(16 " + shortNumber(top_ + height_ / 2) + ") rotate(-90)' text-anchor='middle'>" +
           escapeHtml(yTitle) + "</text>\n</g>\n";
  }

  void dots(std::string& svg, const Values& x, const Values& y, std::string_view kind) const {
    svg += "<g class='" + std::string(kind) + "'>\n";
    const size_t step = (x.size() + kMaxPoints - 1) / kMaxPoints;
    for (size_t i = 0; i < x.size(); i += step) {
      svg += "<circle cx='" + fixed(left(x[i]), 2) + "' cy='" + fixed(down(y[i]), 2) + "' r='2.5'/>\n";
    }
    svg += "</g>\n";
  }

  void line(std::string& svg, const Points& points) const {
    svg += "<polyline class='curve' points='";
    for (size_t i = 0; i < points.x.size(); ++i) {
      svg += fixed(left(points.x[i]), 2) + "," + fixed(down(points.y[i]), 2) + " ";
    }
    svg += "'/>\n";
  }

 private:
  template <class Visit>
  static void forEachTick(const Interval& range, int count, const Visit& visit) {
    const double step = tickStep(range, count);
    const double first = std::ceil(range.low / step);
    for (int k = 0; k < 4 * count && (first + k) * step <= range.high; ++k) visit((first + k) * step);
  }
  static void segment(std::string& svg, double x1, double y1, double x2, double y2) {
    svg += "<line x1='" + fixed(x1, 1) + "' y1='" + fixed(y1, 1) + "' x2='" + fixed(x2, 1) + "' y2='" + fixed(y2, 1) +
           "'/>\n";
  }
  static void text(std::string& svg, double x, double y, const char* anchor, std::string_view content) {
    svg += "<text x='" + fixed(x, 1) + "' y='" + fixed(y, 1) + "' text-anchor='" + anchor + "'>" + escapeHtml(content) +
           "</text>\n";
  }

  double top_, height_;
  Interval x_, y_;
};

constexpr const char* kStyle =
    "<style>text { font: 13px sans-serif; fill: #333 } .axes line { stroke: #ddd } .title { font-size: 16px }\n"
    ".data circle { fill: #1f6fb2; fill-opacity: .65 } .residuals circle { fill: #b2561f; fill-opacity: .65 }\n"
    ".curve { fill: none; stroke: #c0392b; stroke-width: 1.8 } .zero { stroke: #555 }</style>\n";

}  // namespace

std::string drawFit(const CurveModel& model, const Points& points, const CurveFit& fit, std::string_view title) {
  Interval x = widened(both(rangeOf(points.x), rangeOf(fit.curve.x)));
  const Interval y = widened(both(rangeOf(points.y), rangeOf(fit.curve.y)));
  const double above = 50, height = model.isFunction() ? 380 : 560, gap = 70, below = 150;
  if (!model.isFunction()) {
    // Equal scales.
    const double middle = x.low / 2 + x.high / 2, half = y.length() / height * (kWidth - kLeft - kRight) / 2;
    x = {std::min(x.low, middle - half), std::max(x.high, middle + half)};
  }
  Values along(points.x.size());
  for (size_t i = 0; i < along.size(); ++i) along[i] = model.along(fit.parameters, points.x[i], points.y[i]);
  const Interval size = rangeOf(fit.residuals);
  const double bound = std::max({std::fabs(size.low), std::fabs(size.high), 1e-300});
  const Panel data(above, height, x, y),
      residuals(above + height + gap, below, model.isFunction() ? x : Interval{-190, 190}, widened({-bound, bound}));

  std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='" + shortNumber(kWidth) + "' height='" +
                    shortNumber(above + height + gap + below + 50) + "'>\n" + kStyle +
                    "<rect width='100%' height='100%' fill='white'/>\n<text class='title' x='90' y='30'>" +
                    escapeHtml(title) + "</text>\n";
  data.axes(svg, "x", "y");
  data.dots(svg, points.x, points.y, "data");
  data.line(svg, fit.curve);
  residuals.axes(svg, model.isFunction() ? "x" : "direction from the centre, degrees", "residual");
  svg += "<line class='zero' x1='90' x2='880' y1='" + fixed(residuals.down(0), 1) + "' y2='" +
         fixed(residuals.down(0), 1) + "'/>\n";
  residuals.dots(svg, along, fit.residuals, "residuals");
  return svg + "</svg>\n";
}

}  // namespace dax::tool
