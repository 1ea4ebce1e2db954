// Sample consensus with callbacks of all tempers, and shapes among wild points.
#include "prmt.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

constexpr int32_t kOwnStatus = 0x777;

// What the callbacks do; it never changes, so that threads may share it.
struct Manner {
  int32_t failingDatum;  // samples with it return kOwnStatus
  int32_t models;        // of every sample
  double poison;         // takes the place of a residual, unless 0
  int32_t room;          // numbers that models have room for
};

int32_t sampleModels(const int32_t* sample, void* user, double* models, int32_t* count) {
  const auto& manner = *static_cast<const Manner*>(user);
  if (sample[0] == manner.failingDatum) return kOwnStatus;
  *count = manner.models;
  for (int32_t k = 0; k < manner.room; ++k) models[k] = sample[0] + k;
  return 0;
}

int32_t distances(const double* model, int32_t first, int32_t count, void* user, double* r2) {
  const auto& manner = *static_cast<const Manner*>(user);
  for (int32_t i = 0; i < count; ++i) {
    const double r = model[0] - (first + i) % 10;
    r2[i] = manner.poison != 0 && (first + i) % 4 == 1 ? manner.poison : r * r;
  }
  return 0;
}

int32_t average(const int32_t* indices, int32_t count, void* user, double* model, int32_t* found) {
  model[0] = 0;
  for (int32_t i = 0; i < count; ++i) model[0] += static_cast<double>(indices[i] % 10) / count;
  *found = static_cast<const Manner*>(user)->models > 0;
  return 0;
}

// Iterations are all real work, whatever they are spoiled to.
void configuration(Call& c) {
  auto* const cfg = c.filled<PrmtSacCfg>("cfg");
  if (cfg)
    cfg->maxIterations = std::min(cfg->maxIterations, 300),
    cfg->localIterations = cfg->localIterations > 1000 ? cfg->localIterations : std::min(cfg->localIterations, 20);
}

void mask(Call& c) {
  const int32_t n = c.get<int32_t>("n");
  if (!c.isRound() && c.chance(20)) {
    c.set<void*>("inlierMask", nullptr);
  } else {
    c.array("inlierMask", n < 1 ? -1 : n);
  }
}

void model(Call& c) {
  if (c.has("pool")) c.pool();
  auto* const kind = c.filled<PrmtSacModel>("model", 1, [&](PrmtSacModel& m) {
    m.solve = sampleModels, m.residual2 = distances;
    if (c.chance(80)) m.refit = average;
  });
  if (kind && c.isSpoiled("model", 20)) (c.chance(50) ? kind->solve = nullptr, 0 : (kind->residual2 = nullptr, 0));
  configuration(c);
  if (c.number("n", 32, 3000) > 3000) c.set("n", 3000);
}

void run(Call& c) {
  model(c);
  auto* const manner = c.elements<Manner>("manner", 1, Role::input);
  *manner = {-1, 1, 0, 1};
  if (!c.isRound()) {
    if (c.chance(10)) manner->failingDatum = c.random.below(40);
    if (c.chance(10)) manner->models = static_cast<int32_t>(c.between(-1, 17));
    if (c.chance(20)) manner->poison = c.hostileReal();
  }
  const auto* const kind = c.get<const PrmtSacModel*>("model");
  if (kind) manner->room = std::clamp(kind->modelDoubles, 1, 32) * std::clamp(kind->maxModels, 1, 16);
  c.set<void*>("user", manner);
  c.mayWriteOn(kOwnStatus);
  mask(c);
  c.worksBeforeFailing = true;
  c.work("buffer", [&](uint64_t* bytes) {
    const uint32_t threads = c.has("threads") ? c.get<uint32_t>("threads") : 1;
    return static_cast<DaxStatus>(PRMT_SAC_RunBufferSize_f64(c.get<const PrmtSacModel*>("model"), c.get<int32_t>("n"),
                                                             c.get<const PrmtSacCfg*>("cfg"), threads, bytes));
  });
}

// The last point has no padding.
void shape(Call& c) {
  if (c.has("pool")) c.pool();
  configuration(c);
  if (c.number("n", 8, 2000, 60) > 2000) c.set("n", 2000);
  if (c.number("step", 3, 9) > 1000) c.set("step", 1000);  // all points are read
  const int64_t n = c.integer("n"), step = c.integer("step");
  const std::string_view name = c.function.name;
  const int64_t dimension = name.find("Line2") < name.size() || name.find("Circle") < name.size() ? 2 : 3;
  const int64_t count = n < 1 || step < 1 ? -1 : (n - 1) * step + dimension;
  name.find("f32") < name.size() ? static_cast<void>(c.reals<float>("points", count))
                                 : static_cast<void>(c.reals<double>("points", count));
  mask(c);
  c.worksBeforeFailing = true;
  c.work("buffer", [&](uint64_t* bytes) {
    const uint32_t threads = c.has("threads") ? c.get<uint32_t>("threads") : 1;
    return static_cast<DaxStatus>(
        PRMT_SAC_ShapeBufferSize(c.get<int32_t>("n"), c.get<const PrmtSacCfg*>("cfg"), threads, bytes));
  });
}

const Rows rows = {
    {"PRMT_SAC_RunBufferSize_f64", model}, {"PRMT_SAC_Run_f64*", run},  {"PRMT_SAC_Line2_*", shape},
    {"PRMT_SAC_Circle_*", shape},          {"PRMT_SAC_Plane_*", shape}, {"PRMT_SAC_Sphere_*", shape},
};

}  // namespace
}  // namespace dax::hostile
