// Even steps in rounded numbers.
#pragma once

#include <optional>
#include <vector>

namespace dax::tool {

struct Lattice {
  double start;
  double pitch;  // 0: all numbers are equal
  double steps;  // from the first number to the last
};

// The widest lattice that holds all numbers up to their rounding to single precision; none if it has more than
// `maxSteps` steps, or if its pitch is too near to the rounding to tell. The numbers must not be empty.
std::optional<Lattice> latticeOf(std::vector<double> numbers, double maxSteps);

}  // namespace dax::tool
