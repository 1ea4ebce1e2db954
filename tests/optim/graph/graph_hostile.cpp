// Graphs of a few poses and points.
#include "prgo.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

constexpr int32_t kTypes[] = {PRGO_VERTEX_SE2, PRGO_VERTEX_SE2,    PRGO_VERTEX_POINT2, PRGO_VERTEX_SE3,
                              PRGO_VERTEX_SE3, PRGO_VERTEX_POINT3, PRGO_VERTEX_SE2};
constexpr int32_t kSizes[] = {3, 6, 2, 3, 4};

void fillNumbers(Call& c, double* to, int32_t count) {
  for (int32_t i = 0; i < count; ++i) to[i] = static_cast<double>(c.between(-40, 40)) / 8;
}

// Half a unit matrix, or one that is not definite.
void information(Call& c, int32_t size, bool definite, double* upper) {
  for (int32_t i = 0; i < size; ++i) {
    for (int32_t j = i; j < size; ++j)
      *upper++ = i == j ? (definite ? 1 : c.chance(50) ? -1 : 1e-9) : definite ? 0.1 : 3;
  }
}

// A graph of some of the vertices above, with ids 10 apart; null or without memory where it is spoiled.
PrgoGraph* graph(Call& c, Role role, bool isWritable = false) {
  auto* const record = c.record<PrgoGraph>("graph");
  if (!record) return nullptr;
  const auto count = static_cast<int32_t>(c.between(3, 7)), room = static_cast<int32_t>(c.between(count, 8));
  const auto edges = static_cast<int32_t>(c.between(1, 9));
  uint64_t bytes = 0;
  PRGO_GRAPH_BufferSize(room, edges, &bytes);
  void* const memory = c.memory("memory", static_cast<int64_t>(bytes), role);
  std::memset(memory, 0, bytes);
  PRGO_GRAPH_Init(record, room, edges, memory);
  for (int32_t v = 0; v < count; ++v) {
    PrgoVertex vertex{10 * v, kTypes[v], 0, static_cast<uint8_t>(c.chance(15)), 0, {}};
    fillNumbers(c, vertex.estimate, 6);
    PRGO_GRAPH_AddVertex(record, &vertex);
  }
  const int32_t pairs[][3] = {{0, 0, 10}, {2, 10, 20}, {0, 30, 40}, {2, 40, 50}, {1, 30, 0}, {0, 10, 60}, {2, 0, 20}};
  for (int32_t e = static_cast<int32_t>(c.between(0, 7)); e > 0; --e) {
    const auto& [type, from, to] = pairs[isWritable ? c.pick({0, 1, 5}) : c.random.below(7)];
    PrgoEdge edge{{from, to}, type, c.random.below(5), 0, {}, {}};
    fillNumbers(c, edge.measurement, 6);
    information(c, type == 2 ? (from < 30 ? 2 : 3) : (from < 30 || from == 60 ? 3 : 6), true, edge.information);
    PRGO_GRAPH_AddEdge(record, &edge);
  }
  if (c.isSpoiled("graph")) (c.chance(50) ? reinterpret_cast<void*&>(record->vertices) : record->scratch) = nullptr;
  return record;
}

void create(Call& c) {
  const int64_t vertices = c.number("vertexCapacity", 1, 100000000, 20),
                edges = c.number("edgeCapacity", 0, 100000000, 20);
  if (!c.has("graph")) return;
  c.record<PrgoGraph>("graph");
  c.work("buffer", [&](uint64_t* bytes) {
    return static_cast<DaxStatus>(
        PRGO_GRAPH_BufferSize(static_cast<int32_t>(vertices), static_cast<int32_t>(edges), bytes));
  });
}

void addVertex(Call& c) {
  graph(c, Role::output);
  auto* const vertex = c.record<PrgoVertex>("vertex");
  if (!vertex) return;
  const int32_t type = c.random.below(5);
  *vertex = {c.between(1, 999) * 10 + 5, type, kSizes[type], static_cast<uint8_t>(c.chance(50)), 0, {}};
  fillNumbers(c, vertex->estimate, 6);
  if (!c.isSpoiled("vertex")) return;
  switch (c.random.below(4)) {
    case 0:
      vertex->type = c.chance(50) ? -1 : 5;
      break;
    case 1:
      vertex->type = PRGO_VERTEX_VECTOR, vertex->size = c.chance(50) ? 0 : 7;
      break;
    case 2:
      vertex->id = 10;
      break;
    default:
      vertex->estimate[0] = c.pick({double{NAN}, double{INFINITY}});
  }
}

