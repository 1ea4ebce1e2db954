#include "report/range_info.h"

#include <algorithm>
#include <array>
#include <limits>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "dax3dpcl/range_calib.h"
#include "report/run_json.h"

namespace dax::tool {
namespace {

using Json = nlohmann::ordered_json;

struct Contents {
  size_t valid = 0;
  int min = std::numeric_limits<int>::max();
  int max = std::numeric_limits<int>::min();
};

Contents countPixels(const RangeImage& image) {
  Contents contents;
  for (size_t i = 0; i < image.values().size(); ++i) {
    if (!image.valid(i)) continue;
    ++contents.valid;
    contents.min = std::min<int>(contents.min, image.values()[i]);
    contents.max = std::max<int>(contents.max, image.values()[i]);
  }
  return contents;
}

std::string inWords(const DAX3D_VECTOR_32F& v) {
  return shortest(v.x) + ", " + shortest(v.y) + ", " + shortest(v.z);
}

bool hasColour(const DAX3D_RANGE_V4& record) {
  return DAX3DPCL_UTILS_Check_DAX3D_RANGE_V4(&record, 1) == DAX_STS_OK;
}

// A line for a camera that is set.
bool getCamera(const DAX3D_RANGE_V4& record, bool depth, DAX3D_CAMERA_64F& camera) {
  const auto status = depth ? DAX3DPCL_UTILS_Extract_RANGE_V4_Depth_Intrins(&record, &camera)
                            : DAX3DPCL_UTILS_Extract_RANGE_V4_RGB_Intrins(&record, &camera, nullptr);
  return status == DAX_STS_OK;
}

constexpr std::array kCameras = {std::pair{"depth", true}, std::pair{"colour", false}};

}  // namespace

std::string rangeInfoText(const RangeImage& image) {
  const DAX3D_RANGE_V4& record = image.record();
  const Contents contents = countPixels(image);
  const size_t pixels = image.values().size();
  std::string text = "size      " + std::to_string(image.size().width) + " x " + std::to_string(image.size().height);
  text += "\nscale     " + inWords(record.scale) + "\noffset    " + inWords(record.offset);
  text += "\nvalid     " + std::to_string(contents.valid) + " of " + std::to_string(pixels) + " pixels (" +
          fixed(100.0 * static_cast<double>(contents.valid) / static_cast<double>(pixels), 1) + " %), " +
          (image.mask().empty() ? "no mask" : "by a mask");
  if (contents.valid > 0) {
    const auto height = [&](int value) {
      return shortest(static_cast<float>(value) * record.scale.z + record.offset.z);
    };
    text += "\nvalues    " + std::to_string(contents.min) + " to " + std::to_string(contents.max);
    text += "\nheights   " + height(contents.min) + " to " + height(contents.max);
  }
  if (hasColour(record)) {
    const ZurImage& colour = record.colour.image;
    text += "\ncolour    " + std::to_string(colour.width) + " x " + std::to_string(colour.height) +
            (colour.format == 200 ? ", three planes" : ", three bytes a pixel");
  }
  for (const auto& [name, depth] : kCameras) {
    DAX3D_CAMERA_64F camera;
    if (!getCamera(record, depth, camera)) continue;
    text += "\ncamera    " + std::string(name) + ": fx " + fixed(camera.fx, 3) + ", fy " + fixed(camera.fy, 3) +
            ", cx " + fixed(camera.cx, 3) + ", cy " + fixed(camera.cy, 3);
  }
  return text + "\n";
}

std::string rangeInfoJson(const std::string& file, const RangeImage& image) {
  const DAX3D_RANGE_V4& record = image.record();
  const Contents contents = countPixels(image);
  const auto vector = [](const DAX3D_VECTOR_32F& v) { return Json{v.x, v.y, v.z}; };
  Json json = runJson("of scale and offset");
  json["file"] = file;
  json.update(Json{{"width", image.size().width},
                   {"height", image.size().height},
                   {"type", record.type},
                   {"scale", vector(record.scale)},
                   {"offset", vector(record.offset)},
                   {"mask", !image.mask().empty()},
                   {"valid", contents.valid}});
  if (contents.valid > 0) json["values"] = {contents.min, contents.max};
  if (hasColour(record)) {
    const ZurImage& colour = record.colour.image;
    json["colour"] = {{"width", colour.width}, {"height", colour.height}, {"format", colour.format}};
  }
  for (const auto& [name, depth] : kCameras) {
    DAX3D_CAMERA_64F camera;
    if (!getCamera(record, depth, camera)) continue;
    json["cameras"][name] = {{"fx", camera.fx}, {"fy", camera.fy}, {"cx", camera.cx}, {"cy", camera.cy}};
  }
  return json.dump(2) + "\n";
}

}  // namespace dax::tool
