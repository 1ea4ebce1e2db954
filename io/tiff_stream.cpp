#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "io/tiff.h"

namespace dax::io {
namespace {

TiffStream& streamOf(thandle_t handle) {
  return *static_cast<TiffStream*>(handle);
}

uint64_t lengthOf(const TiffStream& stream) {
  return stream.made ? stream.made->size() : stream.file.size();
}

tmsize_t readTiff(thandle_t handle, void* to, tmsize_t bytes) {
  TiffStream& stream = streamOf(handle);
  const uint64_t length = lengthOf(stream);
  const uint64_t left = length - std::min(stream.place, length);
  const uint64_t count = std::min<uint64_t>(left, bytes < 0 ? 0 : static_cast<uint64_t>(bytes));
  const uint8_t* const data = stream.made ? stream.made->data() : stream.file.data();
  if (count > 0) std::memcpy(to, data + stream.place, count);
  stream.place += count;
  return static_cast<tmsize_t>(count);
}

tmsize_t putTiff(thandle_t handle, void* data, tmsize_t bytes) {
  TiffStream& stream = streamOf(handle);
  if (!stream.made || bytes < 0 || !stream.made->put(stream.place, data, static_cast<uint64_t>(bytes))) return -1;
  stream.place += static_cast<uint64_t>(bytes);
  return bytes;
}

toff_t seekTiff(thandle_t handle, toff_t offset, int whence) {
  TiffStream& stream = streamOf(handle);
  stream.place = offset + (whence == SEEK_CUR ? stream.place : whence == SEEK_END ? lengthOf(stream) : 0);
  return stream.place;
}

// 1: no one else is told.
int tellError(TIFF*, void* user, const char*, const char* format, va_list arguments) {
  auto& stream = *static_cast<TiffStream*>(user);
  stream.failed = true;
  if (!stream.message) return 1;
  std::vsnprintf(stream.message->text, sizeof(stream.message->text), format, arguments);
  return 1;
}

// Tags that are not known, and the like: the pixels are complete.
int ignoreWarning(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

}  // namespace

Tiff openTiff(TiffStream& stream, const char* mode, uint64_t maxBytes) {
  TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
  if (!options) return nullptr;
  TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(std::min<uint64_t>(maxBytes, INT64_MAX)));
  TIFFOpenOptionsSetErrorHandlerExtR(options, tellError, &stream);
  TIFFOpenOptionsSetWarningHandlerExtR(options, ignoreWarning, &stream);
  const auto close = [](thandle_t) { return 0; };
  const auto size = [](thandle_t handle) -> toff_t { return lengthOf(streamOf(handle)); };
  Tiff tiff(TIFFClientOpenExt("", mode, &stream, readTiff, putTiff, seekTiff, close, size, nullptr, nullptr, options));
  TIFFOpenOptionsFree(options);
  return tiff;
}

}  // namespace dax::io
