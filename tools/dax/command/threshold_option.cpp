#include "command/threshold_option.h"

#include <array>
#include <map>
#include <stdexcept>

#include "base/text.h"

namespace dax::tool {
namespace {

constexpr int kMaxLevel = 65535;

using Values = std::map<std::string, double, std::less<>>;

[[noreturn]] void invalid(const std::string& message) {
  throw std::invalid_argument(message);
}

uint32_t greyLevel(std::string_view text) {
  const auto level = parseInteger(text, 0, kMaxLevel);
  if (!level) invalid(inQuotes(text) + " is not a grey level 0..255, of 16 bits 0..65535");
  return static_cast<uint32_t>(*level);
}

// Reads "name=number,..." into the permitted values.
void readValues(std::string_view text, Values& values) {
  for (const std::string_view part : split(text, ',')) {
    const auto pair = splitPair(part, '=');
    const auto value = pair ? parseNumber(pair->second) : std::nullopt;
    const auto known = pair ? values.find(pair->first) : values.end();
    if (!value || known == values.end()) invalid(inQuotes(part) + " is not one of its settings");
    known->second = *value;
  }
}

uint32_t whole(const Values& values, const char* name, int max) {
  const double value = values.find(name)->second;
  if (value < 0 || value > max || value != static_cast<int>(value)) {
    invalid(std::string(name) + " is not an integer of 0.." + std::to_string(max));
  }
  return static_cast<uint32_t>(value);
}

float real(const Values& values, const char* name) {
  return static_cast<float>(values.find(name)->second);
}

DaxiThresholdBinCfg band(std::string_view text) {
  const auto ends = splitPair(text, '.');
  const std::string_view low = ends->first;
  const std::string_view high = ends->second.substr(1);
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_BAND;
  cfg.t1 = low.empty() ? 0 : greyLevel(low);
  cfg.t2 = high.empty() ? kMaxLevel : greyLevel(high);
  if (cfg.t1 > cfg.t2 || text.size() == 2) invalid(inQuotes(text) + " is not a band N..M with N <= M");
  return cfg;
}

DaxiThresholdBinCfg soft(std::string_view settings) {
  Values values{{"low", -1}, {"high", -1}, {"steps", 0}};
  readValues(settings, values);
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_SOFT;
  cfg.softLow = static_cast<int32_t>(whole(values, "low", kMaxLevel));
  cfg.softHigh = static_cast<int32_t>(whole(values, "high", kMaxLevel));
  cfg.soft = whole(values, "steps", 255);
  return cfg;
}

DaxiThresholdBinCfg relative(const Values& values) {
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_RELATIVE_SOFT;
  cfg.darkTail = real(values, "dark");
  cfg.brightTail = real(values, "bright");
  cfg.lowPos = real(values, "low");
  cfg.highPos = real(values, "high");
  cfg.soft = whole(values, "steps", 255);
  return cfg;
}

DaxiThresholdBinCfg single(uint32_t level) {
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_SINGLE;
  cfg.t1 = level;
  return cfg;
}

DaxiThresholdBinCfg configuration(std::string_view text) {
  if (text == "otsu") {
    DaxiThresholdBinCfg cfg{};
    cfg.method = DAXI_THRESHOLD_OTSU;
    return cfg;
  }
  if (text == "mask") return single(1);
  Values shares{{"dark", 0.01}, {"bright", 0.01}, {"low", 0.5}, {"high", 0.5}, {"steps", 0}};
  if (text == "relative") return relative(shares);
  if (text.find("..") != std::string_view::npos) return band(text);
  const auto pair = splitPair(text, ':');
  if (pair && pair->first == "soft") return soft(pair->second);
  if (pair && pair->first == "relative") {
    readValues(pair->second, shares);
    return relative(shares);
  }
  if (!parseNumber(text))
    invalid(inQuotes(text) +
            " is not otsu, N, N..M, mask, soft:..., relative:... or a method that dax inspect --help tells");
  return single(greyLevel(text));
}

}  // namespace

std::string thresholdHelp() {
  return std::string(kThresholdHelp) + "\n" + kMethodHelp;
}

const char* Threshold::name() const {
  if (method) return method->name.c_str();
  constexpr std::array kNames = {"", "copy", "level", "band", "otsu", "soft", "relative"};
  return kNames[cfg.method];
}

Threshold parseThreshold(std::string_view text, bool darkObjects) {
  if (text != "otsu") {
    if (auto method = parseThresholdMethod(text)) return {DaxiThresholdBinCfg{}, false, std::move(method), darkObjects};
  }
  Threshold threshold{configuration(text), darkObjects, std::nullopt};
  switch (threshold.cfg.method) {
    case DAXI_THRESHOLD_SOFT:
    case DAXI_THRESHOLD_RELATIVE_SOFT:
      threshold.cfg.polarity = 1;
      break;
    case DAXI_THRESHOLD_OTSU:
      // The level belongs to the dark class; polarity 0 would include it, and thus all of an image with two grey
      // values.
      threshold.cfg.polarity = 1;
      threshold.invert = !darkObjects;
      break;
    default:
      threshold.cfg.polarity = 0;
  }
  return threshold;
}

}  // namespace dax::tool
