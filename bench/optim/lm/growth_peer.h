// The peer beside the library in tables of growth: lm_growth_ceres.cpp, or lm_growth_no_peer.cpp where there is none.
#pragma once

#include "examples/optim/bundle.h"

namespace bench {

// Time of a solve of so many iterations by the peer's dense or sparse Schur complement; not a number without a peer.
double peerMilliseconds(Bundle& bundle, bool sparse, int iterations);

}  // namespace bench
