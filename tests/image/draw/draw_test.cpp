#include "daxi/draw.h"

#include <cmath>
#include <functional>
#include <limits>

#include "tests/image/draw/draw_oracle.h"
#include "tests/image/draw/draw_scene.h"

namespace dax::test {
namespace {

using oracle::Point;
using oracle::Points;
using Levels = TestImage<uint16_t>;

constexpr DaxiSize kSize = {41, 31};

template <class T = uint16_t>
TestImage<T> blank(DaxiSize size) {
  TestImage<T> image(size, 3);
  image.fill([](int32_t, int32_t) { return 0; });
  return image;
}

Levels drawn(const Shape& shape, const DaxiStroke& stroke, DaxiSize size = kSize, double left = 0, double top = 0) {
  Levels image = blank(size);
  draw(image, shape, stroke, left, top);
  return image;
}

double real(Random& random, double low, double high) {
  return low + (high - low) * random.below(1 << 20) / (1 << 20);
}

// Compares coverages, of every so many pixels.
void expectCoverages(const Levels& image, const std::function<double(int32_t, int32_t)>& expected, double tolerance,
                     int32_t every = 1) {
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = y % every; x < image.size().width; x += every) {
      ASSERT_NEAR(image.at(x, y) / 65535.0, expected(x, y), tolerance) << x << ", " << y;
    }
  }
}

double sumOf(const Levels& image) {
  double sum = 0;
  for (int32_t y = 0; y < image.size().height; ++y) {
    for (int32_t x = 0; x < image.size().width; ++x) sum += image.at(x, y) / 65535.0;
  }
  return sum;
}

constexpr double kLevel = 0.51 / 65535 + 2e-6;

TEST(Draw, StraightLinesCoverExactAreas) {
  Random random(7);
  for (int i = 0; i < 600; ++i) {
    Point a = {real(random, -8, 49), real(random, -8, 39)}, b = {real(random, -8, 49), real(random, -8, 39)};
    // All slopes: level, plumb, diagonal, and hardly anything of each.
    const double tiny = std::ldexp(1.0, -random.below(40));
    if (i % 6 == 1) b.y = a.y + (i % 4 < 2 ? tiny : 0);
    if (i % 6 == 2) b.x = a.x - (i % 4 < 2 ? tiny : 0);
    if (i % 6 == 3) b.y = a.y + (b.x - a.x) * (1 + (i % 4 < 2 ? tiny : 0));
    DaxiStroke stroke = strokeOf(real(random, 0.2, i % 3 == 0 ? 9 : 3));
    stroke.cap = i % 2 ? DAXI_CAP_SQUARE : DAXI_CAP_BUTT;
    if (std::hypot(b.x - a.x, b.y - a.y) < 1e-3) continue;
    const Points corners = oracle::straightStroke(a, b, stroke.width / 2, i % 2 ? stroke.width / 2 : 0);
    const Levels image = drawn({Kind::line, {a, b}}, stroke);
    ASSERT_NO_FATAL_FAILURE(expectCoverages(
        image, [&](int32_t x, int32_t y) { return oracle::exactCoverage(corners, x, y); }, kLevel))
        << a.x << ", " << a.y << " to " << b.x << ", " << b.y << " width " << stroke.width;
    ASSERT_TRUE(samePixels(image, drawn({Kind::line, {b, a}}, stroke)));
  }
}

TEST(Draw, FilledRectanglesCoverExactAreas) {
  Random random(8);
  for (int i = 0; i < 200; ++i) {
    const Point at = {real(random, 0, 41), real(random, 0, 31)};
    const double w = real(random, 0, 30), h = real(random, 0, 20), angle = i % 4 ? real(random, -4, 4) : 0;
    const Point u = {w / 2 * std::cos(angle), w / 2 * std::sin(angle)};
    const Points corners = oracle::straightStroke({at.x - u.x, at.y - u.y}, {at.x + u.x, at.y + u.y}, h / 2, 0);
    const Levels image = drawn({Kind::rect, {at}, {w, h, angle}}, strokeOf(0));
    ASSERT_NO_FATAL_FAILURE(expectCoverages(
        image, [&](int32_t x, int32_t y) { return oracle::exactCoverage(corners, x, y); }, kLevel));
  }
}

