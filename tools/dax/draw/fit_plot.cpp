#include "draw/fit_plot.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "draw/panel.h"

namespace dax::tool {
namespace {

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
    const double middle = x.low / 2 + x.high / 2, half = y.length() / height * Panel::kInner / 2;
    x = {std::min(x.low, middle - half), std::max(x.high, middle + half)};
  }
  Values along(points.x.size());
  for (size_t i = 0; i < along.size(); ++i) along[i] = model.along(fit.parameters, points.x[i], points.y[i]);
  const Interval size = rangeOf(fit.residuals);
  const double bound = std::max({std::fabs(size.low), std::fabs(size.high), 1e-300});
  const Panel data(above, height, x, y),
      residuals(above + height + gap, below, model.isFunction() ? x : Interval{-190, 190}, widened({-bound, bound}));

  std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='" + plotNumber(Panel::kWidth) + "' height='" +
                    plotNumber(above + height + gap + below + 50) + "'>\n" + kStyle +
                    "<rect width='100%' height='100%' fill='white'/>\n<text class='title' x='90' y='30'>" +
                    escapeHtml(title) + "</text>\n";
  data.axes(svg, "x", "y");
  data.dots(svg, points.x, points.y, "data");
  data.line(svg, fit.curve.x, fit.curve.y, "curve");
  residuals.axes(svg, model.isFunction() ? "x" : "direction from the centre, degrees", "residual");
  svg += "<line class='zero' x1='90' x2='880' y1='" + fixed(residuals.down(0), 1) + "' y2='" +
         fixed(residuals.down(0), 1) + "'/>\n";
  residuals.dots(svg, along, fit.residuals, "residuals");
  return svg + "</svg>\n";
}

}  // namespace dax::tool
