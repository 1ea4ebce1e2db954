#include "io/picture.h"

#include <algorithm>
#include <iostream>

#include "base/failure.h"
#include "base/text.h"
#include "io/image_file.h"

namespace dax::tool {
namespace {

uint8_t mapped(int value, const Levels& levels) {
  const int range = levels.high - levels.low;
  const int above = std::clamp(value - levels.low, 0, range);
  return static_cast<uint8_t>((255 * above + range / 2) / range);
}

Levels usedLevels(const Grey16Image& image) {
  const auto [low, high] = std::minmax_element(image.pixels.begin(), image.pixels.end());
  return {*low, std::max<int>(*high, *low + 1)};
}

Levels levelsOf(const Picture& picture) {
  return picture.levels.value_or(Levels{0, picture.maxValue});
}

}  // namespace

int Picture::valueOf(int greyLevel) const {
  if (!hasValues()) return greyLevel;
  const auto [low, high] = levelsOf(*this);
  const int64_t range = high - low;
  return static_cast<int>(std::min<int64_t>(low + ((greyLevel + 1) * range - 1 - range / 2) / 255, maxValue));
}

std::string Picture::note() const {
  std::string text;
  if (pages > 1) text = "the first of " + std::to_string(pages) + " pages";
  if (!levels) return text;
  text += (text.empty() ? "" : "; ") + std::to_string(depth()) + " bits a pixel, of which " +
          std::to_string(levels->low) + ".." + std::to_string(levels->high) + " taken as 0..255";
  return text;
}

std::optional<Levels> parseLevels(std::string_view text) {
  const auto ends = splitPair(text, '.');
  if (!ends || !ends->second.starts_with('.')) return std::nullopt;
  const auto low = parseInteger(ends->first, 0, 65535), high = parseInteger(ends->second.substr(1), 0, 65535);
  if (!low || !high || *low >= *high) return std::nullopt;
  return Levels{*low, *high};
}

Picture readPicture(const std::filesystem::path& path, const std::optional<Levels>& levels) {
  const ImageFile file = ImageFile::read(path);
  Picture picture;
  picture.pages = file.pages();
  picture.maxValue = file.maxValue();
  if (picture.maxValue > 255 || levels) picture.values = file.toGrey16();
  const bool isExact = !levels && (picture.maxValue == 255 || file.hasOnly8Bits());
  if (isExact) {
    picture.grey = file.toGrey();
    return picture;
  }
  picture.levels = levels ? *levels : usedLevels(picture.values);
  picture.grey = makeGreyImage(picture.values.size);
  std::transform(picture.values.pixels.begin(), picture.values.pixels.end(), picture.grey.pixels.begin(),
                 [&](int value) { return mapped(value, *picture.levels); });
  return picture;
}

Picture readClasses(const std::filesystem::path& path) {
  const ImageFile file = ImageFile::read(path);
  Picture picture;
  picture.pages = file.pages();
  if (file.maxValue() == 255 || file.hasOnly8Bits()) {
    picture.grey = file.toGrey();
    return picture;
  }
  const Grey16Image values = file.toGrey16();
  const int max = *std::max_element(values.pixels.begin(), values.pixels.end());
  if (max > 255) {
    throw Failure(ExitStatus::kCannotRead,
                  printable(path.string()) + ": has the class " + std::to_string(max) + "; classes are 0..255");
  }
  picture.grey = {values.size, {values.pixels.begin(), values.pixels.end()}};
  return picture;
}

GreyImage readMask(const std::filesystem::path& path) {
  const Grey16Image values = ImageFile::read(path).toGrey16();
  GreyImage mask = makeGreyImage(values.size);
  std::transform(values.pixels.begin(), values.pixels.end(), mask.pixels.begin(),
                 [](uint16_t value) { return static_cast<uint8_t>(value != 0 ? 255 : 0); });
  return mask;
}

void sayNote(const std::filesystem::path& path, const Picture& picture) {
  const std::string note = picture.note();
  if (!note.empty()) std::cerr << "dax: " << printable(path.string()) << ": " << note << '\n';
}

}  // namespace dax::tool
