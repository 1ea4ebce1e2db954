#include "draw/profile_plot.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/text.h"
#include "draw/drawing.h"

namespace dax::tool {
namespace {

constexpr size_t kMaxPanels = 24, kColumns = 2;
constexpr double kPanelWidth = 560, kPanelHeight = 300, kPanelLeft = 54, kPanelRight = 12, kTop = 26, kBottom = 24,
                 kGap = 22;
constexpr double kPanelFontSize = 11;
constexpr Ink kInk{0.20, 0.24, 0.28, 1}, kFrame{0.72, 0.75, 0.78, 1};
constexpr Ink kProfile{0.12, 0.38, 0.55, 1}, kResponse{0.12, 0.52, 0.29, 1}, kThreshold{0.75, 0.22, 0.17, 1};
constexpr Ink kEdge{0.84, 0.54, 0.06, 1};

struct Range {
  double low, high;
};

// Never empty, with some room at both ends.
Range rangeOf(std::span<const float> values, double atLeast) {
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  const double a = std::min<double>(*low, -atLeast), b = std::max<double>(*high, atLeast);
  const double room = std::max(0.08 * (b - a), 0.5);
  return {a - room, b + room};
}

Range profileRange(std::span<const float> values) {
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  const double room = std::max(0.08 * (double{*high} - *low), 0.5);
  return {*low - room, *high + room};
}

// A curve's frame: places from -n / 2 along the profile, values upwards.
class Axes {
 public:
  Axes(cairo_t* context, double left, double top, double width, double height, size_t n, Range values)
      : c_(context),
        left_(left),
        top_(top),
        width_(width),
        height_(height),
        n_(static_cast<double>(n)),
        values_(values) {}

  void frame(const std::string& title) const {
    cairo_rectangle(c_, left_, top_, width_, height_);
    stroke(kFrame, 1);
    text(left_ - 6, y(values_.high) + kPanelFontSize, number(values_.high), true);
    text(left_ - 6, y(values_.low), number(values_.low), true);
    text(left_ + width_, top_ - 6, title, true);
  }

  void curve(std::span<const float> values, const Ink& colour) const {
    cairo_new_path(c_);
    for (size_t i = 0; i < values.size(); ++i) {
      cairo_line_to(c_, x(static_cast<double>(i) - n_ / 2), y(values[i]));
    }
    stroke(colour, 1.4);
  }

  void level(double value, const Ink& colour, bool dashed) const {
    const double dashes[] = {4, 3};
    if (dashed) cairo_set_dash(c_, dashes, 2, 0);
    cairo_move_to(c_, left_, y(value));
    cairo_line_to(c_, left_ + width_, y(value));
    stroke(colour, 1);
    cairo_set_dash(c_, nullptr, 0, 0);
  }

  void mark(double position) const {
    cairo_move_to(c_, x(position), top_);
    cairo_line_to(c_, x(position), top_ + height_);
    stroke(kEdge, 1.2);
  }

  void places() const {
    for (const double place : {-n_ / 2, 0.0, n_ / 2 - 1}) {
      text(x(place) + 8, top_ + height_ + kPanelFontSize + 3, fixed(place, 0), true);
    }
  }

 private:
  double x(double place) const { return left_ + width_ * (place + n_ / 2) / std::max(n_ - 1, 1.0); }
  double y(double value) const { return top_ + height_ * (values_.high - value) / (values_.high - values_.low); }

  static std::string number(double value) { return fixed(value, std::fabs(value) < 10 ? 1 : 0); }

  void text(double x, double y, const std::string& words, bool endsThere) const {
    cairo_text_extents_t extents;
    cairo_text_extents(c_, words.c_str(), &extents);
    setInk(c_, kInk);
    cairo_move_to(c_, endsThere ? x - extents.x_advance : x, y);
    cairo_show_text(c_, words.c_str());
  }

  void stroke(const Ink& colour, double width) const {
    setInk(c_, colour);
    cairo_set_line_width(c_, width);
    cairo_stroke(c_);
  }

  cairo_t* c_;
  double left_, top_, width_, height_, n_;
  Range values_;
};

std::vector<double> marks(const Caliper& caliper) {
  std::vector<double> result;
  for (const FoundEdge& found : caliper.edges) result.push_back(found.edge.position);
  if (!caliper.pairs.empty()) {
    const CaliperEdgePair& best = caliper.pairs.front().pair;
    result.insert(result.end(), {best.first.position, best.second.position});
  }
  return result;
}

void drawPanel(cairo_t* c, double left, double top, const Caliper& caliper, size_t number, double threshold) {
  setInk(c, kInk);
  cairo_move_to(c, left + kPanelLeft, top + kTop - 8);
  cairo_show_text(c, (std::to_string(number) + "   " + describe(caliper.region)).c_str());
  const double width = kPanelWidth - kPanelLeft - kPanelRight;
  const double height = (kPanelHeight - kTop - kBottom - kGap) / 2;
  const size_t n = caliper.profile.size();
  const Axes profile(c, left + kPanelLeft, top + kTop, width, height, n, profileRange(caliper.profile));
  const Axes response(c, left + kPanelLeft, top + kTop + height + kGap, width, height, n,
                      rangeOf(caliper.response, threshold));
  for (const double position : marks(caliper)) {
    profile.mark(position);
    response.mark(position);
  }
  profile.curve(caliper.profile, kProfile);
  response.level(0, kFrame, false);
  response.level(threshold, kThreshold, true);
  response.level(-threshold, kThreshold, true);
  response.curve(caliper.response, kResponse);
  profile.frame("profile, grey levels");
  response.frame("response (dark to light below 0) and threshold");
  response.places();
}

}  // namespace

std::string plotProfiles(const std::vector<Caliper>& calipers, const CaliperSettings& settings) {
  const size_t panels = std::min(calipers.size(), kMaxPanels);
  const size_t columns = std::min(panels, kColumns), rows = (panels + columns - 1) / columns;
  const Surface surface = makeSurface(static_cast<int>(kPanelWidth * static_cast<double>(columns)),
                                      static_cast<int>(kPanelHeight * static_cast<double>(rows)));
  const Context context(cairo_create(surface.get()));
  cairo_t* c = context.get();
  setInk(c, {1, 1, 1, 1});
  cairo_paint(c);
  cairo_select_font_face(c, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(c, kPanelFontSize);
  for (size_t i = 0; i < panels; ++i) {
    const size_t column = i % columns, row = i / columns;
    drawPanel(c, kPanelWidth * static_cast<double>(column), kPanelHeight * static_cast<double>(row), calipers[i], i + 1,
              settings.usedThreshold());
  }
  require(cairo_status(c));
  return toPng(surface);
}

}  // namespace dax::tool
