#include "calib/board/chessboard_hessian.h"

#include <algorithm>
#include <initializer_list>

#include "calib/board/board_image.h"
#include "calib/board/corner_grid.h"
#include "calib/board/hessian_locate.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"

static_assert(sizeof(CheckerboardCorner) == 32 && sizeof(CheckerboardGrid) == 12 &&
              sizeof(CheckerboardHessianParam) == 24);

namespace dax {
namespace {

struct DetectBuffer {
  explicit DetectBuffer(DaxiSize size)
      : locate(layout.add<uint8_t>(LocateBuffer(size).layout.total())),
        sampled(layout.add<uint8_t>(pixelsOf(size) / 4)),
        corners(layout.add<CheckerboardCorner>(kMaxGridCorners)),
        grid(layout.add<uint8_t>(GridBuffer().layout.total())) {}
  BufferLayout layout;
  BufferPiece<uint8_t> locate;
  BufferPiece<uint8_t> sampled;
  BufferPiece<CheckerboardCorner> corners;
  BufferPiece<uint8_t> grid;
};

struct SortBuffer {
  explicit SortBuffer(int32_t count)
      : corners(layout.add<CheckerboardCorner>(static_cast<uint64_t>(count))),
        grid(layout.add<uint8_t>(GridBuffer().layout.total())) {}
  BufferLayout layout;
  BufferPiece<CheckerboardCorner> corners;
  BufferPiece<uint8_t> grid;
};

DaxStatus checkParam(const CheckerboardHessianParam& p) {
  DAX_REQUIRE(p.filter == DAXI_CHECKERBOARD_MEDIAN || p.filter == DAXI_CHECKERBOARD_PLAIN, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(p.subSampling >= 1 && p.subSampling <= 5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(p.minExtent >= 2 && p.minExtent <= 300, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(p.maxExtent >= 2 && p.maxExtent <= 300, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(p.minAngle >= 0 && p.maxAngle <= 180 && p.minAngle <= p.maxAngle, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

using Pointers = std::initializer_list<const void*>;

bool allGiven(Pointers pointers) {
  return std::find(pointers.begin(), pointers.end(), nullptr) == pointers.end();
}

DaxStatus checkDetect(const void* src, int32_t srcStep, DaxiSize size, Pointers outputs,
                      const CheckerboardHessianParam* param) {
  DAX_REQUIRE(src && param && allGiven(outputs), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isBoardImage(size), DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep), DAX_STS_IMAGE_STEP);
  return checkParam(*param);
}

DaxStatus checkSort(Pointers pointers, int32_t count, const CheckerboardHessianParam* param) {
  DAX_REQUIRE(param && allGiven(pointers), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1 && count <= kMaxGridCorners, DAX_STS_BAD_PARAM);
  return checkParam(*param);
}

DaxStatus sortBufferSize(int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1 && count <= kMaxGridCorners, DAX_STS_BAD_PARAM);
  return SortBuffer(count).layout.store(bytes);
}

GridLimits limitsOf(const CheckerboardHessianParam& p) {
  return {p.minExtent, p.maxExtent};
}

}  // namespace
}  // namespace dax

int32_t _DAXI_MulCheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                CheckerboardCorner* sorted, void* buffer,
                                                const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                int32_t maxBoards) {
  const dax::SortBuffer at(count);
  CheckerboardCorner* const own = at.corners.in(buffer);
  std::copy(corners, corners + count, own);
  return dax::findBoards(own, &count, dax::limitsOf(*param), nullptr, sorted, boards, maxBoards, at.grid.in(buffer));
}

int32_t _DAXI_CheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                             CheckerboardCorner* sorted, void* buffer,
                                             const CheckerboardHessianParam* param, CheckerboardGrid* result) {
  *result = {0, 0, 0};
  return _DAXI_MulCheckerboardCornerHessian_Sort(corners, count, sorted, buffer, param, result, 1);
}

int32_t _DAXI_MulCheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                  DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                  const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                  int32_t maxBoards) {
  const dax::DetectBuffer at(size);
  const int32_t factor = param->subSampling;
  const DaxiSize used{size.width / factor, size.height / factor};
  if (factor > 1) {
    DAXI_Commom_sample_img(src, srcStep, at.sampled.in(buffer), used.width, used, factor);
    src = at.sampled.in(buffer);
    srcStep = used.width;
  }
  CheckerboardCorner* const found = at.corners.in(buffer);
  void* const locating = at.locate.in(buffer);
  int32_t count = _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(src, srcStep, used, found, dax::kMaxGridCorners, locating,
                                                             param, dax::currentIsa());
  const dax::LocateBuffer located(used);
  const dax::HessianPlanes planes{located.grey.in(locating), located.smooth.in(locating), used};
  const dax::CornerProber prober{dax::probeSaddle, &planes};
  const int32_t boardCount =
      dax::findBoards(found, &count, dax::limitsOf(*param), &prober, corners, boards, maxBoards, at.grid.in(buffer));
  const auto scale = static_cast<float>(factor);
  for (int32_t i = 0; i < boardCount; ++i) {
    for (int32_t k = boards[i].first; k < boards[i].first + boards[i].columns * boards[i].rows; ++k) {
      corners[k].point = {scale * corners[k].point.x, scale * corners[k].point.y};
      corners[k].radius *= scale;
      points[k] = corners[k].point;
    }
  }
  return boardCount;
}

void _DAXI_CheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f* points,
                                            CheckerboardCorner* corners, void* buffer,
                                            const CheckerboardHessianParam* param, CheckerboardGrid* result) {
  *result = {0, 0, 0};
  _DAXI_MulCheckerboardCornerHessian_8u_C1R(src, srcStep, size, points, corners, buffer, param, result, 1);
}

