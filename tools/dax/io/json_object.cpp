#include "io/json_object.h"

#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

using PlainJson = nlohmann::json;

std::string shown(double value) {
  return shortest(static_cast<float>(value));
}

bool isWithin(const PlainJson& value, double low, double high) {
  return value.is_number() && value.get<double>() >= low && value.get<double>() <= high;
}

std::string rangeText(double low, double high) {
  return shown(low) + ".." + shown(high);
}

}  // namespace

JsonObject::JsonObject(const PlainJson& value, std::string file, std::string place)
    : value_(value), file_(std::move(file)), place_(std::move(place)) {
  if (!value.is_object()) refuse("", "is not an object, { ... }");
}

bool JsonObject::has(const char* key) {
  return find(key) != nullptr;
}

double JsonObject::number(const char* key, double low, double high, std::optional<double> otherwise) {
  const PlainJson* const value = find(key);
  if (!value && otherwise) return *otherwise;
  if (value && isWithin(*value, low, high)) return value->get<double>();
  refuse(key, "is not a number in " + rangeText(low, high));
}

bool JsonObject::flag(const char* key, bool otherwise) {
  const PlainJson* const value = find(key);
  if (!value) return otherwise;
  if (!value->is_boolean()) refuse(key, "is neither true nor false");
  return value->get<bool>();
}

std::string JsonObject::text(const char* key) {
  const PlainJson& value = at(key);
  if (!value.is_string()) refuse(key, "is not a text, \"...\"");
  return value.get<std::string>();
}

int JsonObject::choice(const char* key, std::initializer_list<const char*> names, std::optional<int> otherwise) {
  const PlainJson* const value = find(key);
  if (!value && otherwise) return *otherwise;
  std::string all;
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string name = names.begin()[i];
    if (value && *value == name) return static_cast<int>(i);
    all += (all.empty() ? "" : ", ") + name;
  }
  refuse(key, value ? "is none of " + all : "is missing (" + all + ")");
}

std::vector<double> JsonObject::numbers(const char* key, size_t count, double low, double high) {
  const PlainJson& value = at(key);
  const std::string wanted =
      "is not a list of " + (count ? std::to_string(count) + " " : std::string()) + "numbers in ";
  if (!value.is_array() || (count && value.size() != count)) refuse(key, wanted + rangeText(low, high));
  std::vector<double> result;
  for (const PlainJson& each : value) {
    if (!isWithin(each, low, high)) refuse(key, wanted + rangeText(low, high));
    result.push_back(each.get<double>());
  }
  return result;
}

const PlainJson& JsonObject::at(const char* key) {
  const PlainJson* const value = find(key);
  if (!value) refuse(key, "is missing");
  return *value;
}

const PlainJson* JsonObject::find(const char* key) {
  known_.insert(key);
  const auto found = value_.find(key);
  return found == value_.end() ? nullptr : &*found;
}

void JsonObject::finish() const {
  for (const auto& item : value_.items()) {
    if (known_.count(item.key()) != 0) continue;
    std::string all;
    for (const std::string& each : known_) all += (all.empty() ? "" : ", ") + each;
    refuse(item.key(), "is not known here (" + all + ")");
  }
}

void JsonObject::refuse(const std::string& key, const std::string& why) const {
  std::string where = place_;
  if (!key.empty()) where += (where.empty() ? "" : ".") + printable(key);
  throw Failure(ExitStatus::kCannotRead, printable(file_) + ": " + (where.empty() ? "it" : where) + " " + why);
}

}  // namespace dax::tool
