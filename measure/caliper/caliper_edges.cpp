#include "measure/caliper/caliper_edges.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frame/check.h"
#include "measure/caliper/caliper_criterion.h"

namespace dax {

static_assert(sizeof(CaliperEdge) == 32 && sizeof(CaliperBox) == 20 && sizeof(CaliperCriterion) == 24);
static_assert(sizeof(CaliperEdgeCfg) == 4 * (9 + 4 * 6 + 1));

namespace {

// An extremum may be flat, within the slack of the comparisons, on one side only.
bool isMaximum(const float* r, int32_t i, float threshold) {
  return threshold - r[i] < kCaliperSlack && r[i] - r[i - 1] > kCaliperSlack && r[i + 1] - r[i] < kCaliperSlack;
}

bool isMinimum(const float* r, int32_t i, float threshold) {
  return r[i] + threshold < kCaliperSlack && r[i] - r[i - 1] < kCaliperSlack && r[i + 1] - r[i] > kCaliperSlack;
}

constexpr float kMinCurvature = 0.001f;  // below it the response counts as flat, as documented

// Moves an edge to the vertex of the parabola through three values.
void refine(const float* response, CaliperEdge& edge) {
  const float a = response[edge.index - 1], b = response[edge.index], c = response[edge.index + 1];
  const float d = 2 * b - (a + c);
  const float offset = std::fabs(d) <= kMinCurvature ? 0 : (c - a) * 0.5f / d;
  edge.position += offset;
  edge.peak = b + (c - a) * 0.25f * offset;
}

void mapToImage(const CaliperGrid& grid, const CaliperEdge* edges, int32_t count, DaxiPoint32f* points) {
  for (int32_t i = 0; i < count; ++i) points[i] = grid.pointAt(edges[i].position);
}

void output(const CaliperGrid& grid, const CaliperEdge* edges, int32_t count, DaxiPoint32f* points) {
  switch (grid.shape) {
    case CaliperShape::kBox:
      return (grid.alongColumns ? DAXI_CalipEdgeDetect_box_vert_output_m : DAXI_CalipEdgeDetect_box_hor_output_m)(
          &grid, edges, count, points);
    case CaliperShape::kRhomboid:
      return (grid.alongColumns ? DAXI_CalipEdgeDetect_rhomboid_vert_output_m
                                : DAXI_CalipEdgeDetect_rhomboid_hor_output_m)(&grid, edges, count, points);
    case CaliperShape::kAnnulus:
      return DAXI_CalipEdgeDetect_annulus_output_m(&grid, edges, count, points);
  }
}

// Scores and ranks the edges; returns the number of results.
int32_t assess(CaliperEdge* edges, CaliperEdge* scratch, int32_t count, const CaliperEdgeCfg& cfg) {
  DAXI_CalipEdgeDetect_comprehensive_assess(edges, count, &cfg);
  CaliperEdge* const end =
      std::remove_if(edges, edges + count, [&](const CaliperEdge& e) { return !(e.score >= cfg.minScore); });
  const auto left = static_cast<int32_t>(end - edges);
  DAXI_CalipEdgeDetect_rank_criterion(edges, scratch, left);
  return std::min(left, cfg.maxEdges);
}

}  // namespace

int32_t findEdges(const CaliperSignal& signal, uint32_t polarity, float threshold, CaliperEdge* edges) {
  const int32_t count = DAXI_CalipEdgeDetect_find_local_extremum(&signal, polarity, threshold, edges);
  for (int32_t i = 0; i < count; ++i) refine(signal.response, edges[i]);
  return count;
}

void extract(const CaliperSignal& signal, const CaliperGrid& grid, const CaliperEdgeCfg& cfg, CaliperEdgeResult& result,
             const CaliperBuffer& at, void* buffer) {
  CaliperEdge* const edges = at.edges.in(buffer);
  const CaliperEdge* first = edges;
  int32_t count = findEdges(signal, cfg.polarity, cfg.threshold, edges);
  if (cfg.edgeChoice >= 1) {
    first += std::max(0, std::min(cfg.edgeChoice, count) - 1);
    count = std::min(count, 1);
  } else {
    count = assess(edges, at.sorted.in(buffer), count, cfg);
  }
  std::copy_n(first, count, result.edges);
  if (result.points) output(grid, first, count, result.points);
  result.count = count;
}

}  // namespace dax

