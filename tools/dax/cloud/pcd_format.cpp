#include "cloud/pcd_format.h"

#include <algorithm>
#include <map>

#include "cloud/point_rows.h"

namespace dax::tool {
namespace {

using Words = std::vector<std::string_view>;

// Keywords and the words after them, up to and including DATA.
using Header = std::map<std::string_view, Words>;

Header readHeader(HeaderLines& lines) {
  Header header;
  while (header.count("DATA") == 0) {
    Words words = lines.next();
    const std::string_view key = words.front();
    if (key.starts_with('#')) continue;
    words.erase(words.begin());
    if (!header.emplace(key, std::move(words)).second) throw FormatError("is damaged: its header says something twice");
  }
  return header;
}

Scalar parseScalar(std::string_view type, uint64_t bytes) {
  if (type == "F" && bytes == 4) return Scalar::kFloat32;
  if (type == "F" && bytes == 8) return Scalar::kFloat64;
  const bool isSigned = type == "I";
  if (isSigned || type == "U") {
    if (bytes == 1) return isSigned ? Scalar::kInt8 : Scalar::kUint8;
    if (bytes == 2) return isSigned ? Scalar::kInt16 : Scalar::kUint16;
    if (bytes == 4) return isSigned ? Scalar::kInt32 : Scalar::kUint32;
    if (bytes == 8) return isSigned ? Scalar::kInt64 : Scalar::kUint64;
  }
  throw FormatError("has a field of unknown type");
}

std::vector<Column> parseColumns(const Header& header) {
  const auto words = [&](std::string_view key) {
    const auto found = header.find(key);
    return found == header.end() ? Words() : found->second;
  };
  const Words names = words("FIELDS"), sizes = words("SIZE"), types = words("TYPE"), counts = words("COUNT");
  const bool counted = header.count("COUNT") != 0;
  if (sizes.size() != names.size() || types.size() != names.size() || (counted && counts.size() != names.size())) {
    throw FormatError("is damaged: its fields, sizes, types and counts disagree");
  }
  std::vector<Column> columns;
  for (size_t i = 0; i < names.size(); ++i) {
    const Scalar scalar = parseScalar(types[i], parseCount(sizes[i], "a size"));
    columns.push_back({std::string(names[i]), scalar, counted ? parseCount(counts[i], "a count") : 1});
  }
  return columns;
}

// One number of the header; none if it is missing.
uint64_t parseNumberOf(const Header& header, std::string_view key, uint64_t none) {
  const auto found = header.find(key);
  if (found == header.end()) return none;
  if (found->second.size() != 1) throw FormatError("is damaged: a side is not one number");
  return parseCount(found->second.front(), "a side");
}

uint64_t parseRows(const Header& header) {
  const uint64_t width = parseNumberOf(header, "WIDTH", 0), height = parseNumberOf(header, "HEIGHT", 1);
  uint64_t area = 0;
  if (__builtin_mul_overflow(width, height, &area)) throw FormatError("is damaged: its sides are too large");
  const uint64_t points = parseNumberOf(header, "POINTS", area);
  if (header.count("WIDTH") != 0 && points != area) {
    throw FormatError("is damaged: its sides and its number of points disagree");
  }
  return points;
}

bool parseData(const Words& words) {
  if (words == Words{"binary_compressed"}) throw FormatError("is compressed, which is not supported");
  if (words != Words{"ascii"} && words != Words{"binary"}) throw FormatError("is of an unknown PCD format");
  return words.front() == "ascii";
}

}  // namespace

bool isPcd(std::string_view bytes) {
  return bytes.starts_with("# .PCD") || bytes.starts_with("VERSION");
}

Cloud readPcd(std::string_view bytes) {
  HeaderLines lines(bytes);
  const Header header = readHeader(lines);
  PointRows layout;
  layout.text = parseData(header.at("DATA"));
  layout.columns = parseColumns(header);
  layout.rows = parseRows(header);
  return readRows(layout, lines.rest());
}

std::string writePcd(const Cloud& cloud, bool text) {
  const bool normals = !cloud.normals.empty();
  const size_t fields = normals ? 7 : 3;
  const auto repeat = [&](const char* word) {
    std::string result;
    for (size_t i = 0; i < fields; ++i) result += word;
    return result + "\n";
  };
  const std::string count = std::to_string(cloud.size());
  std::string result = "# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\nFIELDS x y z";
  result += normals ? " normal_x normal_y normal_z curvature\n" : "\n";
  result += "SIZE" + repeat(" 4") + "TYPE" + repeat(" F") + "COUNT" + repeat(" 1");
  result += "WIDTH " + count + "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS " + count + "\nDATA ";
  result += text ? "ascii\n" : "binary\n";
  return result + writeRows(cloud, text);
}

}  // namespace dax::tool
