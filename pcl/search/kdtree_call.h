// Arguments of the searches in a KD-tree of either generation. A tree without a root is empty.
#pragma once

#include <cfloat>
#include <cstdint>

namespace dax {

struct KdNearestCall {
  const float* queries;
  int32_t queryCount;  // rows
  int32_t k;
  uint32_t* indices;
  float* distances;
  float limit = FLT_MAX;  // only points at a smaller squared distance are found
};

struct KdRadiusCall {
  const float* query;
  int32_t maxResults;
  uint32_t* indices;
  float* distances;
  float radius;
  const uint8_t* mask;  // null, or 0 for points to skip
};

}  // namespace dax
