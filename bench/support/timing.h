// Times of implementations taken in turn.
#pragma once

#include <string>
#include <vector>

#include "bench/support/operation.h"

namespace bench {

struct Timing {
  double milliseconds;  // median time of a call
  double ratio;         // median of (time of the first task / time of this one) over the rounds
};

// Runs the tasks in turn, A B C A B C ..., so that whatever slows the machine down for a while slows all of them.
std::vector<Timing> timeInterleaved(const std::vector<Task>& tasks);

}  // namespace bench
