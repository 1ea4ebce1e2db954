/* Graphs: vertices are poses, points and vectors to be estimated, edges are measurements of them.
 *
 *   type of vertex            size  estimate                                    step d
 *   PRGO_VERTEX_SE2        0  3     x, y, theta, in (-pi, pi]                   X <- X Exp(d)
 *   PRGO_VERTEX_SE3        1  6     t, then a rotation vector of length <= pi   X <- X Exp(d), d = (v, w)
 *   PRGO_VERTEX_POINT2     2  2     x, y                                        p <- p + d
 *   PRGO_VERTEX_POINT3     3  3     x, y, z                                     p <- p + d
 *   PRGO_VERTEX_VECTOR     4  1..6  numbers of any meaning                      p <- p + d
 *
 * A pose X = (R, t) takes coordinates of its own frame to those of the world, p -> R p + t. Edges give residuals r of
 * their vertices X, Y, ... and of the measurement z:
 *
 *   type of edge              size  vertices                         residual
 *   PRGO_EDGE_RELATIVE     0  3, 6  pose, pose of the same type      of E = Z^-1 X^-1 Y: (t, theta) of SE2,
 *                                                                    (t, 2 vec(q)) of SE3, q the unit quaternion, w >= 0
 *   PRGO_EDGE_PRIOR        1  1..6  any                              of E = Z^-1 X; of points and vectors X - Z
 *   PRGO_EDGE_LANDMARK     2  2, 3  SE2, POINT2, or SE3, POINT3      R^T (p - t) - z
 *   PRGO_EDGE_PROJECTION   3  2     SE3, POINT3                      (fx x / z + cx - u, fy y / z + cy - v) of the
 *                                                                    point (x, y, z) = R^T (p - t) in front of a camera
 *   PRGO_EDGE_PLANE        4  1     SE3, SE3                         n^T X^-1 Y p + d: of a point p of Y's frame beside
 *                                                                    a plane of X's
 *
 * The energy of a graph is E = sum of rho(s) / 2 over its edges, s = r^T Omega r, Omega the information matrix of the edge,
 * positive semi-definite, and rho its kernel, with u = s / k^2:
 *
 *   PRGO_KERNEL_NONE          0  s
 *   PRGO_KERNEL_HUBER         1  s for u <= 1, else 2 k sqrt(s) - k^2;            k by default 1.345
 *   PRGO_KERNEL_CAUCHY        2  k^2 ln(1 + u);                                   2.385
 *   PRGO_KERNEL_TUKEY         3  k^2 (1 - (1 - u)^3) / 3 for u <= 1, else k^2 / 3;  4.685
 *   PRGO_KERNEL_GEMAN_MCCLURE 4  s / (1 + u);                                     3
 *
 * A graph lies in memory of the caller's, which must not move: PRGO_GRAPH_BufferSize tells its size for given capacities.
 * `vertices` and `edges` may be read, in the order of their addition; change them by functions alone. A graph grows between
 * optimisations: what is added then starts where it is put, all else where the last optimisation has led.
 *
 * Checks, in order: a pointer null, of a graph its memory included -> -21; a type, size, capacity, kernel or id that is not
 * as stated -> -26; a number not finite -> -31; no room -> -30. A failed call changes nothing. Thread-safe on distinct graphs; functions that take a constant
 * graph on the same one, too. */
#ifndef PRGO_GRAPH_H
#define PRGO_GRAPH_H

#include "status.h"

DAX_BEGIN_DECLS

enum {
  PRGO_VERTEX_SE2 = 0,
  PRGO_VERTEX_SE3 = 1,
  PRGO_VERTEX_POINT2 = 2,
  PRGO_VERTEX_POINT3 = 3,
  PRGO_VERTEX_VECTOR = 4
};
enum {
  PRGO_EDGE_RELATIVE = 0,
  PRGO_EDGE_PRIOR = 1,
  PRGO_EDGE_LANDMARK = 2,
  PRGO_EDGE_PROJECTION = 3,
  PRGO_EDGE_PLANE = 4
};
enum {
  PRGO_KERNEL_NONE = 0,
  PRGO_KERNEL_HUBER = 1,
  PRGO_KERNEL_CAUCHY = 2,
  PRGO_KERNEL_TUKEY = 3,
  PRGO_KERNEL_GEMAN_MCCLURE = 4
};

