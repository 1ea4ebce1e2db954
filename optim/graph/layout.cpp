#include "optim/graph/layout.h"

#include <algorithm>
#include <utility>

#include "optim/graph/storage.h"
#include "optim/sparse/cholesky_analysis.h"
#include "optim/sparse/msp.h"

namespace dax {
namespace {

// The positions of both ends, the lower first; (-1, -1) unless two are free.
std::pair<int32_t, int32_t> pairOf(const PrgoGraph& graph, const int32_t* position, int32_t edge) {
  const int32_t second = endOf(graph, edge, 1);
  if (second < 0) return {-1, -1};
  const int32_t a = position[endOf(graph, edge, 0)], b = position[second];
  if (a < 0 || b < 0) return {-1, -1};
  return std::minmax(a, b);
}

// Points of the kind that a solver by blocks eliminates.
int32_t pointType(const PrgoGraph& graph) {
  const auto isSpatial = [](const PrgoVertex& v) { return v.type == PRGO_VERTEX_POINT3 && !v.isFixed; };
  return std::any_of(graph.vertices, graph.vertices + graph.vertexCount, isSpatial) ? PRGO_VERTEX_POINT3
                                                                                    : PRGO_VERTEX_POINT2;
}

}  // namespace

Layout::Layout(Arena& arena, int32_t vertexCount, int32_t edgeCount) : edges(edgeCount) {
  const uint64_t v = unsignedOf(vertexCount), e = unsignedOf(edgeCount);
  held = arena.take<uint8_t>(v);
  vertexAt = arena.take<int32_t>(v);
  position = arena.take<int32_t>(v);
  column = arena.take<int32_t>(v + 1);
  row = arena.take<int32_t>(e + 1);
  pairAt = arena.take<int32_t>(e);
  edgeAt = arena.take<int32_t>(kEdgeEnds * e);
  blocks.start = arena.take<int64_t>(v + 1);
  blocks.row = arena.take<int32_t>(v + e);
  blockAt_ = arena.take<int32_t>(v + e);
  used_ = arena.take<int32_t>(v);
  linkStart_ = arena.take<int32_t>(v + 1);
  linkA_ = arena.take<int32_t>(kMaxSize * e);
}

void Layout::build(Arena& arena, const PrgoGraph& graph, Solver solver) {
  graph_ = &graph;
  gauge = findGauge(arena, graph, held);
  placeVertices(solver);
  placeEdges();
  if (solver == Solver::blocks) {
    layLinks(arena);
  } else {
    layBlocks(arena);
    findBlocks();
  }
}

void Layout::placeVertices(Solver solver) {
  const int32_t points = solver == Solver::blocks ? pointType(*graph_) : -1;
  free = 0;
  const auto place = [&](bool second) {
    for (int32_t v = 0; v < graph_->vertexCount; ++v) {
      const PrgoVertex& vertex = graph_->vertices[v];
      if ((vertex.type == points) != second) continue;
      position[v] = vertex.isFixed || held[v] == kHeld ? -1 : free;
      if (position[v] < 0) continue;
      column[free + 1] = column[free] + vertex.size;
      vertexAt[free++] = v;
    }
  };
  column[0] = 0;
  place(false);
  groupA = free;
  place(true);
  // A system needs a first group; the parts of one of several sizes are single parameters.
  if (groupA == 0) groupA = free;
  sizeA = free > 0 ? sizeAt(0) : 1;
  for (int32_t p = 0; p < groupA; ++p) {
    if (sizeAt(p) != sizeA) sizeA = 1;
  }
  sizeB = free > groupA ? sizeAt(groupA) : 1;
}

// Residuals of kernels have a row more.
void Layout::placeEdges() {
  std::fill_n(used_, free, 0);
  row[0] = 0;
  for (int32_t e = 0; e < edges; ++e) {
    const int32_t rows = viewOf(*graph_, e).rows;
    row[e + 1] = row[e] + rows + (graph_->edges[e].kernel != PRGO_KERNEL_NONE);
    for (int k = 0; k < kEdgeEnds; ++k) {
      const int32_t end = endOf(*graph_, e, k), p = end < 0 ? -1 : position[end];
      if (p < 0) continue;
      edgeAt[kEdgeEnds * int64_t{e} + k] = used_[p];
      used_[p] += rows;
    }
  }
}

void Layout::layBlocks(Arena& arena) {
  const Arena::Scope scope(arena);
  int64_t* const next = arena.borrow<int64_t>(unsignedOf(free) + 1);
  blocks.rows = blocks.cols = free;
  std::fill_n(next, free + 1, int64_t{0});
  for (int32_t e = 0; e < edges; ++e) {
    const auto [low, high] = pairOf(*graph_, position, e);
    if (low >= 0) ++next[low + 1];
  }
  for (int32_t p = 0; p < free; ++p) next[p + 1] += next[p] + 1;
  for (int32_t p = 0; p < free; ++p) {
    blocks.start[p] = next[p];
    blocks.row[next[p]++] = p;
  }
  blocks.start[free] = next[free];
  for (int32_t e = 0; e < edges; ++e) {
    const auto [low, high] = pairOf(*graph_, position, e);
    if (low >= 0) blocks.row[next[low]++] = high;
  }
  // Each column sorted, without repetitions, and moved up.
  int64_t end = 0;
  for (int32_t p = 0; p < free; ++p) {
    int32_t *const from = blocks.row + blocks.start[p], *const to = blocks.row + blocks.start[p + 1];
    std::sort(from, to);
    const int64_t count = std::unique(from, to) - from;
    std::copy_n(from, count, blocks.row + end);
    blocks.start[p] = end;
    end += count;
  }
  blocks.start[free] = blocks.capacity = end;
}

void Layout::findBlocks() {
  for (int32_t p = 0; p < free; ++p) {
    int32_t at = 0;
    for (int64_t k = blocks.start[p] + 1; k < blocks.start[p + 1]; ++k) {
      blockAt_[k] = at;
      at += sizeAt(blocks.row[k]);
    }
  }
  for (int32_t e = 0; e < edges; ++e) {
    const auto [low, high] = pairOf(*graph_, position, e);
    if (low < 0) continue;
    const int32_t* const found =
        std::lower_bound(blocks.row + blocks.start[low], blocks.row + blocks.start[low + 1], high);
    pairAt[e] = blockAt_[found - blocks.row];
  }
}

// Links of each vertex of the second group: blocks of sizeA parameters of the first, ascending.
void Layout::layLinks(Arena& arena) {
  const Arena::Scope scope(arena);
  const int32_t count = free - groupA;
  int64_t* const next = arena.borrow<int64_t>(unsignedOf(free) + 1);
  int32_t* const found = arena.borrow<int32_t>(unsignedOf(edges));
  std::fill_n(next, count + 1, int64_t{0});
  const auto forEachLink = [&](const auto& visit) {
    for (int32_t e = 0; e < edges; ++e) {
      const auto pair = pairOf(*graph_, position, e);
      if (pair.first >= 0 && pair.second >= groupA) visit(e, pair.first, pair.second - groupA);
    }
  };
  forEachLink([&](int32_t, int32_t, int32_t j) { ++next[j + 1]; });
  for (int32_t j = 0; j < count; ++j) next[j + 1] += next[j];
  forEachLink([&](int32_t, int32_t a, int32_t j) { found[next[j]++] = a; });
  int32_t end = 0;
  int64_t from = 0;
  for (int32_t j = 0; j < count; ++j) {
    linkStart_[j] = end;
    int32_t *const first = found + from, *const last = found + next[j];
    from = next[j];
    std::sort(first, last);
    const int32_t* const distinct = std::unique(first, last);
    for (const int32_t* a = first; a != distinct; ++a) {
      for (int32_t c = column[*a]; c < column[*a + 1]; c += sizeA) linkA_[end++] = c / sizeA;
    }
  }
  linkStart_[count] = end;
  std::fill_n(pairAt, edges, -1);
  forEachLink([&](int32_t e, int32_t a, int32_t j) {
    const int32_t *const first = linkA_ + linkStart_[j], *const last = linkA_ + linkStart_[j + 1];
    pairAt[e] = static_cast<int32_t>(std::lower_bound(first, last, column[a] / sizeA) - linkA_);
  });
}

int64_t Layout::normalElements() const {
  int64_t elements = 0;
  for (int32_t p = 0; p < free; ++p) {
    const int64_t size = sizeAt(p);
    elements += size * (size + 1) / 2;
    for (int64_t k = blocks.start[p] + 1; k < blocks.start[p + 1]; ++k) elements += size * sizeAt(blocks.row[k]);
  }
  return elements;
}

int64_t Layout::jacobianElements() const {
  int64_t elements = 0;
  for (int32_t p = 0; p < free; ++p) elements += int64_t{used_[p]} * sizeAt(p);
  return elements;
}

void Layout::setNormalPattern(PrmtMsp& h) const {
  int64_t end = 0;
  for (int32_t p = 0; p < free; ++p) {
    for (int32_t c = column[p]; c < column[p + 1]; ++c) {
      h.start[c] = end;
      for (int32_t r = c; r < column[p + 1]; ++r) h.row[end++] = r;
      for (int64_t k = blocks.start[p] + 1; k < blocks.start[p + 1]; ++k) {
        for (int32_t r = column[blocks.row[k]]; r < column[blocks.row[k] + 1]; ++r) h.row[end++] = r;
      }
    }
  }
  h.start[parameters()] = end;
  std::fill_n(h.value, end, 0.0);
  ++h.patternVersion;
}

void Layout::setJacobianPattern(PrmtMsp& jacobian) const {
  int64_t end = 0;
  for (int32_t p = 0; p < free; ++p) {
    for (int32_t c = column[p]; c < column[p + 1]; ++c, end += used_[p]) jacobian.start[c] = end;
  }
  jacobian.start[parameters()] = end;
  for (int32_t e = 0; e < edges; ++e) {
    const int32_t rows = viewOf(*graph_, e).rows;
    for (int k = 0; k < kEdgeEnds; ++k) {
      const int32_t vertex = endOf(*graph_, e, k), p = vertex < 0 ? -1 : position[vertex];
      if (p < 0) continue;
      for (int32_t c = column[p]; c < column[p + 1]; ++c) {
        int32_t* const to = jacobian.row + jacobian.start[c] + edgeAt[kEdgeEnds * int64_t{e} + k];
        for (int32_t r = 0; r < rows; ++r) to[r] = row[e] + r;
      }
    }
  }
  std::fill_n(jacobian.value, end, 0.0);
  ++jacobian.patternVersion;
}

PrmtHblkShape Layout::shape() const {
  return {sizeA, column[groupA] / sizeA, sizeB, free - groupA, linkStart_, linkA_};
}

void countBuild(Arena& arena, int32_t vertices, int32_t edges) {
  measureGauge(arena, vertices);
  const Arena::Scope scope(arena);
  arena.borrow<int64_t>(unsignedOf(vertices) + 1);
  arena.borrow<int32_t>(unsignedOf(edges));
}

void measureLayout(Arena& arena, int32_t vertices, int32_t edges) {
  const Layout layout(arena, vertices, edges);
  countBuild(arena, vertices, edges);
  measureBlockOrder(arena, vertices, unsignedOf(vertices) + unsignedOf(edges), kMaxSize);
}

}  // namespace dax
