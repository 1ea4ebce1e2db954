#include "calib/board/chessboard_search.h"

#include <algorithm>
#include <cstddef>

#include "calib/board/chessboard_board.h"
#include "calib/board/chessboard_mask.h"
#include "calib/board/chessboard_quads.h"
#include "calib/board/chessboard_surplus.h"
#include "daxi/region.h"
#include "frame/cpu_feature.h"
#include "frame/math.h"
#include "frame/memory/work_buffer.h"
#include "image/morphology/erode3x3.h"
#include "measure/blob/blob_find.h"

namespace dax {
namespace {

constexpr int32_t kEightConnected = 8;
constexpr float kMargin = 8;        // pixels between corners and the border of the image, as documented
constexpr float kMaxEdge = 1.0e6f;  // squared length: the start value of a minimum, and so its upper bound
// The centres of a group and their mean.
constexpr uint64_t kBoxPoints = kMaxQuads + 1;

uint64_t boxBufferBytes() {
  uint64_t bytes = 0;
  _DAXI_PtEncloseBoxBufferSize_32s(kMaxQuads, &bytes);
  return bytes;
}

struct ChessboardBuffer {
  ChessboardBuffer(DaxiSize size, ChessboardPatternSize pattern)
      : mask(layout.add<uint8_t>(pixelsOf(size))),
        erosion(layout.add<uint8_t>(pixelsOf(size))),
        columns(layout.add<uint32_t>(static_cast<uint64_t>(size.width))),
        model(layout.add<uint8_t>(FindModel(maskNeed(size, kEightConnected)).layout.total())),
        labelling(layout.add<uint8_t>(FindScratch(maskNeed(size, kEightConnected)).layout.total())),
        points(layout.add<DaxiPoint32s>(DAXI_HULL_POINTS(size.height))),
        labels(layout.add<uint32_t>(kMaxQuads)),
        areas(layout.add<uint64_t>(kMaxQuads)),
        quads(layout.add<ChessboardQuad>(kMaxQuads)),
        corners(layout.add<ChessboardCornerPoint>(4 * kMaxQuads)),
        group(layout.add<int32_t>(kMaxQuads)),
        places(layout.add<QuadPlace>(kMaxQuads)),
        centres(layout.add<DaxiPoint32s>(kMaxQuads)),
        hull(layout.add<DaxiPoint32s>(4 * kBoxPoints + 1)),
        box(layout.add<uint8_t>(boxBufferBytes())),
        ids(layout.add<int32_t>((static_cast<uint64_t>(pattern.columns) + 1) *
                                (static_cast<uint64_t>(pattern.rows) + 1))) {}
  BufferLayout layout;
  BufferPiece<uint8_t> mask, erosion;
  BufferPiece<uint32_t> columns;
  BufferPiece<uint8_t> model, labelling;
  BufferPiece<DaxiPoint32s> points;
  BufferPiece<uint32_t> labels;
  BufferPiece<uint64_t> areas;
  BufferPiece<ChessboardQuad> quads;
  BufferPiece<ChessboardCornerPoint> corners;
  BufferPiece<int32_t> group;
  BufferPiece<QuadPlace> places;
  BufferPiece<DaxiPoint32s> centres, hull;
  BufferPiece<uint8_t> box;
  BufferPiece<int32_t> ids;
};

// The four vertices of a box, in order around it.
void boxVertices(const DaxiRotatedBox& box, ChessboardCornerPoint* p) {
  const SinCos at = sinCosExact(static_cast<double>(box.angle));
  const float a = static_cast<float>(at.cosine) / 2, b = static_cast<float>(at.sine) / 2;
  p[0].x = box.x - a * box.width - b * box.height;
  p[0].y = box.y - b * box.width + a * box.height;
  p[1].x = box.x - a * box.width + b * box.height;
  p[1].y = box.y - b * box.width - a * box.height;
  for (int32_t k = 0; k < 2; ++k) {
    p[k + 2].x = 2 * box.x - p[k].x;
    p[k + 2].y = 2 * box.y - p[k].y;
  }
}

// Runs at the border of the image. Erosion removes no region that does not touch the border: the first pixel of a run
// in a row, and in a column, stays.
int64_t borderRuns(const DaxiDomainList& domains, DaxiSize size) {
  return std::count_if(domains.runs, domains.runs + domains.runCount, [size](const DomainRun& run) {
    return run.row == 0 || run.row == size.height - 1 || run.start == 0 || run.end == size.width - 1;
  });
}

// A search for one board in one image.
class BoardSearch {
 public:
  BoardSearch(DaxiSize size, ChessboardPatternSize pattern, void* buffer)
      : size_(size), pattern_(pattern), counts_(pattern), at_(size, pattern), buffer_(buffer) {}

  void binarize(const uint8_t* src, int32_t srcStep, int32_t mode, int32_t isa) {
    maskDark(src, srcStep, mask(), size_.width, size_, mode, at_.columns.in(buffer_), isa);
  }

  void erode(int32_t isa) {
    _DAXI_Erode3x3_8u_C1R(mask(), size_.width, mask(), size_.width, size_, 1, at_.erosion.in(buffer_), isa);
  }

