// Solvers with callbacks of all tempers.
#include "prmt.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// --- Callbacks ---

// How the functions of a call behave. It is put back before the call is repeated.
struct Temper {
  int32_t calls;      // so far
  int32_t failingAt;  // this call returns `status`, when above 0
  int32_t status;
  int32_t curvature;  // of the problem
  double poison;      // takes the place of one value, unless 0
  const PrmtHblkShape* shape;
};

int32_t enter(void* user) {
  auto& temper = *static_cast<Temper*>(user);
  return ++temper.calls == temper.failingAt ? temper.status : 0;
}

double residual(const double* x, int32_t n, int32_t i, const Temper& temper) {
  const double a = x[i % n], b = x[(i * 5 + 1) % n];
  return a - 0.5 * i + (temper.curvature > 0 ? 0.1 * temper.curvature * b * b : 0);
}

int32_t residuals(const double* x, int32_t n, int32_t m, void* user, double* r) {
  const auto& temper = *static_cast<const Temper*>(user);
  for (int32_t i = 0; i < m; ++i) r[i] = residual(x, n, i, temper);
  if (temper.poison != 0) r[m / 2] = temper.poison;
  return enter(user);
}

int32_t energy(const double* x, int32_t n, int32_t m, void* user, double* sum) {
  const auto& temper = *static_cast<const Temper*>(user);
  *sum = temper.poison;
  for (int32_t i = 0; i < m; ++i) *sum += residual(x, n, i, temper) * residual(x, n, i, temper) / 2;
  return enter(user);
}

int32_t update(double* x, const double* step, int32_t n, void* user) {
  for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  return enter(user);
}

// Of the linear problem: exact where nothing is curved.
int32_t jacobian(const double*, int32_t n, int32_t m, void* user, PrmtMsp* matrix) {
  for (int32_t i = 0; i < m; ++i) {
    if (const int32_t status = PRMT_MSP_AddEle_tpl_f64(matrix, i, i % n, 1)) return status;
  }
  return enter(user);
}

int32_t differences(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* matrix) {
  std::vector<double> scratch(static_cast<size_t>(2 * (m + n)));
  return PRMT_JacNum_Process_f64(x, n, m, user, residuals, update, matrix, scratch.data());
}

int32_t normal(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b) {
  for (int32_t j = 0; j < n; ++j) {
    if (const int32_t status = PRMT_MSP_AddEle_tpl_f64(h, j, j, 1 + lambda)) return status;
    b[j] = 0.5 * j - x[j];
  }
  return enter(user);
}

int32_t blocks(const double* x, int32_t, int32_t, void* user, PrmtHblk* h) {
  const PrmtHblkShape& shape = h->shape;
  const int32_t sideA = shape.sizeA * shape.countA, sideB = shape.sizeB * shape.countB;
  for (int32_t i = 0; i < sideA; ++i) h->a[i * sideA + i] = 2, h->rhsA[i] = 0.5 * i - x[i];
  for (int32_t i = 0; i < sideB; ++i) {
    const int32_t k = i % shape.sizeB;
    h->b[(i - k) * shape.sizeB + k * shape.sizeB + k] = 2, h->rhsB[i] = 0.5 * i - x[sideA + i];
  }
  const int32_t links = shape.countB > 0 ? shape.linkStart[shape.countB] : 0;
  for (int32_t k = 0; k < links * shape.sizeA * shape.sizeB; ++k) h->w[k] = 0.01 * (k % 3);
  return enter(user);
}

// --- Solvers ---

constexpr int32_t kOwnStatus = 0x777;

// A callback, none where its record is spoiled.
template <class F>
F* given(Call& c, F* function) {
  return c.isSpoiled("functions", 40) ? nullptr : function;
}

Temper* temper(Call& c) {
  auto* const user = c.isSpoiled("user") ? nullptr : c.elements<Temper>("user", 1, Role::foreign);
  if (user) *user = {0, c.chance(90) ? 0 : 1 + c.random.below(12), kOwnStatus, c.random.below(3), 0, nullptr};
  if (user && c.chance(5)) user->poison = c.hostileReal();
  c.set<void*>("user", user);
  return user;
}

