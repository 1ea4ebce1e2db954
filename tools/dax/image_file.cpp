#include "image_file.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>

#include "daxi/blob_find.h"
#include "failure.h"
#include "text.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr uintmax_t kMostFileBytes = uintmax_t{1} << 30;
constexpr int64_t kMostPixels = int64_t{1} << 28;
// All images in the decoder at a time; a pixel takes 8 bytes.
constexpr int64_t kMostDecoderBytes = 3 * 8 * kMostPixels / 2;

struct Format {
  std::string_view magic;
  const char* name;
};
constexpr std::array kFormats = {
    Format{"\x89PNG\r\n\x1a\n"sv, "PNG"},
    Format{"\xff\xd8\xff"sv, "JPEG"},
    Format{"II*\0"sv, "TIFF"},
    Format{"MM\0*"sv, "TIFF"},
    Format{"BM"sv, "BMP"},
    Format{"P2"sv, "PNM"},
    Format{"P3"sv, "PNM"},
    Format{"P5"sv, "PNM"},
    Format{"P6"sv, "PNM"},
};

[[noreturn]] void fail(const fs::path& path, const std::string& what) {
  throw Failure(ExitStatus::kCannotRead, printable(path.string()) + ": " + what);
}

std::string systemMessage(int error) {
  return std::generic_category().message(error);
}

uintmax_t regularFileSize(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) fail(path, "cannot be opened: " + error.message());
  if (!fs::is_regular_file(status)) fail(path, fs::is_directory(status) ? "is a folder" : "is not a regular file");
  const uintmax_t size = fs::file_size(path, error);
  if (error) fail(path, "cannot be read: " + error.message());
  if (size > kMostFileBytes) fail(path, "is larger than 1 GiB");
  return size;
}

std::string readBytes(const fs::path& path) {
  std::string bytes(regularFileSize(path), '\0');
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) fail(path, "cannot be opened: " + systemMessage(errno));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.bad()) fail(path, "cannot be read: " + systemMessage(errno));
  bytes.resize(static_cast<size_t>(file.gcount()));
  return bytes;
}

const char* sniff(const fs::path& path, std::string_view bytes) {
  if (bytes.empty()) fail(path, "is empty");
  const auto* format =
      std::find_if(kFormats.begin(), kFormats.end(), [&](const Format& f) { return bytes.starts_with(f.magic); });
  if (format == kFormats.end()) fail(path, "is not a PNG, JPEG, TIFF, BMP, PGM or PPM image");
  return format->name;
}

// What went wrong, of "Magick: what (file name) reported by source:line (function)"; the name is empty.
std::string reason(const std::exception& exception) {
  std::string text = exception.what();
  text.erase(std::min(text.size(), text.rfind(" reported by ")));
  if (text.ends_with(" ()")) text.resize(text.size() - 3);
  const size_t colon = text.find(": ");
  if (colon != std::string::npos) text.erase(0, colon + 2);
  return printable(text);
}

// Stray bytes between JPEG segments cost no pixels; every other warning about corruption does.
bool isHarmless(const Magick::WarningCorruptImage& warning) {
  return std::strstr(warning.what(), "extraneous bytes before marker") != nullptr;
}

void decode(const fs::path& path, const std::string& bytes, const char* format, Magick::Image& image) {
  image.subImage(0);
  image.subRange(1);
  image.magick(format);
  try {
    image.read(Magick::Blob(bytes.data(), bytes.size()));
  } catch (const Magick::WarningCorruptImage& warning) {
    if (!isHarmless(warning)) fail(path, "is damaged: " + reason(warning));
  } catch (const Magick::Warning&) {
    // Unknown tags, odd colour profiles: the pixels are whole.
  } catch (const Magick::ErrorResourceLimit& error) {
    fail(path, "is too large: " + reason(error));
  } catch (const Magick::Exception& error) {
    fail(path, "is damaged: " + reason(error));
  }
  if (!image.isValid() || image.columns() == 0 || image.rows() == 0) fail(path, "holds no pixels");
  if (image.columns() > DAXI_BLOB_MAX_SIDE || image.rows() > DAXI_BLOB_MAX_SIDE) fail(path, "is too large");
}

void greyRow(const Magick::PixelPacket* source, uint8_t* row, int32_t width) {
  for (int32_t x = 0; x < width; ++x) {
    const uint32_t red = ScaleQuantumToShort(source[x].red);
    const uint32_t green = ScaleQuantumToShort(source[x].green);
    const uint32_t blue = ScaleQuantumToShort(source[x].blue);
    row[x] = static_cast<uint8_t>((299 * red + 587 * green + 114 * blue + 128500) / 257000);
  }
}

}  // namespace

void setUpDecoders() {
  using namespace MagickLib;
  ExceptionInfo exception;
  GetExceptionInfo(&exception);
  InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
  DestroyExceptionInfo(&exception);
  SetMagickResourceLimit(PixelsResource, kMostPixels);
  SetMagickResourceLimit(WidthResource, DAXI_BLOB_MAX_SIDE);
  SetMagickResourceLimit(HeightResource, DAXI_BLOB_MAX_SIDE);
  SetMagickResourceLimit(MemoryResource, kMostDecoderBytes);
  SetMagickResourceLimit(MapResource, 0);
  SetMagickResourceLimit(DiskResource, 0);
  SetMagickResourceLimit(ThreadsResource, 1);  // the program runs one image a thread
}

ImageFile ImageFile::read(const fs::path& path) {
  const std::string bytes = readBytes(path);
  const char* format = sniff(path, bytes);
  auto image = std::make_unique<Magick::Image>();
  decode(path, bytes, format, *image);
  return ImageFile(std::move(image));
}

ImageFile::ImageFile(std::unique_ptr<Magick::Image> image) : image_(std::move(image)) {}
ImageFile::ImageFile(ImageFile&&) noexcept = default;
ImageFile::~ImageFile() = default;

GreyImage ImageFile::toGrey() const {
  const Magick::ColorspaceType space = image_->colorSpace();
  if (space != Magick::RGBColorspace && space != Magick::GRAYColorspace) image_->colorSpace(Magick::RGBColorspace);
  GreyImage grey = makeGreyImage({static_cast<int32_t>(image_->columns()), static_cast<int32_t>(image_->rows())});
  for (int32_t y = 0; y < grey.size.height; ++y) {
    greyRow(image_->getConstPixels(0, y, image_->columns(), 1), grey.row(y), grey.size.width);
  }
  return grey;
}

bool hasImageExtension(const fs::path& path) {
  constexpr std::array kExtensions = {".png"sv, ".jpg"sv, ".jpeg"sv, ".tif"sv, ".tiff"sv, ".bmp"sv, ".pgm"sv, ".ppm"sv};
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

std::string encodePng(const GreyImage& image) {
  Magick::Image encoder(static_cast<unsigned>(image.size.width), static_cast<unsigned>(image.size.height), "I",
                        Magick::CharPixel, image.pixels.data());
  encoder.type(Magick::GrayscaleType);
  encoder.depth(8);
  Magick::Blob blob;
  encoder.write(&blob, "PNG");
  return {static_cast<const char*>(blob.data()), blob.length()};
}

std::string encodePgm(const GreyImage& image) {
  std::string result = "P5\n" + std::to_string(image.size.width) + " " + std::to_string(image.size.height) + "\n255\n";
  result.append(image.pixels.begin(), image.pixels.end());
  return result;
}

}  // namespace dax::tool
