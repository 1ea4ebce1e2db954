#include "measure/blob_select.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

#include "frame/check.h"

namespace dax {

SelectScratch::SelectScratch(DaxiSize size)
    : order(layout.add<BlobInfo*>(DAXI_BLOB_MAX_COUNT)),
      candidate(layout.add<BlobInfo>(1)),
      bitmap(layout.add<uint8_t>(DomainBitmap::bytes(size))),
      hull(layout.add<PointI32>(hullPoints(size.height))) {}

namespace {

// Which blobs are kept when more pass than there is room for. Without an order these are the largest.
Ranking keepRanking(const BlobSelectCfg& cfg) {
  switch (cfg.sortOrder) {
    case DAXI_BLOB_ASCENDING:
      return {cfg.sortKey, false};
    case DAXI_BLOB_DESCENDING:
      return {cfg.sortKey, true};
    default:
      return {DAXI_BLOB_KEY_AREA, true};
  }
}

// Moves every record to its place in `order`, one cycle of the permutation after the other. order[i] points at the
// record that belongs in slot i; a slot that is done points at itself.
void applyOrder(BlobInfo* array, BlobInfo** order, int32_t count, BlobInfo& spare) {
  for (int32_t start = 0; start < count; ++start) {
    if (order[start] == array + start) continue;
    spare = array[start];
    ptrdiff_t slot = start;
    while (order[slot] != array + start) {
      const ptrdiff_t from = order[slot] - array;
      array[slot] = array[from];
      order[slot] = array + slot;
      slot = from;
    }
    array[slot] = spare;
    order[slot] = array + slot;
  }
}

void sortBlobs(const BlobSelectCfg& cfg, KeptBlobs& kept, BlobInfo** order, BlobInfo& spare) {
  if (cfg.sortOrder == DAXI_BLOB_UNSORTED) return;
  for (int32_t i = 0; i < kept.count; ++i) order[i] = kept.array + i;
  const Ranking ranking = keepRanking(cfg);
  std::sort(order, order + kept.count, [&](const BlobInfo* a, const BlobInfo* b) { return ranking(a, b); });
  applyOrder(kept.array, order, kept.count, spare);
}

KeptBlobs select(const SelectContext& context, const SelectScratch& at, int32_t domainCount, BlobInfo* array,
                 void* buffer) {
  BlobInfo** const order = at.order.in(buffer);
  BlobInfo* const candidate = at.candidate.in(buffer);
  Cascade cascade;
  DAXI_BlobSelect_create_cascade_filter(&context.cfg, &cascade);

  KeptBlobs kept{array, 0};
  const int32_t next = DAXI_BlobSelect_1(&context, &cascade, domainCount, &kept);
  if (context.cfg.flags != 0 && next < domainCount) {
    DAXI_BlobSelect_2(&context, &cascade, next, domainCount, &kept, order, candidate);
  }
  DAXI_BlobSelect_blob_info_calculator(&context, cascade.done, &kept);
  sortBlobs(context.cfg, kept, order, *candidate);
  DAXI_BlobSelect_blob_score_calculator(&context.cfg, &kept);
  return kept;
}

}  // namespace
}  // namespace dax

int32_t DAXI_BlobSelect_1(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t domainCount,
                          dax::KeptBlobs* kept) {
  int32_t label = 0;
  while (label < domainCount && kept->count < context->cfg.maxCount) {
    BlobInfo& blob = kept->array[kept->count];
    dax::calculateBasicFeatures(*context, context->domains.domains[label++], blob);
    if (cascade->accepts(*context, blob)) ++kept->count;
  }
  return label;
}

// The heap's root is the kept blob that ranks last. Candidates come by ascending label, so that one that ranks before
// the root has a strictly better key.
void DAXI_BlobSelect_2(const dax::SelectContext* context, const dax::Cascade* cascade, int32_t next,
                       int32_t domainCount, dax::KeptBlobs* kept, BlobInfo** order, BlobInfo* candidate) {
  const dax::Ranking ranking = dax::keepRanking(context->cfg);
  const auto ranksBefore = [&](const BlobInfo* a, const BlobInfo* b) { return ranking(a, b); };
  BlobInfo** const end = order + kept->count;
  for (int32_t i = 0; i < kept->count; ++i) order[i] = kept->array + i;
  std::make_heap(order, end, ranksBefore);

  *candidate = {};
  for (int32_t label = next; label < domainCount; ++label) {
    dax::calculateBasicFeatures(*context, context->domains.domains[label], *candidate);
    if (!cascade->accepts(*context, *candidate) || !ranking(candidate, order[0])) continue;
    std::pop_heap(order, end, ranksBefore);
    *end[-1] = *candidate;
    std::push_heap(order, end, ranksBefore);
  }
}

void DAXI_BlobSelect_blob_info_calculator(const dax::SelectContext* context, uint32_t done, dax::KeptBlobs* kept) {
  const bool needsLength = (done & dax::kContourLength) == 0, needsCircularity = (done & dax::kCircularity) == 0;
  for (int32_t i = 0; i < kept->count; ++i) {
    BlobInfo* const blob = kept->array + i;
    if (needsLength && needsCircularity) {
      DAXI_BlobSelect_calculate_circularity_and_contourlen(context, blob);
    } else if (needsCircularity) {
      DAXI_BlobSelect_calculate_circularity(context, blob);
    } else if (needsLength) {
      DAXI_BlobSelect_calculate_contourlen(context, blob);
    }
    if ((done & dax::kPrincipalAngle) == 0) DAXI_BlobSelect_calculate_principal_axis_angle(context, blob);
    if ((done & dax::kBoxFeatures) == 0) DAXI_BlobSelect_calculate_base_on_box(context, blob);
  }
}

