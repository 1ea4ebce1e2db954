#include "cloud/cloud_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "cloud/cloud_steps.h"
#include "cloud/pcd_format.h"
#include "cloud/ply_format.h"
#include "io/input_file.h"
#include "io/output_file.h"
#include "io/range_image.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;

std::string firstBytes(const fs::path& path) {
  requireRegularFile(path);
  std::string bytes(16, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<size_t>(file.gcount()));
  return bytes;
}

Failure cannotRead(const fs::path& path, const std::string& what) {
  return {ExitStatus::kCannotRead, printable(path.string()) + ": " + what};
}

// Whether floats lose more than a thousandth of the distance between neighbours.
bool needsDoubles(const Cloud& cloud) {
  if (!cloud.isWide) return false;
  const Box box = boxOf(cloud);
  double max = 0;
  for (size_t axis = 0; axis < 3; ++axis) {
    max = std::max({max, std::abs(cloud.origin[axis] + box.low[axis]), std::abs(cloud.origin[axis] + box.high[axis])});
  }
  constexpr double kRounding = std::numeric_limits<float>::epsilon() / 2;
  return max * kRounding > usualSpacing(cloud) / 1000;
}

// The cloud with those fields only that the format holds; the names of the others are added to `leftOut`.
Cloud withPlyFields(const Cloud& cloud, std::vector<std::string>& leftOut) {
  if (std::all_of(cloud.fields.begin(), cloud.fields.end(), holdsPly)) return cloud;
  Cloud result = cloud;
  result.fields.clear();
  result.values.clear();
  for (const Column& column : cloud.fields) {
    if (holdsPly(column)) {
      result.fields.push_back(column);
    } else {
      leftOut.push_back(column.name);
    }
  }
  for (size_t at = 0; at < cloud.values.size();) {
    for (const Column& column : cloud.fields) {
      if (holdsPly(column)) result.values.append(cloud.values, at, column.bytes());
      at += column.bytes();
    }
  }
  return result;
}

}  // namespace

Cloud readCloud(const fs::path& path) {
  const std::string magic = firstBytes(path);
  try {
    if (isPly(magic)) return readPly(readFile(path));
    if (isPcd(magic)) return readPcd(readFile(path));
  } catch (const FormatError& error) {
    throw cannotRead(path, error.what());
  }
  try {
    return RangeImage::read(path).toCloud();
  } catch (const Failure& failure) {
    throw Failure(failure.status(), std::string(failure.what()) + ", nor a PLY or PCD cloud");
  }
}

bool hasCloudExtension(const fs::path& path) {
  return path.extension() == ".ply" || path.extension() == ".pcd";
}

std::vector<std::string> writeCloud(const fs::path& path, const Cloud& cloud, bool text) {
  const RowFormat format = {text, needsDoubles(cloud), false};
  if (path.extension() == ".pcd") {
    writeFile(path, writePcd(cloud, format));
    return {};
  }
  std::vector<std::string> leftOut;
  writeFile(path, writePly(withPlyFields(cloud, leftOut), format));
  if (cloud.grid.height > 1) leftOut.emplace_back("grid");
  return leftOut;
}

}  // namespace dax::tool
