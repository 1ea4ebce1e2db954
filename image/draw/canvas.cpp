#include "image/draw/canvas.h"

#include <cstddef>

static_assert(sizeof(DaxiStroke) == 56 && offsetof(DaxiStroke, color) == 36);

namespace dax {
namespace {

bool isWithin(double v, double low, double high) {
  return v >= low && v <= high;
}

}  // namespace

DaxStatus checkCanvas(const Canvas& canvas, const DaxiStroke* stroke, bool others) {
  DAX_REQUIRE(canvas.pixels && stroke && others, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isDrawnSize(canvas.size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(canvas.size.width, canvas.step, canvas.channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

DaxStatus checkPen(const DaxiStroke& stroke, bool mayFill) {
  constexpr double kThinnest = 0x1p-10;
  DAX_REQUIRE(isWithin(stroke.width, kThinnest, 2147483647) || (stroke.width == 0 && mayFill), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(stroke.miterLimit, 1, 1000), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isWithin(stroke.alpha, 0, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.join >= DAXI_JOIN_ROUND && stroke.join <= DAXI_JOIN_BEVEL, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.cap >= DAXI_CAP_BUTT && stroke.cap <= DAXI_CAP_SQUARE, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(stroke.antialias == 0 || stroke.antialias == 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkStroke(const DaxiStroke& stroke, const Canvas& canvas, bool mayFill) {
  DAX_REQUIRE_OK(checkPen(stroke, mayFill));
  for (int32_t c = 0; c < canvas.channels; ++c) {
    DAX_REQUIRE(stroke.color[c] >= 0 && stroke.color[c] <= canvas.maxValue, DAX_STS_BAD_PARAM);
  }
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_StrokeDefault(DaxiStroke* stroke) {
  DAX_REQUIRE(stroke, DAX_STS_NULL_POINTER);
  *stroke = {1, 4, 1, DAXI_JOIN_ROUND, DAXI_CAP_BUTT, 1, {0, 0, 0}, 0};
  return DAX_STS_OK;
}
