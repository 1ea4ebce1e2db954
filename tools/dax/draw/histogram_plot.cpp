#include "draw/histogram_plot.h"

#include <algorithm>

#include "base/text.h"
#include "draw/drawing.h"

namespace dax::tool {
namespace {

constexpr double kPlotWidth = 820, kPlotHeight = 360, kPlotLeft = 60, kPlotRight = 20, kPlotTop = 30, kPlotBottom = 34;
constexpr double kPlotFontSize = 12;
constexpr Ink kText{0.20, 0.24, 0.28, 1}, kLine{0.72, 0.75, 0.78, 1}, kBar{0.12, 0.38, 0.55, 1};
constexpr Ink kMean{0.75, 0.22, 0.17, 1}, kMedian{0.84, 0.54, 0.06, 1};

class HistogramPlot {
 public:
  HistogramPlot(cairo_t* context, double values) : c_(context), values_(values) {}

  void bars(const std::vector<uint64_t>& counts, uint64_t highest) const {
    const double width = kWidth / static_cast<double>(counts.size());
    for (size_t i = 0; i < counts.size(); ++i) {
      const double height = kHeight * static_cast<double>(counts[i]) / static_cast<double>(highest);
      cairo_rectangle(c_, kPlotLeft + width * static_cast<double>(i), kPlotTop + kHeight - height, width, height);
    }
    setInk(c_, kBar);
    cairo_fill(c_);
  }

  void frame(double highestShare) const {
    cairo_rectangle(c_, kPlotLeft, kPlotTop, kWidth, kHeight);
    setInk(c_, kLine);
    cairo_set_line_width(c_, 1);
    cairo_stroke(c_);
    const double below = kPlotTop + kHeight + kPlotFontSize + 4;
    text(kPlotLeft, below, "0", 0.5, kText);
    text(x((values_ - 1) / 2), below, "grey value", 0.5, kText);
    text(kPlotLeft + kWidth, below, fixed(values_ - 1, 0), 1, kText);
    text(kPlotLeft - 6, kPlotTop + kPlotFontSize, fixed(100 * highestShare, 1) + " %", 1, kText);
    text(kPlotLeft - 6, kPlotTop + kHeight, "0", 1, kText);
  }

  void mark(double value, const Ink& colour) const {
    setInk(c_, colour);
    cairo_set_line_width(c_, 1.4);
    cairo_move_to(c_, x(value), kPlotTop);
    cairo_line_to(c_, x(value), kPlotTop + kHeight);
    cairo_stroke(c_);
  }

  // `anchor`: 0 begins at x, 1 ends there.
  void text(double x, double y, const std::string& words, double anchor, const Ink& colour) const {
    cairo_text_extents_t extents;
    cairo_text_extents(c_, words.c_str(), &extents);
    setInk(c_, colour);
    cairo_move_to(c_, x - anchor * extents.x_advance, y);
    cairo_show_text(c_, words.c_str());
  }

 private:
  static constexpr double kWidth = kPlotWidth - kPlotLeft - kPlotRight, kHeight = kPlotHeight - kPlotTop - kPlotBottom;

  // A value is as wide as its bar.
  double x(double value) const { return kPlotLeft + kWidth * (value + 0.5) / values_; }

  cairo_t* c_;
  double values_;
};

}  // namespace

std::string plotHistogram(const ImageStats& stats, int maxValue) {
  const Surface surface = makeSurface(static_cast<int>(kPlotWidth), static_cast<int>(kPlotHeight));
  const Context context(cairo_create(surface.get()));
  cairo_t* const c = context.get();
  setInk(c, {1, 1, 1, 1});
  cairo_paint(c);
  cairo_select_font_face(c, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(c, kPlotFontSize);
  uint64_t pixels = 0;
  for (const uint64_t count : stats.counts) pixels += count;
  const uint64_t highest = *std::max_element(stats.counts.begin(), stats.counts.end());
  const HistogramPlot plot(c, maxValue + 1.0);
  plot.bars(stats.counts, highest);
  plot.mark(stats.mean, kMean);
  plot.mark(stats.median(), kMedian);
  plot.frame(static_cast<double>(highest) / static_cast<double>(pixels));
  plot.text(kPlotLeft, kPlotTop - 10, "mean " + fixed(stats.mean, 2), 0, kMean);
  plot.text(kPlotLeft + 130, kPlotTop - 10, "median " + std::to_string(stats.median()), 0, kMedian);
  require(cairo_status(c));
  return toPng(surface);
}

}  // namespace dax::tool
