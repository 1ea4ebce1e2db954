/* Shapes drawn into images: lines, polylines, arrows, rectangles, ellipses, arcs, polygons with holes, markers.
 *
 * A pixel is the unit square about its centre, which is at whole numbers. With anti-aliasing it becomes
 *   dst + rint((color - dst) alpha coverage),
 * halves to even, in single precision, with the area of the square that the shape covers; straight sides are exact,
 * curves within 1/128 pixel, with the area that they have. Without, a pixel belongs to a shape whose inside has its
 * centre, left and upper sides included, and strokes up to a pixel wide are Bresenham's lines: from their ends rounded
 * to pixels, halves up, of two equally near pixels the one with the smaller coordinate, so that the order of the ends
 * does not matter. (Those of ellipses, arcs and round markers are shapes.)
 *
 * A call blends a pixel once, however often its shape crosses itself: a stroke is the union of its segments, joins and
 * caps. What lies outside of the image is cut off, wherever it is, and costs no more than the rows and pixels that are
 * seen; the picture is the same as that part of a larger one, but for the last bits of coverages. Where more than 512
 * ends or 4096 crossings of sides meet in a few pixels of one row, 64 rows of exact spans stand for the area.
 *
 * Width 0 fills rectangles, ellipses, sectors and closed markers; polygons are always filled, DAXI_DrawPolyline draws
 * their outlines. Coordinates lie within -2147483648..2147483647, angles within -1e6..1e6 radians from x to y,
 * clockwise on the screen. The buffer has malloc's alignment and the size that the query of the same name tells; a
 * failed call writes nothing. Steps count elements. Thread-safe for distinct images and buffers. The results are the
 * same bits on every machine.
 *
 * Checks, in order:
 *   dst, stroke, buffer or an array null                                                0x10000014
 *   dstSize outside 1..1048576                                                          0x1000001a
 *   dstStep below a row                                                                 0x1000001b
 *   what is drawn, in the order of the arguments, then the stroke, in that of its fields  0x10000019
 *   more sides than can be counted, where the query fails in the same way               0x10000015
 * Queries: stroke or bytes null 0x10000014; dstSize or what is drawn out of its range 0x10000019; a size beyond 64 bits 0x10000015. */
#ifndef DAXI_DRAW_H
#define DAXI_DRAW_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "stroke.h"

DAX_BEGIN_DECLS

/* What is inside where outlines overlap: where they are crossed an odd number of times on the way out, or where they
 * turn around a point at all. */
enum { DAXI_FILL_EVEN_ODD = 0, DAXI_FILL_NON_ZERO = 1 };

enum {
  DAXI_MARKER_PLUS = 0,
  DAXI_MARKER_CROSS = 1, /* diagonal */
  DAXI_MARKER_STAR = 2,  /* both */
  DAXI_MARKER_SQUARE = 3,
  DAXI_MARKER_DIAMOND = 4,
  DAXI_MARKER_TRIANGLE = 5,
  DAXI_MARKER_CIRCLE = 6
};

/* Bytes of the buffer of DAXI_DrawLine_8u_C1R and its siblings.
 *
 * Checks, in order: stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; the stroke, in the
 * order of its fields -> 0x10000019; too much -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_DrawLineBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes);

/* Checks, in order: stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; count < 1 or count
 * > 16777216 -> 0x10000019; the stroke, in the order of its fields -> 0x10000019; too much -> 0x10000015.
 * Thread-safe. */
DAX_API DaxStatus DAXI_DrawPolylineBufferSize(DaxiSize dstSize, int32_t count, const DaxiStroke* stroke,
                                              uint64_t* bytes);

/* Checks as DAXI_DrawLineBufferSize. Thread-safe. */
DAX_API DaxStatus DAXI_DrawArrowBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes);

/* Checks as DAXI_DrawLineBufferSize. Thread-safe. */
DAX_API DaxStatus DAXI_DrawRectBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes);

/* Checks, in order: stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; radiusX or radiusY
 * outside 0..2147483647 -> 0x10000019; the stroke, in the order of its fields -> 0x10000019; too much -> 0x10000015.
 * Thread-safe. */
DAX_API DaxStatus DAXI_DrawEllipseBufferSize(DaxiSize dstSize, double radiusX, double radiusY, const DaxiStroke* stroke,
                                             uint64_t* bytes);

