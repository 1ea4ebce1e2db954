// Shapes as data, so that one function draws any of them into any type of image, moved by whole pixels, with a buffer of
// exactly the size that the query tells.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "daxi/draw.h"
#include "tests/support/test_image.h"

namespace dax::test {

enum class Kind { line, polyline, closed, arrow, rect, ellipse, arc, polygon, marker };

struct Shape {
  Kind kind;
  std::vector<DaxiPoint64f> points;   // the centre of what has one
  std::vector<double> numbers = {};   // what follows the points among the arguments
  std::vector<int32_t> lengths = {};  // of a polygon's outlines
  int32_t choice = 0;                 // its rule, or the shape of a marker
};

template <class T, int kChannels>
struct Draws;
#define DAX_DRAWS(SUFFIX, T, C)                                            \
  template <>                                                              \
  struct Draws<T, C> {                                                     \
    static constexpr auto line = DAXI_DrawLine_##SUFFIX##_C##C##R;         \
    static constexpr auto polyline = DAXI_DrawPolyline_##SUFFIX##_C##C##R; \
    static constexpr auto arrow = DAXI_DrawArrow_##SUFFIX##_C##C##R;       \
    static constexpr auto rect = DAXI_DrawRect_##SUFFIX##_C##C##R;         \
    static constexpr auto ellipse = DAXI_DrawEllipse_##SUFFIX##_C##C##R;   \
    static constexpr auto arc = DAXI_DrawArc_##SUFFIX##_C##C##R;           \
    static constexpr auto polygon = DAXI_DrawPolygon_##SUFFIX##_C##C##R;   \
    static constexpr auto marker = DAXI_DrawMarker_##SUFFIX##_C##C##R;     \
  };
DAX_DRAWS(8u, uint8_t, 1)
DAX_DRAWS(8u, uint8_t, 3)
DAX_DRAWS(16u, uint16_t, 1)
DAX_DRAWS(16u, uint16_t, 3)
#undef DAX_DRAWS

inline DaxStatus bufferSizeOf(const Shape& shape, DaxiSize size, const DaxiStroke& stroke, uint64_t* bytes) {
  const std::vector<double>& n = shape.numbers;
  const auto count = static_cast<int32_t>(shape.points.size());
  switch (shape.kind) {
    case Kind::line:
      return DAXI_DrawLineBufferSize(size, &stroke, bytes);
    case Kind::polyline:
    case Kind::closed:
      return DAXI_DrawPolylineBufferSize(size, count, &stroke, bytes);
    case Kind::arrow:
      return DAXI_DrawArrowBufferSize(size, &stroke, bytes);
    case Kind::rect:
      return DAXI_DrawRectBufferSize(size, &stroke, bytes);
    case Kind::ellipse:
      return DAXI_DrawEllipseBufferSize(size, n[0], n[1], &stroke, bytes);
    case Kind::arc:
      return DAXI_DrawArcBufferSize(size, n[0], n[1], n[4], &stroke, bytes);
    case Kind::polygon:
      return DAXI_DrawPolygonBufferSize(size, count, bytes);
    case Kind::marker:
      return DAXI_DrawMarkerBufferSize(size, count, n[0], shape.choice, &stroke, bytes);
  }
  return DAX_STS_FAILURE;
}

template <class T, int kChannels>
DaxStatus drawWith(const Shape& shape, T* dst, int32_t step, DaxiSize size, const DaxiStroke& stroke, void* buffer) {
  using By = Draws<T, kChannels>;
  const std::vector<DaxiPoint64f>& p = shape.points;
  const std::vector<double>& n = shape.numbers;
  const auto count = static_cast<int32_t>(p.size());
  switch (shape.kind) {
    case Kind::line:
      return By::line(dst, step, size, p[0].x, p[0].y, p[1].x, p[1].y, &stroke, buffer);
    case Kind::polyline:
    case Kind::closed:
      return By::polyline(dst, step, size, p.data(), count, shape.kind == Kind::closed, &stroke, buffer);
    case Kind::arrow:
      return By::arrow(dst, step, size, p[0].x, p[0].y, p[1].x, p[1].y, n[0], n[1], &stroke, buffer);
    case Kind::rect:
      return By::rect(dst, step, size, p[0].x, p[0].y, n[0], n[1], n[2], &stroke, buffer);
    case Kind::ellipse:
      return By::ellipse(dst, step, size, p[0].x, p[0].y, n[0], n[1], n[2], &stroke, buffer);
    case Kind::arc:
      return By::arc(dst, step, size, p[0].x, p[0].y, n[0], n[1], n[2], n[3], n[4], &stroke, buffer);
    case Kind::polygon:
      return By::polygon(dst, step, size, p.data(), count, shape.lengths.data(),
                         static_cast<int32_t>(shape.lengths.size()), shape.choice, &stroke, buffer);
    case Kind::marker:
      return By::marker(dst, step, size, p.data(), count, n[0], n[1], shape.choice, &stroke, buffer);
  }
  return DAX_STS_FAILURE;
}

// `image` has kChannels columns a pixel; the picture's origin is at (left, top) of the shape's coordinates.
template <int kChannels = 1, class T>
void draw(TestImage<T>& image, Shape shape, const DaxiStroke& stroke, double left = 0, double top = 0) {
  for (DaxiPoint64f& p : shape.points) p.x -= left, p.y -= top;
  const DaxiSize size = {image.size().width / kChannels, image.size().height};
  uint64_t bytes = 0;
  ASSERT_EQ(bufferSizeOf(shape, size, stroke, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer((bytes + 15) / 16 * 16);
  image.remember();
  ASSERT_EQ((drawWith<T, kChannels>(shape, image.data(), image.step(), size, stroke, buffer.data())), DAX_STS_OK);
  ASSERT_TRUE(image.paddingUntouched());
}

inline DaxiStroke strokeOf(double width, int32_t level = 65535) {
  DaxiStroke stroke;
  EXPECT_EQ(DAXI_StrokeDefault(&stroke), DAX_STS_OK);
  stroke.width = width;
  for (int32_t& each : stroke.color) each = level;
  return stroke;
}

// One of each kind, with some that cross themselves.
inline std::vector<Shape> someShapes() {
  const double pi = 3.141592653589793;
  return {
      {Kind::line, {{3.3, 20.1}, {37.9, 8.4}}},
      {Kind::polyline, {{4, 5}, {30.3, 8.2}, {12.1, 25.5}, {10.2, 3.3}, {33.4, 24.9}}},
      {Kind::closed, {{8.5, 6}, {31, 4.5}, {22, 24.3}, {22, 24.3}, {9.5, 17}}},
      {Kind::arrow, {{5.2, 22.7}, {31.3, 7.1}}, {9, 0.4}},
      {Kind::rect, {{19.7, 14.2}}, {22.3, 11.8, 0.3}},
      {Kind::ellipse, {{20.4, 15.1}}, {10.3, 10.3, 0}},
      {Kind::ellipse, {{19.8, 14.6}}, {15.2, 6.1, -0.5}},
      {Kind::ellipse, {{19.8, 14.6}}, {14.2, 1.1, 0.4}},
      {Kind::arc, {{20.2, 15.3}}, {13.1, 9.2, 0.7, 1, 4}},
      {Kind::arc, {{20.2, 15.3}}, {11.1, 11.1, 0, 2, -pi}},
      {Kind::polygon, {{5, 3}, {35, 4}, {34.5, 26}, {6, 25.2}, {14, 9}, {13.5, 20}, {27, 19}, {26, 8.3}}, {}, {4, 4}},
      {Kind::polygon, {{20, 2.2}, {29.1, 27}, {5.3, 10.9}, {34.7, 10.9}, {10.9, 27}}, {}, {5}},
      {Kind::marker, {{9, 9}, {13.4, 10.2}, {28.8, 18.3}}, {11.7, 0.2}, {}, DAXI_MARKER_STAR},
      {Kind::marker, {{9, 9}, {14.4, 10.2}, {28.8, 18.3}}, {11.7, 0.2}, {}, DAXI_MARKER_TRIANGLE},
      {Kind::marker, {{9, 9}, {14.4, 10.2}, {28.8, 18.3}}, {11.7, 0.2}, {}, DAXI_MARKER_CIRCLE}};
}

// Fills where a width of 0 is allowed.
inline bool canFill(const Shape& shape) {
  switch (shape.kind) {
    case Kind::rect:
    case Kind::ellipse:
    case Kind::arc:
    case Kind::polygon:
      return true;
    default:
      return shape.kind == Kind::marker && shape.choice >= DAXI_MARKER_SQUARE;
  }
}

}  // namespace dax::test