namespace dax {
namespace {

// A feature's part in the score: 1 at the middle of the range, falling off linearly.
struct ScoreTerm {
  uint32_t flag;
  float value;
  float min, max;
  float weight;
};

float score(const ScoreTerm& term, float shift = 0) {
  const float reference = 2 / (term.min + term.max + shift + 1.1920929e-7f);
  return term.weight * (1 - std::fabs((term.value + shift * 0.5f) * reference - 1));
}

void scoreBlob(const BlobSelectCfg& c, BlobInfo& b) {
  constexpr float kPi = std::numbers::pi_v<float>;
  const ScoreTerm terms[] = {
      {DAXI_BLOB_BY_AREA, b.area, c.area.min, c.area.max, c.areaWeight},
      {DAXI_BLOB_BY_PERIMETER, b.perimeter, c.perimeter.min, c.perimeter.max, c.perimeterWeight},
      {DAXI_BLOB_BY_SHORT_AXIS, b.shortAxis, c.shortAxis.min, c.shortAxis.max, c.shortAxisWeight},
      {DAXI_BLOB_BY_LONG_AXIS, b.longAxis, c.longAxis.min, c.longAxis.max, c.longAxisWeight},
      {DAXI_BLOB_BY_CIRCULARITY, b.circularity, c.circularity.min, c.circularity.max, c.circularityWeight},
      {DAXI_BLOB_BY_RECTANGULARITY, b.rectangularity, c.rectangularity.min, c.rectangularity.max,
       c.rectangularityWeight},
      {DAXI_BLOB_BY_CENTRAL_BIAS, b.centralBias, c.centralBias.min, c.centralBias.max, c.centralBiasWeight},
      {DAXI_BLOB_BY_AXIS_RATIO, b.axisRatio, c.axisRatio.min, c.axisRatio.max, c.axisRatioWeight},
      {DAXI_BLOB_BY_BOX_ANGLE, b.boxAngle, c.boxAngle.min, c.boxAngle.max, c.boxAngle.weight},
      {DAXI_BLOB_BY_RECT_WIDTH, static_cast<float>(b.rectWidth), c.rectWidth.min, c.rectWidth.max, c.rectWidth.weight},
      {DAXI_BLOB_BY_RECT_HEIGHT, static_cast<float>(b.rectHeight), c.rectHeight.min, c.rectHeight.max,
       c.rectHeight.weight},
  };
  float sum = 0, weights = 0;
  for (const ScoreTerm& term : terms) {
    if ((c.flags & term.flag) == 0) continue;
    // Angles are shifted by pi/2, so that they are not negative.
    sum += score(term, term.flag == DAXI_BLOB_BY_BOX_ANGLE ? kPi : 0);
    weights += term.weight;
  }
  if (weights > 0) b.score = sum / weights;
}

DaxStatus check(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2, DaxiSize size,
                const DaxiDomainList* domains, int32_t domainCount, const BlobSelectResult* result,
                const BlobSelectCfg* cfg, const void* buffer) {
  DAX_REQUIRE(domains && domains->runs && domains->domains, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(result && result->array && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkImage(gray, grayStep, size));
  DAX_REQUIRE_OK(checkImage(image2, step2, size));
  DAX_REQUIRE(atMost(size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_SIZE);
  DAX_REQUIRE_OK(DAXI_BlobSelect_check_cfg(cfg));
  DAX_REQUIRE(domainCount >= 1 && static_cast<uint32_t>(domainCount) <= _DAXI_DomainCount(domains), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

void DAXI_BlobSelect_blob_score_calculator(const BlobSelectCfg* cfg, dax::KeptBlobs* kept) {
  for (int32_t i = 0; i < kept->count; ++i) dax::scoreBlob(*cfg, kept->array[i]);
}

DaxStatus DAXI_BlobSelectBufferSize_8u(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::atLeast(size, 1) && dax::atMost(size, DAXI_BLOB_MAX_SIDE), DAX_STS_BAD_PARAM);
  return dax::SelectScratch(size).layout.store(bytes);
}

DaxStatus DAXI_BlobSelect_8u_C1R(const uint8_t* gray, int32_t grayStep, const uint8_t* image2, int32_t step2,
                                 DaxiSize size, const DaxiDomainList* domains, int32_t domainCount,
                                 BlobSelectResult* result, const BlobSelectCfg* cfg, void* buffer) {
  DAX_REQUIRE_OK(dax::check(gray, grayStep, image2, step2, size, domains, domainCount, result, cfg, buffer));
  const dax::SelectScratch at(size);
  uint8_t* const bitmap = at.bitmap.in(buffer);
  std::memset(bitmap, 0, dax::DomainBitmap::bytes(size));
  const dax::SelectContext context{
      *cfg, gray, grayStep, size, *domains, dax::DomainBitmap(bitmap, size), at.hull.in(buffer)};
  result->count = static_cast<uint32_t>(dax::select(context, at, domainCount, result->array, buffer).count);
  result->domains = domains;
  return DAX_STS_OK;
}
