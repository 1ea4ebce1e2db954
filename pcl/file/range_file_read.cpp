// A file is not trusted: a walk from its end to its start notes the positions of the large payloads, which are read
// once the sizes that they may have are known.
#include "pcl/file/range_file_read.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>

#include "frame/check.h"
#include "frame/memory/cleared.h"
#include "pcl/file/range_chunks.h"
#include "pcl/record/range_record.h"
#include "zur/memory.h"

namespace dax {
namespace {

class InputFile {
 public:
  explicit InputFile(const char* path) : file_(std::fopen(path, "rb")) {}
  ~InputFile() {
    if (file_) std::fclose(file_);
  }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  bool isOpen() const { return file_; }

  // -1 when the file is not seekable.
  int64_t length() { return std::fseek(file_, 0, SEEK_END) == 0 ? std::ftell(file_) : -1; }

  bool seek(int64_t position) { return std::fseek(file_, static_cast<long>(position), SEEK_SET) == 0; }

  bool read(void* data, uint64_t bytes) { return std::fread(data, 1, bytes, file_) == bytes; }

  bool readAt(int64_t position, void* data, uint64_t bytes) { return seek(position) && read(data, bytes); }

 private:
  std::FILE* file_;
};

struct Payload {
  int64_t start;
  uint64_t size;
};

// Position of a chunk that is read after the walk; a chunk nearer to the start of the file replaces it.
struct LargePayload : Payload {
  bool found;
};

// A plane of a slot and its capacity in bytes.
class Plane {
 public:
  Plane(DAX3D_IMAGE_SLOT& slot, int index, uint64_t capacity)
      : owner_(slot.owner[index]), plane_(slot.image.plane[index]), capacity_(capacity) {}

  // Whether the plane has no memory yet, or enough.
  bool fits(uint64_t bytes) const { return !owner_ || capacity_ >= bytes; }

  // Allocates `bytes`, cleared so that a short payload commits no more memory than it fills, or uses existing memory as
  // it is; fails if that is too small.
  DaxStatus reserve(uint64_t bytes) {
    DAX_REQUIRE(fits(bytes), DAX_STS_FAILURE);
    if (!owner_ && bytes > 0) {
      owner_ = mallocCleared(bytes, kRecordAlignment);
      DAX_REQUIRE(owner_, DAX_STS_NO_MEMORY);
      fresh_ = true;
    }
    plane_ = owner_;
    return DAX_STS_OK;
  }

  // Undoes reserve().
  void release() {
    if (!fresh_) return;
    ZUR_Free(owner_);
    owner_ = plane_ = nullptr;
  }

  DaxStatus load(InputFile& file, uint64_t size) {
    DAX_REQUIRE(size == 0 || file.read(owner_, size), DAX_STS_FILE_READ);
    return DAX_STS_OK;
  }

 private:
  void*& owner_;
  void*& plane_;
  uint64_t capacity_;
  bool fresh_ = false;
};

// Bytes of plane i by step and height of the slot.
uint64_t statedBytes(const ZurImage& image, int i) {
  const uint64_t elements = pixelsOf({std::max(image.step[i], 0), std::max(image.height, 0)});
  return image.format == kValueFormat ? elements * sizeof(int16_t) : elements;
}

// Sides of no pixels pass.
bool storedSidesFit(int32_t width, int32_t height) {
  return atLeast({width, height}, 0) && atMost({width, height}, DAX3D_MAX_SIDE);
}

bool isPlanar(const ColourHeader& header) {
  return header.format == kFilePlanarColour || header.format == kPlanarColour;
}

class RangeReader {
 public:
  RangeReader(InputFile& file, DAX3D_RANGE_V4& record) : file_(file), record_(record) {}

  DaxStatus run() {
    DAX_REQUIRE_OK(walk());
    DAX_REQUIRE_OK(loadRange());
    DAX_REQUIRE_OK(loadMask());
    return loadColour();
  }

 private:
  // Visits the chunks from the end of the file to its start, or until the rest is no chunk.
  DaxStatus walk() {
    int64_t end = file_.length();
    DAX_REQUIRE(end >= 0, DAX_STS_FAILURE);
    constexpr int64_t kTrailer = sizeof(ChunkTrailer);
    while (end >= kTrailer) {
      ChunkTrailer trailer;
      if (!file_.seek(end - kTrailer)) break;
      DAX_REQUIRE(file_.read(&trailer, sizeof(trailer)), DAX_STS_FILE_READ);
      end -= kTrailer + trailer.size;
      if (end < 0) break;
      DAX_REQUIRE_OK(visit(trailer.tag, {end, trailer.size}));
    }
    return DAX_STS_OK;
  }

