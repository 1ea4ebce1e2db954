#include "io/image_file.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <optional>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"
#include "daxi/blob_find.h"
#include "io/input_file.h"
#include "io/tiff_samples.h"

namespace dax::tool {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr int64_t kMaxPixels = int64_t{1} << 28;
// Memory of all images in the decoder; a pixel takes 8 bytes.
constexpr int64_t kMaxDecoderBytes = 3 * 8 * kMaxPixels / 2;

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

const char* sniff(const fs::path& path, std::string_view bytes) {
  if (bytes.empty()) fail(path, "is empty");
  const auto* format =
      std::find_if(kFormats.begin(), kFormats.end(), [&](const Format& f) { return bytes.starts_with(f.magic); });
  if (format == kFormats.end()) fail(path, "is not a PNG, JPEG, TIFF, BMP, PGM or PPM image");
  return format->name;
}

// The third number of the header of a PNM file; none for other files.
std::optional<int> pnmMaxValue(std::string_view bytes) {
  if (!bytes.starts_with('P')) return std::nullopt;
  size_t at = 2;
  std::string_view number;
  for (int i = 0; i < 3; ++i) {
    const auto skip = [&](std::string_view characters) {
      at = std::min(bytes.find_first_not_of(characters, at), bytes.size());
    };
    skip(" \t\r\n");
    while (at < bytes.size() && bytes[at] == '#') {
      at = std::min(bytes.find('\n', at), bytes.size());
      skip(" \t\r\n");
    }
    const size_t start = at;
    skip("0123456789");
    number = bytes.substr(start, at - start);
  }
  return parseInteger(number, 1, 65535);
}

// The reason in "Magick: reason (file name) reported by source:line (function)"; the name is empty.
std::string reason(const std::exception& exception) {
  std::string text = exception.what();
  text.erase(std::min(text.size(), text.rfind(" reported by ")));
  if (text.ends_with(" ()")) text.resize(text.size() - 3);
  const size_t colon = text.find(": ");
  if (colon != std::string::npos) text.erase(0, colon + 2);
  return printable(text);
}

// Extra bytes between JPEG segments lose no pixels; every other warning about corruption does.
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
    // Unknown tags, odd colour profiles: the pixels are complete.
  } catch (const Magick::ErrorResourceLimit& error) {
    fail(path, "is too large: " + reason(error));
  } catch (const Magick::Exception& error) {
    fail(path, "is damaged: " + reason(error));
  }
  if (!image.isValid() || image.columns() == 0 || image.rows() == 0) fail(path, "holds no pixels");
  if (image.columns() > DAXI_BLOB_MAX_SIDE || image.rows() > DAXI_BLOB_MAX_SIDE) fail(path, "is too large");
}

void turnUpright(Magick::Image& image) {
  const std::string exif = image.attribute("EXIF:Orientation");
  const auto given = parseInteger(exif, 2, 8);
  if (given) image.orientation(static_cast<Magick::OrientationType>(*given));
  if (image.orientation() > Magick::TopLeftOrientation) image.autoOrient();
}

// In units of 1 / 1000.
uint32_t weightedGrey(const Magick::PixelPacket& pixel) {
  const uint32_t red = ScaleQuantumToShort(pixel.red);
  const uint32_t green = ScaleQuantumToShort(pixel.green);
  const uint32_t blue = ScaleQuantumToShort(pixel.blue);
  return 299 * red + 587 * green + 114 * blue;
}

void greyRow(const Magick::PixelPacket* source, uint8_t* row, int32_t width) {
  for (int32_t x = 0; x < width; ++x) {
    row[x] = static_cast<uint8_t>((weightedGrey(source[x]) + 128500) / 257000);
  }
}

std::string encode16(const Grey16Image& image, const char* format) {
  Magick::Image encoder(static_cast<unsigned>(image.size.width), static_cast<unsigned>(image.size.height), "I",
                        Magick::ShortPixel, image.pixels.data());
  encoder.type(Magick::GrayscaleType);
  encoder.depth(16);
  Magick::Blob blob;
  encoder.write(&blob, format);
  return {static_cast<const char*>(blob.data()), blob.length()};
}

std::string pgmHeader(DaxiSize size, int max) {
  return "P5\n" + std::to_string(size.width) + " " + std::to_string(size.height) + "\n" + std::to_string(max) + "\n";
}

}  // namespace