  // Looks for groups of squares of the mask that have the shape of the board, and copies the corners of the first
  // monotone one, or else of the last.
  void tryLevel(DaxiPoint32f* corners, int32_t* cornerCount, int32_t isa) {
    const DaxiDomainList* const domains = _DAXI_FindDomain_8u_C1R(
        mask(), size_.width, size_, kEightConnected, at_.model.in(buffer_), at_.labelling.in(buffer_), isa);
    const auto regions = static_cast<int64_t>(domains->domainCount);
    crowded_ = regions - borderRuns(*domains, size_) > kMaxQuads;
    if (regions < counts_.minRegions() || regions > kMaxQuads) return;
    const int32_t count = DAXI_ChessboardCorner_contour_select(domains, &counts_, at_.labels.in(buffer_),
                                                               at_.areas.in(buffer_), at_.points.in(buffer_));
    if (count == 0) return;
    const QuadTable table{at_.quads.in(buffer_), at_.corners.in(buffer_), count};
    for (int32_t i = 0; i < count; ++i) makeQuad(*domains, at_.labels.in(buffer_)[i], table, i);
    DAXI_ChessboardCorner_find_quads_neighbor(&table);
    tryGroups(table, corners, cornerCount);
  }

  // Whether all further levels will have too many regions.
  bool isCrowded() const { return crowded_; }

 private:
  uint8_t* mask() const { return at_.mask.in(buffer_); }

  void makeQuad(const DaxiDomainList& domains, uint32_t label, const QuadTable& table, int32_t index) const {
    DaxiRotatedBox box;
    _DAXI_DomainEncloseBox(&domains, &domains.domains[label], size_, DAXI_BOX_MIN_AREA, at_.points.in(buffer_), &box);
    ChessboardCornerPoint* const p = table.corners + ptrdiff_t{4} * index;
    ChessboardQuad& quad = table.quads[index];
    quad = {{}, {}, -1, index + 1, kMaxEdge, 0};
    for (int32_t k = 0; k < 4; ++k) {
      p[k] = {0, 0, 4 * index + k + 1, 0, 0, {}};
      quad.corner[k] = p[k].id;
    }
    boxVertices(box, p);
    for (int32_t k = 0; k < 4; ++k) {
      const float dx = p[k].x - p[(k + 1) % 4].x, dy = p[k].y - p[(k + 1) % 4].y;
      quad.minEdge = std::min(quad.minEdge, dx * dx + dy * dy);
    }
  }

  void tryGroups(const QuadTable& table, DaxiPoint32f* corners, int32_t* cornerCount) {
    QuadGroup group{at_.group.in(buffer_), 0};
    const GroupScratch scratch{at_.places.in(buffer_), at_.centres.in(buffer_), at_.hull.in(buffer_),
                               at_.box.in(buffer_)};
    for (int32_t number = 0;; ++number) {
      DAXI_ChessboardCorner_find_connected_quads(&table, number, &group);
      if (group.count == 0) return;
      DAXI_ChessboardCorner_order_connected_quads(&table, &group, pattern_, &scratch);
      DAXI_ChessboardCorner_clean_surplus_quads(&table, &group, counts_.half, &scratch);
      if (group.count == 0 || !DAXI_ChessboardCorner_check_quad_group(&table, &group, pattern_, at_.ids.in(buffer_)))
        continue;
      copyCorners(table, corners);
      *cornerCount = counts_.corners;
      if (DAXI_ChessboardCorner_check_board_monotony(corners, pattern_)) return;
    }
  }

  void copyCorners(const QuadTable& table, DaxiPoint32f* corners) const {
    const int32_t* const ids = at_.ids.in(buffer_);
    for (int32_t i = 0; i < counts_.corners; ++i) corners[i] = {table.corner(ids[i]).x, table.corner(ids[i]).y};
  }

  bool crowded_ = false;
  DaxiSize size_;
  ChessboardPatternSize pattern_;
  BoardCounts counts_;
  ChessboardBuffer at_;
  void* buffer_;
};

bool isInside(DaxiPoint32f p, DaxiSize size) {
  return p.x > kMargin && p.y > kMargin && p.x <= static_cast<float>(size.width) - kMargin &&
         p.y <= static_cast<float>(size.height) - kMargin;
}

bool finish(DaxiPoint32f* corners, int32_t count, DaxiSize size, int32_t columns) {
  if (!std::all_of(corners, corners + count, [size](DaxiPoint32f p) { return isInside(p, size); })) return false;
  if (corners[count - columns].y < corners[0].y) std::reverse(corners, corners + count);
  return true;
}

}  // namespace

DaxStatus chessboardBufferSize(DaxiSize size, ChessboardPatternSize pattern, uint64_t* bytes) {
  return ChessboardBuffer(size, pattern).layout.store(bytes);
}

}  // namespace dax

void _DAXI_ChessboardCorner_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                      DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found,
                                      int32_t thresholdMode, int32_t maxLevel, void* buffer, int32_t isa) {
  *found = 0;
  *cornerCount = 0;
  if (maxLevel < 1) return;
  dax::BoardSearch search(size, pattern, buffer);
  search.binarize(src, srcStep, thresholdMode, isa);
  // A group of the board's shape ends the search at its level, even one that is not monotone.
  for (int32_t level = 1; level <= maxLevel && *cornerCount == 0 && !search.isCrowded(); ++level) {
    search.erode(isa);
    search.tryLevel(corners, cornerCount, isa);
  }
  if (*cornerCount > 0) *found = dax::finish(corners, *cornerCount, size, pattern.columns);
}

void _DAXI_ChessboardCorner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                   DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found, int32_t thresholdMode,
                                   int32_t maxLevel, void* buffer) {
  _DAXI_ChessboardCorner_8u_C1R_IS(src, srcStep, size, pattern, corners, cornerCount, found, thresholdMode, maxLevel,
                                   buffer, dax::currentIsa());
}
