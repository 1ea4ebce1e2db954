// The seeds of a fuzz target, <stem>_seeds.cpp: small inputs from which a fuzzer starts, and which the tests replay.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dax::fuzz {

struct Seed {
  std::string name;
  std::string bytes;
};

// Of the target that the program is linked with.
std::vector<Seed> seeds();

}  // namespace dax::fuzz
