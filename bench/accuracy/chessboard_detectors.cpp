#include "bench/accuracy/chessboard_detectors.h"

namespace accuracy {
namespace {

Found quads(const Image& image, ChessboardPatternSize pattern, int32_t mode) {
  uint64_t bytes = 0;
  DAXI_ChessboardCornerBufferSize_8u(image.size(), pattern, &bytes);
  std::vector<uint8_t> buffer(bytes);
  Found result{0, 0, std::vector<DaxiPoint32f>(static_cast<size_t>(pattern.columns * pattern.rows))};
  int32_t count = 0, found = 0;
  DAXI_ChessboardCorner_8u_C1R(image.data(), image.step(), image.size(), pattern, result.corners.data(), &count, &found,
                               mode, 8, buffer.data());
  if (found) result.columns = pattern.columns, result.rows = pattern.rows;
  return result;
}

Found hessian(const Image& image, ChessboardPatternSize) {
  uint64_t bytes = 0;
  DAXI_CheckerboardCornerHessianBufferSize_8u(image.size(), &bytes);
  std::vector<uint8_t> buffer(bytes);
  Found result{0, 0, std::vector<DaxiPoint32f>(DAXI_CHECKERBOARD_MAX_CORNERS)};
  std::vector<CheckerboardCorner> corners(DAXI_CHECKERBOARD_MAX_CORNERS);
  const CheckerboardHessianParam param{DAXI_CHECKERBOARD_MEDIAN, 1, 3, 300, 0, 180};
  CheckerboardGrid grid{};
  DAXI_CheckerboardCornerHessian_8u_C1R(image.data(), image.step(), image.size(), result.corners.data(), corners.data(),
                                        buffer.data(), &param, &grid);
  result.columns = grid.columns, result.rows = grid.rows;
  result.corners.resize(static_cast<size_t>(grid.columns * grid.rows));
  return result;
}

Found symmetry(const Image& image, ChessboardPatternSize) {
  uint64_t bytes = 0;
  DAXI_CheckerboardCornerSymBufferSize_8u(image.size(), &bytes);
  std::vector<uint8_t> buffer(bytes);
  Found result{0, 0, std::vector<DaxiPoint32f>(DAXI_CHECKERBOARD_MAX_CORNERS)};
  std::vector<CheckerboardCorner> corners(DAXI_CHECKERBOARD_MAX_CORNERS);
  const CheckerboardSymCfg cfg{3, 300, 15, 6, 5, DAXI_CHECKERBOARD_MEDIAN, DAXI_CHECKERBOARD_LADDER};
  CheckerboardGrid grid{};
  DAXI_CheckerboardCornerSym_8u_C1R(image.data(), image.step(), image.size(), result.corners.data(), corners.data(),
                                    &grid, &cfg, buffer.data(), nullptr);
  result.columns = grid.columns, result.rows = grid.rows;
  result.corners.resize(static_cast<size_t>(grid.columns * grid.rows));
  return result;
}

}  // namespace

const std::vector<Detector>& detectors() {
  static const std::vector<Detector> all = {
      {"quads, Otsu", [](const Image& i, ChessboardPatternSize p) { return quads(i, p, DAXI_CHESSBOARD_OTSU); }, true},
      {"quads, local mean",
       [](const Image& i, ChessboardPatternSize p) { return quads(i, p, DAXI_CHESSBOARD_LOCAL_MEAN); }, true},
      {"Hessian", hessian, false},
      {"symmetry", symmetry, false},
  };
  return all;
}

}  // namespace accuracy
