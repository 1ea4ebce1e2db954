// Formats, alignment and slots of range records, and workers after the checks.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "dax3dpcl/range_record.h"
#include "frame/check.h"
#include "frame/memory/work_buffer.h"

namespace dax {

// ZurImage format codes of the slots.
enum RangeFormat : uint32_t { kMaskFormat = 1, kValueFormat = 3, kPlanarColour = 200, kPackedColour = 201 };

constexpr int32_t kRecordAlignment = 128;

inline bool sidesFit(DaxiSize size) {
  return atLeast(size, 1) && atMost(size, DAX3D_MAX_SIDE);
}

// Makes a block the only plane of a slot, owned by it.
inline void setPlane(DAX3D_IMAGE_SLOT& slot, void* plane) {
  slot.owner[0] = slot.image.plane[0] = plane;
}

inline void setShape(ZurImage& image, uint32_t format, int32_t width, int32_t height) {
  image.format = format;
  image.width = width;
  image.height = height;
  image.step[0] = width;
}

}  // namespace dax

extern "C" {
DaxStatus _DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4(const DAX3D_RANGE_V4* record, DAX3D_RANGE_V4* copy);
void _DAX3DPCL_UTILS_RELEASE_RANGE_V4(DAX3D_RANGE_V4* record);
}
