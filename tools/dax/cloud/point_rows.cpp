#include "cloud/point_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

namespace dax::tool {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr int kMaxHeaderLines = 1000;
constexpr size_t kMaxHeaderLine = 1 << 16;
constexpr uint64_t kMaxRowNumbers = 1 << 16;
constexpr uint64_t kMaxPoints = std::numeric_limits<int32_t>::max();
constexpr size_t kValues = 7;
constexpr std::array<std::string_view, kValues> kRowFields = {"x", "y", "z", "nx", "ny", "nz", "curvature"};

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// A column of the file: one of the values above, or a field that is passed through.
struct Source {
  Scalar scalar;
  uint64_t count;
  int value;  // -1: a field
  bool isField;
};

struct Row {
  std::vector<Source> sources;
  std::array<bool, kValues> has = {};
  uint64_t numbers = 0;
  uint64_t bytes = 0;
  uint64_t fieldBytes = 0;

  bool hasNormals() const { return has[3] && has[4] && has[5]; }
};

int valueOf(std::string_view name) {
  using Names = std::array<std::string_view, kValues>;
  constexpr Names kLong = {"x", "y", "z", "normal_x", "normal_y", "normal_z", "curvature"};
  for (size_t i = 0; i < kValues; ++i) {
    if (name == kRowFields[i] || name == kLong[i]) return static_cast<int>(i);
  }
  return -1;
}

// Padding of PCD rows.
bool isPadding(const Column& column) {
  return column.name == "_";
}

Row planRow(const PointRows& layout, Cloud& cloud) {
  Row row;
  for (const Column& column : layout.columns) {
    if (column.count < 1 || column.count > kMaxRowNumbers - row.numbers) throw FormatError("has too long rows");
    const int value = valueOf(column.name);
    if (value >= 0 && row.has[value]) throw FormatError("has two columns " + column.name);
    if (value >= 0) row.has[value] = true;
    const bool isField = value < 0 && !isPadding(column);
    if (isField) cloud.fields.push_back(column);
    row.sources.push_back({column.scalar, column.count, value, isField});
    row.numbers += column.count;
    row.bytes += column.bytes();
    row.fieldBytes += isField ? column.bytes() : 0;
  }
  if (!row.has[0] || !row.has[1] || !row.has[2]) throw FormatError("has no columns x, y and z");
  for (size_t i = 3; i < kValues && !row.hasNormals(); ++i) {
    if (row.has[i]) cloud.leftOut.emplace_back(kRowFields[i]);
  }
  return row;
}

// In text each number has at minRowBytes a digit and, except the last, a separator.
void requireRows(const PointRows& layout, const Row& row, size_t bodyBytes) {
  if (layout.rows < 1) throw FormatError("holds no points");
  const uint64_t minRowBytes = layout.text ? 2 * row.numbers : row.bytes;
  const uint64_t body = bodyBytes + (layout.text ? 1 : 0);
  if (layout.rows > body / minRowBytes)
    throw FormatError("is damaged: it is too short for the points that it announces");
  if (layout.rows > kMaxPoints) throw FormatError("holds too many points");
}

class TextNumbers {
 public:
  explicit TextNumbers(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

  double next() {
    while (at_ != end_ && isSpace(*at_)) ++at_;
    if (at_ == end_) throw FormatError("is damaged: it ends before its last point");
    if (*at_ == '+') ++at_;
    double value = 0;
    const auto [stop, error] = std::from_chars(at_, end_, value);
    // Beyond the range of double: treated as infinite.
    if (error == std::errc::result_out_of_range) value = std::numeric_limits<double>::quiet_NaN();
    if (error == std::errc::invalid_argument || (stop != end_ && !isSpace(*stop))) {
      throw FormatError("is damaged: a coordinate is not a number");
    }
    at_ = stop;
    return value;
  }

 private:
  const char* at_;
  const char* end_;
};

// The values of a point, and its fields.
struct Point {
  std::array<double, kValues> values = {};
  std::string fields;
};

// next(scalar) reads a number of the row.
template <class Next>
void readRow(const Row& row, Next next, Point& point) {
  size_t at = 0;
  for (const Source& source : row.sources) {
    const size_t bytes = bytesOf(source.scalar);
    for (uint64_t i = 0; i < source.count; ++i) {
      const double number = next(source.scalar);
      if (source.value >= 0 && i == 0) point.values[source.value] = number;
      if (!source.isField) continue;
      storeScalar(source.scalar, number, point.fields.data() + at);
      at += bytes;
    }
  }
}

void readBinaryRow(const Row& row, const char* bytes, Point& point) {
  size_t at = 0;
  for (const Source& source : row.sources) {
    const size_t size = source.count * bytesOf(source.scalar);
    if (source.value >= 0) point.values[source.value] = loadScalar(source.scalar, bytes);
    if (source.isField) {
      std::memcpy(point.fields.data() + at, bytes, size);
      at += size;
    }
    bytes += size;
  }
}

bool finite(const Point& point, size_t first, size_t last) {
  return std::all_of(point.values.begin() + first, point.values.begin() + last,
                     [](double v) { return std::isfinite(static_cast<float>(v)); });
}

// Collects the points with finite coordinates.
struct Collector {
  Cloud& cloud;
  const Row& row;
  std::vector<double> coordinates = {};