/* Checks, in order: stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; radiusX or radiusY
 * outside 0..2147483647 -> 0x10000019; span outside -1e6..1e6 -> 0x10000019; the stroke, in the order of its fields ->
 * 0x10000019; too much -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_DrawArcBufferSize(DaxiSize dstSize, double radiusX, double radiusY, double span,
                                         const DaxiStroke* stroke, uint64_t* bytes);

/* Checks, in order: bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; count < 1 or count > 16777216
 * -> 0x10000019; too much -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_DrawPolygonBufferSize(DaxiSize dstSize, int32_t count, uint64_t* bytes);

/* Checks, in order: stroke or bytes null -> 0x10000014; dstSize outside 1..1048576 -> 0x10000019; count < 1 or count
 * > 16777216 -> 0x10000019; size outside 0..2147483647 -> 0x10000019; shape outside 0..6 -> 0x10000019; the stroke,
 * in the order of its fields -> 0x10000019; too much -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_DrawMarkerBufferSize(DaxiSize dstSize, int32_t count, double size, int32_t shape,
                                            const DaxiStroke* stroke, uint64_t* bytes);

/* From (x0, y0) to (x1, y1). A line without length is a dot: a disc or an upright square with caps, nothing without;
 * one pixel of Bresenham's.
 *
 * Checks, in order: dst, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a; dstStep below
 * a row -> 0x1000001b; x0, y0, x1 or y1 outside -2147483648..2147483647 -> 0x10000019; the stroke, in the order of its
 * fields -> 0x10000019; too much -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawLine_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0, double x1,
                                       double y1, const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawLine_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0, double x1,
                                       double y1, const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawLine_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                        double x1, double y1, const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawLine_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                        double x1, double y1, const DaxiStroke* stroke, void* buffer);

/* Through `count` points, and with closed = 1 back to the first. Points less than 1e-9 from the one before are passed
 * over.
 *
 * Checks, in order: dst, points, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a;
 * dstStep below a row -> 0x1000001b; count < 1 or count > 16777216 -> 0x10000019; a coordinate of points outside
 * -2147483648..2147483647 -> 0x10000019; closed not 0..1 -> 0x10000019; the stroke, in the order of its fields ->
 * 0x10000019; too much -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawPolyline_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                           int32_t count, int32_t closed, const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolyline_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                           int32_t count, int32_t closed, const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolyline_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            const DaxiPoint64f* points, int32_t count, int32_t closed,
                                            const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolyline_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            const DaxiPoint64f* points, int32_t count, int32_t closed,
                                            const DaxiStroke* stroke, void* buffer);

/* A line from (x0, y0) to the tip (x1, y1), and there two barbs of length `head`, each at the angle `spread` to it.
 *
 * Checks, in order: dst, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a; dstStep below
 * a row -> 0x1000001b; x0, y0, x1 or y1 outside -2147483648..2147483647 -> 0x10000019; head outside 0..2147483647 ->
 * 0x10000019; spread outside 0..1.5707963267948966 -> 0x10000019; the stroke, in the order of its fields ->
 * 0x10000019; too much -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawArrow_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                        double x1, double y1, double head, double spread, const DaxiStroke* stroke,
                                        void* buffer);
DAX_API DaxStatus DAXI_DrawArrow_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                        double x1, double y1, double head, double spread, const DaxiStroke* stroke,
                                        void* buffer);
DAX_API DaxStatus DAXI_DrawArrow_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                         double x1, double y1, double head, double spread, const DaxiStroke* stroke,
                                         void* buffer);
DAX_API DaxStatus DAXI_DrawArrow_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x0, double y0,
                                         double x1, double y1, double head, double spread, const DaxiStroke* stroke,
                                         void* buffer);

/* With its centre at (x, y) and the side `width` at the angle. Sides are lengths: the square of pixels 3..5 has its
 * centre at 4 and sides of 3.
 *
 * Checks, in order: dst, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a; dstStep below
 * a row -> 0x1000001b; x or y outside -2147483648..2147483647 -> 0x10000019; width or height outside 0..2147483647 ->
 * 0x10000019; angle outside -1e6..1e6 -> 0x10000019; the stroke, in the order of its fields -> 0x10000019; too much ->
 * 0x10000015. */
DAX_API DaxStatus DAXI_DrawRect_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                       double width, double height, double angle, const DaxiStroke* stroke,
                                       void* buffer);
DAX_API DaxStatus DAXI_DrawRect_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                       double width, double height, double angle, const DaxiStroke* stroke,
                                       void* buffer);
DAX_API DaxStatus DAXI_DrawRect_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                        double width, double height, double angle, const DaxiStroke* stroke,
                                        void* buffer);
DAX_API DaxStatus DAXI_DrawRect_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                        double width, double height, double angle, const DaxiStroke* stroke,
                                        void* buffer);

