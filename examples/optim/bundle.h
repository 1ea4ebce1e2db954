// Bundle adjustment: cameras on a ring look inwards at points in a ball. Parameters are those of the cameras, (w, t)
// with X' = Exp(w) X + t, then the points. Residuals are the distances of projected and seen positions in pixels,
// divided by the noise; nine more hold the first camera and the second one's position, so that the scene cannot drift.
#pragma once

#include <prmt.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "random.h"

struct Bundle {
  static constexpr double kFocal = 1000, kNoise = 0.5, kHold = 1e4;

  // Row by row.
  struct Linear {
    double e[2], byCamera[12], byPoint[6];
  };

  Bundle(int cameraCount, int pointCount, double outliers, uint64_t seed = 1)
      : cameras(cameraCount), points(pointCount) {
    Random random(seed);
    for (int i = 0; i < cameras; ++i) {
      // About the vertical axis; half a turn makes the camera look inwards.
      const double turn[3] = {0, 2 * 3.14159265358979 * i / cameras, 0},
                   tilt[3] = {0.1 * random.normal(), 0, 0.1 * random.normal()};
      double rotation[9], tilted[9], w[3];
      PRMT_SO3_Exp_f64(turn, rotation);
      PRMT_SO3_Exp_f64(tilt, tilted);
      PRMT_SO3_Compose_f64(tilted, rotation, rotation);
      PRMT_SO3_Log_f64(rotation, w);
      const double t[3] = {0.2 * random.normal(), 0.2 * random.normal(), 10 + random.normal()};
      truth.insert(truth.end(), w, w + 3);
      truth.insert(truth.end(), t, t + 3);
    }
    for (int j = 0; j < 3 * points; ++j) truth.push_back(random.between(-2.5, 2.5));
    starts.push_back(0);
    for (int j = 0; j < points; ++j) {
      for (int i = 0; i < cameras; ++i) {
        if (random.uniform() > 0.6) continue;
        double projected[2];
        project(&truth[6 * size_t(i)], point(truth.data(), j), projected);
        const bool outlier = random.uniform() < outliers;
        for (double& p : projected) p += outlier ? random.between(-200, 200) : kNoise * random.normal();
        link.push_back(i);
        seen.insert(seen.end(), projected, projected + 2);
      }
      starts.push_back(int32_t(link.size()));
    }
    start = truth;
    for (size_t k = 9; k < start.size(); ++k) start[k] += (k < 6 * size_t(cameras) ? 0.01 : 0.05) * random.normal();
  }

  int32_t parameters() const { return 6 * cameras + 3 * points; }
  int32_t residualCount() const { return int32_t(seen.size()) + 9; }
  PrmtHblkShape shape() const { return {6, cameras, 3, points, starts.data(), link.data()}; }
  const double* point(const double* x, int j) const { return x + 6 * cameras + 3 * j; }
  // The k-th fixed parameter: six of camera 0, the position of camera 1.
  static int held(int k) { return k < 6 ? k : k + 3; }

