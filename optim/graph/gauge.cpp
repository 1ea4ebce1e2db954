#include "optim/graph/gauge.h"

#include <algorithm>
#include <cmath>

#include "geometry/union_find.h"
#include "optim/graph/information.h"
#include "optim/graph/storage.h"

namespace dax {
namespace {

enum : uint8_t { kFixed = 1, kPrior = 2, kFullPrior = 4, kScale = 8, kMoreFixed = 16 };

struct ComponentWork {
  ComponentWork(Arena& arena, int32_t vertices)
      : parents(arena.borrow<uint32_t>(unsignedOf(vertices))),
        candidate(arena.borrow<int32_t>(unsignedOf(vertices))),
        second(arena.borrow<int32_t>(unsignedOf(vertices))),
        flags(arena.borrow<uint8_t>(unsignedOf(vertices))) {}
  uint32_t* parents;
  int32_t* candidate;  // of each root: the vertex to be held, or -1
  int32_t* second;     // of each root: the next one by the same order, or -1
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

bool isSpatialPose(const PrgoVertex& v) {
  return v.type == PRGO_VERTEX_SE3;
}

// The number of the second pose's step that the scale changes the most, marked where the scale of the component is free: one
// pose is fixed or held, and all edges are pictures.
bool holdScale(const PrgoGraph& graph, int32_t first, int32_t second, uint8_t* held) {
  if (second < 0 || !isSpatialPose(graph.vertices[first]) || !isSpatialPose(graph.vertices[second])) return false;
  const PrgoVertex &a = graph.vertices[first], &b = graph.vertices[second];
  const State state = stateOf(b.type, b.size, b.estimate);
  double way[3];
  store3(turnedBack(state.r, load3(b.estimate) - load3(a.estimate)), way);
  int k = 0;
  for (const int i : {1, 2}) {
    if (std::fabs(way[i]) > std::fabs(way[k])) k = i;
  }
  if (!(std::fabs(way[k]) > 0)) return false;
  held[second] = static_cast<uint8_t>(kHeldNumber + k);
  return true;
}

// Notes the vertices of each component: the first two poses by id, fixed ones before others, and what is fixed.
void noteVertices(const PrgoGraph& graph, UnionFind& sets, const ComponentWork& work) {
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    const uint32_t root = sets.root(static_cast<uint32_t>(v));
    const PrgoVertex& vertex = graph.vertices[v];
    int32_t &best = work.candidate[root], &second = work.second[root];
    const auto isBefore = [&](int32_t other) {
      if (other < 0) return true;
      const PrgoVertex& known = graph.vertices[other];
      return vertex.isFixed != known.isFixed ? vertex.isFixed > known.isFixed : comesBefore(vertex, known);
    };
    if (isBefore(best)) {
      second = best, best = v;
    } else if (isBefore(second)) {
      second = v;
    }
    if (!vertex.isFixed) continue;
    work.flags[root] |= work.flags[root] & kFixed ? kMoreFixed : kFixed;
  }
}

}  // namespace

Gauge findGauge(Arena& arena, const PrgoGraph& graph, uint8_t* held) {
  const Arena::Scope scope(arena);
  const ComponentWork work(arena, graph.vertexCount);
  UnionFind sets = joinComponents(graph, work.parents);
  const auto rootOf = [&](int32_t v) { return sets.root(static_cast<uint32_t>(v)); };
  std::fill_n(work.candidate, graph.vertexCount, -1);
  std::fill_n(work.second, graph.vertexCount, -1);
  std::fill_n(work.flags, graph.vertexCount, uint8_t{0});
  std::fill_n(held, graph.vertexCount, uint8_t{0});
  noteVertices(graph, sets, work);
  for (int32_t e = 0; e < graph.edgeCount; ++e) {
    if (graph.edges[e].type != PRGO_EDGE_PROJECTION) work.flags[rootOf(endOf(graph, e, 0))] |= kScale;
    if (graph.edges[e].type != PRGO_EDGE_PRIOR) continue;
    const uint32_t root = rootOf(endOf(graph, e, 0));
    work.flags[root] |= kPrior;
    if (isFullPrior(graph, e, graph.vertices[work.candidate[root]])) work.flags[root] |= kFullPrior;
  }
  Gauge gauge{0, 0, 0, 0, -1};
  for (int32_t v = 0; v < graph.vertexCount; ++v) {
    if (rootOf(v) != static_cast<uint32_t>(v)) continue;
    ++gauge.components;
    const uint8_t flags = work.flags[v];
    gauge.loose += (flags & (kFixed | kPrior | kFullPrior)) == kPrior;
    const int32_t chosen = work.candidate[v];
    if (!(flags & (kScale | kMoreFixed))) gauge.scales += holdScale(graph, chosen, work.second[v], held);
    if ((flags & (kFixed | kPrior)) != 0) continue;
    held[chosen] = kHeld;
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
