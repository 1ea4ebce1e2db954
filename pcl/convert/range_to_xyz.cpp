#include "pcl/convert/range_to_xyz.h"

#include <cfloat>
#include <cmath>
#include <type_traits>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "pcl/convert/range_to_xyz_neon.h"

namespace dax {
namespace {

template <class Formula>
using RowOf = std::conditional_t<std::is_same_v<Formula, GridFormula>, portable::GridRow, portable::PinholeRow>;

}  // namespace

template <class T, class Formula>
void rangeToXyz(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, float** points,
                DAX3DPCL_CLOUD_SIZE* size, int32_t isa) {
  using Row = RowOf<Formula>;
  const auto organizedRow = usesNeon(isa) ? neon::organizedRow<T, Row> : portable::organizedRow<T, Row>;
  const auto packedRow = usesNeon(isa) ? neon::packedRow<T, Row> : portable::packedRow<T, Row>;
  const Formula formula(map->params);
  float* const first = static_cast<float*>(buffer);
  float* end = first;
  const T* values = static_cast<const T*>(map->values);
  const uint8_t* mask = map->mask;
  for (int32_t r = 0; r < map->rows; ++r, values += map->cols, mask += map->cols) {
    const Row row(formula, r);
    if (organized == 1) {
      organizedRow(row, values, mask, 0, map->cols, end);
      end += ptrdiff_t{3} * map->cols;
    } else {
      end = packedRow(row, values, mask, 0, map->cols, end);
    }
  }
  *points = first;
  *size = organized == 1 ? DAX3DPCL_CLOUD_SIZE{map->cols, map->rows}
                         : DAX3DPCL_CLOUD_SIZE{static_cast<int32_t>((end - first) / 3), 1};
}

namespace {

struct XyzResult {
  explicit XyzResult(DaxiSize size) { layout.add<float[3]>(pixelsOf(size)); }
  BufferLayout layout;
};

DaxStatus resultSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  return XyzResult(size).layout.store(bytes);
}

template <class Formula>
DaxStatus checkParams(const float* params) {
  if constexpr (std::is_same_v<Formula, GridFormula>) {
    for (int i = 0; i < 3; ++i) DAX_REQUIRE(std::fabs(params[i]) >= FLT_MIN, DAX_STS_BAD_PARAM);
  } else {
    DAX_REQUIRE(params[0] > FLT_EPSILON, DAX_STS_BAD_PARAM);
    DAX_REQUIRE(params[2] > 0 && params[3] > 0, DAX_STS_BAD_PARAM);
  }
  return DAX_STS_OK;
}

template <class T, class Formula>
DaxStatus convert(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, float** points,
                  DAX3DPCL_CLOUD_SIZE* size) {
  DAX_REQUIRE(map && map->values && map->mask, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(buffer && points && size, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(map->cols >= 1 && map->rows >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkParams<Formula>(map->params));
  rangeToXyz<T, Formula>(map, buffer, organized, points, size, currentIsa());
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_XYZ(FORM, SUFFIX, FORMULA, T)                                                                           \
  template void dax::rangeToXyz<T, dax::FORMULA>(const DAX3DPCL_RANGE_MAP*, void*, int32_t, float**,                \
                                                 DAX3DPCL_CLOUD_SIZE*, int32_t);                                    \
  uint64_t _DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_ResultSize_##SUFFIX(DaxiSize size) {                                 \
    return dax::XyzResult(size).layout.total();                                                                     \
  }                                                                                                                 \
  void _DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_##SUFFIX(const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, \
                                                    float** points, DAX3DPCL_CLOUD_SIZE* size) {                    \
    dax::rangeToXyz<T, dax::FORMULA>(map, buffer, organized, points, size, dax::currentIsa());                      \
  }                                                                                                                 \
  DaxStatus DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_ResultSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {                \
    return dax::resultSize(size, bytes);                                                                            \
  }                                                                                                                 \
  DaxStatus DAX3DPCL_PREP_CONVERT_##FORM##2XYZ_##SUFFIX(                                                            \
      const DAX3DPCL_RANGE_MAP* map, void* buffer, int32_t organized, float** points, DAX3DPCL_CLOUD_SIZE* size) {  \
    return dax::convert<T, dax::FORMULA>(map, buffer, organized, points, size);                                     \
  }
DAX_XYZ(Range, 16s32f, GridFormula, int16_t)
DAX_XYZ(Range, 32s32f, GridFormula, int32_t)
DAX_XYZ(Range, 32f32f, GridFormula, float)
DAX_XYZ(Depth, 16s32f, PinholeFormula, int16_t)
DAX_XYZ(Depth, 32s32f, PinholeFormula, int32_t)
DAX_XYZ(Depth, 32f32f, PinholeFormula, float)
#undef DAX_XYZ
