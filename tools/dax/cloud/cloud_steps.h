// Operations on clouds: neighbours, normals, thinning.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/library_call.h"
#include "base/workers.h"
#include "cloud/cloud.h"
#include "dax3dpcl/range_record.h"

namespace dax::tool {

inline constexpr int kMinNeighbours = 4;
inline constexpr int kMaxNeighbours = 256;
inline constexpr uint32_t kMaxCloudThreads = 64;  // that share a search

// The neighbours of the points first, first + 1, ...: a row of k for each, in ascending order of squared distance. The
// point itself comes first, unless others coincide with it.
struct Neighbours {
  size_t first;
  int found;  // of the k of each row
  std::span<const uint32_t> indices;
  std::span<const float> distances;
};

// Searches a cloud in blocks of points, with a counter on the terminal. Throws Failure(kRefused).
void forNeighbours(const Cloud& cloud, int k, const Workers& workers,
                   const std::function<void(const Neighbours& block)>& use);

struct NormalSettings {
  int k = 16;
  float radius = std::numeric_limits<float>::infinity();
  std::optional<DAX3D_VECTOR_32F> viewpoint;  // normals are turned towards it
};

// Sets the normals of a cloud. Where none can be estimated it is 0, 0, 1, with curvature 0; returns the number of
// those.
size_t estimateNormals(Cloud& cloud, const NormalSettings& settings, const Workers& workers);

// Median distance to the nearest other place, from at most 4096 of the points; 0 if all points coincide.
double usualSpacing(const Cloud& cloud);

// One point per cell, at the cloud's origin; normals, fields and the grid are left out. Throws Failure(kRefused) for more than 2^31 - 1 cells.
Cloud downsample(const Cloud& cloud, const DAX3D_VECTOR_32F& leaf);

// Minimum and maximum coordinates, from the origin.
struct Box {
  float low[3];
  float high[3];
};
Box boxOf(const Cloud& cloud);

}  // namespace dax::tool
