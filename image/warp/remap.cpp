#include "image/warp/remap.h"

#include <cmath>
#include <limits>

#include "frame/memory/model_block.h"

static_assert(sizeof(DaxiRemapCfg) == 24);

namespace dax {
namespace {

constexpr uint32_t kRemapMagic = fourCharacters("DXRM"), kRemapVersion = 1;
constexpr uint32_t kRemapSize = fourCharacters("SIZE"), kRemapMap = fourCharacters("MAPS");

uint64_t countOf(DaxiSize size) {
  return static_cast<uint64_t>(size.width) * static_cast<uint64_t>(size.height);
}

struct RemapModel {
  RemapModel(void* memory, uint64_t bytes, DaxiSize size)
      : writer(memory, bytes, 2),
        sizes(writer.add<DaxiSize>(kRemapSize, 1)),
        map(writer.add<PreparedPosition>(kRemapMap, countOf(size))) {}
  ModelWriter writer;
  DaxiSize* sizes;
  PreparedPosition* map;
};

// The pieces of an open model; none unless they fit each other.
std::span<const PreparedPosition> mapOf(const ModelView& view, DaxiSize& size) {
  const auto sizes = view.piece<DaxiSize>(kRemapSize);
  const auto map = view.piece<PreparedPosition>(kRemapMap);
  if (sizes.size() != 1 || !areWarpSides(sizes[0]) || map.size() != countOf(sizes[0])) return {};
  size = sizes[0];
  return map;
}

// The nearest whole number of 2^-12 pixels.
int32_t prepared(float pixels) {
  constexpr float kReach = (1 << 19) - 1;
  if (!(pixels >= -kReach && pixels <= kReach)) return kPreparedNowhere;
  return static_cast<int32_t>(std::rint(pixels * static_cast<float>(1 << kPreparedBits)));
}

float mapValue(double pixels) {
  constexpr double kMax = std::numeric_limits<float>::max();
  return std::fabs(pixels) <= kMax ? static_cast<float>(pixels) : std::numeric_limits<float>::quiet_NaN();
}

}  // namespace

DaxStatus PreparedWalk::open(const void* model, uint64_t modelBytes, DaxiSize size) {
  ModelView view;
  DAX_REQUIRE_OK(view.openUnsummed(model, modelBytes, kRemapMagic, kRemapVersion));
  DaxiSize own = {0, 0};
  map_ = mapOf(view, own).data();
  DAX_REQUIRE(map_ && own.width == size.width && own.height == size.height, DAX_STS_BAD_PARAM);
  width_ = size.width;
  return DAX_STS_OK;
}

}  // namespace dax

DaxStatus DAXI_RemapDefaultCfg(DaxiRemapCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_INTERPOLATION_LINEAR, DAXI_BORDER_CONSTANT, 0, -0.5};
  return DAX_STS_OK;
}

DaxStatus DAXI_RemapPrepareModelSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(size), DAX_STS_BAD_PARAM);
  return dax::RemapModel(nullptr, 0, size).writer.store(bytes);
}

DaxStatus DAXI_RemapPrepare(const float* mapX, int32_t mapXStep, const float* mapY, int32_t mapYStep, DaxiSize size,
                            void* model) {
  DAX_REQUIRE(mapX && mapY && model, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::rowFits(size.width, mapXStep) && dax::rowFits(size.width, mapYStep), DAX_STS_BAD_STEP);
  dax::RemapModel made(model, INT64_MAX, size);
  *made.sizes = size;
  for (int32_t y = 0; y < size.height; ++y) {
    const float *const x = dax::rowAt(mapX, mapXStep, y), *const rowY = dax::rowAt(mapY, mapYStep, y);
    dax::PreparedPosition* const to = made.map + ptrdiff_t{y} * size.width;
    for (int32_t i = 0; i < size.width; ++i) {
      to[i] = {dax::prepared(x[i]), dax::prepared(rowY[i])};
      if (to[i].y == dax::kPreparedNowhere) to[i].x = dax::kPreparedNowhere;
    }
  }
  return made.writer.seal(dax::kRemapMagic, dax::kRemapVersion);
}

DaxStatus DAXI_RemapCheckModel(const void* model, uint64_t modelBytes, DaxiSize* size) {
  DAX_REQUIRE(model && size, DAX_STS_NULL_POINTER);
  dax::ModelView view;
  DAX_REQUIRE_OK(view.open(model, modelBytes, dax::kRemapMagic, dax::kRemapVersion));
  DaxiSize own;
  DAX_REQUIRE(dax::mapOf(view, own).data(), DAX_STS_BAD_PARAM);
  *size = own;
  return DAX_STS_OK;
}

DaxStatus DAXI_MapFromFunction(DaxiMapFunction function, void* user, float* mapX, int32_t mapXStep, float* mapY,
                               int32_t mapYStep, DaxiSize size) {
  DAX_REQUIRE(function && mapX && mapY, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::rowFits(size.width, mapXStep) && dax::rowFits(size.width, mapYStep), DAX_STS_BAD_STEP);
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) {
      double at[2] = {NAN, NAN};
      DAX_REQUIRE_OK(function(user, x, y, &at[0], &at[1]));
      dax::rowAt(mapX, mapXStep, y)[x] = dax::mapValue(at[0]);
      dax::rowAt(mapY, mapYStep, y)[x] = dax::mapValue(at[1]);
    }
  }
  return DAX_STS_OK;
}

DaxStatus DAXI_MapCompose(const float* outerX, int32_t outerXStep, const float* outerY, int32_t outerYStep,
                          DaxiSize outerSize, const float* innerX, int32_t innerXStep, const float* innerY,
                          int32_t innerYStep, float* mapX, int32_t mapXStep, float* mapY, int32_t mapYStep,
                          DaxiSize size) {
  DAX_REQUIRE(outerX && outerY && innerX && innerY && mapX && mapY, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::areWarpSides(outerSize) && dax::areWarpSides(size), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(dax::rowFits(outerSize.width, outerXStep) && dax::rowFits(outerSize.width, outerYStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(dax::rowFits(size.width, innerXStep) && dax::rowFits(size.width, innerYStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(dax::rowFits(size.width, mapXStep) && dax::rowFits(size.width, mapYStep), DAX_STS_BAD_STEP);
  const dax::MapWalk inner(innerX, innerXStep, innerY, innerYStep);
  const DaxiRect all = {0, 0, size.width, size.height};
  const auto follow = [&](const float* map, int32_t step, float* to, int32_t toStep) {
    const dax::SampledImage<float> outer = {map,   step, outerSize, DAXI_BORDER_CONSTANT, DAXI_BORDER_CONSTANT,
                                            false, NAN,  0};
    dax::sampleRect<1>({}, outer, DAXI_INTERPOLATION_LINEAR, to, toStep, all, inner);
  };
  follow(outerX, outerXStep, mapX, mapXStep);
  follow(outerY, outerYStep, mapY, mapYStep);
  return DAX_STS_OK;
}
