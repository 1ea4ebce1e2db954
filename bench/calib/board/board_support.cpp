#include "bench/calib/board/board_support.h"

#include <algorithm>
#include <cmath>

#include "tests/calib/board/board_image.h"

namespace bench {

const Board& board() {
  static const Board made = [] {
    dax::test::BoardView view;
    view.size = scaled(kUsualBoardSize);
    view.rotation = 12;
    view.tilt = 20;
    view.tiltAxis = 30;
    view.blur = 0.8;
    view.noise = 2;
    const dax::test::BoardImage rendered(view);
    Board result{Image<uint8_t>(view.size), {}};
    for (int32_t y = 0; y < view.size.height; ++y) {
      std::copy_n(rendered.image.row(y), view.size.width, result.image.data() + ptrdiff_t{y} * view.size.width);
    }
    for (const auto& p : rendered.corners) result.corners.push_back({static_cast<float>(p.x), static_cast<float>(p.y)});
    return result;
  }();
  return made;
}

std::vector<DaxiPoint32f> starts() {
  const std::vector<DaxiPoint32f>& corners = board().corners;
  std::vector<DaxiPoint32f> points(static_cast<size_t>(scaled(kUsualCorners)));
  for (size_t i = 0; i < points.size(); ++i) {
    const DaxiPoint32f& corner = corners[i % corners.size()];
    points[i] = {corner.x + static_cast<float>(i % 5) * 0.5f - 1, corner.y + static_cast<float>(i % 3) - 1};
  }
  return points;
}

Image<uint8_t> noBoard() {
  const DaxiSize size = scaled(kUsualBoardSize);
  const Image<uint8_t> mask = smoothBlobMask(size), grain = noise<uint8_t>(size);
  Image<uint8_t> image(size);
  for (size_t i = 0; i < image.pixels->size(); ++i) {
    image.data()[i] = static_cast<uint8_t>(60 + mask.data()[i] / 2 + grain.data()[i] / 16);
  }
  return image;
}

}  // namespace bench
