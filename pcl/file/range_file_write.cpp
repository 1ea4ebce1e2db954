#include "pcl/file/range_file_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "frame/check.h"
#include "pcl/file/range_chunks.h"
#include "pcl/record/range_record.h"

namespace dax {
namespace {

// Writes to a temporary file in the same folder, which replaces `path` on success; directly to `path` if that exists
// and is not a regular file. Once open, it must be committed.
class OutputFile {
 public:
  explicit OutputFile(const char* path) : path_(path) {
    struct stat old;
    const bool exists = lstat(path, &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) {
      file_ = std::fopen(path, "wb");
    } else {
      openTemporary();
      if (exists && file_) failed_ = fchmod(fileno(file_), old.st_mode & 07777) != 0;
    }
  }
  ~OutputFile() {
    if (temporary_[0] != '\0') unlink(temporary_);
  }
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  bool isOpen() const { return file_; }

  void write(const void* data, uint64_t bytes) { failed_ |= std::fwrite(data, 1, bytes, file_) != bytes; }

  // Completes the file; returns whether everything was written. On failure a regular file at `path` is unchanged, and
  // the temporary one goes with the object.
  bool commit() {
    failed_ |= std::fflush(file_) != 0;
    if (temporary_[0] != '\0') failed_ |= fsync(fileno(file_)) != 0;
    failed_ |= std::fclose(file_) != 0;
    if (!failed_ && temporary_[0] != '\0') failed_ = std::rename(temporary_, path_) != 0;
    if (!failed_) temporary_[0] = '\0';
    return !failed_;
  }

 private:
  // Tries up to 1000 names, because other threads and programs may have taken some.
  void openTemporary() {
    const size_t length = std::strlen(path_);
    if (length == 0 || length > sizeof(temporary_) - kSuffixRoom) return;
    std::memcpy(temporary_, path_, length);
    int descriptor = -1;
    for (int i = 0; i < 1000 && descriptor < 0; ++i) {
      std::snprintf(temporary_ + length, kSuffixRoom, ".%ld-%d.tmp", static_cast<long>(getpid()), i);
      descriptor = open(temporary_, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (descriptor < 0 && errno != EEXIST) break;
    }
    if (descriptor >= 0) file_ = fdopen(descriptor, "wb");
    if (!file_ && descriptor >= 0) ::close(descriptor);
    if (!file_ && descriptor < 0) temporary_[0] = '\0';
  }

  static constexpr size_t kSuffixRoom = 40;  // ".<process>-<number>.tmp"
  const char* path_;
  std::FILE* file_ = nullptr;
  bool failed_ = false;
  char temporary_[4096 + kSuffixRoom] = "";  // 4096: PATH_MAX of Linux
};

void writeTrailer(OutputFile& file, RangeTag tag, uint64_t size) {
  const ChunkTrailer trailer = {tag, static_cast<uint32_t>(size)};
  file.write(&trailer, sizeof(trailer));
}

void writeChunk(OutputFile& file, RangeTag tag, const void* data, uint64_t size) {
  file.write(data, size);
  writeTrailer(file, tag, size);
}

void writeColour(OutputFile& file, const DAX3D_IMAGE_SLOT& colour) {
  const ZurImage& image = colour.image;
  const bool planar = image.format == kPlanarColour;
  const ColourHeader header = {0, static_cast<uint32_t>(image.width), static_cast<uint32_t>(image.height),
                               planar ? kFilePlanarColour : kFilePackedColour};
  const uint64_t pixels = pixelsOf({image.width, image.height});
  file.write(&header, sizeof(header));
  for (int i = 0; i < (planar ? 3 : 1); ++i) file.write(colour.owner[i], planar ? pixels : 3 * pixels);
  writeTrailer(file, kTagColour, sizeof(header) + 3 * pixels);
}

// Optional chunks; `rest`: calibration and type.
struct Contents {
  bool mask, colour, rest;
};

DaxStatus writeFile(const char* path, const DAX3D_RANGE_V4& record, Contents contents) {
  const ZurImage& image = record.range.image;
  const uint64_t pixels = pixelsOf({image.width, image.height});
  OutputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  writeChunk(file, kTagRange, record.range.owner[0], pixels * sizeof(int16_t));
  if (contents.mask) writeChunk(file, kTagMask, record.mask.owner[0], pixels);
  if (contents.colour) writeColour(file, record.colour);
  if (contents.rest) writeChunk(file, kTagCalib, &record.calib, sizeof(record.calib));
  writeChunk(file, kTagScale, &record.scale, sizeof(record.scale));
  writeChunk(file, kTagOffset, &record.offset, sizeof(record.offset));
  if (contents.rest) writeChunk(file, kTagType, &record.type, sizeof(record.type));
  writeChunk(file, kTagHeight, &image.height, sizeof(image.height));
  writeChunk(file, kTagWidth, &image.width, sizeof(image.width));
  DAX_REQUIRE(file.commit(), DAX_STS_FILE_WRITE);
  return DAX_STS_OK;
}

// Checks the range slot and, if it is written, the mask slot.
DaxStatus checkGrid(const char* path, const DAX3D_RANGE_V4* record, bool maskOptional) {
  DAX_REQUIRE(path && record && record->range.owner[0] && record->range.image.plane[0], DAX_STS_NULL_POINTER);
  const ZurImage &range = record->range.image, &mask = record->mask.image;
  const bool withMask = record->mask.owner[0];
  DAX_REQUIRE(withMask || maskOptional, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(range.format == kValueFormat && (!withMask || mask.format == kMaskFormat), DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE(!withMask || (range.height == mask.height && range.width == mask.width), DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(sidesFit({range.width, range.height}), DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(range.step[0] == range.width && (!withMask || mask.step[0] == mask.width), DAX_STS_IMAGE_STEP);
  return DAX_STS_OK;
}

DaxStatus checkColour(const DAX3D_IMAGE_SLOT& colour) {
  const ZurImage& image = colour.image;
  const bool planar = image.format == kPlanarColour;
  DAX_REQUIRE(planar || image.format == kPackedColour, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE(!planar || (colour.owner[1] && colour.owner[2]), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(sidesFit({image.width, image.height}), DAX_STS_IMAGE_SIZE);
  for (int i = 0; i < (planar ? 3 : 1); ++i) {
    DAX_REQUIRE(image.step[i] == image.width * (planar ? 1 : 3), DAX_STS_IMAGE_STEP);
  }
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus _DAX3DPCL_UTILS_WRITE_RANGE_V4(const char* path, const DAX3D_RANGE_V4* record) {
  return dax::writeFile(path, *record, {true, false, false});
}

DaxStatus DAX3DPCL_UTILS_WRITE_RANGE_V4(const char* path, const DAX3D_RANGE_V4* record) {
  DAX_REQUIRE_OK(dax::checkGrid(path, record, false));
  return _DAX3DPCL_UTILS_WRITE_RANGE_V4(path, record);
}

DaxStatus DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(const char* path, const DAX3D_RANGE_V4* record) {
  DAX_REQUIRE(path && record, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(record->type <= DAX3D_RANGE_WITHOUT_MASK, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE_OK(dax::checkGrid(path, record, record->type == DAX3D_RANGE_WITHOUT_MASK));
  const bool colour = record->colour.owner[0];
  if (colour) DAX_REQUIRE_OK(dax::checkColour(record->colour));
  return dax::writeFile(path, *record, {record->mask.owner[0] != nullptr, colour, true});
}
