#include "io/output_name.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& option, const fs::path& output, const std::string& why) {
  throw Failure(ExitStatus::kUsage, option + ": " + printable(output.string()) + why);
}

// Whether two names refer to the same file, existing or not.
bool sameFile(const fs::path& one, const fs::path& other) {
  std::error_code ignored;
  if (fs::equivalent(one, other, ignored)) return true;
  const fs::path place = fs::weakly_canonical(fs::absolute(one, ignored), ignored);
  return !place.empty() && place == fs::weakly_canonical(fs::absolute(other, ignored), ignored);
}

}  // namespace

void requireEnding(const std::string& option, const fs::path& output, std::initializer_list<const char*> endings) {
  const std::string ending = output.extension().string();
  if (output.empty() || std::find(endings.begin(), endings.end(), ending) != endings.end()) return;
  std::string wanted;
  for (const char* each : endings) wanted += (wanted.empty() ? "" : " or ") + std::string(each);
  refuse(option, output, " does not end in " + wanted);
}

void requireOther(const std::string& option, const fs::path& output, std::initializer_list<NamedFile> files) {
  if (output.empty()) return;
  for (const NamedFile& file : files) {
    if (!file.path.empty() && sameFile(output, file.path)) refuse(option, output, " is " + std::string(file.what));
  }
}

}  // namespace dax::tool
