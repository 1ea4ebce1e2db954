#include "cloud/point_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace dax::tool {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr int kMaxHeaderLines = 1000;
constexpr size_t kMaxHeaderLine = 1 << 16;
constexpr uint64_t kMaxRowNumbers = 1 << 16;
constexpr uint64_t kMaxPoints = std::numeric_limits<int32_t>::max();
constexpr size_t kValues = 7;  // x, y, z, nx, ny, nz, curvature

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

template <class T>
double load(const char* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return static_cast<double>(value);
}

double loadScalar(Scalar scalar, const char* bytes) {
  switch (scalar) {
    case Scalar::kInt8:
      return load<int8_t>(bytes);
    case Scalar::kUint8:
      return load<uint8_t>(bytes);
    case Scalar::kInt16:
      return load<int16_t>(bytes);
    case Scalar::kUint16:
      return load<uint16_t>(bytes);
    case Scalar::kInt32:
      return load<int32_t>(bytes);
    case Scalar::kUint32:
      return load<uint32_t>(bytes);
    case Scalar::kFloat32:
      return load<float>(bytes);
    case Scalar::kFloat64:
      return load<double>(bytes);
    case Scalar::kInt64:
      return load<int64_t>(bytes);
    case Scalar::kUint64:
      return load<uint64_t>(bytes);
  }
  return 0;
}

// Position of a column that is read.
struct Place {
  uint64_t number = 0;  // index in the row
  uint64_t offset = 0;  // in bytes
  Scalar scalar = Scalar::kFloat32;
};

struct Row {
  std::array<std::optional<Place>, kValues> places;
  uint64_t numbers = 0;
  uint64_t bytes = 0;

  bool hasNormals() const { return places[3] && places[4] && places[5]; }
};

int valueOf(std::string_view name) {
  using Names = std::array<std::string_view, kValues>;
  constexpr Names kShort = {"x", "y", "z", "nx", "ny", "nz", "curvature"};
  constexpr Names kLong = {"x", "y", "z", "normal_x", "normal_y", "normal_z", "curvature"};
  for (size_t i = 0; i < kValues; ++i) {
    if (name == kShort[i] || name == kLong[i]) return static_cast<int>(i);
  }
  return -1;
}

Row planRow(const PointRows& layout) {
  Row row;
  for (const Column& column : layout.columns) {
    if (column.count < 1 || column.count > kMaxRowNumbers - row.numbers) throw FormatError("has too long rows");
    const int value = valueOf(column.name);
    if (value >= 0 && row.places[value]) throw FormatError("has two columns " + column.name);
    if (value >= 0) row.places[value] = Place{row.numbers, row.bytes, column.scalar};
    row.numbers += column.count;
    row.bytes += column.count * bytesOf(column.scalar);
  }
  if (!row.places[0] || !row.places[1] || !row.places[2]) throw FormatError("has no columns x, y and z");
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

using Values = std::array<float, kValues>;

void readTextRow(const Row& row, TextNumbers& numbers, Values& values) {
  for (uint64_t i = 0; i < row.numbers; ++i) {
    const double number = numbers.next();
    for (size_t k = 0; k < kValues; ++k) {
      if (row.places[k] && row.places[k]->number == i) values[k] = static_cast<float>(number);
    }
  }
}

void readBinaryRow(const Row& row, const char* bytes, Values& values) {
  for (size_t k = 0; k < kValues; ++k) {
    const auto& place = row.places[k];
    if (place) values[k] = static_cast<float>(loadScalar(place->scalar, bytes + place->offset));
  }
}

bool finite(const Values& values, size_t first, size_t last) {
  return std::all_of(values.begin() + first, values.begin() + last, [](float v) { return std::isfinite(v); });
}

void append(const Values& values, bool normals, Cloud& cloud) {
  if (!finite(values, 0, 3)) {
    ++cloud.dropped;
    return;
  }
  cloud.points.insert(cloud.points.end(), values.begin(), values.begin() + 3);
  constexpr std::array<float, 4> kNone = {0, 0, 1, 0};
  const float* const normal = finite(values, 3, kValues) ? values.data() + 3 : kNone.data();
  if (normals) cloud.normals.insert(cloud.normals.end(), normal, normal + 4);
}

void appendText(std::string& result, float value, char separator) {
  char digits[32];
  const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), value);
  (void)error;  // 32 characters hold every float
  result.append(digits, end);
  result += separator;
}

}  // namespace

size_t bytesOf(Scalar scalar) {
  switch (scalar) {
    case Scalar::kInt8:
    case Scalar::kUint8:
      return 1;
    case Scalar::kInt16:
    case Scalar::kUint16:
      return 2;
    case Scalar::kInt32:
    case Scalar::kUint32:
    case Scalar::kFloat32:
      return 4;
    default:
      return 8;
  }
}

Cloud readRows(const PointRows& layout, std::string_view body) {
  const Row row = planRow(layout);
  requireRows(layout, row, body.size());
  Cloud cloud;
  cloud.points.reserve(3 * layout.rows);
  if (row.hasNormals()) cloud.normals.reserve(4 * layout.rows);
  TextNumbers numbers(body);
  for (uint64_t i = 0; i < layout.rows; ++i) {
    Values values = {};
    if (layout.text) {
      readTextRow(row, numbers, values);
    } else {
      readBinaryRow(row, body.data() + i * row.bytes, values);
    }
    append(values, row.hasNormals(), cloud);
  }
  if (cloud.points.empty()) throw FormatError("holds no points with finite coordinates");
  return cloud;
}

std::string writeRows(const Cloud& cloud, bool text) {
  const bool normals = !cloud.normals.empty();
  std::string result;
  result.reserve(cloud.size() * (normals ? 28 : 12));
  for (size_t i = 0; i < cloud.size(); ++i) {
    Values row;
    std::copy_n(cloud.points.data() + 3 * i, 3, row.data());
    if (normals) std::copy_n(cloud.normals.data() + 4 * i, 4, row.data() + 3);
    const size_t count = normals ? kValues : 3;
    if (!text) result.append(reinterpret_cast<const char*>(row.data()), count * sizeof(float));
    for (size_t k = 0; text && k < count; ++k) appendText(result, row[k], k + 1 < count ? ' ' : '\n');
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
