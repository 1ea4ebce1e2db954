// A bundle whose cameras stand in a row and look across it: each point is seen by neighbours only, so that the system of
// the cameras is a band.
#pragma once

#include "examples/optim/bundle.h"

namespace bench {

// In units of the distance of the points: cameras 0.1 apart see what lies within 0.25 to their left and right.
inline Bundle bundleRow(int cameras, int points) {
  constexpr double kSpacing = 0.1, kReach = 0.25;
  Bundle row(0, 0, 0);
  Random random(1);
  row.cameras = cameras, row.points = points;
  std::vector<double> centres;
  const auto turn = [&](std::vector<double>& x, const double* w, const double* centre) {
    double rotation[9];
    PRMT_SO3_Exp_f64(w, rotation);
    x.insert(x.end(), w, w + 3);
    for (int k = 0; k < 3; ++k) {
      x.push_back(-rotation[3 * k] * centre[0] - rotation[3 * k + 1] * centre[1] - rotation[3 * k + 2] * centre[2]);
    }
  };
  for (int i = 0; i < cameras; ++i) {
    double w[3], centre[3];
    for (int k = 0; k < 3; ++k) w[k] = 0.02 * random.normal(), centre[k] = 0.01 * random.normal();
    centre[0] += kSpacing * (i - 0.5 * cameras);
    turn(row.truth, w, centre);
    if (i > 1) {
      for (int k = 0; k < 3; ++k) w[k] += 0.005 * random.normal(), centre[k] += 0.005 * random.normal();
    }
    turn(row.start, w, centre);
  }
  for (int j = 0; j < points; ++j) {
    const double position[3] = {kSpacing * cameras * random.between(-0.5, 0.5), random.between(-0.25, 0.25),
                                random.between(0.8, 1.2)};
    for (const double p : position) row.truth.push_back(p), row.start.push_back(p + 0.005 * random.normal());
  }
  for (int j = 0; j < points; ++j) {
    const double* const point = row.point(row.truth.data(), j);
    for (int i = 0; i < cameras; ++i) {
      if (std::fabs(point[0] - kSpacing * (i - 0.5 * cameras)) > kReach) continue;
      double projected[2];
      Bundle::project(&row.truth[6 * size_t(i)], point, projected);
      for (double& p : projected) p += Bundle::kNoise * random.normal();
      row.link.push_back(i);
      row.seen.insert(row.seen.end(), projected, projected + 2);
    }
    row.starts.push_back(int32_t(row.link.size()));
  }
  return row;
}

}  // namespace bench
