#include "io/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, int error) {
  throw Failure(ExitStatus::kCannotWrite,
                printable(path.string()) + ": cannot be written: " + std::generic_category().message(error));
}

bool writeAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(file, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    content.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

// mkostemp gives mode 0600; a new file should have the mode of the user's mask.
mode_t ordinaryMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// Devices and pipes are written directly, not replaced.
bool isSpecial(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

void writeInto(const fs::path& path, std::string_view content) {
  const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) fail(path, errno);
  int error = writeAll(file, content) ? 0 : errno;
  if (close(file) != 0 && error == 0) error = errno;
  if (error != 0) fail(path, error);
}

// The target of a link, or the path itself.
fs::path linkTarget(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  fs::path target = fs::canonical(path, error);
  return error ? path : target;
}

}  // namespace

void writeFile(const fs::path& name, std::string_view content) {
  if (isSpecial(name)) return writeInto(name, content);
  const fs::path path = linkTarget(name);
  std::string temporary = path.string() + ".XXXXXX";
  static const mode_t mode = ordinaryMode();
  const int file = mkostemp(temporary.data(), O_CLOEXEC);
  if (file < 0) fail(path, errno);
  int error = 0;
  if (!writeAll(file, content) || fchmod(file, mode) != 0) error = errno;
  if (close(file) != 0 && error == 0) error = errno;
  if (error == 0 && rename(temporary.c_str(), path.c_str()) != 0) error = errno;
  if (error != 0) {
    unlink(temporary.c_str());
    fail(path, error);
  }
}

void makeFolder(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) fail(path, error.value());
}

}  // namespace dax::tool
