// Residuals of edges and their derivatives.
#pragma once

#include "optim/graph/rigid.h"
#include "prgo/graph.h"

namespace dax {

constexpr int kMaxSize = 6;   // of an estimate, and of a residual
constexpr int kEdgeEnds = 2;  // vertices of an edge, at most

// A vertex with what its residuals need: of SE(2) cosine and sine in q, of SE(3) quaternion and matrix.
struct State {
  double x[kMaxSize];
  double q[4];
  double r[9];
};

// Whitened residuals and their derivatives by the steps of the vertices, row by row: j[k] is rows x size of vertex k.
struct Linear {
  double r[kMaxSize];
  double j[kEdgeEnds][kMaxSize * kMaxSize];
};

// 0 for a type that there is not, or a vector of a wrong size.
int32_t vertexSize(int32_t type, int32_t size);

// Number of vertices of an edge; 0 for a type that there is not.
int32_t endsOf(int32_t edgeType);

// Whether an edge of this type goes with these vertices; `second` is null for a prior.
bool goesWith(int32_t edgeType, const PrgoVertex& first, const PrgoVertex* second);

// Length of its residuals, and of its measurement.
int32_t residualSize(int32_t edgeType, const PrgoVertex& first);
int32_t measuredSize(int32_t edgeType, const PrgoVertex& first);

// Brings angles and rotation vectors into their ranges.
void normaliseEstimate(int32_t vertexType, double* estimate);

// x <- x (+) step.
void moveEstimate(int32_t vertexType, int32_t size, double* x, const double* step);

State stateOf(int32_t vertexType, int32_t size, const double* estimate);

// An edge as the solvers see it. `ends` are the states of its vertices, root that of its information matrix.
struct EdgeView {
  const PrgoEdge* edge;
  const double* root;
  int32_t rows;
  int32_t types[kEdgeEnds];
  int32_t sizes[kEdgeEnds];  // 0: no such vertex
  const State* ends[kEdgeEnds];
};

void edgeResidual(const EdgeView& view, double* r);
double edgeEnergy(const EdgeView& view);  // rho(s) / 2; NaN where a residual is not finite
void edgeLinear(const EdgeView& view, Linear& linear);

}  // namespace dax
