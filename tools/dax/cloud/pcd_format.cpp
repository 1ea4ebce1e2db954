#include "cloud/pcd_format.h"

#include <algorithm>
#include <limits>
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

char typeOf(Scalar scalar) {
  switch (scalar) {
    case Scalar::kFloat32:
    case Scalar::kFloat64:
      return 'F';
    case Scalar::kUint8:
    case Scalar::kUint16:
    case Scalar::kUint32:
    case Scalar::kUint64:
      return 'U';
    default:
      return 'I';
  }
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

void parseRows(const Header& header, PointRows& layout) {
  const uint64_t width = parseNumberOf(header, "WIDTH", 0), height = parseNumberOf(header, "HEIGHT", 1);
  uint64_t area = 0;
  if (__builtin_mul_overflow(width, height, &area)) throw FormatError("is damaged: its sides are too large");
  layout.rows = parseNumberOf(header, "POINTS", area);
  if (header.count("WIDTH") != 0 && layout.rows != area) {
    throw FormatError("is damaged: its sides and its number of points disagree");
  }
  constexpr uint64_t kMaxSide = std::numeric_limits<int32_t>::max();
  const bool isGrid = height > 1 && width <= kMaxSide && height <= kMaxSide;
  if (isGrid) layout.grid = {static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

bool parseData(const Words& words) {
  if (words == Words{"binary_compressed"}) throw FormatError("is compressed, which is not supported");
  if (words != Words{"ascii"} && words != Words{"binary"}) throw FormatError("is of an unknown PCD format");
  return words.front() == "ascii";
}

std::string nameOf(const Column& column) {
  const bool isNormal = column.name == "nx" || column.name == "ny" || column.name == "nz";
  return isNormal ? std::string("normal_").append(1, column.name.back()) : column.name;
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
  parseRows(header, layout);
  Cloud cloud = readRows(layout, lines.rest());
  const auto viewpoint = header.find("VIEWPOINT");
  if (viewpoint != header.end() && viewpoint->second.size() == 7) {
    for (const std::string_view word : viewpoint->second) cloud.viewpoint.append(" ").append(word);
  }
  return cloud;
}

std::string writePcd(const Cloud& cloud, RowFormat format) {
  format.grid = cloud.grid.height > 1;
  std::string names, sizes, types, counts;
  for (const Column& column : columnsOf(cloud, format)) {
    names.append(" ").append(nameOf(column));
    sizes.append(" ").append(std::to_string(bytesOf(column.scalar)));
    types.append(" ").append(1, typeOf(column.scalar));
    counts.append(" ").append(std::to_string(column.count));
  }
  const DaxiSize grid = cloud.grid;
  const std::string count = std::to_string(format.grid ? static_cast<size_t>(grid.width) * grid.height : cloud.size());
  const std::string sides =
      format.grid ? std::to_string(grid.width) + "\nHEIGHT " + std::to_string(grid.height) : count + "\nHEIGHT 1";
  return "# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\nFIELDS" + names + "\nSIZE" + sizes + "\nTYPE" +
         types + "\nCOUNT" + counts + "\nWIDTH " + sides + "\nVIEWPOINT" +
         (cloud.viewpoint.empty() ? " 0 0 0 1 0 0 0" : cloud.viewpoint) + "\nPOINTS " + count + "\nDATA " +
         (format.text ? "ascii\n" : "binary\n") + writeRows(cloud, format);
}

}  // namespace dax::tool