void settings(Call& c) {
  if (auto* const param = c.filled<PrmtLmParam>("param")) {
    param->maxIterations = static_cast<int32_t>(c.isSpoiled("param") ? c.between(-1, 30) : c.between(1, 20));
    param->verbose = c.chance(3), param->useDefaults = c.chance(10);
  }
  if (c.has("cg")) {
    if (auto* const cg = c.filled<PrmtCgParam>("cg")) cg->maxIterations = std::min(cg->maxIterations, 1000);
  }
  if (c.has("threshold")) c.real("threshold", 0.01, 5);
}

// Everything of a solver that the variants share; `query` tells the need.
void solve(Call& c, const std::function<DaxStatus(uint64_t*)>& query) {
  const auto n = c.get<int32_t>("n");
  if (double* const x = c.reals<double>("x", n < 1 ? -1 : n)) c.block(x)->firm = true;
  settings(c);
  uint64_t need = 0;
  const bool isNeedKnown = query(&need) == PRMT_STS_OK, known = isNeedKnown && need <= Arena::kMaxBytes;
  c.vague |= isNeedKnown && !known;
  const uint64_t room = known && c.chance(10) ? need * static_cast<uint64_t>(c.random.below(100)) / 100 : need;
  if (auto* const bytes = static_cast<uint64_t*>(c.array("bytes", 1))) *bytes = room;
  // Some memory where the query refuses the sides, as the solver must.
  const bool isGiven = (known || !isNeedKnown) && !c.isSpoiled("buffer");
  c.set("buffer", isGiven ? c.memory("buffer", known ? static_cast<int64_t>(room) : 1024, Role::work) : nullptr);
  c.worksBeforeFailing = true;
  for (const int64_t status :
       {PRMT_STS_FAILURE, PRMT_STS_FULL, PRMT_STS_NOT_FINITE, PRMT_STS_BUFFER_TOO_SMALL, PRMT_STS_BAD_PARAM}) {
    c.mayWriteOn(status);
  }
  c.mayWriteOn(kOwnStatus);
}

void sides(Call& c) {
  const int64_t n = c.number("n", 1, 6);
  if (c.number("m", std::clamp<int64_t>(n, 1, 10), 14) > 1000) c.set("m", 1000);  // all of which the callbacks go over
}

int64_t room(Call& c) {
  const int64_t n = c.get<int32_t>("n"), m = c.get<int32_t>("m");
  const bool enough = n >= 1 && n < 100 && m >= 1 && m < 100;
  return c.isSpoiled("functions", 50) ? c.hostileInteger() : enough && c.chance(30) ? n * m : 0;
}

template <auto query>
void solver(Call& c) {
  sides(c);
  temper(c);
  auto* const functions = c.record<PrmtLmFunctions>("functions");
  const int64_t elements = room(c);
  if (functions) {
    *functions = {given(c, residuals), given(c, c.chance(50) ? jacobian : differences), given(c, update), elements};
  }
  solve(c, [&](uint64_t* bytes) {
    return static_cast<DaxStatus>(query(c.get<int32_t>("n"), c.get<int32_t>("m"), elements, bytes));
  });
}

void normalSolver(Call& c) {
  sides(c);
  temper(c);
  auto* const functions = c.record<PrmtLmHmspFunctions>("functions");
  const int64_t elements = c.chance(70) ? 0 : room(c);
  if (functions) *functions = {given(c, energy), given(c, normal), given(c, update), elements};
  solve(c, [&](uint64_t* bytes) {
    const int32_t n = c.get<int32_t>("n"), m = c.get<int32_t>("m");
    return static_cast<DaxStatus>(PRMT_LM_HMSP_BufferSize_f64(n, m, elements, bytes));
  });
}