DaxStatus DAXI_CalipEdgeDetect_cfg_check(const CaliperEdgeCfg* cfg) {
  DAX_REQUIRE(cfg->maxEdges >= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isEdgeSearch(*cfg), DAX_STS_BAD_PARAM);
  const std::pair<uint32_t, const CaliperCriterion&> criteria[] = {{DAXI_CALIPER_BY_CONTRAST, cfg->contrast},
                                                                   {DAXI_CALIPER_BY_GRAY, cfg->gray},
                                                                   {DAXI_CALIPER_BY_DISTANCE, cfg->distance},
                                                                   {DAXI_CALIPER_BY_OFFSET, cfg->offset}};
  for (const auto& [flag, criterion] : criteria) {
    DAX_REQUIRE((cfg->scoreFlags & flag) == 0 || dax::isCriterion(criterion), DAX_STS_BAD_PARAM);
  }
  const uint32_t flags = cfg->scoreFlags;
  DAX_REQUIRE(flags >= 1 && flags <= 1023 && (flags & 0x1F8) == 0, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

int32_t DAXI_CalipEdgeDetect_find_local_extremum(const dax::CaliperSignal* signal, uint32_t polarity, float threshold,
                                                 CaliperEdge* edges) {
  int32_t count = 0;
  for (int32_t i = 1; i < signal->length - 1; ++i) {
    if (signal->counts && signal->counts[i] == 0) continue;
    uint32_t found = 0;
    if ((polarity & 1) && dax::isMinimum(signal->response, i, threshold)) found = DAXI_CALIPER_DARK_TO_LIGHT;
    if ((polarity & 2) && dax::isMaximum(signal->response, i, threshold)) found = DAXI_CALIPER_LIGHT_TO_DARK;
    if (found == 0) continue;
    const float r = signal->response[i];
    edges[count++] = {
        found, 1, static_cast<float>(i) - static_cast<float>(signal->length) * 0.5f, r, signal->profile[i], r, i, 0};
  }
  return count;
}

void DAXI_CalipEdgeDetect_comprehensive_assess(CaliperEdge* edges, int32_t count, const CaliperEdgeCfg* cfg) {
  const auto factor = [cfg](uint32_t flag, const CaliperCriterion& criterion, float value) {
    return dax::factorIfActive(cfg->scoreFlags, flag, criterion, value);
  };
  for (CaliperEdge* edge = edges; edge < edges + count; ++edge) {
    float score = edge->score;
    score *= factor(DAXI_CALIPER_BY_CONTRAST, cfg->contrast, std::fabs(edge->peak));
    score *= factor(DAXI_CALIPER_BY_GRAY, cfg->gray, edge->gray);
    score *= factor(DAXI_CALIPER_BY_DISTANCE, cfg->distance, std::fabs(edge->position));
    score *= factor(DAXI_CALIPER_BY_OFFSET, cfg->offset, edge->position);
    edge->score = dax::geometricMean(score, cfg->scoreFlags);
  }
}

// Merge sort, bottom up. Comparison with a slack is not transitive, so that std::sort must not be used; here an edge
// passes one of lower index only where its score is higher by more than the slack.
void DAXI_CalipEdgeDetect_rank_criterion(CaliperEdge* edges, CaliperEdge* scratch, int32_t count) {
  const auto passes = [](const CaliperEdge& later, const CaliperEdge& earlier) {
    return later.score - earlier.score > dax::kCaliperSlack;
  };
  CaliperEdge *from = edges, *to = scratch;
  for (int64_t run = 1; run < count; run *= 2, std::swap(from, to)) {
    for (int64_t first = 0; first < count; first += 2 * run) {
      const int64_t middle = std::min<int64_t>(first + run, count), end = std::min<int64_t>(first + 2 * run, count);
      std::merge(from + first, from + middle, from + middle, from + end, to + first, passes);
    }
  }
  if (from != edges) std::copy_n(from, count, edges);
}

#define DAX_CALIPER_OUTPUT(NAME)                                                                           \
  void NAME(const dax::CaliperGrid* grid, const CaliperEdge* edges, int32_t count, DaxiPoint32f* points) { \
    dax::mapToImage(*grid, edges, count, points);                                                          \
  }
DAX_CALIPER_OUTPUT(DAXI_CalipEdgeDetect_box_hor_output_m)
DAX_CALIPER_OUTPUT(DAXI_CalipEdgeDetect_box_vert_output_m)
DAX_CALIPER_OUTPUT(DAXI_CalipEdgeDetect_rhomboid_hor_output_m)
DAX_CALIPER_OUTPUT(DAXI_CalipEdgeDetect_rhomboid_vert_output_m)
DAX_CALIPER_OUTPUT(DAXI_CalipEdgeDetect_annulus_output_m)
#undef DAX_CALIPER_OUTPUT