  static void transform(const double* rotation, const double* t, const double* point, double* to) {
    for (int k = 0; k < 3; ++k) {
      to[k] = rotation[3 * k] * point[0] + rotation[3 * k + 1] * point[1] + rotation[3 * k + 2] * point[2] + t[k];
    }
  }
  static void project(const double* camera, const double* point, double* to) {
    double rotation[9], p[3];
    PRMT_SO3_Exp_f64(camera, rotation);
    transform(rotation, camera + 3, point, p);
    to[0] = kFocal * p[0] / p[2], to[1] = kFocal * p[1] / p[2];
  }
  static void residual(const double* rotation, const double* camera, const double* point, const double* seen,
                       double* e) {
    double p[3];
    transform(rotation, camera + 3, point, p);
    e[0] = (kFocal * p[0] / p[2] - seen[0]) / kNoise, e[1] = (kFocal * p[1] / p[2] - seen[1]) / kNoise;
  }
  // Exp(w) turns on the right: d(R X + t) = -R [X] dw + dt.
  static void linearise(const double* rotation, const double* camera, const double* point, const double* seen,
                        Linear& out) {
    double p[3];
    transform(rotation, camera + 3, point, p);
    const double scale = kFocal / kNoise, inverse = 1 / p[2], u = p[0] * inverse, v = p[1] * inverse;
    out.e[0] = scale * u - seen[0] / kNoise, out.e[1] = scale * v - seen[1] / kNoise;
    const double s = scale * inverse;
    const double by[2][3] = {{s, 0, -s * u}, {0, s, -s * v}};
    for (int r = 0; r < 2; ++r) {
      double g[3];
      for (int c = 0; c < 3; ++c) {
        g[c] = by[r][0] * rotation[c] + by[r][1] * rotation[3 + c] + by[r][2] * rotation[6 + c];
        out.byPoint[3 * r + c] = g[c];
        out.byCamera[6 * r + 3 + c] = by[r][c];
      }
      // -g [X]
      out.byCamera[6 * r] = g[2] * point[1] - g[1] * point[2];
      out.byCamera[6 * r + 1] = g[0] * point[2] - g[2] * point[0];
      out.byCamera[6 * r + 2] = g[1] * point[0] - g[0] * point[1];
    }
  }

  // Calls visit(camera, point, link, rotation of the camera) for every observation.
  template <class Visit>
  void forEachLink(const double* x, const Visit& visit) {
    rotations.resize(9 * size_t(cameras));
    for (int i = 0; i < cameras; ++i) PRMT_SO3_Exp_f64(x + 6 * i, &rotations[9 * size_t(i)]);
    for (int j = 0; j < points; ++j) {
      for (int32_t k = starts[size_t(j)]; k < starts[size_t(j) + 1]; ++k) {
        const int i = link[size_t(k)];
        visit(i, j, k, &rotations[9 * size_t(i)]);
      }
    }
  }

  static int32_t residuals(const double* x, int32_t, int32_t, void* user, double* r) {
    Bundle& b = *static_cast<Bundle*>(user);
    b.forEachLink(x, [&](int i, int j, int32_t k, const double* rotation) {
      residual(rotation, x + 6 * i, b.point(x, j), &b.seen[2 * size_t(k)], r + 2 * size_t(k));
    });
    for (int k = 0; k < 9; ++k) r[b.seen.size() + size_t(k)] = kHold * (x[held(k)] - b.truth[size_t(held(k))]);
    return 0;
  }

  static int32_t energy(const double* x, int32_t, int32_t, void* user, double* energy) {
    Bundle& b = *static_cast<Bundle*>(user);
    double sum = 0;
    b.forEachLink(x, [&](int i, int j, int32_t k, const double* rotation) {
      double e[2];
      residual(rotation, x + 6 * i, b.point(x, j), &b.seen[2 * size_t(k)], e);
      sum += 0.5 * (e[0] * e[0] + e[1] * e[1]);
    });
    for (int k = 0; k < 9; ++k) sum += 0.5 * std::pow(kHold * (x[held(k)] - b.truth[size_t(held(k))]), 2);
    *energy = sum;
    return 0;
  }

  static int32_t update(double* x, const double* step, int32_t n, void* user) {
    const Bundle& b = *static_cast<const Bundle*>(user);
    for (int i = 0; i < b.cameras; ++i) PRMT_SO3_Update_f64(x + 6 * i, step + 6 * i);
    for (int32_t k = 0; k < n; ++k) {
      if (k >= 6 * b.cameras || k % 6 >= 3) x[k] += step[k];
    }
    return 0;
  }

