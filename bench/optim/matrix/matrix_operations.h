// What is measured of dense matrices, and on what.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Elements of a matrix, -1 to 1, the same for all.
inline std::vector<double> elements(int32_t count, uint32_t seed = 1) {
  std::vector<double> values(static_cast<size_t>(count));
  for (double& value : values) {
    seed = seed * 1664525 + 1013904223;
    value = static_cast<int32_t>(seed) * 0x1p-31;
  }
  return values;
}

struct Kind {
  const char* name;
  std::vector<int32_t> sizes;
};

inline const Kind kKinds[] = {
    {"product", {6, 32, 512}},    {"LU", {6, 12, 32, 256}},   {"QR", {6, 12, 32, 256}}, {"SVD", {6, 12, 32, 256}},
    {"EigSym", {6, 12, 32, 256}}, {"Solve", {3, 6, 32, 256}}, {"fast SVD", {256}},
};

inline std::string titleOf(const Kind& kind, int32_t n) {
  return std::string(kind.name) + " " + std::to_string(n) + " x " + std::to_string(n);
}

}  // namespace bench
