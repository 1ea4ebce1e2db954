#include "frame/file/output_file.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "dax/file.h"
#include "frame/check.h"

namespace dax {
namespace {

constexpr int kAttempts = 1000;  // other threads and programs may have taken some of the names

// "/proc/self/fd/7", by which a file without a name can be linked.
struct ProcName {
  explicit ProcName(int file) { std::snprintf(text, sizeof(text), "/proc/self/fd/%d", file); }
  char text[32];
};

// Splits a path behind its last slash and opens the folder.
int openFolder(char* path, const char** name) {
  char* const slash = std::strrchr(path, '/');
  *name = slash ? slash + 1 : path;
  if (!slash) return open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
  if (slash == path) return open("/", O_PATH | O_DIRECTORY | O_CLOEXEC);
  *slash = '\0';
  return open(path, O_PATH | O_DIRECTORY | O_CLOEXEC);
}

}  // namespace

OutputFile::OutputFile(const char* path, Way way) {
  open(path, way);
  if (file_ >= 0) return;
  const int error = errno;
  abandon();
  errno = error;
}

OutputFile::~OutputFile() {
  const int error = errno;
  abandon();
  errno = error;
}

void OutputFile::open(const char* path, Way way) {
  struct stat old;
  replaces_ = stat(path, &old) == 0;
  if (!replaces_ && errno != ENOENT) return;
  struct stat entry;
  const bool dangling = !replaces_ && lstat(path, &entry) == 0;
  // No name is left of a file that only a link of /proc leads to.
  direct_ = dangling || (replaces_ && (!S_ISREG(old.st_mode) || old.st_nlink == 0));
  if (!direct_ && !follow(path)) return;
  if (direct_) {
    file_ = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return;
  }
  if (!(way == Way::best && openAnonymous()) && !openNamed()) return;
  if (replaces_ && fchmod(file_, old.st_mode & 07777) != 0) error_ = errno;
}

// Opens the folder of the file that a path means, and notes its name there.
bool OutputFile::follow(const char* path) {
  char real[PATH_MAX];
  if (replaces_) {
    if (!realpath(path, real)) return false;
  } else {
    const size_t length = std::strlen(path);
    if (length >= sizeof(real)) return errno = ENAMETOOLONG, false;
    std::memcpy(real, path, length + 1);
  }
  const char* name;
  folder_ = openFolder(real, &name);
  if (folder_ < 0) return false;
  const size_t length = std::strlen(name);
  if (length == 0 || length >= sizeof(name_)) return errno = length == 0 ? ENOENT : ENAMETOOLONG, false;
  std::memcpy(name_, name, length + 1);
  return true;
}

bool OutputFile::openAnonymous() {
  file_ = openat(folder_, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
  if (file_ < 0) return false;
  anonymous_ = access(ProcName(file_).text, F_OK) == 0;
  if (anonymous_) return true;
  close(file_);
  file_ = -1;
  return false;
}

bool OutputFile::openNamed() {
  for (int i = 0; i < kAttempts; ++i) {
    nextName(i);
    file_ = openat(folder_, temporary_, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file_ >= 0) return true;
    if (errno != EEXIST) break;
  }
  temporary_[0] = '\0';
  return false;
}

void OutputFile::nextName(int attempt) {
  std::snprintf(temporary_, sizeof(temporary_), "%.200s.%ld-%d.tmp", name_, static_cast<long>(getpid()), attempt);
}

void OutputFile::write(const void* data, uint64_t bytes) {
  const bool fits = bytes <= sizeof(buffer_) - filled_;
  if (!fits && !flush()) return;
  if (bytes >= sizeof(buffer_)) {
    emit(data, bytes);
    return;
  }
  if (bytes > 0) std::memcpy(buffer_ + filled_, data, bytes);
  filled_ += static_cast<uint32_t>(bytes);
}

// All of it, in as many steps as the system takes.
bool OutputFile::emit(const void* data, uint64_t bytes) {
  const auto* at = static_cast<const char*>(data);
  while (error_ == 0 && bytes > 0) {
    const ssize_t written = ::write(file_, at, bytes);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) error_ = errno;
    if (written <= 0) break;
    at += written;
    bytes -= static_cast<uint64_t>(written);
  }
  if (bytes > 0 && error_ == 0) error_ = EIO;
  return error_ == 0;
}

bool OutputFile::flush() {
  const uint32_t bytes = filled_;
  filled_ = 0;
  return emit(buffer_, bytes);
}

bool OutputFile::give(const char* name) const {
  return linkat(AT_FDCWD, ProcName(file_).text, folder_, name, AT_SYMLINK_FOLLOW) == 0;
}

bool OutputFile::linkTemporary() {
  for (int i = 0; i < kAttempts; ++i) {
    nextName(i);
    if (give(temporary_)) return true;
    if (errno != EEXIST) break;
  }
  temporary_[0] = '\0';
  return false;
}

// Closing may be what tells of a failed write.
bool OutputFile::finish() {
  const int file = file_;
  file_ = -1;
  return close(file) == 0;
}

// A link cannot replace a name, so an old file is replaced by renaming.
bool OutputFile::publish() {
  if (direct_) return finish();
  if (anonymous_ && give(name_)) {
    if (finish()) return true;
    const int error = errno;
    unlinkat(folder_, name_, 0);
    errno = error;
    return false;
  }
  if (anonymous_ && (errno != EEXIST || !linkTemporary())) return false;
  if (!finish() || renameat(folder_, temporary_, folder_, name_) != 0) return false;
  temporary_[0] = '\0';
  return true;
}

bool OutputFile::commit() {
  bool done = error_ == 0 && flush();
  if (!done) errno = error_;
  done = done && (direct_ || fsync(file_) == 0) && publish();
  const int error = errno;
  abandon();
  errno = error;
  return done;
}

void OutputFile::abandon() {
  if (file_ >= 0) close(file_);
  if (temporary_[0] != '\0') unlinkat(folder_, temporary_, 0);
  if (folder_ >= 0) close(folder_);
  file_ = folder_ = -1;
  temporary_[0] = '\0';
}

}  // namespace dax

DaxStatus DAX_WriteFile(const char* path, const void* data, uint64_t bytes) {
  DAX_REQUIRE(path && data, DAX_STS_NULL_POINTER);
  dax::OutputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  file.write(data, bytes);
  DAX_REQUIRE(file.commit(), DAX_STS_FILE_WRITE);
  return DAX_STS_OK;
}
