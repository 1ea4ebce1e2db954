#include "frame/file/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace dax {

// Without waiting for the other end of a pipe.
InputFile::InputFile(const char* path) : file_(open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
  struct stat status;
  if (file_ < 0) return;
  if (fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) {
    bytes_ = static_cast<uint64_t>(status.st_size);
    return;
  }
  close(file_);
  file_ = -1;
  errno = EINVAL;
}

InputFile::~InputFile() {
  if (file_ >= 0) close(file_);
}

bool InputFile::readAt(uint64_t place, void* to, uint64_t bytes) const {
  auto* at = static_cast<char*>(to);
  while (bytes > 0) {
    const ssize_t count = pread(file_, at, bytes, static_cast<off_t>(place));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    at += count;
    place += static_cast<uint64_t>(count);
    bytes -= static_cast<uint64_t>(count);
  }
  return true;
}

}  // namespace dax
