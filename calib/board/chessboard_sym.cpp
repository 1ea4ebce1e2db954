#include "calib/board/chessboard_sym.h"

#include "calib/board/board_image.h"
#include "calib/board/corner_grid.h"
#include "frame/check.h"
#include "frame/cpu_feature.h"

static_assert(sizeof(CheckerboardSymCfg) == 28);

namespace dax {
namespace {

constexpr int32_t kMinBoardCorners = 4;  // of a board

bool isWithin(uint32_t v, uint32_t low, uint32_t high) {
  return v >= low && v <= high;
}

DaxStatus check(const SymmetryCall& call, const BoardOutputs& to, bool masked) {
  DAX_REQUIRE(call.src && (!masked || call.mask) && call.cfg && call.buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(to.points && to.corners && to.boards && to.boardCount, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isBoardImage(call.size), DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(rowFits(call.size.width, call.srcStep), DAX_STS_IMAGE_STEP);
  DAX_REQUIRE(!masked || rowFits(call.size.width, call.maskStep), DAX_STS_IMAGE_STEP);
  DAX_REQUIRE_OK(DAXI_CheckerboardCornerSym_check_cfg(call.cfg));
  DAX_REQUIRE(to.maxBoards >= 1, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

using Sort = void (*)(const SymmetryCall*, int32_t, const BoardOutputs*);

DaxStatus detect(const SymmetryCall& call, const BoardOutputs& to, Sort sort) {
  prefilter(call.src, call.srcStep, SymmetryBuffer(call.size).grey.in(call.buffer), call.size,
            static_cast<int32_t>(call.cfg->filter), currentIsa());
  int32_t count = 0;
  *to.boardCount = 0;
  DAX_REQUIRE_OK(_DAXI_CheckerboardLocSym_8u_C1R_mt(&call, &count));
  sort(&call, count, &to);
  return DAX_STS_OK;
}

// The forms that return one board, and those that return all.
DaxStatus findOne(SymmetryCall call, DaxiPoint32f* points, CheckerboardCorner* corners, CheckerboardGrid* result,
                  bool masked) {
  int32_t count = 0;
  const BoardOutputs to{points, corners, result, 1, &count};
  DAX_REQUIRE_OK(check(call, to, masked));
  *result = {0, 0, 0};
  DAX_REQUIRE_OK((masked ? _DAXI_CheckerboardCornerSym_8u_C1RM : _DAXI_CheckerboardCornerSym_8u_C1R)(&call, &to));
  DAX_REQUIRE(result->columns * result->rows >= kMinBoardCorners, DAXI_STS_NO_BOARD);
  return DAX_STS_OK;
}

DaxStatus findAll(SymmetryCall call, const BoardOutputs& to, bool masked) {
  DAX_REQUIRE_OK(check(call, to, masked));
  DAX_REQUIRE_OK((masked ? _DAXI_CheckerboardCornerSymMul_8u_C1RM : _DAXI_CheckerboardCornerSymMul_8u_C1R)(&call, &to));
  DAX_REQUIRE(*to.boardCount > 0, DAXI_STS_NO_BOARD);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_CheckerboardCornerSym_check_cfg(const CheckerboardSymCfg* cfg) {
  DAX_REQUIRE(dax::isWithin(cfg->minExtent, 2, 300), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->maxExtent, 2, 300), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->contrast, 1, 255), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->distance, 3, 100), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->lastRadius, 3, 100), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->filter, 1, 2), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isWithin(cfg->scales, 1, 2), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

void _DAXI_CheckerboardCornerSortMul_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to) {
  const dax::SymmetryBuffer at(call->size);
  const dax::CornerProber prober{dax::probeSymmetric, call};
  const dax::GridLimits limits{static_cast<int32_t>(call->cfg->minExtent), static_cast<int32_t>(call->cfg->maxExtent)};
  *to->boardCount = dax::findBoards(at.corners.in(call->buffer), &count, limits, &prober, to->corners, to->boards,
                                    to->maxBoards, at.grid.in(call->buffer));
  int32_t total = 0;
  for (int32_t i = 0; i < *to->boardCount; ++i) total += to->boards[i].columns * to->boards[i].rows;
  for (int32_t i = 0; i < total; ++i) to->points[i] = to->corners[i].point;
}

void _DAXI_CheckerboardCornerSort_8u_C1R(const dax::SymmetryCall* call, int32_t count, const dax::BoardOutputs* to) {
  dax::BoardOutputs one = *to;
  one.maxBoards = 1;
  _DAXI_CheckerboardCornerSortMul_8u_C1R(call, count, &one);
}

DaxStatus _DAXI_CheckerboardCornerSym_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to) {
  return dax::detect(*call, *to, _DAXI_CheckerboardCornerSort_8u_C1R);
}

DaxStatus _DAXI_CheckerboardCornerSym_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to) {
  dax::SymmetryCall all = *call;
  all.mask = nullptr;
  return _DAXI_CheckerboardCornerSym_8u_C1RM(&all, to);
}

DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1RM(const dax::SymmetryCall* call, const dax::BoardOutputs* to) {
  return dax::detect(*call, *to, _DAXI_CheckerboardCornerSortMul_8u_C1R);
}

DaxStatus _DAXI_CheckerboardCornerSymMul_8u_C1R(const dax::SymmetryCall* call, const dax::BoardOutputs* to) {
  dax::SymmetryCall all = *call;
  all.mask = nullptr;
  return _DAXI_CheckerboardCornerSymMul_8u_C1RM(&all, to);
}

DaxStatus DAXI_CheckerboardCornerSymBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::boardBufferSize<dax::SymmetryBuffer>(size, bytes);
}

DaxStatus DAXI_CheckerboardCornerSymMulBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  return dax::boardBufferSize<dax::SymmetryBuffer>(size, bytes);
}

DaxStatus DAXI_CheckerboardCornerSym_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f* points,
                                            CheckerboardCorner* corners, CheckerboardGrid* result,
                                            const CheckerboardSymCfg* cfg, void* buffer, void* pool) {
  return dax::findOne({src, srcStep, nullptr, 0, size, cfg, buffer, pool}, points, corners, result, false);
}

DaxStatus DAXI_CheckerboardCornerSym_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                             DaxiSize size, DaxiPoint32f* points, CheckerboardCorner* corners,
                                             CheckerboardGrid* result, const CheckerboardSymCfg* cfg, void* buffer,
                                             void* pool) {
  return dax::findOne({src, srcStep, mask, maskStep, size, cfg, buffer, pool}, points, corners, result, true);
}

DaxStatus DAXI_CheckerboardCornerSymMul_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, DaxiPoint32f* points,
                                               CheckerboardCorner* corners, CheckerboardGrid* boards, int32_t maxBoards,
                                               int32_t* boardCount, const CheckerboardSymCfg* cfg, void* buffer,
                                               void* pool) {
  return dax::findAll({src, srcStep, nullptr, 0, size, cfg, buffer, pool},
                      {points, corners, boards, maxBoards, boardCount}, false);
}

DaxStatus DAXI_CheckerboardCornerSymMul_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                int32_t maskStep, DaxiSize size, DaxiPoint32f* points,
                                                CheckerboardCorner* corners, CheckerboardGrid* boards,
                                                int32_t maxBoards, int32_t* boardCount, const CheckerboardSymCfg* cfg,
                                                void* buffer, void* pool) {
  return dax::findAll({src, srcStep, mask, maskStep, size, cfg, buffer, pool},
                      {points, corners, boards, maxBoards, boardCount}, true);
}
