#include "base/run_info.h"

#include <cstdlib>
#include <ctime>
#include <string_view>

#include "base/text.h"
#include "dax/version.h"

namespace dax::tool {
namespace {

RunInfo info;

// For a POSIX shell; control characters are replaced.
std::string quoted(std::string_view argument) {
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=.,:/@%";
  std::string text = printable(argument);
  if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) return text;
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') {
      result.append("'\\''");
    } else {
      result += c;
    }
  }
  result += '\'';
  return result;
}

std::string today() {
  const char* const fixedDate = std::getenv("SOURCE_DATE_EPOCH");
  const auto given = fixedDate ? parseNumber(fixedDate) : std::nullopt;
  const std::time_t now = given ? static_cast<std::time_t>(*given) : std::time(nullptr);
  std::tm parts{};
  char text[32] = "";
  if (gmtime_r(&now, &parts)) std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

}  // namespace

void setRunInfo(int argc, const char* const* argv) {
  info = {DAX_GetVersion(), today(), "dax"};
  for (int i = 1; i < argc; ++i) info.command.append(" ").append(quoted(argv[i]));
}

const RunInfo& runInfo() {
  return info;
}

}  // namespace dax::tool
