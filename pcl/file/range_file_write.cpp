#include "pcl/file/range_file_write.h"

#include "frame/check.h"
#include "frame/file/output_file.h"
#include "pcl/file/range_chunks.h"
#include "pcl/record/range_record.h"

namespace dax {
namespace {

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
