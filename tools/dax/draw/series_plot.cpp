#include "draw/series_plot.h"

#include "base/text.h"
#include "draw/panel.h"

namespace dax::tool {
namespace {

constexpr double kAbove = 50, kHeight = 420, kBelow = 60;

constexpr const char* kSeriesStyle =
    "<style>text { font: 13px sans-serif; fill: #333 } .axes line { stroke: #ddd } .title { font-size: 16px }\n"
    "polyline { fill: none; stroke-width: 1.6 } .s0 { fill: #1f6fb2 } .s1 { fill: #c0392b } .s2 { fill: #2c8a4b }\n"
    ".s3 { fill: #b2561f } polyline.s0 { fill: none; stroke: #1f6fb2 } polyline.s1 { fill: none; stroke: #c0392b }\n"
    "polyline.s2 { fill: none; stroke: #2c8a4b } polyline.s3 { fill: none; stroke: #b2561f }</style>\n";

}  // namespace

std::string drawSeries(const PlotTitles& titles, const std::vector<Series>& series) {
  Interval x = {0, 0}, y = {0, 0};
  for (const Series& each : series) {
    if (each.x.empty()) continue;
    x = both(x, rangeOf(each.x));
    y = both(y, rangeOf(each.y));
  }
  const Panel panel(kAbove, kHeight, widened(x), widened(y));
  std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='" + plotNumber(Panel::kWidth) + "' height='" +
                    plotNumber(kAbove + kHeight + kBelow) + "'>\n" + kSeriesStyle +
                    "<rect width='100%' height='100%' fill='white'/>\n<text class='title' x='90' y='30'>" +
                    escapeHtml(titles.plot) + "</text>\n";
  panel.axes(svg, titles.x, titles.y);
  for (size_t i = 0; i < series.size(); ++i) {
    std::string kind = "s";
    kind += std::to_string(i);
    if (series[i].hasLine) panel.line(svg, series[i].x, series[i].y, kind);
    if (series[i].hasDots) panel.dots(svg, series[i].x, series[i].y, kind);
    svg += "<text class='" + kind + "' x='" + plotNumber(Panel::kLeft + 10) + "' y='" +
           plotNumber(kAbove + 18 + 18 * static_cast<double>(i)) + "'>" + escapeHtml(series[i].name) + "</text>\n";
  }
  return svg + "</svg>\n";
}

}  // namespace dax::tool
