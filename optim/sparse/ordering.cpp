#include "optim/sparse/ordering.h"

#include <algorithm>
#include <cstring>

namespace dax {
namespace {

// The quotient graph. A node is a variable or, after its elimination, an element: the clique that the elimination
// created. The list of a variable holds its elements, then the neighbours that no element covers; the list of an
// element holds its variables. Indistinguishable variables are merged and elements inside others are absorbed; both
// leave the graph.
struct Quotient {
  Quotient(Arena& arena, int32_t nodes, int32_t columns, uint64_t adjacent) : room(adjacent + unsignedOf(nodes)) {
    const auto n = unsignedOf(nodes);
    start = arena.borrow<int64_t>(n);
    mark = arena.borrow<int64_t>(n);
    seen = arena.borrow<int64_t>(n);
    for (int32_t** each : {&length, &elements, &weight, &degree, &next, &previous, &chain, &tail, &bucket, &alive}) {
      *each = arena.borrow<int32_t>(n);
    }
    head = arena.borrow<int32_t>(unsignedOf(columns) + 1);
    lists = arena.borrow<int32_t>(room);
  }

  int64_t* start = nullptr;     // of the node's list
  int64_t* mark = nullptr;      // of elements: see countOutside(); 0: not an element of the graph
  int64_t* seen = nullptr;      // tag of the nodes in the list that others are compared with
  int32_t* length = nullptr;    // of the list
  int32_t* elements = nullptr;  // number of elements at the start of a variable's list
  int32_t* weight = nullptr;    // columns of a variable; 0: not in the graph; negative: in the clique being formed
  int32_t* degree = nullptr;    // variable: bound on the weight of its neighbours; element: weight of its variables
  int32_t* next = nullptr;      // list of variables of one degree or one hash value
  int32_t* previous = nullptr;
  int32_t* chain = nullptr;   // next node eliminated together with this one
  int32_t* tail = nullptr;    // end of the chain
  int32_t* bucket = nullptr;  // first variable of each hash value
  int32_t* alive = nullptr;   // scratch
  int32_t* head = nullptr;    // first variable of each degree
  int32_t* lists = nullptr;
  uint64_t room;
};

class MinimumDegree {
 public:
  MinimumDegree(const Quotient& quotient, const WeightedGraph& graph)
      : q_(quotient), n_(graph.nodes), left_(graph.columns) {
    std::fill_n(q_.head, graph.columns + 1, kNone);
    std::fill_n(q_.bucket, n_, kNone);
    for (int32_t i = 0; i < n_; ++i) {
      q_.start[i] = graph.start[i];
      q_.length[i] = static_cast<int32_t>(graph.start[i + 1] - graph.start[i]);
      q_.elements[i] = 0;
      q_.weight[i] = graph.weight[i];
      q_.mark[i] = 0;
      q_.seen[i] = 0;
      q_.chain[i] = kNone;
      q_.tail[i] = i;
      q_.degree[i] = 0;
      for (int64_t p = graph.start[i]; p < graph.start[i + 1]; ++p) q_.degree[i] += graph.weight[graph.adjacent[p]];
    }
    end_ = graph.start[n_];
    if (end_ > 0) std::memcpy(q_.lists, graph.adjacent, static_cast<size_t>(end_) * sizeof(int32_t));
    // Reverse order, so that ties are broken by ascending position.
    for (int32_t i = n_ - 1; i >= 0; --i) enlist(i);
  }

  void run(int32_t* order) {
    int32_t* to = order;
    while (left_ > 0) {
      pivot_ = takeMinimum();
      eliminate();
      for (int32_t i = pivot_; i != kNone; i = q_.chain[i]) *to++ = i;
    }
  }

 private:
  void enlist(int32_t i) {
    int32_t& first = q_.head[q_.degree[i]];
    q_.next[i] = first;
    q_.previous[i] = kNone;
    if (first != kNone) q_.previous[first] = i;
    first = i;
    minDegree_ = std::min(minDegree_, q_.degree[i]);
  }

  void unlist(int32_t i) {
    if (q_.next[i] != kNone) q_.previous[q_.next[i]] = q_.previous[i];
    (q_.previous[i] == kNone ? q_.head[q_.degree[i]] : q_.next[q_.previous[i]]) = q_.next[i];
  }

  int32_t takeMinimum() {
    while (q_.head[minDegree_] == kNone) ++minDegree_;
    const int32_t i = q_.head[minDegree_];
    unlist(i);
    return i;
  }

  void eliminate() {
    formClique();
    countOutside();
    updateDegrees();
    mergeAlike();
    finishClique();
  }

