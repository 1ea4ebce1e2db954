#include "io/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

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

// A file descriptor that is closed.
class Descriptor {
 public:
  explicit Descriptor(int file) : file_(file) {}
  ~Descriptor() {
    if (file_ >= 0) close(file_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return file_; }
  // Closing may be what tells of a failed write.
  bool finish() { return close(std::exchange(file_, -1)) == 0; }

 private:
  int file_;
};

void writeInto(const fs::path& path, std::string_view content) {
  Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (file.get() < 0 || !writeAll(file.get(), content) || !file.finish()) fail(path, errno);
}

// The target of a link, or the path itself.
fs::path linkTarget(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  fs::path target = fs::canonical(path, error);
  return error ? path : target;
}

// Links an anonymous file to a name that does not exist.
bool linkTo(const Descriptor& file, const std::string& name) {
  const std::string source = "/proc/self/fd/" + std::to_string(file.get());
  return linkat(AT_FDCWD, source.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Replaces an existing file. Only between link and rename can the temporary name be left behind.
bool replaceBy(const Descriptor& file, const fs::path& path) {
  for (unsigned i = 0; i < 1000; ++i) {
    const std::string temporary = path.string() + "." + std::to_string(getpid()) + "." + std::to_string(i);
    if (!linkTo(file, temporary)) {
      if (errno == EEXIST) continue;
      return false;
    }
    if (rename(temporary.c_str(), path.c_str()) == 0) return true;
    const int error = errno;
    unlink(temporary.c_str());
    fail(path, error);
  }
  return false;
}

// Writes a file without a name and then links it, so that nothing is left behind whenever the program ends. False where
// the file system, or a system without /proc, cannot do that.
bool writeAnonymous(const fs::path& path, std::string_view content) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  const Descriptor file(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
  if (file.get() < 0) return false;
  if (!writeAll(file.get(), content)) fail(path, errno);
  if (linkTo(file, path.string())) return true;
  return errno == EEXIST && replaceBy(file, path);
}

void writeNamed(const fs::path& path, std::string_view content) {
  std::string temporary = path.string() + ".XXXXXX";
  static const mode_t mode = ordinaryMode();
  Descriptor file(mkostemp(temporary.data(), O_CLOEXEC));
  if (file.get() < 0) fail(path, errno);
  const bool done = writeAll(file.get(), content) && fchmod(file.get(), mode) == 0 && file.finish() &&
                    rename(temporary.c_str(), path.c_str()) == 0;
  if (done) return;
  const int error = errno;
  unlink(temporary.c_str());
  fail(path, error);
}

}  // namespace

void writeFile(const fs::path& name, std::string_view content) {
  if (isSpecial(name)) return writeInto(name, content);
  const fs::path path = linkTarget(name);
  if (!writeAnonymous(path, content)) writeNamed(path, content);
}

void makeFolder(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  if (error) fail(path, error.value());
}

}  // namespace dax::tool
