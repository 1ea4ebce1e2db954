// Calipers: regions about as large as the images are, and results with arrays.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

float unit(Call& c) {
  return static_cast<float>(c.random.below(1001)) / 1000.0f;
}

// --- Regions, about as large as the images are ---

struct Centre {
  float x, y, angle;
};

Centre centre(Call& c) {
  const DaxiSize size = c.has("size") ? c.size("size") : DaxiSize{50, 50};
  const auto inside = [&](int32_t side) { return unit(c) * static_cast<float>(std::clamp(side, 1, 1000) - 1); };
  return {inside(size.width), inside(size.height), -3.14f + 6.28f * unit(c)};
}

void draw(Call& c, CaliperBox& box) {
  const Centre at = centre(c);
  box = {at.x, at.y, 1 + 40 * unit(c), 1 + 30 * unit(c), at.angle};
}

void draw(Call& c, CaliperRhomboid& rhomboid) {
  const Centre at = centre(c);
  const float turn = 0.05f + 3 * unit(c);
  const float side = at.angle > 0 ? at.angle - turn : at.angle + turn;
  rhomboid = {at.x, at.y, 1 + 40 * unit(c), 1 + 30 * unit(c), at.angle, side};
}

void draw(Call& c, CaliperAnnulus& annulus) {
  const Centre at = centre(c);
  const float inner = 1 + 20 * unit(c);
  annulus = {at.x, at.y, inner, inner + 1 + 20 * unit(c), at.angle, 1 + 5.2f * unit(c)};
}

// One region, or `count` of them, whichever shape the call takes.
template <class Region>
void regions(Call& c, const char* one, const char* many) {
  const int64_t count = c.has(many) ? c.number("count", 1, 4) : 1;
  if (!c.has(one) && !c.has(many)) return;
  c.filled<Region>(c.has(many) ? many : one, count < 1 ? -1 : count, [&](Region& region) { draw(c, region); });
}

// --- Configurations and results ---

CaliperCriterion criterion(Call& c) {
  const float x0 = -5 + 10 * unit(c), x1 = x0 + 30 * unit(c), y0 = unit(c) * 0.5f;
  return {static_cast<uint32_t>(c.random.below(2)), x0, x1, x1 + 100 * unit(c), y0, 0.5f + 0.5f * unit(c)};
}

struct Edges {
  using Cfg = CaliperEdgeCfg;
  using Result = CaliperEdgeResult;
  using Found = CaliperEdge;
  static constexpr int32_t kPoints = 1;
  static auto& max(auto& cfg) { return cfg.maxEdges; }
  static Found*& found(Result& result) { return result.edges; }
  static void fill(Call& c, Cfg& cfg) {
    cfg.edgeChoice = c.chance(80) ? 0 : static_cast<int32_t>(c.between(-1, 5));
    cfg.scoreFlags = static_cast<uint32_t>(c.random.next()) & 0x207;
    if (cfg.scoreFlags == 0) cfg.scoreFlags = 0x207;
    for (CaliperCriterion* each : {&cfg.contrast, &cfg.distance, &cfg.offset, &cfg.gray}) *each = criterion(c);
  }
};

struct Pairs {
  using Cfg = CaliperEdgePairCfg;
  using Result = CaliperEdgePairResult;
  using Found = CaliperEdgePair;
  static constexpr int32_t kPoints = 2;
  static auto& max(auto& cfg) { return cfg.maxPairs; }
  static Found*& found(Result& result) { return result.pairs; }
  static void fill(Call& c, Cfg& cfg) {
    cfg.pairChoice = c.chance(80) ? 0 : static_cast<int32_t>(c.between(-1, 5));
    cfg.scoreFlags = static_cast<uint32_t>(c.between(1, 0x3FF));
    cfg.expectedWidth = 1 + 20 * unit(c);
    for (CaliperCriterion* each = &cfg.contrast; each <= &cfg.gray; ++each) *each = criterion(c);
  }
};

template <class Kind>
const typename Kind::Cfg* configuration(Call& c) {
  return c.filled<typename Kind::Cfg>("cfg", 1, [&](auto& cfg) {
    if (c.chance(70)) cfg.filterHalfWidth = static_cast<uint32_t>(c.between(1, 5));
    cfg.threshold = c.pick({0.0f, 0.0f, 1.0f, 20.0f}) * unit(c);
    cfg.isa = c.pick<int32_t>({DAX_ISA_PORTABLE, DAX_ISA_NEON, 1, 99});
    cfg.minScore = c.chance(50) ? 0 : unit(c);
    Kind::fill(c, cfg);
    Kind::max(cfg) = c.chance(50) ? 1 + c.random.below(3) : 200;
  });
}

// Room for as many as the configuration says. Only what was found means something.
template <class Kind>
void results(Call& c, const char* name, const typename Kind::Cfg* cfg) {
  const int64_t count = c.has("count") ? c.number("count", 1, 4) : 1;
  const int64_t max = cfg && Kind::max(*cfg) >= 1 ? Kind::max(*cfg) : -1;
  auto* const all = static_cast<typename Kind::Result*>(c.array(name, count < 1 ? -1 : count));
  const Block* const made = c.block(all);
  for (size_t i = 0; made && i < made->bytes / sizeof *all; ++i) {
    auto* const result = all + i;
    *result = {};
    if (c.isSpoiled(name, 50)) continue;
    auto*& found = Kind::found(*result);
    found = c.elements<typename Kind::Found>("found", max, Role::output);
    if (c.chance(70)) result->points = c.elements<DaxiPoint32f>("points", max * Kind::kPoints, Role::output);
    const auto meaningful = [result](size_t each) { return [=] { return static_cast<size_t>(result->count) * each; }; };
    c.onlyMeans(found, meaningful(sizeof(typename Kind::Found)));
    c.onlyMeans(result->points, meaningful(sizeof(DaxiPoint32f) * Kind::kPoints));
  }
}

void profile(Call& c) {
  auto* const record = c.record<CaliperProfile>("profile");
  if (!record) return;
  // In rounds whatever the fields of the configuration ask for.
  record->capacity = c.isRound() || c.chance(85) ? 300 : static_cast<int32_t>(c.between(1, 40));
  if (c.isSpoiled("profile", 50)) record->capacity = -record->capacity;
  for (float** const each : {&record->profile, &record->response}) {
    const bool missing = c.isSpoiled("profile", 50);
    *each = missing ? nullptr : c.elements<float>("profile->", record->capacity, Role::output);
    c.onlyMeans(*each, [record] { return static_cast<size_t>(record->length) * sizeof(float); });
  }
}

template <class Kind>
void detect(Call& c) {
  regions<CaliperBox>(c, "box", "boxes");
  regions<CaliperRhomboid>(c, "rhomboid", "rhomboids");
  regions<CaliperAnnulus>(c, "annulus", "annuli");
  if (!c.has("cfg")) return;
  results<Kind>(c, c.has("count") ? "results" : "result", configuration<Kind>(c));
  if (c.has("profile")) profile(c);
  c.worksBeforeFailing = true;
}

const Rows rows = {{"DAXI_CalipEdgeDetect*", detect<Edges>}, {"DAXI_CalipEdgePairDetect*", detect<Pairs>}};

}  // namespace
}  // namespace dax::hostile
