// Files that are written completely or not at all.
#pragma once

#include <cstdint>

namespace dax {

// A regular file is filled without a name in its folder, or under a temporary one where the file system or a system
// without /proc cannot do that; commit() then puts it in the place of the old file, whose mode it keeps. Links are followed.
// What is no regular file, a device or a pipe, is written directly. After a failure errno tells why.
class OutputFile {
 public:
  enum class Way { best, named };  // named: always under a temporary name

  explicit OutputFile(const char* path, Way way = Way::best);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  bool isOpen() const { return file_ >= 0; }

  void write(const void* data, uint64_t bytes);

  // Completes the file and flushes it to disk; returns whether everything was written. On failure a regular file at the
  // path is unchanged. Only a process that ends between the two steps that replace an old file leaves a temporary name behind.
  bool commit();

 private:
  bool follow(const char* path);
  void open(const char* path, Way way);
  bool openAnonymous();
  bool openNamed();
  void nextName(int attempt);
  bool give(const char* name) const;
  bool linkTemporary();
  bool publish();
  bool emit(const void* data, uint64_t bytes);
  bool flush();
  bool finish();
  void abandon();

  static constexpr int kNameRoom = 256;  // NAME_MAX of Linux and the end
  int folder_ = -1;
  int file_ = -1;
  bool direct_ = false;     // written where it lies
  bool anonymous_ = false;  // has no name yet
  bool replaces_ = false;
  int error_ = 0;  // of the first write that failed
  uint32_t filled_ = 0;
  char name_[kNameRoom] = "";
  char temporary_[kNameRoom] = "";
  char buffer_[4096];
};

}  // namespace dax
