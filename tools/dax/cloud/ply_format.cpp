#include "cloud/ply_format.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cloud/point_rows.h"

namespace dax::tool {
namespace {

using Words = std::vector<std::string_view>;

using Name = std::pair<std::string_view, Scalar>;
// The first name of a type is written.
constexpr std::array kNames = {
    Name{"char", Scalar::kInt8},      Name{"int8", Scalar::kInt8},       Name{"uchar", Scalar::kUint8},
    Name{"uint8", Scalar::kUint8},    Name{"short", Scalar::kInt16},     Name{"int16", Scalar::kInt16},
    Name{"ushort", Scalar::kUint16},  Name{"uint16", Scalar::kUint16},   Name{"int", Scalar::kInt32},
    Name{"int32", Scalar::kInt32},    Name{"uint", Scalar::kUint32},     Name{"uint32", Scalar::kUint32},
    Name{"float", Scalar::kFloat32},  Name{"float32", Scalar::kFloat32}, Name{"double", Scalar::kFloat64},
    Name{"float64", Scalar::kFloat64}};

Scalar parseScalar(std::string_view name) {
  const auto* found = std::find_if(kNames.begin(), kNames.end(), [&](const Name& n) { return n.first == name; });
  if (found == kNames.end()) throw FormatError("has a property of unknown type");
  return found->second;
}

std::string_view nameOf(Scalar scalar) {
  const auto* found = std::find_if(kNames.begin(), kNames.end(), [&](const Name& n) { return n.second == scalar; });
  return found == kNames.end() ? std::string_view() : found->first;
}

bool parseFormat(const Words& words) {
  if (words.size() != 3 || words[0] != "format") throw FormatError("is damaged: its header names no format");
  if (words[1] == "binary_big_endian") throw FormatError("is big-endian, which is not supported");
  if (words[1] != "ascii" && words[1] != "binary_little_endian") throw FormatError("is of an unknown PLY format");
  return words[1] == "ascii";
}

Column parseProperty(const Words& words) {
  if (words.size() == 5 && words[1] == "list") throw FormatError("has vertices with lists, which are not supported");
  if (words.size() != 3) throw FormatError("is damaged: a property is not a type and a name");
  return {std::string(words[2]), parseScalar(words[1]), 1};
}

// Collects the elements of the header; the first one, and no other, must be the vertices.
class Elements {
 public:
  void take(const Words& words, PointRows& layout) {
    if (words[0] == "element") {
      if (words.size() != 3) throw FormatError("is damaged: an element is not a name and a number");
      if (++count_ == 1 && words[1] != "vertex") throw FormatError("does not begin with its vertices");
      if (count_ == 1) layout.rows = parseCount(words[2], "the number of vertices");
      if (count_ > 1) others_.emplace_back(words[1]);
    } else if (words[0] == "property") {
      if (count_ == 0) throw FormatError("is damaged: a property comes before all elements");
      if (count_ == 1) layout.columns.push_back(parseProperty(words));
    } else if (words[0] != "comment" && words[0] != "obj_info") {
      throw FormatError("is damaged: its header has an unknown line");
    }
  }

  const std::vector<std::string>& others() const { return others_; }

 private:
  int count_ = 0;
  std::vector<std::string> others_;
};

}  // namespace

bool isPly(std::string_view bytes) {
  return bytes.starts_with("ply\n") || bytes.starts_with("ply\r\n");
}

Cloud readPly(std::string_view bytes) {
  HeaderLines lines(bytes);
  lines.next();
  Words words = lines.next();
  while (words[0] == "comment") words = lines.next();
  PointRows layout;
  layout.text = parseFormat(words);
  Elements elements;
  for (words = lines.next(); words[0] != "end_header"; words = lines.next()) elements.take(words, layout);
  Cloud cloud = readRows(layout, lines.rest());
  cloud.leftOut.insert(cloud.leftOut.end(), elements.others().begin(), elements.others().end());
  return cloud;
}

bool holdsPly(const Column& column) {
  return column.count == 1 && !nameOf(column.scalar).empty();
}

std::string writePly(const Cloud& cloud, const RowFormat& format) {
  std::string result = "ply\nformat ";
  result += format.text ? "ascii" : "binary_little_endian";
  result += " 1.0\nelement vertex " + std::to_string(cloud.size()) + "\n";
  for (const Column& column : columnsOf(cloud, format)) {
    result.append("property ").append(nameOf(column.scalar)).append(" ").append(column.name).append("\n");
  }
  return result + "end_header\n" + writeRows(cloud, format);
}

}  // namespace dax::tool
