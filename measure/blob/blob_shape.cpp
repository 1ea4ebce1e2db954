// Features of a domain from its runs and the corners of its hull.
#include "daxi/blob_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "frame/check.h"
#include "frame/math.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "measure/region/domain_hull.h"

static_assert(sizeof(DaxiBlobShape) == 40);

namespace dax {
namespace {

// Number of pairs of runs in rows one below the other that touch; `reach` is 1 where corners join, else 0.
int64_t touchingRuns(const DomainView& view, int32_t reach) {
  const auto next = [&](const DomainRun* run) { return run->next == DAXI_RUN_END ? nullptr : view.runs + run->next; };
  int64_t pairs = 0;
  const DomainRun* above = &view.domain->head;
  for (const DomainRun* run = above; run; run = next(run)) {
    while (above->row + 1 < run->row || (above->row + 1 == run->row && above->end + reach < run->start)) {
      above = next(above);
    }
    for (const DomainRun* each = above; each->row + 1 == run->row && each->start <= run->end + reach;
         each = next(each)) {
      ++pairs;
    }
  }
  return pairs;
}

// Sum of the pixels' features.
struct PixelSums {
  int64_t runs = 0, count = 0, x = 0, y = 0, gray = 0;
  uint8_t minGray = 255, maxGray = 0;

  void add(RunSpan run, const uint8_t* row) {
    const int64_t length = run.length();
    ++runs;
    count += length;
    x += (int64_t{run.start} + run.end) * length / 2;
    y += run.row * length;
    for (int32_t i = run.start; i <= run.end; ++i) {
      gray += row[i];
      minGray = std::min(minGray, row[i]);
      maxGray = std::max(maxGray, row[i]);
    }
  }
};

// sqrt(1 - l2 / l1) of the eigenvalues l1 >= l2 of the second moments, which differ by sqrt((sxx - syy)^2 + 4 sxy^2).
float eccentricity(const DomainView& view, const PixelSums& sums) {
  const double cx = static_cast<double>(sums.x) / static_cast<double>(sums.count);
  const double cy = static_cast<double>(sums.y) / static_cast<double>(sums.count);
  double sxx = 0, sxy = 0, syy = 0;
  forEachWholeRun(view, [&](RunSpan run) {
    const double n = run.end - run.start, length = n + 1;
    const double dx = run.start + n / 2 - cx, dy = run.row - cy;  // of the middle of the run
    sxx += (dx * dx + n * (n + 2) / 12) * length;
    sxy += dx * dy * length;
    syy += dy * dy * length;
  });
  const double difference = std::sqrt((sxx - syy) * (sxx - syy) + 4 * sxy * sxy);
  const double larger = (sxx + syy + difference) / 2;
  return larger > 0 ? static_cast<float>(std::sqrt(std::min(difference / larger, 1.0))) : 0.0f;
}

int64_t cross(DaxiPoint32s a, DaxiPoint32s b, DaxiPoint32s c) {
  return int64_t{b.x - a.x} * (c.y - a.y) - int64_t{b.y - a.y} * (c.x - a.x);
}

// Area by Gauss's formula, and the pixels on the outline: with Pick's theorem the number of pixels in a polygon of pixel
// centres is area + outline / 2 + 1.
int64_t pixelsInHull(const DaxiPoint32s* hull, int32_t n) {
  int64_t twiceArea = 0, outline = 0;
  for (int32_t i = 0; i < n; ++i) {
    const DaxiPoint32s a = hull[i], b = hull[(i + 1) % n];
    twiceArea += cross(hull[0], a, b);
    outline += std::gcd(b.x - a.x, b.y - a.y);
  }
  return (twiceArea + outline) / 2 + 1;
}

// Diameters by rotating calipers (Shamos 1978): of every edge the furthest corner, which only advances.
class Feret {
 public:
  Feret(const DaxiPoint32s* hull, int32_t n) {
    if (n == 2) offer(hull[0], hull[1]);
    if (n < 3) return;
    min_ = HUGE_VAL;
    const auto at = [&](int32_t i) { return hull[i % n]; };
    for (int32_t i = 0, far = 1; i < n; ++i) {
      const DaxiPoint32s a = at(i), b = at(i + 1);
      while (cross(a, b, at(far + 1)) > cross(a, b, at(far))) ++far;
      min_ = std::min(min_, static_cast<double>(cross(a, b, at(far))) / std::sqrt(squared(a, b)));
      offer(a, at(far)), offer(b, at(far));
      if (cross(a, b, at(far + 1)) == cross(a, b, at(far))) offer(a, at(far + 1)), offer(b, at(far + 1));
    }
  }

