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

struct PointRows {
  std::vector<Column> columns;
  uint64_t rows = 0;
  DaxiSize grid = {};  // of an organised cloud
  bool text = false;
};

// Reads the columns x, y, z and, if all three exist under either name, nx, ny, nz or normal_x, normal_y,
// normal_z, and curvature; other columns become the cloud's fields. Nothing is allocated for rows that the body cannot
// hold; data after the last row is ignored. Points without finite coordinates are dropped, normals that are not finite
// become 0, 0, 1. Throws FormatError.
Cloud readRows(const PointRows& layout, std::string_view body);

// The columns of a cloud in a file: x, y, z as floats or doubles, floats of the normals with curvature if known, and
// the cloud's fields.
struct RowFormat {
  bool text;
  bool doubles;
  bool grid;  // rows for empty cells too: NaN, and fields of 0
};
std::vector<Column> columnsOf(const Cloud& cloud, const RowFormat& format);
std::string writeRows(const Cloud& cloud, const RowFormat& format);

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
