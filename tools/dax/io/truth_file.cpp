#include <cmath>
#include <cstdint>
#include <fstream>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/text.h"
#include "io/truth.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

// Rounded to 1e-4, so that the last bits of the mathematics library do not matter.
double rounded(double value) {
  return *parseNumber(fixed(value, 4));
}

Json toJson(const TruePart& part) {
  Json json{{"kind", part.kind}, {"x", rounded(part.x)}, {"y", rounded(part.y)}, {"area", rounded(part.area)}};
  if (part.angle) {
    json["angle"] = rounded(*part.angle);
    json["angle_period"] = part.anglePeriod;
  }
  return json;
}

TruePart toPart(const Json& json) {
  TruePart part{json.at("kind"), json.at("x"), json.at("y"), json.at("area"), std::nullopt, 180};
  if (json.contains("angle")) {
    part.angle = json.at("angle").get<double>();
    part.anglePeriod = json.at("angle_period");
  }
  if (part.area <= 0 || part.anglePeriod <= 0) throw std::invalid_argument("a part without area or angle period");
  return part;
}

// Read as a double, because the number may not fit an int.
int toSide(const Json& json) {
  const auto side = json.get<double>();
  if (!(side >= 1 && side <= INT32_MAX && side == std::floor(side))) throw std::invalid_argument("a side is no size");
  return static_cast<int>(side);
}

}  // namespace

std::string truthToJson(const Truth& truth) {
  Json json{{"width", truth.width}, {"height", truth.height}, {"parts", Json::array()}};
  for (const TruePart& part : truth.parts) json["parts"].push_back(toJson(part));
  return json.dump(2) + "\n";
}

Truth readTruth(const std::filesystem::path& path) {
  std::ifstream file(path);
  try {
    if (!file) throw std::invalid_argument("it cannot be opened");
    const Json json = Json::parse(file);
    Truth truth{toSide(json.at("width")), toSide(json.at("height")), {}};
    for (const Json& part : json.at("parts")) truth.parts.push_back(toPart(part));
    return truth;
  } catch (const std::exception& error) {
    throw Failure(ExitStatus::kCannotRead,
                  printable(path.string()) + ": is no truth of a scene: " + printable(error.what()));
  }
}

}  // namespace dax::tool