/* With its centre at (x, y) and the half axis radiusX at the angle; equal ones make a circle. The stroke lies on both
 * sides of the curve, to the same distance.
 *
 * Checks, in order: dst, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a; dstStep below
 * a row -> 0x1000001b; x or y outside -2147483648..2147483647 -> 0x10000019; radiusX or radiusY outside 0..2147483647
 * -> 0x10000019; angle outside -1e6..1e6 -> 0x10000019; the stroke, in the order of its fields -> 0x10000019; too much
 * -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawEllipse_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                          double radiusX, double radiusY, double angle, const DaxiStroke* stroke,
                                          void* buffer);
DAX_API DaxStatus DAXI_DrawEllipse_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                          double radiusX, double radiusY, double angle, const DaxiStroke* stroke,
                                          void* buffer);
DAX_API DaxStatus DAXI_DrawEllipse_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                           double radiusX, double radiusY, double angle, const DaxiStroke* stroke,
                                           void* buffer);
DAX_API DaxStatus DAXI_DrawEllipse_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                           double radiusX, double radiusY, double angle, const DaxiStroke* stroke,
                                           void* buffer);

/* Of that ellipse the part from the parameter `start` on, over `span` of either sign: of t the point radiusX cos t
 * along the half axis and radiusY sin t across. Width 0 fills the sector, to the centre. A turn or more is the whole
 * ellipse.
 *
 * Checks, in order: dst, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a; dstStep below
 * a row -> 0x1000001b; x or y outside -2147483648..2147483647 -> 0x10000019; radiusX or radiusY outside 0..2147483647
 * -> 0x10000019; angle, start or span outside -1e6..1e6 -> 0x10000019; the stroke, in the order of its fields ->
 * 0x10000019; too much -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawArc_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                      double radiusX, double radiusY, double angle, double start, double span,
                                      const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawArc_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                      double radiusX, double radiusY, double angle, double start, double span,
                                      const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawArc_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                       double radiusX, double radiusY, double angle, double start, double span,
                                       const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawArc_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, double x, double y,
                                       double radiusX, double radiusY, double angle, double start, double span,
                                       const DaxiStroke* stroke, void* buffer);

/* What `contours` outlines enclose by a fill rule: `count` points in all, lengths[i] of them in outline i, each of
 * which closes itself. Holes are outlines too, for the rule of non-zero winding in the other direction. The stroke
 * tells colour, alpha and anti-aliasing.
 *
 * Checks, in order: dst, points, lengths, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 ->
 * 0x1000001a; dstStep below a row -> 0x1000001b; count < 1 or count > 16777216 -> 0x10000019; contours < 1 or contours
 * > count -> 0x10000019; lengths below 1, or whose sum is not count, or a coordinate of points outside
 * -2147483648..2147483647 -> 0x10000019; rule outside 0..1 -> 0x10000019; the stroke, in the order of its fields ->
 * 0x10000019; too much -> 0x10000015. */
DAX_API DaxStatus DAXI_DrawPolygon_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                          int32_t count, const int32_t* lengths, int32_t contours, int32_t rule,
                                          const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolygon_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                          int32_t count, const int32_t* lengths, int32_t contours, int32_t rule,
                                          const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolygon_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                           int32_t count, const int32_t* lengths, int32_t contours, int32_t rule,
                                           const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawPolygon_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                           int32_t count, const int32_t* lengths, int32_t contours, int32_t rule,
                                           const DaxiStroke* stroke, void* buffer);

/* A marker at each of `count` points, in a square of side `size` turned by the angle. Markers that overlap are one
 * shape.
 *
 * Checks, in order: dst, points, stroke or buffer null -> 0x10000014; dstSize outside 1..1048576 -> 0x1000001a;
 * dstStep below a row -> 0x1000001b; count < 1 or count > 16777216, or a coordinate of points outside
 * -2147483648..2147483647 -> 0x10000019; size outside 0..2147483647 -> 0x10000019; angle outside -1e6..1e6 ->
 * 0x10000019; shape outside 0..6 -> 0x10000019; the stroke, in the order of its fields -> 0x10000019; too much ->
 * 0x10000015. */
DAX_API DaxStatus DAXI_DrawMarker_8u_C1R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                         int32_t count, double size, double angle, int32_t shape,
                                         const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawMarker_8u_C3R(uint8_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                         int32_t count, double size, double angle, int32_t shape,
                                         const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawMarker_16u_C1R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                          int32_t count, double size, double angle, int32_t shape,
                                          const DaxiStroke* stroke, void* buffer);
DAX_API DaxStatus DAXI_DrawMarker_16u_C3R(uint16_t* dst, int32_t dstStep, DaxiSize dstSize, const DaxiPoint64f* points,
                                          int32_t count, double size, double angle, int32_t shape,
                                          const DaxiStroke* stroke, void* buffer);

DAX_END_DECLS

#endif