TEST(Draw, StrokesAndFillsAreWhatTheirDefinitionSays) {
  int i = 0;
  for (const Shape& shape : someShapes()) {
    for (const double width : {1.7, 5.3, 0.0}) {
      if (width == 0 && !canFill(shape)) continue;
      if (width > 2 && shape.kind == Kind::polygon) continue;
      DaxiStroke stroke = strokeOf(width);
      stroke.join = i % 3, stroke.cap = (i + i / 3) % 3, ++i;
      const oracle::Definition definition(shape, stroke);
      ASSERT_NO_FATAL_FAILURE(expectCoverages(
          drawn(shape, stroke), [&](int32_t x, int32_t y) { return definition.coverage(x, y, 16); }, 0.05, 7))
          << "kind " << static_cast<int>(shape.kind) << " width " << width << " join " << stroke.join << " cap "
          << stroke.cap << " call " << i;
    }
  }
}

// Circles and ellipses by their areas, which the chords keep.
TEST(Draw, CurvesKeepTheirAreas) {
  for (const double r : {0.3, 2.0, 17.0, 300.0}) {
    const auto side = static_cast<int32_t>(2 * r + 20);
    const Point centre = {side / 2 + 0.3, side / 2 - 0.2};
    const DaxiSize size = {side, side};
    const auto area = [&](double a, double b, double width) {
      return sumOf(drawn({Kind::ellipse, {centre}, {a, b, 0.4}}, strokeOf(width), size));
    };
    EXPECT_NEAR(area(r, r, 0), M_PI * r * r, 1e-4 * r * r + 1e-4);
    EXPECT_NEAR(area(r, r / 2, 0), M_PI * r * r / 2, 1e-4 * r * r + 1e-4);
    EXPECT_NEAR(area(r, r, 4), M_PI * ((r + 2) * (r + 2) - (r > 2 ? (r - 2) * (r - 2) : 0)),
                2e-4 * (r + 1) + 1e-4 * r * r);
  }
}

// A star that crosses itself: its middle is inside by one rule only; opposite outlines cut a hole by both.
TEST(Draw, FillRules) {
  Shape star = someShapes()[11];
  ASSERT_EQ(star.points.size(), 5u);
  EXPECT_EQ(drawn(star, strokeOf(0)).at(20, 16), 0);
  star.choice = DAXI_FILL_NON_ZERO;
  EXPECT_EQ(drawn(star, strokeOf(0)).at(20, 16), 65535);
  const Points square = {{5, 5}, {25, 5}, {25, 25}, {5, 25}}, hole = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
  for (const bool isTurned : {false, true}) {
    Shape both = {Kind::polygon, square, {}, {4, 4}, DAXI_FILL_NON_ZERO};
    both.points.insert(both.points.end(), hole.begin(), hole.end());
    if (isTurned) std::reverse(both.points.begin() + 4, both.points.end());
    EXPECT_EQ(drawn(both, strokeOf(0)).at(15, 15), isTurned ? 0 : 65535);
    both.choice = DAXI_FILL_EVEN_ODD;
    EXPECT_NEAR(sumOf(drawn(both, strokeOf(0))), 300, 1e-3);
  }
}

// A row in which very much meets is cut into rows of exact spans: more than a thousand sides at random.
TEST(Draw, ManySidesInAPixel) {
  Random random(5);
  Shape shape = {Kind::polygon, {}, {}, {1200}};
  for (int i = 0; i < 1200; ++i) shape.points.push_back({real(random, 3, 9), real(random, 3, 9)});
  const DaxiStroke stroke = strokeOf(0);
  const oracle::Definition definition(shape, stroke);
  double difference = 0;
  const Levels image = drawn(shape, stroke, {12, 12});
  for (int32_t i = 0; i < 144; ++i) {
    difference =
        std::max(difference, std::fabs(image.at(i % 12, i / 12) / 65535.0 - definition.coverage(i % 12, i / 12, 32)));
  }
  EXPECT_LT(difference, 0.05);
}

TEST(Draw, WithoutAntialiasingCentresCount) {
  int i = 0;
  for (const Shape& shape : someShapes()) {
    DaxiStroke stroke = strokeOf(canFill(shape) ? 0 : 3.3);
    stroke.antialias = 0, stroke.join = i++ % 3;
    const oracle::Definition definition(shape, stroke);
    const Levels image = drawn(shape, stroke);
    for (int32_t y = 0; y < kSize.height; ++y) {
      for (int32_t x = 0; x < kSize.width; ++x) {
        const auto inside = [&](double dx, double dy) { return definition.isInside({x + dx, y + dy}); };
        // Chords are not the curve.
        const double off = 1.0 / 64;
        if (inside(-off, 0) != inside(off, 0) || inside(0, -off) != inside(0, off)) continue;
        ASSERT_EQ(image.at(x, y), inside(0, 0) ? 65535 : 0) << x << ", " << y << " of " << static_cast<int>(shape.kind);
      }
    }
  }
  // Left and upper sides belong to a shape, the others do not: squares side by side share no pixel.
  DaxiStroke stroke = strokeOf(0);
  stroke.antialias = 0;
  const Levels square = drawn({Kind::rect, {{7, 6}}, {4, 4, 0}}, stroke);
  EXPECT_EQ(sumOf(square), 16);
  EXPECT_EQ(square.at(5, 4), 65535);
  EXPECT_EQ(square.at(9, 4), 0);
}

