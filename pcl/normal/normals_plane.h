// The plane through a set of points, by principal components.
#pragma once

#include <cstdint>

#include "dax3dpcl/normals.h"
#include "geometry/eigen3.h"

namespace dax {

// The covariance of `count` points {x, y, z}.
Symmetric3<float> covariance(const float* points, int32_t count);

// Normal and curvature of points with this covariance. False, and nothing is written, for points on a line, points that
// coincide, and eigenvalues beyond FLT_MAX.
bool fitNormal(const Symmetric3<float>& covariance, DAX3DPCL_NORMAL& normal);

}  // namespace dax
