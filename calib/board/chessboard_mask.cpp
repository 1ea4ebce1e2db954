#include "calib/board/chessboard_mask.h"

#include <algorithm>

#include "daxi/chessboard.h"
#include "frame/cpu_feature.h"
#include "frame/rows.h"
#include "image/logic/logic.h"
#include "image/threshold/threshold.h"
#include "image/window/window_sums.h"

namespace dax {
namespace {

// Grey levels below the mean beyond which a pixel is dark, as documented.
constexpr uint32_t kDarker = 3;

// Rows by index; the first and last row of the image are repeated outside it.
struct ReplicatedRows {
  const uint8_t* src;
  int32_t step, height;
  const uint8_t* operator()(int64_t y) const {
    return rowAt(src, step, static_cast<int32_t>(std::clamp<int64_t>(y, 0, height - 1)));
  }
};

// Sets p where (p + 3) * area < sum. The area is a power of two.
void maskRow(const uint8_t* src, uint8_t* dst, int32_t width, const uint32_t* columns, WindowReach reach,
             int32_t areaBits) {
  const auto column = [&](int32_t x) { return columns[std::clamp(x, 0, width - 1)]; };
  const auto maskPixel = [&](int32_t x, uint32_t sum) { dst[x] = ((src[x] + kDarker) << areaBits) < sum; };
  uint32_t sum = 0;
  for (int32_t x = -reach.before; x <= reach.after; ++x) sum += column(x);
  maskPixel(0, sum);
  const int32_t first = std::min(reach.before + 1, width), end = std::max(width - reach.after, first);
  const auto slide = [&](int32_t x) {
    sum += column(x + reach.after) - column(x - 1 - reach.before);
    maskPixel(x, sum);
  };
  for (int32_t x = 1; x < first; ++x) slide(x);
  for (int32_t x = first; x < end; ++x) {
    sum += columns[x + reach.after] - columns[x - 1 - reach.before];
    maskPixel(x, sum);
  }
  for (int32_t x = end; x < width; ++x) slide(x);
}

void maskBelowMean(const uint8_t* src, int32_t srcStep, uint8_t* mask, int32_t maskStep, DaxiSize size,
                   uint32_t* columns) {
  const DaxiSize window{meanWindowSide(size.width), meanWindowSide(size.height)};
  const int32_t areaBits = __builtin_ctz(static_cast<uint32_t>(window.width * window.height));
  const WindowReach across(window.width);
  const auto move = [](uint32_t* sums, const uint8_t* enter, const uint8_t* leave, int32_t n) {
    if (enter != leave) portable::moveRow(sums, enter, leave, n);
  };
  forEachWindowRow(ReplicatedRows{src, srcStep, size.height}, WindowReach(window.height), 0, size.height, columns,
                   size.width, move, [&](int32_t y) {
                     maskRow(rowAt(src, srcStep, y), rowAt(mask, maskStep, y), size.width, columns, across, areaBits);
                   });
}

}  // namespace

int32_t meanWindowSide(int32_t side) {
  if (side <= 128) return 8;
  if (side <= 256) return 16;
  if (side <= 512) return 32;
  return side <= 1024 ? 64 : 128;
}

void maskDark(const uint8_t* src, int32_t srcStep, uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t mode,
              uint32_t* columns, int32_t isa) {
  if (mode == DAXI_CHESSBOARD_LOCAL_MEAN) {
    maskBelowMean(src, srcStep, mask, maskStep, size, columns);
  } else {
    _DAXI_AdpThresholdOtsu_8u_C1R(src, srcStep, mask, maskStep, size, isa);
    _DAXI_Not_8u_C1R(mask, maskStep, mask, maskStep, size, isa);
  }
}

}  // namespace dax