TEST(Draw, ThinLinesAreBresenhams) {
  Random random(9);
  constexpr DaxiSize kWindow = {40, 30};
  DaxiStroke stroke = strokeOf(1);
  stroke.antialias = 0;
  for (int i = 0; i < 400; ++i) {
    // Some reach as far as numbers do, all pass through the window.
    const int32_t reach = i % 4 == 0 ? 2147483000 : i % 4 == 1 ? 100000 : 30;
    const Point through = {real(random, 5, 35), real(random, 5, 25)};
    const double angle = real(random, 0, 7), far = real(random, 0.2, 1) * reach;
    const auto end = [&](double way) {
      const auto near = [](double v) { return static_cast<int32_t>(std::clamp(v, -2147483647.0, 2147483647.0)); };
      return DaxiPoint32s{near(through.x + way * std::cos(angle)), near(through.y + way * std::sin(angle))};
    };
    DaxiPoint32s a = end(far), b = end(-far * real(random, 0.3, 1));
    if (i % 10 == 9) b.y = a.y;
    const auto draws = [&](DaxiPoint32s from, DaxiPoint32s to) {
      return drawn({Kind::line, {{double(from.x), double(from.y)}, {double(to.x), double(to.y)}}}, stroke, kWindow);
    };
    Levels expected = blank(kWindow);
    if (std::pair(a.y, a.x) > std::pair(b.y, b.x)) std::swap(a, b);
    const int64_t dx = std::abs(int64_t{b.x} - a.x), dy = int64_t{b.y} - a.y;
    // Only the steps that can be seen.
    const int64_t start = dx >= dy ? (b.x < a.x ? a.x - int64_t{kWindow.width} : -int64_t{a.x}) : -int64_t{a.y};
    for (int64_t step = std::max<int64_t>(start - 2, 0); step <= std::min(start + 45, std::max(dx, dy)); ++step) {
      const DaxiPoint32s p = oracle::thinPixel(a, b, step);
      if (p.x >= 0 && p.y >= 0 && p.x < kWindow.width && p.y < kWindow.height) expected.at(p.x, p.y) = 65535;
    }
    ASSERT_TRUE(samePixels(draws(a, b), expected)) << a.x << ", " << a.y << " to " << b.x << ", " << b.y;
    ASSERT_TRUE(samePixels(draws(b, a), expected));
    const Points ends = {{double(a.x), double(a.y)}, {double(b.x), double(b.y)}};
    ASSERT_TRUE(samePixels(drawn({Kind::polyline, ends}, stroke, kWindow), expected));
  }
}

// What is cut off does not matter: a window of a large picture, moved by whole pixels.
TEST(Draw, AWindowShowsWhatThePictureShows) {
  for (const bool antialias : {true, false}) {
    for (const Shape& shape : someShapes()) {
      for (const double width : {1.0, 6.2}) {
        DaxiStroke stroke = strokeOf(width);
        stroke.antialias = antialias, stroke.cap = DAXI_CAP_ROUND;
        const Levels all = drawn(shape, stroke);
        for (const DaxiRect& part : {DaxiRect{11, 6, 17, 13}, {0, 10, 9, 9}, {25, 0, 16, 31}, {20, 14, 1, 1}}) {
          const Levels seen = drawn(shape, stroke, {part.width, part.height}, part.x, part.y);
          for (int32_t y = 0; y < part.height; ++y) {
            for (int32_t x = 0; x < part.width; ++x) {
              ASSERT_NEAR(seen.at(x, y), all.at(part.x + x, part.y + y), antialias ? 1 : 0)
                  << static_cast<int>(shape.kind);
            }
          }
        }
      }
    }
  }
}

