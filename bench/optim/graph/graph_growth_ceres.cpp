// The same residuals with automatic derivatives, as pose graphs are usually given to the peer.
#include <ceres/ceres.h>

#include <unordered_map>
#include <vector>

#include "bench/optim/graph/graph_peer.h"
#include "bench/support/stopwatch.h"

namespace bench {
namespace {

template <int kSize>
Eigen::Matrix<double, kSize, kSize> rootOf(const PrgoEdge& edge) {
  Eigen::Matrix<double, kSize, kSize> information;
  for (int i = 0, at = 0; i < kSize; ++i) {
    for (int j = i; j < kSize; ++j) information(i, j) = information(j, i) = edge.information[at++];
  }
  return information.llt().matrixU();
}

Eigen::Quaterniond quaternionOf(const double* w) {
  const Eigen::Vector3d axis(w[0], w[1], w[2]);
  const double angle = axis.norm();
  return angle > 0 ? Eigen::Quaterniond(Eigen::AngleAxisd(angle, axis / angle)) : Eigen::Quaterniond::Identity();
}

struct SpatialCost {
  explicit SpatialCost(const PrgoEdge& edge)
      : root(rootOf<6>(edge)), t(edge.measurement), q(quaternionOf(edge.measurement + 3).conjugate()) {}

  template <class T>
  bool operator()(const T* ti, const T* qi, const T* tj, const T* qj, T* out) const {
    using Vector = Eigen::Matrix<T, 3, 1>;
    const Eigen::Map<const Eigen::Quaternion<T>> first(qi), second(qj);
    const Eigen::Quaternion<T> back = first.conjugate();
    const Vector way = back * (Eigen::Map<const Vector>(tj) - Eigen::Map<const Vector>(ti));
    const Eigen::Quaternion<T> measured = q.cast<T>();
    Eigen::Quaternion<T> error = measured * (back * second);
    if (error.w() < T(0)) error.coeffs() = -error.coeffs();
    Eigen::Matrix<T, 6, 1> r;
    r.template head<3>() = measured * (way - t.cast<T>());
    r.template tail<3>() = T(2) * error.vec();
    Eigen::Map<Eigen::Matrix<T, 6, 1>> whole(out);
    whole = root.cast<T>() * r;
    return true;
  }

  Eigen::Matrix<double, 6, 6> root;
  Eigen::Vector3d t;
  Eigen::Quaterniond q;
};

struct PlanarCost {
  explicit PlanarCost(const PrgoEdge& edge) : root(rootOf<3>(edge)), z(edge.measurement) {}

  template <class T>
  bool operator()(const T* x, const T* y, T* out) const {
    const T c = ceres::cos(x[2]), s = ceres::sin(x[2]), dx = y[0] - x[0], dy = y[1] - x[1];
    const T u = c * dx + s * dy - T(z[0]), v = c * dy - s * dx - T(z[1]);
    const double cz = std::cos(z[2]), sz = std::sin(z[2]), pi = 3.14159265358979323846;
    const T turn = y[2] - x[2] - T(z[2]);
    Eigen::Matrix<T, 3, 1> r(cz * u + sz * v, cz * v - sz * u, turn - 2 * pi * ceres::floor((turn + pi) / (2 * pi)));
    Eigen::Map<Eigen::Matrix<T, 3, 1>> whole(out);
    whole = root.cast<T>() * r;
    return true;
  }

  Eigen::Matrix3d root;
  Eigen::Vector3d z;
};

}  // namespace

PeerRun solveByPeer(const PrgoGraph& graph, double tolerance) {
  std::vector<double> x(7 * static_cast<size_t>(graph.vertexCount));
  std::unordered_map<int64_t, double*> at;
  ceres::Problem problem;
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const PrgoVertex& vertex = graph.vertices[v];
    double* const to = at[vertex.id] = x.data() + 7 * v;
    std::copy_n(vertex.estimate, 3, to);
    if (vertex.type == PRGO_VERTEX_SE3) Eigen::Map<Eigen::Quaterniond>(to + 3) = quaternionOf(vertex.estimate + 3);
  }
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    const PrgoEdge& edge = graph.edges[e];
    double *const i = at[edge.vertices[0]], *const j = at[edge.vertices[1]];
    if (graph.vertices[0].type == PRGO_VERTEX_SE2) {
      problem.AddResidualBlock(new ceres::AutoDiffCostFunction<PlanarCost, 3, 3, 3>(new PlanarCost(edge)), nullptr, i,
                               j);
    } else {
      problem.AddResidualBlock(new ceres::AutoDiffCostFunction<SpatialCost, 6, 3, 4, 3, 4>(new SpatialCost(edge)),
                               nullptr, i, i + 3, j, j + 3);
    }
  }
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const bool isSpatial = graph.vertices[v].type == PRGO_VERTEX_SE3;
    if (isSpatial) problem.SetManifold(x.data() + 7 * v + 3, new ceres::EigenQuaternionManifold);
    if (v > 0) continue;
    problem.SetParameterBlockConstant(x.data());
    if (isSpatial) problem.SetParameterBlockConstant(x.data() + 3);
  }
  ceres::Solver::Options options;
  options.linear_solver_type = ceres::SPARSE_NORMAL_CHOLESKY;
  options.num_threads = 1;
  options.logging_type = ceres::SILENT;
  options.max_num_iterations = 200;
  options.function_tolerance = options.parameter_tolerance = tolerance;
  options.gradient_tolerance = 0;
  ceres::Solver::Summary summary;
  const double time = cpuMilliseconds([&] { ceres::Solve(options, &problem, &summary); });
  return {time, summary.final_cost, static_cast<int>(summary.iterations.size()) - 1};
}

}  // namespace bench
