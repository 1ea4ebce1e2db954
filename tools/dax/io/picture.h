// A picture as the library takes it: most families have 8-bit members only.
#pragma once

#include <bit>
#include <filesystem>
#include <optional>
#include <string>

#include "io/grey_image.h"

namespace dax::tool {

// Grey values that become black and white.
struct Levels {
  int low;
  int high;
};

struct Picture {
  GreyImage grey;
  Grey16Image values;            // of more than 8 bits, or with levels: those of the file
  int maxValue = 255;            // of the file's values
  std::optional<Levels> levels;  // 0 and 255 of `grey`; none: `grey` holds the file's values, of 16 bits / 257
  size_t pages = 1;

  int depth() const { return std::bit_width(static_cast<unsigned>(maxValue)); }
  bool hasValues() const { return !values.pixels.empty(); }
  // The largest value of the file that is not above a level of `grey`.
  int valueOf(int greyLevel) const;
  // What a reader of the results must know: pages left out, levels; empty: nothing.
  std::string note() const;
};

// "LOW..HIGH" with integers of 0..65535, LOW below HIGH; none for another text.
std::optional<Levels> parseLevels(std::string_view text);

// Throws Failure(kCannotRead).
Picture readPicture(const std::filesystem::path& path, const std::optional<Levels>& levels = std::nullopt);

// The values of the file as they are. Throws Failure(kCannotRead) if one is above 255.
Picture readClasses(const std::filesystem::path& path);

// 255 where a pixel is not 0. Throws Failure(kCannotRead).
GreyImage readMask(const std::filesystem::path& path);

// One line on standard error, if there is a note.
void sayNote(const std::filesystem::path& path, const Picture& picture);

}  // namespace dax::tool
