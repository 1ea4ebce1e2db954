#include "measure/blob/blob_features.h"

#include <algorithm>
#include <cmath>

#include "frame/math.h"
#include "frame/rows.h"
#include "geometry/enclose_box.h"
#include "measure/region/contour.h"
#include "measure/region/domain_hull.h"

namespace dax {
namespace {

constexpr float kOneOverPi = 0.31830987f;
constexpr float kOneOver255 = 0.003921569f;
constexpr float kDiagonal = 1.4142135f;  // root of 2

// Zeroth and first moments; all pixels weigh 1, or their gray value.
struct Moments {
  uint64_t mass = 0;
  uint64_t x = 0;
  uint64_t y = 0;
};

void addRun(Moments& m, RunSpan run) {
  const auto length = static_cast<uint64_t>(run.length());
  m.mass += length;
  m.x += static_cast<uint64_t>(run.start + run.end) * length / 2;
  m.y += static_cast<uint64_t>(run.row) * length;
}

void addGrayRun(Moments& m, RunSpan run, const uint8_t* row) {
  uint64_t mass = 0, x = 0;
  for (int32_t i = run.start; i <= run.end; ++i) {
    mass += row[i];
    x += uint64_t{row[i]} * static_cast<uint64_t>(i);
  }
  m.mass += mass;
  m.x += x;
  m.y += mass * static_cast<uint64_t>(run.row);
}

// Upright bounding box of the runs seen so far.
struct Extent {
  int32_t left = INT32_MAX, right = -1, top = -1, bottom = -1;
  void add(RunSpan run) {
    left = std::min(left, run.start);
    right = std::max(right, run.end);
    if (top < 0) top = run.row;
    bottom = run.row;
  }
};

void setRect(const Extent& extent, BlobInfo& blob) {
  const bool empty = extent.right < 0;
  blob.rectX = empty ? 0 : extent.left;
  blob.rectY = empty ? 0 : extent.top;
  blob.rectWidth = empty ? 0 : extent.right - extent.left + 1;
  blob.rectHeight = empty ? 0 : extent.bottom - extent.top + 1;
}

void setBinaryMoments(const Moments& m, BlobInfo& blob) {
  blob.area = static_cast<float>(m.mass);
  const float inverse = m.mass == 0 ? 0 : 1 / blob.area;
  blob.centroidX = static_cast<float>(m.x) * inverse;
  blob.centroidY = static_cast<float>(m.y) * inverse;
}

void setGrayMoments(const Moments& m, BlobInfo& blob) {
  const double mass = static_cast<double>(m.mass);
  blob.area = static_cast<float>(m.mass) * kOneOver255;
  blob.centroidX = m.mass == 0 ? 0 : static_cast<float>(static_cast<double>(m.x) / mass);
  blob.centroidY = m.mass == 0 ? 0 : static_cast<float>(static_cast<double>(m.y) / mass);
}

// Area of the blob relative to that of a disc with this squared radius, at most 1.
float circularity(float area, float radius2) {
  const float disc = area * kOneOverPi;
  return disc >= radius2 ? 1 : disc / radius2;
}

float square(float v) {
  return v * v;
}

// Length and radius of a contour. The largest image can have one of more than 2^31 steps.
struct ContourMeasure {
  int64_t steps = 0;
  int64_t diagonal = 0;
  float radius2 = 0;
  void add(uint8_t code) {
    ++steps;
    diagonal += code & 1;
  }
  float length() const { return static_cast<float>(diagonal) * kDiagonal + static_cast<float>(steps - diagonal); }
};

}  // namespace

void calculateBasicFeatures(const SelectContext& context, const DaxiDomain& domain, BlobInfo& blob) {
  Moments moments;
  Extent extent;
  const DomainView view = context.view(domain);
  if (context.cfg.grayMode == 0) {
    forEachRun(view, [&](RunSpan run) {
      extent.add(run);
      addRun(moments, run);
    });
    setBinaryMoments(moments, blob);
  } else {
    forEachRun(view, [&](RunSpan run) {
      extent.add(run);
      addGrayRun(moments, run, rowAt(context.gray, context.grayStep, run.row));
    });
    setGrayMoments(moments, blob);
  }
  setRect(extent, blob);
  blob.domain = &domain;
  blob.label = domain.head.label;
  blob.cls = domain.head.cls;
}

void completeFeatures(const SelectContext& context, uint32_t done, BlobInfo& blob) {
  const bool needsLength = (done & kContourLength) == 0, needsCircularity = (done & kCircularity) == 0;
  if (needsLength && needsCircularity) {
    DAXI_BlobSelect_calculate_circularity_and_contourlen(&context, &blob);
  } else if (needsCircularity) {
    DAXI_BlobSelect_calculate_circularity(&context, &blob);
  } else if (needsLength) {
    DAXI_BlobSelect_calculate_contourlen(&context, &blob);
  }
  if ((done & kPrincipalAngle) == 0) DAXI_BlobSelect_calculate_principal_axis_angle(&context, &blob);
  if ((done & kBoxFeatures) == 0) DAXI_BlobSelect_calculate_base_on_box(&context, &blob);
}

}  // namespace dax

