#include "io/points_file.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

[[noreturn]] void reject(const std::filesystem::path& path, const std::string& what) {
  throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": " + what);
}

std::string_view trimmed(std::string_view text) {
  const auto isOuter = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '"'; };
  while (!text.empty() && isOuter(text.front())) text.remove_prefix(1);
  while (!text.empty() && isOuter(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> fieldsOf(std::string_view line) {
  for (const char separator : {';', ',', '\t'}) {
    if (line.find(separator) == std::string_view::npos) continue;
    std::vector<std::string_view> fields = split(line, separator);
    std::transform(fields.begin(), fields.end(), fields.begin(), trimmed);
    return fields;
  }
  std::vector<std::string_view> fields = split(line, ' ');
  fields.erase(std::remove(fields.begin(), fields.end(), std::string_view()), fields.end());
  return fields;
}

bool isTitle(const std::vector<std::string_view>& fields) {
  return std::none_of(fields.begin(), fields.end(), [](std::string_view field) { return parseNumber(field); });
}

double numberIn(const std::filesystem::path& path, size_t line, const std::vector<std::string_view>& fields,
                int column) {
  const std::string where = "line " + std::to_string(line) + ": ";
  if (fields.size() < static_cast<size_t>(column)) reject(path, where + "no column " + std::to_string(column));
  const std::string_view field = fields[static_cast<size_t>(column) - 1];
  const std::optional<double> number = parseNumber(field);
  if (!number) reject(path, where + inQuotes(field.substr(0, 40)) + " is not a finite number");
  return *number;
}

}  // namespace

Points readPoints(const std::filesystem::path& path, int xColumn, int yColumn) {
  if (std::filesystem::is_directory(path)) reject(path, "is a folder");
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) reject(path, "cannot be opened: " + std::generic_category().message(errno));
  Points points;
  std::string line;
  bool mayBeTitle = true;
  for (size_t number = 1; std::getline(file, line); ++number) {
    std::string_view content = line;
    if (number == 1 && content.substr(0, 3) == "\xEF\xBB\xBF") content.remove_prefix(3);
    content = trimmed(content);
    if (content.empty() || content.front() == '#') continue;
    const std::vector<std::string_view> fields = fieldsOf(content);
    const bool skipped = mayBeTitle && isTitle(fields) && fields.size() >= 2;
    mayBeTitle = false;
    if (skipped) continue;
    points.x.push_back(numberIn(path, number, fields, xColumn));
    points.y.push_back(numberIn(path, number, fields, yColumn));
  }
  if (file.bad()) reject(path, "cannot be read");
  return points;
}

}  // namespace dax::tool
