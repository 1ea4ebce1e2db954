// The JSON file of dax annotate.
#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>

#include "base/failure.h"
#include "base/text.h"
#include "draw/annotation.h"
#include "io/input_file.h"
#include "io/json_object.h"

namespace dax::tool {
namespace {

using PlainJson = nlohmann::json;

constexpr double kFar = 1e9;
constexpr double kDegree = std::numbers::pi / 180;

const std::map<std::string, Rgb> kColourNames = {
    {"black", {0, 0, 0}},    {"white", {255, 255, 255}}, {"grey", {128, 128, 128}},  {"red", {228, 26, 28}},
    {"green", {0, 200, 83}}, {"blue", {33, 102, 230}},   {"yellow", {255, 221, 0}},  {"orange", {255, 140, 0}},
    {"cyan", {0, 204, 221}}, {"magenta", {221, 0, 170}}, {"purple", {126, 47, 142}}, {"brown", {140, 86, 75}}};

[[noreturn]] void refuseFile(const std::filesystem::path& path, const std::string& what) {
  throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": " + what);
}

// --- The text of the file ---

// Where the shapes begin, which are the objects two deep: lines from 1.
std::vector<int> linesOfShapes(const std::string& text) {
  std::vector<int> lines;
  int line = 1, depth = 0;
  bool inString = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    line += c == '\n';
    if (inString) {
      i += c == '\\';
      inString = c != '"';
    } else if (c == '"') {
      inString = true;
    } else if (c == '{' || c == '[') {
      if (c == '{' && depth == 2) lines.push_back(line);
      ++depth;
    } else if (c == '}' || c == ']') {
      --depth;
    }
  }
  return lines;
}

