/* Graphs as text, in the format that programs of this field exchange: a line an item, words parted by blanks, numbers with a
 * decimal point in any locale.
 *
 *   VERTEX_SE2 id x y theta                          VERTEX_SE3:QUAT id x y z qx qy qz qw
 *   VERTEX_XY id x y                                 VERTEX_TRACKXYZ id x y z
 *   EDGE_SE2 i j x y theta information               EDGE_SE3:QUAT i j x y z qx qy qz qw information
 *   EDGE_SE2_XY i j x y information                  EDGE_PRIOR_SE2 i x y theta information
 *   FIX id ...
 *
 * Information is the upper triangle by rows. That of EDGE_SE3:QUAT is for the vector of the quaternion, of which the residual
 * here has twice: its rotational block is divided by 4, the one beside it by 2, and the other way round when written.
 * Other lines are passed over and counted, those that begin with # are not; vertices may stand behind the edges that name
 * them. Robust kernels are not part of the format.
 *
 * Checks, in order: a pointer null, of a graph its memory included -> -21; then as the functions say. */
#ifndef PRGO_TEXT_H
#define PRGO_TEXT_H

#include "graph.h"

DAX_BEGIN_DECLS

/* Reasons why a line is refused. */
enum {
  PRGO_TEXT_OK = 0,
  PRGO_TEXT_SHORT = 1,     /* words are missing */
  PRGO_TEXT_NUMBER = 2,    /* a word is no number, or not finite, or an id not of 64 bits, or |theta| above 1e6 */
  PRGO_TEXT_NORM = 3,      /* the norm of a quaternion differs from 1 by more than 0.01 */
  PRGO_TEXT_DUPLICATE = 4, /* the id of a vertex was there before */
  PRGO_TEXT_MISSING = 5,   /* no vertex of this id, or of another kind, or both the same */
  PRGO_TEXT_MATRIX = 6     /* the information matrix is not positive semi-definite */
};

typedef struct PrgoTextInfo {
  int32_t vertices; /* lines of vertices */
  int32_t edges;
  int32_t fixed;    /* ids of FIX */
  int32_t unknown;  /* lines passed over */
  int64_t line;     /* the line that is refused, from 1; 0 without one */
  int32_t reason;   /* PRGO_TEXT_... */
  int32_t reserved; /* 0 */
} PrgoTextInfo;

/* Counts the lines of a text of `length` bytes, so that a graph can be made for it. Nothing is refused; more lines of a kind
 * than fit 32 bits -> -22. */
DAX_API int32_t PRGO_GRAPH_CountText(const char* text, uint64_t length, PrgoTextInfo* info);

/* Reads a text into an empty graph. The graph has vertices -> -26; a line is wrong -> -36, told by `info`, which is
 * written then, too; more vertices or edges than the graph has room for -> -30. A failed call leaves the graph empty. */
DAX_API int32_t PRGO_GRAPH_ReadText(PrgoGraph* graph, const char* text, uint64_t length, PrgoTextInfo* info);

/* Writes a graph with numbers that read back as they were: vertices, FIX, edges. bytes: in, the size of `text`; out, the
 * length of what is written, without a final 0. A vector, a prior but of SE(2), or a landmark in space, which the format
 * does not have -> -26; text too small -> -32, with the need stored. */
DAX_API int32_t PRGO_GRAPH_WriteText(const PrgoGraph* graph, char* text, uint64_t* bytes);

DAX_END_DECLS

#endif
