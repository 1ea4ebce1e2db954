#include "calib/board.h"
#include "support/operation.h"

namespace {

using bench::Image;

// Starts up to a pixel from the corners.
std::vector<DaxiPoint32f> starts() {
  std::vector<DaxiPoint32f> points = bench::board().corners;
  for (size_t i = 0; i < points.size(); ++i) {
    points[i].x += static_cast<float>(i % 5) * 0.5f - 1;
    points[i].y += static_cast<float>(i % 3) - 1;
  }
  return points;
}

// An epsilon that no shift undercuts, so that every corner takes all its iterations.
bench::Task refine() {
  const Image<uint8_t> image = bench::board().image;
  const std::vector<DaxiPoint32f> from = starts();
  const auto to = std::make_shared<std::vector<DaxiPoint32f>>(from.size());
  return {[=] {
    bench::require(DAXI_ChessboardCornerGetSubpix_8u_C1R(image.data(), image.size.width, image.size, from.data(),
                                                         static_cast<int32_t>(from.size()), {5, 5}, 10, to->data(),
                                                         1e-30f));
  }};
}

const bench::Own operations[] = {
    {"refine 54 corners, 11 x 11, 10 times", 54 * sizeof(DaxiPoint32f), refine},
};

}  // namespace
