#include "graph/graph_scene.h"

#include <prmt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

#include "base/failure.h"
#include "base/random.h"
#include "base/text.h"

namespace dax::tool {
namespace {

using std::numbers::pi;
using Motion = std::array<double, 16>;
using Twist = std::array<double, 6>;

struct Drive {
  bool isSpatial = false;
  std::vector<Motion> poses;
  std::vector<std::pair<int, int>> measured;  // the first ones lead from each pose to the next
};

Motion motionOf(double x, double y, double z, double rx, double ry, double rz) {
  const Twist turn{0, 0, 0, rx, ry, rz};
  Motion motion;
  PRMT_SE3_Exp_f64(turn.data(), motion.data());
  motion[3] = x, motion[7] = y, motion[11] = z;
  return motion;
}

Motion compose(const Motion& a, const Motion& b) {
  Motion both;
  PRMT_SE3_Compose_f64(a.data(), b.data(), both.data());
  return both;
}

Motion inverse(const Motion& a) {
  Motion back;
  PRMT_SE3_Inverse_f64(a.data(), back.data());
  return back;
}

// Looks along the way to the next pose, upright.
Motion heading(double x, double y, double z, double dx, double dy) {
  return motionOf(x, y, z, 0, 0, std::atan2(dy, dx));
}

void addNeighbours(Drive& drive) {
  for (int k = 0; k + 1 < static_cast<int>(drive.poses.size()); ++k) drive.measured.emplace_back(k, k + 1);
}

Drive ring(int poses) {
  Drive drive;
  const double radius = poses / (2 * pi);
  for (int k = 0; k < poses; ++k) {
    const double t = 2 * pi * k / poses;
    drive.poses.push_back(heading(radius * std::cos(t), radius * std::sin(t), 0, -std::sin(t), std::cos(t)));
  }
  addNeighbours(drive);
  drive.measured.emplace_back(poses - 1, 0);
  return drive;
}

// A walk along the streets of a square town; places that were passed before are recognised.
Drive manhattan(int poses, Random& random) {
  Drive drive;
  const int side = std::max(3, static_cast<int>(std::sqrt(poses) / 1.6));
  std::map<std::pair<int, int>, int> last;
  std::vector<std::pair<int, int>> loops;
  int x = 0, y = 0, dx = 1, dy = 0;
  for (int k = 0; k < poses; ++k) {
    while (random.integer(0, 9) < 4 || std::abs(x + dx) > side || std::abs(y + dy) > side) {
      const int left = random.integer(0, 1) * 2 - 1;
      dx = std::exchange(dy, dx * left) * -left;
    }
    drive.poses.push_back(heading(x, y, 0, dx, dy));
    const auto [at, isNew] = last.try_emplace({x, y}, k);
    if (!isNew && at->second < k - 5) loops.emplace_back(at->second, k);
    at->second = k;
    x += dx, y += dy;
  }
  addNeighbours(drive);
  drive.measured.insert(drive.measured.end(), loops.begin(), loops.end());
  return drive;
}

// Laps on rising ramps; every tenth place is seen again from the lap above.
Drive garage(int poses) {
  Drive drive;
  drive.isSpatial = true;
  constexpr int kLap = 80;
  for (int k = 0; k < poses; ++k) {
    const double t = 2 * pi * k / kLap, x = 16 * std::cos(t), y = 9 * std::sin(t);
    drive.poses.push_back(heading(x, y, 3.0 * k / kLap, -16 * std::sin(t), 9 * std::cos(t)));
  }
  addNeighbours(drive);
  for (int k = kLap; k < poses; k += 10) drive.measured.emplace_back(k - kLap, k);
  return drive;
}

// Rows of a surface, one after the other; each pose is seen from the one a row before it.
template <class Surface>
Drive onSurface(int poses, const Surface& surface, bool isClosed) {
  Drive drive;
  drive.isSpatial = true;
  const int row = std::max(3, static_cast<int>(std::lround(std::sqrt(poses))));
  for (int k = 0; k < poses; ++k) {
    drive.poses.push_back(surface(2 * pi * k / row, (k + 0.5) / poses));
  }
  addNeighbours(drive);
  for (int k = row; k < poses; ++k) drive.measured.emplace_back(k - row, k);
  for (int k = 0; isClosed && k < row && poses >= 2 * row; ++k) drive.measured.emplace_back(poses - row + k, k);
  return drive;
}

Motion onSphere(double around, double along, double radius) {
  const double tilt = pi * (along - 0.5) * 0.96;
  return compose(motionOf(radius * std::cos(tilt) * std::cos(around), radius * std::cos(tilt) * std::sin(around),
                          radius * std::sin(tilt), 0, 0, around + pi / 2),
                 motionOf(0, 0, 0, tilt, 0, 0));
}

Motion onTorus(double around, double along, double radius) {
  const double turn = 2 * pi * along, reach = radius * (2 + std::cos(around));
  return compose(motionOf(reach * std::cos(turn), reach * std::sin(turn), radius * std::sin(around), 0, 0, turn),
                 motionOf(0, 0, 0, 0, around, 0));
}

Drive driveOf(const GraphScene& scene, Random& random) {
  const double radius = std::sqrt(scene.poses) / (2 * pi);
  if (scene.kind == "ring") return ring(scene.poses);
  if (scene.kind == "manhattan") return manhattan(scene.poses, random);
  if (scene.kind == "garage") return garage(scene.poses);
  if (scene.kind == "sphere") {
    return onSurface(
        scene.poses, [&](double u, double v) { return onSphere(u, v, radius); }, false);
  }
  if (scene.kind == "torus") {
    return onSurface(
        scene.poses, [&](double u, double v) { return onTorus(u, v, radius); }, true);
  }
  throw Failure(ExitStatus::kUsage, inQuotes(scene.kind) + " is not one of " + kGraphKinds);
}

double normal(Random& random) {
  const auto unit = [&] { return (static_cast<double>(random.bits() >> 11) + 0.5) * 0x1p-53; };
  const double size = std::sqrt(-2 * std::log(unit()));
  return size * std::cos(2 * pi * unit());
}

// The numbers of a vertex, or of a measurement.
void storeEstimate(const Motion& motion, bool isSpatial, double* to) {
  if (!isSpatial) {
    to[0] = motion[3], to[1] = motion[7], to[2] = std::atan2(motion[4], motion[0]);
    return;
  }
  const double rotation[9] = {motion[0], motion[1], motion[2], motion[4], motion[5],
                              motion[6], motion[8], motion[9], motion[10]};
  to[0] = motion[3], to[1] = motion[7], to[2] = motion[11];
  PRMT_SO3_Log_f64(rotation, to + 3);
}

}  // namespace

PoseGraph makeGraph(const GraphScene& scene) {
  Random random(static_cast<uint64_t>(scene.seed));
  const Drive drive = driveOf(scene, random);
  const auto count = static_cast<int32_t>(drive.poses.size());
  PoseGraph graph(count, static_cast<int32_t>(drive.measured.size()));
  Motion estimate = drive.poses[0];
  std::vector<PrgoEdge> edges;
  const auto addVertex = [&](int id) {
    PrgoVertex vertex{id, drive.isSpatial ? PRGO_VERTEX_SE3 : PRGO_VERTEX_SE2, 0, id == 0, 0, {}};
    storeEstimate(estimate, drive.isSpatial, vertex.estimate);
    graph.add(vertex);
  };
  addVertex(0);
  for (const auto& [from, to] : drive.measured) {
    const Motion truth = compose(inverse(drive.poses[static_cast<size_t>(from)]), drive.poses[static_cast<size_t>(to)]);
    Motion error = motionOf(0, 0, 0, 0, 0, scene.turn * normal(random));
    if (drive.isSpatial) {
      error = compose(error, motionOf(0, 0, 0, scene.turn * normal(random), scene.turn * normal(random), 0));
    }
    for (const size_t k : {3, 7, 11}) error[k] = drive.isSpatial || k != 11 ? scene.shift * normal(random) : 0;
    const Motion measured = compose(truth, error);
    PrgoEdge edge{{from, to}, PRGO_EDGE_RELATIVE, PRGO_KERNEL_NONE, 0, {}, {}};
    storeEstimate(measured, drive.isSpatial, edge.measurement);
    const int size = drive.isSpatial ? 6 : 3;
    for (int i = 0, at = 0; i < size; at += size - i++) {
      const double deviation = i < size / 2 || (size == 3 && i < 2) ? scene.shift : scene.turn;
      edge.information[at] = 1 / (deviation * deviation);
    }
    edges.push_back(edge);
    if (to != from + 1) continue;
    estimate = compose(estimate, measured);
    addVertex(to);
  }
  for (const PrgoEdge& edge : edges) graph.add(edge);
  return graph;
}

}  // namespace dax::tool
