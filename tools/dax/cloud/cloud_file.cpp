#include "cloud/cloud_file.h"

#include <fstream>

#include "base/failure.h"
#include "base/text.h"
#include "cloud/pcd_format.h"
#include "cloud/ply_format.h"
#include "cloud/point_rows.h"
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

void writeCloud(const fs::path& path, const Cloud& cloud, bool text) {
  writeFile(path, path.extension() == ".pcd" ? writePcd(cloud, text) : writePly(cloud, text));
}

}  // namespace dax::tool