  DaxStatus visit(uint32_t tag, Payload payload) {
    switch (tag) {
      case kTagWidth:
        return readSide(payload, width_, widthFound_);
      case kTagHeight:
        return readSide(payload, height_, heightFound_);
      case kTagScale:
        return readValue(payload, record_.scale);
      case kTagOffset:
        return readValue(payload, record_.offset);
      case kTagType:
        return readValue(payload, record_.type);
      case kTagCalib:
        return readCalib(payload);
      case kTagRange:
        return noteRange(payload);
      case kTagMask:
        if (payload.size > 0) mask_ = {payload, true};
        return DAX_STS_OK;
      case kTagColour:
        return noteColour(payload);
      default:
        return DAX_STS_OK;
    }
  }

  template <class T>
  DaxStatus readValue(Payload payload, T& value) {
    DAX_REQUIRE(payload.size == sizeof(T), DAX_STS_FAILURE);
    T read;
    DAX_REQUIRE(file_.readAt(payload.start, &read, sizeof(T)), DAX_STS_FILE_READ);
    value = read;
    return DAX_STS_OK;
  }

  DaxStatus readSide(Payload payload, int32_t& side, bool& found) {
    int32_t value;
    DAX_REQUIRE_OK(readValue(payload, value));
    if (!found) side = value;
    found = true;
    return DAX_STS_OK;
  }

  DaxStatus readCalib(Payload payload) {
    if (payload.size == sizeof(record_.calib)) return readValue(payload, record_.calib);
    std::array<float, 35> narrow;
    DAX_REQUIRE_OK(readValue(payload, narrow));
    std::array<double, 35> wide;
    std::copy(narrow.begin(), narrow.end(), wide.begin());
    record_.calib = std::bit_cast<DAX3D_RANGE_CALIB>(wide);
    return DAX_STS_OK;
  }

  DaxStatus noteRange(Payload payload) {
    DAX_REQUIRE(static_cast<int64_t>(payload.size) / 2 == int64_t{width_} * height_ && payload.size % 2 == 0,
                DAX_STS_FAILURE);
    DAX_REQUIRE(storedSidesFit(width_, height_), DAX_STS_IMAGE_SIZE);
    range_ = {payload, true};
    return DAX_STS_OK;
  }

  DaxStatus noteColour(Payload payload) {
    DAX_REQUIRE(payload.size >= sizeof(ColourHeader), DAX_STS_FAILURE);
    DAX_REQUIRE(file_.readAt(payload.start, &colourHeader_, sizeof(ColourHeader)), DAX_STS_FILE_READ);
    const uint32_t width = colourHeader_.width, height = colourHeader_.height;
    colour_ = {{payload.start + int64_t{sizeof(ColourHeader)}, payload.size - sizeof(ColourHeader)}, true};
    DAX_REQUIRE(width <= DAX3D_MAX_SIDE && height <= DAX3D_MAX_SIDE, DAX_STS_IMAGE_SIZE);
    DAX_REQUIRE(!isPlanar(colourHeader_) || colour_.size / 3 <= uint64_t{width} * height, DAX_STS_FAILURE);
    return DAX_STS_OK;
  }

  // A file with sides but without values describes memory that the record already has.
  DaxStatus loadRange() {
    const ZurImage& image = record_.range.image;
    if (!widthFound_ && !heightFound_) {
      width_ = image.width;
      height_ = image.height;
    } else if (widthFound_ && heightFound_) {
      DAX_REQUIRE(storedSidesFit(width_, height_), DAX_STS_IMAGE_SIZE);
    }
    const uint64_t bytes = statedPixels() * sizeof(int16_t);
    return fill(record_.range, kValueFormat, range_, bytes);
  }

  // Without a mask in the record's type the slot is not described, but a mask of the file is read.
  DaxStatus loadMask() {
    if (record_.type == DAX3D_RANGE_WITH_MASK) {
      return fill(record_.mask, kMaskFormat, mask_, std::max(mask_.size, statedPixels()));
    }
    if (!mask_.found) return DAX_STS_OK;
    // The next reader takes the slot at its word, so new memory has at least what it says.
    const uint64_t stated = statedBytes(record_.mask.image, 0);
    Plane plane(record_.mask, 0, stated);
    DAX_REQUIRE(plane.fits(mask_.size), DAX_STS_FAILURE);
    DAX_REQUIRE_OK(plane.reserve(std::max(mask_.size, stated)));
    return load(plane, mask_);
  }

