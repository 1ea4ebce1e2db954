#include "daxi/draw.h"
#include "image/draw/draw.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                     \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0, double x1, double y1, \
                 const DaxiStroke* stroke, void* buffer) {                                              \
    return __VA_ARGS__(dst, dstStep, dstSize, x0, y0, x1, y1, stroke, buffer);                          \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                    \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points, int32_t count, int32_t closed, \
                 const DaxiStroke* stroke, void* buffer) {                                                             \
    return __VA_ARGS__(dst, dstStep, dstSize, points, count, closed, stroke, buffer);                                  \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                  \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0, double x1, double y1, double head, \
                 double spread, const DaxiStroke* stroke, void* buffer) {                                            \
    return __VA_ARGS__(dst, dstStep, dstSize, x0, y0, x1, y1, head, spread, stroke, buffer);                         \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                          \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, double x, double y, double width, double height, \
                 double angle, const DaxiStroke* stroke, void* buffer) {                                     \
    return __VA_ARGS__(dst, dstStep, dstSize, x, y, width, height, angle, stroke, buffer);                   \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                             \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, double x, double y, double radiusX, double radiusY, \
                 double angle, const DaxiStroke* stroke, void* buffer) {                                        \
    return __VA_ARGS__(dst, dstStep, dstSize, x, y, radiusX, radiusY, angle, stroke, buffer);                   \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                             \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, double x, double y, double radiusX, double radiusY, \
                 double angle, double start, double span, const DaxiStroke* stroke, void* buffer) {             \
    return __VA_ARGS__(dst, dstStep, dstSize, x, y, radiusX, radiusY, angle, start, span, stroke, buffer);      \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                                \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points, int32_t count,             \
                 const int32_t* lengths, int32_t contours, int32_t rule, const DaxiStroke* stroke, void* buffer) { \
    return __VA_ARGS__(dst, dstStep, dstSize, points, count, lengths, contours, rule, stroke, buffer);             \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                                 \
  DaxStatus NAME(T* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points, int32_t count, double size, \
                 double angle, int32_t shape, const DaxiStroke* stroke, void* buffer) {                             \
    return __VA_ARGS__(dst, dstStep, dstSize, points, count, size, angle, shape, stroke, buffer);                   \
  }

DAX_FORWARD_1(DAXI_DrawLine_8u_C1R, uint8_t, dax::onCanvas<dax::drawLine, uint8_t, 1>)
DAX_FORWARD_1(DAXI_DrawLine_8u_C3R, uint8_t, dax::onCanvas<dax::drawLine, uint8_t, 3>)
DAX_FORWARD_1(DAXI_DrawLine_16u_C1R, uint16_t, dax::onCanvas<dax::drawLine, uint16_t, 1>)
DAX_FORWARD_1(DAXI_DrawLine_16u_C3R, uint16_t, dax::onCanvas<dax::drawLine, uint16_t, 3>)
DAX_FORWARD_2(DAXI_DrawPolyline_8u_C1R, uint8_t, dax::onCanvas<dax::drawPolyline, uint8_t, 1>)
DAX_FORWARD_2(DAXI_DrawPolyline_8u_C3R, uint8_t, dax::onCanvas<dax::drawPolyline, uint8_t, 3>)
DAX_FORWARD_2(DAXI_DrawPolyline_16u_C1R, uint16_t, dax::onCanvas<dax::drawPolyline, uint16_t, 1>)
DAX_FORWARD_2(DAXI_DrawPolyline_16u_C3R, uint16_t, dax::onCanvas<dax::drawPolyline, uint16_t, 3>)
DAX_FORWARD_3(DAXI_DrawArrow_8u_C1R, uint8_t, dax::onCanvas<dax::drawArrow, uint8_t, 1>)
DAX_FORWARD_3(DAXI_DrawArrow_8u_C3R, uint8_t, dax::onCanvas<dax::drawArrow, uint8_t, 3>)
DAX_FORWARD_3(DAXI_DrawArrow_16u_C1R, uint16_t, dax::onCanvas<dax::drawArrow, uint16_t, 1>)
DAX_FORWARD_3(DAXI_DrawArrow_16u_C3R, uint16_t, dax::onCanvas<dax::drawArrow, uint16_t, 3>)
DAX_FORWARD_4(DAXI_DrawRect_8u_C1R, uint8_t, dax::onCanvas<dax::drawRect, uint8_t, 1>)
DAX_FORWARD_4(DAXI_DrawRect_8u_C3R, uint8_t, dax::onCanvas<dax::drawRect, uint8_t, 3>)
DAX_FORWARD_4(DAXI_DrawRect_16u_C1R, uint16_t, dax::onCanvas<dax::drawRect, uint16_t, 1>)
DAX_FORWARD_4(DAXI_DrawRect_16u_C3R, uint16_t, dax::onCanvas<dax::drawRect, uint16_t, 3>)
DAX_FORWARD_5(DAXI_DrawEllipse_8u_C1R, uint8_t, dax::onCanvas<dax::drawEllipse, uint8_t, 1>)
DAX_FORWARD_5(DAXI_DrawEllipse_8u_C3R, uint8_t, dax::onCanvas<dax::drawEllipse, uint8_t, 3>)
DAX_FORWARD_5(DAXI_DrawEllipse_16u_C1R, uint16_t, dax::onCanvas<dax::drawEllipse, uint16_t, 1>)
DAX_FORWARD_5(DAXI_DrawEllipse_16u_C3R, uint16_t, dax::onCanvas<dax::drawEllipse, uint16_t, 3>)
DAX_FORWARD_6(DAXI_DrawArc_8u_C1R, uint8_t, dax::onCanvas<dax::drawArc, uint8_t, 1>)
DAX_FORWARD_6(DAXI_DrawArc_8u_C3R, uint8_t, dax::onCanvas<dax::drawArc, uint8_t, 3>)
DAX_FORWARD_6(DAXI_DrawArc_16u_C1R, uint16_t, dax::onCanvas<dax::drawArc, uint16_t, 1>)
DAX_FORWARD_6(DAXI_DrawArc_16u_C3R, uint16_t, dax::onCanvas<dax::drawArc, uint16_t, 3>)
DAX_FORWARD_7(DAXI_DrawPolygon_8u_C1R, uint8_t, dax::onCanvas<dax::drawPolygon, uint8_t, 1>)
DAX_FORWARD_7(DAXI_DrawPolygon_8u_C3R, uint8_t, dax::onCanvas<dax::drawPolygon, uint8_t, 3>)
DAX_FORWARD_7(DAXI_DrawPolygon_16u_C1R, uint16_t, dax::onCanvas<dax::drawPolygon, uint16_t, 1>)
DAX_FORWARD_7(DAXI_DrawPolygon_16u_C3R, uint16_t, dax::onCanvas<dax::drawPolygon, uint16_t, 3>)
DAX_FORWARD_8(DAXI_DrawMarker_8u_C1R, uint8_t, dax::onCanvas<dax::drawMarker, uint8_t, 1>)
DAX_FORWARD_8(DAXI_DrawMarker_8u_C3R, uint8_t, dax::onCanvas<dax::drawMarker, uint8_t, 3>)
DAX_FORWARD_8(DAXI_DrawMarker_16u_C1R, uint16_t, dax::onCanvas<dax::drawMarker, uint16_t, 1>)
DAX_FORWARD_8(DAXI_DrawMarker_16u_C3R, uint16_t, dax::onCanvas<dax::drawMarker, uint16_t, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
