#include "draw/panel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "base/text.h"

namespace dax::tool {
namespace {

constexpr size_t kMaxPoints = 5000;

// The spacing of about `count` ticks: 1, 2 or 5 times a power of ten.
double tickStep(const Interval& range, int count) {
  const double raw = range.length() / count, power = std::pow(10, std::floor(std::log10(raw)));
  return power * (raw < 1.5 * power ? 1 : raw < 3.5 * power ? 2 : raw < 7.5 * power ? 5 : 10);
}

template <class Visit>
void forEachTick(const Interval& range, int count, const Visit& visit) {
  const double step = tickStep(range, count);
  const double first = std::ceil(range.low / step);
  for (int k = 0; k < 4 * count && (first + k) * step <= range.high; ++k) visit((first + k) * step);
}

void addSegment(std::string& svg, double x1, double y1, double x2, double y2) {
  svg += "<line x1='" + fixed(x1, 1) + "' y1='" + fixed(y1, 1) + "' x2='" + fixed(x2, 1) + "' y2='" + fixed(y2, 1) +
         "'/>\n";
}

void addText(std::string& svg, double x, double y, const char* anchor, std::string_view content) {
  svg += "<text x='" + fixed(x, 1) + "' y='" + fixed(y, 1) + "' text-anchor='" + anchor + "'>" + escapeHtml(content) +
         "</text>\n";
}

}  // namespace

std::string plotNumber(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

Interval rangeOf(const std::vector<double>& values) {
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  return {*low, *high};
}

Interval both(const Interval& a, const Interval& b) {
  return {std::min(a.low, b.low), std::max(a.high, b.high)};
}

Interval widened(const Interval& range) {
  const double margin = range.length() > 0 ? 0.05 * range.length() : std::max(1e-3 * std::fabs(range.low), 1e-300);
  return {range.low - margin, range.high + margin};
}

void Panel::axes(std::string& svg, std::string_view xTitle, std::string_view yTitle) const {
  svg += "<g class='axes'>\n";
  forEachTick(x_, 8, [&](double at) {
    addSegment(svg, left(at), top_, left(at), top_ + height_);
    addText(svg, left(at), top_ + height_ + 16, "middle", plotNumber(at));
  });
  forEachTick(y_, height_ > 200 ? 6 : 3, [&](double at) {
    addSegment(svg, kLeft, down(at), kWidth - kRight, down(at));
    addText(svg, kLeft - 6, down(at) + 4, "end", plotNumber(at));
  });
  addText(svg, (kLeft + kWidth - kRight) / 2, top_ + height_ + 34, "middle", xTitle);
  svg += "<text transform='translate(16 " + plotNumber(top_ + height_ / 2) + ") rotate(-90)' text-anchor='middle'>" +
         escapeHtml(yTitle) + "</text>\n</g>\n";
}

void Panel::dots(std::string& svg, const std::vector<double>& x, const std::vector<double>& y,
                 std::string_view kind) const {
  svg += "<g class='" + std::string(kind) + "'>\n";
  const size_t step = (x.size() + kMaxPoints - 1) / kMaxPoints;
  for (size_t i = 0; i < x.size(); i += step) {
    svg += "<circle cx='" + fixed(left(x[i]), 2) + "' cy='" + fixed(down(y[i]), 2) + "' r='2.5'/>\n";
  }
  svg += "</g>\n";
}

void Panel::line(std::string& svg, const std::vector<double>& x, const std::vector<double>& y,
                 std::string_view kind) const {
  svg += "<polyline class='" + std::string(kind) + "' points='";
  for (size_t i = 0; i < x.size(); ++i) svg += fixed(left(x[i]), 2) + "," + fixed(down(y[i]), 2) + " ";
  svg += "'/>\n";
}

}  // namespace dax::tool
