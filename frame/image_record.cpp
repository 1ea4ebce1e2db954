#include <cstddef>

#include "dax/image.h"
#include "frame/check.h"
#include "zur/image.h"

static_assert(sizeof(ZurImage) == 64 && offsetof(ZurImage, plane) == 32);
static_assert(sizeof(DaxImage) == 96 && offsetof(DaxImage, base) == 32 && offsetof(DaxImage, data) == 64);

namespace {

enum class Parity { any, widthEven, bothEven };

// The minimum step of a plane is width * times / 2.
struct PlaneRule {
  int8_t times[4];
};

constexpr PlaneRule kOneRow{{2}}, kTwoRows{{4}}, kThreeRows{{6}}, kFourRows{{8}};
constexpr PlaneRule kTwoPlanes{{2, 2}}, kThreePlanes{{2, 2, 2}}, kFourPlanes{{2, 2, 2, 2}}, kHalfChroma{{2, 1, 1}};

// Formats `first`..`last` of one rule; those from `platformEnd` on belong to the library record only.
struct FormatRule {
  uint32_t first;
  uint32_t last;
  uint32_t platformEnd;
  int planes;
  Parity parity;
  PlaneRule steps;
};

constexpr FormatRule kFormats[] = {
    {1, 6, 4, 1, Parity::any, kOneRow},
    {9, 10, 9, 1, Parity::any, kOneRow},
    {100, 101, 102, 3, Parity::bothEven, kHalfChroma},
    {102, 102, 103, 2, Parity::bothEven, kTwoPlanes},
    {103, 103, 104, 3, Parity::widthEven, kHalfChroma},
    {104, 104, 105, 1, Parity::any, kTwoRows},
    {105, 105, 106, 3, Parity::any, kThreePlanes},
    {106, 107, 108, 1, Parity::any, kTwoRows},
    {109, 109, 109, 2, Parity::bothEven, kTwoPlanes},
    {200, 200, 201, 3, Parity::any, kThreePlanes},
    {201, 201, 202, 1, Parity::any, kThreeRows},
    {202, 202, 203, 4, Parity::any, kFourPlanes},
    {203, 203, 204, 1, Parity::any, kFourRows},
    {204, 204, 205, 4, Parity::any, kFourPlanes},
    {205, 205, 206, 1, Parity::any, kFourRows},
    {206, 206, 206, 3, Parity::any, kThreePlanes},
    {207, 207, 207, 1, Parity::any, kThreeRows},
    {208, 208, 208, 4, Parity::any, kFourPlanes},
    {209, 209, 209, 1, Parity::any, kFourRows},
    {210, 210, 210, 3, Parity::any, kThreePlanes},
    {211, 211, 211, 1, Parity::any, kThreeRows},
    {212, 212, 212, 4, Parity::any, kFourPlanes},
    {213, 213, 213, 1, Parity::any, kFourRows},
    {216, 216, 216, 3, Parity::any, kThreePlanes},
    {217, 217, 217, 1, Parity::any, kThreeRows},
    {218, 218, 218, 4, Parity::any, kFourPlanes},
    {219, 219, 219, 1, Parity::any, kFourRows},
    {300, 319, 308, 1, Parity::any, kOneRow},
};

const FormatRule* findRule(uint32_t format) {
  for (const FormatRule& rule : kFormats) {
    if (format >= rule.first && format <= rule.last) return &rule;
  }
  return nullptr;
}

bool sidesFit(const FormatRule& rule, int32_t width, int32_t height) {
  if (width < 1 || height < 1) return false;
  if (rule.parity != Parity::any && width % 2 != 0) return false;
  return rule.parity != Parity::bothEven || height % 2 == 0;
}

bool stepsFit(const FormatRule& rule, int32_t width, const int32_t* step) {
  for (int i = 0; i < rule.planes; ++i) {
    if (step[i] < int64_t{width} * rule.steps.times[i] / 2) return false;
  }
  return true;
}

bool planesSet(const FormatRule& rule, void* const* plane) {
  for (int i = 0; i < rule.planes; ++i) {
    if (!plane[i]) return false;
  }
  return true;
}

}  // namespace

int32_t ZUR_CheckImage(const ZurImage* image) {
  DAX_REQUIRE(image, -21);
  const FormatRule* rule = findRule(image->format);
  DAX_REQUIRE(rule && image->format < rule->platformEnd, -8);
  DAX_REQUIRE(sidesFit(*rule, image->width, image->height), -9);
  DAX_REQUIRE(stepsFit(*rule, image->width, image->step), -10);
  DAX_REQUIRE(planesSet(*rule, image->plane), -11);
  return 0;
}

DaxStatus DAX_CheckImage(const DaxImage* image) {
  DAX_REQUIRE(image, DAX_STS_NULL_POINTER);
  const FormatRule* rule = findRule(image->format);
  DAX_REQUIRE(rule, DAX_STS_IMAGE_FORMAT);
  DAX_REQUIRE(sidesFit(*rule, image->width, image->height), DAX_STS_IMAGE_SIZE);
  DAX_REQUIRE(stepsFit(*rule, image->width, image->step), DAX_STS_IMAGE_STEP);
  DAX_REQUIRE(planesSet(*rule, image->base) && planesSet(*rule, image->data), DAX_STS_IMAGE_NULL_PLANE);
  return DAX_STS_OK;
}

DaxStatus DAX_ZurImgToDaxImg(const ZurImage* zurImage, DaxImage* daxImage) {
  DAX_REQUIRE(zurImage && daxImage, DAX_STS_NULL_POINTER);
  const DaxStatus status = DAX_ZurStatusToDaxAlgStatus(ZUR_CheckImage(zurImage));
  if (status != DAX_STS_OK && status != DAX_STS_IMAGE_FORMAT) return status;

  daxImage->format = zurImage->format;
  daxImage->width = zurImage->width;
  daxImage->height = zurImage->height;
  for (int i = 0; i < 4; ++i) {
    daxImage->step[i] = zurImage->step[i];
    daxImage->base[i] = zurImage->plane[i];
    daxImage->data[i] = zurImage->plane[i];
  }
  return DAX_STS_OK;
}
