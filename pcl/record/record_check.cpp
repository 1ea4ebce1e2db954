#include "dax3dpcl/record_check.h"

#include <cfloat>
#include <cmath>
#include <type_traits>

#include "dax3dpcl/cloud.h"
#include "frame/check.h"

namespace dax {
namespace {

constexpr float kTolerance = 0.001f;        // of rotations and of transforms close to the identity
constexpr float kOne = 1.0f + FLT_EPSILON;  // limit of quaternions

// Limits are 32-bit constants for doubles too, unless stated otherwise (dax3dpcl/record_check.h).
template <class T>
bool within(T value, T limit) {
  return value >= -limit && value <= limit;
}

template <class T>
DaxStatus checkIntrinsics(T fx, T fy, T cx, T cy) {
  constexpr T kMin = FLT_EPSILON;
  DAX_REQUIRE(fx >= kMin && fy >= kMin, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cx >= kMin && cy >= kMin, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkMatrix(const T* matrix) {
  DAX_REQUIRE(matrix, DAX_STS_NULL_POINTER);
  return checkIntrinsics(matrix[0], matrix[4], matrix[2], matrix[5]);
}

template <class T>
DaxStatus checkBox(const T* box, T minSize, T fullTurn) {
  DAX_REQUIRE(box, DAX_STS_NULL_POINTER);
  for (int i = 3; i < 6; ++i) DAX_REQUIRE(box[i] >= minSize, DAX_STS_BAD_PARAM);
  for (int i = 6; i < 9; ++i) DAX_REQUIRE(within(box[i], fullTurn), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
T columnProduct(const T* m, int i, int j) {
  return m[i] * m[j] + m[4 + i] * m[4 + j] + m[8 + i] * m[8 + j];
}

template <class T>
DaxStatus checkTransform(const T* m, DaxStatus code) {
  DAX_REQUIRE(m, DAX_STS_NULL_POINTER);
  for (int i = 0; i < 3; ++i) {
    const int next = (i + 1) % 3;
    DAX_REQUIRE(within<T>(columnProduct(m, i, next), kTolerance), code);
    DAX_REQUIRE(within<T>(columnProduct(m, i, i) - 1, kTolerance), code);
  }
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkIdentity(const T* m) {
  for (int i = 0; i < 4; ++i) {
    DAX_REQUIRE(within(static_cast<float>(m[i * 5] - 1), kTolerance), DAX_STS_FAILURE);
  }
  for (int i = 0; i < 3; ++i) DAX_REQUIRE(within(static_cast<float>(m[i * 4 + 3]), kTolerance), DAX_STS_FAILURE);
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkQuaternion(const T* q) {
  DAX_REQUIRE(q, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(within<T>(q[0], kOne), DAX_STS_FAILURE);
  DAX_REQUIRE(q[1] * q[1] + q[2] * q[2] + q[3] * q[3] <= T{kOne}, DAX_STS_FAILURE);
  return DAX_STS_OK;
}

template <class T>
DaxStatus checkNormal(T nx, T ny, T nz) {
  constexpr T kMin = FLT_EPSILON;
  DAX_REQUIRE(!(within(nx, kMin) && within(ny, kMin) && within(nz, kMin)), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

constexpr DaxStatus kNotOrthonormal32f = 0x1000030e;

}  // namespace
}  // namespace dax

DaxStatus DAX3DPCL_UTILS_Check_Cloud3D_32f(const DAX3DPCL_CLOUD3D* cloud, int32_t maxCount) {
  DAX_REQUIRE(cloud && cloud->points, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(cloud->count >= 1 && cloud->count <= maxCount, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cloud->count <= cloud->capacity, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Check_Intrins_32f(const float* matrix) {
  return dax::checkMatrix(matrix);
}

DaxStatus DAX3DPCL_UTILS_Check_Intrins_64f(const double* matrix) {
  return dax::checkMatrix(matrix);
}

DaxStatus DAX3DPCL_UTILS_Check_CamIntrins(const double* intrinsics) {
  DAX_REQUIRE(intrinsics, DAX_STS_NULL_POINTER);
  return dax::checkIntrinsics(intrinsics[0], intrinsics[1], intrinsics[2], intrinsics[3]);
}

DaxStatus DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins(const DAX3D_RANGE_V4* record) {
  DAX_REQUIRE(record, DAX_STS_NULL_POINTER);
  const DAX3D_VECTOR_32F &scale = record->scale, &offset = record->offset;
  DAX_REQUIRE(scale.x >= FLT_EPSILON && scale.y >= FLT_EPSILON && scale.z >= FLT_EPSILON, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::signbit(offset.x) && std::signbit(offset.y), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus DAX3DPCL_UTILS_Check_Box3d_32f(const float* box) {
  return dax::checkBox(box, FLT_EPSILON, 6.2831855f);
}

DaxStatus DAX3DPCL_UTILS_Check_Box3d_64f(const double* box) {
  return dax::checkBox(box, DBL_EPSILON, 6.283185307179586);
}

DaxStatus DAX3DPCL_UTILS_Check_SE3_32f(const float* matrix) {
  return dax::checkTransform(matrix, dax::kNotOrthonormal32f);
}

DaxStatus DAX3DPCL_UTILS_Check_SE3_64f(const double* matrix) {
  return dax::checkTransform(matrix, DAX_STS_FAILURE);
}

DaxStatus DAX3DPCL_UTILS_Check_EyeSE3_32f(const float* matrix) {
  DAX_REQUIRE_OK(DAX3DPCL_UTILS_Check_SE3_32f(matrix));
  return dax::checkIdentity(matrix);
}

DaxStatus DAX3DPCL_UTILS_Check_EyeSE3_64f(const double* matrix) {
  DAX_REQUIRE_OK(DAX3DPCL_UTILS_Check_SE3_64f(matrix));
  return dax::checkIdentity(matrix);
}

DaxStatus DAX3DPCL_UTILS_Check_Quat_32f(const float* quaternion) {
  return dax::checkQuaternion(quaternion);
}

DaxStatus DAX3DPCL_UTILS_Check_Quat_64f(const double* quaternion) {
  return dax::checkQuaternion(quaternion);
}

DaxStatus DAX3DPCL_UTILS_Check_Normal_32f(float nx, float ny, float nz) {
  return dax::checkNormal(nx, ny, nz);
}

DaxStatus DAX3DPCL_UTILS_Check_Normal_64f(double nx, double ny, double nz) {
  return dax::checkNormal(nx, ny, nz);
}
