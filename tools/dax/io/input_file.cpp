#include "io/input_file.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

constexpr uintmax_t kMaxFileBytes = uintmax_t{1} << 30;

[[noreturn]] void refuseInput(const fs::path& path, const std::string& what) {
  throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": " + what);
}

std::string systemMessage(int error) {
  return std::generic_category().message(error);
}

}  // namespace

uintmax_t requireRegularFile(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) refuseInput(path, "cannot be opened: " + error.message());
  if (!fs::is_regular_file(status))
    refuseInput(path, fs::is_directory(status) ? "is a folder" : "is not a regular file");
  const uintmax_t size = fs::file_size(path, error);
  if (error) refuseInput(path, "cannot be read: " + error.message());
  if (size > kMaxFileBytes) refuseInput(path, "is larger than 1 GiB");
  return size;
}

std::string readFile(const fs::path& path) {
  std::string bytes(requireRegularFile(path), '\0');
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) refuseInput(path, "cannot be opened: " + systemMessage(errno));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.bad()) refuseInput(path, "cannot be read: " + systemMessage(errno));
  bytes.resize(static_cast<size_t>(file.gcount()));
  return bytes;
}

}  // namespace dax::tool
