// Shared by the formats of point clouds: rows of numbers with named columns, as text or little-endian.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cloud/cloud.h"

namespace dax::tool {

// The reason why a file cannot be read, printed after its name.
struct FormatError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

enum class Scalar { kInt8, kUint8, kInt16, kUint16, kInt32, kUint32, kFloat32, kFloat64, kInt64, kUint64 };
size_t bytesOf(Scalar scalar);

struct Column {
  std::string name;
  Scalar scalar;
  uint64_t count;  // numbers in a row
};

struct PointRows {
  std::vector<Column> columns;
  uint64_t rows = 0;
  bool text = false;
};

// Reads the columns x, y, z and, if all three exist under either name, nx, ny, nz or normal_x, normal_y,
// normal_z, and curvature. Nothing is allocated for rows that the body cannot hold; data after the last row is ignored.
// Points without finite coordinates are dropped, normals that are not finite become 0, 0, 1.
// Throws FormatError.
Cloud readRows(const PointRows& layout, std::string_view body);

// The rows of a cloud: x, y, z, and normals with curvature if known, all 32-bit floats.
std::string writeRows(const Cloud& cloud, bool text);

// The lines of a header, one by one. Read them until the header ends; `rest` is the remainder.
class HeaderLines {
 public:
  explicit HeaderLines(std::string_view bytes) : rest_(bytes) {}
  // The words of the next non-empty line. Throws FormatError if there is none, or the header has no end.
  std::vector<std::string_view> next();
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
  int lines_ = 0;
};

// The whole word as a count. Throws FormatError.
uint64_t parseCount(std::string_view word, const char* what);

}  // namespace dax::tool