  // The clique of the pivot: its variables and those of its elements, which are absorbed.
  void formClique() {
    const int32_t p = pivot_;
    const bool inPlace = q_.elements[p] == 0;
    if (!inPlace) makeRoom();
    begin_ = inPlace ? q_.start[p] : end_;
    int64_t to = begin_;
    outer_ = 0;
    pivotWeight_ = q_.weight[p];
    q_.weight[p] = -pivotWeight_;
    const auto gather = [&](int64_t from, int32_t count) {
      for (int64_t at = from; at < from + count; ++at) {
        const int32_t i = q_.lists[at];
        const int32_t columns = q_.weight[i];
        if (columns <= 0) continue;
        outer_ += columns;
        q_.weight[i] = -columns;
        unlist(i);
        q_.lists[to++] = i;
      }
    };
    for (int32_t k = 0; k < q_.elements[p]; ++k) {
      const int32_t e = q_.lists[q_.start[p] + k];
      if (q_.mark[e] == 0) continue;
      gather(q_.start[e], q_.length[e]);
      absorb(e);
    }
    gather(q_.start[p] + q_.elements[p], q_.length[p] - q_.elements[p]);
    count_ = static_cast<int32_t>(to - begin_);
    q_.start[p] = begin_;
    q_.length[p] = count_;
    if (!inPlace) end_ = to;
    left_ -= pivotWeight_;
  }

  void absorb(int32_t e) {
    q_.mark[e] = 0;
    q_.length[e] = 0;
  }

  // Sets mark = tag + weight of the variables outside the clique for each element that shares a variable with it.
  void countOutside() {
    tag_ += maxWeight_ + 1;
    for (int32_t k = 0; k < count_; ++k) {
      const int32_t i = q_.lists[begin_ + k];
      const int32_t columns = -q_.weight[i];
      for (int64_t at = q_.start[i]; at < q_.start[i] + q_.elements[i]; ++at) {
        const int32_t e = q_.lists[at];
        if (q_.mark[e] == 0) continue;
        if (q_.mark[e] < tag_) q_.mark[e] = tag_ + q_.degree[e];
        q_.mark[e] -= columns;
      }
    }
  }

  // Rewrites the lists of the clique's variables: adds the pivot as an element and removes what it covers.
  void updateDegrees() {
    for (int32_t k = 0; k < count_; ++k) {
      const int32_t i = q_.lists[begin_ + k];
      const int64_t first = q_.start[i];
      int64_t degree = 0, to = first;
      uint64_t hash = 0;
      const auto keep = [&](int32_t node, int64_t outside) {
        q_.lists[to++] = node;
        hash += static_cast<uint64_t>(node);
        degree += outside;
      };
      for (int64_t at = first; at < first + q_.elements[i]; ++at) {
        const int32_t e = q_.lists[at];
        if (q_.mark[e] == 0) continue;
        if (q_.mark[e] == tag_) {
          absorb(e);  // inside the clique
        } else {
          keep(e, q_.mark[e] - tag_);
        }
      }
      const int64_t elementsEnd = to;
      for (int64_t at = first + q_.elements[i]; at < first + q_.length[i]; ++at) {
        const int32_t v = q_.lists[at];
        if (q_.weight[v] > 0) keep(v, q_.weight[v]);
      }
      if (degree == 0) {
        joinPivot(i);
        continue;
      }
      // At least one entry was removed, the pivot or one of its elements, so there is room for the pivot at the front.
      q_.lists[to++] = q_.lists[elementsEnd];
      q_.lists[elementsEnd] = q_.lists[first];
      q_.lists[first] = pivot_;
      q_.elements[i] = static_cast<int32_t>(elementsEnd - first) + 1;
      q_.length[i] = static_cast<int32_t>(to - first);
      q_.degree[i] = static_cast<int32_t>(std::min<int64_t>(q_.degree[i], degree));
      const auto key = static_cast<int32_t>(hash % static_cast<uint64_t>(n_));
      q_.previous[i] = key;
      q_.next[i] = q_.bucket[key];
      q_.bucket[key] = i;
    }
  }

  // Mass elimination: a variable without neighbours outside the clique is eliminated with the pivot.
  void joinPivot(int32_t i) {
    const int32_t columns = -q_.weight[i];
    pivotWeight_ += columns;
    left_ -= columns;
    outer_ -= columns;
    q_.weight[i] = 0;
    append(pivot_, i);
  }

  void append(int32_t to, int32_t i) {
    q_.chain[q_.tail[to]] = i;
    q_.tail[to] = q_.tail[i];
  }

