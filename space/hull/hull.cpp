#include "dax3d/hull.h"

#include "space/hull/hull_builder.h"

namespace dax {
namespace {

template <class T>
DaxStatus hullOf(const T* points, int32_t n, int32_t* triangles, int32_t* count, void* buffer) {
  DAX_REQUIRE(points && triangles && count && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4 && n <= kMaxHullPoints, DAX_STS_BAD_PARAM);
  HullBuilder hull(HullMemory(n), buffer, n);
  DAX_REQUIRE(hull.load(points), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(hull.build(), DAX_STS_DEGENERATE);
  *count = hull.writeTriangles(triangles);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_HULL_BufferSize(int32_t n, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4 && n <= kMaxHullPoints, DAX_STS_BAD_PARAM);
  return HullMemory(n).layout.store(bytes);
}
DaxStatus DAX3D_HULL_f64(const double* points, int32_t n, int32_t* triangles, int32_t* count, void* buffer) {
  return hullOf(points, n, triangles, count, buffer);
}
DaxStatus DAX3D_HULL_f32(const float* points, int32_t n, int32_t* triangles, int32_t* count, void* buffer) {
  return hullOf(points, n, triangles, count, buffer);
}
