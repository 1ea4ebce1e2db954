// Range images: records and their files.
#include <cstddef>
#include <memory>

#include "dax3dpcl.h"
#include "fuzz/memory_file.h"
#include "tests/hostile/call.h"
#include "zur.h"

namespace dax::hostile {
namespace {

// --- Records ---

DAX3D_CAMERA_64F camera(Call& c) {
  return {500.0 + c.random.below(9), 500, 1 + static_cast<double>(c.random.below(9)), 20, 0, 0, 0, 0, 0};
}

DAX3D_RANGE_CALIB calibration(Call& c) {
  DAX3D_RANGE_CALIB calib = {camera(c), camera(c), {}, 7};
  for (int32_t i = 0; i < 16; i += 5) calib.depthToRgb[i] = 1;
  for (int32_t i = 3; i < 12; i += 4) calib.depthToRgb[i] = c.random.below(9);
  return calib;
}

void fillSlot(Call& c, DAX3D_IMAGE_SLOT& slot, uint32_t format, DaxiSize size, int32_t channels, int32_t planes,
              int32_t padding) {
  slot.image.format = format, slot.image.width = size.width, slot.image.height = size.height;
  const int64_t bytes = format == 3 ? 2 : 1;
  for (int32_t i = 0; i < planes; ++i) {
    slot.image.step[i] = size.width * channels + padding;
    slot.owner[i] =
        c.memory("pixels", bytes * slot.image.step[i] * size.height, Role::input, static_cast<size_t>(bytes));
    slot.image.plane[i] = slot.owner[i];
  }
}

// A record that every check accepts, with padding where it may have some; in spoiled ones a word of the header or of a
// slot's image is another, or a plane is missing.
void fillRecord(Call& c, DAX3D_RANGE_V4& record, const char* name, int32_t padding) {
  const DaxiSize size = {1 + c.random.below(30), 1 + c.random.below(20)};
  record.type = static_cast<uint32_t>(c.random.below(2));
  record.scale = {0.1f, 0.2f, 0.3f}, record.offset = {-1, -2, 3};
  fillSlot(c, record.range, 3, size, 1, 1, padding);
  if (record.type == 0 || c.chance(30)) fillSlot(c, record.mask, 1, size, 1, 1, padding);
  const bool planar = c.chance(50);
  if (c.chance(60)) {
    const DaxiSize colour = {1 + c.random.below(30), 1 + c.random.below(20)};
    fillSlot(c, record.colour, planar ? 200 : 201, colour, planar ? 1 : 3, planar ? 3 : 1, padding);
  }
  record.calib = calibration(c);
  if (!c.isSpoiled(name)) return;
  DAX3D_IMAGE_SLOT& slot = c.pick({&record.range, &record.mask, &record.colour})[0];
  switch (c.random.below(4)) {
    case 0:
      c.spoilWord(name, &record, 0, offsetof(DAX3D_RANGE_V4, mask));
      break;
    case 1:
      // Smaller, for no one can tell how much there is.
      (c.chance(50) ? slot.image.width : slot.image.height) = c.pick({0, -1, -32768});
      break;
    case 2:
      slot.image.format = static_cast<uint32_t>(c.hostileInteger());
      break;
    default:
      (c.chance(50) ? slot.owner : slot.image.plane)[c.random.below(3)] = nullptr;
  }
}

DAX3D_RANGE_V4* record(Call& c, const char* name, int32_t padding) {
  auto* const result = c.record<DAX3D_RANGE_V4>(name);
  if (result) fillRecord(c, *result, name, padding);
  return result;
}

class Digest {
 public:
  void add(const void* data, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) value_ = (value_ ^ static_cast<const uint8_t*>(data)[i]) * 0x100000001B3u;
  }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 0xCBF29CE484222325u;
};

// What a record says, without its addresses.
void add(Digest& digest, const DAX3D_RANGE_V4& record) {
  digest.add(&record, offsetof(DAX3D_RANGE_V4, mask));
  digest.add(&record.calib, sizeof record.calib);
  for (const DAX3D_IMAGE_SLOT* slot : {&record.mask, &record.range, &record.colour}) {
    digest.add(&slot->image, offsetof(ZurImage, plane));
    const bool interleaved = slot->image.format == 201;
    const int64_t row = int64_t{slot->image.width} * (slot->image.format == 3 ? 2 : interleaved ? 3 : 1);
    for (int32_t i = 0; i < 4; ++i) {
      const auto* const pixels = static_cast<const uint8_t*>(slot->owner[i]);
      digest.add(pixels ? "p" : "-", 1);
      const int64_t step = int64_t{slot->image.step[i]} * (slot->image.format == 3 ? 2 : 1);
      for (int32_t y = 0; pixels && y < slot->image.height && row > 0 && row <= step; ++y)
        digest.add(pixels + y * step, static_cast<size_t>(row));
    }
  }
}

// Frees what a call has allocated for a record, and not what came from the row.
void release(Call& c, DAX3D_RANGE_V4& record) {
  for (DAX3D_IMAGE_SLOT* slot : {&record.mask, &record.range, &record.colour}) {
    for (void*& owner : slot->owner) {
      if (owner && !c.block(owner)) ZUR_Free(owner);
      owner = nullptr;
    }
  }
}

// A record that the call makes: compared by what it says.
void made(Call& c, const char* name) {
  auto* const result = c.record<DAX3D_RANGE_V4>(name);
  if (!result) return;
  c.blockOf(name)->meaningful = [] { return size_t{0}; };
  c.settle = [&c, result](uint64_t status) {
    if (status != DAX_STS_OK) return status;
    Digest digest;
    add(digest, *result);
    release(c, *result);
    return digest.value();
  };
}

void checkRecord(Call& c) {
  record(c, "record", c.random.below(3));
  if (c.has("checkColour")) c.number("checkColour", 0, 1);
}

void copy(Call& c) {
  record(c, "record", c.random.below(3));
  made(c, "copy");
}

void construct(Call& c) {
  c.image("colour", "colourStep", c.size("colourSize"), 3);
  c.image("depth", "depthStep", c.size("depthSize"));
  c.real("depthScale", 0.001, 1);
  if (c.chance(70)) {
    if (auto* const calib = c.record<DAX3D_RANGE_CALIB>("calib")) {
      *calib = calibration(c);
      c.spoilWord("calib", calib, 0, sizeof *calib);
    }
  } else {
    c.set<const void*>("calib", nullptr);
  }
  made(c, "record");
}

void releaseRecord(Call& c) {
  c.once = true;
  auto* const held = c.record<DAX3D_RANGE_V4>("record");
  if (!held) return;
  c.blockOf("record")->role = Role::foreign;
  for (DAX3D_IMAGE_SLOT* slot : {&held->mask, &held->range}) {
    slot->image.plane[0] = slot->owner[0] = c.chance(80) ? ZUR_Malloc(9, 128) : nullptr;
  }
  c.settle = [&c, held](uint64_t) {
    for (const DAX3D_IMAGE_SLOT* slot : {&held->mask, &held->range}) {
      if (slot->owner[0] || slot->image.plane[0]) c.complaint = "kept an owner";
    }
    return uint64_t{0};
  };
}

void cameras(Call& c) {
  auto* const held = c.record<DAX3D_RANGE_V4>("record");
  if (held) held->calib = calibration(c);
  if (held && c.isSpoiled("record")) {
    c.spoilWord("record", held, offsetof(DAX3D_RANGE_V4, calib), sizeof *held);
  }
  if (auto* const given = c.record<DAX3D_CAMERA_64F>("camera")) {
    *given = camera(c);
    c.spoilWord("camera", given, 0, sizeof *given);
  }
  if (!c.has("depthToRgb")) return;
  if (c.chance(30)) return c.set<const void*>("depthToRgb", nullptr);
  if (auto* const pose = static_cast<double*>(c.array("depthToRgb", 16))) {
    if (c.blockOf("depthToRgb")->bytes) std::copy_n(calibration(c).depthToRgb, 16, pose);
  }
}

// --- Files ---

// The chunks of a file in the order of its writer, some of them wrong, missing or cut.
std::vector<uint8_t> fileOf(Call& c, bool spoiled) {
  std::vector<uint8_t> bytes;
  const auto width = static_cast<uint32_t>(c.between(1, 20)), height = static_cast<uint32_t>(c.between(1, 20));
  const auto word = [&](uint32_t value) {
    for (int32_t i = 0; i < 4; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
  };
  const auto chunk = [&](uint32_t tag, size_t size, std::initializer_list<uint32_t> words) {
    if (spoiled && c.chance(8)) return;
    const size_t start = bytes.size();
    for (const uint32_t each : words) word(each);
    while (bytes.size() < start + size) bytes.push_back(static_cast<uint8_t>(c.random.next()));
    const auto real = static_cast<uint32_t>(bytes.size() - start);
    word(spoiled && c.chance(4) ? static_cast<uint32_t>(c.hostileInteger()) : tag);
    word(spoiled && c.chance(8) ? static_cast<uint32_t>(c.hostileInteger()) : real);
  };
  chunk(0x617D18DB, size_t{2} * width * height, {});
  if (c.chance(70)) chunk(0xA5A53D03, width * height, {});
  if (c.chance(40)) chunk(0xA5A53D0B, 16 + size_t{3} * width * height, {0, width, height, c.chance(50) ? 200u : 201u});
  if (c.chance(50)) chunk(2, c.chance(50) ? 140 : 280, {});
  chunk(0xA5A53D07, 12, {}), chunk(0xA5A53D08, 12, {});
  if (c.chance(70)) chunk(1, 4, {static_cast<uint32_t>(c.random.below(2))});
  chunk(0xA5A53D02, 4, {height}), chunk(0xA5A53D01, 4, {spoiled && c.chance(10) ? 0xFFFFFFFF : width});
  if (spoiled && c.chance(30)) bytes.resize(static_cast<size_t>(c.between(0, static_cast<int64_t>(bytes.size()))));
  return bytes;
}

const char* path(Call& c, const std::string& text) {
  auto* const name = static_cast<char*>(c.array("path", static_cast<int64_t>(text.size()) + 1));
  if (!name) return nullptr;
  const char* const given = c.chance(5) ? "/nowhere/at/all" : text.c_str();
  std::copy_n(given, std::strlen(given) + 1, name);
  return name;
}

// Into memory of the record's own, which may be too small, or of the library's.
void read(Call& c) {
  const bool spoiled = c.isSpoiled("path");
  const std::vector<uint8_t> bytes = fileOf(c, spoiled);
  const auto file = std::make_shared<fuzz::MemoryFile>(bytes.data(), bytes.size());
  path(c, file->path());
  auto* const result = c.record<DAX3D_RANGE_V4>("record");
  if (result) {
    c.blockOf("record")->role = Role::foreign;
    if (c.chance(30)) {
      const DaxiSize size = {1 + c.random.below(25), 1 + c.random.below(25)};
      fillSlot(c, result->range, 3, size, 1, 1, 0);
      fillSlot(c, result->mask, 1, size, 1, 1, 0);
      if (c.chance(50)) fillSlot(c, result->colour, 201, size, 3, 1, 0);
      for (Block& block : c.blocks) {
        if (block.name == "pixels") block.role = Role::foreign;
      }
    }
  }
  c.settle = [&c, result, file](uint64_t status) {
    if (!result) return status;
    Digest digest;
    add(digest, *result);
    release(c, *result);
    return digest.value() + status;
  };
}

void write(Call& c) {
  const bool everything = std::string_view(c.function.name).ends_with("_V2");
  const auto file = std::make_shared<fuzz::MemoryFile>();
  path(c, file->path());
  auto* const given = record(c, "record", 0);
  if (given && !everything && !given->mask.owner[0]) {
    fillSlot(c, given->mask, 1, {given->range.image.width, given->range.image.height}, 1, 1, 0);
  }
  c.settle = [file](uint64_t status) {
    Digest digest;
    const std::vector<uint8_t> bytes = file->contents();
    digest.add(bytes.data(), bytes.size());
    return digest.value() + status;
  };
}

const Rows rows = {
    {"DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4", checkRecord},
    {"DAX3DPCL_UTILS_Check_RANGE_V4_DepthIntrins", checkRecord},
    {"DAX3DPCL_UTILS_Copy_DAX3D_RANGE_V4", copy},
    {"DAX3DPCL_UTILS_Construct_RGBD_DAX3D_RANGE_V4", construct},
    {"DAX3DPCL_UTILS_RELEASE_RANGE_V4", releaseRecord, Row::neverFails},
    {"DAX3DPCL_UTILS_Extract_*", cameras},
    {"DAX3DPCL_UTILS_Recover_*", cameras},
    {"DAX3DPCL_UTILS_READ_RANGE_V4", read},
    {"DAX3DPCL_UTILS_WRITE_*", write},
};

}  // namespace
}  // namespace dax::hostile
