#include "optim/graph/edge_model.h"

#include <algorithm>
#include <type_traits>

#include "optim/graph/robust_kernel.h"

namespace dax {
namespace {

// E = Z^-1 X^-1 Y of poses; X is the identity for priors.
struct PlanarError {
  double p[2];         // of Y in X
  double z[2];         // cosine and sine of Z
  double relative[2];  // of X^-1 Y
  double r[3];
};

PlanarError planarError(const State* x, const State& y, const double* measured) {
  const SinCos turn = sinCosAny(measured[2]);
  PlanarError e{};
  e.z[0] = turn.cosine, e.z[1] = turn.sine;
  const double c = x ? x->q[0] : 1, s = x ? x->q[1] : 0;
  const double dx = y.x[0] - (x ? x->x[0] : 0), dy = y.x[1] - (x ? x->x[1] : 0);
  e.p[0] = c * dx + s * dy, e.p[1] = c * dy - s * dx;
  e.relative[0] = c * y.q[0] + s * y.q[1], e.relative[1] = c * y.q[1] - s * y.q[0];
  const double u = e.p[0] - measured[0], v = e.p[1] - measured[1];
  e.r[0] = turn.cosine * u + turn.sine * v;
  e.r[1] = turn.cosine * v - turn.sine * u;
  e.r[2] = wrapped(y.x[2] - (x ? x->x[2] : 0) - measured[2]);
  return e;
}

void planarDerivatives(const PlanarError& e, double* byX, double* byY) {
  const double c = e.z[0], s = e.z[1];
  if (byX) {
    const double rows[9] = {-c, -s, c * e.p[1] - s * e.p[0], s, -c, -s * e.p[1] - c * e.p[0], 0, 0, -1};
    std::copy_n(rows, 9, byX);
  }
  // Rz^T R of the relative pose.
  const double a = c * e.relative[0] + s * e.relative[1], b = c * e.relative[1] - s * e.relative[0];
  const double rows[9] = {a, -b, 0, b, a, 0, 0, 0, 1};
  std::copy_n(rows, 9, byY);
}

struct SpatialError {
  Vector3 p;    // of Y in X
  double z[9];  // rotation of Z
  double q[4];  // of E, q[0] >= 0
  double r[6];
};

SpatialError spatialError(const State* x, const State& y, const double* measured) {
  SpatialError e{};
  double zq[4], relative[4];
  quaternionOf(measured + 3, zq);
  matrixOf(zq, e.z);
  const Vector3 way = x ? load3(y.x) - load3(x->x) : load3(y.x);
  e.p = x ? turnedBack(x->r, way) : way;
  std::copy_n(y.q, 4, relative);
  if (x) {
    double back[4];
    conjugate(x->q, back);
    multiplyQuaternions(back, y.q, relative);
  }
  conjugate(zq, zq);
  multiplyQuaternions(zq, relative, e.q);
  if (e.q[0] < 0) {
    for (double& part : e.q) part = -part;
  }
  store3(turnedBack(e.z, e.p - load3(measured)), e.r);
  for (int k = 0; k < 3; ++k) e.r[3 + k] = 2 * e.q[1 + k];
  return e;
}

// [v] of cross products, row by row.
void crossMatrix(const Vector3& v, double* m) {
  const double rows[9] = {0, -v.z, v.y, v.z, 0, -v.x, -v.y, v.x, 0};
  std::copy_n(rows, 9, m);
}

// With the step (v, w): of X dt = Rz^T (-v + [p] w), d(2 vec q) = ([q_v] - q_w) Rz^T w; of Y dt = R_E v,
// d(2 vec q) = ([q_v] + q_w) w.
void spatialDerivatives(const SpatialError& e, double* byX, double* byY) {
  double across[9], imaginary[9], whole[9];
  crossMatrix(e.p, across);
  crossMatrix(load3(e.q + 1), imaginary);
  matrixOf(e.q, whole);
  std::fill_n(byY, 36, 0.0);
  if (byX) std::fill_n(byX, 36, 0.0);
  for (int i = 0; i < 3; ++i) {
    for (int k = 0; k < 3; ++k) {
      const double real = i == k ? e.q[0] : 0;
      byY[6 * i + k] = whole[3 * i + k];
      byY[6 * (3 + i) + 3 + k] = imaginary[3 * i + k] + real;
      if (!byX) continue;
      double moved = 0, turning = 0;
      for (int l = 0; l < 3; ++l) {
        moved += e.z[3 * l + i] * across[3 * l + k];
        turning += (imaginary[3 * i + l] - (i == l ? e.q[0] : 0)) * e.z[3 * k + l];
      }
      byX[6 * i + k] = -e.z[3 * k + i];
      byX[6 * i + 3 + k] = moved;
      byX[6 * (3 + i) + 3 + k] = turning;
    }
  }
}

// R^T (p - t) - z and its derivatives: of the pose -v + [q] w, of the point R^T.
void planarLandmark(const State& pose, const State& point, const double* z, double* r, Linear* out) {
  const double c = pose.q[0], s = pose.q[1], dx = point.x[0] - pose.x[0], dy = point.x[1] - pose.x[1];
  const double u = c * dx + s * dy, v = c * dy - s * dx;
  r[0] = u - z[0], r[1] = v - z[1];
  if (!out) return;
  const double byPose[6] = {-1, 0, v, 0, -1, -u}, byPoint[4] = {c, s, -s, c};
  std::copy_n(byPose, 6, out->j[0]);
  std::copy_n(byPoint, 4, out->j[1]);
}

void spatialLandmark(const State& pose, const State& point, const double* z, double* r, Linear* out) {
  const Vector3 seen = turnedBack(pose.r, load3(point.x) - load3(pose.x));
  store3(seen - load3(z), r);
  if (!out) return;
  double across[9];
  crossMatrix(seen, across);
  for (int i = 0; i < 3; ++i) {
    for (int k = 0; k < 3; ++k) {
      out->j[0][6 * i + k] = i == k ? -1 : 0;
      out->j[0][6 * i + 3 + k] = across[3 * i + k];
      out->j[1][3 * i + k] = pose.r[3 * k + i];
    }
  }
}

// A camera's picture of a point; NaN of one that is not in front of it. Of u = fx x / z the derivative by the point is
// (fx / z, 0, -fx x / z^2).
void projection(const State& pose, const State& point, const double* z, double* r, Linear* out) {
  const Vector3 seen = turnedBack(pose.r, load3(point.x) - load3(pose.x));
  const double depth = seen.z > 0 ? seen.z : std::nan("");
  const double across[2] = {seen.x / depth, seen.y / depth};
  for (int i = 0; i < 2; ++i) r[i] = z[2 + i] * across[i] + z[4 + i] - z[i];
  if (!out) return;
  for (int i = 0; i < 2; ++i) {
    const double slope = z[2 + i] / depth;
    const Vector3 by{i == 0 ? slope : 0, i == 1 ? slope : 0, -slope * across[i]};
    store3(-by, out->j[0] + 6 * i);
    store3(cross(by, seen), out->j[0] + 6 * i + 3);
    store3(turned(pose.r, by), out->j[1] + 3 * i);
  }
}

// n^T X^-1 Y p + d: by the step of X (-n, n x q), q = X^-1 Y p, by that of Y (m, p x m), m = R_Y^T R_X n.
void planeDistance(const State& x, const State& y, const double* z, double* r, Linear* out) {
  const Vector3 point = load3(z), normal = load3(z + 3);
  const Vector3 seen = turnedBack(x.r, turned(y.r, point) + load3(y.x) - load3(x.x));
  r[0] = dot(normal, seen) + z[6];
  if (!out) return;
  const Vector3 m = turnedBack(y.r, turned(x.r, normal));
  store3(-normal, out->j[0]);
  store3(cross(normal, seen), out->j[0] + 3);
  store3(m, out->j[1]);
  store3(cross(point, m), out->j[1] + 3);
}

void identity(int32_t size, double* j) {
  for (int32_t i = 0; i < size * size; ++i) j[i] = i % (size + 1) == 0 ? 1 : 0;
}

// Residuals before whitening; with `out` their derivatives, too.
void plain(const EdgeView& view, double* r, Linear* out) {
  const PrgoEdge& edge = *view.edge;
  const bool isPrior = edge.type == PRGO_EDGE_PRIOR;
  const State& last = *view.ends[isPrior ? 0 : 1];
  if (edge.type == PRGO_EDGE_LANDMARK) {
    (view.types[0] == PRGO_VERTEX_SE2 ? planarLandmark : spatialLandmark)(*view.ends[0], last, edge.measurement, r,
                                                                          out);
    return;
  }
  if (edge.type == PRGO_EDGE_PROJECTION || edge.type == PRGO_EDGE_PLANE) {
    (edge.type == PRGO_EDGE_PLANE ? planeDistance : projection)(*view.ends[0], last, edge.measurement, r, out);
    return;
  }
  const State* const first = isPrior ? nullptr : view.ends[0];
  double* const byFirst = out && !isPrior ? out->j[0] : nullptr;
  double* const byLast = out ? out->j[isPrior ? 0 : 1] : nullptr;
  if (view.types[0] == PRGO_VERTEX_SE2) {
    const PlanarError e = planarError(first, last, edge.measurement);
    std::copy_n(e.r, 3, r);
    if (out) planarDerivatives(e, byFirst, byLast);
  } else if (view.types[0] == PRGO_VERTEX_SE3) {
    const SpatialError e = spatialError(first, last, edge.measurement);
    std::copy_n(e.r, 6, r);
    if (out) spatialDerivatives(e, byFirst, byLast);
  } else {
    for (int32_t i = 0; i < view.rows; ++i) r[i] = last.x[i] - edge.measurement[i];
    if (out) identity(view.rows, byLast);
  }
}

template <class Count>
void multiplyBlocks(const double* root, Count rows, Count cols, const double* from, double* to) {
  std::fill_n(to, rows * cols, 0.0);
  for (int32_t i = 0; i < rows; ++i) {
    for (int32_t k = 0; k < rows; ++k) {
      const double factor = root[i * rows + k];
      for (int32_t j = 0; j < cols; ++j) to[i * cols + j] += factor * from[k * cols + j];
    }
  }
}

// to = root from, rows x rows by rows x cols.
void whiten(const double* root, int32_t rows, int32_t cols, const double* from, double* to) {
  using Six = std::integral_constant<int32_t, 6>;
  if (rows == 6 && cols == 6) {
    multiplyBlocks(root, Six(), Six(), from, to);
  } else {
    multiplyBlocks(root, rows, cols, from, to);
  }
}

bool isPose(int32_t type) {
  return type == PRGO_VERTEX_SE2 || type == PRGO_VERTEX_SE3;
}

}  // namespace

int32_t vertexSize(int32_t type, int32_t size) {
  constexpr int32_t kSizes[] = {3, 6, 2, 3};
  if (type == PRGO_VERTEX_VECTOR) return size >= 1 && size <= kMaxSize ? size : 0;
  return type >= PRGO_VERTEX_SE2 && type <= PRGO_VERTEX_POINT3 ? kSizes[type] : 0;
}

int32_t endsOf(int32_t edgeType) {
  switch (edgeType) {
    case PRGO_EDGE_PRIOR:
      return 1;
    case PRGO_EDGE_RELATIVE:
    case PRGO_EDGE_LANDMARK:
    case PRGO_EDGE_PROJECTION:
    case PRGO_EDGE_PLANE:
      return 2;
    default:
      return 0;
  }
}

bool goesWith(int32_t edgeType, const PrgoVertex& first, const PrgoVertex* second) {
  if (edgeType == PRGO_EDGE_PRIOR) return true;
  if (!isPose(first.type)) return false;
  if (edgeType == PRGO_EDGE_PROJECTION) {
    return first.type == PRGO_VERTEX_SE3 && second->type == PRGO_VERTEX_POINT3;
  }
  if (edgeType == PRGO_EDGE_PLANE) return first.type == PRGO_VERTEX_SE3 && second->type == PRGO_VERTEX_SE3;
  if (edgeType == PRGO_EDGE_RELATIVE) return second->type == first.type;
  return second->type == (first.type == PRGO_VERTEX_SE2 ? PRGO_VERTEX_POINT2 : PRGO_VERTEX_POINT3);
}

int32_t residualSize(int32_t edgeType, const PrgoVertex& first) {
  if (edgeType == PRGO_EDGE_PROJECTION) return 2;
  if (edgeType == PRGO_EDGE_PLANE) return 1;
  if (edgeType == PRGO_EDGE_LANDMARK) return first.type == PRGO_VERTEX_SE2 ? 2 : 3;
  return first.size;
}

int32_t measuredSize(int32_t edgeType, const PrgoVertex& first) {
  if (edgeType == PRGO_EDGE_PROJECTION) return 6;
  return edgeType == PRGO_EDGE_PLANE ? 7 : residualSize(edgeType, first);
}

void normaliseEstimate(int32_t vertexType, double* estimate) {
  if (vertexType == PRGO_VERTEX_SE2) estimate[2] = wrapped(estimate[2]);
  if (vertexType != PRGO_VERTEX_SE3) return;
  // Left alone where it is in range, so that a text that is read and written does not change.
  if (length(load3(estimate + 3)) <= std::numbers::pi) return;
  double q[4];
  quaternionOf(estimate + 3, q);
  rotationVectorOf(q, estimate + 3);
}

void moveEstimate(int32_t vertexType, int32_t size, double* x, const double* step) {
  if (vertexType == PRGO_VERTEX_SE2) {
    movePlanar(x, step);
  } else if (vertexType == PRGO_VERTEX_SE3) {
    moveSpatial(x, step);
  } else {
    for (int32_t i = 0; i < size; ++i) x[i] += step[i];
  }
}

State stateOf(int32_t vertexType, int32_t size, const double* estimate) {
  State state{};
  std::copy_n(estimate, size, state.x);
  if (vertexType == PRGO_VERTEX_SE2) {
    const SinCos heading = sinCosAny(estimate[2]);
    state.q[0] = heading.cosine, state.q[1] = heading.sine;
  } else if (vertexType == PRGO_VERTEX_SE3) {
    quaternionOf(estimate + 3, state.q);
    matrixOf(state.q, state.r);
  }
  return state;
}

void edgeResidual(const EdgeView& view, double* r) {
  double raw[kMaxSize];
  plain(view, raw, nullptr);
  whiten(view.root, view.rows, 1, raw, r);
}

double edgeEnergy(const EdgeView& view) {
  double r[kMaxSize], s = 0;
  edgeResidual(view, r);
  for (int32_t i = 0; i < view.rows; ++i) s += r[i] * r[i];
  // s - s is NaN unless s is finite.
  return robust(view.edge->kernel, view.edge->kernelWidth, s).rho(s) / 2 + (s - s);
}

void edgeLinear(const EdgeView& view, Linear& linear) {
  Linear raw;
  plain(view, raw.r, &raw);
  whiten(view.root, view.rows, 1, raw.r, linear.r);
  for (int k = 0; k < kEdgeEnds; ++k) {
    if (view.sizes[k] > 0) whiten(view.root, view.rows, view.sizes[k], raw.j[k], linear.j[k]);
  }
}

}  // namespace dax
