#include "base/text.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace dax::tool {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Length of the well-formed UTF-8 sequence at the start of the text; 0 if there is none.
size_t sequenceLength(std::string_view text) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if (!isContinuation(byte(i))) return 0;
  }
  const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
  const bool surrogate = lead == 0xED && byte(1) > 0x9F;
  const bool beyond = lead == 0xF4 && byte(1) > 0x8F;
  return overlong || surrogate || beyond ? 0 : length;
}

// C0 and C1 controls and DEL.
bool isControl(std::string_view sequence) {
  const auto lead = static_cast<unsigned char>(sequence[0]);
  if (sequence.size() == 1) return lead < 0x20 || lead == 0x7F;
  return lead == 0xC2 && static_cast<unsigned char>(sequence[1]) < 0xA0;
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
  double value;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<int> parseInteger(std::string_view text, int low, int high) {
  int value;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || value < low || value > high) return std::nullopt;
  return value;
}

std::optional<OpenRange> parseRange(std::string_view text) {
  const size_t dots = text.find("..");
  if (dots == std::string_view::npos || text.size() == 2) return std::nullopt;
  const std::string_view low = text.substr(0, dots);
  const std::string_view high = text.substr(dots + 2);
  const OpenRange range{parseNumber(low), parseNumber(high)};
  if ((!range.min && !low.empty()) || (!range.max && !high.empty())) return std::nullopt;
  if (range.min && range.max && *range.min > *range.max) return std::nullopt;
  return range;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<std::pair<std::string_view, std::string_view>> splitPair(std::string_view text, char separator) {
  const size_t at = text.find(separator);
  if (at == std::string_view::npos) return std::nullopt;
  return std::pair{text.substr(0, at), text.substr(at + 1)};
}

std::optional<std::pair<int, int>> parseIntegerPair(std::string_view text, char separator, int low, int high) {
  const auto sides = splitPair(text, separator);
  const auto first = sides ? parseInteger(sides->first, low, high) : std::nullopt;
  const auto second = sides ? parseInteger(sides->second, low, high) : std::nullopt;
  if (!first || !second) return std::nullopt;
  return std::pair{*first, *second};
}

std::optional<std::vector<double>> parseNumbers(std::string_view text, size_t count) {
  std::vector<double> values;
  for (const std::string_view part : split(text, ',')) {
    const auto number = parseNumber(part);
    if (!number || std::fabs(*number) > std::numeric_limits<float>::max()) return std::nullopt;
    values.push_back(*number);
  }
  if (values.size() != count) return std::nullopt;
  return values;
}

std::string shortest(float value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

double decimal(float value) {
  return parseNumber(shortest(value)).value_or(std::numeric_limits<double>::quiet_NaN());
}

std::string fixed(double value, int decimals) {
  char text[384];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const size_t length = sequenceLength(text);
    const std::string_view sequence = text.substr(0, length == 0 ? 1 : length);
    result += length == 0 || isControl(sequence) ? kReplacement : sequence;
    text.remove_prefix(sequence.size());
  }
  return result;
}

std::string inQuotes(std::string_view text) {
  std::string result = printable(text);
  result.insert(result.begin(), '"');
  result += '"';
  return result;
}

std::string asLink(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string result;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && (std::isalnum(byte) != 0 || c == '-' || c == '.' || c == '_')) {
      result += c;
    } else {
      result += '%';
      result += kDigits[byte >> 4];
      result += kDigits[byte & 15];
    }
  }
  return result;
}

std::string escapeHtml(std::string_view text) {
  std::string result;
  for (const char c : printable(text)) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

}  // namespace dax::tool
