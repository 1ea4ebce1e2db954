// Small pictures that have something in common: blocks of grey, the second picture moved by a pixel.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

uint8_t blockGrey(uint64_t seed, size_t x, size_t y) {
  Random random(seed + (x / 3) * 0x10001 + (y / 3));
  return static_cast<uint8_t>(random.below(200));
}

void fillBlocks(const Block& image, uint64_t seed, size_t shift, size_t bytes) {
  for (size_t y = 0; y * image.stepBytes + image.rowBytes <= image.bytes; ++y) {
    uint8_t* const row = image.data + y * image.stepBytes;
    for (size_t x = 0; x < image.rowBytes / bytes; ++x) {
      const uint8_t grey = blockGrey(seed, x + shift, y + shift);
      const auto real = static_cast<float>(grey);
      const uint16_t wide = grey;
      if (bytes == 1) row[x] = grey;
      if (bytes == 2) std::memcpy(row + 2 * x, &wide, 2);
      if (bytes == 4) std::memcpy(row + 4 * x, &real, 4);
    }
  }
}

void alike(Call& c) {
  const std::string_view name = c.function.name;
  const size_t bytes = name.find("_8u") != name.npos ? 1 : name.find("_16u") != name.npos ? 2 : 4;
  const uint64_t seed = c.random.next();
  const DaxiSize size = c.sizeOr("size", {16 + c.random.below(40), 16 + c.random.below(40)});
  c.image("src1", "step1", size);
  c.image("src2", "step2", size);
  size_t shift = 1;
  for (const char* each : {"src1", "src2"}) {
    const Block* const image = c.blockOf(each);
    if (image && image->stepBytes > 0 && image->bytes >= image->rowBytes) fillBlocks(*image, seed, shift, bytes);
    shift = 0;
  }
  c.worksBeforeFailing = true;
}

const Rows rows = {{"DAXI_PhaseShift_*", alike}, {"DAXI_PhaseRotationScale_*", alike}};

}  // namespace
}  // namespace dax::hostile