  void take(uint64_t index, const Point& point, bool grid) {
    if (!finite(point, 0, 3)) {
      ++cloud.dropped;
      return;
    }
    coordinates.insert(coordinates.end(), point.values.begin(), point.values.begin() + 3);
    cloud.values += point.fields;
    if (grid) cloud.cells.push_back(static_cast<uint32_t>(index));
    if (!row.hasNormals()) return;
    constexpr std::array<double, 4> kNone = {0, 0, 1, 0};
    const double* const normal = finite(point, 3, kValues) ? point.values.data() + 3 : kNone.data();
    std::transform(normal, normal + 4, std::back_inserter(cloud.normals),
                   [](double v) { return static_cast<float>(v); });
  }
};

// Encodes points.
class RowWriter {
 public:
  static constexpr size_t kNone = std::numeric_limits<size_t>::max();

  RowWriter(const Cloud& cloud, const std::vector<Column>& columns) : cloud_(cloud), columns_(columns) {
    for (const Column& column : cloud.fields) fieldBytes_ += column.bytes();
  }

  // The bytes of a row; of NaN and fields of 0 for kNone.
  std::string row(size_t point) const {
    const size_t count = columns_.size() - cloud_.fields.size();
    std::string result;
    for (size_t i = 0; i < count; ++i) {
      char bytes[8];
      storeScalar(columns_[i].scalar, value(point, i), bytes);
      result.append(bytes, columns_[i].bytes());
    }
    if (point == kNone) return result.append(fieldBytes_, '\0');
    return result.append(cloud_.values, point * fieldBytes_, fieldBytes_);
  }

 private:
  double value(size_t point, size_t i) const {
    if (point == kNone) return std::numeric_limits<double>::quiet_NaN();
    return i < 3 ? cloud_.at(point)[i] : cloud_.normals[4 * point + i - 3];
  }

  const Cloud& cloud_;
  const std::vector<Column>& columns_;
  size_t fieldBytes_ = 0;
};

void appendText(std::string& result, const std::vector<Column>& columns, const std::string& row) {
  const char* at = row.data();
  for (const Column& column : columns) {
    for (uint64_t i = 0; i < column.count; ++i, at += bytesOf(column.scalar)) {
      appendScalar(result, column.scalar, at);
      result += ' ';
    }
  }
  result.back() = '\n';
}

}  // namespace

Cloud readRows(const PointRows& layout, std::string_view body) {
  Cloud cloud;
  const Row row = planRow(layout, cloud);
  requireRows(layout, row, body.size());
  cloud.grid = layout.grid;
  Collector collector{cloud, row};
  collector.coordinates.reserve(3 * layout.rows);
  if (row.hasNormals()) cloud.normals.reserve(4 * layout.rows);
  TextNumbers numbers(body);
  Point point{{}, std::string(row.fieldBytes, '\0')};
  for (uint64_t i = 0; i < layout.rows; ++i) {
    if (layout.text) {
      readRow(
          row, [&](Scalar) { return numbers.next(); }, point);
    } else {
      readBinaryRow(row, body.data() + i * row.bytes, point);
    }
    collector.take(i, point, layout.grid.height > 1);
  }
  if (collector.coordinates.empty()) throw FormatError("holds no points with finite coordinates");
  setPoints(cloud, collector.coordinates);
  return cloud;
}

std::vector<Column> columnsOf(const Cloud& cloud, const RowFormat& format) {
  std::vector<Column> columns;
  const size_t count = cloud.normals.empty() ? 3 : kValues;
  for (size_t i = 0; i < count; ++i) {
    columns.push_back({std::string(kRowFields[i]), i < 3 && format.doubles ? Scalar::kFloat64 : Scalar::kFloat32, 1});
  }
  columns.insert(columns.end(), cloud.fields.begin(), cloud.fields.end());
  return columns;
}

std::string writeRows(const Cloud& cloud, const RowFormat& format) {
  const std::vector<Column> columns = columnsOf(cloud, format);
  const RowWriter writer(cloud, columns);
  const size_t cells = format.grid ? static_cast<size_t>(cloud.grid.width) * cloud.grid.height : cloud.size();
  std::string result;
  size_t point = 0;
  for (size_t cell = 0; cell < cells; ++cell) {
    const bool isEmpty = format.grid && (point == cloud.size() || cloud.cells[point] != cell);
    const std::string row = writer.row(isEmpty ? RowWriter::kNone : point++);
    if (format.text) {
      appendText(result, columns, row);
    } else {
      result += row;
    }
  }
  return result;
}

std::vector<std::string_view> HeaderLines::next() {
  while (++lines_ <= kMaxHeaderLines) {
    const size_t end = rest_.find('\n');
    if (end > kMaxHeaderLine) break;  // or there is none
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
    std::vector<std::string_view> words;
    for (size_t at = 0; at < line.size();) {
      const auto* const stop = std::find_if(line.begin() + at, line.end(), isSpace);
      const size_t length = static_cast<size_t>(stop - line.begin()) - at;
      if (length > 0) words.push_back(line.substr(at, length));
      at += length + 1;
    }
    if (!words.empty()) return words;
  }
  throw FormatError("is damaged: its header has no end");
}

uint64_t parseCount(std::string_view word, const char* what) {
  uint64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size()) {
    throw FormatError(std::string("is damaged: ") + what + " is not a number");
  }
  return value;
}

}  // namespace dax::tool
