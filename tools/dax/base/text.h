// Text in and out: numbers, ranges, and names that are safe to print.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dax::tool {

// The whole text as a finite number.
std::optional<double> parseNumber(std::string_view text);

// The whole text as an integer in [low, high].
std::optional<int> parseInteger(std::string_view text, int low, int high);

// "a..b", "a.." or "..b"; none if the text is not a range or a > b.
struct OpenRange {
  std::optional<double> min;
  std::optional<double> max;
};
std::optional<OpenRange> parseRange(std::string_view text);

// The parts between separators; an empty text has one empty part.
std::vector<std::string_view> split(std::string_view text, char separator);

// The two sides of the first separator; none without one.
std::optional<std::pair<std::string_view, std::string_view>> splitPair(std::string_view text, char separator);

// Two integers in [low, high] with a separator between them.
std::optional<std::pair<int, int>> parseIntegerPair(std::string_view text, char separator, int low, int high);

// The given number of comma-separated numbers, all within the range of float.
std::optional<std::vector<double>> parseNumbers(std::string_view text, size_t count);

// The shortest decimal that reads back as the same single-precision value.
std::string shortest(float value);

// That decimal as a double: a float widened to double would print extra digits. NaN, in JSON null, of one that is not
// finite.
double decimal(float value);

std::string fixed(double value, int decimals);

// Text with control characters and malformed UTF-8 replaced by U+FFFD: one line, safe for terminals and documents.
std::string printable(std::string_view text);

// printable() text in quotes, for messages.
std::string inQuotes(std::string_view text);

// A file name as a relative link: bytes that are neither letters, digits nor one of -._ as %XX.
std::string asLink(std::string_view name);

// printable() text for HTML elements and quoted attributes.
std::string escapeHtml(std::string_view text);

}  // namespace dax::tool
