// Maps that point anywhere, functions that fail, and models that are not what they seem.
#include "tests/image/warp/geometry_hostile.h"

namespace dax::hostile {
namespace {

void fillMap(Call& c, const char* name) {
  const Block* const made = c.blockOf(name);
  if (!made) return;
  auto* const values = reinterpret_cast<float*>(made->data);
  const size_t count = made->bytes / sizeof(float);
  for (size_t i = 0; i < count; ++i) {
    values[i] =
        c.chance(90) ? static_cast<float>(c.between(-100, 60 * 256)) / 256 : static_cast<float>(c.hostileReal());
  }
}

void maps(Call& c, const char* x, const char* stepX, const char* y, const char* stepY, DaxiSize size) {
  c.image(x, stepX, size), fillMap(c, x);
  c.image(y, stepY, size), fillMap(c, y);
}

void sampling(Call& c) {
  c.filled<DaxiRemapCfg>("cfg", 1, [&](DaxiRemapCfg& cfg) { anySampling(c, cfg); });
}

void remap(Call& c) {
  sampling(c);
  const auto size = c.size("dstSize");
  maps(c, "mapX", "mapXStep", "mapY", "mapYStep", size);
}

void prepare(Call& c) {
  maps(c, "mapX", "mapXStep", "mapY", "mapYStep", c.size("size"));
}

void compose(Call& c) {
  maps(c, "outerX", "outerXStep", "outerY", "outerYStep", c.size("outerSize"));
  maps(c, "innerX", "innerXStep", "innerY", "innerYStep", c.size("size"));
}

// Of maps of that size, now and then with wrong bytes in it.
void model(Call& c, DaxiSize size) {
  const bool isSmall = size.width >= 1 && size.height >= 1 && int64_t{size.width} * size.height < 100000;
  const DaxiSize own = isSmall ? size : DaxiSize{3, 2};
  uint64_t bytes = 0;
  DAXI_RemapPrepareModelSize(own, &bytes);
  c.set("modelBytes", bytes);
  auto* const made = static_cast<uint8_t*>(c.memory("model", static_cast<int64_t>(bytes), Role::input, 8));
  const auto count = static_cast<size_t>(own.width) * static_cast<size_t>(own.height);
  std::vector<float> x(count), y(count);
  for (float& each : x) each = static_cast<float>(c.between(-10, 500)) / 8;
  for (float& each : y) each = static_cast<float>(c.between(-10, 500)) / 8;
  DAXI_RemapPrepare(x.data(), own.width, y.data(), own.width, own, made);
  c.set<const void*>("model", c.isSpoiled("model", 40) ? nullptr : made);
  if (c.isSpoiled("model")) made[c.between(0, static_cast<int64_t>(bytes) - 1)] ^= 255;
}

void prepared(Call& c) {
  sampling(c);
  model(c, c.size("dstSize"));
}

void checkModel(Call& c) {
  model(c, {7, 5});
}

DaxStatus shear(void* user, double x, double y, double* sourceX, double* sourceY) {
  auto& left = *static_cast<int64_t*>(user);
  *sourceX = left % 7 ? x + y / 3 : NAN;
  *sourceY = left % 11 ? y : -1e300;
  return --left == 0 ? 0x10000033 : 0;
}

void fromFunction(Call& c) {
  using Function = DaxiMapFunction;
  c.set<Function>("function", c.isSpoiled("function") ? nullptr : shear);
  auto* const left = static_cast<int64_t*>(c.memory("left", 8, Role::foreign, 8));
  *left = c.chance(10) ? c.between(1, 50) : -1;
  c.set<void*>("user", left);
  c.mayWriteOn(0x10000033);
}

const Rows rows = {{"DAXI_Remap_*", remap},
                   {"DAXI_RemapPrepare", prepare},
                   {"DAXI_RemapPrepared_*", prepared},
                   {"DAXI_RemapCheckModel", checkModel},
                   {"DAXI_MapFromFunction", fromFunction},
                   {"DAXI_MapCompose", compose}};

}  // namespace
}  // namespace dax::hostile
