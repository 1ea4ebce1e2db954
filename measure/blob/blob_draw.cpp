#include "daxi/blob_draw.h"

#include <algorithm>
#include <cstring>

#include "frame/check.h"
#include "frame/rows.h"
#include "measure/blob/blob_context.h"

namespace dax {
namespace {

DaxStatus checkDraw(const uint8_t* image, int32_t step, DaxiSize size, const DaxiDomainList* domains,
                    const BlobInfo* blobs, int32_t count) {
  DAX_REQUIRE(image && domains && domains->runs && domains->domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, step), DAX_STS_BAD_STEP);
  DAX_REQUIRE(count >= 0, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; blobs && i < count; ++i) DAX_REQUIRE(blobs[i].domain, DAX_STS_NULL_POINTER);
  return DAX_STS_OK;
}

// Calls draw(view) for the domains of the blobs, or for all where blobs is null.
template <class Draw>
void forEachDomain(const DaxiDomainList& domains, DaxiSize size, const BlobInfo* blobs, int32_t count, Draw draw) {
  const uint32_t total = blobs ? static_cast<uint32_t>(count) : domains.domainCount;
  for (uint32_t i = 0; i < total; ++i) draw(viewDomain(domains, blobs ? *blobs[i].domain : domains.domains[i], size));
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_DrawBlobLabel_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, const DaxiDomainList* domains,
                                     const BlobInfo* blobs, int32_t count) {
  DAX_REQUIRE_OK(dax::checkDraw(srcDst, step, size, domains, blobs, count));
  dax::forEachDomain(*domains, size, blobs, count, [&](const dax::DomainView& view) {
    const auto value = static_cast<int>(1 + view.domain->head.label % 255);
    dax::forEachRun(view, [&](dax::RunSpan run) {
      std::memset(dax::rowAt(srcDst, step, run.row) + run.start, value, static_cast<size_t>(run.length()));
    });
  });
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobSelect_draw_blob_contour(uint8_t* srcDst, int32_t step, DaxiSize size, const DaxiDomainList* domains,
                                            const BlobInfo* blobs, int32_t count, uint8_t value, void* buffer) {
  DAX_REQUIRE(buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkDraw(srcDst, step, size, domains, blobs, count));
  DAX_REQUIRE(dax::atMost(size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_SIZE);
  const dax::DomainBitmap bitmap(dax::SelectScratch(size).features.bitmap.in(buffer), size);
  bitmap.clear(size);
  dax::forEachDomain(*domains, size, blobs, count, [&](const dax::DomainView& view) {
    const auto draw = [&](int32_t x, int32_t y) { dax::rowAt(srcDst, step, y)[x] = value; };
    const dax::RunSpan first =
        dax::forEachContourPoint(view, bitmap, [&](uint8_t, int32_t x, int32_t y) { draw(x, y); });
    if (first.row >= 0) draw(first.start, first.row);
  });
  return DAX_STS_OK;
}

DaxStatus DAXI_BlobLabelImage_32s_C1R(const DaxiDomainList* domains, int32_t background, int32_t* dst, int32_t dstStep,
                                      DaxiSize size) {
  DAX_REQUIRE(domains && domains->runs && domains->domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(dax::checkImage(dst, dstStep, size));
  // One pass in raster order, which is that of the runs: what lies between two runs is background. Runs that overlap, which
  // no labelling makes, stay within their row.
  const DomainRun* run = domains->runs;
  const DomainRun* const end = run + domains->runCount;
  for (int32_t y = 0; y < size.height; ++y) {
    int32_t* const row = dax::rowAt(dst, dstStep, y);
    int32_t x = 0;
    for (; run != end && run->row == y; ++run) {
      const int32_t start = std::clamp<int32_t>(run->start, x, size.width);
      const int32_t past = std::clamp<int32_t>(run->end + 1, start, size.width);
      std::fill(row + x, row + start, background);
      std::fill(row + start, row + past, static_cast<int32_t>(run->label));
      x = past;
    }
    std::fill(row + x, row + size.width, background);
  }
  return DAX_STS_OK;
}
