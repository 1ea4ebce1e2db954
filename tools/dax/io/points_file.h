// Points from text files with columns of numbers.
#pragma once

#include <filesystem>
#include <vector>

namespace dax::tool {

struct Points {
  std::vector<double> x;
  std::vector<double> y;
};

// Columns count from 1 and are separated by commas, semicolons, tabs or blanks. Empty lines, lines that start with #
// and a first line of titles are skipped. Throws Failure(kCannotRead) with the number of a line without two finite
// numbers.
Points readPoints(const std::filesystem::path& path, int xColumn, int yColumn);

}  // namespace dax::tool
