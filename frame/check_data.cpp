#include "daxi/check_data.h"

#include "frame/check.h"
#include "frame/pixel_types.h"

namespace dax {
namespace {

template <int kPlanes, class T>
DaxStatus checkPlanar(const T* const* planes, int32_t step, DaxiSize size) {
  DAX_REQUIRE(planes, DAX_STS_NULL_POINTER);
  for (int i = 0; i < kPlanes; ++i) DAX_REQUIRE(planes[i], DAX_STS_NULL_POINTER);
  return checkImage(planes[0], step, size);
}

}  // namespace
}  // namespace dax

#define DAX_CHECK_DATA(SUFFIX, T)                                                                \
  DaxStatus DAXI_CheckData_##SUFFIX##_C1R(const T* image, int32_t step, DaxiSize size) {         \
    return dax::checkImage(image, step, size);                                                   \
  }                                                                                              \
  DaxStatus DAXI_CheckData_##SUFFIX##_C3R(const T* image, int32_t step, DaxiSize size) {         \
    return dax::checkImage(image, step, size, 3);                                                \
  }                                                                                              \
  DaxStatus DAXI_CheckData_##SUFFIX##_P3R(const T* const* planes, int32_t step, DaxiSize size) { \
    return dax::checkPlanar<3>(planes, step, size);                                              \
  }
DAX_PIXEL_TYPES(DAX_CHECK_DATA)
#undef DAX_CHECK_DATA

DaxStatus DAXI_CheckData_8u_C2R(const uint8_t* image, int32_t step, DaxiSize size) {
  return dax::checkImage(image, step, size, 2);
}

DaxStatus DAXI_CheckData_8u_P2R(const uint8_t* const* planes, int32_t step, DaxiSize size) {
  return dax::checkPlanar<2>(planes, step, size);
}