void DAXI_BlobSelect_calculate_circularity(const dax::SelectContext* context, BlobInfo* blob) {
  if (blob->area <= 1) {
    blob->circularity = 1;
    return;
  }
  const float cx = blob->centroidX, cy = blob->centroidY;
  float radius2 = 0;
  dax::forEachRun(context->view(*blob), [&](dax::RunSpan run) {
    const float dx2 =
        std::max(dax::square(static_cast<float>(run.start) - cx), dax::square(static_cast<float>(run.end) - cx));
    radius2 = std::max(radius2, dax::square(static_cast<float>(run.row) - cy) + dx2);
  });
  blob->circularity = dax::circularity(blob->area, radius2);
}

void DAXI_BlobSelect_calculate_contourlen(const dax::SelectContext* context, BlobInfo* blob) {
  if (blob->area <= 1) {
    blob->perimeter = 1;
    return;
  }
  dax::ContourMeasure contour;
  dax::forEachContourPoint(context->view(*blob), context->bitmap,
                           [&](uint8_t code, int32_t, int32_t) { contour.add(code); });
  blob->perimeter = contour.length();
}

void DAXI_BlobSelect_calculate_circularity_and_contourlen(const dax::SelectContext* context, BlobInfo* blob) {
  if (blob->area <= 1) {
    blob->circularity = blob->perimeter = 1;
    return;
  }
  const float cx = blob->centroidX, cy = blob->centroidY;
  dax::ContourMeasure contour;
  dax::forEachContourPoint(context->view(*blob), context->bitmap, [&](uint8_t code, int32_t x, int32_t y) {
    contour.add(code);
    contour.radius2 =
        std::max(contour.radius2, dax::square(static_cast<float>(x) - cx) + dax::square(static_cast<float>(y) - cy));
  });
  blob->perimeter = contour.length();
  blob->circularity = dax::circularity(blob->area, contour.radius2);
}

// Second moments run by run: with n = end - start, L = n + 1 and distances dx, dy of a run's start from the centroid,
// sum (dx + i) = (n/2 + dx) L and sum (dx + i)^2 = ((n + 2 n^2) / 6 + dx^2 + n dx) L over i = 0..n.
void DAXI_BlobSelect_calculate_principal_axis_angle(const dax::SelectContext* context, BlobInfo* blob) {
  if (blob->area <= 1) {
    blob->principalAngle = 0;
    return;
  }
  const double cx = blob->centroidX, cy = blob->centroidY;
  double sxx = 0, sxy = 0, syy = 0;
  dax::forEachRun(context->view(*blob), [&](dax::RunSpan run) {
    const double n = run.end - run.start, length = n + 1;
    const double dx = run.start - cx, dy = run.row - cy;
    syy += dy * dy * length;
    sxy += (n * 0.5 + dx) * length * dy;
    sxx += ((n + 2 * n * n) / 6 + dx * dx + n * dx) * length;
  });
  blob->principalAngle = static_cast<float>(0.5 * dax::atan2Exact(2 * sxy, sxx - syy));
}

void DAXI_BlobSelect_calculate_base_on_box(const dax::SelectContext* context, BlobInfo* blob) {
  const dax::DomainView view = context->view(*blob);
  const DaxiRotatedBox box = dax::encloseBox(context->hull, dax::domainHull(view, context->hull), DAXI_BOX_MIN_AREA);
  blob->boxX = box.x;
  blob->boxY = box.y;
  blob->boxWidth = blob->longAxis = box.width;
  blob->boxHeight = blob->shortAxis = box.height;
  blob->boxAngle = box.angle;
  blob->axisRatio = box.width > 0 ? box.height / box.width : 1;
  blob->rectangularity = dax::rectangularity(blob->area, box);
  blob->centralBias = std::sqrt(dax::square(box.x - blob->centroidX) + dax::square(box.y - blob->centroidY));
}

bool DAXI_BlobSelect_by_out_pixel_num_roi_rect(const dax::SelectContext* context, BlobInfo* blob) {
  const int32_t lastColumn = context->size.width - 1, lastRow = context->size.height - 1;
  uint64_t count = 0;
  dax::forEachRun(context->view(*blob), [&](dax::RunSpan run) {
    if (run.row == 0 || run.row == lastRow) {
      count += static_cast<uint64_t>(run.length());
    } else {
      count += uint64_t{run.start == 0} + uint64_t{run.end == lastColumn};
    }
  });
  blob->borderPixels = static_cast<uint32_t>(count);
  return count <= static_cast<uint64_t>(context->cfg.outsideLimit);
}

bool DAXI_BlobSelect_by_out_pixel_num_mask_img(const dax::SelectContext* context, BlobInfo* blob) {
  uint64_t count = 0;
  dax::forEachRun(context->view(*blob), [&](dax::RunSpan run) {
    const uint8_t* const row = dax::rowAt(context->cfg.mask, context->cfg.maskStep, run.row);
    for (int32_t x = run.start; x <= run.end; ++x) count += row[x] == 0;
  });
  blob->borderPixels = static_cast<uint32_t>(std::min<uint64_t>(count, UINT32_MAX));
  return count <= static_cast<uint64_t>(context->cfg.outsideLimit);
}
