// Times of single runs, for programs that print tables of their own.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>

namespace bench {

template <class Run>
double milliseconds(const Run& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The least of several runs: what the machine can do when nothing else runs.
template <class Run>
double least(int rounds, const Run& run) {
  double best = INFINITY;
  for (int i = 0; i < rounds; ++i) best = std::min(best, milliseconds(run));
  return best;
}

}  // namespace bench
