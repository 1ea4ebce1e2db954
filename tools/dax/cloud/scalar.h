// Numbers of the formats of point clouds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace dax::tool {

enum class Scalar { kInt8, kUint8, kInt16, kUint16, kInt32, kUint32, kFloat32, kFloat64, kInt64, kUint64 };
size_t bytesOf(Scalar scalar);

double loadScalar(Scalar scalar, const char* bytes);

// Rounds to the nearest number of the type; integers take their limits beyond them, and 0 for NaN.
void storeScalar(Scalar scalar, double value, char* bytes);

// Appends the shortest text that reads back as the same number.
void appendScalar(std::string& text, Scalar scalar, const char* bytes);

// A named column of a table of numbers.
struct Column {
  std::string name;
  Scalar scalar;
  uint64_t count;  // numbers in a row

  size_t bytes() const { return count * bytesOf(scalar); }
};

}  // namespace dax::tool
