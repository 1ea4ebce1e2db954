#include "io/output_file.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"
#include "dax/file.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, int error) {
  throw Failure(ExitStatus::kCannotWrite,
                printable(path.string()) + ": cannot be written: " + std::generic_category().message(error));
}

}  // namespace

void writeFile(const fs::path& name, std::string_view content) {
  if (DAX_WriteFile(name.c_str(), content.data() ? content.data() : "", content.size()) != DAX_STS_OK)
    fail(name, errno);
}

void makeFolder(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) fail(path, error.value());
}

}  // namespace dax::tool
