// The quad detector: dark squares as quads, linked at their corners. Ids are indices plus 1; 0 means none.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "daxi/blob_find.h"
#include "daxi/chessboard.h"
#include "daxi/point.h"

// A dark square.
struct ChessboardQuad {
  int32_t corner[4];     // ids of its corner points, around the square; linked squares share a point
  int32_t neighbour[4];  // ids of the squares linked at these corners
  int32_t group;         // -1: none yet
  int32_t id;
  float minEdge;       // squared length of the shortest edge
  int32_t neighbours;  // number of links
};

enum { DAX_CHESSBOARD_LABEL_1 = 1000000, DAX_CHESSBOARD_LABEL_2 = 2000000, DAX_CHESSBOARD_LABEL_3 = 3000000 };

// A corner of a dark square, and a node of the corner graph.
struct ChessboardCornerPoint {
  float x;
  float y;
  int32_t id;
  int32_t label;       // by the smallest number of neighbours of its squares; 0: not a corner of the board
  int32_t neighbours;  // number of edges in the graph
  int32_t neighbour[4];
};

namespace dax {

inline constexpr int32_t kMaxQuads = 800;  // of a level

// Counts of squares that follow from the size of a board, rounded up.
struct BoardCounts {
  explicit BoardCounts(ChessboardPatternSize pattern)
      : corners(pattern.columns * pattern.rows),
        half(((pattern.columns + 1) * (pattern.rows + 1) + 1) / 2),
        quarter(((pattern.columns + 1) * (pattern.rows + 1) + 1) / 4) {}
  int32_t corners;
  int32_t half;     // dark squares
  int32_t quarter;  // with fewer regions there is no board
  // Regions of an image that is worth a try: at most four squares are missing, at most three times as many are added.
  int32_t minRegions() const { return half - 4; }
  int32_t maxRegions() const { return half < kMaxQuads / 4 ? 4 * half : kMaxQuads; }
};

// All quads and corner points of a level.
struct QuadTable {
  ChessboardQuad* quads;
  ChessboardCornerPoint* corners;
  int32_t quadCount;

  ChessboardQuad& quad(int32_t id) const { return quads[id - 1]; }
  ChessboardCornerPoint& corner(int32_t id) const { return corners[id - 1]; }
};

// A group of linked quads: ids in the order of their discovery.
struct QuadGroup {
  int32_t* ids;
  int32_t count;
};

// Links two quads at corners, which become one point halfway between them.
void link(const QuadTable& table, ChessboardQuad& a, int32_t slotOfA, ChessboardQuad& b, int32_t slotOfB);

// Removes a link at both ends.
void unlink(const QuadTable& table, ChessboardQuad& quad, int32_t slot);

}  // namespace dax

extern "C" {

// Keeps the labels of the regions, at most kMaxQuads, that can be squares; returns how many there are, or 0 where too
// few or too many pass. `points` as for the enclosing box.
int32_t DAXI_ChessboardCorner_contour_select(const DaxiDomainList* domains, const dax::BoardCounts* counts,
                                             uint32_t* labels, uint64_t* areas, DaxiPoint32s* points);

// Links quads at corners that are each other's nearest; they then share one corner point halfway between.
void DAXI_ChessboardCorner_find_quads_neighbor(const dax::QuadTable* table);

// The next group: all quads linked, directly or indirectly, to the first one that has a neighbour and no group; empty
// when there is none left.
void DAXI_ChessboardCorner_find_connected_quads(const dax::QuadTable* table, int32_t number, dax::QuadGroup* group);
}
