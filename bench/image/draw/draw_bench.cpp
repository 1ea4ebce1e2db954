#include "bench/image/draw/draw_bench.h"

#include "bench/support/operation.h"
#include "daxi/draw.h"

namespace {

using bench::Image;
using bench::kSize;

DaxiStroke pen(double width, bool antialias) {
  DaxiStroke stroke;
  bench::require(DAXI_StrokeDefault(&stroke));
  stroke.width = width, stroke.antialias = antialias;
  for (int32_t& each : stroke.color) each = 255;
  return stroke;
}

std::shared_ptr<std::vector<uint64_t>> memory(uint64_t bytes) {
  return std::make_shared<std::vector<uint64_t>>(bytes / 8 + 1);
}

template <int channels>
bench::Task lines(double width, bool antialias) {
  const Image<uint8_t> image({kSize.width * channels, kSize.height});
  const DaxiStroke stroke = pen(width, antialias);
  uint64_t bytes = 0;
  bench::require(DAXI_DrawLineBufferSize(kSize, &stroke, &bytes));
  const auto work = memory(bytes);
  const auto points = bench::drawnPoints();
  const auto draw = channels == 1 ? DAXI_DrawLine_8u_C1R : DAXI_DrawLine_8u_C3R;
  return {[=] {
            for (size_t i = 0; i < points.size(); i += 2) {
              bench::require(draw(image.data(), image.size.width, kSize, points[i].x, points[i].y, points[i + 1].x,
                                  points[i + 1].y, &stroke, work->data()));
            }
          },
          nullptr};
}

bench::Task circles() {
  const Image<uint8_t> image(kSize);
  const DaxiStroke stroke = pen(2, true);
  uint64_t bytes = 0;
  bench::require(DAXI_DrawEllipseBufferSize(kSize, 30, 30, &stroke, &bytes));
  const auto work = memory(bytes);
  const auto points = bench::drawnPoints();
  return {[=] {
            for (size_t i = 0; i < points.size(); i += 2) {
              bench::require(DAXI_DrawEllipse_8u_C1R(image.data(), kSize.width, kSize, points[i].x, points[i].y, 30, 30,
                                                     0, &stroke, work->data()));
            }
          },
          nullptr};
}

bench::Task star() {
  const Image<uint8_t> image(kSize);
  const DaxiStroke stroke = pen(0, true);
  const auto points = bench::drawnStar(40, kSize.height);
  const auto count = static_cast<int32_t>(points.size());
  uint64_t bytes = 0;
  bench::require(DAXI_DrawPolygonBufferSize(kSize, count, &bytes));
  const auto work = memory(bytes);
  return {[=] {
            bench::require(DAXI_DrawPolygon_8u_C1R(image.data(), kSize.width, kSize, points.data(), count, &count, 1,
                                                   DAXI_FILL_EVEN_ODD, &stroke, work->data()));
          },
          nullptr};
}

const bench::Own operations[] = {
    {"draw 1000 anti-aliased lines, 8u", 0, [] { return lines<1>(1, true); }},
    {"draw 1000 anti-aliased lines, 8u, three channels", 0, [] { return lines<3>(1, true); }},
    {"draw 1000 anti-aliased lines 5 wide, 8u", 0, [] { return lines<1>(5, true); }},
    {"draw 1000 lines, 8u", 0, [] { return lines<1>(1, false); }},
    {"draw 1000 circles, 8u", 0, circles},
    {"fill a star, 8u", 0, star},
};

}  // namespace
