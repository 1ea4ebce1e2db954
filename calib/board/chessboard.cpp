#include "daxi/chessboard.h"

#include "calib/board/board_image.h"
#include "calib/board/chessboard_search.h"
#include "daxi/blob_find.h"
#include "frame/check.h"

static_assert(sizeof(ChessboardPatternSize) == 8 && sizeof(DaxiPoint32f) == 8);

namespace dax {
namespace {

constexpr int32_t kMinCorners = 2, kMaxCorners = 25;  // along a side
constexpr int32_t kMaxLevel = 18;

bool fitsRuns(DaxiSize size) {
  return atLeast(size, kMinBoardSide) && atMost(size, DAXI_BLOB_MAX_SIDE);
}

bool isPattern(ChessboardPatternSize p) {
  return p.columns >= kMinCorners && p.columns <= kMaxCorners && p.rows >= kMinCorners && p.rows <= kMaxCorners;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ChessboardCornerBufferSize_8u(DaxiSize size, ChessboardPatternSize pattern, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::fitsRuns(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(pattern.columns >= dax::kMinCorners && pattern.rows >= dax::kMinCorners, DAX_STS_BAD_PARAM);
  return dax::chessboardBufferSize(size, pattern, bytes);
}

DaxStatus DAXI_ChessboardCorner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                       ChessboardPatternSize pattern, DaxiPoint32f* corners, int32_t* cornerCount,
                                       int32_t* found, int32_t thresholdMode, int32_t maxLevel, void* buffer) {
  DAX_REQUIRE(src && corners && cornerCount && found && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::rowFits(size.width, srcStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(dax::fitsRuns(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::isPattern(pattern) && static_cast<uint32_t>(thresholdMode) <= DAXI_CHESSBOARD_LOCAL_MEAN &&
                  maxLevel >= 1 && maxLevel <= dax::kMaxLevel,
              DAX_STS_BAD_PARAM);
  _DAXI_ChessboardCorner_8u_C1R(src, srcStep, size, pattern, corners, cornerCount, found, thresholdMode, maxLevel,
                                buffer);
  return DAX_STS_OK;
}