void addEdge(Call& c) {
  graph(c, Role::output);
  auto* const edge = c.record<PrgoEdge>("edge");
  if (!edge) return;
  *edge = {{0, 10}, PRGO_EDGE_RELATIVE, c.random.below(5), c.chance(50) ? 0 : 2.5, {}, {}};
  if (c.chance(30)) edge->type = PRGO_EDGE_PRIOR, edge->vertices[1] = c.between(-5, 5);
  if (c.chance(30)) edge->type = PRGO_EDGE_LANDMARK, edge->vertices[1] = 20;
  const int32_t size = edge->type == PRGO_EDGE_LANDMARK ? 2 : 3;
  fillNumbers(c, edge->measurement, 6);
  const bool wrong = c.isSpoiled("edge");
  const int32_t way = c.random.below(5);
  information(c, size, !wrong || way != 0, edge->information);
  if (!wrong) return;
  if (way == 1) edge->vertices[0] = c.pick({int64_t{7}, int64_t{20}, int64_t{30}});
  if (way == 2) edge->kernel = c.chance(50) ? -1 : 5;
  if (way == 3) edge->measurement[0] = NAN;
  if (way == 4) edge->kernelWidth = c.pick({-1.0, double{NAN}});
}

void oneVertex(Call& c) {
  const bool isConst = std::string_view(c.function.name) == "PRGO_GRAPH_Estimate";
  graph(c, isConst ? Role::input : Role::output);
  c.set("id", c.isSpoiled("id") ? c.between(71, 99) : int64_t{10});
  if (c.has("isFixed")) c.number("isFixed", 0, 1);
  if (c.has("estimate"))
    isConst ? static_cast<void>(c.array("estimate", 3)) : static_cast<void>(c.reals<double>("estimate", 3));
}

void wholeGraph(Call& c) {
  graph(c, Role::input);
}

PrgoCfg* configuration(Call& c) {
  return c.filled<PrgoCfg>("cfg", 1, [&](PrgoCfg& cfg) {
    cfg.solverType = c.between(0, 4), cfg.maxIterations = static_cast<int32_t>(c.between(1, 30));
    cfg.verbose = c.chance(2), cfg.progress = nullptr, cfg.user = nullptr;
  });
}

void need(Call& c) {
  graph(c, Role::foreign);
  configuration(c);
}

void optimise(Call& c) {
  const PrgoGraph* const made = graph(c, Role::foreign);
  const PrgoCfg* const cfg = configuration(c);
  uint64_t bytes = 4096;
  PrgoCfg usable{};
  PRGO_CORE_DefaultCfg(&usable);
  if (cfg) usable.solverType = cfg->solverType;
  if (made && made->vertices && made->scratch) PRGO_CORE_BufferSize(made, &usable, &bytes);
  const uint64_t room = c.chance(10) ? bytes * static_cast<uint64_t>(c.random.below(100)) / 100 : bytes;
  if (auto* const given = static_cast<uint64_t*>(c.array("bytes", 1))) *given = room;
  c.set("buffer", c.isSpoiled("buffer") ? nullptr : c.memory("buffer", static_cast<int64_t>(room), Role::work));
  c.worksBeforeFailing = true;
  for (const int64_t status : {PRGO_STS_NOT_CONVERGED, PRGO_STS_BUFFER_TOO_SMALL}) c.mayWriteOn(status);
}

// Words of the format, most of them where they belong.
void fillText(Call& c, char* text, size_t length) {
  static constexpr const char* kLines[] = {"VERTEX_SE2 1 0 0 0\n",
                                           "VERTEX_SE2 2 1 0 0.5\n",
                                           "VERTEX_XY 3 1 2\n",
                                           "FIX 1\n",
                                           "EDGE_SE2_XY 1 3 1 1 2 0 2\n",
                                           "#\r\n",
                                           "EDGE_SE2 1 2 1 0 0 1 0 0 1 0 1\n",
                                           "TAG 1e999 -\n",
                                           "EDGE_SE2 1 2 1\n"};
  size_t at = 0;
  for (int32_t k = 0; at < length; ++k) {
    const std::string_view line = kLines[c.chance(99) ? k % 7 : c.random.below(9)];
    const size_t count = std::min(line.size(), length - at);
    std::memcpy(text + at, line.data(), count);
    at += count;
    if (k == 6) break;
  }
  std::memset(text + at, '\n', length - at);
  if (c.chance(3) && length > 0)
    text[c.random.below(static_cast<int32_t>(length))] = static_cast<char>(c.random.below(256));
}

