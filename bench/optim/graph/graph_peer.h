// The peer beside the library: graph_growth_ceres.cpp, or graph_growth_no_peer.cpp where there is none.
#pragma once

#include <prgo.h>

namespace bench {

struct PeerRun {
  double milliseconds, energy;
  int iterations;
};

// A solve of a graph of relative poses from where it is, the first vertex held; not numbers without a peer.
PeerRun solveByPeer(const PrgoGraph& graph, double tolerance);

}  // namespace bench