void setUpDecoders() {
  using namespace MagickLib;
  ExceptionInfo exception;
  GetExceptionInfo(&exception);
  InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
  DestroyExceptionInfo(&exception);
  SetMagickResourceLimit(PixelsResource, kMaxPixels);
  SetMagickResourceLimit(WidthResource, DAXI_BLOB_MAX_SIDE);
  SetMagickResourceLimit(HeightResource, DAXI_BLOB_MAX_SIDE);
  SetMagickResourceLimit(MemoryResource, kMaxDecoderBytes);
  SetMagickResourceLimit(MapResource, 0);
  SetMagickResourceLimit(DiskResource, 0);
  SetMagickResourceLimit(ThreadsResource, 1);  // the program itself decodes one image per thread
}

ImageFile ImageFile::read(const fs::path& path) {
  const std::string bytes = readFile(path);
  const char* format = sniff(path, bytes);
  if (!hasPlainTiffSamples(bytes)) fail(path, "has pixels with a sign, in floating point or of more than 16 bits");
  auto image = std::make_unique<Magick::Image>();
  decode(path, bytes, format, *image);
  turnUpright(*image);
  const int bits = std::clamp(static_cast<int>(image->depth()), 8, 16);
  const int maxValue = bits > 8 ? pnmMaxValue(bytes).value_or((1 << bits) - 1) : 255;
  return {std::move(image), maxValue, countTiffPages(bytes)};
}

ImageFile::ImageFile(std::unique_ptr<Magick::Image> image, int maxValue, size_t pages)
    : image_(std::move(image)), maxValue_(maxValue), pages_(pages) {}
ImageFile::ImageFile(ImageFile&&) noexcept = default;
ImageFile::~ImageFile() = default;

bool ImageFile::hasOnly8Bits() const {
  makeRgb();
  const auto is8Bit = [](const Magick::PixelPacket& pixel) {
    return ScaleQuantumToShort(pixel.red) % 257 == 0 && ScaleQuantumToShort(pixel.green) % 257 == 0 &&
           ScaleQuantumToShort(pixel.blue) % 257 == 0;
  };
  const size_t width = image_->columns(), height = image_->rows();
  for (size_t y = 0; y < height; ++y) {
    const Magick::PixelPacket* const row = image_->getConstPixels(0, static_cast<ssize_t>(y), width, 1);
    if (!std::all_of(row, row + width, is8Bit)) return false;
  }
  return true;
}

void ImageFile::makeRgb() const {
  const Magick::ColorspaceType space = image_->colorSpace();
  if (space != Magick::RGBColorspace && space != Magick::GRAYColorspace) image_->colorSpace(Magick::RGBColorspace);
}

Grey16Image ImageFile::toGrey16() const {
  makeRgb();
  const size_t width = image_->columns(), height = image_->rows();
  Grey16Image grey = {{static_cast<int32_t>(width), static_cast<int32_t>(height)},
                      std::vector<uint16_t>(width * height)};
  // The decoder has stretched smaller ranges to 16 bits.
  const auto max = static_cast<uint64_t>(maxValue_), divisor = 1000 * uint64_t{65535};
  for (size_t y = 0; y < height; ++y) {
    const Magick::PixelPacket* const source = image_->getConstPixels(0, static_cast<ssize_t>(y), width, 1);
    std::transform(
        source, source + width, grey.pixels.begin() + static_cast<ptrdiff_t>(y * width),
        [=](const auto& pixel) { return static_cast<uint16_t>((weightedGrey(pixel) * max + divisor / 2) / divisor); });
  }
  return grey;
}

GreyImage ImageFile::toGrey() const {
  makeRgb();
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

std::string encodePng(const Grey16Image& image) {
  return encode16(image, "PNG");
}

std::string encodeTiff(const Grey16Image& image) {
  return encode16(image, "TIFF");
}

std::string encodePgm(const GreyImage& image) {
  std::string result = pgmHeader(image.size, 255);
  result.append(image.pixels.begin(), image.pixels.end());
  return result;
}

std::string encodePgm(const Grey16Image& image) {
  std::string result = pgmHeader(image.size, 65535);
  for (const uint16_t pixel : image.pixels) {
    result += static_cast<char>(pixel >> 8);
    result += static_cast<char>(pixel & 255);
  }
  return result;
}

}  // namespace dax::tool