void text(Call& c) {
  const auto length = static_cast<uint64_t>(c.chance(80) ? c.between(140, 200) : c.between(0, 139));
  if (auto* const made = static_cast<char*>(c.array("text", static_cast<int64_t>(length)))) {
    if (c.block(made)) fillText(c, made, length);
  }
  c.set("length", length);
  c.record<PrgoTextInfo>("info");
  if (!c.has("graph")) return;
  PrgoGraph* const record = graph(c, Role::foreign);
  if (record && record->vertices && record->scratch && c.chance(97)) {
    record->vertexCount = record->edgeCount = 0;
    uint64_t bytes = 0;
    PRGO_GRAPH_BufferSize(record->vertexCapacity, record->edgeCapacity, &bytes);
    PRGO_GRAPH_Init(record, record->vertexCapacity, record->edgeCapacity, record->vertices);
  }
  for (const int64_t status : {PRGO_STS_BAD_TEXT, PRGO_STS_FULL}) c.mayWriteOn(status);
}

void writeText(Call& c) {
  const PrgoGraph* const made = graph(c, Role::input, c.chance(90));
  uint64_t need = 0;
  char none = 0;
  if (made && made->vertices && made->scratch) PRGO_GRAPH_WriteText(made, &none, &need);
  const int64_t room = c.chance(80) ? static_cast<int64_t>(need) : c.between(0, static_cast<int64_t>(need));
  c.array("text", room);
  if (auto* const bytes = static_cast<uint64_t*>(c.array("bytes", 1))) *bytes = static_cast<uint64_t>(room);
  c.mayWriteOn(PRGO_STS_BUFFER_TOO_SMALL);
}

void marginals(Call& c) {
  const PrgoGraph* const made = graph(c, Role::foreign);
  const int64_t count = c.number("count", 1, 100000, 4);
  auto* const ids = static_cast<int64_t*>(c.array("ids", count));
  const Block* const block = c.block(ids);
  for (size_t i = 0; block && i < block->bytes / sizeof *ids; ++i) ids[i] = 10 * c.random.below(3);
  if (block && block->bytes > 0 && c.isSpoiled("ids")) ids[0] = 7;
  c.array("covariances", count < 1 ? -1 : 36 * count);
  uint64_t bytes = 4096;
  if (made && made->vertices && made->scratch) PRGO_CORE_MarginalsBufferSize(made, &bytes);
  const uint64_t room = c.chance(10) ? bytes * static_cast<uint64_t>(c.random.below(100)) / 100 : bytes;
  if (auto* const given = static_cast<uint64_t*>(c.array("bytes", 1))) *given = room;
  c.set("buffer", c.isSpoiled("buffer") ? nullptr : c.memory("buffer", static_cast<int64_t>(room), Role::work));
  c.worksBeforeFailing = true;
  c.mayWriteOn(PRGO_STS_BUFFER_TOO_SMALL);
}

void marginalsNeed(Call& c) {
  graph(c, Role::foreign);
}

const Rows rows = {
    {"PRGO_GRAPH_BufferSize", create},     {"PRGO_GRAPH_Init", create},
    {"PRGO_GRAPH_AddVertex", addVertex},   {"PRGO_GRAPH_AddEdge", addEdge},
    {"PRGO_GRAPH_Fix", oneVertex},         {"PRGO_GRAPH_Estimate", oneVertex},
    {"PRGO_GRAPH_SetEstimate", oneVertex}, {"PRGO_GRAPH_Energy", wholeGraph},
    {"PRGO_CORE_BufferSize", need},        {"PRGO_CORE_optimize", optimise},
    {"PRGO_CORE_Marginals", marginals},    {"PRGO_CORE_MarginalsBufferSize", marginalsNeed},
    {"PRGO_GRAPH_CountText", text},        {"PRGO_GRAPH_ReadText", text},
    {"PRGO_GRAPH_WriteText", writeText},
};

}  // namespace
}  // namespace dax::hostile
