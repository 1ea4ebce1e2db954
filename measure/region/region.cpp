#include "daxi/region.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "geometry/convex_hull.h"
#include "geometry/enclose_box.h"
#include "measure/region/domain_hull.h"

static_assert(sizeof(DaxiPoint32s) == 8 && sizeof(DaxiRotatedBox) == 20);

namespace dax {
namespace {

// Within this bound differences of coordinates are at most D = 2^20, and the largest intermediate value of a comparison
// of rectangles, 32 D^6 = 2^125, fits 128 bits.
constexpr int32_t kMaxCoordinate = 1 << 19;

struct PointScratch {
  explicit PointScratch(int32_t count)
      : sorted(layout.add<DaxiPoint32s>(static_cast<uint64_t>(count))),
        hull(layout.add<DaxiPoint32s>(3 * static_cast<uint64_t>(count) + 1)) {}
  BufferLayout layout;
  BufferPiece<DaxiPoint32s> sorted;
  BufferPiece<DaxiPoint32s> hull;
};

DaxStatus checkDomain(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size, const void* points,
                      const void* result) {
  DAX_REQUIRE(domains && domains->runs && domain && points && result, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sidesFitRuns(size), DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

DaxStatus checkMode(int32_t mode) {
  DAX_REQUIRE(mode == DAXI_BOX_MIN_AREA || mode == DAXI_BOX_MIN_PERIMETER, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

bool isCoordinate(int32_t v) {
  return v >= -kMaxCoordinate && v <= kMaxCoordinate;
}

DaxStatus checkPoints(const DaxiPoint32s* points, int32_t count, int32_t mode, const void* box) {
  DAX_REQUIRE(points && box, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(checkMode(mode));
  for (int32_t i = 0; i < count; ++i)
    DAX_REQUIRE(isCoordinate(points[i].x) && isCoordinate(points[i].y), DAX_STS_DATA_RANGE);
  return DAX_STS_OK;
}

bool byRow(DaxiPoint32s a, DaxiPoint32s b) {
  return a.y != b.y ? a.y < b.y : a.x < b.x;
}

}  // namespace
}  // namespace dax

DaxStatus _DAXI_DomainConvexHull_ROI(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size,
                                     DaxiPoint32s* points, int32_t* count) {
  DAX_REQUIRE_OK(dax::checkDomain(domains, domain, size, points, count));
  *count = dax::domainHull(dax::viewDomain(*domains, *domain, size), points);
  return DAX_STS_OK;
}

DaxStatus DAXI_REG_EncloseBox(const DaxiPoint32s* points, int32_t count, int32_t mode, DaxiRotatedBox* box) {
  DAX_REQUIRE_OK(dax::checkPoints(points, count, mode, box));
  *box = dax::encloseBox(points, count, mode);
  return DAX_STS_OK;
}

DaxStatus _DAXI_PtEncloseBoxBufferSize_32s(int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(count >= 1, DAX_STS_BAD_PARAM);
  return dax::PointScratch(count).layout.store(bytes);
}

DaxStatus _DAXI_PtEncloseBox_32s(const DaxiPoint32s* points, int32_t count, int32_t mode, DaxiRotatedBox* box,
                                 void* buffer) {
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkPoints(points, count, mode, box));
  const dax::PointScratch at(count);
  DaxiPoint32s *const sorted = at.sorted.in(buffer), *const hull = at.hull.in(buffer);
  std::copy(points, points + count, sorted);
  std::sort(sorted, sorted + count, dax::byRow);
  *box = dax::encloseBox(hull, dax::sortedPointsHull(sorted, count, hull), mode);
  return DAX_STS_OK;
}

DaxStatus _DAXI_DomainEncloseBox(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size, int32_t mode,
                                 DaxiPoint32s* points, DaxiRotatedBox* box) {
  DAX_REQUIRE_OK(dax::checkDomain(domains, domain, size, points, box));
  DAX_REQUIRE_OK(dax::checkMode(mode));
  const int32_t count = dax::domainHull(dax::viewDomain(*domains, *domain, size), points);
  *box = dax::encloseBox(points, count, mode);
  return DAX_STS_OK;
}

DaxStatus _DAXI_DomainRectangularity(const DaxiDomainList* domains, const DaxiDomain* domain, DaxiSize size,
                                     DaxiPoint32s* points, float* rectangularity) {
  DAX_REQUIRE_OK(dax::checkDomain(domains, domain, size, points, rectangularity));
  const dax::DomainView view = dax::viewDomain(*domains, *domain, size);
  uint64_t pixels = 0;
  dax::forEachRun(view, [&](dax::RunSpan run) { pixels += static_cast<uint64_t>(run.length()); });
  const DaxiRotatedBox box = dax::encloseBox(points, dax::domainHull(view, points), DAXI_BOX_MIN_AREA);
  *rectangularity = dax::rectangularity(static_cast<float>(pixels), box);
  return DAX_STS_OK;
}
