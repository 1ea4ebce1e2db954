#include "daxi/draw_text.h"

#include <cstring>
#include <vector>

#include "bench/image/draw/draw_text_bench.h"
#include "bench/support/image.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;
using bench::kSize;

bench::Task prepare(double height, int32_t antialias) {
  const Image<uint8_t> picture(kSize);
  DaxiTextCfg cfg;
  DaxiStroke stroke;
  bench::require(DAXI_TextDefaultCfg(&cfg));
  bench::require(DAXI_StrokeDefault(&stroke));
  cfg.height = height, stroke.width = antialias ? height / 10 : 1, stroke.antialias = antialias, stroke.color[0] = 255;
  const auto count = static_cast<int32_t>(std::strlen(bench::kText));
  uint64_t bytes = 0;
  bench::require(DAXI_DrawTextBufferSize(kSize, bench::kText, count, &cfg, &stroke, &bytes));
  const auto buffer = std::make_shared<std::vector<uint8_t>>(bytes);
  return {[=] {
    for (int32_t y = bench::kFirstLine; y < kSize.height; y += bench::kLineStep) {
      bench::require(DAXI_DrawText_8u_C1R(picture.data(), kSize.width, kSize, bench::kText, count, 10, y, &cfg, &stroke,
                                          buffer->data()));
    }
  }};
}

const bench::Own operations[] = {
    {"text of 10 pixels, anti-aliased, 8u", 0, [] { return prepare(10, 1); }},
    {"text of 20 pixels, anti-aliased, 8u", 0, [] { return prepare(20, 1); }},
    {"text of 40 pixels, anti-aliased, 8u", 0, [] { return prepare(40, 1); }},
    {"text of 20 pixels, 8u", 0, [] { return prepare(20, 0); }},
};

}  // namespace