std::string lineAndColumn(const std::string& text, size_t byte) {
  const size_t at = std::min(byte > 0 ? byte - 1 : 0, text.size());
  const auto end = text.begin() + static_cast<ptrdiff_t>(at);
  const auto line = std::count(text.begin(), end, '\n') + 1;
  const size_t start = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
  const size_t column = start == std::string::npos ? at + 1 : at - start;
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

// Refuses keys that an object has twice, of which a JSON reader keeps one.
class SingleKeys {
 public:
  explicit SingleKeys(const std::filesystem::path& path) : path_(path) {}

  bool operator()(int, PlainJson::parse_event_t event, const PlainJson& parsed) {
    if (event == PlainJson::parse_event_t::object_start) keys_.emplace_back();
    if (event == PlainJson::parse_event_t::object_end) keys_.pop_back();
    if (event == PlainJson::parse_event_t::key && !keys_.back().insert(parsed.get<std::string>()).second) {
      refuseFile(path_, "has the key " + inQuotes(parsed.get<std::string>()) + " twice in one object");
    }
    return true;
  }

 private:
  const std::filesystem::path& path_;
  std::vector<std::set<std::string>> keys_;
};

PlainJson parse(const std::filesystem::path& path, const std::string& text) {
  try {
    SingleKeys single(path);
    return PlainJson::parse(text, [&](int depth, PlainJson::parse_event_t event, const PlainJson& parsed) {
      if (depth > 16) refuseFile(path, "is nested too deeply");
      return single(depth, event, parsed);
    });
  } catch (const PlainJson::parse_error& error) {
    refuseFile(path, lineAndColumn(text, error.byte) + ": is no JSON: something else is expected here");
  } catch (const PlainJson::exception& error) {
    refuseFile(path, "is no JSON: " + printable(error.what()));
  }
}

// --- Values ---

Rgb colourOf(JsonObject& object, const char* key) {
  const PlainJson& value = object.at(key);
  if (value.is_string()) {
    const std::string name = value.get<std::string>();
    if (const auto found = kColourNames.find(name); found != kColourNames.end()) return found->second;
    if (name.size() == 7 && name[0] == '#' &&
        name.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos) {
      const auto all = static_cast<int32_t>(std::stoul(name.substr(1), nullptr, 16));
      return {all >> 16, all >> 8 & 255, all & 255};
    }
  }
  std::string names;
  for (const auto& each : kColourNames) names += (names.empty() ? "" : ", ") + each.first;
  object.refuse(key, "is neither \"#rrggbb\" nor one of " + names);
}

DaxiPoint64f pointAt(JsonObject& object, const char* key) {
  const std::vector<double> xy = object.numbers(key, 2, -kFar, kFar);
  return {xy[0], xy[1]};
}

std::vector<DaxiPoint64f> pointsOf(const JsonObject& object, const char* key, const PlainJson& list, size_t min) {
  const std::string wanted = "is not a list of at least " + std::to_string(min) + " points, [[x, y], ...]";
  if (!list.is_array() || list.size() < min) object.refuse(key, wanted);
  std::vector<DaxiPoint64f> points;
  for (const PlainJson& each : list) {
    const auto isFine = [](const PlainJson& n) { return n.is_number() && std::abs(n.get<double>()) <= kFar; };
    if (!each.is_array() || each.size() != 2 || !isFine(each[0]) || !isFine(each[1])) object.refuse(key, wanted);
    points.push_back({each[0].get<double>(), each[1].get<double>()});
  }
  return points;
}

double angleOf(JsonObject& object, const char* key, std::optional<double> otherwise) {
  return object.number(key, -36000, 36000, otherwise) * kDegree;
}

// --- Shapes ---

// What all shapes may say, or the style for all of them.
void readPen(JsonObject& object, Annotation& a) {
  if (object.has("color")) a.color = colourOf(object, "color");
  a.stroke.width = object.number("width", 0, 1e6, a.stroke.width);
  a.stroke.alpha = object.number("alpha", 0, 1, a.stroke.alpha);
  a.stroke.antialias = object.flag("antialias", a.stroke.antialias != 0) ? 1 : 0;
  a.stroke.cap = object.choice("cap", {"butt", "round", "square"}, a.stroke.cap);
  a.stroke.join = object.choice("join", {"round", "miter", "bevel"}, a.stroke.join);
}

void readFill(JsonObject& object, Annotation& a) {
  if (object.has("fill")) a.fill = colourOf(object, "fill");
}

void readHeight(JsonObject& object, Annotation& a) {
  a.set.height = object.number("height", 1, 65536, a.set.height);
}

void readEnds(JsonObject& object, Annotation& a) {
  a.points = {{pointAt(object, "from"), pointAt(object, "to")}};
}

void readPolyline(JsonObject& object, Annotation& a) {
  a.points = {pointsOf(object, "points", object.at("points"), 2)};
  a.closed = object.flag("closed", false);
}

void readPolygon(JsonObject& object, Annotation& a) {
  readFill(object, a);
  if (object.has("rings")) {
    const PlainJson& rings = object.at("rings");
    if (!rings.is_array() || rings.empty()) object.refuse("rings", "is not a list of lists of points");
    for (const PlainJson& ring : rings) a.points.push_back(pointsOf(object, "rings", ring, 3));
  } else {
    a.points = {pointsOf(object, "points", object.at("points"), 3)};
  }
  a.evenOdd = object.choice("rule", {"non-zero", "even-odd"}, 1) == 1;
}

void readArrow(JsonObject& object, Annotation& a) {
  readEnds(object, a);
  a.head = object.number("head", 0, 1e6, 10);
}

void readRectangle(JsonObject& object, Annotation& a) {
  readFill(object, a);
  a.points = {{pointAt(object, "center")}};
  const std::vector<double> sides = object.numbers("size", 2, 0, kFar);
  a.width = sides[0], a.height = sides[1];
  a.angle = angleOf(object, "angle", 0);
}

void readRound(JsonObject& object, Annotation& a) {
  a.points = {{pointAt(object, "center")}};
  a.width = a.height = object.number("radius", 0, kFar);
}

void readCircle(JsonObject& object, Annotation& a) {
  readFill(object, a);
  readRound(object, a);
}

void readEllipse(JsonObject& object, Annotation& a) {
  readFill(object, a);
  a.points = {{pointAt(object, "center")}};
  const std::vector<double> radii = object.numbers("radii", 2, 0, kFar);
  a.width = radii[0], a.height = radii[1];
  a.angle = angleOf(object, "angle", 0);
}

void readArc(JsonObject& object, Annotation& a) {
  readRound(object, a);
  a.start = angleOf(object, "start", std::nullopt);
  a.span = object.number("span", -360, 360) * kDegree;
}

void readMarker(JsonObject& object, Annotation& a) {
  a.points = {{pointAt(object, "at")}};
  a.marker = object.choice("kind", {"plus", "cross", "star", "square", "diamond", "triangle", "circle"}, 0);
  a.width = object.number("size", 0, 1e6, 12);
}

void readText(JsonObject& object, Annotation& a) {
  a.points = {{pointAt(object, "at")}};
  a.text = object.text("text");
  readHeight(object, a);
  // A text's own thickness follows its height.
  a.stroke.width = object.number("width", 0, 1e6, 0);
  if (a.text.size() > 1 << 20) object.refuse("text", "is longer than 1048576 bytes");
  a.set.angle = angleOf(object, "angle", 0);
  a.set.slant = std::tan(object.number("slant", -60, 60, 0) * kDegree);
  a.set.lineStep = object.number("line_step", 0, 10, a.set.lineStep);
  a.set.alignX = object.choice("align", {"left", "centre", "right"}, 0);
  a.set.alignY = object.choice("anchor", {"baseline", "top", "middle", "bottom"}, 0);
}

using ReadShape = void (*)(JsonObject& object, Annotation& annotation);

Annotation shapeOf(const PlainJson& value, const std::filesystem::path& path, const std::string& place, Annotation a) {
  static constexpr ReadShape kReaders[] = {readEnds,   readPolyline, readPolygon, readArrow,  readRectangle,
                                           readCircle, readEllipse,  readArc,     readMarker, readText};
  JsonObject object(value, path.string(), place);
  a.place = place;
  const int type = object.choice(
      "type", {"line", "polyline", "polygon", "arrow", "rectangle", "circle", "ellipse", "arc", "marker", "text"});
  a.kind = static_cast<AnnotationKind>(type);
  readPen(object, a);
  kReaders[type](object, a);
  object.finish();
  return a;
}

}  // namespace

std::vector<Annotation> readAnnotations(const std::filesystem::path& path) {
  const std::string text = readFile(path);
  const PlainJson json = parse(path, text);
  JsonObject root(json, path.string(), "");
  Annotation plain;
  DAXI_StrokeDefault(&plain.stroke);
  DAXI_TextDefaultCfg(&plain.set);
  plain.color = {228, 26, 28};
  if (root.has("style")) {
    JsonObject style(root.at("style"), path.string(), "style");
    readPen(style, plain), readFill(style, plain), readHeight(style, plain);
    style.finish();
  }
  const PlainJson& shapes = root.at("shapes");
  root.finish();
  if (!shapes.is_array()) root.refuse("shapes", "is not a list, [ ... ]");
  const std::vector<int> lines = linesOfShapes(text);
  std::vector<Annotation> all;
  for (size_t i = 0; i < shapes.size(); ++i) {
    // Values that are no objects have no line of their own.
    const bool isTold = lines.size() == shapes.size();
    const std::string line = isTold ? "line " + std::to_string(lines[i]) + ": " : "";
    all.push_back(shapeOf(shapes[i], path, line + "shapes[" + std::to_string(i) + "]", plain));
  }
  return all;
}

}  // namespace dax::tool