  void write(DaxiBlobShape& shape) const {
    shape.maxFeret = static_cast<float>(std::sqrt(max_));
    shape.minFeret = static_cast<float>(min_);
    // Of the two directions the one to the right, or down.
    const bool turn = dx_ < 0 || (dx_ == 0 && dy_ < 0);
    shape.feretAngle = static_cast<float>(atan2Exact(turn ? -dy_ : dy_, turn ? -dx_ : dx_));
  }

 private:
  static double squared(DaxiPoint32s a, DaxiPoint32s b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    return dx * dx + dy * dy;
  }

  void offer(DaxiPoint32s a, DaxiPoint32s b) {
    if (squared(a, b) <= max_) return;
    max_ = squared(a, b);
    dx_ = b.x - a.x, dy_ = b.y - a.y;
  }

  double max_ = 0, min_ = 0, dx_ = 0, dy_ = 0;
};

struct ShapeScratch {
  explicit ShapeScratch(DaxiSize size) : hull(layout.add<DaxiPoint32s>(DAXI_HULL_POINTS(size.height))) {}
  BufferLayout layout;
  BufferPiece<DaxiPoint32s> hull;
};

DaxiBlobShape shapeOf(const DomainView& view, const uint8_t* gray, int32_t step, int32_t reach, DaxiPoint32s* hull) {
  PixelSums sums;
  forEachWholeRun(view, [&](RunSpan run) { sums.add(run, rowAt(gray, step, run.row)); });
  const int32_t corners = domainHull(view, hull);
  const auto count = static_cast<double>(sums.count);
  DaxiBlobShape shape = {};
  shape.eulerNumber = static_cast<int32_t>(sums.runs - touchingRuns(view, reach));
  shape.holes = 1 - shape.eulerNumber;
  shape.convexity = static_cast<float>(count / static_cast<double>(pixelsInHull(hull, corners)));
  Feret(hull, corners).write(shape);
  shape.equivalentDiameter = static_cast<float>(2 * std::sqrt(count / std::numbers::pi));
  shape.eccentricity = eccentricity(view, sums);
  shape.meanGray = static_cast<float>(static_cast<double>(sums.gray) / count);
  shape.minGray = sums.minGray;
  shape.maxGray = sums.maxGray;
  return shape;
}

DaxStatus checkLabels(const DaxiDomainList& domains, const uint32_t* labels, int32_t count) {
  DAX_REQUIRE(count >= 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(labels || static_cast<uint32_t>(count) == domains.domainCount, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; labels && i < count; ++i) DAX_REQUIRE(labels[i] < domains.domainCount, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_BlobShapeBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::sidesFitRuns(size), DAX_STS_BAD_PARAM);
  return dax::ShapeScratch(size).layout.store(bytes);
}

DaxStatus DAXI_BlobShape_8u_C1R(const uint8_t* gray, int32_t grayStep, DaxiSize size, const DaxiDomainList* domains,
                                int32_t connectivity, const uint32_t* labels, int32_t count, DaxiBlobShape* shapes,
                                void* buffer) {
  DAX_REQUIRE(domains && domains->runs && domains->domains && shapes && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkImage(gray, grayStep, size));
  const bool covers = size.width >= domains->size.width && size.height >= domains->size.height;
  DAX_REQUIRE(covers && dax::sidesFitRuns(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(dax::checkLabels(*domains, labels, count));
  DaxiPoint32s* const hull = dax::ShapeScratch(size).hull.in(buffer);
  for (int32_t i = 0; i < count; ++i) {
    const DaxiDomain& domain = domains->domains[labels ? labels[i] : static_cast<uint32_t>(i)];
    shapes[i] = dax::shapeOf({domains->runs, &domain, size, false}, gray, grayStep, connectivity == 4 ? 0 : 1, hull);
  }
  return DAX_STS_OK;
}