// Giants of which the image sees an edge that is nearly straight, in bounded time and memory.
TEST(Draw, GiantsAreCutOff) {
  const double far = 1e9;
  const auto halves = [](const Levels& image, int32_t left, int32_t right) {
    EXPECT_NEAR(image.at(3, 15) / 65535.0, left, 1e-4);
    EXPECT_NEAR(image.at(37, 15) / 65535.0, right, 1e-4);
    EXPECT_NEAR(image.at(20, 15) / 65535.0, 0.5, 2e-2);
  };
  halves(drawn({Kind::ellipse, {{20 - far, 15}}, {far, far, 0}}, strokeOf(0)), 1, 0);
  halves(drawn({Kind::ellipse, {{20 + far, 15}}, {far, far / 3, 0}}, strokeOf(0)), 0, 1);
  halves(drawn({Kind::line, {{20 - far / 2, -far}, {20 - far / 2, far}}}, strokeOf(far)), 1, 0);
  halves(drawn({Kind::rect, {{20 + far, 15}}, {2 * far, far, 0}}, strokeOf(0)), 0, 1);
  DaxiStroke round = strokeOf(2 * far);
  round.cap = DAXI_CAP_ROUND;
  halves(drawn({Kind::polyline, {{20 - far, 15}, {-2 * far, 15}}}, round), 1, 0);
  // Nothing of it is seen, or nothing but it.
  EXPECT_EQ(sumOf(drawn({Kind::ellipse, {{0, 0}}, {far, far, 0}}, strokeOf(5))), 0);
  EXPECT_EQ(sumOf(drawn({Kind::ellipse, {{0, 0}}, {far, far, 0}}, strokeOf(0))), kSize.width * kSize.height);
  const double end = 2147483647;
  EXPECT_EQ(sumOf(drawn({Kind::line, {{-end - 1, -50}, {end, -50}}}, strokeOf(3))), 0);
  EXPECT_NEAR(sumOf(drawn({Kind::line, {{-end - 1, 14.7}, {end, 14.7}}}, strokeOf(3))), 3 * kSize.width, 1e-3);
}

// Pixels are blended once, by the formula, in every type and layout; one that a stroke crosses twice too.
template <class T, int kChannels>
void expectBlended(double alpha) {
  Random random(3);
  const int32_t highest = std::numeric_limits<T>::max();
  for (const Shape& shape : someShapes()) {
    DaxiStroke white = strokeOf(canFill(shape) ? 0 : 2.5), stroke = white;
    stroke.alpha = alpha;
    for (int32_t& each : stroke.color) each = random.below(highest + 1);
    const Levels coverage = drawn(shape, white);
    TestImage<T> image({kSize.width * kChannels, kSize.height}, 5), before(image.size());
    before.randomize(11);
    image.fill([&](int32_t x, int32_t y) { return before.at(x, y); });
    draw<kChannels>(image, shape, stroke);
    for (int32_t y = 0; y < kSize.height; ++y) {
      for (int32_t x = 0; x < kSize.width * kChannels; ++x) {
        const double d = before.at(x, y), weight = alpha * coverage.at(x / kChannels, y) / 65535.0;
        const double exact = d + (stroke.color[x % kChannels] - d) * weight;
        // A coverage is known to half a level of 65535.
        ASSERT_NEAR(image.at(x, y), exact, 0.5 + 0.51 * highest / 65535 + 0.01) << x << ", " << y;
      }
    }
  }
}

TEST(Draw, BlendsOnceInAllLayouts) {
  expectBlended<uint8_t, 1>(1);
  expectBlended<uint8_t, 3>(0.4);
  expectBlended<uint16_t, 1>(0.7);
  expectBlended<uint16_t, 3>(1);
}

TEST(Draw, ThinStrokesBlendOnce) {
  DaxiStroke stroke = strokeOf(1, 200);
  stroke.antialias = 0, stroke.alpha = 0.5;
  auto image = blank<uint8_t>(kSize);
  draw(image, {Kind::polyline, {{2, 5}, {30, 5}, {10, 5}, {10, 20}, {10, 2}}}, stroke);
  for (int32_t i = 0; i < kSize.width * kSize.height; ++i) {
    const auto level = image.at(i % kSize.width, i / kSize.width);
    ASSERT_TRUE(level == 0 || level == 100);
  }
  EXPECT_EQ(image.at(10, 5), 100);
}

TEST(Draw, DotsAndSharpTurns) {
  const auto dot = [](int32_t cap) {
    DaxiStroke stroke = strokeOf(6);
    stroke.cap = cap;
    return sumOf(drawn({Kind::polyline, {{20, 15}, {20, 15}}}, stroke));
  };
  EXPECT_EQ(dot(DAXI_CAP_BUTT), 0);
  EXPECT_NEAR(dot(DAXI_CAP_ROUND), 9 * M_PI, 1e-3);
  EXPECT_NEAR(dot(DAXI_CAP_SQUARE), 36, 1e-3);
  // Back and forth: a miter would have no end.
  DaxiStroke stroke = strokeOf(2);
  stroke.join = DAXI_JOIN_MITER, stroke.miterLimit = 1000;
  EXPECT_NEAR(sumOf(drawn({Kind::polyline, {{5, 15}, {25, 15}, {10, 15}}}, stroke)), 40, 1e-3);
}

}  // namespace
}  // namespace dax::test
