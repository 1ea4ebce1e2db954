#include "pcl/record/range_record.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "dax3dpcl/record_check.h"
#include "frame/check.h"
#include "zur/memory.h"

static_assert(sizeof(DAX3D_IMAGE_SLOT) == 96 && offsetof(DAX3D_IMAGE_SLOT, owner) == 64);
static_assert(sizeof(DAX3D_RANGE_CALIB) == 35 * sizeof(double));
static_assert(offsetof(DAX3D_RANGE_V4, scale) == 4 && offsetof(DAX3D_RANGE_V4, offset) == 16);
static_assert(offsetof(DAX3D_RANGE_V4, mask) == 32 && offsetof(DAX3D_RANGE_V4, range) == 128);
static_assert(offsetof(DAX3D_RANGE_V4, colour) == 224 && offsetof(DAX3D_RANGE_V4, calib) == 320);
static_assert(sizeof(DAX3D_RANGE_V4) == 600);

namespace dax {
namespace {

bool planeSet(const DAX3D_IMAGE_SLOT& slot, int i) {
  return slot.owner[i] && slot.image.plane[i];
}

DaxStatus checkRange(const DAX3D_IMAGE_SLOT& range) {
  DAX_REQUIRE(planeSet(range, 0), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(range.image.width >= 1 && range.image.height >= 1, DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(range.image.width >> 1 <= range.image.step[0], DAX_STS_IMAGE_STEP);
  DAX_REQUIRE(range.image.format == kValueFormat, DAX_STS_IMAGE_FORMAT);
  return DAX_STS_OK;
}

DaxStatus checkMask(const DAX3D_IMAGE_SLOT& mask, const ZurImage& range) {
  DAX_REQUIRE(planeSet(mask, 0), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(mask.image.format == kMaskFormat, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE(mask.image.height == range.height && mask.image.width == range.width, DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(range.width >> 1 <= mask.image.step[0], DAX_STS_IMAGE_STEP);
  return DAX_STS_OK;
}

DaxStatus checkColour(const DAX3D_IMAGE_SLOT& colour) {
  const ZurImage& image = colour.image;
  DAX_REQUIRE(image.format == kPlanarColour || image.format == kPackedColour, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE(planeSet(colour, 0), DAX_STS_NULL_POINTER);
  const bool planar = image.format == kPlanarColour;
  DAX_REQUIRE(!planar || (planeSet(colour, 1) && planeSet(colour, 2)), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(rowFits(image.width, image.step[0], planar ? 1 : 3), DAX_STS_IMAGE_STEP);
  DAX_REQUIRE(image.height >= 1 && image.width >= 1, DAX_STS_IMAGE_SIZE);
  return DAX_STS_OK;
}

DaxStatus check(const DAX3D_RANGE_V4* record, bool withColour) {
  DAX_REQUIRE(record, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(record->type <= DAX3D_RANGE_WITHOUT_MASK, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE_OK(checkRange(record->range));
  if (record->type == DAX3D_RANGE_WITH_MASK) DAX_REQUIRE_OK(checkMask(record->mask, record->range.image));
  DAX_REQUIRE(std::fabs(record->scale.x) > FLT_EPSILON, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::fabs(record->scale.y) > FLT_EPSILON, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(record->scale.z >= FLT_EPSILON, DAX_STS_BAD_PARAM);
  return withColour ? checkColour(record->colour) : DaxStatus{DAX_STS_OK};
}

// Frees all memory of a record under construction.
void discard(DAX3D_RANGE_V4& record) {
  for (DAX3D_IMAGE_SLOT* slot : {&record.mask, &record.range, &record.colour}) {
    for (void*& owner : slot->owner) ZUR_Free(owner);
  }
}

// Copies one plane of `height` rows of `step` elements. Of the last row only `rowElements` elements are read.
bool copyPlane(const DAX3D_IMAGE_SLOT& from, int i, int32_t rowElements, size_t elementBytes, DAX3D_IMAGE_SLOT& to) {
  const ZurImage& image = from.image;
  const auto rowBytes = static_cast<uint64_t>(image.step[i]) * elementBytes;
  const uint64_t bytes = rowBytes * static_cast<uint64_t>(image.height);
  const uint64_t lastRow = std::min(rowBytes, static_cast<uint64_t>(rowElements) * elementBytes);
  // The step of an image of one column may be 0.
  void* const plane = ZUR_Malloc(std::max<uint64_t>(bytes, 1), kRecordAlignment);
  if (!plane) return false;
  std::memcpy(plane, image.plane[i], bytes - rowBytes + lastRow);
  std::memset(static_cast<uint8_t*>(plane) + (bytes - rowBytes + lastRow), 0, rowBytes - lastRow);
  to.owner[i] = to.image.plane[i] = plane;
  return true;
}

bool copySlot(const DAX3D_IMAGE_SLOT& from, int planes, int32_t rowElements, size_t elementBytes,
              DAX3D_IMAGE_SLOT& to) {
  to.image = from.image;
  std::fill_n(to.image.plane, 4, nullptr);
  for (int i = 0; i < planes; ++i) {
    if (!copyPlane(from, i, rowElements, elementBytes, to)) return false;
  }
  return true;
}

// Whether the colour image can be copied: the check does not cover the steps of planes 1 and 2.
bool hasColour(const DAX3D_RANGE_V4& record) {
  const ZurImage& image = record.colour.image;
  if (check(&record, true) != DAX_STS_OK) return false;
  return image.format == kPackedColour || (image.step[1] >= image.width && image.step[2] >= image.width);
}

bool copyPlanes(const DAX3D_RANGE_V4& from, DAX3D_RANGE_V4& to) {
  const int32_t width = from.range.image.width;
  if (!copySlot(from.range, 1, width, sizeof(int16_t), to.range)) return false;
  if (from.type == DAX3D_RANGE_WITH_MASK && !copySlot(from.mask, 1, width, 1, to.mask)) return false;
  if (!hasColour(from)) return true;
  const ZurImage& image = from.colour.image;
  const bool planar = image.format == kPlanarColour;
  return copySlot(from.colour, planar ? 3 : 1, (planar ? 1 : 3) * image.width, 1, to.colour);
}

}  // namespace
}  // namespace dax

DaxStatus _DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, DAX3D_RANGE_V4* copy) {
  DAX3D_RANGE_V4 result = {};
  result.type = record->type;
  result.scale = record->scale;
  result.offset = record->offset;
  result.calib = record->calib;
  if (!dax::copyPlanes(*record, result)) {
    dax::discard(result);
    return DAX_STS_NO_MEMORY;
  }
  *copy = result;
  return DAX_STS_OK;
}

void _DAX3DPCL_UTILS_RELEASE_RANGE_V4(DAX3D_RANGE_V4* record) {
  for (DAX3D_IMAGE_SLOT* slot : {&record->range, &record->mask}) {
    ZUR_Free(slot->owner[0]);
    dax::setPlane(*slot, nullptr);
  }
}

DaxStatus DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, int32_t checkColour) {
  return dax::check(record, checkColour == 1);
}

DaxStatus DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, DAX3D_RANGE_V4* copy) {
  DAX_REQUIRE_OK(dax::check(record, false));
  DAX_REQUIRE(copy, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(copy != record, DAX_STS_BAD_PARAM);
  return _DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(record, copy);
}

DaxStatus DAX3DPCL_UTILS_RELEASE_RANGE_V4(DAX3D_RANGE_V4* record) {
  if (record) _DAX3DPCL_UTILS_RELEASE_RANGE_V4(record);
  return DAX_STS_OK;
}