  // Fills a slot of one plane of `bytes`.
  DaxStatus fill(DAX3D_IMAGE_SLOT& slot, uint32_t format, const LargePayload& payload, uint64_t bytes) {
    Plane plane(slot, 0, statedBytes(slot.image, 0));
    DAX_REQUIRE(plane.fits(bytes), DAX_STS_FAILURE);
    if (payload.found) DAX_REQUIRE_OK(plane.reserve(bytes));
    setShape(slot.image, format, width_, height_);
    if (!payload.found) return DAX_STS_OK;
    return load(plane, payload);
  }

  DaxStatus load(Plane& plane, const Payload& payload) {
    DAX_REQUIRE(file_.seek(payload.start), DAX_STS_FILE_READ);
    return plane.load(file_, payload.size);
  }

  // A payload of three planes is cut to thirds; one of interleaved pixels may be longer than the image.
  DaxStatus loadColour() {
    if (!colour_.found) return DAX_STS_OK;
    const bool planar = isPlanar(colourHeader_);
    const int planes = planar ? 3 : 1;
    const uint64_t pixels = uint64_t{colourHeader_.width} * colourHeader_.height;
    const uint64_t size = planar ? colour_.size / 3 : colour_.size;
    const uint64_t bytes = planar ? pixels : std::max(3 * pixels, size);
    const ZurImage& image = record_.colour.image;
    Plane all[3] = {{record_.colour, 0, statedBytes(image, 0)},
                    {record_.colour, 1, statedBytes(image, 1)},
                    {record_.colour, 2, statedBytes(image, 2)}};
    for (int i = 0; i < planes; ++i) DAX_REQUIRE(all[i].fits(bytes), DAX_STS_FAILURE);
    if (colour_.size > 0) DAX_REQUIRE_OK(reserveAll(all, planes, bytes));
    describeColour(planar);
    if (colour_.size == 0) return DAX_STS_OK;
    DAX_REQUIRE(file_.seek(colour_.start), DAX_STS_FILE_READ);
    for (int i = 0; i < planes; ++i) DAX_REQUIRE_OK(all[i].load(file_, size));
    return DAX_STS_OK;
  }

  // All planes or none, since the slot still describes its old contents.
  static DaxStatus reserveAll(Plane* planes, int count, uint64_t bytes) {
    DaxStatus status = DAX_STS_OK;
    for (int i = 0; i < count && status == DAX_STS_OK; ++i) status = planes[i].reserve(bytes);
    for (int i = 0; i < count && status != DAX_STS_OK; ++i) planes[i].release();
    return status;
  }

  void describeColour(bool planar) {
    const auto width = static_cast<int32_t>(colourHeader_.width), height = static_cast<int32_t>(colourHeader_.height);
    ZurImage& image = record_.colour.image;
    setShape(image, planar ? kPlanarColour : kPackedColour, width, height);
    image.step[1] = image.step[2] = planar ? width : 0;
    if (!planar) image.step[0] = 3 * width;
  }

  uint64_t statedPixels() const { return pixelsOf({std::max(width_, 0), std::max(height_, 0)}); }

  InputFile& file_;
  DAX3D_RANGE_V4& record_;
  int32_t width_ = 0, height_ = 0;
  bool widthFound_ = false, heightFound_ = false;
  LargePayload range_ = {}, mask_ = {}, colour_ = {};
  ColourHeader colourHeader_ = {};
};

}  // namespace
}  // namespace dax

DaxStatus _DAX3DPCL_UTILS_READ_RANGE_V4(const char* path, DAX3D_RANGE_V4* record) {
  dax::InputFile file(path);
  DAX_REQUIRE(file.isOpen(), DAX_STS_FILE_OPEN);
  return dax::RangeReader(file, *record).run();
}

DaxStatus DAX3DPCL_UTILS_READ_RANGE_V4(const char* path, DAX3D_RANGE_V4* record) {
  DAX_REQUIRE(path && record, DAX_STS_NULL_POINTER);
  return _DAX3DPCL_UTILS_READ_RANGE_V4(path, record);
}