  // Blocks of the normal equations, for the variant of two groups.
  static int32_t blocks(const double* x, int32_t, int32_t, void* user, PrmtHblk* h) {
    Bundle& b = *static_cast<Bundle*>(user);
    const int side = 6 * b.cameras;
    b.forEachLink(x, [&](int i, int j, int32_t k, const double* rotation) {
      Linear l;
      linearise(rotation, x + 6 * i, b.point(x, j), &b.seen[2 * size_t(k)], l);
      double* const a = h->a + size_t(6 * i) * size_t(side + 1);
      double* const v = h->b + 9 * size_t(j);
      double* const w = h->w + 18 * size_t(k);
      for (int r = 0; r < 6; ++r) {
        for (int c = 0; c <= r; ++c)
          a[r * side + c] += l.byCamera[r] * l.byCamera[c] + l.byCamera[6 + r] * l.byCamera[6 + c];
        for (int c = 0; c < 3; ++c) w[3 * r + c] += l.byCamera[r] * l.byPoint[c] + l.byCamera[6 + r] * l.byPoint[3 + c];
        h->rhsA[6 * i + r] -= l.byCamera[r] * l.e[0] + l.byCamera[6 + r] * l.e[1];
      }
      for (int r = 0; r < 3; ++r) {
        for (int c = 0; c <= r; ++c) v[3 * r + c] += l.byPoint[r] * l.byPoint[c] + l.byPoint[3 + r] * l.byPoint[3 + c];
        h->rhsB[3 * j + r] -= l.byPoint[r] * l.e[0] + l.byPoint[3 + r] * l.e[1];
      }
    });
    for (int k = 0; k < 9; ++k) {
      const int at = held(k);
      h->a[size_t(at) * size_t(side + 1)] += kHold * kHold;
      h->rhsA[at] -= kHold * kHold * (x[at] - b.truth[size_t(at)]);
    }
    return 0;
  }

  // The sparse Jacobian, for the variants with residuals.
  static int32_t jacobian(const double* x, int32_t n, int32_t, void* user, PrmtMsp* to) {
    Bundle& b = *static_cast<Bundle*>(user);
    if (to->start[n] == 0) {
      if (const int32_t status = b.setPattern(to)) return status;
    }
    b.forEachLink(x, [&](int i, int j, int32_t k, const double* rotation) {
      Linear l;
      linearise(rotation, x + 6 * i, b.point(x, j), &b.seen[2 * size_t(k)], l);
      PRMT_MSP_AddBlk_tpl_f64(to, 2 * k, 6 * i, l.byCamera, 2, 6, 6);
      PRMT_MSP_AddBlk_tpl_f64(to, 2 * k, 6 * b.cameras + 3 * j, l.byPoint, 2, 3, 3);
    });
    for (int k = 0; k < 9; ++k) PRMT_MSP_AddEle_tpl_f64(to, int32_t(b.seen.size()) + k, held(k), kHold);
    return 0;
  }
  int64_t elements() const { return 18 * int64_t(link.size()) + 9; }

  // Median distance of the points from the true ones: a point seen by few cameras may be lost to outliers.
  double pointError(const double* x) const {
    std::vector<double> distances;
    for (int j = 0; j < points; ++j) {
      const double *const p = point(x, j), *const q = point(truth.data(), j);
      distances.push_back(std::hypot(p[0] - q[0], std::hypot(p[1] - q[1], p[2] - q[2])));
    }
    std::nth_element(distances.begin(), distances.begin() + points / 2, distances.end());
    return distances[size_t(points / 2)];
  }

  int cameras, points;
  std::vector<double> truth, start, seen;
  std::vector<int32_t> starts, link;  // links of each point, and their cameras
  std::vector<double> rotations;

 private:
  int32_t setPattern(PrmtMsp* to) const {
    std::vector<int32_t> rows, cols;
    for (int j = 0; j < points; ++j) {
      for (int32_t k = starts[size_t(j)]; k < starts[size_t(j) + 1]; ++k) {
        for (int r = 0; r < 2; ++r) {
          for (int c = 0; c < 6; ++c) rows.push_back(2 * k + r), cols.push_back(6 * link[size_t(k)] + c);
          for (int c = 0; c < 3; ++c) rows.push_back(2 * k + r), cols.push_back(6 * cameras + 3 * j + c);
        }
      }
    }
    for (int k = 0; k < 9; ++k) rows.push_back(int32_t(seen.size()) + k), cols.push_back(held(k));
    return PRMT_MSP_SetPattern_f64(to, int64_t(rows.size()), rows.data(), cols.data());
  }
};
