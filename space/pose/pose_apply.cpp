#include "dax3d/pose.h"
#include "frame/tiles.h"
#include "space/pose/pose.h"
#include "space/pose/pose_apply_neon.h"

namespace dax {
namespace {

template <class T>
Motion<T> motionOf(const double* pose, bool hasTranslation) {
  Motion<T> motion{};
  for (int i = 0; i < 3; ++i) {
    for (int k = 0; k < 3; ++k) motion.rotation[3 * i + k] = static_cast<T>(pose[4 * i + k]);
    // -0 changes no number that is added to it.
    motion.translation[i] = hasTranslation ? static_cast<T>(pose[4 * i + 3]) : T{-0.0};
  }
  return motion;
}

template <class T>
DaxStatus applyPose(PoolThreads on, const double* pose, const T* points, int32_t n, T* result, bool isCloud) {
  DAX_REQUIRE(pose && points && result, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1, DAX_STS_BAD_PARAM);
  const Motion<T> motion = motionOf<T>(pose, isCloud);
  const bool isNeon = usesNeon(currentIsa());
  return runRows(on, n, [&](int32_t first, int32_t end) {
    const ptrdiff_t at = ptrdiff_t{3} * first;
    isNeon ? neon::movePoints(motion, points + at, end - first, result + at)
           : portable::movePoints(motion, points + at, end - first, result + at);
  });
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_POSE_ApplyCloud_f64(const double pose[16], const double* points, int32_t n, double* result) {
  return applyPose({}, pose, points, n, result, true);
}
DaxStatus DAX3D_POSE_ApplyCloud_f64_MT(void* pool, uint32_t threads, const double pose[16], const double* points,
                                       int32_t n, double* result) {
  return applyPose({pool, threads}, pose, points, n, result, true);
}
DaxStatus DAX3D_POSE_ApplyCloud_f32(const double pose[16], const float* points, int32_t n, float* result) {
  return applyPose({}, pose, points, n, result, true);
}
DaxStatus DAX3D_POSE_ApplyCloud_f32_MT(void* pool, uint32_t threads, const double pose[16], const float* points,
                                       int32_t n, float* result) {
  return applyPose({pool, threads}, pose, points, n, result, true);
}
DaxStatus DAX3D_POSE_ApplyNormals_f64(const double pose[16], const double* normals, int32_t n, double* result) {
  return applyPose({}, pose, normals, n, result, false);
}
DaxStatus DAX3D_POSE_ApplyNormals_f32(const double pose[16], const float* normals, int32_t n, float* result) {
  return applyPose({}, pose, normals, n, result, false);
}
