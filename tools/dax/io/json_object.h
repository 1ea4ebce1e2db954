// Objects of JSON files whose keys are all known: what is missing, unknown or of another kind is refused, with its place.
#pragma once

#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace dax::tool {

class JsonObject {
 public:
  // place: what messages call it, "shapes[2]", after the file. Throws Failure(kCannotRead), as all that follows, unless
  // the value is an object.
  JsonObject(const nlohmann::json& value, std::string file, std::string place);

  bool has(const char* key);

  // A key that is not there has the value `otherwise`, or is refused where there is none.
  double number(const char* key, double low, double high, std::optional<double> otherwise = std::nullopt);
  bool flag(const char* key, bool otherwise);
  std::string text(const char* key);
  // The index of a name.
  int choice(const char* key, std::initializer_list<const char*> names, std::optional<int> otherwise = std::nullopt);
  // So many numbers of the range, or any number of them where that is 0.
  std::vector<double> numbers(const char* key, size_t count, double low, double high);

  // The value of a key that must be there.
  const nlohmann::json& at(const char* key);

  // Refuses keys that nobody asked for.
  void finish() const;

  [[noreturn]] void refuse(const std::string& key, const std::string& why) const;

 private:
  const nlohmann::json* find(const char* key);

  const nlohmann::json& value_;
  std::string file_;
  std::string place_;
  std::set<std::string> known_;
};

}  // namespace dax::tool
