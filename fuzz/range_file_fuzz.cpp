// Any bytes read as a range file, into an empty record and then again into the record that this gave. Whatever the
// status, the record must hold what it says.
#include <algorithm>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "zur.h"

namespace {

using dax::fuzz::require;

// Reads here and there, and at the end, in what a plane should hold; a sanitizer sees what it does not.
void touch(const void* plane, int64_t bytes) {
  if (!plane || bytes == 0) return;
  volatile uint8_t sink = 0;
  for (int64_t i = 0; i < bytes; i += 509) sink = sink + static_cast<const uint8_t*>(plane)[i];
  sink = sink + static_cast<const uint8_t*>(plane)[bytes - 1];
}

int64_t stated(const ZurImage& image, int plane, int64_t elementBytes) {
  return std::max<int64_t>(image.step[plane], 0) * std::max(image.height, 0) * elementBytes;
}

void touchAll(const DAX3D_RANGE_V4& record) {
  touch(record.range.image.plane[0], stated(record.range.image, 0, 2));
  touch(record.mask.image.plane[0], stated(record.mask.image, 0, 1));
  for (int i = 0; i < 3; ++i) touch(record.colour.image.plane[i], stated(record.colour.image, i, 1));
}

bool known(DaxStatus status) {
  constexpr DaxStatus kCodes[] = {DAX_STS_OK, DAX_STS_FAILURE, DAX_STS_IMAGE_SIZE, DAX_STS_FILE_READ,
                                  DAX_STS_NO_MEMORY};
  return std::find(std::begin(kCodes), std::end(kCodes), status) != std::end(kCodes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const dax::fuzz::MemoryFile file(data, size);
  DAX3D_RANGE_V4 record = {};
  const DaxStatus first = DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &record);
  require(known(first));
  touchAll(record);
  const DaxStatus second = DAX3DPCL_UTILS_READ_RANGE_V4(file.path().c_str(), &record);
  require(known(second));
  // A slot tells nothing of bytes beyond its image, which a mask or interleaved colours may have; they are not read again.
  const bool mayHaveSurplus = record.mask.owner[0] || record.colour.owner[0];
  require(first != DAX_STS_OK || second == DAX_STS_OK || (second == DAX_STS_FAILURE && mayHaveSurplus));
  touchAll(record);

  DAX3DPCL_UTILS_RELEASE_RANGE_V4(&record);
  require(!record.range.owner[0] && !record.mask.owner[0]);
  for (void* owner : record.colour.owner) ZUR_Free(owner);
  return 0;
}
