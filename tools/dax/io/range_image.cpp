#include "io/range_image.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/library_call.h"
#include "base/text.h"
#include "dax3dpcl/range_file.h"
#include "dax3dpcl/range_to_xyz.h"
#include "dax3dpcl/speckle.h"
#include "io/input_file.h"
#include "io/range_chunks.h"
#include "zur/memory.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

size_t area(const ZurImage& image) {
  return static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
}

void setUp(DAX3D_IMAGE_SLOT& slot, uint32_t format, DaxiSize size, size_t pixelBytes) {
  slot.image = {format, size.width, size.height, {size.width}, {}};
  const size_t bytes = area(slot.image) * pixelBytes;
  slot.owner[0] = slot.image.plane[0] = ZUR_Malloc(bytes, 128);
  if (!slot.owner[0]) throw std::bad_alloc();
  std::fill_n(static_cast<uint8_t*>(slot.owner[0]), bytes, uint8_t{0});
}

// The offset, along the axes where it is so large that floats would lose digits of the points.
Place originOf(const DAX3D_RANGE_V4& record) {
  const double size = std::max(std::abs(double{record.scale.x}) * record.range.image.width,
                               std::abs(double{record.scale.y}) * record.range.image.height);
  const auto along = [size](float offset) { return std::abs(offset) > 4 * size ? offset : 0.0; };
  return {along(record.offset.x), along(record.offset.y), along(record.offset.z)};
}

// The library needs a value that no valid pixel has.
int16_t unusedValue(const RangeImage& image) {
  std::vector<bool> used(1 << 16);
  for (size_t i = 0; i < image.values().size(); ++i) {
    if (image.valid(i)) used[static_cast<uint16_t>(image.values()[i])] = true;
  }
  const auto unused = std::find(used.begin(), used.end(), false);
  if (unused == used.end()) throw Failure(ExitStatus::kRefused, "speckle filter: all 65536 values occur");
  return static_cast<int16_t>(unused - used.begin());
}

}  // namespace

void RangeImage::Release::operator()(DAX3D_RANGE_V4* record) const {
  DAX3DPCL_UTILS_RELEASE_RANGE_V4(record);
  for (void* owner : record->colour.owner) ZUR_Free(owner);
  delete record;
}

RangeImage::RangeImage() : record_(new DAX3D_RANGE_V4()) {}

RangeImage RangeImage::read(const fs::path& path) {
  requireRegularFile(path);
  if (const std::string lacks = shortPayload(path); !lacks.empty()) {
    throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": is damaged: " + lacks);
  }
  RangeImage image;
  const std::string what = printable(path.string()) + ": is no range file, or damaged";
  const auto refuse = [&](DaxStatus status) {
    if (status == DAX_STS_NO_MEMORY) throw std::bad_alloc();
    throw Failure(ExitStatus::kCannotRead, what + ": " + DAX_GetStatusText(status));
  };
  const DaxStatus status = DAX3DPCL_UTILS_READ_RANGE_V4(path.c_str(), image.record_.get());
  if (status != DAX_STS_OK) refuse(status);
  if (!image.record_->range.image.plane[0]) throw Failure(ExitStatus::kCannotRead, what);
  const DaxStatus valid = DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(image.record_.get(), 0);
  if (valid != DAX_STS_OK) refuse(valid);
  return image;
}

RangeImage RangeImage::make(DaxiSize size, const DAX3D_VECTOR_32F& scale, const DAX3D_VECTOR_32F& offset) {
  RangeImage image;
  image.record_->scale = scale;
  image.record_->offset = offset;
  setUp(image.record_->range, 3, size, sizeof(int16_t));
  setUp(image.record_->mask, 1, size, sizeof(uint8_t));
  return image;
}

void RangeImage::write(const fs::path& path) const {
  const DaxStatus status = DAX3DPCL_UTILS_WRITE_RANGE_V4_V2(path.c_str(), record_.get());
  if (status == DAX_STS_OK) return;
  throw Failure(ExitStatus::kCannotWrite,
                printable(path.string()) + ": cannot be written: " + DAX_GetStatusText(status));
}

std::span<int16_t> RangeImage::values() const {
  return {static_cast<int16_t*>(record_->range.image.plane[0]), area(record_->range.image)};
}

std::span<uint8_t> RangeImage::mask() const {
  if (!record_->mask.image.plane[0]) return {};
  return {static_cast<uint8_t*>(record_->mask.image.plane[0]), area(record_->mask.image)};
}

size_t RangeImage::clearSpeckles(int32_t maxSize, int32_t difference) {
  if (mask().empty()) {
    setUp(record_->mask, 1, size(), sizeof(uint8_t));
    record_->type = DAX3D_RANGE_WITH_MASK;
    std::fill(mask().begin(), mask().end(), uint8_t{255});
  }
  const int16_t invalid = unusedValue(*this);
  std::vector<int16_t> before(values().begin(), values().end()), after(before.size());
  for (size_t i = 0; i < before.size(); ++i) {
    if (!valid(i)) before[i] = invalid;
  }
  uint64_t bytes = 0;
  check(DAX3DPCL_PREP_FILTER_Speckle_BufferSize(size(), &bytes), "speckle filter");
  const Memory buffer(bytes);
  check(DAX3DPCL_PREP_FILTER_Speckle_S16(size(), before.data(), after.data(), {0, 0}, {size().width, size().height},
                                         difference, maxSize, invalid, buffer.get()),
        "speckle filter");
  size_t cleared = 0;
  for (size_t i = 0; i < after.size(); ++i) {
    if (!valid(i) || after[i] != invalid) continue;
    mask()[i] = 0;
    ++cleared;
  }
  return cleared;
}

Cloud RangeImage::toCloud() const {
  std::vector<uint8_t> everywhere;
  if (mask().empty()) everywhere.assign(values().size(), 255);
  const DAX3D_VECTOR_32F &scale = record_->scale, &offset = record_->offset;
  Cloud cloud;
  cloud.origin = originOf(*record_);
  cloud.isWide = cloud.isShifted();
  const auto along = [&](size_t axis, float start) { return static_cast<float>(start - cloud.origin[axis]); };
  const DAX3DPCL_RANGE_MAP map = {
      size().height,
      size().width,
      {scale.x, scale.y, scale.z, along(0, offset.x), along(1, offset.y), along(2, offset.z)},
      nullptr,
      everywhere.empty() ? mask().data() : everywhere.data(),
      values().data()};
  uint64_t bytes = 0;
  check(DAX3DPCL_PREP_CONVERT_Range2XYZ_ResultSize_16s32f(size(), &bytes), "points of the range image");
  const Memory result(bytes);
  float* points = nullptr;
  DAX3DPCL_CLOUD_SIZE count = {};
  check(DAX3DPCL_PREP_CONVERT_Range2XYZ_16s32f(&map, result.get(), 0, &points, &count), "points of the range image");
  for (int64_t i = 0; i < int64_t{count.width} * count.height; ++i) {
    const float* const point = points + 3 * i;
    const bool finite = std::all_of(point, point + 3, [](float v) { return v - v == 0; });
    if (finite) cloud.points.insert(cloud.points.end(), point, point + 3);
    cloud.dropped += finite ? 0 : 1;
  }
  if (cloud.points.empty()) throw Failure(ExitStatus::kRefused, "the range image has no valid pixels");
  return cloud;
}

}  // namespace dax::tool
