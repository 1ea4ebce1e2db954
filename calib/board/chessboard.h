// The quad detector: its records and stages. Ids are indices plus 1; 0 stands for none.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "daxi/blob_find.h"
#include "daxi/chessboard.h"
#include "daxi/region.h"

// A dark square.
struct ChessboardQuad {
  int32_t corner[4];     // ids of its corner points, around the square; linked squares share a point
  int32_t neighbour[4];  // ids of the squares linked at these corners
  int32_t group;         // -1: in none yet
  int32_t id;
  float shortestEdge;  // squared length
  int32_t neighbours;  // how many
};

enum { DAX_CHESSBOARD_LABEL_1 = 1000000, DAX_CHESSBOARD_LABEL_2 = 2000000, DAX_CHESSBOARD_LABEL_3 = 3000000 };

// A corner of a dark square, and a node of the corner graph.
struct ChessboardCornerPoint {
  float x;
  float y;
  int32_t id;
  int32_t label;       // by the least number of neighbours among its squares; 0: not a corner of the board
  int32_t neighbours;  // how many
  int32_t neighbour[4];
};

namespace dax {

inline constexpr int32_t kMostQuads = 800;

// The counts that follow from the size of a board, with one square in reserve.
struct BoardCounts {
  explicit BoardCounts(ChessboardPatternSize pattern)
      : corners(pattern.columns * pattern.rows),
        half(((pattern.columns + 1) * (pattern.rows + 1) + 1) / 2),
        quarter(((pattern.columns + 1) * (pattern.rows + 1) + 1) / 4) {}
  int32_t corners;
  int32_t half;     // dark squares
  int32_t quarter;  // fewer regions than this are no board
  int32_t leastRegions() const { return half - 4; }
  int32_t mostRegions() const { return half < kMostQuads / 4 ? 4 * half : kMostQuads; }
};

// All quads and corner points of a level.
struct QuadTable {
  ChessboardQuad* quads;
  ChessboardCornerPoint* corners;
  int32_t quadCount;

  ChessboardQuad& quad(int32_t id) const { return quads[id - 1]; }
  ChessboardCornerPoint& corner(int32_t id) const { return corners[id - 1]; }
};

// A square's place in a group: cells of the board, of which the dark ones alternate, and which of its corners points
// down the diagonal of growing columns and rows.
struct QuadPlace {
  int32_t column;
  int32_t row;
  int32_t turn;
  bool placed;
};

// A group of linked quads: ids in the order of their discovery.
struct QuadGroup {
  int32_t* ids;
  int32_t count;
};

// Scratch of the group stages, each for kMostQuads.
struct GroupScratch {
  QuadPlace* places;      // by quad index
  DaxiPoint32s* centres;  // by slot of the group
  DaxiPoint32s* hull;     // of the centres and one more point
  void* boxBuffer;        // for the enclosing box of as many points
};

// Links two quads at corners, which from now on are one point, half way between.
void link(const QuadTable& table, ChessboardQuad& a, int32_t slotOfA, ChessboardQuad& b, int32_t slotOfB);

// Takes a link away at both its ends.
void unlink(const QuadTable& table, ChessboardQuad& quad, int32_t slot);

// Sets the pixels that are dark, to any value but 0.
void maskDark(const uint8_t* src, int32_t srcStep, uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t mode,
              uint32_t* columns, int32_t isa);

// Sides of the window of the local mean.
int32_t meanWindowSide(int32_t side);

}  // namespace dax

extern "C" {

// The detector with the exports' arguments; it cannot fail.
void _DAXI_ChessboardCorner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                   DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found, int32_t thresholdMode,
                                   int32_t maxLevel, void* buffer);
void _DAXI_ChessboardCorner_8u_C1R_IS(const uint8_t* src, int32_t srcStep, DaxiSize size, ChessboardPatternSize pattern,
                                      DaxiPoint32f* corners, int32_t* cornerCount, int32_t* found,
                                      int32_t thresholdMode, int32_t maxLevel, void* buffer, int32_t isa);

// Keeps the labels of the regions, at most kMostQuads, that can be squares; returns how many there are, 0 where too few
// or too many pass. `points` as for the enclosing box.
int32_t DAXI_ChessboardCorner_contour_select(const DaxiDomainList* domains, const dax::BoardCounts* counts,
                                             uint32_t* labels, uint64_t* areas, DaxiPoint32s* points);

// Links quads at corners that are each other's nearest, which then share one corner point half way between.
void DAXI_ChessboardCorner_find_quads_neighbor(const dax::QuadTable* table);

// The next group: all quads linked, directly or not, to the first one that has a neighbour and no group; empty when
// there is none left.
void DAXI_ChessboardCorner_find_connected_quads(const dax::QuadTable* table, int32_t number, dax::QuadGroup* group);

// Gives the quads of a group their places on the board by walking over the links. Quads that contradict, or lie outside
// the board's extent, lose their links and leave the group; links that the places ask for are added.
void DAXI_ChessboardCorner_order_connected_quads(const dax::QuadTable* table, dax::QuadGroup* group,
                                                 ChessboardPatternSize pattern, const dax::GroupScratch* scratch);

// Removes quads from a group that has more than `most`: each time the one without which the box around the centres
// becomes smallest, and with it the last but one of the group. Empties groups that it cannot bring down.
void DAXI_ChessboardCorner_clean_surplus_quads(const dax::QuadTable* table, dax::QuadGroup* group, int32_t most,
                                               const dax::GroupScratch* scratch);

// Builds the corner graph of a group and reads the board off it: ids of columns * rows corner points, row by row. False
// when the group has not the shape of the board.
bool DAXI_ChessboardCorner_check_quad_group(const dax::QuadTable* table, const dax::QuadGroup* group,
                                            ChessboardPatternSize pattern, int32_t* ids);

// Whether the corners go on in one direction along every row and column.
bool DAXI_ChessboardCorner_check_board_monotony(const DaxiPoint32f* corners, ChessboardPatternSize pattern);
}
