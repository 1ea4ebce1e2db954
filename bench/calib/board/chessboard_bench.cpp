#include "bench/calib/board/board_support.h"
#include "bench/support/operation.h"

namespace {

using bench::Image;

// An epsilon that no shift undercuts, so that every corner takes all its iterations.
bench::Task refine() {
  const Image<uint8_t> image = bench::board().image;
  const std::vector<DaxiPoint32f> from = bench::starts();
  const auto to = std::make_shared<std::vector<DaxiPoint32f>>(from.size());
  return {[=] {
    bench::require(DAXI_ChessboardCornerGetSubpix_8u_C1R(image.data(), image.size.width, image.size, from.data(),
                                                         static_cast<int32_t>(from.size()), {5, 5}, 10, to->data(),
                                                         1e-30f));
  }};
}

// One search, all memory ready.
struct Search {
  explicit Search(Image<uint8_t> picture)
      : image(std::move(picture)), points(DAXI_CHECKERBOARD_MAX_CORNERS), corners(DAXI_CHECKERBOARD_MAX_CORNERS) {}
  Image<uint8_t> image;
  std::vector<DaxiPoint32f> points;
  std::vector<CheckerboardCorner> corners;
  std::vector<uint8_t> buffer;
};

bench::Task findQuads(const Image<uint8_t>& image) {
  const auto s = std::make_shared<Search>(image);
  uint64_t bytes = 0;
  bench::require(DAXI_ChessboardCornerBufferSize_8u(image.size, {9, 6}, &bytes));
  s->buffer.resize(bytes);
  return {[s] {
    int32_t count = 0, found = 0;
    bench::require(DAXI_ChessboardCorner_8u_C1R(s->image.data(), s->image.size.width, s->image.size, {9, 6},
                                                s->points.data(), &count, &found, DAXI_CHESSBOARD_OTSU, 8,
                                                s->buffer.data()));
  }};
}

bench::Task findHessian(const Image<uint8_t>& image) {
  const auto s = std::make_shared<Search>(image);
  uint64_t bytes = 0;
  bench::require(DAXI_CheckerboardCornerHessianBufferSize_8u(image.size, &bytes));
  s->buffer.resize(bytes);
  return {[s] {
    const CheckerboardHessianParam param{DAXI_CHECKERBOARD_MEDIAN, 1, 3, 300, 0, 180};
    CheckerboardGrid grid;
    bench::require(DAXI_CheckerboardCornerHessian_8u_C1R(s->image.data(), s->image.size.width, s->image.size,
                                                         s->points.data(), s->corners.data(), s->buffer.data(), &param,
                                                         &grid));
  }};
}

bench::Task findSymmetric(const Image<uint8_t>& image) {
  const auto s = std::make_shared<Search>(image);
  uint64_t bytes = 0;
  bench::require(DAXI_CheckerboardCornerSymBufferSize_8u(image.size, &bytes));
  s->buffer.resize(bytes);
  return {[s] {
    const CheckerboardSymCfg cfg{3, 300, 15, 6, 5, DAXI_CHECKERBOARD_MEDIAN, DAXI_CHECKERBOARD_LADDER};
    CheckerboardGrid grid;
    const DaxStatus status =
        DAXI_CheckerboardCornerSym_8u_C1R(s->image.data(), s->image.size.width, s->image.size, s->points.data(),
                                          s->corners.data(), &grid, &cfg, s->buffer.data(), nullptr);
    if (status != DAXI_STS_NO_BOARD) bench::require(status);
  }};
}

constexpr size_t kPixels = bench::pixelCount(bench::kUsualBoardSize);

const bench::Own operations[] = {
    {"find by quads, 9 x 6", kPixels, [] { return findQuads(bench::board().image); }},
    {"find by quads, no board", kPixels, [] { return findQuads(bench::noBoard()); }},
    {"find by Hessian, 9 x 6", kPixels, [] { return findHessian(bench::board().image); }},
    {"find by Hessian, no board", kPixels, [] { return findHessian(bench::noBoard()); }},
    {"find by symmetry, 9 x 6", kPixels, [] { return findSymmetric(bench::board().image); }},
    {"find by symmetry, no board", kPixels, [] { return findSymmetric(bench::noBoard()); }},
    {"refine 54 corners, 11 x 11, 10 times", bench::kUsualCorners * sizeof(DaxiPoint32f), refine},
};

}  // namespace