  // Merges indistinguishable variables: those with the same lists.
  void mergeAlike() {
    for (int32_t k = 0; k < count_; ++k) {
      const int32_t clique = q_.lists[begin_ + k];
      if (q_.weight[clique] == 0) continue;
      const int32_t key = q_.previous[clique];
      int32_t i = q_.bucket[key];
      q_.bucket[key] = kNone;
      for (; i != kNone && q_.next[i] != kNone; i = q_.next[i]) {
        ++tag_;
        for (int32_t p = 0; p < q_.length[i]; ++p) q_.seen[q_.lists[q_.start[i] + p]] = tag_;
        for (int32_t last = i, j = q_.next[i]; j != kNone; j = q_.next[j]) {
          if (!alike(i, j)) {
            last = j;
            continue;
          }
          q_.weight[i] += q_.weight[j];
          q_.weight[j] = 0;
          append(i, j);
          q_.next[last] = q_.next[j];
        }
      }
    }
  }

  bool alike(int32_t i, int32_t j) {
    if (q_.length[i] != q_.length[j] || q_.elements[i] != q_.elements[j]) return false;
    for (int32_t p = 0; p < q_.length[j]; ++p) {
      if (q_.seen[q_.lists[q_.start[j] + p]] != tag_) return false;
    }
    return true;
  }

  // Adds the clique to the degrees of its variables and returns them to the degree lists.
  void finishClique() {
    int64_t to = begin_;
    for (int32_t k = 0; k < count_; ++k) {
      const int32_t i = q_.lists[begin_ + k];
      const int32_t columns = -q_.weight[i];
      if (columns == 0) continue;
      q_.weight[i] = columns;
      q_.degree[i] = std::min(q_.degree[i] + outer_ - columns, left_ - columns);
      enlist(i);
      q_.lists[to++] = i;
    }
    q_.weight[pivot_] = 0;
    q_.degree[pivot_] = outer_;
    q_.length[pivot_] = static_cast<int32_t>(to - begin_);
    if (begin_ + count_ == end_) end_ = to;
    maxWeight_ = std::max<int64_t>(maxWeight_, outer_);
    tag_ += maxWeight_ + 1;
    // The mark of an element is not 0 and below every later tag.
    q_.mark[pivot_] = to > begin_ ? 1 : 0;
  }

  // Compacts the lists when the next clique might not fit behind them.
  void makeRoom() {
    int64_t bound = q_.length[pivot_];
    for (int32_t k = 0; k < q_.elements[pivot_]; ++k) bound += q_.length[q_.lists[q_.start[pivot_] + k]];
    if (end_ + std::min<int64_t>(bound, n_) <= static_cast<int64_t>(q_.room)) return;
    int32_t* const live = q_.alive;
    int32_t count = 0;
    for (int32_t i = 0; i < n_; ++i) {
      if (q_.weight[i] > 0 || q_.mark[i] != 0) live[count++] = i;
    }
    std::sort(live, live + count, [&](int32_t a, int32_t b) { return q_.start[a] < q_.start[b]; });
    end_ = 0;
    for (int32_t k = 0; k < count; ++k) {
      const int32_t i = live[k];
      std::memmove(q_.lists + end_, q_.lists + q_.start[i], static_cast<size_t>(q_.length[i]) * sizeof(int32_t));
      q_.start[i] = end_;
      end_ += q_.length[i];
    }
  }

  const Quotient& q_;
  int32_t n_;
  int32_t left_;                   // columns not yet eliminated
  int32_t minDegree_ = INT32_MAX;  // no variable has a smaller degree
  int64_t end_ = 0;                // of the lists
  int64_t tag_ = 1;
  int64_t maxWeight_ = 0;  // weight of the largest element
  int32_t pivot_ = kNone;
  int32_t pivotWeight_ = 0;
  int64_t begin_ = 0;  // of the clique's list
  int32_t count_ = 0;  // its variables
  int32_t outer_ = 0;  // and their weight
};

}  // namespace

bool minimumDegree(Arena& arena, const WeightedGraph& graph, int32_t* order) {
  const Arena::Scope scope(arena);
  const Quotient quotient(arena, graph.nodes, graph.columns, static_cast<uint64_t>(graph.start[graph.nodes]));
  if (!arena.fits()) return false;
  MinimumDegree(quotient, graph).run(order);
  return true;
}

void measureMinimumDegree(Arena& arena, int32_t nodes, int32_t columns, uint64_t adjacent) {
  const Arena::Scope scope(arena);
  const Quotient quotient(arena, nodes, columns, adjacent);
}

}  // namespace dax