DaxStatus DAXI_CheckerboardCornerHessianBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::boardBufferSize<dax::DetectBuffer>(size, bytes);
}

DaxStatus DAXI_MulCheckerboardCornerHessianBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::boardBufferSize<dax::DetectBuffer>(size, bytes);
}

DaxStatus DAXI_CheckerboardCornerHessian_LocBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::boardBufferSize<dax::LocateBuffer>(size, bytes);
}

DaxStatus DAXI_CheckerboardCornerHessian_SortBufferSize(int32_t count, uint64_t* bytes) {
  return dax::sortBufferSize(count, bytes);
}

DaxStatus DAXI_MulCheckerboardCornerHessian_SortBufferSize(int32_t count, uint64_t* bytes) {
  return dax::sortBufferSize(count, bytes);
}

DaxStatus DAXI_CheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                const CheckerboardHessianParam* param, CheckerboardGrid* result) {
  DAX_REQUIRE_OK(dax::checkDetect(src, srcStep, size, {points, corners, buffer, result}, param));
  _DAXI_CheckerboardCornerHessian_8u_C1R(src, srcStep, size, points, corners, buffer, param, result);
  return DAX_STS_OK;
}

DaxStatus DAXI_MulCheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                   DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                   const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                   int32_t maxBoards, int32_t* boardCount) {
  DAX_REQUIRE_OK(dax::checkDetect(src, srcStep, size, {points, corners, buffer, boards, boardCount}, param));
  DAX_REQUIRE(maxBoards >= 1, DAX_STS_BAD_PARAM);
  *boardCount =
      _DAXI_MulCheckerboardCornerHessian_8u_C1R(src, srcStep, size, points, corners, buffer, param, boards, maxBoards);
  return DAX_STS_OK;
}

DaxStatus DAXI_CheckerboardCornerHessian_Loc_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                    CheckerboardCorner* corners, int32_t maxCorners, int32_t* count,
                                                    void* buffer, const CheckerboardHessianParam* param) {
  DAX_REQUIRE_OK(dax::checkDetect(src, srcStep, size, {corners, count, buffer}, param));
  DAX_REQUIRE(maxCorners >= 1, DAX_STS_BAD_PARAM);
  *count = _DAXI_CheckerboardCornerHessian_Loc_8u_C1R(src, srcStep, size, corners, maxCorners, buffer, param,
                                                      dax::currentIsa());
  return DAX_STS_OK;
}

DaxStatus DAXI_CheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                              CheckerboardCorner* sorted, void* buffer,
                                              const CheckerboardHessianParam* param, CheckerboardGrid* result) {
  DAX_REQUIRE_OK(dax::checkSort({corners, sorted, buffer, result}, count, param));
  _DAXI_CheckerboardCornerHessian_Sort(corners, count, sorted, buffer, param, result);
  return DAX_STS_OK;
}

DaxStatus DAXI_MulCheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                 CheckerboardCorner* sorted, void* buffer,
                                                 const CheckerboardHessianParam* param, CheckerboardGrid* boards,
                                                 int32_t maxBoards, int32_t* boardCount) {
  DAX_REQUIRE_OK(dax::checkSort({corners, sorted, buffer, boards, boardCount}, count, param));
  DAX_REQUIRE(maxBoards >= 1, DAX_STS_BAD_PARAM);
  *boardCount = _DAXI_MulCheckerboardCornerHessian_Sort(corners, count, sorted, buffer, param, boards, maxBoards);
  return DAX_STS_OK;
}