typedef struct PrgoVertex {
  int64_t id;
  int32_t type;       /* PRGO_VERTEX_... */
  int32_t size;       /* numbers of a vector; of the others set by PRGO_GRAPH_AddVertex */
  uint8_t isFixed;    /* 1: optimisation leaves it where it is */
  uint8_t isHeld;     /* 1: the last optimisation left it where it is, since nothing else held its component */
  double estimate[6]; /* `size` numbers */
} PrgoVertex;

typedef struct PrgoEdge {
  int64_t vertices[2];    /* ids; of a prior only the first one */
  int32_t type;           /* what is measured, as above */
  int32_t kernel;         /* PRGO_KERNEL_... */
  double kernelWidth;     /* k above; 0: its default */
  double measurement[8];  /* z, as an estimate of its kind; (u, v, fx, fy, cx, cy); (p, n, d) */
  double information[21]; /* the upper triangle of Omega by rows; of size 3 six numbers, of size 6 all */
} PrgoEdge;

typedef struct PrgoGraph {
  int32_t vertexCapacity;
  int32_t edgeCapacity;
  int32_t vertexCount;
  int32_t edgeCount;
  PrgoVertex* vertices; /* vertexCapacity */
  PrgoEdge* edges;      /* edgeCapacity */
  /* Of the library alone. */
  int32_t* table;
  int32_t* ends;
  double* roots;
  void* scratch;
  uint64_t scratchBytes;
} PrgoGraph;

/* Bytes of a graph of at most so many vertices and edges, 1..100000000 vertices, 0..100000000 edges. A size beyond 64
 * bits -> -22. */
DAX_API int32_t PRGO_GRAPH_BufferSize(int32_t vertexCapacity, int32_t edgeCapacity, uint64_t* bytes);

/* Makes an empty graph in `buffer`, which has the queried size and malloc's alignment. */
DAX_API int32_t PRGO_GRAPH_Init(PrgoGraph* graph, int32_t vertexCapacity, int32_t edgeCapacity, void* buffer);

/* Adds a copy of a vertex. Angles and rotation vectors are brought into their ranges; isHeld is cleared, isFixed is 0 or
 * 1. An id that the graph has -> -26. */
DAX_API int32_t PRGO_GRAPH_AddVertex(PrgoGraph* graph, const PrgoVertex* vertex);

/* Adds a copy of an edge. Eigenvalues of the information matrix that are negative by rounding count as 0.
 *
 * Checks, in order: a pointer null, of a graph its memory included -> -21; a type that there is not, vertices that the
 * graph does not have, twice the same, or of types that do not go with the edge's, a kernel that there is not,
 * kernelWidth below 0 -> -26; kernelWidth, measurement or information not finite -> -31; information with an eigenvalue
 * below -1e-8 of the largest -> -26; no room -> -30. */
DAX_API int32_t PRGO_GRAPH_AddEdge(PrgoGraph* graph, const PrgoEdge* edge);

/* Makes a vertex fixed, isFixed 1, or free, 0. An unknown id -> -26. */
DAX_API int32_t PRGO_GRAPH_Fix(PrgoGraph* graph, int64_t id, int32_t isFixed);

/* Reads the estimate of a vertex, or sets it: as many numbers as its size. An unknown id -> -26. */
DAX_API int32_t PRGO_GRAPH_Estimate(const PrgoGraph* graph, int64_t id, double* estimate);
DAX_API int32_t PRGO_GRAPH_SetEstimate(PrgoGraph* graph, int64_t id, const double* estimate);

/* The energy of the graph where it is. A residual that is not finite -> -31. */
DAX_API int32_t PRGO_GRAPH_Energy(const PrgoGraph* graph, double* energy);

DAX_END_DECLS

#endif