// Blocks, and n to match.
PrmtHblkShape shape(Call& c, const char* name) {
  PrmtHblkShape result = {
      1 + c.random.below(3), 1 + c.random.below(4), 1 + c.random.below(3), c.random.below(4), nullptr, nullptr};
  if (c.number("m", 1, 14) > 1000) c.set("m", 1000);
  const int32_t n = result.sizeA * result.countA + result.sizeB * result.countB;
  c.set("n", c.isSpoiled("n") ? static_cast<int32_t>(c.hostileInteger()) : n);
  auto* const starts = c.elements<int32_t>("linkStart", result.countB + 1, Role::input);
  auto* const links = c.elements<int32_t>("linkA", int64_t{result.countA} * result.countB, Role::input);
  int32_t count = 0;
  for (int32_t j = 0; j < result.countB; ++j) {
    starts[j] = count;
    for (int32_t i = 0; i < result.countA; ++i) {
      if (c.chance(60)) links[count++] = i;
    }
  }
  starts[result.countB] = count;
  result.linkStart = starts, result.linkA = links;
  if (c.isSpoiled(name)) {
    if (c.chance(30) && result.countB > 1)
      starts[c.between(0, result.countB - 1)] = static_cast<int32_t>(c.hostileInteger());
    if (c.chance(30) && count > 0) links[c.between(0, count - 1)] = static_cast<int32_t>(c.hostileInteger());
    if (c.chance(20)) (c.chance(50) ? result.linkStart : result.linkA) = nullptr;
    if (c.chance(30)) (c.chance(50) ? result.sizeA : result.sizeB) = static_cast<int32_t>(c.hostileInteger());
  }
  return result;
}

void blockSolver(Call& c) {
  const PrmtHblkShape layout = shape(c, "functions");
  temper(c);
  if (auto* const functions = c.record<PrmtLmHblkFunctions>("functions")) {
    *functions = {given(c, energy), given(c, blocks), given(c, update), layout};
  }
  solve(c, [&](uint64_t* bytes) {
    return static_cast<DaxStatus>(
        PRMT_LM_HBLK_BufferSize_f64(c.get<int32_t>("n"), c.get<int32_t>("m"), &layout, bytes));
  });
}

void blockNeed(Call& c) {
  const PrmtHblkShape layout = shape(c, "shape");
  if (auto* const record = c.record<PrmtHblkShape>("shape")) *record = layout;
}

// A Jacobian to add to, of the call's sides.
void numericJacobian(Call& c) {
  sides(c);
  temper(c);
  const auto n = c.get<int32_t>("n"), m = c.get<int32_t>("m");
  const auto side = [](int32_t given) { return given >= 1 && given < 100 ? given : 3; };
  const auto capacity = c.chance(90) ? side(n) * side(m) : 2;
  auto* const made = c.record<PrmtMsp>("jacobian");
  if (made) {
    uint64_t bytes = 0;
    PRMT_MSP_BufSize_f64(side(m), side(n), capacity, &bytes);
    PRMT_MSP_Init_f64(made, side(m), side(n), capacity,
                      c.memory("elements", static_cast<int64_t>(bytes), Role::output));
    if (c.isSpoiled("jacobian"))
      (c.chance(50) ? reinterpret_cast<void*&>(made->start) : reinterpret_cast<void*&>(made->value)) = nullptr;
  }
  c.set("residuals", c.isSpoiled("residuals") ? nullptr : residuals);
  c.set("update", c.isSpoiled("update") ? nullptr : update);
  c.reals<double>("x", side(n));
  c.array("scratch", 2 * side(m) + 2 * side(n));
  for (const int64_t status : {int64_t{PRMT_STS_FULL}, int64_t{kOwnStatus}}) c.mayWriteOn(status);
}

const Rows rows = {
    {"PRMT_LM_HBLK_BufferSize_f64", blockNeed},
    {"PRMT_LM_Process_f64", solver<PRMT_LM_BufferSize_f64>},
    {"PRMT_LM_HUBER_Process_f64", solver<PRMT_LM_HUBER_BufferSize_f64>},
    {"PRMT_LM_CG_Process_f64", solver<PRMT_LM_CG_BufferSize_f64>},
    {"PRMT_LM_HMSP_Process_f64", normalSolver},
    {"PRMT_LM_HBLK_Process_f64", blockSolver},
    {"PRMT_JacNum_Process_f64", numericJacobian},
};

}  // namespace
}  // namespace dax::hostile
