#include "optim/graph/gauge.h"

#include <algorithm>

#include "geometry/union_find.h"
#include "optim/graph/information.h"
#include "optim/graph/storage.h"

namespace dax {
namespace {

enum : uint8_t { kFixed = 1, kPrior = 2, kFullPrior = 4 };

struct ComponentWork {
  ComponentWork(Arena& arena, int32_t vertices)
      : parents(arena.borrow<uint32_t>(unsignedOf(vertices))),
        candidate(arena.borrow<int32_t>(unsignedOf(vertices))),
        flags(arena.borrow<uint8_t>(unsignedOf(vertices))) {}
  uint32_t* parents;
  int32_t* candidate;  // of each root: the vertex to be held, or -1
  uint8_t* flags;      // of each root
};

// Poses before points, then by id.
bool comesBefore(const PrgoVertex& a, const PrgoVertex& b) {
  const auto isPose = [](const PrgoVertex& v) { return v.type == PRGO_VERTEX_SE2 || v.type == PRGO_VERTEX_SE3; };
  return isPose(a) != isPose(b) ? isPose(a) : a.id < b.id;
}

UnionFind joinComponents(const PrgoGraph& graph, uint32_t* parents) {
  UnionFind sets(parents);
  for (int32_t v = 0; v < graph.vertexCount; ++v) sets.add();
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    if (endOf(graph, e, 1) < 0) continue;
    const uint32_t a = sets.root(static_cast<uint32_t>(endOf(graph, e, 0)));
    const uint32_t b = sets.root(static_cast<uint32_t>(endOf(graph, e, 1)));
    if (a != b) sets.unite(a, b);
  }
  return sets;
}

// A prior determines a component when it determines a pose of it, or its only kind of vertex.
bool isFullPrior(const PrgoGraph& graph, int32_t edge, const PrgoVertex& best) {
  const PrgoVertex& vertex = graph.vertices[endOf(graph, edge, 0)];
  const EdgeView view = viewOf(graph, edge);
  return vertex.size == best.size && rankOfRoot(view.root, view.rows) == vertex.size;
}

}  // namespace

Gauge findGauge(Arena& arena, const PrgoGraph& graph, uint8_t* held) {
  const Arena::Scope scope(arena);
  const ComponentWork work(arena, graph.vertexCount);
  UnionFind sets = joinComponents(graph, work.parents);
  const auto rootOf = [&](int32_t v) { return sets.root(static_cast<uint32_t>(v)); };
  std::fill_n(work.candidate, graph.vertexCount, -1);
  std::fill_n(work.flags, graph.vertexCount, uint8_t{0});
  std::fill_n(held, graph.vertexCount, uint8_t{0});
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const uint32_t root = rootOf(v);
    int32_t& best = work.candidate[root];
    if (best < 0 || comesBefore(graph.vertices[v], graph.vertices[best])) best = v;
    if (graph.vertices[v].isFixed) work.flags[root] |= kFixed;
  }
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    if (graph.edges[e].type != PRGO_EDGE_PRIOR) continue;
    const uint32_t root = rootOf(endOf(graph, e, 0));
    work.flags[root] |= kPrior;
    if (isFullPrior(graph, e, graph.vertices[work.candidate[root]])) work.flags[root] |= kFullPrior;
  }
  Gauge gauge{0, 0, 0, -1};
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    if (rootOf(v) != static_cast<uint32_t>(v)) continue;
    ++gauge.components;
    gauge.loose += work.flags[v] == kPrior;
    if (work.flags[v] != 0) continue;
    const int32_t chosen = work.candidate[v];
    held[chosen] = 1;
    const int64_t id = graph.vertices[chosen].id;
    gauge.firstHeld = gauge.held++ == 0 ? id : std::min(gauge.firstHeld, id);
  }
  return gauge;
}

void measureGauge(Arena& arena, int32_t vertices) {
  const Arena::Scope scope(arena);
  const ComponentWork work(arena, vertices);
}

}  // namespace dax
